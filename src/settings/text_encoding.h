#pragma once

#include <string>
#include <string_view>
#include <vector>

/// Text inside the program is UTF-8; files are Windows-1252 with CR LF; the box speaks Latin-1.
namespace kx {

/// CR LF.
[[nodiscard]] std::string Crlf();

/// File text from UTF-8; a character that has no place in Windows-1252 becomes "?".
[[nodiscard]] std::string To_Windows_1252(std::string_view utf8);

/// UTF-8 from file text. Every byte comes back by To_Windows_1252, the five without a character too.
[[nodiscard]] std::string From_Windows_1252(std::string_view bytes);

/// UTF-8 from what came over the line, one character a byte.
[[nodiscard]] std::string From_Latin_1(std::string_view bytes);

/// @p text up to its end-of-text byte 1A, or whole.
[[nodiscard]] std::string_view Before_End_Of_Text(std::string_view text);

/// The lines of @p text, ended by CR LF, LF or CR; a last line without an end counts.
[[nodiscard]] std::vector<std::string_view> Lines_Of(std::string_view text);

}  // namespace kx
