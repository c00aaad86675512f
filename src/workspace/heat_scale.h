#pragma once

#include <algorithm>
#include <cmath>

namespace kx {

/// The range of numbers that a scale of colours stands for, 0 its low and 1 its high end.
struct Heat_Scale {
  double low = 0;
  double high = 1;
  bool logarithmic = false;  ///< both ends are above 0 then

  /// Place of @p value on the scale, held at its ends; a scale of one number has all in its middle.
  [[nodiscard]] double Share(double value) const {
    const double span = Bent(high) - Bent(low);
    return span > 0 ? std::clamp((Bent(value) - Bent(low)) / span, 0.0, 1.0) : 0.5;
  }

  /// The number at @p share, 0 to 1.
  [[nodiscard]] double Value(double share) const {
    const double bent = Bent(low) + share * (Bent(high) - Bent(low));
    return logarithmic ? std::exp(bent) : bent;
  }

 private:
  [[nodiscard]] double Bent(double value) const { return logarithmic ? std::log(value) : value; }
};

}  // namespace kx
