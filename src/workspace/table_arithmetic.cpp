#include "workspace/table_arithmetic.h"

#include "sensors/conversion.h"
#include "settings/numbers.h"

namespace kx {
namespace {

constexpr double counts_of_a_range = 255;

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

}  // namespace

double Moved_Value(double shown, double step, int steps) { return shown + step * steps; }

double Scaled_Value(double shown, double percent) { return percent * shown / 100; }

std::uint8_t Stepped(const Table_Meaning& meaning, const Cell& cell, int sign) {
  switch (meaning.rule) {
    case Edit_Rule::ignition_load_counts:
    case Edit_Rule::ignition_rpm_counts:
      return To_Byte(cell.shown * meaning.form.Gain() + sign + meaning.form.before);
    case Edit_Rule::ignition_load_units:
    case Edit_Rule::duty:
      return To_Byte(Raw_From_Shown(meaning, Moved_Value(cell.shown, 1, sign)));
    case Edit_Rule::ignition_rpm_share: {
      const double share = (meaning.limits.max - meaning.limits.min) / counts_of_a_range;
      return To_Byte(Raw_From_Shown(meaning, Moved_Value(cell.shown, share, sign)));
    }
    default:
      return To_Byte(cell.raw + sign);
  }
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
