#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

/// The tune sensors, as the ini file's "Sens_Def" lines define them. A sensor number is a row of both tables;
/// row 0 is built in ("<not used>"), -1 is none. Number functions throw Failure "Subscript out of range" for
/// a number that has no row.
namespace kx {

constexpr int table_points = 33;

/// Column 0: decimals. Columns 1 to 33: values at raw 0, 8, 16 up to 256.
using Table_Columns = std::array<double, table_points + 1>;

/// What a sensor is, without the values of a "Tab" sensor.
struct Sensor {
  std::string name;
  std::string unit;
  std::string kind;    ///< "Linear" or "Tab"; any other kind converts nothing
  double gain = 0;     ///< units a count; "Linear" only, as the next three
  double offset = 0;   ///< units at raw 0
  double minimum = 0;  ///< least raw value
  double maximum = 0;  ///< greatest raw value
  std::string input_unit;

  friend bool operator==(const Sensor&, const Sensor&) = default;
};

extern std::vector<Sensor> Sens_Def;
extern std::vector<Table_Columns> Sens_Tab;

/// Sensor chosen for analog input 1 to 4; entry 0 is -1. A choice stays when the file loses its sensor.
/// Written by Init_ini_file and the sensor editor.
extern std::array<int, 5> Sensor_Selection;

/// Sensor on analog input @p input, that is list index + 1; 0 (nothing chosen in the list) gives -1. While
/// the chosen sensor is not in the list it is 0, the built-in row.
[[nodiscard]] int Sensor_On_Input(int input);

/// One definition line, taken apart.
struct Sensor_Row {
  Sensor sensor;
  Table_Columns columns{};
  bool known = false;  ///< false: of a line of unknown kind only name and kind are taken
};
[[nodiscard]] Sensor_Row Row_Of_Line(std::string_view line);

/// Adds a row from a definition line. False for a line of unknown kind.
bool Add_Sensor(std::string_view line);

/// Empty for -1.
[[nodiscard]] std::string Sensor_Name(int sensor);

/// Empty for -1.
[[nodiscard]] std::string Sensor_Unit(int sensor);

/// Mask of the sensor's decimals for Format; "0" for -1.
[[nodiscard]] std::string Sensor_Format(int sensor);

/// Decimals of a definition, 0 to 4, from a number that a file holds.
[[nodiscard]] double Whole_Decimals(double number);

/// Back to row 0 alone.
void Clear_Sensors();

/// The same, with no sensor on any input.
void Reset_Sensor_State();

}  // namespace kx
