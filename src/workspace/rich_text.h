#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace kx {

/// @p text (UTF-8, lines ended by CR LF, LF or CR) as a rich text file in one fixed-width font. Characters
/// that Windows-1252 does not have become "?".
[[nodiscard]] std::string Write_Rich_Text(std::string_view text);

/// The plain text of a rich text file, in UTF-8 with CR LF; fonts, colours and pictures are left out. Nothing
/// when @p file is no rich text.
[[nodiscard]] std::optional<std::string> Read_Rich_Text(std::string_view file);

}  // namespace kx
