#include "workspace/table_limits.h"

#include "sensors/conversion.h"
#include "settings/image.h"
#include "settings/numbers.h"
#include "workspace/tables.h"

namespace kx {

double Table_Max = 0;
double Table_Min = 0;
double Table_Gain = 0;
double Table_Offset1 = 0;
double Table_Offset2 = 0;
Shown_Text minText;
Shown_Text maxText;

namespace {

/// One row of the limits of an ignition table. @p zero is the raw byte that shows 0.
struct Ignition_Limits {
  double max;
  double min;
  double gain;
  double zero;
};

constexpr Ignition_Limits load_degrees{25.5, 0, 10, 0};
constexpr Ignition_Limits load_percent{199, 0, 1.28, 0};
constexpr Ignition_Limits rpm_percent{198, -200, 0.64, 128};
constexpr Ignition_Limits rpm_percent_fine{99, -100, 1.28, 128};
constexpr Ignition_Limits rpm_degrees{25.4, -25.6, 5, 128};
constexpr Ignition_Limits rpm_degrees_fine{12.7, -12.8, 10, 128};

constexpr double closed_loop_full_scale = 256;  ///< raw counts of the boost sensor

void Show_Limits(double min, double max) {
  Table_Min = min;
  Table_Max = max;
  minText.Set(Number_Text(min));
  maxText.Set(Number_Text(max));
}

void Take(const Ignition_Limits& limits) {
  Table_Gain = limits.gain;
  Table_Offset1 = 0;
  Table_Offset2 = limits.zero;
  Show_Limits(limits.min, limits.max);
}

double Boost_At(double raw) { return Forward_Sensor_Calc(Boost_Sensor(), raw).value_or(0); }

}  // namespace

void Get_igmap_maxmin() { Take(Get_Field(map::ignition_load_in_percent) == 1 ? load_percent : load_degrees); }

void Get_igrpm_maxmin() {
  const bool fine = Get_Field(map::ignition_rpm_fine) == 1;
  if (Get_Field(map::ignition_load_in_percent) == 1) {
    Take(fine ? rpm_degrees_fine : rpm_degrees);
  } else {
    Take(fine ? rpm_percent_fine : rpm_percent);
  }
}

void Get_fuelmap_maxmin() {
  if (Get_Field(map::fuel_by_pwm) == 1) {
    Show_Limits(0, 100);
  } else {
    Show_Limits(-25.6, 25.4);
  }
}

void Get_fuelrpm_maxmin() { Show_Limits(-200, 198); }

void Get_pwm_maxmin() {
  if (Active_Table() != Table::pwm_rpm) return;
  if (Boost_Closed_Loop()) {
    Show_Limits(Boost_At(0), Boost_At(closed_loop_full_scale));
  } else {
    Show_Limits(0, 199);
  }
}

void Get_an_maxmin() { Show_Limits(0, 5); }

void Get_Shown_Table_Maxmin() {
  const auto table = Active_Table();
  if (!table) return;
  switch (*table) {
    case Table::ignition_load:
      return Get_igmap_maxmin();
    case Table::ignition_rpm:
      return Get_igrpm_maxmin();
    case Table::fuel_load:
      return Get_fuelmap_maxmin();
    case Table::fuel_rpm:
      return Get_fuelrpm_maxmin();
    case Table::pwm_load:
    case Table::pwm_rpm:
      return Get_pwm_maxmin();
    case Table::analog1:
    case Table::analog2:
    case Table::maf_output:
    case Table::maf_limit:
      return Get_an_maxmin();
  }
}

void Reset_Table_Limits() {
  Table_Max = Table_Min = Table_Gain = Table_Offset1 = Table_Offset2 = 0;
  minText.Set("");
  maxText.Set("");
}

}  // namespace kx
