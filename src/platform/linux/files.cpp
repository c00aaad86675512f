#include "platform/files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>

namespace kx::platform {
namespace {

File_Result Failed(const std::string& path) { return {path + ": " + std::strerror(errno), errno == ENOENT}; }

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

/// Writes and flushes a new file with @p mode, whatever the process's mask. A file that it could not complete
/// is removed; errno tells why.
bool Write_And_Flush(const std::string& path, const std::string& bytes, mode_t mode) {
  const int descriptor = ::open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
  if (descriptor < 0) return false;
  const bool written = Write_All(descriptor, bytes) && (mode == 0 || ::fchmod(descriptor, mode) == 0) &&
                       ::fsync(descriptor) == 0;
  int reason = errno;
  const bool closed = ::close(descriptor) == 0;
  if (written && closed) return true;
  if (written) reason = errno;
  ::unlink(path.c_str());
  errno = reason;
  return false;
}

/// A link stays a link: what it points at is what gets replaced.
std::string Real_Path(const std::string& path) {
  std::error_code none;
  const auto real = std::filesystem::canonical(path, none);
  return none ? path : real.string();
}

/// Bytes; far above anything that this program writes, far below what a machine has.
constexpr off_t largest_file = off_t{1} << 28;

/// A name beside @p path that belongs to nobody.
std::string Free_Name_Beside(const std::string& path) {
  std::string name = path + ".new";
  std::error_code none;
  for (int i = 1; std::filesystem::exists(std::filesystem::symlink_status(name, none)); ++i) {
    name = path + "." + std::to_string(i) + ".new";
  }
  return name;
}

File_Result Refusal_Of_Kind(const std::string& path, const struct stat& file) {
  if (S_ISDIR(file.st_mode)) return {path + ": " + std::strerror(EISDIR)};
  if (!S_ISREG(file.st_mode)) return {path + ": not an ordinary file"};
  return {};
}

/// Why the file @p target must not be replaced, told under the name @p path; else its permissions in @p mode,
/// or 0 when there is no such file.
File_Result Refusal_To_Replace(const std::string& path, const std::string& target, mode_t& mode) {
  struct stat old {};
  if (::stat(target.c_str(), &old) != 0) return {};
  if (const auto refusal = Refusal_Of_Kind(path, old); !refusal.Ok()) return refusal;
  mode = old.st_mode & 07777;
  // The file's own mark counts, for a superuser too: somebody has set it on purpose.
  if ((mode & 0222) == 0) return {path + ": the file is write protected"};
  return ::access(target.c_str(), W_OK) == 0 ? File_Result{} : Failed(path);
}

/// Reads to the end, which may have moved since @p expected was measured.
bool Read_All(int descriptor, std::size_t expected, std::string& bytes) {
  bytes.clear();
  for (std::size_t room = expected + 1;; room = bytes.size()) {
    const std::size_t done = bytes.size();
    bytes.resize(done + room);
    const ssize_t step = ::read(descriptor, bytes.data() + done, room);
    bytes.resize(done + static_cast<std::size_t>(step < 0 ? 0 : step));
    if (step < 0 && errno == EINTR) continue;
    if (step <= 0) return step == 0;
  }
}

}  // namespace

File_Result Read_Whole_File(const std::string& path, std::string& bytes) {
  struct stat file {};
  if (::stat(path.c_str(), &file) != 0) return Failed(path);
  if (const auto refusal = Refusal_Of_Kind(path, file); !refusal.Ok()) return refusal;
  if (file.st_size > largest_file) return {path + ": " + std::strerror(EFBIG)};
  const int descriptor = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
  if (descriptor < 0) return Failed(path);
  const bool complete = Read_All(descriptor, static_cast<std::size_t>(file.st_size), bytes);
  const File_Result result = complete ? File_Result{} : Failed(path);
  ::close(descriptor);
  return result;
}

File_Result Replace_File(const std::string& path, const std::string& beside, const std::string& bytes) {
  const std::string target = Real_Path(path);
  mode_t mode = 0;
  if (const auto refusal = Refusal_To_Replace(path, target, mode); !refusal.Ok()) return refusal;
  if (!Write_And_Flush(beside, bytes, mode)) return Failed(path);
  if (::rename(beside.c_str(), target.c_str()) != 0) {
    const File_Result result = Failed(path);
    ::unlink(beside.c_str());
    return result;
  }
  Flush_Directory_Of(target);
  return {};
}

File_Result Replace_File(const std::string& path, const std::string& bytes) {
  return Replace_File(path, Free_Name_Beside(Real_Path(path)), bytes);
}

File_Result Check_Replaceable(const std::string& path, const std::string& beside) {
  mode_t mode = 0;
  if (const auto refusal = Refusal_To_Replace(path, Real_Path(path), mode); !refusal.Ok()) return refusal;
  const int descriptor = ::open(beside.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0666);
  if (descriptor < 0) return Failed(path);
  ::close(descriptor);
  ::unlink(beside.c_str());
  return {};
}

std::string Working_Directory() {
  std::error_code error;
  std::string directory = std::filesystem::current_path(error).generic_string();
  if (!error && directory.back() != '/') directory += '/';
  return directory;
}

}  // namespace kx::platform
