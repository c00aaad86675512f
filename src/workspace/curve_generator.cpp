#include "workspace/curve_generator.h"

#include <algorithm>

namespace kx {
namespace {

constexpr double counts_a_two_entries = 31.875;

}  // namespace

double Generator_Counts(int entry, double gain_percent, double offset_counts) {
  const double counts = (entry - 1) * (gain_percent / 100) * counts_a_two_entries / 2 + offset_counts;
  return std::clamp(counts, 0.0, 255.0);
}

}  // namespace kx
