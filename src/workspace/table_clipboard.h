#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "workspace/grid.h"

/// Rows of a grid as a spreadsheet has them: columns parted by TAB, lines ended by CR LF.
namespace kx {

/// The selected rows as they are shown, axis and value.
[[nodiscard]] std::string Selection_Text(const Grid& grid);

/// What was pasted: a number's text for each line, or why nothing of it can be taken.
struct Pasted {
  std::vector<std::string> numbers;
  int columns = 1;      ///< of each line; the last one holds the numbers
  std::string refusal;  ///< a sentence that names the line; empty when all lines are good
};

/// Reads @p text line by line: one column of numbers, or the axis and a number as Selection_Text gives them.
/// Decimal sign and blanks as in Whole_Number_Text, line ends LF, CR LF or CR, empty lines at the end do not
/// count. More than @p room lines are refused, and so is anything that is no number; nothing behind the first
/// bad line is looked at.
[[nodiscard]] Pasted Read_Pasted(std::string_view text, int room);

/// "Line 3, "abc", ": the head of a sentence about one line, 1 up, and what stands in it, cut when it is
/// long.
[[nodiscard]] std::string Line_And_Text(int line, std::string_view text);

/// The end of every refusal.
inline constexpr const char* nothing_pasted = " Nothing was pasted.";

/// True when a cell that shows the text @p shown shows the number @p number, however that is written: a
/// spreadsheet makes "2" of "02". Such a cell keeps its byte.
[[nodiscard]] bool Shows_Already(const std::string& shown, const std::string& number);

/// First line, 1 up, whose number has a "," that may as well part thousands, as "1,234" has; nothing where
/// another number tells that it is the decimal sign.
[[nodiscard]] std::optional<int> Doubtful_Line(const Pasted& pasted);

/// Puts the selected rows on the clipboard.
void Copy_Selection(const Grid& grid);

/// Reads the clipboard for @p grid, from the current entry on. What cannot be taken is told in a box and
/// gives nothing.
[[nodiscard]] std::optional<Pasted> Pasted_For(const Grid& grid);

/// The notice after a paste: how many values, where, and how many of them became the limit.
[[nodiscard]] std::string Paste_Report(const Pasted& pasted, int first_row, int limited);

}  // namespace kx
