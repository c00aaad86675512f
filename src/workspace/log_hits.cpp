#include "workspace/log_hits.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include "logging/chart_view.h"
#include "logging/log_settings.h"
#include "logging/log_state.h"
#include "sensors/load_axes.h"
#include "settings/numbers.h"
#include "settings/text_encoding.h"
#include "workspace/table_axes.h"

namespace kx {
namespace {

constexpr int most_decimals = 2;  ///< of a cell
constexpr int tip_decimals = 2;
constexpr int file_decimals = 4;

/// With one entry for all RPMs the map would be one column: it takes the distances of the box's RPM axis.
Axis_Spacing Rpm_Axis(Table load_table) {
  Axis_Spacing axis = Table_Axis_Of(Rpm_Table_Beside(load_table)).value().spacing;
  if (axis.entries == 1) axis.entries = map::ignition_rpm.count;
  return axis;
}

Load_Source Source_Of(const Hit_Request& request) {
  return request.input == own_load ? Load_Source_Of(request.table)
                                   : Load_Source{Analog_Input(request.input), {}};
}

/// Row of the load axes for the sensor on the load's first input.
int Axis_Row(const Hit_Request& request) {
  const int input =
      request.input == own_load ? Get_Field(Row_Of(request.table).load_input.value()) : request.input;
  return Sensor_On_Input(input + 1);
}

std::string Signal_Name(int row) { return From_Windows_1252(Signal_Row(row).custom_name); }

std::string Name_Of(Log_Signal signal) {
  const int slot = Slot_Of(signal);
  return slot > signal_rows
             ? std::string(Default_Signal_Name(Slot_Of(signal, Log_Layout::current) - 1, Log_Layout::current))
             : Signal_Name(slot - 1);
}

std::string Name_Of(const Load_Source& source) {
  return Name_Of(source.input) + (source.subtracted ? " less " + Name_Of(*source.subtracted) : "");
}

Hit_Choice Choice_Of(const Hit_Request& request) {
  Hit_Choice choice;
  choice.source = Source_Of(request);
  choice.load = {Entries_Of(request.table), counts_a_load_entry};
  choice.rpm = Rpm_Axis(request.table);
  choice.value_slot = request.signal_row + 1;
  choice.first_row = request.stretch_only ? Log_Chart_First : 1;
  choice.last_row = request.stretch_only ? std::min(Log_Chart_Last, Rows_On_Hand()) : Rows_On_Hand();
  choice.high_load = request.high_load;
  for (std::size_t i = 0; i < choice.ranges.size(); ++i) {
    const Hit_Limit& limit = request.limits.at(i);
    if (limit.signal_row == no_signal) continue;
    Signal_Range& range = choice.ranges.at(i);
    range.slot = limit.signal_row + 1;
    range.low = limit.from.value_or(range.low);
    range.high = limit.to.value_or(range.high);
  }
  return choice;
}

void Name_Entries(Log_Hits& hits, int axis_row) {
  for (int entry = 1; entry <= hits.map.load.entries; ++entry) {
    hits.load.push_back(Load_Axis_Text(axis_row, entry));
    hits.load_values.push_back(Load_Axis_Value(axis_row, entry));
  }
  for (int entry = 1; entry <= hits.map.rpm.entries; ++entry) {
    hits.rpm.push_back(Format((entry - 1) * hits.map.rpm.step, "000"));
  }
}

/// Decimals with which the largest number on show has three digits or more, at most two.
int Decimals_Of(const Hit_Map& map, Hit_Measure measure) {
  if (measure == Hit_Measure::rows) return 0;
  double most = 0;
  for (const Hit_Cell& cell : map.cells) {
    most = std::max(most, std::fabs(Measure_Of(cell, measure).value_or(0)));
  }
  return most >= 100 ? 0 : most >= 10 ? 1 : most_decimals;
}

std::string Rounded(double value, int decimals) { return Format(value, Decimals_Mask(decimals)); }

std::string With_Unit(const std::string& text, const std::string& unit) {
  return unit.empty() ? text : text + " " + unit;
}

/// "2750 to 3250 RPM"; the first cell has no lower end and the last no upper one.
std::string Range_Text(int entry, int entries, const std::string& from, const std::string& to,
                       const std::string& unit) {
  if (entry == 1) return With_Unit("up to " + to, unit);
  if (entry == entries) return With_Unit("from " + from, unit) + " up";
  return With_Unit(from + " to " + to, unit);
}

std::string Load_Range(const Log_Hits& hits, int entry) {
  const auto middle = [&](int below) {  // between entry @p below and the next
    const auto at = static_cast<std::size_t>(std::clamp(below, 1, hits.map.load.entries - 1));
    return Rounded((hits.load_values.at(at - 1) + hits.load_values.at(at)) / 2, tip_decimals);
  };
  return Range_Text(entry, hits.map.load.entries, middle(entry - 1), middle(entry), hits.load_unit);
}

std::string Rpm_Range(const Log_Hits& hits, int entry) {
  const auto rpm = [&](double place) { return Rounded(place * hits.map.rpm.step, 0); };
  return Range_Text(entry, hits.map.rpm.entries, rpm(entry - 1.5), rpm(entry - 0.5), "RPM");
}

std::string Place_Text(const Log_Hits& hits, int load_entry, int rpm_entry) {
  return hits.rpm.at(static_cast<std::size_t>(rpm_entry - 1)) + " RPM and " +
         With_Unit(hits.load.at(static_cast<std::size_t>(load_entry - 1)), hits.load_unit);
}

std::string Rows_Text(int rows) { return std::to_string(rows) + (rows == 1 ? " row" : " rows"); }

std::string Figures_Text(const Log_Hits& hits, const Hit_Cell& cell) {
  const auto figure = [&](const char* name, double value) {
    return std::string("\n") + name + " " + With_Unit(Rounded(value, tip_decimals), hits.signal_unit);
  };
  return Rows_Text(cell.rows) + ", " + Rounded(cell.rows * log_row_seconds, tip_decimals) + " s\n" +
         hits.signal_name + ":" + figure("mean", cell.mean) + figure("smallest", cell.smallest) +
         figure("largest", cell.largest);
}

}  // namespace

std::string Load_Name(Table table, int input) {
  Hit_Request request;
  request.table = table;
  request.input = input;
  return Name_Of(Source_Of(request));
}

std::string Signal_Range_Text(int row) {
  const auto column =
      std::as_const(LogArray).Column(row + 1).subspan(1, static_cast<std::size_t>(Rows_On_Hand()));
  double low = std::numeric_limits<double>::infinity();
  double high = -low;
  for (const double value : column) {
    low = value < low ? value : low;
    high = value > high ? value : high;
  }
  const std::string unit = From_Windows_1252(Signal_Unit(row));
  if (low > high) return "this log has no values" + (unit.empty() ? "" : " [" + unit + "]");
  return With_Unit(Rounded(low, tip_decimals) + " to " + Rounded(high, tip_decimals), unit) + " in this log";
}

int First_Hit_Signal() {
  const int rpm_row = Slot_Of(Log_Signal::RPM) - 1;
  for (const int row : Ticked_Rows()) {
    if (row != rpm_row) return row;
  }
  return Slot_Of(Log_Signal::TOT_Fuel) - 1;
}

Log_Hits Hits_Of(const Hit_Request& request) {
  const Hit_Choice choice = Choice_Of(request);
  Log_Hits hits;
  hits.map = Hit_Map_Of_Log(LogArray, choice);
  hits.measure = request.measure;
  hits.decimals = Decimals_Of(hits.map, hits.measure);
  hits.load_unit = Load_Axis_Unit(Axis_Row(request));
  hits.load_name = Name_Of(choice.source);
  hits.signal_name = Signal_Name(request.signal_row);
  hits.signal_unit = From_Windows_1252(Signal_Unit(request.signal_row));
  hits.rows_on_hand = Rows_On_Hand();
  Name_Entries(hits, Axis_Row(request));
  return hits;
}

std::string Cell_Text(const Log_Hits& hits, int load_entry, int rpm_entry) {
  const auto value = Measure_Of(hits.map.At(load_entry, rpm_entry), hits.measure);
  return value ? Scale_Text(hits, *value) : "";
}

std::string Cell_Tip(const Log_Hits& hits, int load_entry, int rpm_entry) {
  const Hit_Cell& cell = hits.map.At(load_entry, rpm_entry);
  return Rpm_Range(hits, rpm_entry) + "\n" + hits.load_name + " " + Load_Range(hits, load_entry) + "\n" +
         (cell.rows == 0 ? "no row" : Figures_Text(hits, cell));
}

Heat_Scale Scale_Of(const Log_Hits& hits) {
  Heat_Scale scale{0, 1, hits.measure == Hit_Measure::rows};
  bool any = false;
  for (const Hit_Cell& cell : hits.map.cells) {
    const auto value = Measure_Of(cell, hits.measure);
    if (!value) continue;
    scale.low = any ? std::min(scale.low, *value) : *value;
    scale.high = any ? std::max(scale.high, *value) : *value;
    any = true;
  }
  if (!any) scale.low = scale.high = 1;
  return scale;
}

std::string Scale_Text(const Log_Hits& hits, double value) { return Rounded(value, hits.decimals); }

std::string Summary_Of(const Log_Hits& hits) {
  if (hits.rows_on_hand == 0) return "No log on screen. Open one, or start one with F9.";
  const std::string of = " of " + Rows_Text(hits.rows_on_hand);
  if (hits.map.rows == 0) {
    return "None" + of + " passes the filter and has RPM, " + hits.load_name + " and " + hits.signal_name +
           ".";
  }
  const auto most = std::max_element(hits.map.cells.begin(), hits.map.cells.end(),
                                     [](const Hit_Cell& a, const Hit_Cell& b) { return a.rows < b.rows; });
  const int at = static_cast<int>(most - hits.map.cells.begin());
  const auto used = std::count_if(hits.map.cells.begin(), hits.map.cells.end(),
                                  [](const Hit_Cell& cell) { return cell.rows > 0; });
  return std::to_string(hits.map.rows) + of + " in " + std::to_string(used) +
         (used == 1 ? " cell" : " cells") + ". Most, " + std::to_string(most->rows) + ", at " +
         Place_Text(hits, at / hits.map.rpm.entries + 1, at % hits.map.rpm.entries + 1) + ".";
}

std::string Title_Of(const Log_Hits& hits) {
  std::string measure(hit_measure_names.at(static_cast<std::size_t>(hits.measure)));
  if (hits.measure == Hit_Measure::rows) return measure;
  return measure + " of " + hits.signal_name + " [" + hits.signal_unit + "]";
}

std::string Hits_File_Text(const Log_Hits& hits) {
  std::string text = Title_Of(hits) + ", " + hits.load_name + " [" + hits.load_unit + "] by RPM";
  for (const std::string& rpm : hits.rpm) text += "\t" + rpm;
  text += Crlf();
  for (int load = 1; load <= hits.map.load.entries; ++load) {
    text += hits.load.at(static_cast<std::size_t>(load - 1));
    for (int rpm = 1; rpm <= hits.map.rpm.entries; ++rpm) {
      const auto value = Measure_Of(hits.map.At(load, rpm), hits.measure);
      text += "\t" + (value ? Number_Text(Round_To(*value, file_decimals)) : "");
    }
    text += Crlf();
  }
  return To_Windows_1252(text);
}

}  // namespace kx
