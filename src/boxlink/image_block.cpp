#include "boxlink/image_block.h"

#include "boxlink/hex_text.h"
#include "settings/numbers.h"

namespace kx {
namespace {

constexpr std::size_t digit_count = 2UL * Byte_Image::size;

}  // namespace

std::optional<std::string> Image_Digits(std::string_view answer, char marker) {
  const std::size_t marker_at = answer.find(marker);
  if (marker_at != std::string_view::npos) answer.remove_prefix(marker_at + 1);
  if (answer.size() < digit_count) return std::nullopt;
  return std::string(answer.substr(0, digit_count));
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
  return std::string(block.substr(1, digit_count));
}

std::optional<Byte_Image> Decode_Timer_Digits(std::string_view digits) {
  Byte_Image image;
  for (int i = 0; i < Byte_Image::size; ++i) {
    const int value = Timer_Pair_Value(digits.substr(2 * static_cast<std::size_t>(i), 2));
    if (value > 255) return std::nullopt;
    image[i] = static_cast<std::uint8_t>(value);
  }
  return image;
}

}  // namespace kx
