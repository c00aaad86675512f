#pragma once

#include <string>
#include <string_view>

/// Fields and digits within the lines of definition texts.
namespace kx {

/// Field @p n (from 1) of a TAB separated line, up to the next TAB, else ";", else CR. Empty when the line
/// has fewer fields; when nothing ends the field it is empty too and a box says so.
[[nodiscard]] std::string Extract_Data(std::string_view line, int n);

/// The text between the first @p left and the first @p right. Without @p left the text before @p right,
/// without @p right the text after @p left; empty when both are missing or stand in the wrong order.
[[nodiscard]] std::string Get_Between(std::string_view text, std::string_view left, std::string_view right);

/// Number of the first character as a hex digit of either case; by character code, so that anything else
/// gives a number outside 0..15. No character gives 0.
[[nodiscard]] int Hex_Digit(std::string_view text);

/// 16 times the first digit plus the second.
[[nodiscard]] int Hex_Byte(std::string_view text);

/// Binary digits without leading zeros; empty for 0 and below.
[[nodiscard]] std::string Dec2Bin(int value);

}  // namespace kx
