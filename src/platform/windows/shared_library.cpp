#include "platform/shared_library.h"

#include <windows.h>

#include <algorithm>

#include "platform/windows/system_text.h"

namespace kx::platform {
namespace {

/// A drive or a share; the separator turned round, as the loader wants it.
std::string Absolute(std::string path) {
  std::ranges::replace(path, '/', '\\');
  const bool absolute = path.starts_with("\\\\") || (path.size() > 2 && path[1] == ':' && path[2] == '\\');
  return absolute ? path : std::string();
}

}  // namespace

void* Shared_Library::Entry(const char* name) {
  const std::string path = Absolute(path_);
  if (path.empty()) return nullptr;
  if (handle_ == nullptr) {
    handle_ = ::LoadLibraryExW(Wide_Text(path).c_str(), nullptr,
                               LOAD_LIBRARY_SEARCH_DLL_LOAD_DIR | LOAD_LIBRARY_SEARCH_SYSTEM32);
  }
  if (handle_ == nullptr) return nullptr;
  return reinterpret_cast<void*>(::GetProcAddress(static_cast<HMODULE>(handle_), name));
}

std::string Library_File_Name(std::string_view name) { return std::string(name) + ".dll"; }

}  // namespace kx::platform
