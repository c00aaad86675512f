#include "workspace/table_meaning.h"

#include "sensors/conversion.h"
#include "sensors/sensor_store.h"
#include "settings/numbers.h"

namespace kx {
namespace {

constexpr double sensor_full_scale = 256;  ///< raw value behind the largest of a sensor

double Sensor_Value(int sensor, double raw) { return Forward_Sensor_Calc(sensor, raw).value_or(0); }

bool On(const map::Field& flag, const Byte_Image& image) { return Field_Of(image, flag) == 1; }

const Table_Meaning& Ignition_Rpm(const Byte_Image& image) {
  const bool fine = On(map::ignition_rpm_fine, image);
  if (On(map::ignition_load_in_percent, image)) {
    return fine ? meaning::ignition_rpm_degrees_fine : meaning::ignition_rpm_degrees;
  }
  return fine ? meaning::ignition_rpm_percent_fine : meaning::ignition_rpm_percent;
}

}  // namespace

Table_Meaning meaning::Boost_Target(int sensor) {
  Table_Meaning target = pwm_duty;
  target.rule = boost_target;
  target.limits = {Sensor_Value(sensor, 0), Sensor_Value(sensor, sensor_full_scale)};
  target.by_sensor = true;
  target.sensor = sensor;
  return target;
}

Table_Meaning Meaning_Of(Table table, const Byte_Image& image) {
  switch (table) {
    case Table::ignition_load:
      return On(map::ignition_load_in_percent, image) ? meaning::ignition_load_percent
                                                      : meaning::ignition_load_degrees;
    case Table::ignition_rpm:
      return Ignition_Rpm(image);
    case Table::fuel_load:
      return On(map::fuel_by_pwm, image) ? meaning::fuel_load_duty : meaning::fuel_load_time;
    case Table::fuel_rpm:
      return meaning::fuel_rpm;
    case Table::analog1:
      return meaning::analog_limit;
    case Table::analog2:
      return Analog2_Is_Curve(image) ? meaning::analog_curve : meaning::analog_limit;
    case Table::maf_output:
      return meaning::maf_output;
    case Table::maf_limit:
      return meaning::maf_limit;
    case Table::pwm_load:
      return meaning::pwm_duty;
    case Table::pwm_rpm:
      return Boost_Closed_Loop(image) ? meaning::Boost_Target(Boost_Sensor(image)) : meaning::pwm_duty;
  }
  Fail_Subscript();
}

std::string Shown_Text_Of(const Table_Meaning& meaning, std::uint8_t raw) {
  if (!meaning.by_sensor) return Format(meaning.form.Shown(raw), meaning.form.mask);
  double input = raw * sensor_counts_a_byte;
  return Format(Forward_Sensor_Calc(meaning.sensor, input), Sensor_Format(meaning.sensor));
}

std::string Unit_Of(const Table_Meaning& meaning) {
  return meaning.by_sensor ? Sensor_Unit(meaning.sensor) : std::string(meaning.form.unit);
}

}  // namespace kx
