#pragma once

#include "platform/port_devices.h"

namespace kx::platform {

/// The serial devices that the kernel has registered, ordered by kind and number: ttyUSB2 before ttyUSB10. No
/// port is opened to look at it, because opening one raises its modem lines, and one that another program
/// holds would seem to be gone.
class Linux_Port_Devices : public Port_Devices {
 public:
  /// @p registry holds a folder for each terminal device.
  explicit Linux_Port_Devices(std::string registry = "/sys/class/tty/") : registry_(std::move(registry)) {}

  [[nodiscard]] std::vector<Port_Device> List() const override;

  /// True for a terminal device, whatever link leads there.
  [[nodiscard]] bool Exists(const std::string& port) const override;

  /// True when the user has the rights to @p port and no program that runs has left a lock file for it.
  [[nodiscard]] bool Is_Free(const std::string& port) const override;

 private:
  [[nodiscard]] bool Has_Hardware(const std::string& name) const;

  std::string registry_;
};

}  // namespace kx::platform
