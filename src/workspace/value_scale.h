#pragma once

#include <vector>

/// Round numbers for the axes of charts.
namespace kx {

/// The smallest of 1, 2 and 5 times a power of ten that is @p at_least (above 0).
[[nodiscard]] double Nice_Step(double at_least);

/// A value axis: marks from @p low to @p high every @p step.
struct Value_Scale {
  double low = 0;
  double high = 1;
  double step = 1;

  [[nodiscard]] std::vector<double> Marks() const;

  /// Place of @p value on the axis: 0 at its low end, 1 at its high end.
  [[nodiscard]] double Share(double value) const { return (value - low) / (high - low); }
};

/// Scale with round marks around all @p values, at most about six. Values that are all one get a scale around
/// them; no values give 0..1.
[[nodiscard]] Value_Scale Scale_Around(const std::vector<double>& values);

}  // namespace kx
