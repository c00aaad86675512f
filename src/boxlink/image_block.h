#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "settings/image.h"

/// An image as the box sends it, positions from 1:
///
///     1..4     lead-in, not looked at
///     5        opening marker, "@" from the master, "#" from the slave
///     6..517   256 bytes as two hex digits each, offset 0 first
///     518      closing marker
///     519,520  line end
namespace kx {

/// What a tune of a box is said to come from.
inline constexpr const char* box_source = "Read from the box";

inline constexpr int image_block_length = 520;
inline constexpr char master_marker = '@';
inline constexpr char slave_marker = '#';

/// The digits behind the first @p marker of @p answer, without a marker those at its start. Nothing unless
/// they are 512, upper or lower case, with something else behind them.
[[nodiscard]] std::optional<std::string> Image_Digits(std::string_view answer, char marker);

/// Bytes 0 to @p last of @p image from its @p digits; the bytes behind stay.
void Decode_Digits(std::string_view digits, int last, Byte_Image& image);

/// The digits as the timer-driven engine takes them: by place, from a collected @p text that may go on behind
/// the block. Nothing as long as too little has come, when no marker stands where one must, or when they are
/// not 512 digits, upper or lower case.
[[nodiscard]] std::optional<std::string> Timer_Image_Digits(std::string_view text);

/// The image of 512 @p digits. Nothing when one of them is lower case, which no box sends.
[[nodiscard]] std::optional<Byte_Image> Decode_Timer_Digits(std::string_view digits);

}  // namespace kx
