#pragma once

#include <array>
#include <limits>
#include <optional>
#include <span>
#include <vector>

#include "logging/load_source.h"
#include "logging/log_array.h"
#include "sensors/axis_spacing.h"

/// Where a log has been: its rows sorted into cells of load entries by RPM entries, and what a signal was in
/// each cell.
namespace kx {

/// One cell. The figures are those of the chosen signal, and stand at 0 while there are no rows.
struct Hit_Cell {
  int rows = 0;
  double mean = 0;
  double smallest = 0;
  double largest = 0;

  friend bool operator==(const Hit_Cell&, const Hit_Cell&) = default;
};

/// The cells, in the order of the load entries, all RPM entries of the first load entry before the next.
struct Hit_Map {
  Axis_Spacing load;  ///< raw counts
  Axis_Spacing rpm;
  std::vector<Hit_Cell> cells;
  int rows = 0;  ///< rows in all cells

  /// Both entries from 1. Throws Failure "Subscript out of range" outside the map.
  [[nodiscard]] const Hit_Cell& At(int load_entry, int rpm_entry) const;
};

/// The signals that a map is made of, over the same rows; NaN is an empty cell.
struct Hit_Columns {
  std::span<const double> rpm;
  std::span<const double> load;   ///< raw counts
  std::span<const double> value;  ///< the chosen signal
};

/// Sorts the rows: the nearest entry of each axis decides the cell, what lies beyond an axis belongs to its
/// last entry. A row that lacks RPM, load or value, or whose byte of @p taken is 0, is in no cell.
[[nodiscard]] Hit_Map Hit_Map_Of(const Hit_Columns& columns, std::span<const char> taken,
                                 const Axis_Spacing& load, const Axis_Spacing& rpm);

/// A range that a signal has to be in, both ends included. Slot 0 asks for nothing.
struct Signal_Range {
  int slot = 0;
  double low = -std::numeric_limits<double>::infinity();
  double high = std::numeric_limits<double>::infinity();
};

inline constexpr int hit_range_count = 2;

/// Which rows of the log count, and what is taken from them.
struct Hit_Choice {
  Load_Source source;
  Axis_Spacing load;
  Axis_Spacing rpm;
  int value_slot = 1;
  int first_row = 1;
  int last_row = 0;
  bool high_load = false;  ///< only rows above the three least values by which the log's fuel filter learns,
                           ///< with the map's load as boost
  std::array<Signal_Range, hit_range_count> ranges;
};

/// The map of @p log by its settings. Rows outside the log's capacity are left out.
[[nodiscard]] Hit_Map Hit_Map_Of_Log(const Log_Array& log, const Hit_Choice& choice);

/// What of a cell is on show.
enum class Hit_Measure { rows, mean, smallest, largest };

/// Nothing for a cell without rows.
[[nodiscard]] std::optional<double> Measure_Of(const Hit_Cell& cell, Hit_Measure measure);

}  // namespace kx
