#include "workspace/engine_place.h"

#include <algorithm>
#include <cmath>

#include "logging/live_log.h"
#include "sensors/sensor_store.h"
#include "settings/numbers.h"
#include "workspace/cell_editing.h"
#include "workspace/table_axes.h"
#include "workspace/table_meaning.h"

namespace kx {
namespace {

constexpr double reach_of_cursor = 0.6;  ///< entries that the engine may be away before the cursor follows

std::optional<double> On_Axis(const Table_Axis& axis, const Live_Row& row) {
  if (!axis.load) return row.Rpm();
  return Load_Counts(*axis.load, [&row](Log_Signal signal) { return row.Counts(signal); });
}

constexpr const char* no_value = "no sensor";  ///< that the table's values would be shown by

/// The number in a cell, without the cell.
double Shown_Number(const Table_Meaning& meaning, Table table, int row, const Byte_Image& image) {
  return Val_Any(Shown_Text_Of(meaning, image[Shown_Byte(table, row)]));
}

std::string Mask_Of(const Table_Meaning& meaning) {
  return meaning.by_sensor ? Sensor_Format(meaning.sensor) : std::string(meaning.form.mask);
}

}  // namespace

std::optional<Table_Place> Place_In(Table table, const Live_Row& row, const Byte_Image& image) {
  const auto axis = Table_Axis_Of(table, image);
  if (!axis) return {};
  const auto counted = On_Axis(*axis, row);
  if (!counted) return {};
  const Table_Meaning meaning = Meaning_Of(table, image);
  const double entry = axis->spacing.At(*counted);
  const int below = static_cast<int>(entry);
  if (Shown_Text_Of(meaning, image[Shown_Byte(table, below)]).empty()) return Table_Place{entry, 0, no_value};
  const double low = Shown_Number(meaning, table, below, image);
  const double high = Shown_Number(meaning, table, std::min(below + 1, axis->spacing.entries), image);
  const double value = low + (high - low) * (entry - below);
  return Table_Place{entry, value, Format(value, Mask_Of(meaning)) + " " + Unit_Of(meaning)};
}

std::optional<Table_Place> Engine_Place(Table table) {
  const auto row = Newest_Live_Row();
  return row ? Place_In(table, *row) : std::nullopt;
}

bool Follow_To_Place(Table table, const Table_Place& place) {
  const Grid& grid = Grid_Of(table);
  if (!Fresh_Cell) return false;
  const bool alone = grid.Sel_Count() == 0;
  if (alone && std::fabs(place.entry - grid.Row()) <= reach_of_cursor) return false;
  const int nearest = std::max(static_cast<int>(std::floor(place.entry + 0.5)), Row_Of(table).first_row);
  if (alone && nearest == grid.Row()) return false;
  Grid_Enter_Cell(table, nearest, nearest);
  return true;
}

}  // namespace kx
