#pragma once

namespace kx {

constexpr double volts_a_curve_entry = 0.3125;  ///< input step between two entries of the Analog 2 curve

/// Counts of entry @p entry (1 to 17) of a straight curve: at @p gain_percent 100 the 16 steps span 255
/// counts above @p offset_counts. Clipped to 0..255, not rounded.
[[nodiscard]] double Generator_Counts(int entry, double gain_percent, double offset_counts);

}  // namespace kx
