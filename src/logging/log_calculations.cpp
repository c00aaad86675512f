#include "logging/log_calculations.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "logging/log_dataset.h"
#include "logging/log_signals.h"
#include "settings/numbers.h"

namespace kx {
namespace {

constexpr double watts_per_hp = 736;
constexpr double torque_constant = 142;
constexpr double speed_limit = 500;  // in every unit; a faster car is a wrong gear

/// What a cell counts in arithmetic.
double Number(double cell) { return std::isnan(cell) ? 0 : cell; }

double Squared(double x) { return x * x; }

void Put(double& cell, double value) {
  if (std::isfinite(value)) cell = value;
}

void Put_Rounded(double& cell, double value, int decimals) {
  if (std::isfinite(value)) cell = Round_To(value, decimals);
}

/// Rows from @p first on that repeat its rpm, the first other row not counted; the last row ends a step.
std::size_t End_Of_Step(Log_Column rpm, std::size_t first) {
  std::size_t end = first + 1;
  while (end + 1 < rpm.size() && Number(rpm[end]) == Number(rpm[first])) ++end;
  return end;
}

/// Averages of @p count neighbours in their order; element i is of the rows from i on.
std::vector<double> Averages(Log_Column source, std::size_t count) {
  std::vector<double> sums(source.size() - count + 1);
  for (std::size_t k = 0; k < count; ++k) {
    for (std::size_t i = 0; i < sums.size(); ++i) sums[i] += Number(source[i + k]);
  }
  for (double& sum : sums) sum /= static_cast<double>(count);
  return sums;
}

/// The first and last @p n rows take the values beside them.
void Fill_Ends(std::size_t n, Log_Column target) {
  const std::size_t rows = target.size();
  std::fill_n(target.begin(), n, target[n]);
  std::fill(target.end() - static_cast<std::ptrdiff_t>(n), target.end(), target[rows - 1 - n]);
}

/// Metres per second at row @p i.
double Speed_At(const Calculation_Columns& columns, const Calculation_Inputs& inputs, std::size_t i) {
  return inputs.gearing * Number(columns.rpm2[i]) / inputs.speed_divisor / 1000;
}

void Calculate_Speed(const Calculation_Columns& columns, const Calculation_Inputs& inputs) {
  for (std::size_t i = 0; i < columns.speed.size(); ++i) {
    const double speed = Number(columns.rpm2[i]) * (inputs.gearing / 1000);
    columns.speed[i] = speed > 0 && speed < speed_limit ? Round_To(speed, 2) : 0;
  }
}

/// Road power between two rows, hp: change of kinetic energy, and drag at the earlier speed.
double Power_Between(double v0, double v1, const Calculation_Inputs& inputs) {
  return ((Squared(v1) - Squared(v0)) * (inputs.mass / 2)) * log_rows_a_second / watts_per_hp +
         (v0 * v0 * v0 * inputs.drag) / watts_per_hp;
}

/// A limit stands as the user typed it, decimals and all.
void Put_Limited(double& cell, double power, const Calculation_Inputs& inputs) {
  if (power >= inputs.min_hp && power <= inputs.max_hp) return Put_Rounded(cell, power, 1);
  if (power < inputs.min_hp) return Put(cell, inputs.min_hp);
  if (power > inputs.max_hp) Put(cell, inputs.max_hp);
}

void Calculate_Power(const Calculation_Columns& columns, const Calculation_Inputs& inputs) {
  const Log_Column power = columns.power;
  for (std::size_t i = 1; i < power.size(); ++i) {
    const double v0 = Speed_At(columns, inputs, i - 1);
    Put_Limited(power[i], Power_Between(v0, Speed_At(columns, inputs, i), inputs), inputs);
  }
  power.front() = 0;
  if (power.size() > 1) power.back() = power[power.size() - 2];
}

/// Whether the engine turns is asked of the smoothed rpm, the division is by rpm; both are one after the
/// run's first step but in a log that is too short to smooth.
void Calculate_Torque(const Calculation_Columns& columns, const Calculation_Inputs& inputs) {
  for (std::size_t i = 0; i < columns.torque.size(); ++i) {
    const double power = Number(columns.power[i]);
    const double torque =
        1000 * (1000 * power / Number(columns.rpm[i])) / torque_constant / inputs.torque_divisor;
    if (Number(columns.rpm2[i]) > 0) {
      Put_Rounded(columns.torque[i], torque, 2);
    } else {
      columns.torque[i] = 0;
    }
  }
}

void Calculate_Acceleration(const Calculation_Columns& columns, const Calculation_Inputs& inputs) {
  const Log_Column acceleration = columns.acceleration;
  for (std::size_t i = 0; i + 1 < acceleration.size(); ++i) {
    const double change = Speed_At(columns, inputs, i + 1) - Speed_At(columns, inputs, i);
    Put_Rounded(acceleration[i], change / log_row_seconds, 2);
  }
  if (acceleration.size() > 1) acceleration.back() = acceleration[acceleration.size() - 2];
}

/// Without a sensor there is no gain, and the slot stays as it is.
void Put_Duty(double& cell, const std::optional<double>& gain, double duty) {
  if (gain) Put(cell, *gain * duty);
}

void Calculate_Duty(Log_Column duty, Log_Column rpm, Log_Column fuel, const std::optional<double>& gain) {
  if (fuel.empty()) return;
  for (std::size_t i = 0; i + 1 < duty.size(); ++i) {
    Put_Duty(duty[i], gain, Duty_Cycle(Number(rpm[i]), Number(fuel[i])));
  }
}

void Filter_Fuel(const Calculation_Columns& columns, const Calculation_Inputs& inputs) {
  Fuel_Filter filter(inputs.fuel_limits);
  for (std::size_t i = 0; i + 1 < columns.boost.size(); ++i) {
    const Filtered_Fuel row = filter.Take({Number(columns.boost[i]), Number(columns.rpm[i]),
                                           Number(columns.in_fuel[i]), Number(columns.tot_fuel[i])});
    if (row.in_fuel) Put(columns.in_fuel[i], *row.in_fuel);
    if (row.tot_fuel) Put(columns.tot_fuel[i], *row.tot_fuel);
    Put_Duty(columns.in_duty[i], inputs.in_gain, row.in_duty);
    Put_Duty(columns.tot_duty[i], inputs.tot_gain, row.tot_duty);
  }
}

void Calculate_Difference(const Calculation_Columns& columns) {
  for (std::size_t i = 0; i + 1 < columns.difference.size(); ++i) {
    Put(columns.difference[i], Number(columns.minuend[i]) - Number(columns.subtrahend[i]));
  }
}

/// A log of one row has no change to compute from.
void Zero_Single_Row(const Calculation_Columns& columns) {
  for (const Log_Column column :
       {columns.acceleration, columns.in_duty, columns.tot_duty, columns.difference}) {
    if (column.size() == 1) column.front() = 0;
  }
}

}  // namespace

void RPM2_Filter1(Log_Column rpm, Log_Column rpm2) {
  if (rpm.empty()) return;
  for (std::size_t i = 0; i + 1 < rpm.size();) {
    const std::size_t end = End_Of_Step(rpm, i);
    const double start = Number(rpm[i]);
    const double slope = (Number(rpm[end]) - start) / static_cast<double>(end - i);
    for (std::size_t m = i; m < end; ++m) {
      Put_Rounded(rpm2[m], start + slope * static_cast<double>(m - i), 2);
    }
    i = end;
  }
  rpm2.back() = Number(rpm.back());
  std::ranges::copy(rpm2, rpm.begin());
}

void RPM2_Filter3(int n, Log_Column source, Log_Column target) {
  const auto side = static_cast<std::size_t>(std::max(n, 0));
  if (n < 0 || 2 * side + 1 >= source.size()) return;
  const std::vector<double> means = Averages(source, 2 * side + 1);
  for (std::size_t i = 0; i < means.size(); ++i) Put_Rounded(target[i + side], means[i], 2);
  Fill_Ends(side, target);
}

void RPM2_Filter4(int n, Log_Column source, Log_Column target) {
  const auto before = static_cast<std::size_t>(std::max(n, 0));
  if (n < 0 || before + 1 >= source.size()) return;
  const std::vector<double> means = Averages(source, before + 1);
  for (std::size_t i = before; i + before < source.size(); ++i) Put_Rounded(target[i], means[i - before], 2);
  Fill_Ends(before, target);
}

/// Without a single rpm only the difference can be computed.
void Calculate_Columns(const Calculation_Columns& columns, const Calculation_Inputs& inputs) {
  const auto empty = [](double cell) { return std::isnan(cell); };
  if (std::ranges::all_of(columns.rpm, empty)) return Calculate_Difference(columns);
  RPM2_Filter1(columns.rpm, columns.rpm2);
  RPM2_Filter3(inputs.rpm_smoothing, columns.rpm, columns.rpm2);
  RPM2_Filter3(inputs.rpm_smoothing, columns.rpm, columns.rpm);
  Calculate_Speed(columns, inputs);
  Calculate_Power(columns, inputs);
  RPM2_Filter4(inputs.power_smoothing, columns.power, columns.power);
  Calculate_Torque(columns, inputs);
  Calculate_Acceleration(columns, inputs);
  Zero_Single_Row(columns);
  Calculate_Duty(columns.in_duty, columns.rpm, columns.in_fuel, inputs.in_gain);
  Calculate_Duty(columns.tot_duty, columns.rpm, columns.tot_fuel, inputs.tot_gain);
  if (inputs.fuel_filter) Filter_Fuel(columns, inputs);
  Calculate_Difference(columns);
}

void Calculate_Signals(Log_Array& log, int rows, const Calculation_Inputs& inputs) {
  if (rows < 1) return;
  const auto at = [&](int slot) {
    return slot > log_slot_count ? Log_Column() : log.Column(slot).subspan(1, static_cast<std::size_t>(rows));
  };
  const auto of = [&](Log_Signal signal) { return at(Slot_Of(signal)); };
  const bool boost_known = inputs.boost_sensor != no_dataset;
  Calculate_Columns({.rpm = of(Log_Signal::RPM),
                     .rpm2 = of(Log_Signal::RPM2),
                     .in_fuel = of(Log_Signal::IN_Fuel),
                     .tot_fuel = of(Log_Signal::TOT_Fuel),
                     .power = of(Log_Signal::POWER),
                     .torque = of(Log_Signal::TORQUE),
                     .speed = of(Log_Signal::SPEED),
                     .acceleration = of(Log_Signal::ACCELERATION),
                     .in_duty = of(Log_Signal::IN_Fuel_DC),
                     .tot_duty = of(Log_Signal::TOT_Fuel_DC),
                     .boost = boost_known ? at(first_raw_copy_slot + inputs.boost_sensor) : Log_Column(),
                     .minuend = at(difference_minuend_slot),
                     .subtrahend = at(difference_subtrahend_slot),
                     .difference = at(difference_slot)},
                    inputs);
}

}  // namespace kx
