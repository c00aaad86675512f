#include "workspace/map_data.h"

#include "settings/numbers.h"
#include "settings/text_encoding.h"
#include "workspace/tables.h"

namespace kx {

Map_Table Map_Data;

namespace {

constexpr int rpm_axis_column = 0;
constexpr int rpm_value_column = 1;
constexpr int load_axis_column = 1;
constexpr int load_value_column = 2;

struct Map_Tables {
  Table load;
  Table rpm;
};

/// In the order of Map.
constexpr std::array<Map_Tables, map_captions.size()> map_tables{{
    {Table::ignition_load, Table::ignition_rpm},
    {Table::pwm_load, Table::pwm_rpm},
    {Table::fuel_load, Table::fuel_rpm},
}};

const Map_Tables& Tables_Of(Map map) { return map_tables[static_cast<std::size_t>(map)]; }

std::string In_Brackets(const std::string& unit) { return "[" + unit + "]"; }

}  // namespace

void Calculate_Ignition3dmap() { Calculate_3dmap(Map::ignition); }

void Calculate_PWM3dmap() { Calculate_3dmap(Map::pwm); }

void Calculate_Fuel3dmap() { Calculate_3dmap(Map::fuel); }

void Calculate_3dmap(Map map) {
  Map_Data = Map_Of(Grid_Of(Tables_Of(map).load), Grid_Of(Tables_Of(map).rpm));
}

Map_Table Map_Of(const Grid& load, const Grid& rpm) {
  Map_Table table(static_cast<std::size_t>(rpm.Rows()));
  for (int c = 0; c < rpm.Rows(); ++c) {
    auto& line = table[static_cast<std::size_t>(c)];
    line.push_back(c == 0 ? "" : rpm.Text(c, rpm_axis_column) + ">");
    const double percent = c == 0 ? 0 : Val_Any(rpm.Text(c, rpm_value_column));
    for (int r = 1; r < load.Rows(); ++r) {
      line.push_back(c == 0 ? "<" + load.Text(r, load_axis_column)
                            : Number_Text(Val_Any(load.Text(r, load_value_column)) * percent / 100));
    }
  }
  return table;
}

Map_Titles Titles_Of(Map map) {
  const Map_Tables& tables = Tables_Of(map);
  Map_Titles titles{"", "RPM", "Load " + In_Brackets(Grid_Of(tables.load).Text(0, load_axis_column)), ""};
  const std::string& pwm_unit = Grid_Of(Table::pwm_rpm).Text(0, rpm_value_column);
  switch (map) {
    case Map::ignition:
      titles.chart = "Ignition map";
      titles.value = "Ignition [deg]";
      break;
    case Map::fuel:
      titles.chart = "Fuel map";
      titles.value = "Fuel [ms]";
      break;
    case Map::pwm:
      titles.chart = Boost_Closed_Loop() ? "Boost map" : "PWM map";
      titles.value = (Boost_Closed_Loop() ? "Boost " : "PWM ") + In_Brackets(pwm_unit);
      break;
  }
  return titles;
}

Map_Points Points_Of(const Map_Table& table) {
  Map_Points points;
  if (table.empty()) return points;
  for (std::size_t r = 1; r < table[0].size(); ++r) points.load.push_back(table[0][r].substr(1));
  for (std::size_t c = 1; c < table.size(); ++c) {
    const auto& line = table[c];
    points.rpm.push_back(line[0].substr(0, line[0].size() - 1));
    for (std::size_t r = 1; r < line.size(); ++r) {
      points.values.push_back(Val_Any(line[r]));
      points.texts.push_back(line[r]);
    }
  }
  return points;
}

std::string Map_Text(const Map_Table& table) {
  std::string text;
  for (const auto& line : table) {
    for (std::size_t i = 0; i < line.size(); ++i) text += (i == 0 ? "" : "\t") + line[i];
    text += Crlf();
  }
  return text;
}

void Reset_Map_Data() { Map_Data.clear(); }

}  // namespace kx
