#pragma once

#include "platform/desktop.h"

namespace kx::platform {

/// The desktop as Qt knows it. A file is looked up from the working directory.
class Qt_Desktop : public Desktop {
 public:
  void Set_Clipboard_Text(const std::string& text) override;
  [[nodiscard]] std::string Clipboard_Text() const override;
  void Open_With_Handler(const std::string& address) override;
  [[nodiscard]] std::string Remembered(const std::string& name) override;
  void Remember(const std::string& name, const std::string& text) override;
  [[nodiscard]] std::string System_Name() const override;
};

}  // namespace kx::platform
