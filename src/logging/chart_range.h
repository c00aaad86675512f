#pragma once

/// The stretch of a log that the chart shows, and how the user moves it.
namespace kx {

/// Rows from 1; first is below last, but for a log of one row or none.
struct Chart_Range {
  int first = 1;
  int last = 0;
  [[nodiscard]] int Width() const { return last - first + 1; }
  friend bool operator==(const Chart_Range&, const Chart_Range&) = default;
};

/// @p range within 1 to @p rows. Every function below gives such a range back, and @p range itself where its
/// own result would have no width.
[[nodiscard]] Chart_Range Limited(Chart_Range range, int rows);

/// A quarter of the width off, or on, each end.
[[nodiscard]] Chart_Range Zoomed_In(Chart_Range range, int rows);
[[nodiscard]] Chart_Range Zoomed_Out(Chart_Range range, int rows);
[[nodiscard]] Chart_Range Zoomed_All(int rows);

/// Moved by @p by rows, below 0 to the left, or by as much as there is room for.
[[nodiscard]] Chart_Range Moved(Chart_Range range, int by, int rows);

/// Moved by a quarter of the width, by one row at least.
[[nodiscard]] Chart_Range Scrolled_Left(Chart_Range range, int rows);
[[nodiscard]] Chart_Range Scrolled_Right(Chart_Range range, int rows);

/// The stretch between two places of the chart's inner width, each 0 at its left end to 1 at its right end,
/// in any order.
[[nodiscard]] Chart_Range Dragged(Chart_Range range, double from, double to, int rows);

/// Width times @p factor (below 1 zooms in), the row at place @p at, 0 to 1, staying where it is.
[[nodiscard]] Chart_Range Zoomed_About(Chart_Range range, double at, double factor, int rows);

}  // namespace kx
