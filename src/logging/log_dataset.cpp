#include "logging/log_dataset.h"

#include <algorithm>

#include "logging/log_state.h"
#include "settings/message.h"
#include "settings/numbers.h"

namespace kx {
namespace {

constexpr std::string_view opening = "[log_dataset]";
constexpr std::string_view closing = "[end log_dataset]";

/// Text between the opening line and the closing one; empty when either is missing.
std::string_view Lines_Of(std::string_view text) {
  const std::size_t start = text.find(opening);
  if (start == std::string_view::npos) return {};
  text.remove_prefix(start);
  const std::size_t first = text.find('\n');
  const std::size_t end = text.find(closing);
  return end == std::string_view::npos || first >= end ? std::string_view()
                                                       : text.substr(first + 1, end - first - 1);
}

std::optional<Byte_Image> Image_In_Hand() {
  if (Log_Dataset_Lines(Log_Dataset_Text) > Byte_Image::size) Tell("Error");
  return Log_Dataset_Image(Log_Dataset_Text);
}

}  // namespace

int Log_Dataset_Lines(std::string_view text) {
  return static_cast<int>(std::ranges::count(Lines_Of(text), '\n'));
}

std::optional<Byte_Image> Log_Dataset_Image(std::string_view text) {
  if (Log_Dataset_Lines(text) != Byte_Image::size) return {};
  Byte_Image image;
  std::string_view lines = Lines_Of(text);
  for (int i = 0; i < Byte_Image::size; ++i) {
    image[i] = byte_chk(lines.substr(0, lines.find_first_of("\r\n")));
    lines.remove_prefix(lines.find('\n') + 1);
  }
  return image;
}

int Get_Boost_sensor() {
  const auto image = Image_In_Hand();
  return image ? Field_Of(*image, map::log_boost_input) : no_dataset;
}

int Get_Ignition_mode() {
  const auto image = Image_In_Hand();
  if (!image) return no_dataset;
  return Field_Of(*image, map::log_ignition_mode) == 0 ? 0 : 1;
}

int Get_MasterSlave_mode() { return Get_Ignition_mode(); }

}  // namespace kx
