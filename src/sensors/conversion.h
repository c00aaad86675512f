#pragma once

#include <optional>
#include <span>

#include "sensors/sensor_store.h"

/// From raw input values, 0 to 255, to physical values and back.
namespace kx {

/// Physical value of @p raw, which is clipped in place to the sensor's range. Nothing for sensor -1 or an
/// unknown kind. Throws Failure "Subscript out of range" when @p sensor has no row.
[[nodiscard]] std::optional<double> Forward_Sensor_Calc(int sensor, double& raw);

/// Raw value of a physical value, a whole number, nearest with ties to even; 256 on an exact hit of the last
/// table value, so callers clip. Nothing as above. A table has to rise. Throws Failure "Division by zero" for
/// a gain of 0 and "Overflow" beyond 16 bits.
[[nodiscard]] std::optional<int> Reversed_Sensor_Calc(int sensor, double value);

/// The same two for a definition and its table.
[[nodiscard]] std::optional<double> Forward_Value(const Sensor& sensor, const Table_Columns& table,
                                                  double& raw);
[[nodiscard]] std::optional<int> Raw_Of_Value(const Sensor& sensor, const Table_Columns& table, double value);

/// Values at raw 0, 8, 16 up to 256.
using Curve = std::span<const double, table_points>;

/// Value on a curve, in straight lines between its points; @p raw is clipped in place to 0..255.
[[nodiscard]] double Forward_Curve(Curve curve, double& raw);

/// Raw value of @p value on a rising curve: 0 below it, 255 above it, 256 at its last point.
[[nodiscard]] int Reversed_Curve(Curve curve, double value);

}  // namespace kx
