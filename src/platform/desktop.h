#pragma once

#include <string>

namespace kx::platform {

/// The desktop around the program.
class Desktop {
 public:
  virtual ~Desktop() = default;
  virtual void Set_Clipboard_Text(const std::string& text) = 0;

  /// Text of the clipboard with the line ends that its owner gave it; empty when it holds none.
  [[nodiscard]] virtual std::string Clipboard_Text() const = 0;

  /// Opens a file or a web address with the desktop's own program; a failure is ignored.
  virtual void Open_With_Handler(const std::string& address) = 0;

  /// What the program has left under @p name in the desktop's own place for a user's settings; empty when
  /// there is nothing. Such are habits: their loss costs nobody any work.
  [[nodiscard]] virtual std::string Remembered(const std::string& name) = 0;

  /// Leaves @p text there; a place that cannot be written is ignored.
  virtual void Remember(const std::string& name, const std::string& text) = 0;

  /// Pretty name of the operating system.
  [[nodiscard]] virtual std::string System_Name() const = 0;
};

}  // namespace kx::platform
