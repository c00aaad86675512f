#include "sensors/sensor_store.h"

#include <algorithm>

#include "settings/failure.h"
#include "settings/field_text.h"
#include "settings/numbers.h"
#include "settings/text_encoding.h"

namespace kx {
namespace {

constexpr int first_table_field = 3;

Sensor Unused_Sensor() {
  Sensor sensor;
  sensor.name = "<not used>";
  sensor.unit = "value";
  return sensor;
}

Table_Columns Unused_Columns() {
  Table_Columns columns{};
  for (std::size_t i = 1; i < columns.size(); ++i) columns[i] = static_cast<double>(i);
  return columns;
}

double Number_Field(std::string_view line, int n) { return Val_Any(Extract_Data(line, n)); }

void Take_Linear(std::string_view line, Sensor& sensor, Table_Columns& columns) {
  sensor.gain = Number_Field(line, 3);
  sensor.offset = Number_Field(line, 4);
  sensor.minimum = Number_Field(line, 5);
  sensor.maximum = Number_Field(line, 6);
  sensor.unit = Extract_Data(line, 7);
  columns[0] = Whole_Decimals(Number_Field(line, 8));
  sensor.input_unit = Extract_Data(line, 9);
}

void Take_Table(std::string_view line, Sensor& sensor, Table_Columns& columns) {
  int field = first_table_field;
  for (std::size_t i = 1; i < columns.size(); ++i) columns[i] = Number_Field(line, field++);
  sensor.unit = Extract_Data(line, 36);
  columns[0] = Whole_Decimals(Number_Field(line, 37));
  sensor.input_unit = Extract_Data(line, 38);
}

std::size_t Checked_Row(int sensor) {
  if (sensor < 0 || sensor >= static_cast<int>(Sens_Def.size())) Fail_Subscript();
  return static_cast<std::size_t>(sensor);
}

}  // namespace

std::vector<Sensor> Sens_Def{Unused_Sensor()};
std::vector<Table_Columns> Sens_Tab{Unused_Columns()};
std::array<int, 5> Sensor_Selection{-1, 0, 0, 0, 0};

int Sensor_On_Input(int input) {
  if (input < 0 || input >= static_cast<int>(Sensor_Selection.size())) Fail_Subscript();
  const int chosen = Sensor_Selection[static_cast<std::size_t>(input)];
  return chosen < static_cast<int>(Sens_Def.size()) ? chosen : 0;
}

Sensor_Row Row_Of_Line(std::string_view line) {
  const std::string ended = std::string(line) + Crlf();
  Sensor_Row row;
  row.sensor.name = Extract_Data(ended, 1);
  row.sensor.kind = Extract_Data(ended, 2);
  const bool linear = row.sensor.kind == "Linear";
  const bool table = row.sensor.kind == "Tab";
  if (linear) Take_Linear(ended, row.sensor, row.columns);
  if (table) Take_Table(ended, row.sensor, row.columns);
  row.known = linear || table;
  return row;
}

bool Add_Sensor(std::string_view line) {
  const Sensor_Row row = Row_Of_Line(line);
  Sens_Def.push_back(row.sensor);
  Sens_Tab.push_back(row.columns);
  return row.known;
}

std::string Sensor_Name(int sensor) { return sensor == -1 ? "" : Sens_Def[Checked_Row(sensor)].name; }

std::string Sensor_Unit(int sensor) { return sensor == -1 ? "" : Sens_Def[Checked_Row(sensor)].unit; }

std::string Sensor_Format(int sensor) {
  return Decimals_Mask(sensor == -1 ? 0 : static_cast<int>(Sens_Tab[Checked_Row(sensor)][0]));
}

double Whole_Decimals(double number) { return std::clamp(Round_Whole(number), 0.0, 4.0); }

void Clear_Sensors() {
  Sens_Def = {Unused_Sensor()};
  Sens_Tab = {Unused_Columns()};
}

void Reset_Sensor_State() {
  Clear_Sensors();
  Sensor_Selection = {-1, 0, 0, 0, 0};
}

}  // namespace kx
