#include "sensors/log_sensors.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

#include "sensors/conversion.h"
#include "settings/message.h"
#include "settings/numbers.h"
#include "settings/section_text.h"
#include "settings/text_encoding.h"

namespace kx {
namespace {

constexpr std::string_view key = "Log_Sens_Def";
constexpr std::size_t linear_numbers = 4;
constexpr int decimals_of_tables = 2;
constexpr double byte_values = 256;

/// How many numbers stand between kind and unit; a kind that nobody knows has as many as the one before.
std::size_t Numbers_Of(std::string_view kind, std::size_t before) {
  if (kind == "Tab") return table_points;
  const bool known = kind == "Linear" || kind == "Linear2c" || kind == "Status1" || kind == "Status2";
  return known ? linear_numbers : before;
}

/// Takes the fields of one line one after the other and notes the first that is not there.
class Field_Reader {
 public:
  Field_Reader(std::string_view value, int& missing) : value_(value), missing_(missing) {}
  std::string Next() {
    const auto field = Setting_Field(value_, ++field_);
    if (!field && missing_ == 0) missing_ = field_;
    return std::string(field.value_or(""));
  }

 private:
  std::string_view value_;
  int field_ = 0;
  int& missing_;
};

Log_Sensor Parse_Line(std::string_view value, std::size_t& numbers, int& missing) {
  Field_Reader fields(value, missing);
  Log_Sensor sensor;
  sensor.name = fields.Next();
  sensor.kind = fields.Next();
  numbers = Numbers_Of(sensor.kind, numbers);
  for (std::size_t i = 0; i < numbers; ++i) sensor.numbers.push_back(Val_Any(fields.Next()));
  sensor.unit = fields.Next();
  sensor.decimals = fields.Next();
  return sensor;
}

/// A definition line behind its "=", without its end.
std::string Print_Line(const Log_Sensor& sensor) {
  std::string line = sensor.name + "\t" + sensor.kind;
  for (const double number : sensor.numbers) line += "\t" + Number_Text(number);
  return line + "\t" + sensor.unit + "\t" + sensor.decimals;
}

struct Built_In {
  Log_Sensor sensor;
  std::string_view tail;
};

Built_In Linear(std::string name, double gain, double offset, double maximum, std::string unit,
                std::string decimals, std::string_view tail = "bin") {
  return {{std::move(name), "Linear", {gain, offset, 0, maximum}, std::move(unit), std::move(decimals)},
          tail};
}

/// A table of the given values, the last one going on to the end.
Built_In Table(std::string name, std::vector<double> values, std::string unit, std::string decimals,
               std::string_view tail) {
  values.resize(table_points, values.back());
  return {{std::move(name), "Tab", std::move(values), std::move(unit), std::move(decimals)}, tail};
}

std::vector<Built_In> Built_In_Sensors() {
  return {Linear("RPM", 1000, 0, 10, "rpm", "0", "trpm"),
          Linear("Ignition", 0.2, -25.4, 255, "Deg", "1"),
          Linear("Fuel", 0.204, 0, 255, "ms", "1"),
          Linear("Analog_0-5V", 0.01953125, 0, 255, "V", "2"),
          Linear("Analog_0-100%", 0.390625, 0, 255, "%", "0"),
          Linear("AD_0-255", 1, 0, 255, "AD", "0"),
          Linear("Pos_0-32", 0.125, 0, 255, "Pos", "0"),
          Linear("Power", 1, 0, 255, "AD", "0"),
          Linear("Torque", 1, 0, 255, "AD", "0"),
          Linear("Speed_kmph", 1, 0, 255, "AD", "0"),
          Linear("Speed_mph", 1.652, 0, 255, "AD", "0"),
          Linear("Accel", 1, 0, 255, "AD", "0"),
          Linear("MPX 2.5bar", 0.0098039, 0.09, 255, "bar", "2"),
          Linear("50%_Fuel_Calibration", 0.408, 0, 255, "2xms", "1"),
          Table("MPX_Tab", {0,    0,    0.24, 0.32, 0.4,  0.48, 0.55, 0.63, 0.71, 0.79, 0.87,
                            0.94, 1.02, 1.1,  1.18, 1.26, 1.34, 1.41, 1.49, 1.57, 1.65, 1.73,
                            1.8,  1.88, 1.96, 2.04, 2.12, 2.19, 2.27, 2.35, 2.43, 2.5,  2.5},
                "bar", "2", "bin"),
          Table("Smart_throttle", {0, 0, 0, 0, 7.3, 21.8, 36.4, 50.9, 65.5, 80, 94.5, 100}, "%", "1", "AD"),
          Table("WB_Lambda", {0.68, 0.68,  0.68, 0.68, 0.68, 0.68,  0.68, 0.68,  0.68,  0.68,
                              0.72, 0.758, 0.79, 0.83, 0.88, 0.935, 1,    1.128, 1.273, 1.4},
                "lambda", "2", "AD")};
}

}  // namespace

std::vector<Log_Sensor> Log_Sens_Def_Tab;

double Log_Sensor::Gain() const { return numbers.size() == linear_numbers ? numbers[0] : 0; }

double Log_Sensor::Offset() const { return numbers.size() == linear_numbers ? numbers[1] : 0; }

const Log_Sensor* Find_Log_Sensor(int number) {
  const auto row = static_cast<std::size_t>(number);
  return number >= 0 && row < Log_Sens_Def_Tab.size() ? &Log_Sens_Def_Tab[row] : nullptr;
}

std::optional<double> Log_Sensor_Value(const Log_Sensor& sensor, double raw) {
  if (sensor.kind == "Linear") return sensor.Offset() + sensor.Gain() * raw;
  if (sensor.kind == "Linear2c") {
    return sensor.Offset() + sensor.Gain() * (raw < byte_values / 2 ? raw : raw - byte_values);
  }
  if (sensor.kind != "Tab" || sensor.numbers.size() != table_points) return {};
  return Round_To(Forward_Curve(Curve(sensor.numbers.data(), table_points), raw), decimals_of_tables);
}

std::optional<double> Raw_Of_Log_Value(const Log_Sensor& sensor, double value) {
  if (sensor.kind == "Linear" || sensor.kind == "Linear2c") {
    if (sensor.Gain() == 0) return {};
    const double raw = (value - sensor.Offset()) / sensor.Gain();
    return sensor.kind == "Linear2c" && raw < 0 ? raw + byte_values : raw;
  }
  std::optional<double> nearest;
  double least = std::numeric_limits<double>::infinity();
  for (int raw = 0; raw < byte_values; ++raw) {
    const double off = std::fabs(Log_Sensor_Value(sensor, raw).value_or(std::nan("")) - value);
    if (!(off < least)) continue;
    least = off;
    nearest = raw;
  }
  return nearest;
}

std::optional<double> Rpm_Sensor_Value(const Log_Sensor& sensor, double field) {
  if (sensor.kind != "Linear") return {};
  return sensor.Offset() + sensor.Gain() * field;
}

std::vector<Log_Sensor> Parse_Log_Sensors(std::string_view text) {
  std::vector<Log_Sensor> sensors;
  std::size_t numbers = linear_numbers;
  int missing = 0;
  for (int occurrence = 1;; ++occurrence) {
    const std::string value = Setting_Value(text, key, occurrence).value_or("");
    if (Setting_Field(value, 1).value_or("").empty()) break;
    if (occurrence > log_sensor_limit) {
      Tell("There are more than 51 log sensors. The first 51 are used.");
      break;
    }
    sensors.push_back(Parse_Line(value, numbers, missing));
  }
  if (missing != 0) Tell_Missing_Field(missing);
  return sensors;
}

std::string Print_Log_Sensors(const std::vector<Log_Sensor>& sensors) {
  std::string text = "[log_sens_def]" + Crlf();
  for (std::size_t i = 0; i < sensors.size(); ++i) {
    text += std::string(key) + std::to_string(i) + "=" + Print_Line(sensors[i]) + Crlf();
  }
  return text + "[end log_sens_def]";
}

std::string Default_Log_Sensor_Block() {
  std::string text = "[log_sensor_def]" + Crlf();
  for (const Built_In& row : Built_In_Sensors()) {
    text += std::string(key) + "=" + Print_Line(row.sensor) + "\t" + std::string(row.tail) + Crlf();
  }
  return text + "[end log_sensor_def]";
}

void Import_Default_Log_Sensors() {
  for (Log_Sensor& sensor : Parse_Log_Sensors(Default_Log_Sensor_Block())) {
    const bool there = std::any_of(Log_Sens_Def_Tab.begin(), Log_Sens_Def_Tab.end(),
                                   [&](const Log_Sensor& row) { return row.name == sensor.name; });
    if (!there && Log_Sens_Def_Tab.size() < log_sensor_limit) Log_Sens_Def_Tab.push_back(std::move(sensor));
  }
}

void Reset_Log_Sensors() { Log_Sens_Def_Tab.clear(); }

}  // namespace kx
