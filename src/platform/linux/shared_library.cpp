#include "platform/shared_library.h"

#include <dlfcn.h>

namespace kx::platform {

void* Shared_Library::Entry(const char* name) {
  if (!path_.starts_with('/')) return nullptr;
  if (handle_ == nullptr) handle_ = ::dlopen(path_.c_str(), RTLD_NOW | RTLD_LOCAL);
  return handle_ == nullptr ? nullptr : ::dlsym(handle_, name);
}

std::string Library_File_Name(std::string_view name) { return "lib" + std::string(name) + ".so"; }

}  // namespace kx::platform
