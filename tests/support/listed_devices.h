#pragma once

#include <vector>

#include "platform/port_devices.h"

namespace kx::test {

/// A list of devices that a test fills in.
class Listed_Devices : public platform::Port_Devices {
 public:
  std::vector<platform::Port_Device> rows;
  [[nodiscard]] std::vector<platform::Port_Device> List() const override { return rows; }
};

}  // namespace kx::test
