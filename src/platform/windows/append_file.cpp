#include <windows.h>

#include <utility>

#include "platform/files.h"
#include "platform/windows/system_text.h"

namespace kx::platform {
namespace {

File_Result Failed(const std::string& path) {
  const DWORD reason = GetLastError();
  return {path + ": " + Message_Of(reason), reason == ERROR_PATH_NOT_FOUND};
}

HANDLE Handle_Of(std::intptr_t handle) { return reinterpret_cast<HANDLE>(handle); }

/// Handle of @p path, made when it is missing.
HANDLE Open_Or_Make(const std::string& path, DWORD disposition) {
  return CreateFileW(Wide_Text(path).c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr, disposition,
                     FILE_ATTRIBUTE_NORMAL, nullptr);
}

/// True when all of @p bytes went to the file.
bool Write_All(HANDLE file, std::string_view bytes) {
  while (!bytes.empty()) {
    constexpr std::size_t largest_step = 1U << 16U;
    DWORD step = 0;
    const auto wanted = static_cast<DWORD>(bytes.size() < largest_step ? bytes.size() : largest_step);
    if (WriteFile(file, bytes.data(), wanted, &step, nullptr) == 0 || step == 0) return false;
    bytes.remove_prefix(step);
  }
  return true;
}

}  // namespace

Append_File::~Append_File() { static_cast<void>(Close()); }

File_Result Append_File::Open(const std::string& path, Start start) {
  static_cast<void>(Close());
  path_ = path;
  const HANDLE file = Open_Or_Make(path, start == Start::empty ? CREATE_ALWAYS : OPEN_ALWAYS);
  if (file == INVALID_HANDLE_VALUE) return Failed(path);
  if (GetFileType(file) != FILE_TYPE_DISK) {
    CloseHandle(file);
    return {path + ": not an ordinary file"};
  }
  handle_ = reinterpret_cast<std::intptr_t>(file);
  return {};
}

File_Result Append_File::Append(std::string_view bytes) {
  if (!Is_Open()) return {path_ + ": not open"};
  const HANDLE file = Handle_Of(handle_);
  LARGE_INTEGER end{};
  if (SetFilePointerEx(file, {}, &end, FILE_END) == 0) return Failed(path_);
  if (Write_All(file, bytes)) return {};
  File_Result result = Failed(path_);
  if (SetFilePointerEx(file, end, nullptr, FILE_BEGIN) == 0 || SetEndOfFile(file) == 0) {
    result.reason += "; its end is incomplete";
  }
  return result;
}

File_Result Append_File::Close() {
  const auto handle = std::exchange(handle_, none);
  return handle == none || CloseHandle(Handle_Of(handle)) != 0 ? File_Result{} : Failed(path_);
}

}  // namespace kx::platform
