#pragma once

#include <cstdint>
#include <string>

#include "platform/files.h"

namespace kx::platform {

/// A file that one program has to itself. The system gives it free when the program ends, however that comes,
/// so that a lock which can be taken tells that nobody lives who held it.
class File_Lock {
 public:
  File_Lock() = default;
  ~File_Lock();
  File_Lock(const File_Lock&) = delete;
  File_Lock& operator=(const File_Lock&) = delete;

  /// Makes @p path where it is missing and takes it, in place of what was held. Fails when another lock, of
  /// this program too, is on it. On a file system without locks everybody gets it.
  [[nodiscard]] File_Result Take(const std::string& path);

  /// Removes the file and gives it free. Fine when nothing is held.
  void Release();

  [[nodiscard]] bool Held() const { return handle_ != none; }

 private:
  static constexpr std::intptr_t none = -1;

  std::string path_;
  std::intptr_t handle_ = none;  ///< descriptor or HANDLE
};

}  // namespace kx::platform
