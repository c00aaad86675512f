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

inline constexpr int image_block_length = 520;
inline constexpr char master_marker = '@';
inline constexpr char slave_marker = '#';

/// The 512 characters behind the first @p marker of @p answer; without a marker the first 512. Nothing when
/// there are fewer.
[[nodiscard]] std::optional<std::string> Image_Digits(std::string_view answer, char marker);

/// Bytes 0 to @p last of @p image from the digits; the bytes behind stay. Values outside 0..255 are clipped.
void Decode_Digits(std::string_view digits, int last, Byte_Image& image);

}  // namespace kx
