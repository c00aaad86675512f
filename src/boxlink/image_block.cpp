#include "boxlink/image_block.h"

#include <algorithm>
#include <cctype>

#include "boxlink/hex_text.h"
#include "settings/numbers.h"

namespace kx {
namespace {

constexpr std::size_t digit_count = 2UL * Byte_Image::size;

bool Is_Digit(char c) { return std::isxdigit(static_cast<unsigned char>(c)) != 0; }
bool Is_Lower(char c) { return c >= 'a' && c <= 'f'; }

/// The digits at the start of @p text, when there are as many as an image has: a character that was lost on
/// the line, or came twice, would shift all bytes behind it.
std::optional<std::string> Counted_Digits(std::string_view text) {
  const auto count = static_cast<std::size_t>(std::ranges::find_if_not(text, Is_Digit) - text.begin());
  if (count != digit_count || text.size() == digit_count) return std::nullopt;
  return std::string(text.substr(0, digit_count));
}

}  // namespace

std::optional<std::string> Image_Digits(std::string_view answer, char marker) {
  const std::size_t marker_at = answer.find(marker);
  if (marker_at != std::string_view::npos) answer.remove_prefix(marker_at + 1);
  return Counted_Digits(answer);
}

void Decode_Digits(std::string_view digits, int last, Byte_Image& image) {
  for (int i = 0; i <= last; ++i) {
    const auto pair = digits.substr(2 * static_cast<std::size_t>(i), 2);
    image[i] = byte_chk(Hex_Pair_Value(pair));
  }
}

std::optional<std::string> Timer_Image_Digits(std::string_view text) {
  constexpr std::size_t lead_in = 4;
  constexpr std::size_t fewest = lead_in + digit_count + 2;
  if (text.size() < fewest) return std::nullopt;
  const std::string_view block = text.substr(lead_in, digit_count + 2);
  if (block.front() != master_marker && block.back() != slave_marker &&
      !(block.front() == slave_marker && block.back() == master_marker))
    return std::nullopt;
  return Counted_Digits(block.substr(1));
}

std::optional<Byte_Image> Decode_Timer_Digits(std::string_view digits) {
  if (std::ranges::any_of(digits, Is_Lower)) return std::nullopt;
  Byte_Image image;
  Decode_Digits(digits, Byte_Image::size - 1, image);
  return image;
}

}  // namespace kx
