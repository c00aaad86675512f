#pragma once

#include <QColor>

/// Colours behind the cells of a table.
namespace kx {

/// Colour of a value at @p share, 0 to 1, of a table's range, on light or on dark paper: from blue for the
/// smallest to orange for the largest, which all eyes tell apart, and in one direction of lightness.
[[nodiscard]] QColor Scale_Colour(double share, bool dark);

/// Contrast of two colours: 1 for the same, 21 for black on white; 4.5 is enough for small text.
[[nodiscard]] double Contrast(const QColor& one, const QColor& other);

/// @p ink when it is readable on @p paper, else black or white.
[[nodiscard]] QColor Readable_On(const QColor& paper, const QColor& ink);

}  // namespace kx
