#include "widgets/surface_painter.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace kx {
namespace {

constexpr std::size_t most_labels = 9;  ///< on an axis of entries
constexpr double point_share = 0.24;    ///< of the text's height, and the least of it below
constexpr double least_point_share = 0.12;
constexpr double point_share_of_cell = 0.4;   ///< of the step between entries
constexpr double least_light = 0.72;          ///< of a cell turned away from the light
constexpr double labels_on_free_space = 0.8;  ///< the rest stays between them
constexpr double label_gap_share = 0.35;      ///< of the text's height

/// Where along its axis, -1..1, a title may stand, best first.
constexpr std::array<double, 5> title_places{0, 0.35, -0.35, 0.7, -0.7};

/// From low to high. Its lightness rises all the way, so that it reads without telling red from green.
struct Gradient_Stop {
  int red;
  int green;
  int blue;
};
constexpr std::array<Gradient_Stop, 5> gradient{
    {{61, 38, 110}, {54, 92, 153}, {40, 148, 150}, {112, 199, 104}, {250, 230, 75}}};

int Mixed(int low, int high, double share) {
  return static_cast<int>(std::lround(low + (high - low) * share));
}

QRgb Gradient_Colour(double share, double light) {
  const double place = std::clamp(share, 0.0, 1.0) * (gradient.size() - 1);
  const auto stop = std::min(static_cast<std::size_t>(place), gradient.size() - 2);
  const double rest = place - static_cast<double>(stop);
  const Gradient_Stop& low = gradient[stop];
  const Gradient_Stop& high = gradient[stop + 1];
  const auto lit = [light](int part) { return static_cast<int>(std::lround(part * light)); };
  return qRgb(lit(Mixed(low.red, high.red, rest)), lit(Mixed(low.green, high.green, rest)),
              lit(Mixed(low.blue, high.blue, rest)));
}

/// Entries between two labels, so that there are not too many.
std::size_t Label_Step(std::size_t entries) {
  for (const std::size_t step : {1U, 2U, 4U, 5U, 8U}) {
    if ((entries - 1) / step < most_labels) return step;
  }
  return 10;
}

std::vector<double> Label_Places(std::size_t entries) {
  std::vector<double> places;
  for (std::size_t i = 0; i < entries; i += Label_Step(entries)) places.push_back(Axis_Place(i, entries));
  return places;
}

QPixmap Point_Picture(double size, double pixel_ratio) {
  QPixmap picture(QSize(1, 1) * static_cast<int>(std::ceil((size + 1) * pixel_ratio)));
  picture.setDevicePixelRatio(pixel_ratio);
  picture.fill(Qt::transparent);
  QPainter painter(&picture);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  painter.setBrush(
      QColor(RedFromRGB(map_point_colour), GreenFromRGB(map_point_colour), BlueFromRGB(map_point_colour)));
  painter.drawEllipse(QRectF(0.5, 0.5, size, size));
  return picture;
}

QPointF On_Screen(const Screen_Point& point) { return {point.x, point.y}; }

QRectF Moved_Inside(QRectF place, const QRectF& picture) {
  place.moveLeft(std::max(std::min(place.left(), picture.right() - place.width()), picture.left()));
  place.moveTop(std::max(std::min(place.top(), picture.bottom() - place.height()), picture.top()));
  return place;
}

QPointF Unit(const QPointF& vector) {
  const double length = std::hypot(vector.x(), vector.y());
  return length > 0 ? vector / length : QPointF(0, 1);
}

QColor Faint(QColor colour, int alpha) {
  colour.setAlpha(alpha);
  return colour;
}

}  // namespace

Surface_Painter::Surface_Painter(QPainter& painter, const QPalette& palette, const Map_Points& points,
                                 const Map_Titles& titles, const Projection& projection,
                                 const QRectF& picture)
    : painter_(painter),
      palette_(palette),
      points_(points),
      titles_(titles),
      projection_(projection),
      scale_(Scale_Around(points.values)),
      back_{projection.Eye().across < 0 ? 1.0 : -1.0, projection.Eye().along < 0 ? 1.0 : -1.0, -box_height},
      point_(Point_Picture(Point_Size(), painter.device()->devicePixelRatioF())),
      picture_(picture) {
  const auto [lowest, highest] = std::ranges::minmax(points.values);
  lowest_ = lowest;
  highest_ = highest;
}

/// Pixels; where the entries lie close together their points are smaller, so that the surface is seen.
double Surface_Painter::Point_Size() const {
  const auto step = [this](Direction direction, std::size_t entries) {
    Space_Point end;
    end.*direction = 2.0 / static_cast<double>(std::max<std::size_t>(entries, 2) - 1);
    const QPointF across = Place(end) - Place({});
    return std::hypot(across.x(), across.y());
  };
  const double mean =
      (step(&Space_Point::across, points_.rpm.size()) + step(&Space_Point::along, points_.load.size())) / 2;
  const double line = painter_.fontMetrics().height();
  return std::clamp(mean * point_share_of_cell, line * least_point_share, line * point_share);
}

QPointF Surface_Painter::Place(const Space_Point& point) const { return On_Screen(projection_.Of(point)); }

Surface_Shape Surface_Painter::Paint() {
  const Surface_Shape shape =
      Shape_Of(points_.values, points_.rpm.size(), points_.load.size(), scale_, projection_);
  painter_.setRenderHint(QPainter::Antialiasing);
  Paint_Walls();
  if (shape.cells.empty()) {
    Paint_Ribbon(shape);
  } else {
    Paint_Surface(shape);
  }
  Paint_Axes();
  return shape;
}

/// The floor and the two walls behind the surface.
void Surface_Painter::Paint_Walls() {
  const auto rpm = Label_Places(points_.rpm.size());
  const auto load = Label_Places(points_.load.size());
  std::vector<double> values;
  for (const double mark : scale_.Marks()) values.push_back(Height(mark));
  Paint_Wall(back_, &Space_Point::across, &Space_Point::along);
  Paint_Wall(back_, &Space_Point::across, &Space_Point::up);
  Paint_Wall(back_, &Space_Point::along, &Space_Point::up);
  Paint_Lines(back_, &Space_Point::along, &Space_Point::across, rpm);
  Paint_Lines(back_, &Space_Point::up, &Space_Point::across, rpm);
  Paint_Lines(back_, &Space_Point::across, &Space_Point::along, load);
  Paint_Lines(back_, &Space_Point::up, &Space_Point::along, load);
  Paint_Lines(back_, &Space_Point::across, &Space_Point::up, values);
  Paint_Lines(back_, &Space_Point::along, &Space_Point::up, values);
}

/// The face of the box that goes from @p corner in two directions.
void Surface_Painter::Paint_Wall(Space_Point corner, Direction first, Direction second) {
  QPolygonF face;
  for (const Direction turned : {first, second, first, second}) {
    face += Place(corner);
    corner.*turned = -(corner.*turned);
  }
  painter_.setPen(QPen(Faint(palette_.color(QPalette::Text), 110), 0));
  painter_.setBrush(Faint(palette_.color(QPalette::Text), 12));
  painter_.drawConvexPolygon(face);
}

/// Lines in @p direction over the face at @p corner, one at each of @p places in the direction @p across.
void Surface_Painter::Paint_Lines(Space_Point corner, Direction direction, Direction across,
                                  const std::vector<double>& places) {
  painter_.setPen(QPen(Faint(palette_.color(QPalette::Text), 55), 0));
  for (const double place : places) {
    corner.*across = place;
    Space_Point end = corner;
    end.*direction = -(end.*direction);
    painter_.drawLine(Place(corner), Place(end));
  }
}

/// A point is painted with the last of the cells around it, so that cells in front cover it.
void Surface_Painter::Paint_Surface(const Surface_Shape& shape) {
  std::vector<std::size_t> last_cell(shape.points.size());
  for (std::size_t i = 0; i < shape.cells.size(); ++i) {
    for (const std::size_t corner : shape.cells[i]) last_cell[corner] = i;
  }
  for (std::size_t i = 0; i < shape.cells.size(); ++i) {
    Paint_Cell(shape, shape.cells[i]);
    for (const std::size_t corner : shape.cells[i]) {
      if (last_cell[corner] == i) Paint_Point(shape.points[corner]);
    }
  }
}

/// A table with one entry on an axis is a line.
void Surface_Painter::Paint_Ribbon(const Surface_Shape& shape) {
  painter_.setPen(QPen(palette_.color(QPalette::Text), 1.5));
  for (std::size_t i = 1; i < shape.points.size(); ++i) {
    painter_.drawLine(On_Screen(shape.points[i - 1]), On_Screen(shape.points[i]));
  }
  for (const Screen_Point& point : shape.points) Paint_Point(point);
}

void Surface_Painter::Paint_Cell(const Surface_Shape& shape, const Surface_Shape::Cell& cell) {
  std::array<QPointF, 4> corners;
  std::ranges::transform(cell, corners.begin(),
                         [&shape](std::size_t corner) { return On_Screen(shape.points[corner]); });
  const QColor fill = QColor::fromRgb(Colour_Of(cell));
  painter_.setBrush(fill);
  painter_.setPen(QPen(fill.darker(135), 0));
  // A cell of four points in space may bend inwards or cross itself on the screen.
  painter_.drawPolygon(corners.data(), static_cast<int>(corners.size()));
}

/// By the mean value between the least and the greatest of the map, darker on slopes that the light, from low
/// RPM and low load, does not reach.
QRgb Surface_Painter::Colour_Of(const Surface_Shape::Cell& cell) const {
  std::array<double, 4> values{};
  std::ranges::transform(cell, values.begin(), [this](std::size_t corner) { return points_.values[corner]; });
  const auto slope = [this](double difference, std::size_t entries) {
    return difference / 2 / (scale_.high - scale_.low) * static_cast<double>(entries - 1);
  };
  const double rise = slope(values[1] + values[2] - values[0] - values[3], points_.rpm.size());
  const double climb = slope(values[2] + values[3] - values[0] - values[1], points_.load.size());
  const double facing = (1 + 0.6 * rise + 0.6 * climb) / std::sqrt(1 + rise * rise + climb * climb) / 1.3;
  const double light = least_light + (1 - least_light) * std::clamp(facing, 0.0, 1.0);
  const double mean = (values[0] + values[1] + values[2] + values[3]) / 4;
  return Gradient_Colour(highest_ > lowest_ ? (mean - lowest_) / (highest_ - lowest_) : 0.5, light);
}

void Surface_Painter::Paint_Point(const Screen_Point& point) {
  const double half = point_.width() / point_.devicePixelRatio() / 2;
  painter_.drawPixmap(QPointF(point.x - half, point.y - half), point_);
}

void Surface_Painter::Paint_Axes() {
  painter_.setPen(palette_.color(QPalette::Text));
  Paint_Value_Axis();
  Paint_Entry_Axis(points_.rpm, titles_.rpm, &Space_Point::across, &Space_Point::along);
  Paint_Entry_Axis(points_.load, titles_.load, &Space_Point::along, &Space_Point::across);
}

/// At the edge of the floor before the surface: a tick and a label every few entries, the title outside them.
void Surface_Painter::Paint_Entry_Axis(const std::vector<std::string>& labels, const std::string& title,
                                       Direction direction, Direction outward) {
  Space_Point edge = back_;
  edge.*outward = -(back_.*outward);
  edge.*direction = 0;
  Space_Point outside = edge;
  outside.*outward *= 1.05;
  const QPointF out = Unit(Place(outside) - Place(edge));
  double reach = 0;
  const std::size_t every = std::max(Label_Step(labels.size()), Free_Label_Step(labels, edge, direction));
  for (std::size_t i = 0; i < labels.size(); i += every) {
    edge.*direction = outside.*direction = Axis_Place(i, labels.size());
    painter_.drawLine(Place(edge), Place(outside));
    reach = std::max(reach, Paint_Label(Place(outside), out, 0, QString::fromStdString(labels[i])));
  }
  std::vector<QPointF> beside;
  for (const double place : title_places) {
    outside.*direction = place;
    beside.push_back(Place(outside));
  }
  Paint_Title(beside, out, reach, QString::fromStdString(title));
}

/// Entries between two labels so that they do not touch on an edge through @p middle.
std::size_t Surface_Painter::Free_Label_Step(const std::vector<std::string>& labels, Space_Point middle,
                                             Direction direction) const {
  Space_Point end = middle;
  end.*direction = 1;
  middle.*direction = -1;
  const QPointF whole = Place(end) - Place(middle);
  double widest = 1;
  for (const std::string& label : labels) {
    widest =
        std::max<double>(widest, painter_.fontMetrics().horizontalAdvance(QString::fromStdString(label)));
  }
  const double free_share =
      std::max(std::fabs(whole.x()) / widest, std::fabs(whole.y()) / painter_.fontMetrics().height());
  const double most = std::max(1.0, free_share * labels_on_free_space);
  return static_cast<std::size_t>(std::ceil(static_cast<double>(labels.size()) / most));
}

/// At the upright edge of the box that is farthest left on the screen.
void Surface_Painter::Paint_Value_Axis() {
  Space_Point edge{-back_.across, back_.along, -box_height};
  const Space_Point other{back_.across, -back_.along, -box_height};
  if (Place(other).x() < Place(edge).x()) edge = other;
  for (const double mark : scale_.Marks()) {
    edge.up = Height(mark);
    const QPointF at = Place(edge);
    const QPointF end = at - QPointF(painter_.fontMetrics().height() * label_gap_share, 0);
    painter_.drawLine(at, end);
    Paint_Label(end, {-1, 0}, 0, QString::number(mark, 'g', 6));
  }
  edge.up = box_height;
  Paint_Title({Place(edge)}, {0, -1}, painter_.fontMetrics().height() * 0.5,
              QString::fromStdString(titles_.value));
}

QRectF Surface_Painter::Label_Beside(const QPointF& at, const QPointF& direction, double gap,
                                     const QString& text) const {
  const QSizeF size(painter_.fontMetrics().horizontalAdvance(text), painter_.fontMetrics().height());
  const double half =
      (std::fabs(direction.x()) * size.width() + std::fabs(direction.y()) * size.height()) / 2;
  const double start = gap + painter_.fontMetrics().height() * label_gap_share;
  QRectF place(QPointF(), size);
  place.moveCenter(at + direction * (start + half));
  return place;
}

bool Surface_Painter::Is_Free(const QRectF& place) const {
  return std::ranges::none_of(labels_,
                              [&place](const Painted_Label& label) { return label.place.intersects(place); });
}

void Surface_Painter::Write(const QRectF& place, const QString& text) {
  labels_.push_back({place, text});
  painter_.drawText(place, Qt::AlignCenter, text);
}

/// Writes @p text beside @p at, @p gap farther out in @p direction, and gives how far out it reaches.
double Surface_Painter::Paint_Label(const QPointF& at, const QPointF& direction, double gap,
                                    const QString& text) {
  const QRectF place = Label_Beside(at, direction, gap, text);
  if (!Is_Free(place)) return gap;
  Write(place, text);
  return gap + painter_.fontMetrics().height() * label_gap_share + std::fabs(direction.x()) * place.width() +
         std::fabs(direction.y()) * place.height();
}

/// Writes @p title at the first free place outside one of the points @p beside, else farther out, else where
/// there is room next to it: an axis without its title and unit says nothing.
void Surface_Painter::Paint_Title(const std::vector<QPointF>& beside, const QPointF& direction, double gap,
                                  const QString& title) {
  const double line = painter_.fontMetrics().height();
  for (const double farther : {0.0, 1.0, 2.0}) {
    for (const QPointF& at : beside) {
      const QRectF place = Label_Beside(at, direction, gap + farther * line, title);
      if (picture_.contains(place) && Is_Free(place)) return Write(place, title);
    }
  }
  const QRectF wanted = Moved_Inside(Label_Beside(beside[0], direction, gap, title), picture_);
  for (double away = 0; away < picture_.height(); away += line / 2) {
    for (const double side : {away, -away}) {
      const QRectF place = wanted.translated(0, side);
      if (picture_.contains(place) && Is_Free(place)) return Write(place, title);
    }
  }
}

}  // namespace kx
