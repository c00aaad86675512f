#pragma once

#include <cstdint>
#include <limits>
#include <string>
#include <string_view>

#include "settings/image.h"
#include "workspace/tables.h"

/// What the bytes of a table mean: how a byte reads, within which limits it is edited and how an edit works.
/// Decided here once; grids, panel, typing, limits and every other view of a table's values ask for it each
/// time, because a flag elsewhere in the image changes it.
namespace kx {

constexpr double counts_a_volt = 51;        ///< of an analog byte
constexpr double counts_a_percent = 1.28;   ///< of a duty cycle, and of the shares that are stored like one
constexpr double sensor_counts_a_byte = 2;  ///< the byte of a boost target is half of a 10-bit input
constexpr double signed_zero = 128;         ///< raw byte of 0 where a byte reads as a signed number

/// A range in the shown unit; an end that does not limit is infinite.
struct Value_Range {
  double min = -std::numeric_limits<double>::infinity();
  double max = std::numeric_limits<double>::infinity();

  [[nodiscard]] constexpr double Clipped(double value) const {
    return value < min ? min : value > max ? max : value;
  }
  bool operator==(const Value_Range&) const = default;
};

/// How a byte reads: shown = (raw - before) x numerator / denominator + after.
struct Value_Form {
  double before;
  double numerator;
  double denominator;
  double after;
  std::string_view mask;  ///< number format of a cell
  std::string_view unit;

  [[nodiscard]] constexpr double Shown(double raw) const {
    return (raw - before) * numerator / denominator + after;
  }

  /// Counts a shown unit.
  [[nodiscard]] constexpr double Gain() const { return denominator / numerator; }

  /// The inverse of Shown, not yet a byte.
  [[nodiscard]] constexpr double Raw(double shown) const {
    return (shown - after) * denominator / numerator + before;
  }
  bool operator==(const Value_Form&) const = default;
};

/// How the operations of the table panel and typing work on a byte. They differ in what a step is, and in
/// whether they start from the byte or from the number that the cell shows, rounded as it is.
enum class Edit_Rule {
  ignition_load_counts,  ///< a step is one count, from the shown value
  ignition_load_units,   ///< a step is one shown unit
  ignition_rpm_counts,   ///< a step is one count, from the shown value; scales around the shown 0
  ignition_rpm_share,    ///< a step is a 255th of the range; scales around the shown 0
  fuel,                  ///< a step is one count of the byte; scales around the shown 0
  counts,                ///< a step is one count of the byte; scales the byte
  volts,                 ///< like counts, and rounds to the nearest count
  duty,                  ///< a step is one percent, from the shown value
  boost_target           ///< in the boost sensor's unit; typing keeps the duty's percent
};

struct Table_Meaning {
  Edit_Rule rule;
  Value_Form form;
  Value_Range limits;      ///< what the byte reaches, as minText and maxText show it
  Value_Range typed;       ///< what typing into a cell takes
  Value_Range set;         ///< what "Set value" takes
  bool by_sensor = false;  ///< the byte is half of a sensor's 10-bit input
  int sensor = -1;         ///< number of that sensor; -1 and 0 are none
  bool operator==(const Table_Meaning&) const = default;
};

/// The meanings that there are. Which of them holds is decided by Meaning_Of.
namespace meaning {

/// @p gain counts are one unit, and raw @p zero reads 0.
constexpr Value_Form By_Gain(double gain, double zero, std::string_view mask, std::string_view unit) {
  return {zero, 1, gain, 0, mask, unit};
}

constexpr Value_Range At_Most(double max) { return {.max = max}; }

/// @p limits hold for everything, be it typed or set.
constexpr Table_Meaning Within(Value_Range limits, Edit_Rule rule, Value_Form form) {
  return {rule, form, limits, limits, limits};
}

/// The table runs from 0 to @p max; typing and "Set value" are held below its end only.
constexpr Table_Meaning Up_To(double max, Edit_Rule rule, Value_Form form) {
  return {rule, form, {0, max}, At_Most(max), At_Most(max)};
}

constexpr Table_Meaning Volts(std::string_view unit) {
  return Up_To(5, Edit_Rule::volts, By_Gain(counts_a_volt, 0, "0.00", unit));
}

using enum Edit_Rule;
inline constexpr auto ignition_load_degrees =
    Within({0, 25.5}, ignition_load_counts, By_Gain(10, 0, "0.0", "Deg"));
inline constexpr auto ignition_load_percent =
    Within({0, 199}, ignition_load_units, By_Gain(counts_a_percent, 0, "00", "%"));
inline constexpr auto ignition_rpm_degrees =
    Within({-25.6, 25.4}, ignition_rpm_counts, By_Gain(5, signed_zero, "0.0", "Deg"));
inline constexpr auto ignition_rpm_degrees_fine =
    Within({-12.8, 12.7}, ignition_rpm_counts, By_Gain(10, signed_zero, "0.0", "Deg"));
inline constexpr auto ignition_rpm_percent =
    Within({-200, 198}, ignition_rpm_share, By_Gain(0.64, signed_zero, "00", "%"));
inline constexpr auto ignition_rpm_percent_fine =
    Within({-100, 99}, ignition_rpm_share, By_Gain(counts_a_percent, signed_zero, "00", "%"));
inline constexpr auto fuel_load_time = Within({-25.6, 25.4}, fuel, {0, 1, 5, -25.6, "0.0", "ms"});
inline constexpr Table_Meaning fuel_load_duty{
    counts, By_Gain(2.55, 0, "0.0", "%"), {0, 100}, At_Most(100), {0, 100}};
inline constexpr Table_Meaning fuel_rpm{
    fuel, {0, 1.5625, 1, -200, "00", "%"}, {-200, 198}, {-200, 198}, {-200, 199}};
inline constexpr auto analog_limit = Volts("limit [V]");
inline constexpr auto analog_curve = Volts("out [V]");
inline constexpr auto maf_output = Volts("MAF[V]");
inline constexpr auto maf_limit = Volts("MAF-lim [V]");
inline constexpr auto pwm_duty = Up_To(199, duty, By_Gain(counts_a_percent, 0, "00", "%"));

/// The PWM RPM table in closed loop on @p sensor. Its limits are those of the sensor's range, 0 without one.
[[nodiscard]] Table_Meaning Boost_Target(int sensor);

}  // namespace meaning

/// What the bytes of @p table mean under the flags of @p image.
[[nodiscard]] Table_Meaning Meaning_Of(Table table, const Byte_Image& image = CardByte);

/// Text of a raw byte, as a cell shows it; empty without the sensor that it takes.
[[nodiscard]] std::string Shown_Text_Of(const Table_Meaning& meaning, std::uint8_t raw);

/// Unit of the shown value, as the heading of the value column says it.
[[nodiscard]] std::string Unit_Of(const Table_Meaning& meaning);

}  // namespace kx
