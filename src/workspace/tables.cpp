#include "workspace/tables.h"

#include <algorithm>

#include "sensors/sensor_store.h"
#include "settings/image.h"
#include "workspace/cell_editing.h"

namespace kx {

Shown_Tabs shown_tabs;

namespace {

std::array<Grid, table_rows.size()> grids;
std::array<Chart, chart_names.size()> charts;

bool On(const map::Field& flag, const Byte_Image& image) { return Field_Of(image, flag) == 1; }

}  // namespace

Grid& Grid_Of(Table table) { return grids[static_cast<std::size_t>(table)]; }

Chart& Chart_Of(Chart_Id id) { return charts[static_cast<std::size_t>(id)]; }

std::optional<Table> Active_Table() {
  const auto* const found = std::find_if(table_rows.begin(), table_rows.end(), [](const Table_Row& row) {
    return shown_tabs.sstab_Main == row.tab && shown_tabs.*row.sub_tabs == row.sub_tab;
  });
  if (found == table_rows.end()) return {};
  return found->table;
}

int IgRpmPoints(const Byte_Image& image) { return Maf_Limit_Active(image) ? 1 : map::ignition_rpm.count; }

int FuelRpmPoints(const Byte_Image& image) {
  return Res500(image) ? map::fuel_rpm.count : map::fuel_rpm_fine.count;
}

int An1Points(const Byte_Image&) { return map::analog1.count; }

int An2Points(const Byte_Image& image) {
  return Analog2_Is_Curve(image) ? map::analog2_curve.count : map::analog2.count;
}

int Entries_Of(Table table, const Byte_Image& image) { return Row_Of(table).entries(image); }

bool In_Use(Table table, const Byte_Image& image) {
  switch (table) {
    case Table::analog1:
      return !Maf_Simulation_On(image);
    case Table::analog2:
      return Res500(image) && Field_Of(image, map::an2_mode) != an2_mode::boost_activated;
    case Table::maf_output:
      return Maf_Simulation_On(image);
    case Table::maf_limit:
      return Maf_Limit_Active(image);
    default:
      return true;
  }
}

int Edited_Byte(Table table, int row) { return Row_Of(table).first_byte + row - 1; }

int Shown_Byte(Table table, int row) { return Edited_Byte(table, std::max(row, Row_Of(table).first_row)); }

Chart_Id Chart_Beside(Table table) {
  const Table_Row& row = Row_Of(table);
  return row.curve_chart && Analog2_Is_Curve() ? *row.curve_chart : row.chart;
}

bool Res500(const Byte_Image& image) { return !On(map::fuel_rpm_250, image); }

bool Analog2_Is_Curve(const Byte_Image& image) { return On(map::an2_is_curve, image); }

bool Maf_Simulation_On(const Byte_Image& image) { return On(map::maf_sim_enable, image); }

bool Maf_Limit_Active(const Byte_Image& image) {
  return Maf_Simulation_On(image) && On(map::maf_sim_limit, image);
}

bool Boost_Closed_Loop(const Byte_Image& image) { return On(map::boost_pid, image); }

int Boost_Sensor(const Byte_Image& image) { return Sensor_On_Input(Field_Of(image, map::boost_input) + 1); }

void Reset_Table_State() {
  shown_tabs = {};
  grids = {};
  charts = {};
  Fresh_Cell = false;
}

}  // namespace kx
