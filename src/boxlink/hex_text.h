#pragma once

#include <string_view>

namespace kx {

/// Value of two hex digits of the box: 16 times the first plus the second, upper or lower case; a missing
/// digit counts 0. What is no digit gives a value too, and may leave 0..255 either way.
[[nodiscard]] int Hex_Pair_Value(std::string_view pair);

}  // namespace kx
