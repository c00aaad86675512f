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

/// @p item without the quotes around it; blanks outside of them stay.
std::string Without_Quotes(std::string_view item) {
  std::string text(item);
  const std::size_t open = text.find('"');
  const std::size_t close = text.rfind('"');
  if (open < close) text.erase(close, 1).erase(open, 1);
  return text;
}

/// Length of an item in quotes with the blanks around it, when nothing but those stands before what ends it.
std::optional<std::size_t> Quoted_Length(std::string_view text) {
  const std::size_t open = std::min(text.find_first_not_of(" \t"), text.size());
  const std::size_t close = text.find('"', open + 1);
  if (text.substr(open, 1) != "\"" || close == std::string_view::npos) return {};
  const std::size_t end = std::min(text.find_first_not_of(" \t", close + 1), text.size());
  if (end < text.size() && text[end] != ',' && !Is_Line_End(text[end])) return {};
  return end;
}

std::string Next_Item(std::string_view& text) {
  const auto quoted = Quoted_Length(text);
  const std::size_t length = quoted.value_or(std::min(text.find_first_of(",\r\n"), text.size()));
  const std::string_view item = text.substr(0, length);
  text.remove_prefix(length);
  Skip_Separator(text);
  return quoted ? Without_Quotes(item) : std::string(item);
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
