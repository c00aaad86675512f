#pragma once

#include <string>
#include <vector>

namespace kx::platform {

/// One serial device that the operating system knows.
struct Port_Device {
  std::string path;         ///< what opens it, such as "/dev/ttyUSB0"
  std::string name;         ///< friendly name
  std::string description;  ///< what the device says of itself
  bool is_usb = false;
};

/// The serial devices that are present, in a stable order.
class Port_Devices {
 public:
  virtual ~Port_Devices() = default;
  [[nodiscard]] virtual std::vector<Port_Device> List() const = 0;
};

}  // namespace kx::platform
