#include "platform/linux/port_devices.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <string_view>
#include <utility>

namespace kx::platform {
namespace {

namespace fs = std::filesystem;

std::string First_Line(const fs::path& path) {
  std::ifstream file(path);
  std::string line;
  std::getline(file, line);
  return line;
}

/// Where the kernel keeps a terminal: below the device that it belongs to, or below "virtual".
fs::path Place(const fs::path& terminal) {
  std::error_code none;
  return terminal.parent_path() / fs::read_symlink(terminal, none);
}

/// Consoles and pseudo terminals have no device behind them; a radio link has one only while it is up.
bool Is_Serial(const fs::path& place) {
  return place.string().find("/virtual/") == std::string::npos ||
         place.filename().string().starts_with("rfcomm");
}

/// The folder of the USB device that a terminal belongs to; empty when it belongs to none.
fs::path Usb_Device(const fs::path& place) {
  if (place.string().find("/usb") == std::string::npos) return {};
  std::error_code none;
  for (fs::path folder = place.parent_path(); folder.has_relative_path(); folder = folder.parent_path())
    if (fs::exists(folder / "idVendor", none)) return folder;
  return {};
}

/// @p text with "\x20" and the like as the characters that they stand for.
std::string Without_Escapes(std::string_view text) {
  std::string plain;
  for (std::size_t at = 0; at < text.size(); ++at) {
    const std::string_view digits = text.substr(at).starts_with("\\x") ? text.substr(at + 2, 2) : "";
    unsigned code = 0;
    const char* end = std::from_chars(digits.data(), digits.data() + digits.size(), code, 16).ptr;
    const bool escape = code != 0 && end == digits.data() + 2;
    plain += escape ? static_cast<char>(code) : text[at];
    if (escape) at += 3;
  }
  return plain;
}

/// Kind and number of a device: "ttyUSB10" gives "ttyUSB" and "10". Longer numbers come later.
std::pair<std::string, std::string> Split(const std::string& name) {
  const std::size_t digits = name.find_last_not_of("0123456789") + 1;
  return {name.substr(0, digits), name.substr(digits)};
}

bool Before(const Port_Device& a, const Port_Device& b) {
  const auto [a_kind, a_number] = Split(a.name);
  const auto [b_kind, b_number] = Split(b.name);
  if (a_kind != b_kind) return a_kind < b_kind;
  if (a_number.size() != b_number.size()) return a_number.size() < b_number.size();
  return a_number < b_number;
}

std::string Real_Path(const std::string& path) {
  std::error_code none;
  return fs::canonical(path, none).string();
}

/// "LCK.." and the path, without the folder of the devices and without separators.
std::string Lock_Name(std::string path) {
  constexpr std::string_view devices = "/dev/";
  if (path.starts_with(devices)) path.erase(0, devices.size());
  std::ranges::replace(path, '/', '_');
  return "LCK.." + path;
}

/// True when a program that still runs has written its number into a lock file for @p path.
bool Is_Locked(const std::string& path) {
  for (const char* folder : {"/var/lock/", "/var/lock/lockdev/", "/tmp/"}) {
    pid_t owner = 0;
    std::ifstream(folder + Lock_Name(path)) >> owner;
    if (owner > 0 && (::kill(owner, 0) == 0 || errno == EPERM)) return true;
  }
  return false;
}

}  // namespace

/// The kernel keeps places for serial chips that the machine does not have; their chip type is 0.
bool Linux_Port_Devices::Has_Hardware(const std::string& name) const {
  return First_Line(registry_ + name + "/type") != "0";
}

/// What the device manager has noted when the device came. The kernel has the text too, but asking for it
/// waits for a device that is being reset or has stopped to answer.
std::string Linux_Port_Devices::Noted_Model(const std::string& device_number) const {
  constexpr std::string_view key = "E:ID_MODEL_ENC=";
  std::ifstream file(notes_ + "c" + device_number);
  for (std::string line; std::getline(file, line);) {
    if (line.starts_with(key)) return Without_Escapes(std::string_view(line).substr(key.size()));
  }
  return {};
}

Port_Device Linux_Port_Devices::Row(const std::filesystem::path& place) const {
  const std::string name = place.filename().string();
  const fs::path usb = Usb_Device(place);
  if (usb.empty()) return {"/dev/" + name, name, "", false};
  std::string model = Noted_Model(First_Line(place / "dev"));
  if (model.empty()) model = First_Line(usb / "product");
  return {"/dev/" + name, name, model, true};
}

std::vector<Port_Device> Linux_Port_Devices::List() const {
  std::vector<Port_Device> devices;
  std::error_code none;
  for (const auto& entry : fs::directory_iterator(registry_, none)) {
    const fs::path place = Place(entry.path());
    if (Is_Serial(place) && Has_Hardware(place.filename())) devices.push_back(Row(place));
  }
  std::sort(devices.begin(), devices.end(), Before);
  return devices;
}

bool Linux_Port_Devices::Exists(const std::string& port) const {
  struct stat file {};
  if (::stat(port.c_str(), &file) != 0 || !S_ISCHR(file.st_mode)) return false;
  return Has_Hardware(fs::path(Real_Path(port)).filename());
}

bool Linux_Port_Devices::Is_Free(const std::string& port) const {
  return Exists(port) && ::access(port.c_str(), R_OK | W_OK) == 0 && !Is_Locked(port) &&
         !Is_Locked(Real_Path(port));
}

}  // namespace kx::platform
