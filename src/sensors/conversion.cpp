#include "sensors/conversion.h"

#include <algorithm>
#include <cmath>

#include "settings/failure.h"
#include "settings/numbers.h"

namespace kx {
namespace {

constexpr double counts_a_point = 8;
constexpr int last_point = table_points - 1;

/// Points of a "Tab" sensor, without its decimals.
Curve Points_Of(const Table_Columns& table) { return Curve(table.data() + 1, table_points); }

double Forward_Linear(const Sensor& sensor, double& raw) {
  if (raw > sensor.maximum) {
    raw = sensor.maximum;
  } else if (raw < sensor.minimum) {
    raw = sensor.minimum;
  }
  return raw * sensor.gain + sensor.offset;
}

int Reversed_Linear(const Sensor& sensor, double value) {
  if (sensor.gain == 0) Fail_Division_By_Zero();
  int raw = To_Int16((value - sensor.offset) / sensor.gain);
  if (raw > sensor.maximum) raw = To_Int16(sensor.maximum);
  if (raw < sensor.minimum) raw = To_Int16(sensor.minimum);
  return raw;
}

void Check_Row(int sensor) {
  const auto row = static_cast<std::size_t>(sensor);
  if (row >= Sens_Def.size() || row >= Sens_Tab.size()) Fail_Subscript();
}

}  // namespace

double Forward_Curve(Curve curve, double& raw) {
  raw = std::clamp(raw, 0.0, 255.0);
  const double whole_points = std::floor(raw / counts_a_point);
  const auto low = static_cast<std::size_t>(whole_points);
  const double slope = (curve[low + 1] - curve[low]) / counts_a_point;
  return (raw - whole_points * counts_a_point) * slope + curve[low];
}

int Reversed_Curve(Curve curve, double value) {
  if (value > curve[last_point]) return 255;
  if (value < curve[0]) return 0;
  std::size_t i = 0;
  for (; i < last_point; ++i) {
    if (curve[i] < value && value < curve[i + 1]) {
      const double slope = (curve[i + 1] - curve[i]) / counts_a_point;
      return To_Int16(counts_a_point * static_cast<double>(i) + (value - curve[i]) / slope);
    }
    if (curve[i] == value) break;
  }
  return static_cast<int>(counts_a_point) * static_cast<int>(i);
}

std::optional<double> Forward_Value(const Sensor& sensor, const Table_Columns& table, double& raw) {
  if (sensor.kind == "Linear") return Forward_Linear(sensor, raw);
  if (sensor.kind == "Tab") return Forward_Curve(Points_Of(table), raw);
  return {};
}

std::optional<int> Raw_Of_Value(const Sensor& sensor, const Table_Columns& table, double value) {
  if (sensor.kind == "Linear") return Reversed_Linear(sensor, value);
  if (sensor.kind == "Tab") return Reversed_Curve(Points_Of(table), value);
  return {};
}

std::optional<double> Forward_Sensor_Calc(int sensor, double& raw) {
  if (sensor == -1) return {};
  Check_Row(sensor);
  const auto row = static_cast<std::size_t>(sensor);
  return Forward_Value(Sens_Def[row], Sens_Tab[row], raw);
}

std::optional<int> Reversed_Sensor_Calc(int sensor, double value) {
  if (sensor == -1) return {};
  Check_Row(sensor);
  const auto row = static_cast<std::size_t>(sensor);
  return Raw_Of_Value(Sens_Def[row], Sens_Tab[row], value);
}

}  // namespace kx
