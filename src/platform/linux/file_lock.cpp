#include "platform/file_lock.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <utility>

namespace kx::platform {
namespace {

/// True when @p descriptor still is the file of that name: its holder before us removes it with its lock.
bool Is_Still(int descriptor, const std::string& path) {
  struct stat opened {};
  struct stat named {};
  return ::fstat(descriptor, &opened) == 0 && ::lstat(path.c_str(), &named) == 0 &&
         opened.st_ino == named.st_ino && opened.st_dev == named.st_dev;
}

}  // namespace

File_Lock::~File_Lock() { Release(); }

File_Result File_Lock::Take(const std::string& path) {
  Release();
  // A program that this one starts must not hold the lock on.
  const int descriptor = ::open(path.c_str(), O_RDWR | O_CREAT | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC, 0666);
  if (descriptor < 0) return {path + ": " + std::strerror(errno)};
  const bool busy = ::flock(descriptor, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK;
  if (busy || !Is_Still(descriptor, path)) {
    ::close(descriptor);
    return {path + ": " + std::strerror(EBUSY)};
  }
  path_ = path;
  handle_ = descriptor;
  return {};
}

void File_Lock::Release() {
  if (!Held()) return;
  ::unlink(path_.c_str());  // first: whoever takes it from now on makes a file of his own
  ::close(static_cast<int>(std::exchange(handle_, none)));
}

}  // namespace kx::platform
