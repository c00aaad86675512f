#include "widgets/cell_colours.h"

#include <algorithm>
#include <cmath>

namespace kx {
namespace {

constexpr double enough_contrast = 4.5;

/// Part of a colour's lightness as the eye takes it, from 0 to 1 of a screen's channel.
double Linear(double channel) {
  return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}

double Luminance(const QColor& colour) {
  return 0.2126 * Linear(colour.redF()) + 0.7152 * Linear(colour.greenF()) + 0.0722 * Linear(colour.blueF());
}

QColor Between(const QColor& low, const QColor& high, double share) {
  const auto mixed = [share](int one, int other) {
    return static_cast<int>(std::lround(one + (other - one) * share));
  };
  return {mixed(low.red(), high.red()), mixed(low.green(), high.green()), mixed(low.blue(), high.blue())};
}

}  // namespace

QColor Scale_Colour(double share, bool dark) {
  const QColor low = dark ? QColor(22, 46, 88) : QColor(208, 229, 250);
  const QColor high = dark ? QColor(136, 80, 8) : QColor(247, 164, 66);
  return Between(low, high, std::clamp(share, 0.0, 1.0));
}

double Contrast(const QColor& one, const QColor& other) {
  const double lighter = std::max(Luminance(one), Luminance(other));
  const double darker = std::min(Luminance(one), Luminance(other));
  return (lighter + 0.05) / (darker + 0.05);
}

QColor Readable_On(const QColor& paper, const QColor& ink) {
  if (Contrast(paper, ink) >= enough_contrast) return ink;
  return Contrast(paper, Qt::black) >= Contrast(paper, Qt::white) ? QColor(Qt::black) : QColor(Qt::white);
}

}  // namespace kx
