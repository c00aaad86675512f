#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace kx::platform {

/// Outcome of a file operation; an empty reason is success, else it is a text for the user.
struct File_Result {
  std::string reason;
  bool missing = false;  ///< the reason: there is no such file
  [[nodiscard]] bool Ok() const { return reason.empty(); }
};

/// Reads the whole of an ordinary file into @p bytes. Directories, pipes and devices are refused.
[[nodiscard]] File_Result Read_Whole_File(const std::string& path, std::string& bytes);

/// Replaces @p path by @p bytes: writes @p beside, flushes it to the disk, renames it over. Where that cannot
/// serve (@p beside on another file system, a file that is writable in a folder that is not, a sticky
/// folder), a name next to the file is tried, and at last the file itself is written while a copy of its old
/// content lies on the disk. When all fails the old content is whole and nothing stays beside; what a killed
/// program has left there goes. Permissions and owner stay as far as the system lets them. A file that is
/// write protected or no ordinary file is refused.
[[nodiscard]] File_Result Replace_File(const std::string& path, const std::string& beside,
                                       const std::string& bytes);

/// The same with a name beside that is always the same for @p path, so that the next save clears it.
[[nodiscard]] File_Result Replace_File(const std::string& path, const std::string& bytes);

/// What Replace_File would be refused for at once: the file's protection, a directory that takes no new file.
[[nodiscard]] File_Result Check_Replaceable(const std::string& path, const std::string& beside);

/// A file that grows piece by piece while the program works. What Append has confirmed is the operating
/// system's: it outlives the program, however that ends, though not a loss of power.
class Append_File {
 public:
  enum class Start { empty, at_end };  ///< what becomes of a file that is there

  Append_File() = default;
  ~Append_File();
  Append_File(const Append_File&) = delete;
  Append_File& operator=(const Append_File&) = delete;

  /// Opens or makes @p path, after closing what was open. Only ordinary files are taken.
  [[nodiscard]] File_Result Open(const std::string& path, Start start);

  /// Hands all of @p bytes to the system at once. After a failure (a full disk) the file ends where it ended
  /// before the call, so the same bytes may be tried again. Fails when nothing is open.
  [[nodiscard]] File_Result Append(std::string_view bytes);

  /// Some file systems tell only here that something could not be kept. Fine when nothing is open.
  File_Result Close();

  [[nodiscard]] bool Is_Open() const { return handle_ != none; }

 private:
  static constexpr std::intptr_t none = -1;

  std::string path_;
  std::intptr_t handle_ = none;  ///< descriptor or HANDLE
};

/// Working directory, "/" as separator and at its end; empty when it is gone.
[[nodiscard]] std::string Working_Directory();

}  // namespace kx::platform
