#include "boxlink/hex_text.h"

namespace kx {
namespace {

int Digit_Value(char character) {
  const int code = static_cast<unsigned char>(character);
  return code - 48 - (code > 60 ? 7 : 0) - (code > 80 ? 32 : 0);
}

}  // namespace

int Hex_Pair_Value(std::string_view pair) {
  const int high = !pair.empty() ? Digit_Value(pair[0]) : 0;
  const int low = pair.size() > 1 ? Digit_Value(pair[1]) : 0;
  return 16 * high + low;
}

}  // namespace kx
