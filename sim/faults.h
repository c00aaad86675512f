#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <random>
#include <string>
#include <string_view>

#include "sim/box.h"

namespace kx::sim {

/// When a fault of single bytes strikes: at one byte, by chance at each, or (as made) never.
struct Byte_Fault {
  std::size_t Nth = 0;  ///< The n-th byte of the chosen answers, counted from 1; 0 is none.
  double Chance = 0;    ///< 0..1 at each byte of the chosen answers.
};

/// What is wrong with a line or the box behind it. As made, nothing is.
///
/// The knobs of answers strike the chosen answers only: those to the commands of On, from the From-th of
/// them, Times of them. Byte counts of Drop, Duplicate, Corrupt and Hang_Up count the bytes of chosen
/// answers.
struct Faults {
  std::uint32_t On = ~0U;  ///< One bit per Command, in the order of the enumeration.
  std::size_t From = 1;    ///< First answer chosen among those to On, counted from 1.
  std::size_t Times = 0;   ///< How many answers are chosen; 0 is without end.
  std::uint32_t Seed = 1;  ///< Start of the pseudo-random numbers, equal on every machine.

  Byte_Fault Drop;
  Byte_Fault Duplicate;
  Byte_Fault Corrupt;
  std::optional<std::size_t> Hang_Up;  ///< Close the line after so many answer bytes.

  bool Refuse = false;                  ///< Swallow the answer.
  double Delay = 0;                     ///< Seconds before the answer begins; later answers wait behind it.
  std::optional<std::uint8_t> Dataset;  ///< Reported in "v" in place of the box's own.
  bool Lower_Case = false;              ///< Image blocks with lower-case digits.
  bool No_Marker = false;               ///< Image blocks with blanks for their markers.
  bool Half = false;                    ///< Image blocks and log rows cut in the middle.
  bool Garbage = false;                 ///< As many random bytes as the answer has.
  bool Twice = false;                   ///< The answer, and at once again.
  bool Single = false;                  ///< Delivered byte by byte, each at its time on the wire.
  bool Burst = false;                   ///< Held back, then delivered in one piece with the next answer.
  std::string Stale;                    ///< Text that follows the answer in a piece of its own.

  double Log_Pace = 1;      ///< The log stream runs so many times as fast as a real one.
  double Log_Late = 0;      ///< Seconds for which the box is deaf from the first start of a stream on.
  bool Log_Header = false;  ///< A header line stands before the rows.
  std::optional<std::size_t> Log_Off;  ///< The box is switched off after so many rows of the stream,
  double Log_Off_Seconds = 0;          ///< and on again, not streaming, after so many seconds.

  bool Lenient = false;  ///< A command inside an open run ends it and is obeyed.

  std::optional<std::size_t> Drop_Received;       ///< The n-th byte from the PC, from 1, is lost.
  std::optional<std::size_t> Duplicate_Received;  ///< It comes twice.
  std::optional<std::size_t> Corrupt_Received;    ///< It comes as a neighbour, so that a digit stays a digit.

  std::optional<std::size_t> Stall;             ///< Dead for ever after so many received bytes.
  std::optional<std::size_t> Hang_Up_Received;  ///< Close the line after so many received bytes.
  std::optional<std::size_t> Slave_Lost;        ///< No slave any more after so many received bytes.
};

/// Knobs as read from text; @p Error is empty when all of them were understood.
struct Parsed_Faults {
  Faults Knobs;
  std::string Error;
};

/// Reads knobs such as "drop=17,seed=3,on=rd+rs,lower". An empty text is no fault. An unknown knob or a value
/// that cannot be read gives an Error that names it and what is known or wanted.
[[nodiscard]] Parsed_Faults Parse_Faults(std::string_view text);

/// One line per knob, name, form and meaning, for a help text.
[[nodiscard]] std::string Faults_Help();

/// One answer after the faults have been at it.
struct Shaped_Answer {
  std::string Text = {};
  std::string Stale = {};  ///< Comes behind Text, on its own.
  double Delay = 0;        ///< Seconds.
  bool Single = false;     ///< One delivery for each byte.
  bool Hold = false;       ///< Wait for the next answer.
  bool Hang_Up = false;    ///< The line closes behind Text.
};

/// Applies the answer knobs of one Faults, and counts what they count.
class Fault_Injector {
 public:
  explicit Fault_Injector(Faults faults);

  /// The @p answer to @p command as it leaves a faulty box.
  [[nodiscard]] Shaped_Answer Shape(Command command, std::string answer);

  [[nodiscard]] const Faults& Knobs() const { return faults_; }

 private:
  [[nodiscard]] bool Chosen(Command command);
  [[nodiscard]] bool Strikes(const Byte_Fault& fault);
  [[nodiscard]] std::string Replaced(Command command, std::string answer);
  [[nodiscard]] std::string Random_Bytes(std::size_t count);
  [[nodiscard]] std::string With_Byte_Faults(const std::string& answer);
  void Cut_At_Hang_Up(Shaped_Answer& shaped);

  Faults faults_;
  std::mt19937 random_;
  std::size_t matches_ = 0;  // answers to a command of On so far
  std::size_t bytes_ = 0;    // bytes of chosen answers so far, before byte faults
  std::size_t sent_ = 0;     // bytes of chosen answers so far, as sent
};

}  // namespace kx::sim
