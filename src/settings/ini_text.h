#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

/// The text of an ini file, apart from where it lies.
///
/// A line is "key=value", or a line with "]" and no "=", whose key ends at the bracket, or anything else,
/// which is a remark. Keys are compared without case; a key that occurs several times is a list in file
/// order. Texts here are UTF-8; the file is Windows-1252 with CR LF, where LF and CR alone and a UTF-8 pound
/// sign are accepted on reading, and byte 1A ends the text.
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

/// One line of a list: the @p occurrence-th (from 1) of all lines with @p key.
struct List_Line {
  std::string key;
  std::size_t occurrence;
  std::string value;
};

/// The same with the line of a list, which has the place of its occurrence or follows the last one.
[[nodiscard]] std::string With_List_Line(std::string_view bytes, const List_Line& line);

}  // namespace kx
