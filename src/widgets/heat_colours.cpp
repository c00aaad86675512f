#include "widgets/heat_colours.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "widgets/cell_colours.h"

namespace kx {
namespace {

int Between(int from, int to, double share) {
  return static_cast<int>(std::lround(from + (to - from) * share));
}

}  // namespace

QColor Heat_Colour(double share) {
  static const std::array stops{QColor(68, 1, 84), QColor(59, 82, 139), QColor(33, 145, 140),
                                QColor(94, 201, 98), QColor(253, 231, 37)};
  const double place = std::clamp(share, 0.0, 1.0) * (stops.size() - 1);
  const auto below = std::min(static_cast<std::size_t>(place), stops.size() - 2);
  const QColor& from = stops.at(below);
  const QColor& to = stops.at(below + 1);
  const double part = place - static_cast<double>(below);
  return {Between(from.red(), to.red(), part), Between(from.green(), to.green(), part),
          Between(from.blue(), to.blue(), part)};
}

QColor Ink_On(const QColor& colour) {
  const QColor black(Qt::black);
  const QColor white(Qt::white);
  return Contrast(black, colour) >= Contrast(white, colour) ? black : white;
}

}  // namespace kx
