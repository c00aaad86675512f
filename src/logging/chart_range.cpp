#include "logging/chart_range.h"

#include <algorithm>
#include <utility>

#include "settings/numbers.h"

namespace kx {
namespace {

/// Row next to @p row, ties to even; a place far outside is brought near before it becomes a whole number.
int Row_At(double row, int rows) {
  return static_cast<int>(Round_Whole(std::clamp(row, 0.0, static_cast<double>(rows) + 1)));
}

Chart_Range With_Ends(Chart_Range before, double first, double last, int rows) {
  const Chart_Range wanted =
      Limited({std::max(Row_At(first, rows), 1), std::min(Row_At(last, rows), rows)}, rows);
  return wanted.first < wanted.last ? wanted : Limited(before, rows);
}

int Quarter(Chart_Range range) { return std::max(1, static_cast<int>(Round_Whole(range.Width() / 4.0))); }

double Row_Of_Place(Chart_Range range, double place) {
  return range.first + std::clamp(place, 0.0, 1.0) * (range.last - range.first);
}

}  // namespace

Chart_Range Limited(Chart_Range range, int rows) {
  return {std::clamp(range.first, 1, std::max(rows, 1)), std::clamp(range.last, 0, std::max(rows, 0))};
}

Chart_Range Zoomed_In(Chart_Range range, int rows) {
  const double quarter = range.Width() / 4.0;
  return With_Ends(range, range.first + quarter, range.last - quarter, rows);
}

Chart_Range Zoomed_Out(Chart_Range range, int rows) {
  const double quarter = range.Width() / 4.0;
  return With_Ends(range, range.first - quarter, range.last + quarter, rows);
}

Chart_Range Zoomed_All(int rows) { return {1, std::max(rows, 0)}; }

Chart_Range Moved(Chart_Range range, int by, int rows) {
  range = Limited(range, rows);
  if (range.last < range.first) return range;
  const int step = std::clamp(by, 1 - range.first, rows - range.last);
  return {range.first + step, range.last + step};
}

Chart_Range Scrolled_Left(Chart_Range range, int rows) { return Moved(range, -Quarter(range), rows); }
Chart_Range Scrolled_Right(Chart_Range range, int rows) { return Moved(range, Quarter(range), rows); }

Chart_Range Dragged(Chart_Range range, double from, double to, int rows) {
  if (from > to) std::swap(from, to);
  return With_Ends(range, Row_Of_Place(range, from), Row_Of_Place(range, to), rows);
}

Chart_Range Zoomed_About(Chart_Range range, double at, double factor, int rows) {
  const double fixed = Row_Of_Place(range, at);
  const double width = (range.last - range.first) * factor;
  const double first = fixed - width * std::clamp(at, 0.0, 1.0);
  return With_Ends(range, first, first + width, rows);
}

}  // namespace kx
