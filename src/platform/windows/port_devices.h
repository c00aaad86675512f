#pragma once

#include "platform/port_devices.h"

namespace kx::platform {

/// The serial ports of Windows, told by its device database, its registry and the ports themselves.
class Windows_Port_Devices : public Port_Devices, public Com_Services {
 public:
  [[nodiscard]] std::vector<Port_Device> List() const override { return {}; }
  [[nodiscard]] bool Exists(const std::string& port) const override;
  [[nodiscard]] bool Is_Free(const std::string& port) const override;
  [[nodiscard]] const Com_Services* Com() const override { return this; }

  [[nodiscard]] std::optional<System_Version> Version() const override;
  [[nodiscard]] Listing<Port_Interface> Interfaces() const override;
  [[nodiscard]] Listing<std::string> Registry_Keys(const std::string& path) const override;
  [[nodiscard]] std::optional<std::string> Registry_Text(const std::string& path,
                                                         const std::string& name) const override;
};

}  // namespace kx::platform
