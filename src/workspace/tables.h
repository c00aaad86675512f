#pragma once

#include <array>
#include <optional>
#include <string_view>

#include "settings/image_map.h"
#include "workspace/charts.h"
#include "workspace/grid.h"
#include "workspace/shown_tabs.h"

namespace kx {

/// The ten editable tables, in the order in which the table on show is looked for.
enum class Table {
  ignition_load,
  ignition_rpm,
  fuel_load,
  fuel_rpm,
  analog1,
  analog2,
  maf_output,
  maf_limit,
  pwm_load,
  pwm_rpm
};

/// What the axis of a table counts.
enum class Axis { load, rpm, fuel_rpm, rpm_or_volts, rpm_times_map };

/// One editable table: where it is shown and where its bytes lie.
struct Table_Row {
  Table table;
  std::string_view grid;      ///< name of its grid control
  int tab;                    ///< tab of sstab_Main
  int Shown_Tabs::*sub_tabs;  ///< the tab control inside that tab
  int sub_tab;                ///< its tab
  int first_byte;             ///< byte of grid row 1
  int text_column;            ///< grid column with the values; the axis stands before it
  Axis axis;
  map::Field load_input;  ///< input of a load axis; unused else
  bool captures_typing;   ///< typing into a cell can be undone
  int first_row;          ///< first row that may be edited
};

inline constexpr map::Field no_input{map::load_base, 0x03};

inline constexpr std::array table_rows{
    Table_Row{Table::ignition_load, "Ig_MAP_Grid", main_tab::ignition, &Shown_Tabs::SSTab_Ignition, 0,
              map::ignition_load.first, 2, Axis::load, map::ignition_load_input, true, 1},
    Table_Row{Table::ignition_rpm, "Ig_RPM_Grid", main_tab::ignition, &Shown_Tabs::SSTab_Ignition, 1,
              map::ignition_rpm.first, 1, Axis::rpm, no_input, true, 1},
    Table_Row{Table::fuel_load, "Fuel_MAP_Grid", main_tab::fuel, &Shown_Tabs::SSTab_Fuel, 0,
              map::fuel_load.first, 2, Axis::load, map::fuel_load_input, true, 1},
    Table_Row{Table::fuel_rpm, "Fuel_RPM_Grid", main_tab::fuel, &Shown_Tabs::SSTab_Fuel, 1,
              map::fuel_rpm.first, 1, Axis::fuel_rpm, no_input, true, 1},
    Table_Row{Table::analog1, "an1_out_grid", main_tab::analog, &Shown_Tabs::SSTab_Analog, 0,
              map::analog1.first, 1, Axis::rpm, no_input, false, 1},
    Table_Row{Table::analog2, "an2_out_grid", main_tab::analog, &Shown_Tabs::SSTab_Analog, 1,
              map::analog2.first, 1, Axis::rpm_or_volts, no_input, false, 1},
    Table_Row{Table::maf_output, "MAFsim_out_grid", main_tab::analog, &Shown_Tabs::SSTab_Analog, 2,
              map::maf_output.first, 1, Axis::rpm_times_map, no_input, false, 1},
    // Row 1 shows the byte of row 2; its own byte is the ignition of all RPMs, which a tuner who fills this
    // grid must not change unseen. So editing starts at row 2.
    Table_Row{Table::maf_limit, "MAFSim_limit_grid", main_tab::analog, &Shown_Tabs::SSTab_Analog, 3,
              map::maf_limit.first, 1, Axis::rpm, no_input, false, 2},
    Table_Row{Table::pwm_load, "PWM_MAP_Grid", main_tab::pwm, &Shown_Tabs::SSTab_PWM, 0, map::pwm_load.first,
              2, Axis::load, map::pwm_load_input, false, 1},
    Table_Row{Table::pwm_rpm, "PWM_RPM_Grid", main_tab::pwm, &Shown_Tabs::SSTab_PWM, 1, map::pwm_rpm.first, 1,
              Axis::rpm, no_input, false, 1},
};

[[nodiscard]] constexpr const Table_Row& Row_Of(Table table) {
  return table_rows[static_cast<std::size_t>(table)];
}

/// The grid of a table. Filled by Update_All; its cursor is moved by the user.
[[nodiscard]] Grid& Grid_Of(Table table);

/// The table whose grid is on show, if any.
[[nodiscard]] std::optional<Table> Active_Table();

/// Number of entries that the table has under the present point counts.
[[nodiscard]] int Entries_Of(Table table);

/// Byte that a grid row shows. Row 1 of the MAF limit shows the byte of row 2.
[[nodiscard]] int Shown_Byte(Table table, int row);

/// Byte that an edit of a grid row changes.
[[nodiscard]] int Edited_Byte(Table table, int row);

/// The chart that stands beside the grid now: Analog 2 has one for each of its two meanings.
[[nodiscard]] Chart_Id Chart_Beside(Table table);

/// Analog 2 is a curve of 17 points over the input voltage, not a limit over RPM.
[[nodiscard]] bool Analog2_Is_Curve();

/// MAF simulation is on.
[[nodiscard]] bool Maf_Simulation_On();

/// The MAF-simulation limit takes over the ignition RPM table.
[[nodiscard]] bool Maf_Limit_Active();

/// The boost output runs as a closed loop on the boost sensor.
[[nodiscard]] bool Boost_Closed_Loop();

/// Sensor number on the boost input; -1 is none.
[[nodiscard]] int Boost_Sensor();

/// Sets FuelRpmPoints, Res500, IgRpmPoints and An2Points from the image's flags.
void Update_Point_Counts();

/// Brings grids, charts and shown tabs to what they are before the start.
void Reset_Table_State();

}  // namespace kx
