#include "widgets/point_drag.h"

#include <qcustomplot.h>

#include <cmath>
#include <utility>

#include "widgets/line_chart.h"

namespace kx {
namespace {

constexpr double hit_radius = 8;       ///< logical pixels
constexpr double begin_distance = 4;   ///< logical pixels that tell a drag from a click
constexpr double shown_change = 1e-9;  ///< what is less is noise
constexpr double label_distance = 16;  ///< logical pixels between the pointer and its value

}  // namespace

Point_Drag::Point_Drag(Line_Chart& chart) : QObject(&chart), chart_(chart), label_(new QCPItemText(&chart)) {
  label_->setObjectName("drag_value");
  label_->setLayer("overlay");
  label_->setClipToAxisRect(false);
  label_->setPadding(QMargins(6, 3, 6, 3));
  label_->position->setType(QCPItemPosition::ptAbsolute);
  label_->setVisible(false);
  chart.setMouseTracking(true);
  chart.installEventFilter(this);
}

void Point_Drag::Follow(const std::vector<double>& values, int first, int last, const QString& unit) {
  values_ = values;
  first_ = first;
  last_ = last;
  unit_ = unit;
  if (state_ == State::dragging) return Show_Value();
  if (chart_.isVisible()) Show_Pointer(chart_.mapFromGlobal(QCursor::pos()));
}

void Point_Drag::Leave() {
  if (state_ == State::dragging) return End(true);
  if (state_ == State::pressed) state_ = State::spent;
}

double Point_Drag::Value_Of(int row) const { return values_[static_cast<std::size_t>(row - 1)]; }

double Point_Drag::Units_A_Pixel() const {
  return chart_.yAxis->range().size() / std::max(1, chart_.axisRect()->height());
}

/// The selected point next to @p position, 0 when none is near enough.
int Point_Drag::Point_At(const QPointF& position) const {
  if (allowed_from_ == 0) return 0;
  const int last = std::min(last_, static_cast<int>(values_.size()));
  int nearest = 0;
  double distance = hit_radius;
  for (int row = std::max(first_, allowed_from_); row <= last; ++row) {
    const QPointF point(chart_.xAxis->coordToPixel(row), chart_.yAxis->coordToPixel(Value_Of(row)));
    const double off = std::hypot(point.x() - position.x(), point.y() - position.y());
    if (off > distance) continue;
    nearest = row;
    distance = off;
  }
  return nearest;
}

void Point_Drag::Show_Pointer(const QPointF& position) {
  const bool over = Point_At(position) > 0;
  if (over == std::exchange(over_, over)) return;
  if (over) {
    chart_.setCursor(Qt::SizeVerCursor);
  } else {
    chart_.unsetCursor();
  }
}

bool Point_Drag::Press(const QMouseEvent& event) {
  if (event.button() != Qt::LeftButton) return state_ != State::idle;  // another button changes nothing
  Leave();
  state_ = State::idle;
  if (Point_At(event.position()) == 0) return false;
  state_ = State::pressed;
  pressed_at_ = event.position();
  return true;
}

bool Point_Drag::Move(const QMouseEvent& event) {
  const QPointF position = event.position();
  if (state_ == State::idle) {
    if (event.buttons() == Qt::NoButton) Show_Pointer(position);
    return false;
  }
  if ((event.buttons() & Qt::LeftButton) == 0) {  // its release went elsewhere
    Leave();
    state_ = State::idle;
    return false;
  }
  if (state_ == State::pressed) return Move_From_Press(position);
  if (state_ == State::dragging) Drag_To(position);
  return true;
}

/// Up and down drags, sideways selects.
bool Point_Drag::Move_From_Press(const QPointF& position) {
  const QPointF way = position - pressed_at_;
  if (std::hypot(way.x(), way.y()) < begin_distance) return true;
  if (std::fabs(way.x()) <= std::fabs(way.y())) {
    Begin(position);
    return true;
  }
  state_ = State::idle;
  chart_.Pick_From(pressed_at_);
  return false;
}

/// By pieces, because the axis grows when the curve leaves it.
void Point_Drag::Drag_To(const QPointF& position) {
  delta_ += (pointer_.y() - position.y()) * Units_A_Pixel();
  pointer_ = position;
  emit Moved(delta_);
  if (state_ == State::dragging) Show_Value();
}

bool Point_Drag::Release(const QMouseEvent& event) {
  if (event.button() != Qt::LeftButton || state_ == State::idle) return state_ != State::idle;
  const bool click = state_ == State::pressed;
  Leave();
  state_ = State::idle;
  if (click) chart_.Pick_From(pressed_at_);
  Show_Pointer(event.position());
  return true;
}

/// While the button is down the keys belong to the drag: no shortcut works on a tune that is half moved.
bool Point_Drag::Key(const QKeyEvent& event) {
  if (state_ == State::idle) return false;
  if (event.type() == QEvent::KeyPress && event.key() == Qt::Key_Escape) {
    if (state_ == State::dragging) End(false);
    state_ = State::spent;
  }
  return true;
}

/// What is on show may have changed since the button went down.
void Point_Drag::Begin(const QPointF& position) {
  row_ = Point_At(pressed_at_);
  state_ = row_ > 0 ? State::dragging : State::spent;
  if (row_ == 0) return;
  pointer_ = position;
  delta_ = 0;
  start_ = Value_Of(row_);
  emit Began(row_);
  Show_Value();
}

void Point_Drag::End(bool kept) {
  state_ = State::spent;
  label_->setVisible(false);
  chart_.replot(QCustomPlot::rpQueuedReplot);
  emit Ended(kept);
}

void Point_Drag::Show_Value() {
  if (row_ > static_cast<int>(values_.size())) return;
  const double value = Value_Of(row_);
  const double change = value - start_;
  QString text = QString::number(value, 'g', 6) + (unit_.isEmpty() ? "" : " " + unit_);
  if (std::fabs(change) > shown_change) {
    text += QString(" (%1%2)").arg(change > 0 ? "+" : "", QString::number(change, 'g', 4));
  }
  label_->setText(text);
  Dress_Label();
  Place_Label(chart_.fontMetrics().horizontalAdvance(text));
  label_->setVisible(true);
  chart_.replot(QCustomPlot::rpQueuedReplot);
}

void Point_Drag::Dress_Label() {
  const QPalette& colours = chart_.palette();
  label_->setColor(colours.color(QPalette::ToolTipText));
  label_->setBrush(colours.color(QPalette::ToolTipBase));
  label_->setPen(QPen(colours.color(QPalette::ToolTipText)));
  label_->setFont(chart_.font());
}

/// Above the pointer to its right, or to its left where the chart ends; never over the text above the axes.
void Point_Drag::Place_Label(int width) {
  const bool to_the_right = pointer_.x() + width + 2 * label_distance < chart_.width();
  const double top = chart_.axisRect()->top() + chart_.fontMetrics().height();
  label_->setPositionAlignment((to_the_right ? Qt::AlignLeft : Qt::AlignRight) | Qt::AlignBottom);
  label_->position->setCoords(pointer_.x() + (to_the_right ? label_distance : -label_distance),
                              std::clamp(pointer_.y(), top, std::max(top, double(chart_.height()))));
}

bool Point_Drag::eventFilter(QObject* watched, QEvent* event) {
  if (watched != &chart_) return false;
  switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
      return Press(*static_cast<QMouseEvent*>(event));
    case QEvent::MouseMove:
      return Move(*static_cast<QMouseEvent*>(event));
    case QEvent::MouseButtonRelease:
      return Release(*static_cast<QMouseEvent*>(event));
    case QEvent::ShortcutOverride:
    case QEvent::KeyPress:
      if (!Key(*static_cast<QKeyEvent*>(event))) return false;
      event->accept();
      return true;
    case QEvent::FocusOut:
    case QEvent::Hide:
    case QEvent::EnabledChange:
      Leave();
      return false;
    default:
      return false;
  }
}

}  // namespace kx
