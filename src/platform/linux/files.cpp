#include "platform/files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace kx::platform {
namespace {

File_Result Failed(const std::string& path) { return {path + ": " + std::strerror(errno)}; }

/// True when all of @p bytes went to the descriptor.
bool Write_All(int descriptor, const std::string& bytes) {
  std::size_t done = 0;
  while (done < bytes.size()) {
    const ssize_t step = ::write(descriptor, bytes.data() + done, bytes.size() - done);
    if (step < 0 && errno == EINTR) continue;
    if (step <= 0) return false;
    done += static_cast<std::size_t>(step);
  }
  return true;
}

/// A rename is on the disk only when its directory is.
void Flush_Directory_Of(const std::string& path) {
  std::string directory = std::filesystem::path(path).parent_path().string();
  if (directory.empty()) directory = ".";
  const int descriptor = ::open(directory.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (descriptor < 0) return;
  ::fsync(descriptor);
  ::close(descriptor);
}

bool Write_And_Flush(const std::string& path, const std::string& bytes, mode_t mode) {
  const int descriptor = ::open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, mode);
  if (descriptor < 0) return false;
  const bool written = Write_All(descriptor, bytes) && ::fsync(descriptor) == 0;
  const int reason = errno;
  const bool closed = ::close(descriptor) == 0;
  if (!written) errno = reason;
  return written && closed;
}

/// A link stays a link: what it points at is what gets replaced.
std::string Real_Path(const std::string& path) {
  std::error_code none;
  const auto real = std::filesystem::canonical(path, none);
  return none ? path : real.string();
}

}  // namespace

File_Result Read_Whole_File(const std::string& path, std::string& bytes) {
  std::error_code error;
  if (std::filesystem::is_directory(path, error)) return {path + ": " + std::strerror(EISDIR)};
  errno = 0;
  std::ifstream file(path, std::ios::binary);
  if (!file) return Failed(path);
  bytes.assign(std::istreambuf_iterator<char>(file), {});
  return file.bad() ? Failed(path) : File_Result{};
}

File_Result Replace_File(const std::string& path, const std::string& beside, const std::string& bytes) {
  const std::string target = Real_Path(path);
  struct stat old {};
  mode_t mode = 0644;
  if (::stat(target.c_str(), &old) == 0) {
    mode = old.st_mode & 07777;
    // The file's own mark counts, for a superuser too: somebody has set it on purpose.
    if ((mode & 0222) == 0) return {path + ": the file is write protected"};
  }
  if (!Write_And_Flush(beside, bytes, mode) || ::rename(beside.c_str(), target.c_str()) != 0) {
    const File_Result result = Failed(path);
    ::unlink(beside.c_str());
    return result;
  }
  Flush_Directory_Of(target);
  return {};
}

File_Result Replace_File(const std::string& path, const std::string& bytes) {
  return Replace_File(path, Real_Path(path) + ".new", bytes);
}

std::string Working_Directory() {
  std::error_code error;
  std::string directory = std::filesystem::current_path(error).generic_string();
  if (directory.empty() || directory.back() != '/') directory += '/';
  return directory;
}

}  // namespace kx::platform
