#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

#include "platform/serial_port.h"

namespace kx {

/// The text of the failure with which a device that has gone answers every use.
inline constexpr const char* lost_connection = "Lost connection with USB port";

/// Baud, parity, data bits and stop bits of the box, which no other device here has.
inline constexpr std::string_view line_settings = "115200,n,8,1";

/// What CommEvent tells of the event that is being reported.
namespace comm_event {
inline constexpr int receive = 2;
inline constexpr int break_signal = 1001;
inline constexpr int framing = 1004;
inline constexpr int overrun = 1006;
inline constexpr int parity = 1009;
}  // namespace comm_event

/// The serial line to the box, by COM number. Text is Latin-1, one character a byte, NUL kept.
///
/// A device that goes away closes the port. From then until the program closes or opens it again, what had
/// arrived can still be taken, and after that every use throws Failure "Lost connection with USB port".
class Comm_Port {
 public:
  /// Characters that may wait to be taken; what comes on top of them is lost.
  static constexpr std::size_t input_buffer_size = 16384;

  /// COM number that the next opening uses; an open port keeps its device.
  void Set_CommPort(int com_number);
  [[nodiscard]] int CommPort() const { return com_number_; }

  /// Line settings of the next opening; it fails for any but line_settings.
  void Set_Settings(std::string_view settings) { settings_ = settings; }

  /// Opens the port, with RThreshold and InputLen 0, or closes it. Opening an open port does nothing.
  platform::Port_Error Set_PortOpen(bool open);
  [[nodiscard]] bool PortOpen() const;

  /// Device that the last opening used or tried; empty when the COM number stands for none.
  [[nodiscard]] const std::string& Device() const { return device_; }

  /// True from the loss of the device until the port is closed or opened by the program.
  [[nodiscard]] bool Lost() const { return lost_; }

  /// Sends @p text as it stands; to a closed port nothing goes.
  void Output(std::string_view text);

  /// Takes what has arrived, at most InputLen characters of it; an InputLen of 0 is no limit.
  [[nodiscard]] std::string Input();

  /// Characters that wait to be taken.
  [[nodiscard]] int InBufferCount();

  /// How many characters must wait before their arrival is reported; 0 reports none.
  int RThreshold = 0;
  int InputLen = 0;

  /// Code of the event being reported, see comm_event.
  [[nodiscard]] int CommEvent() const { return event_; }

  /// Called from the event loop with CommEvent set.
  std::function<void()> OnComm;

  /// Called from the event loop whenever characters have come, whatever RThreshold is, behind the receive
  /// event if there is one. For a look at Waiting; it takes nothing.
  std::function<void()> OnArrival;

  /// What has arrived and has not been taken.
  [[nodiscard]] std::string_view Waiting() const { return waiting_; }

  /// Closes the port and forgets everything but OnComm and OnArrival.
  void Reset();

 private:
  platform::Port_Error Open();
  void Close();
  void Report(platform::Line_Event event);
  void Raise(int code);
  void Report_Enough();
  void Note_Loss();
  void Take_Arrived();
  bool Keep(const std::string& arrived);
  void Fail_If_Lost() const;

  int com_number_ = 1;
  std::string settings_{line_settings};
  std::string device_;
  std::string waiting_;
  bool fresh_ = false;  // characters have come since the last receive event
  bool lost_ = false;
  int event_ = 0;
};

/// The only serial port object of the program; the log and the card paths borrow it.
extern Comm_Port MSComm1;

}  // namespace kx
