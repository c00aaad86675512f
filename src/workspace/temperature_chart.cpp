#include "workspace/temperature_chart.h"

#include <algorithm>
#include <cmath>

#include "sensors/conversion.h"
#include "sensors/sensor_store.h"
#include "settings/image.h"
#include "settings/numbers.h"
#include "workspace/scalar_controls.h"
#include "workspace/view_hooks.h"

namespace kx {

Temperature_Chart Coolant_Chart;

namespace {

/// First text beside the slider of the tune's byte.
std::string Slider_Text(const char* slider) {
  const Scalar_Row& row = Scalar_Row_Of(slider);
  return Scalar_Text(row, row.texts[0], Scalar_Position(row));
}

std::optional<double> Temperature_Of(int byte) {
  double raw = CardByte[byte];
  return Forward_Sensor_Calc(Air_Temperature_Sensor(), raw);
}

double Whole_Tens(double temperature) { return 10 * std::floor(temperature / 10); }

void Lay_Out(Temperature_Chart& chart, double low, double high) {
  // Limits that the user has crossed still span an axis.
  chart.axis_min = Whole_Tens(std::min(low, high)) - 10;
  chart.axis_max = Whole_Tens(std::max(low, high)) + 20;
  const double cold = Val_Any(Slider_Text("scroll(7)"));
  const double hot = Val_Any(Slider_Text("scroll(9)"));
  chart.points = {{{chart.axis_min, cold}, {low, cold}, {high, hot}, {chart.axis_max, hot}}};
  chart.has_sensor = true;
}

}  // namespace

int Air_Temperature_Sensor(const Byte_Image& image) {
  return Sensor_On_Input(Field_Of(image, map::air_temperature_input) + 1);
}

void Update_Temp_Chart() {
  Coolant_Chart = {};
  const auto low = Temperature_Of(map::low_air_limit);
  const auto high = Temperature_Of(map::high_air_limit);
  if (low && high) Lay_Out(Coolant_Chart, *low, *high);
  Coolant_Chart.L_IA_Temp_label = Slider_Text("scroll(8)");
  Coolant_Chart.H_IA_Temp_label = Slider_Text("scroll(10)");
  if (view_hooks.show_temp_chart) view_hooks.show_temp_chart();
}

}  // namespace kx
