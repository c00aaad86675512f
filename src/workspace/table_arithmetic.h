#pragma once

#include <cstdint>
#include <optional>

/// The arithmetic of the table panel and of typing, apart from any table on show. Shown values are the
/// numbers that the grid's cells show, already rounded for display: where a rule starts from the shown value,
/// so does its rounding.
namespace kx {

/// What a table's bytes mean to an edit.
enum class Edit_Rule {
  ignition_load_degrees,
  ignition_load_percent,
  ignition_rpm_degrees,
  ignition_rpm_percent,
  fuel_time,  ///< fuel load in ms
  fuel_duty,  ///< fuel load in % duty
  fuel_rpm,
  volts,
  pwm,          ///< percent duty
  boost_target  ///< PWM RPM table in closed loop, in the boost sensor's unit
};

/// An edit rule with what it needs besides.
struct Edit_Form {
  Edit_Rule rule;
  double max = 0;  ///< limits of ignition and fuel load tables, in the shown unit
  double min = 0;
  double gain = 0;  ///< raw = shown x gain + offset1 + offset2, ignition tables only
  double offset1 = 0;
  double offset2 = 0;
  int boost_sensor = -1;
};

/// One cell before an edit.
struct Cell {
  std::uint8_t raw;
  double shown;
};

/// One unit up (@p sign 1) or down (-1). Throws Failure "Overflow" when the result is no byte.
[[nodiscard]] std::uint8_t Stepped(const Edit_Form& form, const Cell& cell, int sign);

/// Moved by @p counts, negative for flatter: raw counts on the cell's own scale, percent on the PWM tables.
[[nodiscard]] std::uint8_t Sloped(const Edit_Form& form, const Cell& cell, int counts);

/// @p value clipped to what "Set value" takes.
[[nodiscard]] double Clipped_To_Set(const Edit_Form& form, double value);

/// Byte of a clipped value for "Set value".
[[nodiscard]] std::uint8_t Set_To(const Edit_Form& form, double value);

/// The cell scaled to @p percent.
[[nodiscard]] std::uint8_t Scaled(const Edit_Form& form, const Cell& cell, double percent);

/// The limit that a typed @p value breaks, if it does.
[[nodiscard]] std::optional<double> Broken_Typing_Limit(const Edit_Form& form, double value);

/// Byte of a typed value inside its limits. Typing knows no closed loop: it keeps the percent scaling.
[[nodiscard]] std::uint8_t Typed_To(const Edit_Form& form, double value);

}  // namespace kx
