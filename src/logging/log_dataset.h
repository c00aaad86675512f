#pragma once

#include <optional>
#include <string_view>

#include "settings/image.h"

/// The box's settings as a log carries them: one line a byte, read from the box as the log began.
namespace kx {

/// What the readers below give when the log has no valid dataset.
inline constexpr int no_dataset = 9;

/// Lines between the bracket lines of "[log_dataset]" in @p text: 256 in a valid one, 0 without the section.
[[nodiscard]] int Log_Dataset_Lines(std::string_view text);

/// The image in @p text, a number outside a byte clipped; nothing unless it has just 256 lines.
[[nodiscard]] std::optional<Byte_Image> Log_Dataset_Image(std::string_view text);

/// Analog input that carried the boost, 0 to 3, of the log in hand, or no_dataset; a section with too many
/// lines shows the box "Error". The raw boost lies in slot 31 plus this.
[[nodiscard]] int Get_Boost_sensor();

/// 0 when the ignition of the log's box was off, 1 when on, or no_dataset; shows the same box.
[[nodiscard]] int Get_Ignition_mode();

/// As Get_Ignition_mode.
[[nodiscard]] int Get_MasterSlave_mode();

}  // namespace kx
