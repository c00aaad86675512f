#include "boxlink/hex_text.h"

namespace kx {
namespace {

int Code(char character) { return static_cast<unsigned char>(character); }

int Digit_Value(char character) {
  const int code = Code(character);
  return code - 48 - (code > 60 ? 7 : 0) - (code > 80 ? 32 : 0);
}

int Timer_Digit_Value(char character) {
  const int code = Code(character);
  if (code < 48) return code;
  return code >= 58 && code <= 70 ? code - 55 : code - 48;
}

int Pair_Value(std::string_view pair, int (*digit_value)(char)) {
  const int high = !pair.empty() ? digit_value(pair[0]) : 0;
  const int low = pair.size() > 1 ? digit_value(pair[1]) : 0;
  return 16 * high + low;
}

}  // namespace

int Hex_Pair_Value(std::string_view pair) { return Pair_Value(pair, Digit_Value); }

int Timer_Pair_Value(std::string_view pair) { return Pair_Value(pair, Timer_Digit_Value); }

}  // namespace kx
