#include "settings/ini_text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <optional>

#include "settings/text_encoding.h"

namespace kx {
namespace {

/// Keys whose lines are definitions: a file that had some and has none is no file to rely on.
constexpr std::array<std::string_view, 3> definition_keys{"Sens_Def", "map_lst", "preset_list"};

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

std::string Written_Line(std::string_view key, std::string_view value) {
  return std::string(key) + "=" + Bytes_Of_Value(value);
}

bool Open_End(std::string_view text) { return !text.empty() && text.back() != '\n' && text.back() != '\r'; }

/// Where the @p occurrence-th line with @p key begins or, when there is none, where it belongs.
struct Place {
  std::size_t at;
  bool there;
};
Place Place_Of(std::string_view bytes, std::string_view key, std::size_t occurrence) {
  const std::string_view text = Before_End_Of_Text(bytes);
  std::size_t behind_last = text.size();
  for (std::size_t at = 0; at < text.size();) {
    const Line line = First_Line(text.substr(at));
    const bool match = Value_Of(line.text, key).has_value();
    if (match && --occurrence == 0) return {at, true};
    at += line.length;
    if (match) behind_last = at;
  }
  return {behind_last, false};
}

/// True when a text is not likely to have been shortened to @p head by hand, as by taking out its last line:
/// @p tail, which is missing, begins within a line or has several.
bool Ends_Too_Early(std::string_view head, std::string_view tail) {
  const bool within_a_line = (head.empty() || Open_End(head)) && tail[0] != '\r' && tail[0] != '\n';
  const auto lines = Lines_Of(tail);
  return within_a_line ||
         std::ranges::count_if(lines, [](std::string_view line) { return !line.empty(); }) > 1;
}

}  // namespace

std::vector<Ini_Value> Values_Of_Key(std::string_view bytes, std::string_view key) {
  std::vector<Ini_Value> values;
  int number = 0;
  for (const std::string_view line : Lines_Of(Before_End_Of_Text(bytes))) {
    ++number;
    if (const auto value = Value_Of(line, key)) values.push_back({From_Windows_1252(*value), number});
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
    if (value) values.emplace(number, From_Windows_1252(*value));
  }
  return values;
}

std::string With_Key(std::string_view bytes, std::string_view key, std::string_view value) {
  const std::string_view text = Before_End_Of_Text(bytes);
  const std::string new_line = Written_Line(key, value);
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
    if (Open_End(result)) result += Crlf();
    result += new_line + Crlf();
  }
  return result.append(bytes.substr(text.size()));
}

std::string With_List_Line(std::string_view bytes, std::string_view key, std::size_t occurrence,
                           std::string_view value) {
  const Place place = Place_Of(bytes, key, occurrence);
  if (!place.there) return std::string(bytes);
  return std::string(bytes.substr(0, place.at)) + Written_Line(key, value) +
         std::string(bytes.substr(place.at + First_Line(bytes.substr(place.at)).text.size()));
}

std::string With_New_List_Line(std::string_view bytes, std::string_view key, std::size_t occurrence,
                               std::string_view value) {
  const std::size_t at = Place_Of(bytes, key, occurrence).at;
  std::string result(bytes.substr(0, at));
  if (Open_End(result)) result += Crlf();
  return result + Written_Line(key, value) + Crlf() + std::string(bytes.substr(at));
}

bool Looks_Half_Written(std::string_view bytes, std::string_view before) {
  if (bytes == before) return false;
  if (before.starts_with(bytes) && Ends_Too_Early(bytes, before.substr(bytes.size()))) return true;
  const bool cut = Open_End(Before_End_Of_Text(bytes)) && !Open_End(Before_End_Of_Text(before));
  const auto last_line = static_cast<int>(Lines_Of(Before_End_Of_Text(bytes)).size());
  return std::ranges::any_of(definition_keys, [&](std::string_view key) {
    const auto were = Values_Of_Key(before, key);
    const auto are = Values_Of_Key(bytes, key);
    if (are.size() < were.size()) return cut || are.empty();
    if (!cut || are.empty() || are.size() > were.size() || are.back().line != last_line) return false;
    return are.back().text != were.back().text && were.back().text.starts_with(are.back().text);
  });
}

}  // namespace kx
