#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <utility>

#include "platform/files.h"

namespace kx::platform {
namespace {

File_Result Failed(const std::string& path) { return {path + ": " + std::strerror(errno), errno == ENOENT}; }

/// True when all of @p bytes went to the descriptor.
bool Write_All(int descriptor, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t step = ::write(descriptor, bytes.data(), bytes.size());
    if (step < 0 && errno == EINTR) continue;
    if (step <= 0) return false;
    bytes.remove_prefix(static_cast<std::size_t>(step));
  }
  return true;
}

}  // namespace

Append_File::~Append_File() { static_cast<void>(Close()); }

File_Result Append_File::Open(const std::string& path, Start start) {
  static_cast<void>(Close());
  path_ = path;
  // Not blocking: a pipe without a reader would hold up the caller for ever, an ordinary file takes no
  // notice.
  const int flags = O_WRONLY | O_CREAT | O_APPEND | O_NONBLOCK | O_CLOEXEC;
  const int descriptor = ::open(path.c_str(), flags, 0666);
  if (descriptor < 0) return Failed(path);
  struct stat file {};
  const bool ordinary = ::fstat(descriptor, &file) == 0 && S_ISREG(file.st_mode);
  if (ordinary && (start == Start::at_end || ::ftruncate(descriptor, 0) == 0)) {
    handle_ = descriptor;
    return {};
  }
  const File_Result result = ordinary ? Failed(path) : File_Result{path + ": not an ordinary file"};
  ::close(descriptor);
  return result;
}

File_Result Append_File::Append(std::string_view bytes) {
  if (!Is_Open()) return {path_ + ": not open"};
  const int descriptor = static_cast<int>(handle_);
  struct stat before {};
  if (::fstat(descriptor, &before) != 0) return Failed(path_);
  if (Write_All(descriptor, bytes)) return {};
  File_Result result = Failed(path_);
  if (::ftruncate(descriptor, before.st_size) != 0) result.reason += "; its end is incomplete";
  return result;
}

File_Result Append_File::Close() {
  const auto handle = std::exchange(handle_, none);
  return handle == none || ::close(static_cast<int>(handle)) == 0 ? File_Result{} : Failed(path_);
}

}  // namespace kx::platform
