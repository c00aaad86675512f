#include "settings/field_text.h"

#include <algorithm>

#include "settings/message.h"

namespace kx {

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

}  // namespace kx
