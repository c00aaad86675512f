#include <windows.h>

#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "platform/folders.h"

namespace kx::platform {

std::vector<std::string> Drives() {
  std::vector<std::string> drives;
  const DWORD present = ::GetLogicalDrives();
  for (int i = 0; i < 26; ++i) {
    if ((present >> i & 1U) != 0) drives.push_back(std::string(1, static_cast<char>('A' + i)) + ":/");
  }
  if (const wchar_t* home = ::_wgetenv(L"USERPROFILE"); home != nullptr) {
    const std::u8string text = std::filesystem::path(home).generic_u8string();
    drives.emplace_back(std::string(text.begin(), text.end()) + "/");
  }
  return drives;
}

}  // namespace kx::platform
