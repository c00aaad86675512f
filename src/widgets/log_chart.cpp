#include "widgets/log_chart.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "logging/line_points.h"
#include "widgets/chart_look.h"

namespace kx {

namespace {

/// Least and greatest of what was taken. QCPRange itself turns crossed ends round.
class Ends {
 public:
  void Take(double low, double high) {
    low_ = std::min(low_, low);
    high_ = std::max(high_, high);
  }
  [[nodiscard]] bool Any() const { return low_ <= high_; }
  [[nodiscard]] QCPRange Range() const { return Any() ? QCPRange(low_, high_) : QCPRange(); }

 private:
  double low_ = std::numeric_limits<double>::infinity();
  double high_ = -std::numeric_limits<double>::infinity();
};

}  // namespace

/// A line through the rows of one signal.
class Signal_Line : public QCPAbstractPlottable {
 public:
  Signal_Line(const std::vector<double>& x, QCPAxis* key_axis, QCPAxis* value_axis)
      : QCPAbstractPlottable(key_axis, value_axis), x_(x) {
    setAntialiasedFill(false);
  }

  void Set_Values(std::span<const double> values) { values_.assign(values.begin(), values.end()); }
  [[nodiscard]] const std::vector<double>& Values() const { return values_; }

  double selectTest(const QPointF&, bool, QVariant*) const override { return -1; }

  QCPRange getKeyRange(bool& found, QCP::SignDomain) const override { return Range_Of(x_, found); }
  QCPRange getValueRange(bool& found, QCP::SignDomain, const QCPRange&) const override {
    return Range_Of(values_, found);
  }

 protected:
  void draw(QCPPainter* painter) override {
    Thin_To_Columns(x_, values_, Map_To_Pixels(), thin_);
    applyDefaultAntialiasingHint(painter);
    painter->setPen(pen());
    for (const Line_Stroke& stroke : thin_.strokes) {
      pixels_.clear();
      for (std::size_t i = stroke.first; i < stroke.end; ++i) {
        pixels_.append(QPointF(thin_.points[i].x, thin_.points[i].y));
      }
      if (pixels_.size() == 1) {
        painter->drawPoint(pixels_.front());
      } else {
        painter->drawPolyline(pixels_);
      }
    }
  }

  void drawLegendIcon(QCPPainter* painter, const QRectF& rectangle) const override {
    painter->setPen(QPen(pen().color(), 3));
    painter->drawLine(
        QLineF(rectangle.left(), rectangle.center().y(), rectangle.right(), rectangle.center().y()));
  }

 private:
  static QCPRange Range_Of(const std::vector<double>& values, bool& found) {
    Ends ends;
    for (const double value : values) {
      if (std::isfinite(value)) ends.Take(value, value);
    }
    found = ends.Any();
    return ends.Range();
  }

  [[nodiscard]] Line_Map Map_To_Pixels() const {
    const QCPAxis& keys = *keyAxis();
    const QCPAxis& values = *valueAxis();
    Line_Map map;
    map.x_shift = keys.coordToPixel(0);
    map.x_scale = keys.coordToPixel(1) - map.x_shift;
    map.y_shift = values.coordToPixel(0);
    map.y_scale = values.coordToPixel(1) - map.y_shift;
    return map;
  }

  const std::vector<double>& x_;
  std::vector<double> values_;
  Thin_Line thin_;
  QPolygonF pixels_;
};

namespace {

constexpr int least_drag = 4;                ///< pixels; less is a click
constexpr std::size_t smooth_points = 8000;  ///< rows by signals that are drawn smooth in good time
constexpr int legend_height_share = 3;       ///< the legend takes at most this part of the chart's height

}  // namespace

Log_Chart::Log_Chart(const QString& name, Gestures gestures, QWidget* parent)
    : QCustomPlot(parent),
      gestures_(gestures),
      chosen_(new QCPItemRect(this)),
      mark_(new QCPItemStraightLine(this)),
      nothing_(new QCPItemText(this)) {
  setObjectName(name);
  setMinimumSize(260, 180);
  setFocusPolicy(Qt::StrongFocus);
  setMouseTracking(true);
  yAxis->setNumberFormat("gb");
  yAxis2->setNumberFormat("gb");
  chosen_->setPen(Qt::NoPen);
  chosen_->setVisible(false);
  for (QCPItemPosition* corner : {chosen_->topLeft, chosen_->bottomRight}) {
    corner->setTypeX(QCPItemPosition::ptAbsolute);
    corner->setTypeY(QCPItemPosition::ptAxisRectRatio);
  }
  mark_->setVisible(false);
  nothing_->position->setType(QCPItemPosition::ptAxisRectRatio);
  nothing_->position->setCoords(0.5, 0.5);
  // Below the axes, where it covers no line.
  axisRect()->insetLayout()->take(legend);
  plotLayout()->addElement(1, 0, legend);
  plotLayout()->setRowStretchFactor(1, 0.001);
  legend->setFillOrder(QCPLegend::foColumnsFirst);
  legend->setBorderPen(Qt::NoPen);
  legend->setIconSize(16, 6);
  legend->setRowSpacing(0);
  Apply_Palette();
}

void Log_Chart::Apply_Palette() {
  Apply_Chart_Look(*this);
  const QColor accent = palette().color(QPalette::Highlight);
  QColor band = accent;
  band.setAlpha(60);
  chosen_->setBrush(band);
  mark_->setPen(QPen(accent, 1, Qt::DashLine));
  nothing_->setColor(palette().color(QPalette::Text));
  nothing_->setFont(font());
  legend->setBorderPen(Qt::NoPen);
}

void Log_Chart::Set_Lines(const std::vector<Log_Series>& series) {
  while (lines_.size() > series.size()) {
    removePlottable(lines_.back());
    lines_.pop_back();
  }
  while (lines_.size() < series.size()) {
    lines_.push_back(new Signal_Line(x_, xAxis, yAxis));
    lines_.back()->addToLegend(legend);
    legend->itemWithPlottable(lines_.back())->setMargins({0, 0, 0, 2});  // else descenders are cut
  }
  const bool smooth = series.size() * x_.size() <= smooth_points;
  for (std::size_t i = 0; i < series.size(); ++i) {
    Signal_Line& line = *lines_[i];
    line.setName(series[i].name);
    line.setPen(QPen(Signal_Colour(series[i].row), 1));
    line.setAntialiased(smooth);
    line.setValueAxis(series[i].secondary ? yAxis2 : yAxis);
    line.Set_Values(series[i].values);
  }
}

void Log_Chart::Fit_Axis(QCPAxis& axis, const Fixed_Range& fixed, bool secondary) {
  if (fixed) {
    axis.setRange(*fixed);
    return;
  }
  Ends all;
  for (const Signal_Line* line : lines_) {
    if ((line->valueAxis() == yAxis2) != secondary) continue;
    bool found = false;
    const QCPRange range = line->getValueRange(found, QCP::sdBoth, {});
    if (found) all.Take(range.lower, range.upper);
  }
  if (!all.Any()) return;
  const QCPRange wanted = Round_Value_Range(all.Range().lower, all.Range().upper);
  if (!Range_Still_Fits(axis.range(), wanted)) axis.setRange(wanted);
}

void Log_Chart::Place_Legend() {
  legend->setVisible(!lines_.empty());
  int widest = 1;
  for (const Signal_Line* line : lines_) {
    widest = std::max(widest, fontMetrics().horizontalAdvance(line->name()));
  }
  const int item = widest + legend->iconSize().width() + 2 * fontMetrics().averageCharWidth();
  const int columns = std::max(1, (width() - 20) / std::max(1, item));
  if (legend->wrap() != columns) {
    legend->setWrap(columns);
    legend->setFillOrder(legend->fillOrder(), true);  // what is there moves only by this
  }
  const int rows = (static_cast<int>(lines_.size()) + legend->wrap() - 1) / legend->wrap();
  // Where the names would take the chart's room they are left to the tick boxes, which have the colours too.
  if (rows * fontMetrics().height() * legend_height_share > height()) legend->setVisible(false);
  legend->setMaximumSize(legend->visible() ? QSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX)
                                           : QSize(QWIDGETSIZE_MAX, 0));
}

void Log_Chart::Show(std::span<const double> x, const QString& x_title, const std::vector<Log_Series>& series,
                     const Fixed_Range& left, const Fixed_Range& right, const QString& nothing) {
  x_.assign(x.begin(), x.end());
  Set_Lines(series);
  xAxis->setLabel(x_title);
  bool found = false;
  if (!lines_.empty()) {
    const QCPRange range = lines_.front()->getKeyRange(found, QCP::sdBoth);
    if (found) xAxis->setRange(range.lower, std::max(range.upper, range.lower + 1e-6));
  }
  Fit_Axis(*yAxis, left, false);
  Fit_Axis(*yAxis2, right, true);
  yAxis2->setVisible(
      std::any_of(series.begin(), series.end(), [](const Log_Series& one) { return one.secondary; }));
  nothing_->setVisible(series.empty());
  nothing_->setText(nothing);
  Place_Legend();
  Draw();
}

void Log_Chart::Mark(std::optional<std::size_t> index) {
  const bool known = index && *index < x_.size() && std::isfinite(x_[*index]);
  mark_->setVisible(known);
  if (known) {
    mark_->point1->setCoords(x_[*index], 0);
    mark_->point2->setCoords(x_[*index], 1);
  }
  Draw();
}

void Log_Chart::Draw() {
  stale_ = !isVisible();
  if (!stale_) replot(rpQueuedReplot);
}

void Log_Chart::showEvent(QShowEvent* event) {
  QCustomPlot::showEvent(event);
  if (stale_) Draw();
}

void Log_Chart::resizeEvent(QResizeEvent* event) {
  Place_Legend();
  QCustomPlot::resizeEvent(event);
}

void Log_Chart::changeEvent(QEvent* event) {
  QCustomPlot::changeEvent(event);
  if (nothing_ == nullptr) return;
  if (event->type() == QEvent::PaletteChange || event->type() == QEvent::FontChange) {
    Apply_Palette();
    Place_Legend();
    Draw();
  }
}

double Log_Chart::Share_At(double pixel) const {
  const QRect inner = axisRect()->rect();
  return std::clamp((pixel - inner.left()) / std::max(1, inner.width()), 0.0, 1.0);
}

/// The entry whose point on any line lies nearest.
std::optional<std::size_t> Log_Chart::Entry_Near(const QPointF& position) const {
  std::optional<std::size_t> nearest;
  double least = std::numeric_limits<double>::infinity();
  for (const Signal_Line* line : lines_) {
    for (std::size_t i = 0; i < std::min(x_.size(), line->Values().size()); ++i) {
      if (!std::isfinite(x_[i]) || !std::isfinite(line->Values()[i])) continue;
      const double across = xAxis->coordToPixel(x_[i]) - position.x();
      // Over time the column decides; a line over another signal may come by several times.
      const double along = gestures_ == Gestures::stretch
                               ? 0
                               : line->valueAxis()->coordToPixel(line->Values()[i]) - position.y();
      const double distance = std::hypot(across, along);
      if (distance < least) {
        least = distance;
        nearest = i;
      }
    }
  }
  return nearest;
}

void Log_Chart::mousePressEvent(QMouseEvent* event) {
  setFocus(Qt::MouseFocusReason);
  if (event->button() == Qt::RightButton) {
    End_Drag();
    if (gestures_ == Gestures::stretch) emit Zoom_Out_Asked();
  } else {
    pressed_ = event->position();
    dragging_ = false;
  }
}

void Log_Chart::mouseMoveEvent(QMouseEvent* event) {
  if (!pressed_ || gestures_ != Gestures::stretch) return;
  const double moved = event->position().x() - pressed_->x();
  if (std::abs(moved) >= least_drag) dragging_ = true;
  if (!dragging_) return;
  if ((event->buttons() & Qt::MiddleButton) != 0) {
    emit Dragged(moved / std::max(1, axisRect()->width()));
    pressed_ = event->position();
  } else if ((event->buttons() & Qt::LeftButton) != 0) {
    const QRect inner = axisRect()->rect();
    const auto inside = [&inner](double x) { return std::clamp<double>(x, inner.left(), inner.right()); };
    chosen_->topLeft->setCoords(inside(pressed_->x()), 0);
    chosen_->bottomRight->setCoords(inside(event->position().x()), 1);
    chosen_->setVisible(true);
    Draw();
  }
}

void Log_Chart::mouseReleaseEvent(QMouseEvent* event) {
  if (!pressed_ || event->button() != Qt::LeftButton) {
    pressed_.reset();
    return;
  }
  const double from = Share_At(pressed_->x());
  const double to = Share_At(event->position().x());
  const bool dragged = dragging_;
  End_Drag();
  if (dragged) {
    emit Stretch_Chosen(std::min(from, to), std::max(from, to));
  } else if (const std::optional<std::size_t> entry = Entry_Near(event->position())) {
    emit Point_Picked(*entry);
  }
}

/// The second press of two quick clicks is a press like any other.
void Log_Chart::mouseDoubleClickEvent(QMouseEvent* event) { mousePressEvent(event); }

void Log_Chart::End_Drag() {
  pressed_.reset();
  dragging_ = false;
  chosen_->setVisible(false);
  Draw();
}

void Log_Chart::wheelEvent(QWheelEvent* event) {
  const int turned = event->angleDelta().y();
  if (gestures_ == Gestures::stretch && turned != 0) {
    emit Wheel_Zoomed(Share_At(event->position().x()), turned > 0 ? 1 : -1);
  }
  event->accept();
}

/// While a stretch is being dragged, Escape is for the drag and not for the window, which it would close.
bool Log_Chart::event(QEvent* event) {
  if (event->type() == QEvent::ShortcutOverride && dragging_ &&
      static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape) {
    event->accept();
  }
  return QCustomPlot::event(event);
}

void Log_Chart::keyPressEvent(QKeyEvent* event) {
  const bool stretch = gestures_ == Gestures::stretch;
  if (event->key() == Qt::Key_Escape && dragging_) {
    End_Drag();
  } else if (stretch && (event->key() == Qt::Key_Left || event->key() == Qt::Key_Right)) {
    emit Row_Step_Asked(event->key() == Qt::Key_Left ? -1 : 1);
  } else {
    event->ignore();
  }
}

}  // namespace kx
