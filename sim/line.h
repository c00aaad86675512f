#pragma once

#include <cstddef>
#include <deque>
#include <optional>
#include <string>
#include <string_view>

#include "sim/box.h"
#include "sim/drive.h"
#include "sim/faults.h"

namespace kx::sim {

/// Whether a line takes the time that a real one takes.
enum class Pace { Real, At_Once };

/// Seconds that one character takes at 115200 baud, eight data bits, no parity, one stop bit.
inline constexpr double Character_Time = 10.0 / 115200.0;

/// What has gone over a line since it was made.
struct Line_Counts {
  std::size_t Exchanges = 0;       ///< Answers that the box gave, before any fault took one away.
  std::size_t Bytes_Received = 0;  ///< From the PC.
  std::size_t Bytes_Sent = 0;      ///< Delivered to the PC.
  std::size_t Rows_Sent = 0;       ///< Rows of the log stream, before any fault.
};

/// A box, its faults and the time on the wire, all on a clock that the caller owns.
///
/// Every @p now is in seconds from a start of the caller's choice and must not run backwards. An answer
/// reaches the PC in one piece when its last character would have arrived, as through a USB adapter.
class Line {
 public:
  explicit Line(Box box = Box(), const Faults& faults = {}, Pace pace = Pace::Real);

  /// The PC hands @p bytes to its port at @p now; the time they need to reach the box is counted from here.
  void Receive(std::string_view bytes, double now);

  /// Everything that has reached the PC by @p now and was not delivered before.
  std::string Deliver(double now);

  /// When the next piece reaches the PC; nothing while none is on its way.
  [[nodiscard]] std::optional<double> Next_Delivery() const;

  /// True once a fault has closed the line; nothing goes either way from then on.
  [[nodiscard]] bool Hung_Up() const { return hung_up_; }

  /// Changes the faults and starts their counts anew, as with another cable: a closed line is open again, and
  /// what was on its way is lost.
  void Set_Faults(const Faults& faults);

  [[nodiscard]] Box& The_Box() { return box_; }
  [[nodiscard]] const Line_Counts& Counts() const { return counts_; }

 private:
  struct Delivery {
    double When;
    std::string Text;
    bool Hang_Up = false;  ///< The line closes right behind Text.
  };

  void Take(char c);
  [[nodiscard]] std::string As_Received(char c) const;
  void Feed(char c);
  void Begin_Stream();
  void Stream_Until(double now);
  void Send_Row();
  void Send(Shaped_Answer answer, double not_before);
  void Send_Piece(std::string text, double character_time);
  void Close();

  Box box_;
  Fault_Injector injector_;
  double character_time_;  // 0 when everything goes at once
  std::deque<Delivery> on_its_way_;
  std::string held_;       // answers waiting for the next one
  double pc_done_ = 0;     // when the last character of the PC has reached the box
  double box_done_ = 0;    // when the last character of the box reaches the PC
  std::size_t taken_ = 0;  // bytes received since the faults were set
  Drive drive_;
  double next_row_ = 0;       // when the stream sends its next row
  std::size_t streamed_ = 0;  // rows since the faults were set
  bool late_ = false;         // the first start of a stream has been missed
  double deaf_until_ = 0;     // the box is off
  bool hung_up_ = false;
  Line_Counts counts_;
};

}  // namespace kx::sim
