#include "workspace/table_values.h"

#include "sensors/conversion.h"
#include "sensors/load_axes.h"
#include "sensors/sensor_store.h"
#include "settings/image.h"
#include "settings/numbers.h"

namespace kx {
namespace {

constexpr Value_Form ignition_load_degrees{0, 1, 10, 0, "0.0", "Deg"};
constexpr Value_Form ignition_load_percent{0, 1, 1.28, 0, "00", "%"};
constexpr Value_Form ignition_rpm_percent{128, 1, 0.64, 0, "00", "%"};
constexpr Value_Form ignition_rpm_percent_fine{128, 1, 1.28, 0, "00", "%"};
constexpr Value_Form ignition_rpm_degrees{128, 1, 5, 0, "0.0", "Deg"};
constexpr Value_Form ignition_rpm_degrees_fine{128, 1, 10, 0, "0.0", "Deg"};
constexpr Value_Form fuel_load_time{0, 1, 5, -25.6, "0.0", "ms"};
constexpr Value_Form fuel_load_duty{0, 1, 2.55, 0, "0.0", "%"};
constexpr Value_Form fuel_rpm_percent{0, 1.5625, 1, -200, "00", "%"};
constexpr Value_Form analog_limit_volts{0, 1, 51, 0, "0.00", "limit [V]"};
constexpr Value_Form analog_out_volts{0, 1, 51, 0, "0.00", "out [V]"};
constexpr Value_Form maf_output_volts{0, 1, 51, 0, "0.00", "MAF[V]"};
constexpr Value_Form maf_limit_volts{0, 5, 255, 0, "0.00", "MAF-lim [V]"};
constexpr Value_Form pwm_percent{0, 1, 1.28, 0, "00", "%"};

constexpr int rpm_step = 500;       ///< RPM between entries
constexpr int fine_rpm_step = 250;  ///< at 250 RPM resolution
constexpr int counts_a_load_entry = 8;

const Value_Form& Ignition_Rpm_Form() {
  const bool degrees = Get_Field(map::ignition_load_in_percent) == 1;
  const bool fine = Get_Field(map::ignition_rpm_fine) == 1;
  if (degrees) return fine ? ignition_rpm_degrees_fine : ignition_rpm_degrees;
  return fine ? ignition_rpm_percent_fine : ignition_rpm_percent;
}

/// Volts at the box's input for entry @p row of a table in steps of 8 counts; @p full_scale counts are 5 V.
std::string Input_Volts(int row, int full_scale) {
  return Format((row - 1) * counts_a_load_entry * 5.0 / full_scale, "0.00");
}

int Axis_Row(Table table) { return Sensor_On_Input(Get_Field(Row_Of(table).load_input) + 1); }

}  // namespace

const Value_Form& Form_Of(Table table) {
  switch (table) {
    case Table::ignition_load:
      return Get_Field(map::ignition_load_in_percent) == 1 ? ignition_load_percent : ignition_load_degrees;
    case Table::ignition_rpm:
      return Ignition_Rpm_Form();
    case Table::fuel_load:
      return Get_Field(map::fuel_by_pwm) == 1 ? fuel_load_duty : fuel_load_time;
    case Table::fuel_rpm:
      return fuel_rpm_percent;
    case Table::analog1:
      return analog_limit_volts;
    case Table::analog2:
      return Analog2_Is_Curve() ? analog_out_volts : analog_limit_volts;
    case Table::maf_output:
      return maf_output_volts;
    case Table::maf_limit:
      return maf_limit_volts;
    case Table::pwm_load:
    case Table::pwm_rpm:
      return pwm_percent;
  }
  return pwm_percent;
}

std::string Shown_Text_Of(Table table, std::uint8_t raw) {
  if (table == Table::pwm_rpm && Boost_Closed_Loop()) {
    double ten_bit = raw * 2.0;
    const int sensor = Boost_Sensor();
    return Format(Forward_Sensor_Calc(sensor, ten_bit), Sensor_Format(sensor));
  }
  const Value_Form& form = Form_Of(table);
  return Format(form.Shown(raw), form.mask);
}

std::string Value_Heading(Table table) {
  if (table == Table::pwm_rpm && Boost_Closed_Loop()) return Sensor_Unit(Boost_Sensor());
  return std::string(Form_Of(table).unit);
}

std::vector<std::string> Axis_Headings(Table table) {
  switch (Row_Of(table).axis) {
    case Axis::load:
      return {"Volt", Load_Axis_Unit(Axis_Row(table))};
    case Axis::rpm:
    case Axis::fuel_rpm:
      return {"RPM"};
    case Axis::rpm_or_volts:
      return {Analog2_Is_Curve() ? "in [V]" : "RPM"};
    case Axis::rpm_times_map:
      return {"RPM*MAP"};
  }
  return {};
}

std::vector<std::string> Axis_Texts(Table table, int row) {
  const auto rpm = [row](int step) { return Format((row - 1) * step, "000"); };
  switch (Row_Of(table).axis) {
    case Axis::load:
      return {Input_Volts(row, 256), Load_Axis_Text(Axis_Row(table), row)};
    case Axis::rpm:
      return {rpm(rpm_step)};
    case Axis::fuel_rpm:
      return {rpm(Res500 ? rpm_step : fine_rpm_step)};
    case Axis::rpm_or_volts:
      return {Analog2_Is_Curve() ? Input_Volts(row, 128) : rpm(rpm_step)};
    case Axis::rpm_times_map:
      return {Number_Text(MAF_Sim_Tab[static_cast<std::size_t>(row - 1)][0])};
  }
  return {};
}

}  // namespace kx
