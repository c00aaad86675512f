#include "workspace/surface_projection.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <numeric>

namespace kx {
namespace {

constexpr double eye_distance = 5.5;  ///< from the origin

/// Radius of the upright cylinder that the box stays in while it turns.
constexpr double turning_radius = std::numbers::sqrt2;

double Radians(double degrees) { return degrees * std::numbers::pi / 180; }

/// How much larger than at the origin a thing looks that is @p away from it on the line of sight.
double Foreshortening(double away) { return eye_distance / (eye_distance + away); }

double Distance(const Screen_Point& a, const Screen_Point& b) { return std::hypot(a.x - b.x, a.y - b.y); }

/// By how often a line from @p at to the right crosses the cell's edges: a cell on edge may cross itself.
bool Holds(const Surface_Shape& shape, const Surface_Shape::Cell& cell, const Screen_Point& at) {
  bool inside = false;
  for (std::size_t i = 0; i < cell.size(); ++i) {
    const Screen_Point& a = shape.points[cell[i]];
    const Screen_Point& b = shape.points[cell[(i + 1) % cell.size()]];
    if ((a.y > at.y) == (b.y > at.y)) continue;
    if (at.x < a.x + (b.x - a.x) * (at.y - a.y) / (b.y - a.y)) inside = !inside;
  }
  return inside;
}

}  // namespace

Surface_View Inside_Limits(Surface_View view) {
  view.rotation = std::fmod(view.rotation, 360.0);
  if (view.rotation < 0) view.rotation += 360;
  view.elevation = std::clamp(view.elevation, 0.0, 90.0);
  view.zoom = std::clamp(view.zoom, least_zoom, greatest_zoom);
  return view;
}

Surface_View Turned(Surface_View view, double degrees) {
  view.rotation += degrees;
  return Inside_Limits(view);
}

/// The scale makes the turning cylinder fill the rectangle, so that the picture keeps its size while it
/// turns.
Projection::Projection(const Surface_View& view, double left, double top, double width, double height)
    : cos_rotation_(std::cos(Radians(view.rotation))),
      sin_rotation_(std::sin(Radians(view.rotation))),
      cos_elevation_(std::cos(Radians(view.elevation))),
      sin_elevation_(std::sin(Radians(view.elevation))),
      eye_{-eye_distance * cos_elevation_ * sin_rotation_, -eye_distance * cos_elevation_ * cos_rotation_,
           eye_distance * sin_elevation_} {
  double highest = 0;
  double lowest = 0;
  for (const double along : {-turning_radius, turning_radius}) {
    for (const double up : {-box_height, box_height}) {
      const double height_seen = (up * cos_elevation_ + along * sin_elevation_) *
                                 Foreshortening(along * cos_elevation_ - up * sin_elevation_);
      highest = std::max(highest, height_seen);
      lowest = std::min(lowest, height_seen);
    }
  }
  const double nearest = eye_distance - box_height * sin_elevation_;
  const double widest = turning_radius * eye_distance /
                        std::sqrt(nearest * nearest - std::pow(turning_radius * cos_elevation_, 2));
  scale_ = view.zoom * std::min(width / (2 * widest), height / (highest - lowest));
  centre_x_ = left + width / 2;
  centre_y_ = top + height / 2 + scale_ * (highest + lowest) / 2;
}

Screen_Point Projection::Of(const Space_Point& point) const {
  const double right = point.across * cos_rotation_ - point.along * sin_rotation_;
  const double behind = point.across * sin_rotation_ + point.along * cos_rotation_;
  const double up = point.up * cos_elevation_ + behind * sin_elevation_;
  const double pixels = scale_ * Foreshortening(behind * cos_elevation_ - point.up * sin_elevation_);
  return {centre_x_ + pixels * right, centre_y_ - pixels * up};
}

double Axis_Place(std::size_t entry, std::size_t count) {
  return count < 2 ? 0 : 2 * static_cast<double>(entry) / static_cast<double>(count - 1) - 1;
}

std::vector<std::size_t> Far_To_Near(std::size_t count, double eye) {
  std::vector<std::size_t> cells(count);
  std::iota(cells.begin(), cells.end(), std::size_t{0});
  const auto distance = [count, eye](std::size_t cell) {
    return std::fabs((2 * static_cast<double>(cell) + 1) / static_cast<double>(count) - 1 - eye);
  };
  std::ranges::stable_sort(cells, std::greater(), distance);
  return cells;
}

Surface_Shape Shape_Of(const std::vector<double>& values, std::size_t across, std::size_t along,
                       const Value_Scale& scale, const Projection& projection) {
  Surface_Shape shape;
  shape.points.reserve(values.size());
  for (std::size_t i = 0; i < values.size(); ++i) {
    shape.points.push_back(projection.Of({Axis_Place(i / along, across), Axis_Place(i % along, along),
                                          box_height * (2 * scale.Share(values[i]) - 1)}));
  }
  if (across < 2 || along < 2) return shape;
  const auto inner = Far_To_Near(along - 1, projection.Eye().along);
  for (const std::size_t a : Far_To_Near(across - 1, projection.Eye().across)) {
    for (const std::size_t b : inner) {
      const std::size_t corner = a * along + b;
      shape.cells.push_back({corner, corner + along, corner + along + 1, corner + 1});
    }
  }
  return shape;
}

std::size_t Point_Under(const Surface_Shape& shape, const Screen_Point& at, double reach) {
  for (auto cell = shape.cells.rbegin(); cell != shape.cells.rend(); ++cell) {
    if (Holds(shape, *cell, at))
      return *std::ranges::min_element(
          *cell, {}, [&](std::size_t corner) { return Distance(shape.points[corner], at); });
  }
  std::size_t nearest = shape.points.size();
  for (std::size_t i = 0; i < shape.points.size(); ++i) {
    const double distance = Distance(shape.points[i], at);
    if (distance > reach) continue;
    reach = distance;
    nearest = i;
  }
  return nearest;
}

}  // namespace kx
