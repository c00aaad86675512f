#pragma once

#include <array>
#include <cstddef>
#include <vector>

#include "workspace/value_scale.h"

/// The arithmetic of a surface in perspective, apart from any painting. The surface stands in a box around
/// the origin: across -1..1, along -1..1, up -box_height..box_height. The eye looks at the origin.
namespace kx {

/// Where the user looks from.
struct Surface_View {
  double rotation = 35;   ///< degrees that the box is turned about its upright axis
  double elevation = 25;  ///< degrees of the eye above the floor, 0..90
  double zoom = 1;        ///< 1 shows the box whole at any rotation
};

inline constexpr double box_height = 0.62;
inline constexpr double least_zoom = 0.5;
inline constexpr double greatest_zoom = 8;
inline constexpr double turn_step = 5;  ///< degrees a tick of the turning surface

/// A point of the box.
struct Space_Point {
  double across = 0;  ///< -1..1
  double along = 0;   ///< -1..1
  double up = 0;      ///< -box_height..box_height
};

/// A point on the screen, pixels from the upper left corner.
struct Screen_Point {
  double x = 0;
  double y = 0;
};

/// The view with rotation brought to 0..360, elevation and zoom inside their ranges.
[[nodiscard]] Surface_View Inside_Limits(Surface_View view);

/// Turned by @p degrees.
[[nodiscard]] Surface_View Turned(Surface_View view, double degrees);

/// One view onto one rectangle.
class Projection {
 public:
  /// A rectangle in pixels at @p left, @p top.
  Projection(const Surface_View& view, double left, double top, double width, double height);

  [[nodiscard]] Screen_Point Of(const Space_Point& point) const;

  /// Where the eye stands, in the box's own directions.
  [[nodiscard]] const Space_Point& Eye() const { return eye_; }

 private:
  double cos_rotation_;
  double sin_rotation_;
  double cos_elevation_;
  double sin_elevation_;
  double scale_ = 1;     ///< pixels a unit at the origin
  double centre_x_ = 0;  ///< screen place of the origin
  double centre_y_ = 0;
  Space_Point eye_;
};

/// Place of entry @p entry, from 0, of @p count on an axis -1..1; a single entry stands in the middle.
[[nodiscard]] double Axis_Place(std::size_t entry, std::size_t count);

/// Cells of an axis of @p count cells over -1..1, from the one farthest from the eye at @p eye to the
/// nearest. A cell can only be hidden by cells nearer on both axes, so going through both in this order
/// paints a surface back to front.
[[nodiscard]] std::vector<std::size_t> Far_To_Near(std::size_t count, double eye);

/// A surface on the screen: its points, and its cells in the order in which they are painted.
struct Surface_Shape {
  using Cell = std::array<std::size_t, 4>;  ///< indexes of its four points, going round

  std::vector<Screen_Point> points;  ///< across x along, all points of the first place across first
  std::vector<Cell> cells;           ///< back to front; none when an axis has a single entry
};

/// The surface of @p values, @p across x @p along of them in the order of the points.
[[nodiscard]] Surface_Shape Shape_Of(const std::vector<double>& values, std::size_t across, std::size_t along,
                                     const Value_Scale& scale, const Projection& projection);

/// Index of the point that the user means at @p at: the nearest corner of the foremost cell there or, beside
/// the surface, the nearest point within @p reach pixels; points.size() when there is none.
[[nodiscard]] std::size_t Point_Under(const Surface_Shape& shape, const Screen_Point& at, double reach);

}  // namespace kx
