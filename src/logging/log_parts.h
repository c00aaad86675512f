#pragma once

#include <string>
#include <string_view>
#include <vector>

/// A log of more rows than a file holds, cut into parts that each open whole. Pure text.
namespace kx {

/// Rows of a data section that a reader decodes, however many.
[[nodiscard]] int Row_Count_Of(std::string_view data_section);

/// The data section @p data_section as sections of a file each, none of more than 6000 rows; itself when it
/// has no more. Each begins with what stands before the rows of the whole, and from the second on, as far as
/// there is one within a hundred rows, with a row as long as the first of all, since a reader takes the
/// number of fields from there.
[[nodiscard]] std::vector<std::string> Parts_Of_Log(std::string_view data_section);

/// The name of the file that follows @p name: its number, "_001" before the extension, is one higher; the
/// second part of a name without one is "_002". Folders and extension stay.
[[nodiscard]] std::string Next_Part_Name(std::string_view name);

/// What the user is told of a log of @p rows rows, more than a file holds, that is not saved yet. UTF-8.
[[nodiscard]] std::string Long_Log_Text(int rows);

/// Likewise after it was saved as the files @p names (full names).
[[nodiscard]] std::string Saved_In_Parts_Text(int rows, const std::vector<std::string>& names);

}  // namespace kx
