#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "platform/folders.h"

namespace kx::platform {
namespace {

/// The list of mounts writes a blank, a tab, a line end and a backslash as three octal digits.
std::string Without_Escapes(const std::string& text) {
  std::string result;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '\\' && i + 3 < text.size()) {
      result += static_cast<char>(std::strtol(text.substr(i + 1, 3).c_str(), nullptr, 8));
      i += 3;
    } else {
      result += text[i];
    }
  }
  return result;
}

/// Where a person's volumes are mounted; all other mounts belong to the system.
bool Is_Volume(const std::string& place) {
  return place.starts_with("/media/") || place.starts_with("/mnt/") || place.starts_with("/run/media/") ||
         place == "/mnt";
}

}  // namespace

std::vector<std::string> Drives() {
  std::vector<std::string> drives{"/"};
  if (const char* home = std::getenv("HOME"); home != nullptr && *home == '/') {
    drives.emplace_back(home);
    if (drives.back().back() != '/') drives.back() += '/';
  }
  std::ifstream mounts("/proc/self/mounts");
  for (std::string line; std::getline(mounts, line);) {
    std::istringstream words(line);
    std::string device;
    std::string place;
    words >> device >> place;
    place = Without_Escapes(place);
    if (Is_Volume(place)) drives.push_back(place + "/");
  }
  for (auto drive = drives.begin(); drive != drives.end(); ++drive) {
    drives.erase(std::remove(drive + 1, drives.end(), *drive), drives.end());
  }
  return drives;
}

}  // namespace kx::platform
