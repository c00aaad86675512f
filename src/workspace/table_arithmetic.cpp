#include "workspace/table_arithmetic.h"

#include <algorithm>

#include "sensors/conversion.h"
#include "settings/numbers.h"
#include "workspace/curve_generator.h"

namespace kx {
namespace {

constexpr double pwm_gain = 1.28;         ///< counts a percent
constexpr double duty_gain = 2.55;        ///< counts a percent
constexpr double fuel_time_gain = 5;      ///< counts a millisecond
constexpr double fuel_time_zero = 25.6;   ///< ms below raw 0
constexpr double fuel_rpm_step = 1.5625;  ///< percent a count
constexpr double fuel_rpm_gain = 0.64;    ///< counts a percent
constexpr double fuel_rpm_zero = 200;     ///< percent below raw 0

/// Raw value of a shown ignition value, not yet a byte.
double Ignition_Raw(const Edit_Form& form, double shown) {
  return shown * form.gain + form.offset2 + form.offset1;
}

/// Half of the boost sensor's raw value; a missing sensor counts as 0.
double Half_Boost_Raw(const Edit_Form& form, double value) {
  return Reversed_Sensor_Calc(form.boost_sensor, value).value_or(0) / 2.0;
}

double Scaled_Around(double shown, double percent) { return shown * percent / 100; }

}  // namespace

std::uint8_t Stepped(const Edit_Form& form, const Cell& cell, int sign) {
  switch (form.rule) {
    case Edit_Rule::ignition_load_degrees:
      return To_Byte(Ignition_Raw(form, cell.shown) + sign);
    case Edit_Rule::ignition_load_percent:
      return To_Byte(Ignition_Raw(form, cell.shown + sign));
    case Edit_Rule::ignition_rpm_degrees:
      return To_Byte(cell.shown * form.gain + sign + form.offset2 + form.offset1);
    case Edit_Rule::ignition_rpm_percent:
      return To_Byte(Ignition_Raw(form, cell.shown + sign * (form.max - form.min) / 255));
    case Edit_Rule::pwm:
      return To_Byte((cell.shown + sign) * pwm_gain);
    default:
      return To_Byte(cell.raw + sign);
  }
}

std::uint8_t Sloped(const Edit_Form& form, const Cell& cell, int counts) {
  switch (form.rule) {
    case Edit_Rule::ignition_load_degrees:
    case Edit_Rule::ignition_load_percent:
    case Edit_Rule::ignition_rpm_degrees:
    case Edit_Rule::ignition_rpm_percent:
      return byte_chk(Round_Whole(form.offset2 + cell.shown * form.gain + counts));
    case Edit_Rule::pwm:
      return byte_chk(Round_Whole(pwm_gain * (cell.shown + counts)));
    case Edit_Rule::boost_target:
      return To_Byte(cell.raw + counts);
    default:
      return byte_chk(cell.raw + counts);
  }
}

double Clipped_To_Set(const Edit_Form& form, double value) {
  switch (form.rule) {
    case Edit_Rule::pwm:
    case Edit_Rule::boost_target:
      return std::min(value, 199.0);
    case Edit_Rule::volts:
      return std::min(value, 5.0);
    case Edit_Rule::fuel_rpm:
      return std::clamp(value, -200.0, 199.0);
    default:
      return std::clamp(value, form.min, form.max);
  }
}

std::uint8_t Set_To(const Edit_Form& form, double value) {
  switch (form.rule) {
    case Edit_Rule::pwm:
      return byte_chk(value * pwm_gain);
    case Edit_Rule::boost_target:
      return To_Byte(To_Int16(Half_Boost_Raw(form, value)));
    case Edit_Rule::volts:
      return byte_chk(Round_Whole(value * counts_a_volt));
    case Edit_Rule::fuel_rpm:
      return byte_chk((value + fuel_rpm_zero) / fuel_rpm_step);
    case Edit_Rule::fuel_time:
      return byte_chk((value + fuel_time_zero) * fuel_time_gain);
    case Edit_Rule::fuel_duty:
      return byte_chk(value * duty_gain);
    default:
      return byte_chk(value * form.gain + form.offset1 + form.offset2);
  }
}

std::uint8_t Scaled(const Edit_Form& form, const Cell& cell, double percent) {
  switch (form.rule) {
    case Edit_Rule::pwm:
      return byte_chk(Round_Whole(percent * cell.shown / 100 * pwm_gain));
    case Edit_Rule::boost_target:
      return To_Byte(Half_Boost_Raw(form, percent * cell.shown / 100));
    case Edit_Rule::fuel_rpm: {
      const double shown = Scaled_Around(cell.raw / fuel_rpm_gain - fuel_rpm_zero, percent);
      return byte_chk((shown + fuel_rpm_zero) * fuel_rpm_gain);
    }
    case Edit_Rule::fuel_time: {
      const double shown = Scaled_Around(cell.raw / fuel_time_gain - fuel_time_zero, percent);
      return byte_chk((shown + fuel_time_zero) * fuel_time_gain);
    }
    case Edit_Rule::fuel_duty:
      return byte_chk(cell.raw * percent / 100);
    case Edit_Rule::ignition_rpm_degrees:
    case Edit_Rule::ignition_rpm_percent:
      return byte_chk(Round_Whole(percent * cell.shown / 100 * form.gain + form.offset2));
    default:
      return byte_chk(percent * cell.raw / 100);
  }
}

std::optional<double> Broken_Typing_Limit(const Edit_Form& form, double value) {
  const auto above = [value](double max) { return value > max ? std::optional(max) : std::nullopt; };
  const auto outside = [&above, value](double max, double min) {
    return value < min ? std::optional(min) : above(max);
  };
  switch (form.rule) {
    case Edit_Rule::fuel_duty:
      return above(100);
    case Edit_Rule::fuel_time:
      return outside(25.4, -25.6);
    case Edit_Rule::fuel_rpm:
      return outside(198, -200);
    case Edit_Rule::pwm:
    case Edit_Rule::boost_target:
      return above(199);
    case Edit_Rule::volts:
      return above(5);
    default:
      return outside(form.max, form.min);
  }
}

std::uint8_t Typed_To(const Edit_Form& form, double value) {
  switch (form.rule) {
    case Edit_Rule::volts:
      return To_Byte(value * counts_a_volt);
    case Edit_Rule::boost_target:
      return byte_chk(value * pwm_gain);
    default:
      return Set_To(form, value);
  }
}

}  // namespace kx
