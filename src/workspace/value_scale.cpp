#include "workspace/value_scale.h"

#include <algorithm>
#include <cmath>

namespace kx {
namespace {

constexpr double wanted_marks = 6;

}  // namespace

double Nice_Step(double at_least) {
  const double power = std::pow(10.0, std::floor(std::log10(at_least)));
  for (const double factor : {1.0, 2.0, 5.0}) {
    if (factor * power >= at_least) return factor * power;
  }
  return 10 * power;
}

std::vector<double> Value_Scale::Marks() const {
  std::vector<double> marks;
  const int count = static_cast<int>(std::lround((high - low) / step));
  for (int i = 0; i <= count; ++i) marks.push_back((std::round(low / step) + i) * step);
  return marks;
}

Value_Scale Scale_Around(const std::vector<double>& values) {
  if (values.empty()) return {};
  const auto [least, greatest] = std::ranges::minmax(values);
  const double span = greatest > least ? greatest - least : std::max(1.0, std::fabs(greatest) / 10);
  const double step = Nice_Step(span / wanted_marks);
  const double low = std::floor(least / step) * step;
  const double high = std::ceil(greatest / step) * step;
  return {low, high > low ? high : low + step, step};
}

}  // namespace kx
