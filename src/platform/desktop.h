#pragma once

#include <string>

namespace kx::platform {

/// The desktop around the program.
class Desktop {
 public:
  virtual ~Desktop() = default;
  virtual void Set_Clipboard_Text(const std::string& text) = 0;

  /// Opens a file or a web address with the desktop's own program; a failure is ignored.
  virtual void Open_With_Handler(const std::string& address) = 0;

  /// Pretty name of the operating system.
  [[nodiscard]] virtual std::string System_Name() const = 0;
};

}  // namespace kx::platform
