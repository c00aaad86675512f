#pragma once

#include <array>
#include <optional>
#include <string_view>

#include "settings/image.h"
#include "workspace/charts.h"
#include "workspace/grid.h"
#include "workspace/shown_tabs.h"
#include "workspace/table_limits.h"

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

/// Numbers of live entries, decided by flags of @p image.
[[nodiscard]] int IgRpmPoints(const Byte_Image& image = CardByte);    ///< 21, or 1 under the MAF limit
[[nodiscard]] int FuelRpmPoints(const Byte_Image& image = CardByte);  ///< 21 at 500 RPM, 41 at 250 RPM
[[nodiscard]] int An1Points(const Byte_Image& image = CardByte);      ///< 21
[[nodiscard]] int An2Points(const Byte_Image& image = CardByte);      ///< 21 as limit, 17 as curve

/// A number of entries that no flag changes.
template <int count>
[[nodiscard]] constexpr int Always(const Byte_Image&) {
  return count;
}

/// One editable table: where it is shown, where its bytes lie and what belongs to it. What its bytes mean is
/// told by table_meaning.h.
struct Table_Row {
  Table table;
  std::string_view grid;      ///< name of its grid control
  int tab;                    ///< tab of sstab_Main
  int Shown_Tabs::*sub_tabs;  ///< the tab control inside that tab
  int sub_tab;                ///< its tab
  int first_byte;             ///< byte of grid row 1
  int (*entries)(const Byte_Image& image);
  Axis axis;
  Chart_Id chart;
  void (*maxmin)();                            ///< prepares minText and maxText for it
  std::optional<map::Field> load_input = {};   ///< input of a load axis
  std::optional<map::Field> load_second = {};  ///< what the box subtracts from it; 0 is nothing
  std::optional<Chart_Id> curve_chart = {};    ///< in place of chart while the table is a curve
  int text_column = 1;                         ///< grid column with the values; the axis stands before it
  bool captures_typing = false;                ///< typing into a cell can be undone
  int first_row = 1;                           ///< first row that may be edited
};

inline constexpr std::array table_rows{
    Table_Row{.table = Table::ignition_load,
              .grid = "Ig_MAP_Grid",
              .tab = main_tab::ignition,
              .sub_tabs = &Shown_Tabs::SSTab_Ignition,
              .sub_tab = 0,
              .first_byte = map::ignition_load.first,
              .entries = Always<map::ignition_load.count>,
              .axis = Axis::load,
              .chart = Chart_Id::IgMapChart,
              .maxmin = Get_igmap_maxmin,
              .load_input = map::ignition_load_input,
              .load_second = map::ignition_load_second,
              .text_column = 2,
              .captures_typing = true},
    Table_Row{.table = Table::ignition_rpm,
              .grid = "Ig_RPM_Grid",
              .tab = main_tab::ignition,
              .sub_tabs = &Shown_Tabs::SSTab_Ignition,
              .sub_tab = 1,
              .first_byte = map::ignition_rpm.first,
              .entries = IgRpmPoints,
              .axis = Axis::rpm,
              .chart = Chart_Id::IgRPMChart,
              .maxmin = Get_igrpm_maxmin,
              .captures_typing = true},
    Table_Row{.table = Table::fuel_load,
              .grid = "Fuel_MAP_Grid",
              .tab = main_tab::fuel,
              .sub_tabs = &Shown_Tabs::SSTab_Fuel,
              .sub_tab = 0,
              .first_byte = map::fuel_load.first,
              .entries = Always<map::fuel_load.count>,
              .axis = Axis::load,
              .chart = Chart_Id::FuelMapChart,
              .maxmin = Get_fuelmap_maxmin,
              .load_input = map::fuel_load_input,
              .load_second = map::fuel_load_second,
              .text_column = 2,
              .captures_typing = true},
    Table_Row{.table = Table::fuel_rpm,
              .grid = "Fuel_RPM_Grid",
              .tab = main_tab::fuel,
              .sub_tabs = &Shown_Tabs::SSTab_Fuel,
              .sub_tab = 1,
              .first_byte = map::fuel_rpm.first,
              .entries = FuelRpmPoints,
              .axis = Axis::fuel_rpm,
              .chart = Chart_Id::FuelRpmChart,
              .maxmin = Get_fuelrpm_maxmin,
              .captures_typing = true},
    Table_Row{.table = Table::analog1,
              .grid = "an1_out_grid",
              .tab = main_tab::analog,
              .sub_tabs = &Shown_Tabs::SSTab_Analog,
              .sub_tab = 0,
              .first_byte = map::analog1.first,
              .entries = An1Points,
              .axis = Axis::rpm,
              .chart = Chart_Id::an1_out_chart,
              .maxmin = Get_an_maxmin},
    Table_Row{.table = Table::analog2,
              .grid = "an2_out_grid",
              .tab = main_tab::analog,
              .sub_tabs = &Shown_Tabs::SSTab_Analog,
              .sub_tab = 1,
              .first_byte = map::analog2.first,
              .entries = An2Points,
              .axis = Axis::rpm_or_volts,
              .chart = Chart_Id::an2_out_limchart,
              .maxmin = Get_an_maxmin,
              .curve_chart = Chart_Id::an2_out_chart},
    Table_Row{.table = Table::maf_output,
              .grid = "MAFsim_out_grid",
              .tab = main_tab::analog,
              .sub_tabs = &Shown_Tabs::SSTab_Analog,
              .sub_tab = 2,
              .first_byte = map::maf_output.first,
              .entries = Always<map::maf_output.count>,
              .axis = Axis::rpm_times_map,
              .chart = Chart_Id::MAFSim_chart,
              .maxmin = Get_an_maxmin},
    // Row 1 shows the byte of row 2; its own byte is the ignition of all RPMs,
    // which a tuner who fills this grid must not change unseen. So editing
    // starts at row 2.
    Table_Row{.table = Table::maf_limit,
              .grid = "MAFSim_limit_grid",
              .tab = main_tab::analog,
              .sub_tabs = &Shown_Tabs::SSTab_Analog,
              .sub_tab = 3,
              .first_byte = map::maf_limit.first,
              .entries = Always<map::maf_limit.count>,
              .axis = Axis::rpm,
              .chart = Chart_Id::MAFSim_limit_chart,
              .maxmin = Get_an_maxmin,
              .first_row = 2},
    Table_Row{.table = Table::pwm_load,
              .grid = "PWM_MAP_Grid",
              .tab = main_tab::pwm,
              .sub_tabs = &Shown_Tabs::SSTab_PWM,
              .sub_tab = 0,
              .first_byte = map::pwm_load.first,
              .entries = Always<map::pwm_load.count>,
              .axis = Axis::load,
              .chart = Chart_Id::PwmMapChart,
              .maxmin = Get_pwm_maxmin,
              .load_input = map::pwm_load_input,
              .text_column = 2},
    Table_Row{.table = Table::pwm_rpm,
              .grid = "PWM_RPM_Grid",
              .tab = main_tab::pwm,
              .sub_tabs = &Shown_Tabs::SSTab_PWM,
              .sub_tab = 1,
              .first_byte = map::pwm_rpm.first,
              .entries = Always<map::pwm_rpm.count>,
              .axis = Axis::rpm,
              .chart = Chart_Id::PwmRpmChart,
              .maxmin = Get_pwm_maxmin},
};

[[nodiscard]] constexpr const Table_Row& Row_Of(Table table) {
  return table_rows[static_cast<std::size_t>(table)];
}

/// The grid of a table. Filled by Update_All; its cursor is moved by the user.
[[nodiscard]] Grid& Grid_Of(Table table);

/// The table whose grid is on show, if any.
[[nodiscard]] std::optional<Table> Active_Table();

/// Number of entries that the table has.
[[nodiscard]] int Entries_Of(Table table, const Byte_Image& image = CardByte);

/// Byte that a grid row shows. Row 1 of the MAF limit shows the byte of row 2.
[[nodiscard]] int Shown_Byte(Table table, int row);

/// Byte that an edit of a grid row changes.
[[nodiscard]] int Edited_Byte(Table table, int row);

/// The table's bytes mean what it shows: tables that lie over each other are never in use together. The model
/// preset may hide a table all the same.
[[nodiscard]] bool In_Use(Table table, const Byte_Image& image = CardByte);

/// The chart that stands beside the grid now: Analog 2 has one for each of its two meanings.
[[nodiscard]] Chart_Id Chart_Beside(Table table);

/// The fuel RPM table is at 500 RPM resolution. At 250 RPM it takes over the bytes of Analog 2.
[[nodiscard]] bool Res500(const Byte_Image& image = CardByte);

/// Analog 2 is a curve of 17 points over the input voltage, not a limit over
/// RPM.
[[nodiscard]] bool Analog2_Is_Curve(const Byte_Image& image = CardByte);

/// MAF simulation is on.
[[nodiscard]] bool Maf_Simulation_On(const Byte_Image& image = CardByte);

/// The MAF-simulation limit takes over the ignition RPM table.
[[nodiscard]] bool Maf_Limit_Active(const Byte_Image& image = CardByte);

/// The boost output runs as a closed loop on the boost sensor.
[[nodiscard]] bool Boost_Closed_Loop(const Byte_Image& image = CardByte);

/// Sensor number on the boost input; -1 is none.
[[nodiscard]] int Boost_Sensor(const Byte_Image& image = CardByte);

/// List indexes of an2_combo, the mode of the Analog 2 output.
namespace an2_mode {
constexpr int limit = 0;            ///< the table limits the output over RPM
constexpr int curve = 1;            ///< the table is the output over the input voltage
constexpr int limit_trim = 2;       ///< a limit that the PWM input trims
constexpr int boost_activated = 3;  ///< the table is not used
}  // namespace an2_mode

/// Brings grids, charts and shown tabs to what they are before the start.
void Reset_Table_State();

}  // namespace kx
