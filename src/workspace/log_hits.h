#pragma once

#include <array>
#include <optional>
#include <string>
#include <vector>

#include "logging/hit_map.h"
#include "workspace/heat_scale.h"
#include "workspace/tables.h"

/// The hit map of the log on screen over the axes of the tune, with its texts: what KX_Hit_Map shows and
/// exports. All texts are UTF-8.
namespace kx {

/// The load tables, in the order of their tabs: each with its RPM table makes one hit map.
inline constexpr std::array hit_tables{Table::ignition_load, Table::fuel_load, Table::pwm_load};
inline constexpr std::array<std::string_view, hit_tables.size()> hit_table_names{"Ignition", "Fuel", "PWM"};

/// In the order of Hit_Measure.
inline constexpr std::array<std::string_view, 4> hit_measure_names{"Rows", "Mean", "Smallest", "Largest"};

inline constexpr int own_load = -1;   ///< the load is what the table's own load is
inline constexpr int no_signal = -1;  ///< no signal of the setup rows

/// A range asked of a signal; an end without a number does not limit.
struct Hit_Limit {
  int signal_row = no_signal;  ///< row of the setup, 0 to 39
  std::optional<double> from;  ///< in the signal's unit, as the next
  std::optional<double> to;
};

/// What the user chose in the form.
struct Hit_Request {
  Table table = Table::ignition_load;
  int input = own_load;  ///< analog input 0 to 3 in place of the table's load
  int signal_row = 0;    ///< row of the setup, 0 to 39
  Hit_Measure measure = Hit_Measure::rows;
  bool high_load = false;     ///< only rows of high load, as the fuel filter has it
  bool stretch_only = false;  ///< only the stretch that the chart shows
  std::array<Hit_Limit, hit_range_count> limits;
};

/// A hit map with what stands around it.
struct Log_Hits {
  Hit_Map map;
  Hit_Measure measure = Hit_Measure::rows;
  int decimals = 0;               ///< of what a cell shows
  std::vector<std::string> load;  ///< heading of each load entry
  std::vector<std::string> rpm;   ///< of each RPM entry
  std::string load_unit;
  std::string load_name;    ///< the inputs that make the load
  std::string signal_name;  ///< without its unit
  std::string signal_unit;
  std::vector<double> load_values;  ///< of each load entry, in load_unit
  int rows_on_hand = 0;             ///< rows of the log on screen
};

/// The map of the log on screen as the tune has the axes now.
[[nodiscard]] Log_Hits Hits_Of(const Hit_Request& request);

inline constexpr int analog_inputs = 4;

/// Names of the inputs that make the load of @p table, or of analog input @p input, 0 to 3.
[[nodiscard]] std::string Load_Name(Table table, int input);

/// "0.10 to 3.20 V in this log" of a signal, row 0 to 39; says so when the log has none of it.
[[nodiscard]] std::string Signal_Range_Text(int row);

/// The signal that a new map begins with: the first ticked one that is not RPM, else "TOT Fuel".
[[nodiscard]] int First_Hit_Signal();

/// Entries count from 1. Text of a cell, empty without rows.
[[nodiscard]] std::string Cell_Text(const Log_Hits& hits, int load_entry, int rpm_entry);

/// All figures of a cell and the ranges of RPM and load that it covers.
[[nodiscard]] std::string Cell_Tip(const Log_Hits& hits, int load_entry, int rpm_entry);

/// Colours of the measure on show, around all cells with rows; rows count on a logarithmic scale, since an
/// engine idles a hundred times as long as it pulls.
[[nodiscard]] Heat_Scale Scale_Of(const Log_Hits& hits);

/// Text of a place on that scale, as the cells have it.
[[nodiscard]] std::string Scale_Text(const Log_Hits& hits, double value);

/// One line: how many rows are in the map and where most of them are, or why there are none.
[[nodiscard]] std::string Summary_Of(const Log_Hits& hits);

/// "Mean of TOT Fuel [ms]": what the cells show.
[[nodiscard]] std::string Title_Of(const Log_Hits& hits);

/// The measure on show as the bytes of a text file: headings first, a line for each load entry, fields parted
/// by TAB, lines ended by CR LF; a cell without rows is empty.
[[nodiscard]] std::string Hits_File_Text(const Log_Hits& hits);

}  // namespace kx
