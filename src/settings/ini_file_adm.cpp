#include "settings/ini_file_adm.h"

#include <algorithm>
#include <charconv>
#include <map>

#include "platform/files.h"
#include "settings/brand.h"
#include "settings/message.h"
#include "settings/session.h"
#include "settings/text_encoding.h"

namespace kx {
namespace {

constexpr std::string_view pound_utf8 = "\xC2\xA3";
constexpr std::string_view pound_1252 = "\xA3";

/// What no write has brought to the disk so far, so that a run without a writable ini file loses nothing: by
/// key, and by the occurrence of a line of a list; occurrence 0 stands for every line with the key.
std::map<std::pair<std::string, std::size_t>, std::string> unsaved;
bool failure_told = false;

std::string Ini_Path() { return start_dir + Ini_File_Name; }
std::string Beside_Path() { return start_dir + "KXS.new"; }

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

std::string With_Unsaved(std::string bytes) {
  for (const auto& [line, value] : unsaved) {
    const auto& [key, occurrence] = line;
    bytes = occurrence == 0 ? With_Key(bytes, key, value) : With_List_Line(bytes, {key, occurrence, value});
  }
  return bytes;
}

/// The file as it is, empty when it does not exist.
platform::File_Result Read_File(std::string& bytes) {
  auto result = platform::Read_Whole_File(Ini_Path(), bytes);
  return result.missing ? platform::File_Result{} : result;
}

/// What the program takes for the file: empty when it cannot be read.
std::string Contents() {
  std::string bytes;
  if (Ini_File_Name.empty()) return bytes;
  if (!Read_File(bytes).Ok()) bytes.clear();
  return With_Unsaved(std::move(bytes));
}

void Tell_Failure(const std::string& reason) {
  if (failure_told) return;
  failure_told = true;
  Tell("The settings of the program cannot be saved.\n" + reason +
           "\nThe program goes on without saving them.",
       platform::Icon::warning);
}

/// Brings everything unsaved to the disk.
platform::File_Result Save() {
  std::string old;
  if (auto result = Read_File(old); !result.Ok()) return result;
  const std::string bytes = With_Unsaved(old);
  return bytes == old ? platform::File_Result{} : platform::Replace_File(Ini_Path(), Beside_Path(), bytes);
}

/// Brings all of @p unsaved to the disk, or tells once that it cannot.
void Save_Or_Tell() {
  if (const auto result = Save(); result.Ok()) {
    unsaved.clear();
  } else {
    Tell_Failure(result.reason);
  }
}

}  // namespace

std::vector<std::string> Read_Keys(std::string_view key) {
  const std::string bytes = Contents();
  std::vector<std::string> values;
  for (const std::string_view line : Lines_Of(Before_End_Of_Text(bytes))) {
    if (const auto value = Value_Of(line, key)) values.push_back(Text_Of_Value(*value));
  }
  return values;
}

std::optional<std::string> Read_Key(std::string_view key, int occurrence) {
  const std::string bytes = Contents();
  for (const std::string_view line : Lines_Of(Before_End_Of_Text(bytes))) {
    const auto value = Value_Of(line, key);
    if (value && --occurrence == 0) return Text_Of_Value(*value);
  }
  return {};
}

std::map<int, std::string> Read_Numbered_Keys(std::string_view key) {
  const std::string bytes = Contents();
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

void Write_Key(std::string_view key, std::string_view value) {
  if (Ini_File_Name.empty()) return;
  unsaved[{std::string(key), 0}] = value;
  Save_Or_Tell();
}

void Write_List_Lines(const std::vector<List_Line>& lines) {
  if (Ini_File_Name.empty()) return;
  for (const List_Line& line : lines) unsaved[{line.key, line.occurrence}] = line.value;
  Save_Or_Tell();
}

void Check_Ini_Writable() {
  if (Ini_File_Name.empty()) return;
  if (const auto result = platform::Check_Replaceable(Ini_Path(), Beside_Path()); !result.Ok()) {
    Tell_Failure(result.reason);
  }
}

std::string Extract_Data(std::string_view line, int n) {
  for (int skipped = 1; skipped < n; ++skipped) {
    const std::size_t tab = line.find('\t');
    if (tab == std::string_view::npos) return {};
    line.remove_prefix(tab + 1);
  }
  for (const char end : {'\t', ';', '\r'}) {
    const std::size_t at = line.find(end);
    if (at != std::string_view::npos) return std::string(line.substr(0, at));
  }
  Tell("Did not find data no:" + std::to_string(n), platform::Icon::none, "WARNING");
  return {};
}

std::string Get_Between(std::string_view text, std::string_view left, std::string_view right) {
  constexpr auto none = std::string_view::npos;
  const std::size_t from = left.empty() ? none : text.find(left);
  const std::size_t to = right.empty() ? none : text.find(right);
  if (from == none) return to == none ? std::string() : std::string(text.substr(0, to));
  if (to == none) return std::string(text.substr(from + left.size()));
  const std::size_t first = from + left.size();
  return first < to ? std::string(text.substr(first, to - first)) : std::string();
}

int Hex_Digit(std::string_view text) {
  if (text.empty()) return 0;
  const int code = static_cast<unsigned char>(text[0]);
  return code - '0' - (code > 60 ? 7 : 0) - (code > 80 ? 32 : 0);
}

int Hex_Byte(std::string_view text) {
  return 16 * Hex_Digit(text) + Hex_Digit(text.substr(std::min<std::size_t>(1, text.size())));
}

std::string Dec2Bin(int value) {
  std::string digits;
  for (; value > 0; value /= 2) digits.insert(digits.begin(), value % 2 == 1 ? '1' : '0');
  return digits;
}

void Reset_Ini_State() {
  unsaved.clear();
  failure_told = false;
}

}  // namespace kx
