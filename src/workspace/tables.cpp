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

/// List indexes 0 and 2 of the Analog 2 mode are limits over RPM; 1 is a curve; 3 keeps the number it finds.
constexpr int an2_boost_activated = 3;

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

int Entries_Of(Table table) {
  switch (table) {
    case Table::ignition_load:
    case Table::fuel_load:
    case Table::pwm_load:
      return map::ignition_load.count;
    case Table::ignition_rpm:
      return IgRpmPoints;
    case Table::fuel_rpm:
      return FuelRpmPoints;
    case Table::analog1:
      return An1Points;
    case Table::analog2:
      return Analog2_Is_Curve() ? map::analog2_curve.count : map::analog2.count;
    case Table::maf_output:
      return map::maf_output.count;
    case Table::maf_limit:
      return map::maf_limit.count;
    case Table::pwm_rpm:
      return map::pwm_rpm.count;
  }
  return 0;
}

int Edited_Byte(Table table, int row) { return Row_Of(table).first_byte + row - 1; }

int Shown_Byte(Table table, int row) { return Edited_Byte(table, std::max(row, Row_Of(table).first_row)); }

Chart_Id Chart_Beside(Table table) {
  switch (table) {
    case Table::ignition_load:
      return Chart_Id::IgMapChart;
    case Table::ignition_rpm:
      return Chart_Id::IgRPMChart;
    case Table::fuel_load:
      return Chart_Id::FuelMapChart;
    case Table::fuel_rpm:
      return Chart_Id::FuelRpmChart;
    case Table::pwm_load:
      return Chart_Id::PwmMapChart;
    case Table::pwm_rpm:
      return Chart_Id::PwmRpmChart;
    case Table::analog1:
      return Chart_Id::an1_out_chart;
    case Table::analog2:
      return Analog2_Is_Curve() ? Chart_Id::an2_out_chart : Chart_Id::an2_out_limchart;
    case Table::maf_output:
      return Chart_Id::MAFSim_chart;
    case Table::maf_limit:
      return Chart_Id::MAFSim_limit_chart;
  }
  return Chart_Id::IgMapChart;
}

bool Analog2_Is_Curve() { return Get_Field(map::an2_is_curve) == 1; }

bool Maf_Simulation_On() { return Get_Field(map::maf_sim_enable) == 1; }

bool Maf_Limit_Active() { return Maf_Simulation_On() && Get_Field(map::maf_sim_limit) == 1; }

bool Boost_Closed_Loop() { return Get_Field(map::boost_pid) == 1; }

int Boost_Sensor() { return Sensor_On_Input(Get_Field(map::boost_input) + 1); }

void Update_Point_Counts() {
  Res500 = Get_Field(map::fuel_rpm_250) == 0;
  FuelRpmPoints = Res500 ? map::fuel_rpm.count : map::fuel_rpm_fine.count;
  IgRpmPoints = Maf_Limit_Active() ? 1 : map::ignition_rpm.count;
  if (Get_Field(map::an2_mode) == an2_boost_activated) return;
  An2Points = Analog2_Is_Curve() ? map::analog2_curve.count : map::analog2.count;
}

void Reset_Table_State() {
  shown_tabs = {};
  grids = {};
  charts = {};
  Fresh_Cell = false;
}

}  // namespace kx
