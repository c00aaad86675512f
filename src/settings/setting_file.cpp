#include "settings/setting_file.h"

#include "settings/numbers.h"
#include "settings/text_encoding.h"

namespace kx {
namespace {

/// No number of a tune has more characters; a longer one is not looked at.
constexpr std::size_t longest_number = 40;

bool Is_Blank(char c) { return c == ' ' || c == '\t'; }
bool Is_Line_End(char c) { return c == '\r' || c == '\n'; }

void Skip_Blanks(std::string_view& text) {
  while (!text.empty() && Is_Blank(text[0])) text.remove_prefix(1);
}

/// Takes one comma or line end from the head of @p text; false when there is neither.
bool Skip_Separator(std::string_view& text) {
  if (text.empty() || (text[0] != ',' && !Is_Line_End(text[0]))) return false;
  text.remove_prefix(text.starts_with("\r\n") ? 2 : 1);
  return true;
}

/// The number at the head of @p text, which is taken off with what ends it.
std::optional<std::uint8_t> Next_Number(std::string_view& text) {
  while (!text.empty() && (Is_Blank(text[0]) || Is_Line_End(text[0]))) text.remove_prefix(1);
  const std::size_t length = std::min(text.substr(0, longest_number).find_first_of(" \t\r\n,"), text.size());
  const auto number = Whole_Number_Text(text.substr(0, std::min(length, longest_number)));
  if (!number || length > longest_number) return {};
  const double whole = Round_Whole(*number);
  if (!(whole >= 0 && whole <= 255)) return {};
  text.remove_prefix(length);
  Skip_Blanks(text);
  Skip_Separator(text);
  return static_cast<std::uint8_t>(whole);
}

/// Text of an item in quotes, when nothing but blanks stands between it and what ends the item.
std::optional<std::string_view> Next_Quoted(std::string_view& text) {
  if (!text.starts_with('"')) return {};
  const std::size_t close = text.find('"', 1);
  if (close == std::string_view::npos) return {};
  std::string_view rest = text.substr(close + 1);
  Skip_Blanks(rest);
  if (!Skip_Separator(rest) && !rest.empty()) return {};
  const std::string_view item = text.substr(1, close - 1);
  text = rest;
  return item;
}

std::string_view Next_Item(std::string_view& text) {
  Skip_Blanks(text);
  if (const auto quoted = Next_Quoted(text)) return *quoted;
  const std::string_view item = text.substr(0, text.find_first_of(",\r\n"));
  text.remove_prefix(item.size());
  Skip_Separator(text);
  return item;
}

}  // namespace

std::optional<Setting_File> Parse_Setting_File(std::string_view bytes) {
  std::string_view text = Before_End_Of_Text(bytes);
  Setting_File file;
  for (int i = 0; i < Byte_Image::size; ++i) {
    const auto number = Next_Number(text);
    if (!number) return {};
    file.image[i] = *number;
  }
  while (!text.empty()) file.description += From_Windows_1252(Next_Item(text)) + Crlf();
  return file;
}

std::string Print_Setting_File(const Byte_Image& image, std::string_view description) {
  std::string bytes;
  for (int i = 0; i < Byte_Image::size; ++i) bytes += " " + std::to_string(image[i]) + " " + Crlf();
  return bytes + To_Windows_1252(description) + Crlf();
}

}  // namespace kx
