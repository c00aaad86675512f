#pragma once

#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <string_view>

namespace kx::test {

/// A directory of its own for one test, removed with all that is in it at the end.
class Temp_Dir {
 public:
  Temp_Dir() {
    std::string name = (std::filesystem::temp_directory_path() / "kxbench_XXXXXX").string();
    if (::mkdtemp(name.data()) == nullptr) throw std::runtime_error("no temporary directory: " + name);
    path_ = name;
  }
  ~Temp_Dir() {
    std::error_code none;
    std::filesystem::remove_all(path_, none);
  }
  Temp_Dir(const Temp_Dir&) = delete;
  Temp_Dir& operator=(const Temp_Dir&) = delete;

  /// Full name, without a separator at its end.
  [[nodiscard]] const std::string& Path() const { return path_; }
  [[nodiscard]] std::string Path(std::string_view name) const { return path_ + "/" + std::string(name); }

  /// Full name of the file that now holds @p bytes.
  std::string Write(std::string_view name, std::string_view bytes) const {
    std::ofstream(Path(name), std::ios::binary) << bytes;
    return Path(name);
  }
  [[nodiscard]] std::string Read(std::string_view name) const {
    std::ifstream file(Path(name), std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }
  [[nodiscard]] bool Has(std::string_view name) const { return std::filesystem::exists(Path(name)); }

 private:
  std::string path_;
};

}  // namespace kx::test
