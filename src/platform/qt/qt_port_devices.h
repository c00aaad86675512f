#pragma once

#include "platform/port_devices.h"

namespace kx::platform {

/// The serial devices that Linux lists, ordered by kind and number: ttyUSB2 before ttyUSB10.
class Qt_Port_Devices : public Port_Devices {
 public:
  [[nodiscard]] std::vector<Port_Device> List() const override;
};

}  // namespace kx::platform
