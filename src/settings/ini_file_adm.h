#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// The ini file: preferences and definitions in one plain text file, Ini_File_Name in start_dir.
///
/// A line is "key=value", or a line with "]" and no "=", whose key ends at the bracket, or anything else,
/// which is a remark. Keys are compared without case; a key that occurs several times is a list in file
/// order. Texts here are UTF-8; the file is Windows-1252 with CR LF, where LF and CR alone and a UTF-8 pound
/// sign are accepted on reading, and byte 1A ends the text. A build without Ini_File_Name reads and writes
/// nothing.
namespace kx {

/// Value of the @p occurrence-th line (from 1) with @p key: all that follows its first separator. Nothing
/// when there is none, or no file.
[[nodiscard]] std::optional<std::string> Read_Key(std::string_view key, int occurrence = 1);

/// Values of all lines with @p key, in one reading of the file.
[[nodiscard]] std::vector<std::string> Read_Keys(std::string_view key);

/// Values of the "key" + number + "=" lines by their numbers, the first line of each, in one reading of the
/// file.
[[nodiscard]] std::map<int, std::string> Read_Numbered_Keys(std::string_view key);

/// Sets every "key=" line to @p value, or adds one at the end; all other lines keep their bytes. A missing
/// file is made; a file that would not change is not written. The first write of a run that fails shows a
/// box; what could not be written stays readable for the run and goes along with the next write that
/// succeeds.
void Write_Key(std::string_view key, std::string_view value);

/// One line of a list: the @p occurrence-th (from 1) of all lines with @p key.
struct List_Line {
  std::string key;
  std::size_t occurrence;
  std::string value;
};

/// Sets each of @p lines in place; one beyond the end of its list follows the list's last line, or makes the
/// list at the end of the text. All of them go to the disk together; what is said of Write_Key holds.
void Write_List_Lines(const std::vector<List_Line>& lines);

/// Shows the box of a failed write when the ini file could not be written at present.
void Check_Ini_Writable();

/// File text @p bytes with every "key=" line set to @p value, or with such a line at the end of the text.
[[nodiscard]] std::string With_Key(std::string_view bytes, std::string_view key, std::string_view value);

/// The same with the line of a list, which has the place of its occurrence or follows the last one.
[[nodiscard]] std::string With_List_Line(std::string_view bytes, const List_Line& line);

/// Field @p n (from 1) of a TAB separated line, up to the next TAB, else ";", else CR. Empty when the line
/// has fewer fields; when nothing ends the field it is empty too and a box says so.
[[nodiscard]] std::string Extract_Data(std::string_view line, int n);

/// The text between the first @p left and the first @p right. Without @p left the text before @p right,
/// without
/// @p right the text after @p left; empty when both are missing or stand in the wrong order.
[[nodiscard]] std::string Get_Between(std::string_view text, std::string_view left, std::string_view right);

/// Number of the first character as a hex digit of either case; by character code, so that anything else
/// gives a number outside 0..15. No character gives 0.
[[nodiscard]] int Hex_Digit(std::string_view text);

/// 16 times the first digit plus the second.
[[nodiscard]] int Hex_Byte(std::string_view text);

/// Binary digits without leading zeros; empty for 0 and below.
[[nodiscard]] std::string Dec2Bin(int value);

/// Forgets what could not be written and whether that was told.
void Reset_Ini_State();

}  // namespace kx
