#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

/// The text of an ini file, apart from where it lies.
///
/// A line is "key=value", or a line with "]" and no "=", whose key ends at the bracket, or anything else,
/// which is a remark. Keys are compared without case; a key that occurs several times is a list in file
/// order. Texts here are UTF-8; the file is Windows-1252 with CR LF, where LF and CR alone are accepted on
/// reading, and byte 1A ends the text.
namespace kx {

struct Ini_Value {
  std::string text;  ///< all that follows the first separator of its line
  int line = 0;      ///< from 1
  bool operator==(const Ini_Value&) const = default;
};

/// A line that cannot be used as it stands.
struct Ini_Fault {
  int line;          ///< from 1
  std::string text;  ///< rest of a sentence, for the user
};

/// Values of all lines of the file text @p bytes with @p key, in their order.
[[nodiscard]] std::vector<Ini_Value> Values_Of_Key(std::string_view bytes, std::string_view key);

/// Values of the lines whose key is @p key and a number without leading zeros, the first line of each number.
[[nodiscard]] std::map<int, std::string> Values_By_Number(std::string_view bytes, std::string_view key);

/// File text @p bytes with every "key=" line set to @p value, or with such a line at the end of the text.
[[nodiscard]] std::string With_Key(std::string_view bytes, std::string_view key, std::string_view value);

/// File text @p bytes with @p value in the @p occurrence-th (from 1) of all lines with @p key; unchanged when
/// there are fewer.
[[nodiscard]] std::string With_List_Line(std::string_view bytes, std::string_view key, std::size_t occurrence,
                                         std::string_view value);

/// File text @p bytes with one line more, which becomes the @p occurrence-th of @p key: before the one that
/// was, else behind the last one, else at the end of the text.
[[nodiscard]] std::string With_New_List_Line(std::string_view bytes, std::string_view key,
                                             std::size_t occurrence, std::string_view value);

/// True when @p bytes, read from a file that held @p before, seem to be the head of a file that another
/// program is writing: they are the head of @p before and more than its last line is missing, or all lines of
/// a list are gone, or lines of one are gone and the last line has no end or has lost its tail.
[[nodiscard]] bool Looks_Half_Written(std::string_view bytes, std::string_view before);

}  // namespace kx
