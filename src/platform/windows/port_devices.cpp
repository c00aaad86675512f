#include "platform/windows/port_devices.h"

#include <windows.h>
// These need the declarations of windows.h before them.
#include <setupapi.h>

#include "platform/windows/system_text.h"

namespace kx::platform {
namespace {

constexpr GUID com_port_class{0x86E0D1E0, 0x8089, 0x11D0, {0x9C, 0xE4, 0x08, 0x00, 0x3E, 0x30, 0x1F, 0x73}};
constexpr DWORD longest_name = 256;  // characters of a device path and of a registry key

Port_Error Error_Of(DWORD number) { return {static_cast<int>(number), Message_Of(number)}; }

/// The present devices of the COM port class.
class Device_Set {
 public:
  Device_Set()
      : set_(SetupDiGetClassDevsA(&com_port_class, nullptr, nullptr, DIGCF_PRESENT | DIGCF_DEVICEINTERFACE)) {
  }
  ~Device_Set() {
    if (Is_Open()) SetupDiDestroyDeviceInfoList(set_);
  }
  Device_Set(const Device_Set&) = delete;
  Device_Set& operator=(const Device_Set&) = delete;

  [[nodiscard]] bool Is_Open() const { return set_ != INVALID_HANDLE_VALUE; }
  [[nodiscard]] HDEVINFO Handle() const { return set_; }

 private:
  HDEVINFO set_;
};

std::optional<std::string> Property(HDEVINFO set, SP_DEVINFO_DATA& device, DWORD property) {
  DWORD size = 0;
  SetupDiGetDeviceRegistryPropertyA(set, &device, property, nullptr, nullptr, 0, &size);
  std::string bytes(size, '\0');
  auto* room = reinterpret_cast<BYTE*>(bytes.data());
  if (SetupDiGetDeviceRegistryPropertyA(set, &device, property, nullptr, room, size, nullptr) == 0) return {};
  return From_Code_Page(bytes);
}

Port_Interface Row(HDEVINFO set, SP_DEVICE_INTERFACE_DATA& interface_data) {
  struct {
    SP_DEVICE_INTERFACE_DETAIL_DATA_A head;
    char path[longest_name];
  } detail{};
  detail.head.cbSize = sizeof detail.head;
  SP_DEVINFO_DATA device{};
  device.cbSize = sizeof device;
  SetupDiGetDeviceInterfaceDetailA(set, &interface_data, &detail.head, sizeof detail, nullptr, &device);
  return {Property(set, device, SPDRP_FRIENDLYNAME), Property(set, device, SPDRP_DEVICEDESC),
          Property(set, device, SPDRP_LOCATION_INFORMATION)};
}

/// A key of the local machine's registry, open for reading.
class Registry_Key {
 public:
  explicit Registry_Key(const std::string& path)
      : error_(RegOpenKeyExA(HKEY_LOCAL_MACHINE, To_Code_Page(path).c_str(), 0, KEY_READ, &key_)) {}
  ~Registry_Key() {
    if (error_ == ERROR_SUCCESS) RegCloseKey(key_);
  }
  Registry_Key(const Registry_Key&) = delete;
  Registry_Key& operator=(const Registry_Key&) = delete;

  [[nodiscard]] LSTATUS Error() const { return error_; }
  [[nodiscard]] HKEY Handle() const { return key_; }

 private:
  HKEY key_ = nullptr;
  LSTATUS error_;
};

}  // namespace

bool Windows_Port_Devices::Exists(const std::string& port) const {
  struct {
    COMMCONFIG head;
    char provider_data[1024];
  } config{};
  config.head.dwSize = sizeof config.head;
  DWORD size = sizeof config;
  return GetDefaultCommConfigA(port.c_str(), &config.head, &size) != 0 &&
         config.head.dwProviderSubType == PST_RS232;
}

/// Names of more than one digit open in the device space only.
bool Windows_Port_Devices::Is_Free(const std::string& port) const {
  const HANDLE handle = CreateFileA((R"(\\.\)" + port).c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr,
                                    OPEN_EXISTING, 0, nullptr);
  return handle != INVALID_HANDLE_VALUE && CloseHandle(handle) != 0;
}

std::optional<System_Version> Windows_Port_Devices::Version() const {
  OSVERSIONINFOA version{};
  version.dwOSVersionInfoSize = sizeof version;
  if (GetVersionExA(&version) == 0) return {};
  return System_Version{static_cast<int>(version.dwPlatformId), static_cast<int>(version.dwMajorVersion),
                        static_cast<int>(version.dwMinorVersion)};
}

Listing<Port_Interface> Windows_Port_Devices::Interfaces() const {
  const Device_Set devices;
  if (!devices.Is_Open()) return {{}, Error_Of(GetLastError())};
  Listing<Port_Interface> listing;
  SP_DEVICE_INTERFACE_DATA data{};
  data.cbSize = sizeof data;
  for (DWORD i = 0; SetupDiEnumDeviceInterfaces(devices.Handle(), nullptr, &com_port_class, i, &data) != 0;
       ++i) {
    listing.rows.push_back(Row(devices.Handle(), data));
  }
  if (const DWORD end = GetLastError(); end != ERROR_NO_MORE_ITEMS) listing.error = Error_Of(end);
  return listing;
}

Listing<std::string> Windows_Port_Devices::Registry_Keys(const std::string& path) const {
  const Registry_Key key(path);
  LSTATUS end = key.Error();
  Listing<std::string> listing;
  for (DWORD i = 0; end == ERROR_SUCCESS; ++i) {
    char name[longest_name];
    DWORD length = sizeof name;
    end = RegEnumKeyExA(key.Handle(), i, name, &length, nullptr, nullptr, nullptr, nullptr);
    if (end == ERROR_SUCCESS) listing.rows.push_back(From_Code_Page({name, length}));
  }
  if (end != ERROR_NO_MORE_ITEMS) listing.error = Error_Of(static_cast<DWORD>(end));
  return listing;
}

std::optional<std::string> Windows_Port_Devices::Registry_Text(const std::string& path,
                                                               const std::string& name) const {
  const Registry_Key key(path);
  if (key.Error() != ERROR_SUCCESS) return {};
  char text[longest_name];
  DWORD size = sizeof text;
  DWORD type = 0;
  auto* room = reinterpret_cast<BYTE*>(text);
  if (RegQueryValueExA(key.Handle(), name.c_str(), nullptr, &type, room, &size) != ERROR_SUCCESS) return {};
  if (type != REG_SZ) return {};
  const std::string bytes(text, size);
  return From_Code_Page(bytes.substr(0, bytes.find('\0')));
}

}  // namespace kx::platform
