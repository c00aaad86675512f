#include "platform/files.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
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

/// Mode and owner of the file that a new one is to replace.
struct Old_File {
  bool exists = false;
  struct stat status {};
};

/// True when @p descriptor, just locked, is an ordinary file under the name @p path and no other: the holder
/// of the lock before us may have renamed it.
bool Is_Still(int descriptor, const std::string& path) {
  struct stat opened {};
  struct stat named {};
  return ::fstat(descriptor, &opened) == 0 && ::lstat(path.c_str(), &named) == 0 && S_ISREG(opened.st_mode) &&
         opened.st_nlink == 1 && opened.st_ino == named.st_ino && opened.st_dev == named.st_dev;
}

/// Opens a name of ours, empty and locked until it is closed. One that was cut off earlier is taken over; one
/// of a save that is still running, a link and whatever is no ordinary file are refused.
int Open_Beside(const std::string& path) {
  const int descriptor = ::open(path.c_str(), O_WRONLY | O_CREAT | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC, 0666);
  if (descriptor < 0) return descriptor;
  const bool busy = ::flock(descriptor, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK;
  if (!busy && Is_Still(descriptor, path) && ::ftruncate(descriptor, 0) == 0) return descriptor;
  ::close(descriptor);
  errno = busy ? EBUSY : EEXIST;
  return -1;
}

/// The file system may know no modes or owners, or may not let us set them: that is no reason not to save.
/// The owner goes first, since a change of it takes bits off the mode.
void Take_Over_Rights(int descriptor, const Old_File& old) {
  if (!old.exists) return;
  const int owner = ::fchown(descriptor, old.status.st_uid, old.status.st_gid);
  const int mode = ::fchmod(descriptor, old.status.st_mode & 07777);
  static_cast<void>(owner + mode);
}

/// 0, or the system's reason.
int Write_And_Flush(int descriptor, const std::string& bytes, const Old_File& old) {
  if (!Write_All(descriptor, bytes)) return errno;
  Take_Over_Rights(descriptor, old);
  return ::fsync(descriptor) == 0 ? 0 : errno;
}

/// 0, or the system's reason; nothing stays beside then. The lock is held until the rename is done.
int Replace_By_Way_Of(const std::string& beside, const std::string& target, const std::string& bytes,
                      const Old_File& old) {
  const int descriptor = Open_Beside(beside);
  if (descriptor < 0) return errno;
  int reason = Write_And_Flush(descriptor, bytes, old);
  if (reason == 0 && ::rename(beside.c_str(), target.c_str()) != 0) reason = errno;
  if (reason != 0) ::unlink(beside.c_str());
  ::close(descriptor);
  return reason;
}

/// Another way to the same file can help where names or folders are in the way, not where the disk is.
bool Another_Way_May_Help(int reason) {
  switch (reason) {
    case EACCES:
    case EPERM:
    case EROFS:
    case EXDEV:
    case EBUSY:
    case EISDIR:
    case ENXIO:
    case ELOOP:
    case EEXIST:
    case ENAMETOOLONG:
    case ENOENT:
      return true;
    default:
      return false;
  }
}

/// A link stays a link: what it points at is what gets replaced.
std::string Real_Path(const std::string& path) {
  std::error_code none;
  const auto real = std::filesystem::canonical(path, none);
  return none ? path : real.string();
}

/// Bytes; far above anything that this program writes, far below what a machine has.
constexpr off_t largest_file = off_t{1} << 28;

/// Where new content is written: a name that nobody else gives a file, so that what a killed save has left is
/// known as ours at the next one.
std::string Name_Beside(const std::string& target) { return target + ".kxbench-new"; }

/// Where the old content of @p target lies while the file itself is written: next to it, or where every user
/// may write and a restart clears nothing, under a name made from the whole path.
std::array<std::string, 2> Names_Of_Copy(const std::string& target) {
  std::string name = target;
  std::ranges::replace(name, '/', '%');
  return {target + ".kxbench-old", "/var/tmp/" + name + ".kxbench-old"};
}

void Remove_Copies(const std::string& target) {
  for (const std::string& name : Names_Of_Copy(target)) ::unlink(name.c_str());
}

File_Result Refusal_Of_Kind(const std::string& path, const struct stat& file) {
  if (S_ISDIR(file.st_mode)) return {path + ": " + std::strerror(EISDIR)};
  if (!S_ISREG(file.st_mode)) return {path + ": not an ordinary file"};
  return {};
}

/// Why the file @p target must not be replaced, told under the name @p path; else what it is in @p old.
File_Result Refusal_To_Replace(const std::string& path, const std::string& target, Old_File& old) {
  if (::stat(target.c_str(), &old.status) != 0) return {};
  if (const auto refusal = Refusal_Of_Kind(path, old.status); !refusal.Ok()) return refusal;
  old.exists = true;
  // The file's own mark counts, for a superuser too: somebody has set it on purpose.
  if ((old.status.st_mode & 0222) == 0) return {path + ": the file is write protected"};
  return ::faccessat(AT_FDCWD, target.c_str(), W_OK, AT_EACCESS) == 0 ? File_Result{} : Failed(path);
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

/// The whole of the open file from its first byte, cut behind it, flushed. 0, or the system's reason.
int Overwrite(int descriptor, const std::string& bytes) {
  const bool written = ::lseek(descriptor, 0, SEEK_SET) == 0 && Write_All(descriptor, bytes) &&
                       ::ftruncate(descriptor, static_cast<off_t>(bytes.size())) == 0 &&
                       ::fsync(descriptor) == 0;
  return written ? 0 : errno;
}

/// True when @p name, a name of ours, now holds @p content for the user alone.
bool Copy_Kept(const std::string& name, const std::string& content) {
  const int descriptor = Open_Beside(name);
  if (descriptor < 0) return false;
  const int reason = ::fchmod(descriptor, 0600) == 0 ? Write_And_Flush(descriptor, content, {}) : errno;
  if (reason != 0) ::unlink(name.c_str());
  ::close(descriptor);
  errno = reason;
  return reason == 0;
}

/// Full name of the copy of @p content that now lies on the disk; empty when none could be made, errno tells
/// why.
std::string Keep_Copy(const std::string& target, const std::string& content) {
  for (const std::string& name : Names_Of_Copy(target)) {
    if (!Copy_Kept(name, content)) continue;
    Flush_Directory_Of(name);
    return name;
  }
  return {};
}

/// For a file that nothing can be renamed over. A program killed on the way leaves the copy; a disk that
/// fills up gets the old content back.
File_Result Write_In_Place(const std::string& path, const std::string& target, const std::string& bytes) {
  std::string content;
  if (auto result = Read_Whole_File(target, content); !result.Ok()) return result;
  const std::string copy = Keep_Copy(target, content);
  if (copy.empty()) return Failed(path);
  const int descriptor = ::open(target.c_str(), O_WRONLY | O_CLOEXEC);
  int reason = descriptor < 0 ? errno : Overwrite(descriptor, bytes);
  const bool restored = reason == 0 || descriptor < 0 || Overwrite(descriptor, content) == 0;
  if (descriptor >= 0 && ::close(descriptor) != 0 && reason == 0) reason = errno;
  if (restored) ::unlink(copy.c_str());
  if (reason == 0) return {};
  const std::string where = restored ? "" : "; the old content is in " + copy;
  return {path + ": " + std::strerror(reason) + where};
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
  Old_File old;
  if (const auto refusal = Refusal_To_Replace(path, target, old); !refusal.Ok()) return refusal;
  int reason = Replace_By_Way_Of(beside, target, bytes, old);
  if (Another_Way_May_Help(reason) && beside != Name_Beside(target)) {
    reason = Replace_By_Way_Of(Name_Beside(target), target, bytes, old);
  }
  if (reason == 0) {
    Flush_Directory_Of(target);
  } else if (!old.exists || !Another_Way_May_Help(reason)) {
    errno = reason;
    return Failed(path);
  } else if (auto result = Write_In_Place(path, target, bytes); !result.Ok()) {
    return result;
  }
  Remove_Copies(target);
  return {};
}

File_Result Replace_File(const std::string& path, const std::string& bytes) {
  return Replace_File(path, Name_Beside(Real_Path(path)), bytes);
}

File_Result Check_Replaceable(const std::string& path, const std::string& beside) {
  Old_File old;
  if (const auto refusal = Refusal_To_Replace(path, Real_Path(path), old); !refusal.Ok()) return refusal;
  if (old.exists) return {};
  const int descriptor = Open_Beside(beside);
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
