#include "logging/fuel_filter.h"

#include <cmath>

#include "settings/numbers.h"

namespace kx {
namespace {

/// Time of an injector that stays open, ms; nothing while the engine stands.
std::optional<double> Open_Time(double rpm) {
  if (rpm == 0) return {};
  return period_ms_rpm / rpm;
}

}  // namespace

double Duty_Cycle(double rpm, double injection_ms) {
  const double part = rpm * injection_ms / period_ms_rpm;
  return std::isfinite(part) ? 100 * Round_To(part, 2) : std::nan("");
}

bool High_Load(const Fuel_Row& row, const Fuel_Filter_Limits& limits) {
  return row.rpm > limits.min_rpm && row.boost > limits.min_boost && row.in_fuel > limits.min_fuel;
}

/// Without boost there is no ratio to judge by.
bool Fuel_Filter::Too_Low(std::optional<double> ratio) const {
  return ratio && *ratio < limits_.ratio * Fuel_Ratio;
}

void Fuel_Filter::Learn(std::optional<double> ratio) {
  if (ratio) Fuel_Ratio = *ratio;
}

bool Fuel_Filter::Stays_Full(const Fuel_Row& row, std::optional<double> ratio) {
  if (row.in_fuel == Fuel_Prev) return true;  // the reading is stuck
  if (row.boost < limits_.min_boost && row.in_fuel < limits_.min_fuel) return false;
  if (Too_Low(ratio)) return true;
  if (High_Load(row, limits_)) Learn(ratio);
  return false;
}

/// The ratio follows the engine below high load, too.
bool Fuel_Filter::Becomes_Full(const Fuel_Row& row, std::optional<double> ratio) {
  const bool falls_alone = row.boost - Boost_Prev > limits_.boost_drop;
  if (High_Load(row, limits_) && Too_Low(ratio) && falls_alone) return true;
  Learn(ratio);
  return false;
}

bool Fuel_Filter::Is_Full(const Fuel_Row& row, std::optional<double> ratio) {
  if (Fuel_Ratio == 0) return false;
  return Fuel_Hold ? Stays_Full(row, ratio) : Becomes_Full(row, ratio);
}

Filtered_Fuel Fuel_Filter::Take(const Fuel_Row& row) {
  std::optional<double> ratio;
  if (row.boost != 0) ratio = row.in_fuel / row.boost;
  if (Fuel_Ratio == 0 && High_Load(row, limits_)) Learn(ratio);

  Filtered_Fuel result;
  result.in_duty = Duty_Cycle(row.rpm, row.in_fuel);
  result.tot_duty = Duty_Cycle(row.rpm, row.tot_fuel);
  Fuel_Hold = result.in_duty >= 100 || Is_Full(row, ratio);
  if (Fuel_Hold) {
    result.in_fuel = Open_Time(row.rpm);
    result.in_duty = 100;
  }
  if (Fuel_Hold || result.tot_duty > 100) {
    result.tot_fuel = Open_Time(row.rpm);
    result.tot_duty = 100;
  }
  Fuel_Prev = result.in_fuel.value_or(row.in_fuel);
  if (std::fabs(row.boost) < 32767) Boost_Prev = To_Int16(row.boost);
  return result;
}

}  // namespace kx
