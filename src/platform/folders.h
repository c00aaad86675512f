#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "platform/files.h"

/// What a file panel needs of the file system. Names are UTF-8 with "/" as separator.
namespace kx::platform {

/// Where a panel can start: the root and the home directory, then mounted volumes; drives on Windows.
[[nodiscard]] std::vector<std::string> Drives();

/// True when the content of @p directory can be listed.
[[nodiscard]] bool Can_List(const std::string& directory);

/// Bare names of the directories in @p directory, sorted without regard to case, hidden ones left out. Empty
/// when it cannot be read.
[[nodiscard]] std::vector<std::string> Folders_In(const std::string& directory);

/// The same of its ordinary files that end in @p extension, in either case.
[[nodiscard]] std::vector<std::string> Files_In(const std::string& directory, const std::string& extension);

/// The directory above @p directory, "/" at its end; the root is above itself.
[[nodiscard]] std::string Folder_Above(const std::string& directory);

/// True when there is something of that name.
[[nodiscard]] bool Exists(const std::string& path);

/// True when both names, of a file or a directory, lead to the same one, whatever links and spellings lie
/// between. False when one is missing.
[[nodiscard]] bool Same_Place(const std::string& one, const std::string& other);

/// Bytes of an ordinary file; nothing when there is none.
[[nodiscard]] std::optional<std::uintmax_t> File_Size(const std::string& path);

/// True when the file is there and marked as not to be written.
[[nodiscard]] bool Is_Write_Protected(const std::string& path);

/// Lets the owner write the file.
[[nodiscard]] File_Result Allow_Writing(const std::string& path);

/// Makes the directory, and those above it, where it is missing.
[[nodiscard]] File_Result Make_Folder(const std::string& directory);

/// Gives a file another name in the same file system; a file of that name is replaced.
[[nodiscard]] File_Result Rename_File(const std::string& from, const std::string& to);

/// Removes an ordinary file.
[[nodiscard]] File_Result Remove_File(const std::string& path);

}  // namespace kx::platform
