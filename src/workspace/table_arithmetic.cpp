#include "workspace/table_arithmetic.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <utility>

#include "sensors/conversion.h"
#include "settings/numbers.h"

namespace kx {
namespace {

constexpr double counts_of_a_range = 255;
constexpr std::uint8_t largest_byte = 255;
constexpr int noise_decimals = 9;  ///< of a raw value; behind them is the noise of the conversions

/// Raw value of a shown ignition value or duty, not yet a byte.
double Raw_From_Shown(const Table_Meaning& meaning, double shown) {
  return shown * meaning.form.Gain() + meaning.form.before;
}

/// Half of the boost sensor's raw value; a missing sensor counts as 0.
double Half_Boost_Raw(const Table_Meaning& meaning, double value) {
  return Reversed_Sensor_Calc(meaning.sensor, value).value_or(0) / 2.0;
}

/// Scales a byte towards the shown 0, which is not its raw 0.
double Scaled_Around_Zero(const Table_Meaning& meaning, double raw, double percent) {
  const double zero = meaning.form.after;
  const double shown = raw / meaning.form.Gain() + zero;
  return (Scaled_Value(shown, percent) - zero) * meaning.form.Gain();
}

/// Raw value @p steps units up, not yet a byte.
double Stepped_Raw(const Table_Meaning& meaning, const Cell& cell, int steps) {
  switch (meaning.rule) {
    case Edit_Rule::ignition_load_counts:
    case Edit_Rule::ignition_rpm_counts:
      return cell.shown * meaning.form.Gain() + steps + meaning.form.before;
    case Edit_Rule::ignition_load_units:
    case Edit_Rule::duty:
      return Raw_From_Shown(meaning, Moved_Value(cell.shown, 1, steps));
    case Edit_Rule::ignition_rpm_share: {
      const double share = (meaning.limits.max - meaning.limits.min) / counts_of_a_range;
      return Raw_From_Shown(meaning, Moved_Value(cell.shown, share, steps));
    }
    default:
      return cell.raw + steps;
  }
}

}  // namespace

double Moved_Value(double shown, double step, int steps) { return shown + step * steps; }

double Scaled_Value(double shown, double percent) { return percent * shown / 100; }

std::uint8_t Stepped(const Table_Meaning& meaning, const Cell& cell, int sign) {
  return To_Byte(Stepped_Raw(meaning, cell, sign));
}

std::uint8_t Moved(const Table_Meaning& meaning, const Cell& cell, int steps) {
  const bool at_its_end = cell.raw == (steps > 0 ? largest_byte : 0);
  if (steps == 0 || at_its_end) return cell.raw;
  return To_Byte(std::clamp(Stepped_Raw(meaning, cell, steps), 0.0, double{largest_byte}));
}

std::uint8_t Sloped(const Table_Meaning& meaning, const Cell& cell, int counts) {
  switch (meaning.rule) {
    case Edit_Rule::ignition_load_counts:
    case Edit_Rule::ignition_load_units:
    case Edit_Rule::ignition_rpm_counts:
    case Edit_Rule::ignition_rpm_share:
      return byte_chk(Round_Whole(Raw_From_Shown(meaning, cell.shown) + counts));
    case Edit_Rule::duty:
      return byte_chk(Round_Whole(Raw_From_Shown(meaning, Moved_Value(cell.shown, 1, counts))));
    case Edit_Rule::boost_target:
      return To_Byte(cell.raw + counts);
    default:
      return byte_chk(cell.raw + counts);
  }
}

double Clipped_To_Set(const Table_Meaning& meaning, double value) { return meaning.set.Clipped(value); }

std::uint8_t Set_To(const Table_Meaning& meaning, double value) {
  switch (meaning.rule) {
    case Edit_Rule::boost_target:
      return To_Byte(To_Int16(Half_Boost_Raw(meaning, value)));
    case Edit_Rule::volts:
      return byte_chk(Round_Whole(meaning.form.Raw(value)));
    default:
      return byte_chk(meaning.form.Raw(value));
  }
}

std::uint8_t Scaled(const Table_Meaning& meaning, const Cell& cell, double percent) {
  const double share = Scaled_Value(cell.shown, percent);
  switch (meaning.rule) {
    case Edit_Rule::boost_target:
      return To_Byte(Half_Boost_Raw(meaning, share));
    case Edit_Rule::duty:
    case Edit_Rule::ignition_rpm_counts:
    case Edit_Rule::ignition_rpm_share:
      return byte_chk(Round_Whole(Raw_From_Shown(meaning, share)));
    case Edit_Rule::fuel:
      return byte_chk(Scaled_Around_Zero(meaning, cell.raw, percent));
    default:
      return byte_chk(percent * cell.raw / 100);
  }
}

std::optional<double> Exact_Value(const Table_Meaning& meaning, std::uint8_t raw) {
  if (!meaning.by_sensor) return meaning.form.Shown(raw);
  double input = raw * sensor_counts_a_byte;
  return Forward_Sensor_Calc(meaning.sensor, input);
}

std::uint8_t Nearest_Byte(const Table_Meaning& meaning, double value, std::uint8_t from) {
  if (!meaning.by_sensor) {
    const double raw = std::clamp(meaning.form.Raw(value), 0.0, double{largest_byte});
    return To_Byte(Round_To(raw, noise_decimals));
  }
  // A sensor may fall with its input, or stand still beyond its range: its way back finds no byte there.
  const auto distance = [&](int raw) {
    const auto shown = Exact_Value(meaning, static_cast<std::uint8_t>(raw));
    return std::pair(std::fabs(shown.value_or(0) - value), std::abs(raw - from));
  };
  int nearest = 0;
  for (int raw = 1; raw <= largest_byte; ++raw) {
    if (distance(raw) < distance(nearest)) nearest = raw;
  }
  return static_cast<std::uint8_t>(nearest);
}

std::optional<double> Broken_Typing_Limit(const Table_Meaning& meaning, double value) {
  if (value > meaning.typed.max) return meaning.typed.max;
  if (value < meaning.typed.min) return meaning.typed.min;
  return {};
}

std::uint8_t Typed_To(const Table_Meaning& meaning, double value) {
  const double raw = meaning.form.Raw(value);
  return meaning.rule == Edit_Rule::volts ? To_Byte(raw) : byte_chk(raw);
}

}  // namespace kx
