#pragma once

#include <algorithm>
#include <optional>
#include <string>
#include <vector>

#include "platform/serial_port.h"

namespace kx::platform {

/// One serial device that the operating system knows.
struct Port_Device {
  std::string path;         ///< what opens it, such as "/dev/ttyUSB0"
  std::string name;         ///< friendly name
  std::string description;  ///< what the device says of itself
  bool is_usb = false;
};

/// Version record of a system with COM ports. Platform 2 is the NT line, 1 the line before it, 0 an add-on to
/// a system older than both.
struct System_Version {
  int platform_id = 0;
  int major_version = 0;
  int minor_version = 0;
};

/// A present device of the COM port class. A property that it lacks is not set; a text may hold more behind a
/// NUL. All texts are UTF-8.
struct Port_Interface {
  std::optional<std::string> friendly_name;
  std::optional<std::string> description;
  std::optional<std::string> location;
};

/// What a list call of the operating system gave; with an error the walk has ended early.
template <typename Row>
struct Listing {
  std::vector<Row> rows;
  Port_Error error;
};

/// What a system that calls its ports COM1, COM2 and so on tells about them.
class Com_Services {
 public:
  virtual ~Com_Services() = default;

  /// Nothing when the system does not tell.
  [[nodiscard]] virtual std::optional<System_Version> Version() const = 0;

  /// The present devices of the COM port class.
  [[nodiscard]] virtual Listing<Port_Interface> Interfaces() const = 0;

  /// Names of the keys below @p path of the local machine's registry, which is parted by backslashes.
  [[nodiscard]] virtual Listing<std::string> Registry_Keys(const std::string& path) const = 0;

  /// Text value @p name of the key @p path; nothing when the key or the value is missing.
  [[nodiscard]] virtual std::optional<std::string> Registry_Text(const std::string& path,
                                                                 const std::string& name) const = 0;
};

/// The serial devices of the machine. A port is named by its path, or by its COM name on a system that has
/// Com_Services. None of the questions opens a device, but for Is_Free where the system has no other answer.
class Port_Devices {
 public:
  virtual ~Port_Devices() = default;

  /// The present devices in a stable order; none on a system with Com_Services.
  [[nodiscard]] virtual std::vector<Port_Device> List() const = 0;

  /// True when the system knows @p port as a serial port. By default that is so for the listed ones.
  [[nodiscard]] virtual bool Exists(const std::string& port) const {
    return std::ranges::any_of(List(), [&](const Port_Device& device) { return device.path == port; });
  }

  /// True when @p port could be opened for this program alone. By default every port can that exists.
  [[nodiscard]] virtual bool Is_Free(const std::string& port) const { return Exists(port); }

  /// Nothing on a system whose ports are paths.
  [[nodiscard]] virtual const Com_Services* Com() const { return nullptr; }
};

}  // namespace kx::platform
