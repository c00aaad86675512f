#include "boxlink/preferences.h"

#include <algorithm>
#include <optional>

#include "platform/seams.h"
#include "settings/ini_file_adm.h"
#include "settings/refresh.h"
#include "settings/session.h"

namespace kx {
namespace {

/// Highest number of the ports that are looked for by number.
constexpr std::int16_t probed_ports = 16;

/// Ports above this number are marked in the list; they can be chosen all the same.
constexpr int last_unmarked_com = 16;

std::string Row_Text(const clsSerialPort& port) {
  const std::string mark = port.COMx > last_unmarked_com ? "Not available! " : "";
  return mark + port.COMxString() + "  " + port.Description;
}

constexpr const char* interface_key = "Default_Interface";

/// A system's name; a version number that is not set holds for all.
struct Named_Version {
  int platform_id;
  std::optional<int> major_version;
  std::optional<int> minor_version;
  const char* name;
};

constexpr std::array named_versions{
    Named_Version{0, {}, {}, "Windows 3.1"},       Named_Version{1, {}, 0, "Windows 95"},
    Named_Version{1, {}, 10, "Windows 98"},        Named_Version{1, {}, 90, "Windows ME"},
    Named_Version{2, 3, 51, "Windows NT 3.51"},    Named_Version{2, 4, 0, "Windows NT 4.0"},
    Named_Version{2, 5, 2, "Windows server 2003"},
};

}  // namespace

int Option_Of_Interface(std::string_view word) {
  const auto* const option = std::ranges::find(interface_options, word, &Interface_Option::word);
  return option == interface_options.end() ? -1 : static_cast<int>(option - interface_options.begin());
}

clsSerialPortList List_Ports() {
  clsSerialPortList ports;
  ports.EnumerateList(probed_ports, false, false, false);
  return ports;
}

std::vector<std::string> Port_Rows(const clsSerialPortList& ports) {
  std::vector<std::string> rows;
  for (int index = 1; index <= ports.PortCount(); ++index) rows.push_back(Row_Text(ports.port(index)));
  return rows;
}

int Row_Of_Port(const clsSerialPortList& ports, int com_number) {
  for (int index = 1; index <= ports.PortCount(); ++index) {
    if (ports.port(index).COMx == com_number) return index - 1;
  }
  return -1;
}

void Apply_Preferences(const clsSerialPortList& ports, int row, const std::string& interface_word) {
  std::vector<std::pair<std::string, std::string>> kept{{interface_key, interface_word}};
  if (row >= 0) {
    Com_Port_Number = ports.port(row + 1).COMx;
    kept.insert(kept.begin(), {"comport1", std::to_string(Com_Port_Number)});
  }
  Default_Interface = interface_word;
  Write_Keys(kept);
  Update_All();
}

void toggle_interface() {
  const int next = Option_Of_Interface(Default_Interface) + 1;
  const auto index = static_cast<std::size_t>(next) % interface_options.size();
  Default_Interface = interface_options[index].word;
  Write_Key(interface_key, Default_Interface);
  Update_All();
}

std::string OS_Name(int platform_id, int major_version, int minor_version) {
  const auto same_family = [&](const Named_Version& row) { return row.platform_id == platform_id; };
  if (std::ranges::none_of(named_versions, same_family)) return {};
  const auto* const row = std::ranges::find_if(named_versions, [&](const Named_Version& named) {
    return same_family(named) && named.major_version.value_or(major_version) == major_version &&
           named.minor_version.value_or(minor_version) == minor_version;
  });
  return row == named_versions.end() ? "OS version not detected" : row->name;
}

std::string Label_OS_Text() {
  const auto* com = platform::seams.port_devices->Com();
  const auto version = com == nullptr ? std::nullopt : com->Version();
  const std::string name =
      version ? OS_Name(version->platform_id, version->major_version, version->minor_version) : "";
  return name.empty() ? platform::seams.desktop->System_Name() : name;
}

}  // namespace kx
