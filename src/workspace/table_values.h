#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "workspace/shaping.h"
#include "workspace/tables.h"

namespace kx {

/// Text that the table shows for a raw byte under the tune's flags.
[[nodiscard]] std::string Shown_Text_Of(Table table, std::uint8_t raw);

/// Heading of the value column.
[[nodiscard]] std::string Value_Heading(Table table);

/// Where the entries of @p rows stand on their axis, in its unit.
[[nodiscard]] Axis_Points Axis_Of(Table table, const std::vector<int>& rows);

/// Heading and text of the axis columns of a table under the flags of @p image; a load grid has two, the
/// voltage and the sensor's value.
[[nodiscard]] std::vector<std::string> Axis_Headings(Table table, const Byte_Image& image = CardByte);
[[nodiscard]] std::vector<std::string> Axis_Texts(Table table, int row, const Byte_Image& image = CardByte);

}  // namespace kx
