#pragma once

#include <array>
#include <span>
#include <string>

#include "workspace/differences.h"

/// The list of differences as text: what the window "Compare" shows, copies, exports and prints.
namespace kx {

inline constexpr int difference_columns = 6;
using Difference_Cells = std::array<std::string, difference_columns>;

/// Headings: place, the reference's name, here, change, bytes, note.
[[nodiscard]] Difference_Cells Difference_Headings();

/// Cells of one difference. The note tells what a write to the box leaves as it is, and what means something
/// else in the reference.
[[nodiscard]] Difference_Cells Difference_Row(const Difference& difference);

/// What is compared, how much of it differs, and with the box as reference how many bytes "Write" would send.
[[nodiscard]] std::string Compare_Title();

/// The same, short, for the main form's status line; empty without a reference.
[[nodiscard]] std::string Compare_Status();

/// Headings and rows, columns parted by TAB, lines ended by CR LF.
[[nodiscard]] std::string Difference_Lines(std::span<const Difference> rows);

/// The same as a csv file: parted by commas, quotes where they are needed, Windows-1252.
[[nodiscard]] std::string Difference_Csv(std::span<const Difference> rows);

}  // namespace kx
