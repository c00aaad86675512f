#pragma once

#include <string>
#include <string_view>

namespace kx::platform {

/// A library that is loaded while the program runs, by its full name alone: neither the working folder nor
/// the system's search path is looked at. Once loaded it stays, since it may keep threads of its own.
class Shared_Library {
 public:
  /// @p path is absolute, in UTF-8, "/" as separator; any other path is a library that is not there.
  explicit Shared_Library(std::string path) : path_(std::move(path)) {}

  /// The address of the function @p name; null when library or function are missing. A missing library is
  /// looked for again at each call, so that it can be put there while the program runs.
  [[nodiscard]] void* Entry(const char* name);

 private:
  std::string path_;
  void* handle_ = nullptr;
};

/// The file name of the library @p name on this system: "SCARD32.dll", "libSCARD32.so".
[[nodiscard]] std::string Library_File_Name(std::string_view name);

}  // namespace kx::platform
