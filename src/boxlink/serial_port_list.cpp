#include "boxlink/serial_port_list.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <filesystem>
#include <map>
#include <optional>
#include <string_view>

#include "boxlink/port_map.h"
#include "platform/seams.h"
#include "settings/failure.h"

namespace kx {
namespace {

using platform::Com_Services;
using platform::Port_Device;
using platform::Port_Interface;
using Ports = std::vector<clsSerialPort>;

constexpr int platform_nt = 2;
constexpr int first_with_interfaces = 5;  // major version

const Com_Services* Com() { return platform::seams.port_devices->Com(); }

/// What the operating system calls the port of a COM number; empty when it has none.
std::string System_Name(int number) { return Com() ? Com_Name(number) : Device_Path(number); }

struct Filter {
  bool only_existing;
  bool only_free;
  [[nodiscard]] bool Passes(clsSerialPort& port) const {
    return (!only_existing || port.CheckIfExist()) && (!only_free || !port.checkIfOpen());
  }
};

/// What one way of finding ports gave. An error leaves no ports.
struct Found {
  Ports ports;
  std::string error_text;

  void Add_If(const Filter& filter, clsSerialPort port) {
    if (filter.Passes(port)) ports.push_back(std::move(port));
  }
};

Found Ended_By(const platform::Port_Error& error) { return {{}, error.text}; }

Found Plain_Probe(std::int16_t count, const Filter& filter) {
  Found found;
  for (int number = 1; number <= count; ++number) {
    clsSerialPort port;
    port.COMx = static_cast<std::int16_t>(number);
    port.Name = port.COMxString();
    port.DevPath = In_Device_Space(port.Name);
    found.Add_If(filter, std::move(port));
  }
  return found;
}

/// COM number at the head of @p text, behind which nothing may follow when it is to be the @p whole text.
std::optional<std::int16_t> Number_At_Head(std::string_view text, bool whole) {
  std::int16_t number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  const bool at_end = end == text.data() + text.size();
  if (error != std::errc() || number < 1 || (whole && !at_end)) return {};
  return number;
}

std::string Up_To_NUL(const std::string& text) { return text.substr(0, text.find('\0')); }

/// The number in "Some maker's port (COM3)".
std::optional<std::int16_t> Number_In_Friendly_Name(std::string_view name) {
  constexpr std::string_view opening = "(COM";
  const std::size_t start = name.find(opening);
  if (start == std::string_view::npos) return {};
  const std::string_view behind = name.substr(start + opening.size());
  const std::size_t end = behind.find(')');
  if (end == std::string_view::npos) return {};
  return Number_At_Head(behind.substr(0, end), true);
}

std::optional<clsSerialPort> Port_Of_Interface(const Port_Interface& row) {
  if (!row.friendly_name || !row.description) return {};
  clsSerialPort port;
  port.Name = Up_To_NUL(*row.friendly_name);
  port.Description = Up_To_NUL(*row.description);
  port.IsUsb = row.location && Up_To_NUL(*row.location).ends_with("USB");
  const auto number = Number_In_Friendly_Name(port.Name);
  if (!number) return {};
  port.COMx = *number;
  port.DevPath = In_Device_Space(port.COMxString());
  return port;
}

Found Device_Interface_Way(const Com_Services& com, const Filter& filter) {
  const auto interfaces = com.Interfaces();
  if (!interfaces.error.Ok()) return Ended_By(interfaces.error);
  Found found;
  for (const Port_Interface& row : interfaces.rows) {
    if (auto port = Port_Of_Interface(row)) found.Add_If(filter, std::move(*port));
  }
  return found;
}

constexpr std::string_view usb_branch = "USBPORTS";

/// Port names are kept one level below these keys of the hardware branch.
bool Holds_Ports(const std::string& first_level, const std::string& second_level) {
  constexpr std::array<std::string_view, 3> marks{"*PNP0501", "*PNP0500", "Ports"};
  return first_level == usb_branch || std::ranges::any_of(marks, [&](std::string_view mark) {
           return second_level.find(mark) != std::string::npos;
         });
}

std::optional<clsSerialPort> Port_Of_Key(const Com_Services& com, const std::string& key, bool is_usb) {
  const auto port_name = com.Registry_Text(key, "PORTNAME");
  const std::size_t start = port_name ? port_name->find("COM") : std::string::npos;
  if (start == std::string::npos) return {};
  const auto number = Number_At_Head(std::string_view(*port_name).substr(start + 3), false);
  if (!number) return {};
  clsSerialPort port;
  port.Name = com.Registry_Text(key, "FRIENDLYNAME").value_or(*port_name);
  port.DevPath = In_Device_Space(*port_name);
  port.IsUsb = is_usb;
  port.COMx = *number;
  return port;
}

/// Calls @p visit with the name of every key below @p path until one of them fails or the walk does.
template <typename Visit>
platform::Port_Error For_Each_Key(const Com_Services& com, const std::string& path, Visit visit) {
  const auto keys = com.Registry_Keys(path);
  for (const std::string& name : keys.rows) {
    if (auto error = visit(name); !error.Ok()) return error;
  }
  return keys.error;
}

Found Registry_Way(const Com_Services& com, const Filter& filter) {
  const std::string root = "Enum";
  Found found;
  const auto error = For_Each_Key(com, root, [&](const std::string& first) {
    const std::string branch = root + '\\' + first;
    return For_Each_Key(com, branch, [&](const std::string& second) -> platform::Port_Error {
      if (!Holds_Ports(first, second)) return {};
      const std::string holder = branch + '\\' + second;
      return For_Each_Key(com, holder, [&](const std::string& third) -> platform::Port_Error {
        auto port = Port_Of_Key(com, holder + '\\' + third, first == usb_branch);
        if (port) found.Add_If(filter, std::move(*port));
        return {};
      });
    });
  });
  return error.Ok() ? found : Ended_By(error);
}

std::string Real_Path(const std::string& path) {
  std::error_code none;
  const auto real = std::filesystem::canonical(path, none);
  return none ? path : real.string();
}

/// The listed devices by what their paths lead to in the end: a number may stand for a link.
std::map<std::string, Port_Device> By_Real_Path() {
  std::map<std::string, Port_Device> devices;
  for (Port_Device& device : platform::seams.port_devices->List()) {
    std::string real = Real_Path(device.path);
    devices.emplace(std::move(real), std::move(device));
  }
  return devices;
}

/// A device that says nothing of itself is described by its path.
clsSerialPort Port_Of_Path(int number, const std::string& path, const Port_Device& device) {
  clsSerialPort port;
  port.COMx = static_cast<std::int16_t>(number);
  port.Description = device.description.empty() ? path : device.description;
  port.Name = port.Description + " (" + port.COMxString() + ")";
  port.DevPath = path;
  port.IsUsb = device.is_usb;
  return port;
}

/// The COM numbers whose devices are present. A device that the settings file puts under one more number is
/// there under both: both open it.
Found Path_Way(const Filter& filter) {
  auto devices = By_Real_Path();
  Found found;
  for (const auto& [number, path] : Numbered_Paths()) {
    if (!platform::seams.port_devices->Exists(path)) continue;
    found.Add_If(filter, Port_Of_Path(number, path, devices[Real_Path(path)]));
  }
  return found;
}

/// The ports as the operating system tells them; nothing when it does not say what system it is.
std::optional<Found> System_Ports(std::int16_t count, const Filter& filter) {
  if (Com() == nullptr) return Path_Way(filter);
  const auto version = Com()->Version();
  if (!version) return {};
  if (version->major_version >= first_with_interfaces) return Device_Interface_Way(*Com(), filter);
  if (version->platform_id == platform_nt) return Plain_Probe(count, {true, filter.only_free});
  return Registry_Way(*Com(), filter);
}

void Add_Missing(Ports& ports, const Ports& probed) {
  const Ports told = ports;
  for (const clsSerialPort& port : probed) {
    if (std::ranges::find(told, port.COMx, &clsSerialPort::COMx) == told.end()) ports.push_back(port);
  }
}

}  // namespace

std::string clsSerialPort::COMxString() const { return Com_Name(COMx); }

bool clsSerialPort::checkIfOpen() {
  Set_IsBusy(!platform::seams.port_devices->Is_Free(System_Name(COMx)));
  return IsBusy();
}

bool clsSerialPort::CheckIfExist() const { return platform::seams.port_devices->Exists(System_Name(COMx)); }

void clsSerialPortList::EnumerateList(std::int16_t count, bool only_existing, bool only_free,
                                      bool use_probe) {
  const Filter filter{only_existing, only_free};
  auto found = System_Ports(count, filter);
  if (!found) return PopulateList(count, only_existing, only_free);
  ports_ = std::move(found->ports);
  error_text_ = std::move(found->error_text);
  // The probe knows nothing but numbers: it completes a list and never makes one up.
  if (use_probe && !ports_.empty()) Add_Missing(ports_, Plain_Probe(count, filter).ports);
}

void clsSerialPortList::PopulateList(std::int16_t count, bool only_existing, bool only_free) {
  ports_ = Plain_Probe(count, {only_existing, only_free}).ports;
  error_text_.clear();
}

const clsSerialPort& clsSerialPortList::port(int index) const {
  if (index < 1 || index > PortCount()) Fail_Subscript();
  return ports_[static_cast<std::size_t>(index - 1)];
}

clsSerialPort& clsSerialPortList::port(int index) {
  return const_cast<clsSerialPort&>(std::as_const(*this).port(index));
}

}  // namespace kx
