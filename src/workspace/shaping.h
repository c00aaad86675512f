#pragma once

#include <vector>

/// Shapes given to a run of table values, apart from any table. The first and the last value stay; fewer than
/// three have none between them.
namespace kx {

constexpr int fewest_to_shape = 3;

/// Where the values stand on their axis.
struct Axis_Points {
  std::vector<double> positions;  ///< as many as values
  double rounding = 0;            ///< to which the positions are rounded, in their unit
};

/// @p values with those between the ends put on the straight line through the ends. They stand at even
/// distances where the axis is even but for its rounding, and where it does not run strictly one way.
[[nodiscard]] std::vector<double> Straightened(const Axis_Points& axis, std::vector<double> values);

/// Each value between the ends becomes the mean of itself, taken twice, and its two neighbours, all as they
/// were before.
[[nodiscard]] std::vector<double> Smoothed(const std::vector<double>& values);

}  // namespace kx
