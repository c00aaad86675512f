#include "boxlink/port_map.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <string_view>

#include "platform/seams.h"
#include "settings/ini_file_adm.h"

namespace kx {
namespace {

/// COM numbers from @p first on stand for the devices @p prefix + 0, 1, 2 and so on.
struct Device_Run {
  int first;
  int count;
  std::string_view prefix;
};

constexpr std::array device_runs{
    Device_Run{1, 4, "/dev/ttyS"},
    Device_Run{5, 8, "/dev/ttyUSB"},
    Device_Run{13, 4, "/dev/ttyACM"},
};

constexpr int highest_com = std::numeric_limits<std::int16_t>::max();

std::string Mapped_Path(int com_number) {
  for (const Device_Run& run : device_runs) {
    const int index = com_number - run.first;
    if (index >= 0 && index < run.count) return std::string(run.prefix) + std::to_string(index);
  }
  return {};
}

bool Has_Number(const std::map<int, std::string>& paths, const std::string& path) {
  return std::ranges::any_of(paths, [&](const auto& numbered) { return numbered.second == path; });
}

/// What the settings file puts under a number.
std::map<int, std::string> Given_Paths() {
  auto paths = Read_Numbered_Keys("com_device");
  std::erase_if(paths, [](const auto& given) {
    return given.first < 1 || given.first > highest_com || given.second.empty();
  });
  return paths;
}

bool Has_Com_Names() { return platform::seams.port_devices->Com() != nullptr; }

std::string Missing_Help(int com_number, const std::string& device) {
  const std::string name = Com_Name(com_number);
  const std::string where =
      device.empty() ? "No device belongs to " + name : name + " is " + device + ", which is not there";
  return where + ".\nPlug the adapter in, choose another port in the preferences, or add a line com_device" +
         std::to_string(com_number) + "=/dev/... to the settings file.";
}

}  // namespace

std::string Com_Name(int com_number) { return "COM" + std::to_string(com_number); }

std::string Device_Path(int com_number) {
  if (com_number < 1) return {};
  const auto given = Given_Paths();
  if (const auto path = given.find(com_number); path != given.end()) return path->second;
  if (Has_Com_Names()) return In_Device_Space(Com_Name(com_number));
  if (com_number <= last_mapped_com) return Mapped_Path(com_number);
  return Numbered_Paths()[com_number];
}

std::map<int, std::string> Numbered_Paths() {
  auto paths = Given_Paths();
  for (int number = 1; number <= last_mapped_com; ++number) paths.emplace(number, Mapped_Path(number));
  int number = last_mapped_com;
  for (const platform::Port_Device& device : platform::seams.port_devices->List()) {
    if (Has_Number(paths, device.path)) continue;
    while (paths.contains(number)) ++number;
    paths.emplace(number, device.path);
  }
  return paths;
}

std::string In_Device_Space(const std::string& name) { return R"(\\.\)" + name; }

std::string Open_Help(const platform::Port_Error& error, int com_number, const std::string& device) {
  switch (error.number) {
    case 0:
      return {};
    case port_error::not_found:
      return Missing_Help(com_number, device);
    case port_error::no_permission:
      return "You have no right to use " + device +
             ". Serial ports belong to the group dialout; join it with\n"
             "sudo usermod -a -G dialout $USER\nand log in again.";
    case port_error::in_use:
      return device + " is in use by another program. Close that program and try again.";
    default:
      return device + ": " + error.text;
  }
}

}  // namespace kx
