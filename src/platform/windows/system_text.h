#pragma once

#include <string>

namespace kx::platform {

/// UTF-8 from the system's code page, in which its narrow calls speak.
[[nodiscard]] std::string From_Code_Page(const std::string& bytes);

/// The system's code page from UTF-8.
[[nodiscard]] std::string To_Code_Page(const std::string& text);

/// UTF-8 as the system's wide calls want it, which take every file name.
[[nodiscard]] std::wstring Wide_Text(const std::string& text);

/// The system's own message for its error @p number.
[[nodiscard]] std::string Message_Of(unsigned long number);

}  // namespace kx::platform
