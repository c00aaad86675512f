#include "platform/folders.h"

#include <algorithm>
#include <cctype>
#include <filesystem>

namespace kx::platform {
namespace {

namespace fs = std::filesystem;

/// The standard library takes UTF-8 on every system only under this type.
fs::path Path_Of(const std::string& utf8) { return {std::u8string(utf8.begin(), utf8.end())}; }

std::string Text_Of(const fs::path& path) {
  const std::u8string text = path.generic_u8string();
  return {text.begin(), text.end()};
}

std::string Lower(std::string text) {
  std::transform(text.begin(), text.end(), text.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  return text;
}

File_Result Result_Of(const std::string& path, const std::error_code& error) {
  if (!error) return {};
  return {path + ": " + error.message(), error == std::errc::no_such_file_or_directory};
}

/// Bare names in @p directory that @p wanted accepts, sorted.
template <typename Wanted>
std::vector<std::string> Names_In(const std::string& directory, Wanted wanted) {
  std::vector<std::string> names;
  std::error_code error;
  for (auto entry = fs::directory_iterator(Path_Of(directory), error);
       !error && entry != fs::directory_iterator(); entry.increment(error)) {
    const std::string name = Text_Of(entry->path().filename());
    if (!name.starts_with('.') && wanted(*entry)) names.push_back(name);
  }
  std::sort(names.begin(), names.end(), [](const std::string& a, const std::string& b) {
    return std::pair(Lower(a), a) < std::pair(Lower(b), b);
  });
  return names;
}

}  // namespace

bool Can_List(const std::string& directory) {
  std::error_code error;
  const fs::directory_iterator entries(Path_Of(directory), error);
  return !error;
}

std::vector<std::string> Folders_In(const std::string& directory) {
  return Names_In(directory, [](const fs::directory_entry& entry) {
    std::error_code error;
    return entry.is_directory(error);
  });
}

std::vector<std::string> Files_In(const std::string& directory, const std::string& extension) {
  return Names_In(directory, [&](const fs::directory_entry& entry) {
    std::error_code error;
    return entry.is_regular_file(error) && Lower(Text_Of(entry.path())).ends_with(Lower(extension));
  });
}

std::string Folder_Above(const std::string& directory) {
  fs::path path = Path_Of(directory);
  if (!path.has_filename()) path = path.parent_path();
  std::string above = Text_Of(path.parent_path());
  if (!above.ends_with('/')) above += '/';
  return above;
}

bool Exists(const std::string& path) {
  std::error_code error;
  return fs::exists(Path_Of(path), error);
}

bool Same_Place(const std::string& one, const std::string& other) {
  std::error_code error;
  return fs::equivalent(Path_Of(one), Path_Of(other), error);
}

std::optional<std::uintmax_t> File_Size(const std::string& path) {
  std::error_code error;
  const bool ordinary = fs::is_regular_file(Path_Of(path), error);
  const auto size = ordinary ? fs::file_size(Path_Of(path), error) : 0;
  return ordinary && !error ? std::optional(size) : std::nullopt;
}

bool Is_Write_Protected(const std::string& path) {
  constexpr auto writable = fs::perms::owner_write | fs::perms::group_write | fs::perms::others_write;
  std::error_code error;
  const fs::file_status status = fs::status(Path_Of(path), error);
  return fs::is_regular_file(status) && (status.permissions() & writable) == fs::perms::none;
}

File_Result Allow_Writing(const std::string& path) {
  std::error_code error;
  fs::permissions(Path_Of(path), fs::perms::owner_write, fs::perm_options::add, error);
  return Result_Of(path, error);
}

File_Result Make_Folder(const std::string& directory) {
  std::error_code error;
  fs::path path = Path_Of(directory);
  if (!path.has_filename()) path = path.parent_path();
  fs::create_directories(path, error);
  if (!error && !fs::is_directory(path, error)) error = std::make_error_code(std::errc::not_a_directory);
  return Result_Of(directory, error);
}

File_Result Rename_File(const std::string& from, const std::string& to) {
  std::error_code error;
  fs::rename(Path_Of(from), Path_Of(to), error);
  return Result_Of(from, error);
}

File_Result Remove_File(const std::string& path) {
  std::error_code error;
  if (!File_Size(path)) {
    return {path + ": " + std::make_error_code(std::errc::no_such_file_or_directory).message(), true};
  }
  fs::remove(Path_Of(path), error);
  return Result_Of(path, error);
}

}  // namespace kx::platform
