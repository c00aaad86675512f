#pragma once

#include <map>
#include <string>

#include "platform/serial_port.h"

/// Which device a COM number stands for. Where ports are paths, the numbers are the program's own: those up
/// to last_mapped_com stay the same from one start to the next, those above count what else there is. A line
/// com_device<n>=path of the settings file puts any device under a number for good.
namespace kx {

/// Numbers of Port_Error that the program tells apart.
namespace port_error {
inline constexpr int not_found = 1;
inline constexpr int no_permission = 2;
inline constexpr int in_use = 3;
inline constexpr int unsupported = 7;
}  // namespace port_error

/// Highest number with a device of its own; the ones above stand for the further devices of the machine.
inline constexpr int last_mapped_com = 16;

/// What opens COM @p com_number; empty when the number stands for no device.
[[nodiscard]] std::string Device_Path(int com_number);

/// Paths of all numbers that stand for something, present or not, on a system whose ports are paths.
[[nodiscard]] std::map<int, std::string> Numbered_Paths();

/// How the port @p name is opened on a system that has COM names of its own.
[[nodiscard]] std::string In_Device_Space(const std::string& name);

/// "COM" and the number.
[[nodiscard]] std::string Com_Name(int com_number);

/// What the user can do about a port that could not be opened; empty when it could. @p device is the path
/// that was tried.
[[nodiscard]] std::string Open_Help(const platform::Port_Error& error, int com_number,
                                    const std::string& device);

}  // namespace kx
