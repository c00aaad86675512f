#include "logging/calculation_inputs.h"

#include <algorithm>
#include <array>

#include "logging/log_dataset.h"
#include "sensors/log_sensors.h"
#include "settings/numbers.h"

namespace kx {
namespace {

constexpr double pounds_a_kilogram = 2.205;
constexpr double kilometres_a_mile = 1.609344;  // the setup's own conversion of gears has 2.237 / 3.6
constexpr double foot_pounds_divisor = 1.35582;

double Speed_Divisor(Speed_Unit unit) {
  switch (unit) {
    case Speed_Unit::kmh:
      return 3.6;
    case Speed_Unit::mph:
      return 3.6 / kilometres_a_mile;
    case Speed_Unit::ms:
      break;
  }
  return 1;
}

/// Half of Cw x area x density, kg/m; no resistance at all when the user has left it empty.
double Drag(const Log_Settings& settings) {
  return 0.5 * Val_Any(settings.txt_AirResistance) * Val_Any(settings.txt_FrontalArea) *
         Val_Any(settings.txt_AirDensity);
}

/// Rows of a moving average. Below 0, as beyond the log, nothing is smoothed.
int Smoothing(const std::string& text) {
  return static_cast<int>(Round_Whole(std::clamp(Val_Any(text), -1.0, 32767.0)));
}

std::optional<double> Gain_Of(const Log_Settings& settings, Log_Signal signal) {
  const auto row = static_cast<std::size_t>(Slot_Of(signal) - 1);
  const Log_Sensor* sensor = Find_Log_Sensor(settings.rows.at(row).sensor);
  return sensor == nullptr ? std::nullopt : std::optional(sensor->Gain());
}

Fuel_Filter_Limits Limits_Of(const std::array<std::string, fuel_limit_count>& texts) {
  return {Val_Any(texts[0]), Val_Any(texts[1]), Val_Any(texts[2]), Val_Any(texts[3]), Val_Any(texts[4])};
}

}  // namespace

Calculation_Inputs Inputs_Of(const Log_Settings& settings) {
  Calculation_Inputs inputs;
  inputs.speed_divisor = Speed_Divisor(settings.Speed_option);
  inputs.gearing = Val_Any(settings.txt_Gearing.at(static_cast<std::size_t>(settings.Gear_option)));
  inputs.mass =
      Val_Any(settings.txt_Weight) / (settings.Weight_option == Weight_Unit::lbs ? pounds_a_kilogram : 1.0);
  inputs.max_hp = Val_Any(settings.txt_Max_Hp);
  inputs.min_hp = Val_Any(settings.txt_Min_Hp);
  inputs.drag = Drag(settings);
  inputs.torque_divisor = settings.Torque_option == Torque_Unit::ft_lbs ? foot_pounds_divisor : 1;
  inputs.rpm_smoothing = Smoothing(settings.txt_FIR[0]);
  inputs.power_smoothing = Smoothing(settings.txt_FIR[1]);
  inputs.in_gain = Gain_Of(settings, Log_Signal::IN_Fuel_DC);
  inputs.tot_gain = Gain_Of(settings, Log_Signal::TOT_Fuel_DC);
  inputs.fuel_filter = settings.Fuel_filter_check;
  inputs.fuel_limits = Limits_Of(settings.fuel_limits);
  return inputs;
}

Calculation_Inputs Inputs_Of_Log(bool default_file) {
  Calculation_Inputs inputs = Inputs_Of(log_settings);
  if (inputs.fuel_filter) inputs.boost_sensor = default_file ? 0 : Get_Boost_sensor();
  return inputs;
}

}  // namespace kx
