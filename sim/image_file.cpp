#include "sim/image_file.h"

#include <charconv>
#include <fstream>
#include <string_view>

namespace kx::sim {
namespace {

constexpr std::size_t Longest_Start = 65536;  // far more than 256 numbers take; the rest is description
constexpr std::string_view Separators = " \t\r\n,";

/// The next item of @p text, which is cut behind it; empty at the end.
std::string_view Take_Item(std::string_view& text) {
  text.remove_prefix(std::min(text.find_first_not_of(Separators), text.size()));
  const std::string_view item = text.substr(0, text.find_first_of(Separators));
  text.remove_prefix(item.size());
  return item;
}

bool Read_Byte(std::string_view item, std::uint8_t& byte) {
  const auto [end, error] = std::from_chars(item.data(), item.data() + item.size(), byte);
  return error == std::errc{} && end == item.data() + item.size();
}

}  // namespace

Loaded_Image Read_Image(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  if (!file) return {{}, path + ": cannot be opened"};
  std::string start(Longest_Start, '\0');
  file.read(start.data(), static_cast<std::streamsize>(start.size()));
  std::string_view text(start.data(), static_cast<std::size_t>(file.gcount()));
  Loaded_Image image;
  for (std::size_t i = 0; i < image.Bytes.size(); ++i) {
    const std::string_view item = Take_Item(text);
    if (item.empty()) return {{}, path + ": ends after " + std::to_string(i) + " of 256 numbers"};
    if (!Read_Byte(item, image.Bytes.at(i))) {
      return {{}, path + ": item " + std::to_string(i + 1) + " is not a number from 0 to 255"};
    }
  }
  return image;
}

std::string Write_Image(const std::string& path, const Image& image) {
  std::ofstream file(path, std::ios::binary);
  for (const unsigned byte : image) file << ' ' << byte << " \r\n";
  file.close();
  return file ? std::string() : path + ": cannot be written";
}

}  // namespace kx::sim
