#pragma once

#include <cstdint>
#include <optional>

#include "workspace/table_meaning.h"

/// The arithmetic of the table panel and of typing, apart from any table on show. Shown values are the
/// numbers that the grid's cells show, already rounded for display: where a rule starts from the shown value,
/// so does its rounding. Any grid of values with a Table_Meaning can be edited by these.
namespace kx {

/// One cell before an edit.
struct Cell {
  std::uint8_t raw;
  double shown;
};

/// @p shown moved by @p steps of @p step, down when negative. The rule of "+", "-" and the slopes for values
/// that are no bytes; of a table of bytes the rules below make a byte of it.
[[nodiscard]] double Moved_Value(double shown, double step, int steps);

/// @p shown scaled to @p percent.
[[nodiscard]] double Scaled_Value(double shown, double percent);

/// One unit up (@p sign 1) or down (-1). Throws Failure "Overflow" when the
/// result is no byte.
[[nodiscard]] std::uint8_t Stepped(const Table_Meaning& meaning, const Cell& cell, int sign);

/// The cell @p steps units up, or down when negative, held at the ends of the scale. Counted from the cell as
/// it is: a step of a rule that starts from the rounded number on show may be too small to move a byte, many
/// of them are not. No step leaves the byte as it is.
[[nodiscard]] std::uint8_t Moved(const Table_Meaning& meaning, const Cell& cell, int steps);

/// Moved by @p counts, negative for flatter: raw counts on the cell's own scale, percent on the PWM tables.
/// Throws Failure "Overflow" when a boost target's result is no byte.
[[nodiscard]] std::uint8_t Sloped(const Table_Meaning& meaning, const Cell& cell, int counts);

/// @p value clipped to what "Set value" takes.
[[nodiscard]] double Clipped_To_Set(const Table_Meaning& meaning, double value);

/// Byte of a clipped value for "Set value".
[[nodiscard]] std::uint8_t Set_To(const Table_Meaning& meaning, double value);

/// The cell scaled to @p percent.
[[nodiscard]] std::uint8_t Scaled(const Table_Meaning& meaning, const Cell& cell, double percent);

/// The number that the byte stands for, before it is rounded to be shown; nothing without the sensor that it
/// takes.
[[nodiscard]] std::optional<double> Exact_Value(const Table_Meaning& meaning, std::uint8_t raw);

/// Byte whose number comes nearest to @p value, for numbers that are worked out and not typed; the one next
/// to
/// @p from where a sensor stands still and several are as near.
[[nodiscard]] std::uint8_t Nearest_Byte(const Table_Meaning& meaning, double value, std::uint8_t from);

/// The limit that a typed @p value breaks, if it does.
[[nodiscard]] std::optional<double> Broken_Typing_Limit(const Table_Meaning& meaning, double value);

/// Byte of a typed value inside its limits. Typing knows no closed loop: it keeps the percent scaling. Throws
/// Failure "Overflow" for volts below 0.
[[nodiscard]] std::uint8_t Typed_To(const Table_Meaning& meaning, double value);

}  // namespace kx
