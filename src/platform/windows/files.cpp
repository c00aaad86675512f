#include "platform/files.h"

#include <windows.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <optional>
#include <utility>

#include "platform/windows/system_text.h"

namespace kx::platform {
namespace {

File_Result Failed(const std::string& path, DWORD reason) {
  return {path + ": " + Message_Of(reason), reason == ERROR_FILE_NOT_FOUND || reason == ERROR_PATH_NOT_FOUND};
}

/// An open file, closed at the end of its life.
class Open_File {
 public:
  explicit Open_File(HANDLE handle) : handle_(handle) {}
  ~Open_File() { Close(); }
  Open_File(const Open_File&) = delete;
  Open_File& operator=(const Open_File&) = delete;

  [[nodiscard]] bool Is_Open() const { return handle_ != INVALID_HANDLE_VALUE; }
  [[nodiscard]] HANDLE Handle() const { return handle_; }
  bool Close() {
    const HANDLE handle = std::exchange(handle_, INVALID_HANDLE_VALUE);
    return handle == INVALID_HANDLE_VALUE || CloseHandle(handle) != 0;
  }

 private:
  HANDLE handle_;
};

HANDLE New_File(const std::string& path, DWORD attributes) {
  return CreateFileW(Wide_Text(path).c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, attributes, nullptr);
}

constexpr const char* is_directory = ": Is a directory";

/// Bytes; far above anything that this program writes, far below what a machine has.
constexpr LONGLONG largest_file = 1LL << 28U;

/// One call moves at most this many bytes.
constexpr std::size_t largest_step = 1U << 16U;

bool Write_All(HANDLE file, const std::string& bytes) {
  for (std::size_t done = 0; done < bytes.size();) {
    DWORD step = 0;
    const auto wanted = static_cast<DWORD>(std::min(largest_step, bytes.size() - done));
    if (WriteFile(file, bytes.data() + done, wanted, &step, nullptr) == 0 || step == 0) return false;
    done += step;
  }
  return true;
}

bool Read_All(HANDLE file, std::string& bytes) {
  bytes.clear();
  for (;;) {
    const std::size_t done = bytes.size();
    bytes.resize(done + largest_step);
    DWORD step = 0;
    const bool read = ReadFile(file, bytes.data() + done, largest_step, &step, nullptr) != 0;
    bytes.resize(done + (read ? step : 0));
    if (!read || step == 0) return read;
  }
}

/// Writes and flushes a new file. One that could not be completed is removed. 0, or the system's reason.
DWORD Write_And_Flush(const std::string& path, const std::string& bytes, DWORD attributes) {
  Open_File file(New_File(path, attributes));
  if (!file.Is_Open()) return GetLastError();
  if (Write_All(file.Handle(), bytes) && FlushFileBuffers(file.Handle()) != 0 && file.Close()) return 0;
  const DWORD reason = GetLastError();
  file.Close();
  DeleteFileW(Wide_Text(path).c_str());
  return reason;
}

/// Nothing when there is no such file.
std::optional<DWORD> Attributes(const std::string& path) {
  const DWORD attributes = GetFileAttributesW(Wide_Text(path).c_str());
  return attributes == INVALID_FILE_ATTRIBUTES ? std::nullopt : std::optional(attributes);
}

bool Is_Directory(const std::string& path) {
  return (Attributes(path).value_or(0) & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

/// Where new content is written: a name that nobody else gives a file, so that what a killed save has left is
/// known as ours at the next one.
std::string Name_Beside(const std::string& path) { return path + ".kxbench-new"; }

/// Where the old content lies while the file itself is written: next to it, or in the user's own folder for
/// such files, under a name made from the whole path.
std::array<std::string, 2> Names_Of_Copy(const std::string& path) {
  std::error_code none;
  std::string name = path;
  for (char& c : name) {
    if (c == '/' || c == '\\' || c == ':') c = '%';
  }
  const std::u8string folder = std::filesystem::temp_directory_path(none).generic_u8string();
  return {path + ".kxbench-old", std::string(folder.begin(), folder.end()) + name + ".kxbench-old"};
}

void Remove_Copies(const std::string& path) {
  for (const std::string& name : Names_Of_Copy(path)) DeleteFileW(Wide_Text(name).c_str());
}

/// Another way to the same file can help where names or folders are in the way, not where the disk is.
bool Another_Way_May_Help(DWORD reason) {
  switch (reason) {
    case ERROR_ACCESS_DENIED:
    case ERROR_SHARING_VIOLATION:
    case ERROR_NOT_SAME_DEVICE:
    case ERROR_PATH_NOT_FOUND:
    case ERROR_FILE_EXISTS:
    case ERROR_FILENAME_EXCED_RANGE:
      return true;
    default:
      return false;
  }
}

/// 0, or the system's reason; nothing stays beside then.
DWORD Replace_By_Way_Of(const std::string& beside, const std::string& path, const std::string& bytes) {
  const DWORD attributes = Attributes(path).value_or(FILE_ATTRIBUTE_NORMAL);
  if (const DWORD reason = Write_And_Flush(beside, bytes, attributes); reason != 0) return reason;
  constexpr DWORD over = MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH;
  if (MoveFileExW(Wide_Text(beside).c_str(), Wide_Text(path).c_str(), over) != 0) return 0;
  const DWORD reason = GetLastError();
  DeleteFileW(Wide_Text(beside).c_str());
  return reason;
}

/// The whole of the open file from its first byte, cut behind it, flushed.
bool Overwrite(HANDLE file, const std::string& bytes) {
  return SetFilePointer(file, 0, nullptr, FILE_BEGIN) == 0 && Write_All(file, bytes) &&
         SetEndOfFile(file) != 0 && FlushFileBuffers(file) != 0;
}

/// For a file that nothing can be renamed over. A program killed on the way leaves the copy; a disk that
/// fills up gets the old content back.
File_Result Write_In_Place(const std::string& path, const std::string& bytes) {
  std::string content;
  if (auto result = Read_Whole_File(path, content); !result.Ok()) return result;
  const auto names = Names_Of_Copy(path);
  std::string copy = names[0];
  DWORD reason = Write_And_Flush(copy, content, FILE_ATTRIBUTE_NORMAL);
  if (reason != 0) reason = Write_And_Flush(copy = names[1], content, FILE_ATTRIBUTE_NORMAL);
  if (reason != 0) return Failed(path, reason);
  const Open_File file(CreateFileW(Wide_Text(path).c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr,
                                   OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
  if (file.Is_Open() && Overwrite(file.Handle(), bytes)) return {};
  auto result = Failed(path, GetLastError());
  if (!file.Is_Open() || Overwrite(file.Handle(), content)) {
    DeleteFileW(Wide_Text(copy).c_str());
  } else {
    result.reason += "; the old content is in " + copy;
  }
  return result;
}

/// Why the file @p path cannot be replaced, as far as that can be seen at once.
File_Result Refusal_To_Replace(const std::string& path) {
  if (Is_Directory(path)) return {path + is_directory};
  const bool is_protected = (Attributes(path).value_or(0) & FILE_ATTRIBUTE_READONLY) != 0;
  return {is_protected ? path + ": the file is write protected" : ""};
}

}  // namespace

File_Result Read_Whole_File(const std::string& path, std::string& bytes) {
  if (Is_Directory(path)) return {path + is_directory};
  constexpr DWORD share = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
  const Open_File file(CreateFileW(Wide_Text(path).c_str(), GENERIC_READ, share, nullptr, OPEN_EXISTING,
                                   FILE_ATTRIBUTE_NORMAL, nullptr));
  if (!file.Is_Open()) return Failed(path, GetLastError());
  if (GetFileType(file.Handle()) != FILE_TYPE_DISK) return {path + ": not an ordinary file"};
  LARGE_INTEGER size{};
  if (GetFileSizeEx(file.Handle(), &size) == 0) return Failed(path, GetLastError());
  if (size.QuadPart > largest_file) return Failed(path, ERROR_FILE_TOO_LARGE);
  return Read_All(file.Handle(), bytes) ? File_Result{} : Failed(path, GetLastError());
}

File_Result Replace_File(const std::string& path, const std::string& beside, const std::string& bytes) {
  if (auto refusal = Refusal_To_Replace(path); !refusal.Ok()) return refusal;
  const bool exists = Attributes(path).has_value();
  DWORD reason = Replace_By_Way_Of(beside, path, bytes);
  if (Another_Way_May_Help(reason) && beside != Name_Beside(path)) {
    reason = Replace_By_Way_Of(Name_Beside(path), path, bytes);
  }
  if (reason != 0 && (!exists || !Another_Way_May_Help(reason))) return Failed(path, reason);
  if (reason != 0) {
    if (auto result = Write_In_Place(path, bytes); !result.Ok()) return result;
  }
  Remove_Copies(path);
  return {};
}

File_Result Replace_File(const std::string& path, const std::string& bytes) {
  return Replace_File(path, Name_Beside(path), bytes);
}

File_Result Check_Replaceable(const std::string& path, const std::string& beside) {
  if (auto refusal = Refusal_To_Replace(path); !refusal.Ok()) return refusal;
  if (Attributes(path)) return {};
  Open_File file(New_File(beside, FILE_ATTRIBUTE_NORMAL));
  if (!file.Is_Open()) return Failed(path, GetLastError());
  file.Close();
  DeleteFileW(Wide_Text(beside).c_str());
  return {};
}

std::string Working_Directory() {
  std::error_code error;
  const std::u8string current = std::filesystem::current_path(error).generic_u8string();
  std::string directory(current.begin(), current.end());
  if (!error && directory.back() != '/') directory += '/';
  return directory;
}

}  // namespace kx::platform
