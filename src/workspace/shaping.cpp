#include "workspace/shaping.h"

#include <algorithm>
#include <cmath>
#include <functional>

namespace kx {
namespace {

bool Runs_One_Way(const std::vector<double>& positions) {
  return std::ranges::adjacent_find(positions, std::greater_equal<>()) == positions.end() ||
         std::ranges::adjacent_find(positions, std::less_equal<>()) == positions.end();
}

/// Of three rounded positions, the ends and the one between, each can be half the rounding off.
bool Is_Even(const Axis_Points& axis) {
  const std::vector<double>& at = axis.positions;
  const double distance = (at.back() - at.front()) / static_cast<double>(at.size() - 1);
  for (std::size_t i = 1; i < at.size(); ++i) {
    if (std::fabs(at[i] - at.front() - distance * static_cast<double>(i)) > axis.rounding) return false;
  }
  return true;
}

/// Where point @p i of @p axis stands between its first and its last one, 0 to 1.
double Share(const Axis_Points& axis, std::size_t i) {
  const std::vector<double>& at = axis.positions;
  const double evenly = static_cast<double>(i) / static_cast<double>(at.size() - 1);
  if (!Runs_One_Way(at) || Is_Even(axis)) return evenly;
  return (at[i] - at.front()) / (at.back() - at.front());
}

}  // namespace

std::vector<double> Straightened(const Axis_Points& axis, std::vector<double> values) {
  if (values.size() < fewest_to_shape) return values;
  const std::size_t last = values.size() - 1;
  for (std::size_t i = 1; i < last; ++i) values[i] = values[0] + (values[last] - values[0]) * Share(axis, i);
  return values;
}

std::vector<double> Smoothed(const std::vector<double>& values) {
  std::vector<double> smooth = values;
  for (std::size_t i = 1; i + 1 < values.size(); ++i) {
    smooth[i] = (values[i - 1] + 2 * values[i] + values[i + 1]) / 4;
  }
  return smooth;
}

}  // namespace kx
