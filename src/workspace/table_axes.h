#pragma once

#include <optional>

#include "logging/load_source.h"
#include "sensors/axis_spacing.h"
#include "workspace/tables.h"

/// What the axes of the tables count, as numbers: which signal of the engine moves along an axis, and at
/// which distances its entries stand. The texts of the axes are in table_values.h.
namespace kx {

inline constexpr double rpm_step = 500;       ///< RPM between entries
inline constexpr double fine_rpm_step = 250;  ///< at 250 RPM resolution

/// The axis of a table under the flags of an image.
struct Table_Axis {
  Axis_Spacing spacing;             ///< raw counts of the source, or RPM
  std::optional<Load_Source> load;  ///< nothing: the axis is RPM
};

/// Nothing for a table that is over neither load nor RPM, which is the MAF-simulation output.
[[nodiscard]] std::optional<Table_Axis> Table_Axis_Of(Table table, const Byte_Image& image = CardByte);

/// What the box takes for the load of @p table, a load table.
[[nodiscard]] Load_Source Load_Source_Of(Table table, const Byte_Image& image = CardByte);

/// Signal of analog input @p input, 0 to 3 as the lists count them.
[[nodiscard]] Log_Signal Analog_Input(int input);

/// The RPM table that works together with @p load_table.
[[nodiscard]] Table Rpm_Table_Beside(Table load_table);

}  // namespace kx
