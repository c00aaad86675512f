#pragma once

#include <algorithm>
#include <cmath>

namespace kx {

/// An axis whose entries lie at even distances, the first at 0: raw counts of an analog input, or RPM.
struct Axis_Spacing {
  int entries = 1;
  double step = 1;  ///< from one entry to the next, above 0

  /// Entry that @p place lies at, 1 to entries with fractions between two of them. What is beyond an end
  /// counts as at that end, as the box has it.
  [[nodiscard]] double At(double place) const {
    return std::clamp(place / step + 1, 1.0, static_cast<double>(entries));
  }

  /// Nearest entry; half way between two it is the higher one.
  [[nodiscard]] int Nearest(double place) const { return static_cast<int>(std::floor(At(place) + 0.5)); }

  friend bool operator==(const Axis_Spacing&, const Axis_Spacing&) = default;
};

/// Counts of an analog input, 0 to 255, between two entries of a load table.
inline constexpr double counts_a_load_entry = 8;

}  // namespace kx
