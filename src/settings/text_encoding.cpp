#include "settings/text_encoding.h"

#include <algorithm>
#include <array>

namespace kx {
namespace {

/// Code points of bytes 80 to 9F. The five that the code page leaves open stand for the control characters of
/// their own number, so that every byte comes back.
constexpr std::array<char32_t, 32> upper_controls{
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

void Append_Utf8(std::string& text, char32_t code) {
  if (code < 0x80) {
    text += static_cast<char>(code);
  } else if (code < 0x800) {
    text += static_cast<char>(0xC0 | (code >> 6));
    text += static_cast<char>(0x80 | (code & 0x3F));
  } else {
    text += static_cast<char>(0xE0 | (code >> 12));
    text += static_cast<char>(0x80 | ((code >> 6) & 0x3F));
    text += static_cast<char>(0x80 | (code & 0x3F));
  }
}

struct Decoded {
  char32_t code;
  std::size_t length;
};

/// One character at the head of @p text, which is not empty. A byte that starts no valid character stands for
/// itself and gets replaced later.
Decoded Next_Character(std::string_view text) {
  const auto at = [text](std::size_t i) { return static_cast<unsigned char>(text[i]); };
  const unsigned char head = at(0);
  if (head < 0x80) return {head, 1};
  const std::size_t length = head >= 0xF0 ? 4 : head >= 0xE0 ? 3 : head >= 0xC0 ? 2 : 1;
  if (length == 1 || text.size() < length) return {0xFFFD, 1};
  char32_t code = head & (0xFFU >> (length + 1));
  for (std::size_t i = 1; i < length; ++i) {
    if ((at(i) & 0xC0) != 0x80) return {0xFFFD, 1};
    code = (code << 6) | (at(i) & 0x3FU);
  }
  return {code, length};
}

char Windows_1252_Byte(char32_t code) {
  if (code < 0x80 || (code >= 0xA0 && code <= 0xFF)) return static_cast<char>(code);
  const auto* const found = std::find(upper_controls.begin(), upper_controls.end(), code);
  if (found == upper_controls.end()) return '?';
  return static_cast<char>(0x80 + (found - upper_controls.begin()));
}

}  // namespace

std::string Crlf() { return "\r\n"; }

std::string To_Windows_1252(std::string_view utf8) {
  std::string bytes;
  bytes.reserve(utf8.size());
  while (!utf8.empty()) {
    const Decoded next = Next_Character(utf8);
    bytes += Windows_1252_Byte(next.code);
    utf8.remove_prefix(next.length);
  }
  return bytes;
}

std::string From_Windows_1252(std::string_view bytes) {
  std::string text;
  text.reserve(bytes.size());
  for (const char c : bytes) {
    const auto byte = static_cast<unsigned char>(c);
    Append_Utf8(text, byte >= 0x80 && byte < 0xA0 ? upper_controls[byte - 0x80U] : byte);
  }
  return text;
}

std::string From_Latin_1(std::string_view bytes) {
  std::string text;
  text.reserve(bytes.size());
  for (const char c : bytes) Append_Utf8(text, static_cast<unsigned char>(c));
  return text;
}

std::string_view Before_End_Of_Text(std::string_view text) { return text.substr(0, text.find('\x1A')); }

std::vector<std::string_view> Lines_Of(std::string_view text) {
  std::vector<std::string_view> lines;
  while (!text.empty()) {
    const std::size_t end = text.find_first_of("\r\n");
    lines.push_back(text.substr(0, end));
    if (end == std::string_view::npos) break;
    const bool pair = text.compare(end, 2, "\r\n") == 0;
    text.remove_prefix(end + (pair ? 2 : 1));
  }
  return lines;
}

}  // namespace kx
