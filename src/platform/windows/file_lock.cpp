#include "platform/file_lock.h"

#include <windows.h>

#include <utility>

#include "platform/windows/system_text.h"

namespace kx::platform {

File_Lock::~File_Lock() { Release(); }

File_Result File_Lock::Take(const std::string& path) {
  Release();
  const HANDLE file = CreateFileW(Wide_Text(path).c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr,
                                  OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL | FILE_FLAG_DELETE_ON_CLOSE, nullptr);
  if (file == INVALID_HANDLE_VALUE) return {path + ": " + Message_Of(GetLastError())};
  path_ = path;
  handle_ = reinterpret_cast<std::intptr_t>(file);
  return {};
}

void File_Lock::Release() {
  if (Held()) CloseHandle(reinterpret_cast<HANDLE>(std::exchange(handle_, none)));
}

}  // namespace kx::platform
