#pragma once

#include <array>
#include <cstdint>
#include <string>

namespace kx::sim {

/// The 256 bytes of one tune, in the order in which the wire carries them.
using Image = std::array<std::uint8_t, 256>;

/// An image as read from a file; @p Error is empty when it was read wholly.
struct Loaded_Image {
  Image Bytes{};
  std::string Error;
};

/// Reads the first 256 numbers of the tune file @p path, 0 to 255, parted by blanks, commas or line ends;
/// what follows them is ignored. The Error names the file and what is wrong with it.
[[nodiscard]] Loaded_Image Read_Image(const std::string& path);

/// Writes @p image as a tune file, one number a line. Returns what is wrong, or an empty text.
[[nodiscard]] std::string Write_Image(const std::string& path, const Image& image);

}  // namespace kx::sim
