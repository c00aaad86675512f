#pragma once

#include <cstdint>
#include <string>

#include "workspace/tables.h"

namespace kx {

/// How the bytes of a table read under the image's present flags: shown = (raw - before) x numerator /
/// denominator + after.
struct Value_Form {
  double before;
  double numerator;
  double denominator;
  double after;
  std::string_view mask;
  std::string_view unit;

  [[nodiscard]] constexpr double Shown(double raw) const {
    return (raw - before) * numerator / denominator + after;
  }
};

/// The form of a table's values. For the PWM RPM table it is the open loop's; see Shown_Text_Of.
[[nodiscard]] const Value_Form& Form_Of(Table table);

/// Text that the table shows for a raw byte: by its form or, for the PWM RPM table in closed loop, in the
/// boost sensor's unit and decimals (the byte is half of a 10-bit input). Empty when there is no such sensor.
[[nodiscard]] std::string Shown_Text_Of(Table table, std::uint8_t raw);

/// Heading of the value column.
[[nodiscard]] std::string Value_Heading(Table table);

/// Heading and text of the axis columns of a table; a load grid has two, the voltage and the sensor's value.
[[nodiscard]] std::vector<std::string> Axis_Headings(Table table);
[[nodiscard]] std::vector<std::string> Axis_Texts(Table table, int row);

}  // namespace kx
