#include "settings/ini_text.h"

#include <algorithm>
#include <charconv>
#include <optional>

#include "settings/text_encoding.h"

namespace kx {
namespace {

constexpr std::string_view pound_utf8 = "\xC2\xA3";
constexpr std::string_view pound_1252 = "\xA3";

char Lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c; }

bool Same_Key(std::string_view a, std::string_view b) {
  return std::ranges::equal(a, b, [](char x, char y) { return Lower(x) == Lower(y); });
}

/// The value behind the key of @p line when it is @p key, in the file's own bytes.
std::optional<std::string_view> Value_Of(std::string_view line, std::string_view key) {
  std::size_t end = line.find('=');
  if (end == std::string_view::npos) end = line.find(']');
  if (end == std::string_view::npos || !Same_Key(line.substr(0, end), key)) return {};
  return line.substr(end + 1);
}

std::string Text_Of_Value(std::string_view value) {
  std::string bytes(value);
  for (std::size_t at = 0; (at = bytes.find(pound_utf8, at)) != std::string::npos; ++at) {
    bytes.replace(at, pound_utf8.size(), pound_1252);
  }
  return From_Windows_1252(bytes);
}

/// A value has to stay on its line and within the text.
std::string Bytes_Of_Value(std::string_view value) {
  std::string bytes = To_Windows_1252(value);
  std::ranges::replace_if(
      bytes, [](char c) { return c == '\r' || c == '\n' || c == '\x1A'; }, '?');
  return bytes;
}

/// The line at the head of @p text without its end, and how many bytes it takes with it.
struct Line {
  std::string_view text;
  std::size_t length;
};
Line First_Line(std::string_view text) {
  const std::size_t end = std::min(text.find_first_of("\r\n"), text.size());
  const std::size_t separator = text.substr(end, 2) == "\r\n" ? 2 : 1;
  return {text.substr(0, end), std::min(end + separator, text.size())};
}

bool Is_Written_Key(std::string_view line, std::string_view key) {
  const std::size_t end = line.find('=');
  return end != std::string_view::npos && Same_Key(line.substr(0, end), key);
}

}  // namespace

std::vector<Ini_Value> Values_Of_Key(std::string_view bytes, std::string_view key) {
  std::vector<Ini_Value> values;
  int number = 0;
  for (const std::string_view line : Lines_Of(Before_End_Of_Text(bytes))) {
    ++number;
    if (const auto value = Value_Of(line, key)) values.push_back({Text_Of_Value(*value), number});
  }
  return values;
}

std::map<int, std::string> Values_By_Number(std::string_view bytes, std::string_view key) {
  std::map<int, std::string> values;
  for (const std::string_view line : Lines_Of(Before_End_Of_Text(bytes))) {
    const std::string_view name = line.substr(0, line.find('='));
    const std::string_view digits = name.substr(std::min(key.size(), name.size()));
    int number = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
    if (error != std::errc() || end != digits.data() + digits.size()) continue;
    const auto value = Value_Of(line, std::string(key) + std::to_string(number));
    if (value) values.emplace(number, Text_Of_Value(*value));
  }
  return values;
}

std::string With_Key(std::string_view bytes, std::string_view key, std::string_view value) {
  const std::string_view text = Before_End_Of_Text(bytes);
  const std::string new_line = std::string(key) + "=" + Bytes_Of_Value(value);
  std::string result;
  bool found = false;
  for (std::string_view rest = text; !rest.empty();) {
    const Line line = First_Line(rest);
    const bool match = Is_Written_Key(line.text, key);
    found = found || match;
    result += match ? new_line : line.text;
    result += rest.substr(line.text.size(), line.length - line.text.size());
    rest.remove_prefix(line.length);
  }
  if (!found) {
    if (!result.empty() && result.back() != '\n' && result.back() != '\r') result += Crlf();
    result += new_line + Crlf();
  }
  return result.append(bytes.substr(text.size()));
}

std::string With_List_Line(std::string_view bytes, const List_Line& line) {
  const std::string_view text = Before_End_Of_Text(bytes);
  const std::string new_line = line.key + "=" + Bytes_Of_Value(line.value);
  std::size_t occurrence = 0;
  std::size_t behind_last = text.size();
  for (std::size_t at = 0; at < text.size();) {
    const Line old = First_Line(text.substr(at));
    if (Value_Of(old.text, line.key)) {
      if (++occurrence == line.occurrence) {
        return std::string(bytes.substr(0, at)) + new_line + std::string(bytes.substr(at + old.text.size()));
      }
      behind_last = at + old.length;
    }
    at += old.length;
  }
  std::string result(bytes.substr(0, behind_last));
  if (!result.empty() && result.back() != '\n' && result.back() != '\r') result += Crlf();
  return result + new_line + Crlf() + std::string(bytes.substr(behind_last));
}

}  // namespace kx
