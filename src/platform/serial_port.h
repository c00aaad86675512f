#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

namespace kx::platform {

/// Why the operating system refused a port: its own number and text; number 0 is success.
struct Port_Error {
  int number = 0;
  std::string text;
  [[nodiscard]] bool Ok() const { return number == 0; }
};

/// What the line reports besides data. `lost` means that the device is gone.
enum class Line_Event { received, break_signal, framing, overrun, parity, lost };

/// One serial device of the operating system, always 115200 baud, 8 data bits, no parity, 1 stop bit, raw, no
/// flow control. Text is one character a byte, NUL kept.
class Serial_Port {
 public:
  virtual ~Serial_Port() = default;
  virtual Port_Error Open(const std::string& path) = 0;
  virtual void Close() = 0;
  [[nodiscard]] virtual bool Is_Open() const = 0;

  /// Hands @p text to the device. False when the device has gone.
  virtual bool Write(std::string_view text) = 0;

  /// Lets the device deliver, then takes everything that has arrived.
  virtual std::string Read() = 0;

  /// Called from the event loop; at most one `lost` for each Open, after which the port is closed.
  std::function<void(Line_Event)> on_event;
};

}  // namespace kx::platform
