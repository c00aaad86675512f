#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "sim/card_reader.h"

namespace kx::sim {

/// What the box answered last. The order is that of the names in Command_Name().
enum class Command {
  Info,
  Read_Master,
  Read_Slave,
  Write_Master,
  Write_Slave,
  Digit,
  Run_End,
  Close,
  Card,
  Log
};

/// Number of values in Command.
inline constexpr std::size_t Command_Count = 10;

/// The word by which fault knobs name @p command: the command as sent, or "digit" for any hex digit. The
/// rows of the log stream count as answers to the last one, "a".
[[nodiscard]] std::string_view Command_Name(Command command);

/// Everything that a box holds or reports. Plain data: whoever owns the box may change it between two feeds.
struct Box_Contents {
  Image Master{};
  Image Slave{};                  ///< Answered to "rs" and written only while Slave_Present.
  Card_Reader Socket{};           ///< Its card's byte 0 is never written from here.
  std::string Firmware = "4.12";  ///< Text behind the banner, printable, without "Master" in it.
  std::uint32_t Serial = 1234;    ///< 0..99999, or 0..65535 with Serial_As_Hex.
  bool Serial_As_Hex = false;     ///< Report the serial number as four hex digits and "h".
  std::uint8_t Dataset = 108;     ///< Layout generation of the image, reported as "SC ID".
  std::string Status = "000";     ///< Three characters.
  bool Slave_Present = false;
  bool Card_Present = false;
  std::uint32_t Drive_Seed = 1;  ///< Chooses the drive that the log stream tells of.
  bool Lenient_Runs = false;     ///< A command inside an open run ends it and is obeyed; else it is run data.
};

/// @p master as a slave holds it: equal but for bit 3 of byte 1, which marks the slave.
[[nodiscard]] Image As_Slave(Image master);

/// A box at the far end of the serial line, without the line: characters in, characters out, no clock.
///
/// A command has no terminator, so a word counts as soon as its last character is there; characters that
/// belong to no command are ignored without an answer. An open write run takes every character up to "$" for
/// its own, commands included. "a" starts the log stream, and a box that streams hears nothing but the blank
/// that stops it.
class Box {
 public:
  explicit Box(Box_Contents contents = {});

  /// Takes @p bytes as sent by the PC, one or many, and returns what the box sends back to them.
  std::string Feed(std::string_view bytes);

  /// Images, labels and switches, open to change.
  [[nodiscard]] Box_Contents& Contents() { return contents_; }
  [[nodiscard]] const Box_Contents& Contents() const { return contents_; }

  /// True between "a" and the blank. The rows are the line's business, which has the clock.
  [[nodiscard]] bool Streaming() const { return streaming_; }
  void Stop_Stream() { streaming_ = false; }

  /// The command to which the last non-empty answer belongs; Info before the first.
  [[nodiscard]] Command Last_Command() const { return last_command_; }

  /// Seconds that the box takes before that answer begins.
  [[nodiscard]] double Answer_Time() const { return answer_time_; }

  /// The power comes on with a card in the socket: the master takes the card's bytes but for byte 0, which no
  /// box writes to a card. Without a card nothing happens.
  void Start_With_Card();

 private:
  enum class Run_Target { None, Master, Slave, Card };

  std::string Take(char c);
  std::string Take_Command_Character(char c);
  std::string Take_Run_Digit(char c, std::uint8_t nibble);
  std::string Take_Card_Digit(std::uint8_t nibble);
  [[nodiscard]] bool Card_Is_In() const;
  std::string Answer(Command command, std::string text);
  std::string Run(Command command);
  std::string Begin_Card_Run();
  std::string Begin_Run(Run_Target target, std::string prompt);
  std::string End_Run();
  void Store(std::uint8_t value);
  [[nodiscard]] bool Run_Open() const;
  [[nodiscard]] bool Heard() const;

  Box_Contents contents_;
  std::string pending_;  // start of a command word whose rest has not come yet
  Run_Target target_ = Run_Target::None;
  int offset_digits_left_ = 0;  // 2..1 while the start offset of a run is awaited
  std::uint8_t offset_ = 0;     // where the next byte goes; steps by itself, modulo 256
  std::optional<std::uint8_t> high_nibble_;
  bool streaming_ = false;
  Command last_command_ = Command::Info;
  double answer_time_ = 0;
};

}  // namespace kx::sim
