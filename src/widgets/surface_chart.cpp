#include "widgets/surface_chart.h"

#include <QHelpEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QToolTip>
#include <QWheelEvent>
#include <cmath>

namespace kx {
namespace {

constexpr double degrees_a_pixel = 0.4;  ///< turned by a drag
constexpr double zoom_a_notch = 1.15;
constexpr int wheel_notch = 120;
constexpr double reach_in_lines = 1.0;  ///< how far from a point the mouse may be, in heights of the text

}  // namespace

Surface_Chart::Surface_Chart(const QString& name, QWidget* parent) : QWidget(parent) {
  setObjectName(name);
  setMouseTracking(true);
  setFocusPolicy(Qt::StrongFocus);
  setAttribute(Qt::WA_OpaquePaintEvent);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

void Surface_Chart::Show(Map_Points points, Map_Titles titles) {
  points_ = std::move(points);
  titles_ = std::move(titles);
  Redraw();
}

void Surface_Chart::Set_View(const Surface_View& view) {
  view_ = Inside_Limits(view);
  Redraw();
}

void Surface_Chart::Take_View_Of_User(const Surface_View& view) {
  Set_View(view);
  emit View_Changed();
}

void Surface_Chart::Redraw() {
  picture_ = {};
  update();
}

/// What the title above and the labels around it leave.
QRectF Surface_Chart::Surface_Area() const {
  const double line = fontMetrics().height();
  return QRectF(rect()).adjusted(2.5 * line, 2.2 * line, -2.5 * line, -2.5 * line);
}

void Surface_Chart::Draw_Picture() {
  const double pixel_ratio = devicePixelRatioF();
  picture_ = QPixmap(size() * pixel_ratio);
  picture_.setDevicePixelRatio(pixel_ratio);
  picture_.fill(palette().color(QPalette::Base));
  QPainter painter(&picture_);
  painter.setFont(font());
  const QRectF area = Surface_Area();
  const Projection projection(view_, area.left(), area.top(), area.width(), area.height());
  shape_ = {};
  labels_.clear();
  if (!points_.values.empty()) {
    const QRectF below_title = QRectF(rect()).adjusted(0, 1.4 * fontMetrics().height(), 0, 0);
    Surface_Painter surface(painter, palette(), points_, titles_, projection, below_title);
    shape_ = surface.Paint();
    labels_ = surface.Labels();
  }
  QFont bold = font();
  bold.setBold(true);
  painter.setFont(bold);
  painter.setPen(palette().color(QPalette::Text));
  painter.drawText(rect().adjusted(0, fontMetrics().height() / 3, 0, 0), Qt::AlignHCenter | Qt::AlignTop,
                   QString::fromStdString(titles_.chart));
}

const QPixmap& Surface_Chart::Picture() {
  if (picture_.isNull()) Draw_Picture();
  return picture_;
}

const std::vector<Painted_Label>& Surface_Chart::Labels() {
  static_cast<void>(Picture());
  return labels_;
}

QString Surface_Chart::Read_Out_At(const QPointF& position) const {
  const std::size_t point =
      Point_Under(shape_, {position.x(), position.y()}, fontMetrics().height() * reach_in_lines);
  return point < points_.values.size() ? Read_Out_Of(point) : QString();
}

QString Surface_Chart::Read_Out_Of(std::size_t point) const {
  const auto line = [](const std::string& title, const std::string& value) {
    return QString::fromStdString(title + ": " + value);
  };
  const std::size_t loads = points_.load.size();
  return line(titles_.value, points_.texts[point]) + "\n" + line(titles_.rpm, points_.rpm[point / loads]) +
         "\n" + line(titles_.load, points_.load[point % loads]);
}

/// A ring around the point under the mouse, and its values in the upper left corner.
void Surface_Chart::Draw_Read_Out(QPainter& painter) const {
  const double line = fontMetrics().height();
  const std::size_t point = Point_Under(shape_, {mouse_->x(), mouse_->y()}, line * reach_in_lines);
  if (point >= points_.values.size()) return;
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setBrush(Qt::NoBrush);
  painter.setPen(QPen(palette().color(QPalette::Base), 4));
  const QPointF at(shape_.points[point].x, shape_.points[point].y);
  painter.drawEllipse(at, line * 0.4, line * 0.4);
  painter.setPen(QPen(palette().color(QPalette::Text), 2));
  painter.drawEllipse(at, line * 0.4, line * 0.4);
  const QString text = Read_Out_Of(point);
  const QRectF space = QRectF(rect()).adjusted(line / 2, line / 2, 0, 0);
  const QRectF box = painter.boundingRect(space, Qt::AlignLeft | Qt::AlignTop, text);
  QColor paper = palette().color(QPalette::Base);
  paper.setAlpha(225);
  painter.fillRect(box.adjusted(-line / 4, -line / 4, line / 4, line / 4), paper);
  painter.drawText(box, text);
}

/// No tip over the surface, where the corner tells the values.
bool Surface_Chart::event(QEvent* event) {
  if (event->type() != QEvent::ToolTip) return QWidget::event(event);
  const auto* help = static_cast<QHelpEvent*>(event);
  if (Read_Out_At(help->pos()).isEmpty()) return QWidget::event(event);
  QToolTip::hideText();
  return true;
}

void Surface_Chart::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.drawPixmap(0, 0, Picture());
  if (mouse_) Draw_Read_Out(painter);
  if (!hasFocus()) return;
  painter.setPen(palette().color(QPalette::Highlight));
  painter.setBrush(Qt::NoBrush);
  painter.drawRect(rect().adjusted(0, 0, -1, -1));
}

void Surface_Chart::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  Redraw();
}

void Surface_Chart::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() == QEvent::PaletteChange || event->type() == QEvent::FontChange) Redraw();
}

void Surface_Chart::mousePressEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) return;
  drag_ = event->position();
  mouse_.reset();
  setCursor(Qt::ClosedHandCursor);
}

void Surface_Chart::mouseMoveEvent(QMouseEvent* event) {
  if (!drag_) {
    mouse_ = event->position();
    return update();
  }
  const QPointF moved = event->position() - *drag_;
  drag_ = event->position();
  Surface_View view = view_;
  view.rotation += moved.x() * degrees_a_pixel;
  view.elevation += moved.y() * degrees_a_pixel;
  Take_View_Of_User(view);
}

void Surface_Chart::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton || !drag_) return;
  drag_.reset();
  unsetCursor();
}

void Surface_Chart::mouseDoubleClickEvent(QMouseEvent* /*event*/) { Take_View_Of_User({}); }

void Surface_Chart::leaveEvent(QEvent* event) {
  QWidget::leaveEvent(event);
  mouse_.reset();
  update();
}

void Surface_Chart::wheelEvent(QWheelEvent* event) {
  Surface_View view = view_;
  view.zoom *= std::pow(zoom_a_notch, event->angleDelta().y() / static_cast<double>(wheel_notch));
  Take_View_Of_User(view);
  event->accept();
}

void Surface_Chart::keyPressEvent(QKeyEvent* event) {
  Surface_View view = view_;
  switch (event->key()) {
    case Qt::Key_Left:
      view.rotation -= turn_step;
      break;
    case Qt::Key_Right:
      view.rotation += turn_step;
      break;
    case Qt::Key_Up:
      view.elevation += turn_step;
      break;
    case Qt::Key_Down:
      view.elevation -= turn_step;
      break;
    case Qt::Key_Plus:
      view.zoom *= zoom_a_notch;
      break;
    case Qt::Key_Minus:
      view.zoom /= zoom_a_notch;
      break;
    default:
      return QWidget::keyPressEvent(event);
  }
  Take_View_Of_User(view);
}

QSize Surface_Chart::sizeHint() const { return QSize(48, 30) * fontMetrics().height(); }

QSize Surface_Chart::minimumSizeHint() const { return QSize(18, 14) * fontMetrics().height(); }

}  // namespace kx
