#pragma once

#include <span>
#include <vector>

/// A long line made short for painting.
namespace kx {

/// A place on the paper; x to the right, y as its axis runs. Units of the paper, mostly pixels.
struct Line_Point {
  double x = 0;
  double y = 0;
};

/// Where values lie on the paper: place = value x scale + shift.
struct Line_Map {
  double x_scale = 1;
  double x_shift = 0;
  double y_scale = 1;
  double y_shift = 0;
};

/// One unbroken stretch of a line: points @p first up to, without, @p end of the list that it comes with.
struct Line_Stroke {
  std::size_t first = 0;
  std::size_t end = 0;
};

struct Thin_Line {
  std::vector<Line_Point> points;
  std::vector<Line_Stroke> strokes;
};

/// The line through (@p x, @p y), as many of them as both have: of neighbours that fall into one column of
/// the paper only the least and the greatest stay, in their order, so a painted column looks as with all of
/// them. An empty value (NaN) in either breaks the line. Rows count in their order, so a line may run back.
/// Painters call it with @p line from the last time, whose room is used again.
void Thin_To_Columns(std::span<const double> x, std::span<const double> y, const Line_Map& map,
                     Thin_Line& line);

}  // namespace kx
