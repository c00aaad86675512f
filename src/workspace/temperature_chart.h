#pragma once

#include <array>
#include <string>

#include "settings/image.h"

namespace kx {

/// What Coolant_Chart shows: fuel correction over intake air temperature, level up to the low limit, straight
/// to the high limit, level beyond.
struct Temperature_Chart {
  struct Point {
    double temperature;  ///< in the sensor's unit
    double correction;   ///< %
  };
  static constexpr const char* title = "IAT fuel";
  static constexpr const char* x_title = "Intake Air Temperature";
  static constexpr const char* y_title = "Fuel %";
  static constexpr int divisions = 10;

  bool has_sensor = false;  ///< else there are no points, and the axis means nothing
  std::array<Point, 4> points{};
  double axis_min = 0;
  double axis_max = 100;
  std::string L_IA_Temp_label;  ///< the low limit, empty without a sensor
  std::string H_IA_Temp_label;  ///< the high limit
};

/// The chart as last computed. Written by Update_Temp_Chart.
extern Temperature_Chart Coolant_Chart;

/// Number of the sensor on the intake air temperature input; 0 or -1 is none.
[[nodiscard]] int Air_Temperature_Sensor(const Byte_Image& image = CardByte);

/// Computes Coolant_Chart from the tune and has it shown.
void Update_Temp_Chart();

}  // namespace kx
