#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// The log sensors: how a logged byte becomes a value. They travel in each log file, so names and units here
/// are the file's own bytes (Windows-1252).
namespace kx {

constexpr int log_sensor_limit = 51;

/// One sensor, its columns as a definition line has them: name, kind, numbers, unit, decimals.
struct Log_Sensor {
  std::string name;
  std::string kind;  ///< "Linear", "Linear2c", "Tab"; "Status1", "Status2" and others convert nothing
  std::vector<double> numbers;  ///< gain, offset, minimum, maximum; of a "Tab" the values at raw 0, 8 to 256
  std::string unit;
  std::string decimals;

  /// Units a count, and units at raw 0; 0 for a "Tab".
  [[nodiscard]] double Gain() const;
  [[nodiscard]] double Offset() const;

  friend bool operator==(const Log_Sensor&, const Log_Sensor&) = default;
};

/// The sensors by number, from 0; -1 is none. Written by Read_Log_Sens_Def, Load_Default_Log_Sens_Def and the
/// import of the default sensors.
extern std::vector<Log_Sensor> Log_Sens_Def_Tab;

/// Sensor @p number; nothing for -1 and for a number that the table does not have.
[[nodiscard]] const Log_Sensor* Find_Log_Sensor(int number);

/// Value of a logged number, 0 to 255, in the sensor's unit; a "Tab" is rounded to 2 decimals. Nothing for a
/// kind that converts nothing.
[[nodiscard]] std::optional<double> Log_Sensor_Value(const Log_Sensor& sensor, double raw);

/// The logged number that reads @p value: the inverse of Log_Sensor_Value, of several the smallest; from a
/// "Tab" the one whose value is nearest. Nothing for a kind that converts nothing and for a gain of 0.
[[nodiscard]] std::optional<double> Raw_Of_Log_Value(const Log_Sensor& sensor, double value);

/// Value of the RPM field of a row, which only a "Linear" sensor converts.
[[nodiscard]] std::optional<double> Rpm_Sensor_Value(const Log_Sensor& sensor, double field);

/// The sensors of a block of "Log_Sens_Def" lines, with or without an index, at most 51; the first line
/// without a name ends the list. With a 52nd line a box says so and the first 51 stay.
[[nodiscard]] std::vector<Log_Sensor> Parse_Log_Sensors(std::string_view text);

/// The section "[log_sens_def]" of a log file for @p sensors.
[[nodiscard]] std::string Print_Log_Sensors(const std::vector<Log_Sensor>& sensors);

/// The built-in block, "[log_sensor_def]" to "[end log_sensor_def]", with a further field behind each line.
[[nodiscard]] std::string Default_Log_Sensor_Block();

/// Adds those of the built-in sensors to the table whose names it does not have, as far as there is room.
void Import_Default_Log_Sensors();

/// No sensor.
void Reset_Log_Sensors();

}  // namespace kx
