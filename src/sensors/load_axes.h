#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "sensors/sensor_store.h"
#include "settings/ini_text.h"

/// Break points of the load tables. Row n is the axis for sensor n: the ini file's n-th "map_lst" line, or
/// made from the sensor's definition when there is none. Row 0 is built in: unit "value", 1 to 33.
namespace kx {

struct Axis_Def {
  std::string unit;
  std::string kind;  ///< "Tab": a row of values, as with the sensors

  friend bool operator==(const Axis_Def&, const Axis_Def&) = default;
};

extern std::vector<Axis_Def> MAP_def;
extern std::vector<Table_Columns> MAP_tab;

/// Fills the rows from the values of the "map_lst" keys up to the first empty one, then for the sensors that
/// have none. A line is a unit, the decimals and up to 33 numbers, parted by blanks; points that a line lacks
/// are those of its sensor, points beyond 33 do not count. Returns the lines of another count than 33.
std::vector<Ini_Fault> Read_Load_Axes(const std::vector<Ini_Value>& lines);

/// The "map_lst" line of a sensor's axis: its unit, its decimals, its values at raw 0, 8 to 256. A blank in
/// the unit becomes one that does not part words.
[[nodiscard]] std::string Axis_Line(const Sensor& sensor, const Table_Columns& table);

/// True when @p line is what Axis_Line gives for that sensor, or differs from it only in the last point,
/// which may run on beyond the scale to raw 256. Any other line has been made by hand.
[[nodiscard]] bool Is_Computed_Axis(std::string_view line, const Sensor& sensor, const Table_Columns& table);

/// Unit of row @p row; row -1 (no sensor) stands for row 0, here and below. Throws Failure "Subscript out of
/// range" for a row that is not there.
[[nodiscard]] std::string Load_Axis_Unit(int row);

/// Mask of the row's decimals for Format.
[[nodiscard]] std::string Load_Axis_Format(int row);

/// Break point @p point, 1 to 33.
[[nodiscard]] double Load_Axis_Value(int row, int point);

/// The same as text in the row's decimals.
[[nodiscard]] std::string Load_Axis_Text(int row, int point);

/// Back to row 0 alone.
void Reset_Load_Axes_State();

}  // namespace kx
