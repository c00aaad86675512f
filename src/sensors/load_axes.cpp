#include "sensors/load_axes.h"

#include <algorithm>

#include "sensors/conversion.h"
#include "settings/failure.h"
#include "settings/numbers.h"

namespace kx {
namespace {

constexpr int counts_a_point = 8;
constexpr double last_count = 255;
constexpr std::string_view row_kind = "Tab";

struct Load_Axis {
  Axis_Def def;
  Table_Columns columns;
};

Load_Axis Built_In_Axis() {
  Load_Axis axis{{"value", std::string(row_kind)}, {}};
  for (std::size_t i = 1; i < axis.columns.size(); ++i) axis.columns[i] = static_cast<double>(i);
  return axis;
}

/// Axis made from a definition; the built-in one when that has no values.
Load_Axis Axis_From(const Sensor& sensor, const Table_Columns& table) {
  if (sensor.kind == "Tab") return {{sensor.unit, sensor.kind}, table};
  if (sensor.kind != "Linear") return Built_In_Axis();
  Load_Axis axis{{sensor.unit, std::string(row_kind)}, {table[0]}};
  for (int i = 1; i <= table_points; ++i) {
    double raw = counts_a_point * (i - 1);
    axis.columns[static_cast<std::size_t>(i)] = Forward_Value(sensor, table, raw).value_or(0);
  }
  return axis;
}

Load_Axis Sensor_Axis(std::size_t row) {
  return row < Sens_Def.size() ? Axis_From(Sens_Def[row], Sens_Tab[row]) : Built_In_Axis();
}

/// A unit as one word, so that a line has it before its first blank.
std::string One_Word(const std::string& unit) {
  constexpr const char* no_break = "\u00A0";
  std::string word;
  for (const char c : unit) word += c == ' ' ? std::string(no_break) : std::string(1, c);
  return word.empty() ? no_break : word;
}

std::vector<std::string_view> Words_Of(std::string_view line) {
  std::vector<std::string_view> words;
  for (std::size_t first = 0; (first = line.find_first_not_of(" \t", first)) != std::string_view::npos;) {
    const std::size_t end = std::min(line.find_first_of(" \t", first), line.size());
    words.push_back(line.substr(first, end - first));
    first = end;
  }
  return words;
}

Load_Axis Parse_Axis(std::string_view line, std::size_t row) {
  Load_Axis axis = Sensor_Axis(row);
  const auto words = Words_Of(line);
  if (!words.empty()) axis.def.unit = words[0];
  for (std::size_t i = 1; i < words.size() && i <= axis.columns.size(); ++i) {
    axis.columns[i - 1] = Val_Any(words[i]);
  }
  axis.columns[0] = Whole_Decimals(axis.columns[0]);
  return axis;
}

/// Break points of a "map_lst" line, behind its unit and decimals.
int Point_Count(std::string_view line) { return std::max(static_cast<int>(Words_Of(line).size()) - 2, 0); }

std::string Count_Fault(int points) {
  const char* rest =
      points < table_points ? "those that are missing are its sensor's." : "the rest is left out.";
  return "this load axis has " + std::to_string(points) + " points instead of " +
         std::to_string(table_points) + "; " + rest;
}

void Add_Row(const Load_Axis& axis) {
  MAP_def.push_back(axis.def);
  MAP_tab.push_back(axis.columns);
}

std::size_t Checked_Row(int row) {
  const auto index = static_cast<std::size_t>(row == -1 ? 0 : row);
  if (index >= MAP_def.size() || index >= MAP_tab.size()) Fail_Subscript();
  return index;
}

}  // namespace

std::vector<Axis_Def> MAP_def{Built_In_Axis().def};
std::vector<Table_Columns> MAP_tab{Built_In_Axis().columns};

std::vector<Ini_Fault> Read_Load_Axes(const std::vector<Ini_Value>& lines) {
  std::vector<Ini_Fault> faults;
  Reset_Load_Axes_State();
  for (const Ini_Value& line : lines) {
    if (line.text.empty()) break;
    const int points = Point_Count(line.text);
    if (points != table_points) faults.push_back({line.line, Count_Fault(points)});
    Add_Row(Parse_Axis(line.text, MAP_tab.size()));
  }
  while (MAP_tab.size() < Sens_Def.size()) Add_Row(Sensor_Axis(MAP_tab.size()));
  return faults;
}

std::string Axis_Line(const Sensor& sensor, const Table_Columns& table) {
  const Load_Axis axis = Axis_From(sensor, table);
  const std::string mask = Decimals_Mask(static_cast<int>(axis.columns[0]));
  std::string line = One_Word(axis.def.unit);
  line += " " + Number_Text(axis.columns[0]);
  for (int i = 1; i <= table_points; ++i)
    line += " " + Format(axis.columns[static_cast<std::size_t>(i)], mask);
  return line;
}

bool Is_Computed_Axis(std::string_view line, const Sensor& sensor, const Table_Columns& table) {
  if (line == Axis_Line(sensor, table)) return true;
  if (sensor.kind != "Linear" || sensor.maximum < last_count) return false;
  Sensor beyond = sensor;
  beyond.maximum = last_count + 1;
  return line == Axis_Line(beyond, table);
}

std::string Load_Axis_Unit(int row) { return MAP_def[Checked_Row(row)].unit; }

std::string Load_Axis_Format(int row) {
  return Decimals_Mask(static_cast<int>(MAP_tab[Checked_Row(row)][0]));
}

double Load_Axis_Value(int row, int point) {
  if (point < 1 || point > table_points) Fail_Subscript();
  return MAP_tab[Checked_Row(row)][static_cast<std::size_t>(point)];
}

std::string Load_Axis_Text(int row, int point) {
  return Format(Load_Axis_Value(row, point), Load_Axis_Format(row));
}

void Reset_Load_Axes_State() {
  MAP_def = {Built_In_Axis().def};
  MAP_tab = {Built_In_Axis().columns};
}

}  // namespace kx
