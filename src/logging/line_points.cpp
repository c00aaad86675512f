#include "logging/line_points.h"

#include <algorithm>
#include <cmath>

namespace kx {
namespace {

/// Far outside any paper, and still in a painter's whole numbers.
constexpr double far_away = 1e6;

/// The neighbours in one column of the paper so far.
class Column {
 public:
  explicit Column(Thin_Line& line) : line_(line) {}

  void Add(const Line_Point& point) {
    const double column = std::floor(point.x);
    if (filled_ && column == column_) {
      Widen(point);
      return;
    }
    Flush();
    filled_ = true;
    column_ = column;
    first_ = second_ = point;
  }

  /// Ends the stroke.
  void Break() {
    Flush();
    if (line_.points.size() > begin_) line_.strokes.push_back({begin_, line_.points.size()});
    begin_ = line_.points.size();
  }

 private:
  /// The later of the two extremes is the second, whichever it is.
  void Widen(const Line_Point& point) {
    const bool rising = second_.y >= first_.y;
    const Line_Point least = rising ? first_ : second_;
    const Line_Point greatest = rising ? second_ : first_;
    if (point.y < least.y) {
      first_ = greatest;
      second_ = point;
    } else if (point.y > greatest.y) {
      first_ = least;
      second_ = point;
    }
  }

  void Flush() {
    if (!filled_) return;
    line_.points.push_back(first_);
    if (second_.y != first_.y) line_.points.push_back(second_);
    filled_ = false;
  }

  Thin_Line& line_;
  bool filled_ = false;
  double column_ = 0;
  Line_Point first_;
  Line_Point second_;
  std::size_t begin_ = 0;
};

}  // namespace

void Thin_To_Columns(std::span<const double> x, std::span<const double> y, const Line_Map& map,
                     Thin_Line& line) {
  line.points.clear();
  line.strokes.clear();
  Column column(line);
  for (std::size_t i = 0; i < std::min(x.size(), y.size()); ++i) {
    const double right = x[i] * map.x_scale + map.x_shift;
    const double up = y[i] * map.y_scale + map.y_shift;
    if (std::isnan(right) || std::isnan(up)) {
      column.Break();
    } else {
      column.Add({std::clamp(right, -far_away, far_away), std::clamp(up, -far_away, far_away)});
    }
  }
  column.Break();
}

}  // namespace kx
