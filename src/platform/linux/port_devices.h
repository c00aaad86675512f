#pragma once

#include <filesystem>
#include <string>

#include "platform/port_devices.h"

namespace kx::platform {

/// The serial devices that the kernel has registered, ordered by kind and number: ttyUSB2 before ttyUSB10. No
/// port is opened to look at it, because opening one raises its modem lines, and one that another program
/// holds would seem to be gone.
class Linux_Port_Devices : public Port_Devices {
 public:
  /// @p registry holds the kernel's folder for each terminal device, @p notes the file that the device
  /// manager keeps for each device.
  explicit Linux_Port_Devices(std::string registry = "/sys/class/tty/", std::string notes = "/run/udev/data/")
      : registry_(std::move(registry)), notes_(std::move(notes)) {}

  [[nodiscard]] std::vector<Port_Device> List() const override;

  /// True for a terminal device, whatever link leads there.
  [[nodiscard]] bool Exists(const std::string& port) const override;

  /// True when the user has the rights to @p port and no program that runs has left a lock file for it.
  [[nodiscard]] bool Is_Free(const std::string& port) const override;

 private:
  [[nodiscard]] bool Has_Hardware(const std::string& name) const;

  [[nodiscard]] Port_Device Row(const std::filesystem::path& place) const;
  [[nodiscard]] std::string Noted_Model(const std::string& device_number) const;

  std::string registry_;
  std::string notes_;
};

}  // namespace kx::platform
