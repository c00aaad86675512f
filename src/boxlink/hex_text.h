#pragma once

#include <string_view>

/// How the box's hex digits read. The two ways differ on anything but upper-case digits, and each engine
/// keeps its own.
namespace kx {

/// 16 times the first digit plus the second, upper or lower case; a missing digit counts 0. What is no digit
/// gives a value too, and may leave 0..255 either way.
[[nodiscard]] int Hex_Pair_Value(std::string_view pair);

/// The same as the timer-driven reader takes it: only upper-case digits read as hex.
[[nodiscard]] int Timer_Pair_Value(std::string_view pair);

}  // namespace kx
