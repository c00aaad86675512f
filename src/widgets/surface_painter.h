#pragma once

#include <QPainter>
#include <QPalette>
#include <vector>

#include "workspace/map_data.h"
#include "workspace/surface_projection.h"

namespace kx {

/// A text of the axes and where it stands.
struct Painted_Label {
  QRectF place;
  QString text;
};

/// Paints one surface with its box: walls behind it, the cells back to front, the axes in front. RPM runs
/// across the box, load along it. There is at least one point.
class Surface_Painter {
 public:
  /// Labels stay inside @p picture, which is free of anything else.
  Surface_Painter(QPainter& painter, const QPalette& palette, const Map_Points& points,
                  const Map_Titles& titles, const Projection& projection, const QRectF& picture);

  /// Paints all of it and gives where the points came to lie.
  Surface_Shape Paint();

  /// Labels and titles as painted.
  [[nodiscard]] const std::vector<Painted_Label>& Labels() const { return labels_; }

 private:
  using Direction = double Space_Point::*;

  void Paint_Walls();
  void Paint_Wall(Space_Point corner, Direction first, Direction second);
  void Paint_Lines(Space_Point corner, Direction direction, Direction across,
                   const std::vector<double>& places);
  void Paint_Surface(const Surface_Shape& shape);
  void Paint_Ribbon(const Surface_Shape& shape);
  void Paint_Cell(const Surface_Shape& shape, const Surface_Shape::Cell& cell);
  void Paint_Point(const Screen_Point& point);
  void Paint_Axes();
  void Paint_Entry_Axis(const std::vector<std::string>& labels, const std::string& title, Direction direction,
                        Direction outward);
  [[nodiscard]] std::size_t Free_Label_Step(const std::vector<std::string>& labels, Space_Point middle,
                                            Direction direction) const;
  void Paint_Value_Axis();
  double Paint_Label(const QPointF& at, const QPointF& direction, double gap, const QString& text);
  void Paint_Title(const std::vector<QPointF>& beside, const QPointF& direction, double gap,
                   const QString& title);
  void Write(const QRectF& place, const QString& text);
  [[nodiscard]] QRectF Label_Beside(const QPointF& at, const QPointF& direction, double gap,
                                    const QString& text) const;
  [[nodiscard]] bool Is_Free(const QRectF& place) const;

  [[nodiscard]] double Point_Size() const;
  [[nodiscard]] QPointF Place(const Space_Point& point) const;
  [[nodiscard]] QRgb Colour_Of(const Surface_Shape::Cell& cell) const;
  [[nodiscard]] double Height(double value) const { return box_height * (2 * scale_.Share(value) - 1); }

  QPainter& painter_;
  QPalette palette_;
  const Map_Points& points_;
  const Map_Titles& titles_;
  const Projection& projection_;
  Value_Scale scale_;
  Space_Point back_;   ///< the corner of the floor behind the surface
  double lowest_ = 0;  ///< values that the ends of the gradient stand for
  double highest_ = 0;
  QPixmap point_;
  QRectF picture_;
  std::vector<Painted_Label> labels_;  ///< one that would cover another is left out
};

}  // namespace kx
