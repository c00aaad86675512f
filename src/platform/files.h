#pragma once

#include <string>

namespace kx::platform {

/// Outcome of a file operation; an empty reason is success, else it is a text for the user.
struct File_Result {
  std::string reason;
  bool missing = false;  ///< the reason: there is no such file
  [[nodiscard]] bool Ok() const { return reason.empty(); }
};

/// Reads the whole of an ordinary file into @p bytes. Directories, pipes and devices are refused.
[[nodiscard]] File_Result Read_Whole_File(const std::string& path, std::string& bytes);

/// Replaces @p path by @p bytes: writes @p beside, flushes it to the disk, renames it over. When any step
/// fails the old file is whole and @p beside is gone. The file keeps its permissions; one that is write
/// protected or no ordinary file is refused.
[[nodiscard]] File_Result Replace_File(const std::string& path, const std::string& beside,
                                       const std::string& bytes);

/// The same with the name beside made from @p path.
[[nodiscard]] File_Result Replace_File(const std::string& path, const std::string& bytes);

/// What Replace_File would be refused for at once: the file's protection, a directory that takes no new file.
[[nodiscard]] File_Result Check_Replaceable(const std::string& path, const std::string& beside);

/// Working directory, "/" as separator and at its end; empty when it is gone.
[[nodiscard]] std::string Working_Directory();

}  // namespace kx::platform
