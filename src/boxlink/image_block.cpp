#include "boxlink/image_block.h"

#include "boxlink/hex_text.h"
#include "settings/numbers.h"

namespace kx {

std::optional<std::string> Image_Digits(std::string_view answer, char marker) {
  constexpr std::size_t digit_count = 2 * Byte_Image::size;
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

}  // namespace kx
