#include "widgets/line_chart.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numeric>

#include "widgets/chart_look.h"
#include "widgets/difference_mark.h"
#include "widgets/point_drag.h"

namespace kx {
namespace {

constexpr int legend_row = 1;
constexpr qsizetype longest_name = 20;  ///< of a file, beside the value of the current entry
constexpr int half_diamond = 6;         ///< pixels, of the engine's mark
constexpr int label_room = 4;           ///< around its text

QCPRange Value_Range(const Chart& chart) {
  double low = 0;
  double high = 0;
  bool any = false;
  const auto take = [&](const Chart_Series& series) {
    for (const double value : series.values) {
      low = any ? std::min(low, value) : value;
      high = any ? std::max(high, value) : value;
      any = true;
    }
  };
  std::ranges::for_each(chart.series, take);
  take(chart.reference);
  return Round_Value_Range(low, high);
}

QString Reference_Read_Out(const Chart_Series& reference, std::size_t entry) {
  if (entry >= reference.values.size()) return {};
  QString name = QString::fromStdString(reference.name);
  if (name.size() > longest_name) name = name.left(longest_name - 3) + "...";
  return "   (" + name + " " + QString::number(reference.values[entry], 'g', 6) + ")";
}

}  // namespace

Line_Chart::Line_Chart(const QString& name, QWidget* parent)
    : QCustomPlot(parent),
      selection_(new QCPItemRect(this)),
      cursor_(new QCPItemStraightLine(this)),
      reference_(new QCPCurve(xAxis, yAxis)),
      read_out_(new QCPTextElement(this)) {
  setObjectName(name);
  setMinimumSize(220, 160);
  xAxis->setTicker(labels_);
  xAxis->setTickLabelRotation(0);
  yAxis->setNumberFormat("gb");
  selection_->setLayer("background");
  selection_->setPen(Qt::NoPen);
  reference_->setLayer("grid");  // behind the curves
  reference_->removeFromLegend();
  read_out_->setTextFlags(Qt::AlignRight | Qt::AlignVCenter);
  plotLayout()->insertRow(0);
  plotLayout()->addElement(0, 0, read_out_);
  legend->setFillOrder(QCPLegend::foColumnsFirst);
  current_ = addGraph();
  current_->setLineStyle(QCPGraph::lsNone);
  current_->removeFromLegend();
  drag_ = new Point_Drag(*this);
  Apply_Palette();
}

void Line_Chart::Apply_Palette() {
  Apply_Chart_Look(*this);
  const QColor accent = palette().color(QPalette::Highlight);
  QColor band = accent;
  band.setAlpha(50);
  selection_->setBrush(band);
  cursor_->setPen(QPen(accent, 1, Qt::DashLine));
  reference_->setPen(QPen(Difference_Colour(palette()), 1.2, Qt::DashDotLine));
  current_->setScatterStyle({QCPScatterStyle::ssDisc, accent, accent, fontMetrics().height() * 0.8});
  QFont large = font();
  large.setBold(true);
  large.setPointSizeF(font().pointSizeF() * 1.4);
  read_out_->setFont(large);
  read_out_->setTextColor(palette().color(QPalette::Text));
}

/// Graph 0 is the current entry's mark; the series follow, the table's own values first.
void Line_Chart::Set_Series_Count(int count) {
  static const std::array colours{Main_Line_Colour(), QColor(214, 120, 20), QColor(120, 120, 120)};
  while (graphCount() > count + 1) removeGraph(graphCount() - 1);
  while (graphCount() < count + 1) {
    QCPGraph* series = addGraph();
    const auto index = static_cast<std::size_t>(graphCount() - 2);
    series->setPen(QPen(colours[std::min(index, colours.size() - 1)], index == 0 ? 2 : 1.4,
                        index == 0 ? Qt::SolidLine : Qt::DashLine));
    if (index == 0) series->setScatterStyle({QCPScatterStyle::ssDisc, 5});
  }
  Show_Legend(count > 1);
}

/// In a row of its own between the read-out and the curves, which it would cover. A single curve needs none,
/// and gets its room.
void Line_Chart::Show_Legend(bool shown) {
  if (legend->visible() == shown) return;
  legend->setVisible(shown);
  if (shown) {
    plotLayout()->insertRow(legend_row);
    plotLayout()->addElement(legend_row, 0, legend);
    plotLayout()->setRowStretchFactor(legend_row, 0.001);
  } else {
    axisRect()->insetLayout()->addElement(legend, Qt::AlignTop | Qt::AlignLeft);
    plotLayout()->simplify();
  }
}

void Line_Chart::Set_Labels(const std::vector<std::string>& labels) {
  const int widest =
      std::accumulate(labels.begin(), labels.end(), 1, [this](int width, const std::string& label) {
        return std::max(width, fontMetrics().horizontalAdvance(QString::fromStdString(label)));
      });
  const int room = std::max(1, (width() - fontMetrics().height() * 4) / (widest + fontMetrics().height()));
  const int every = std::max(1, (static_cast<int>(labels.size()) + room - 1) / room);
  labels_->clear();
  for (std::size_t i = 0; i < labels.size(); i += static_cast<std::size_t>(every)) {
    labels_->addTick(static_cast<double>(i + 1), QString::fromStdString(labels[i]));
  }
  shown_labels_ = labels;
}

/// In the legend, where there is one, and in the read-out; a row of its own would take room at the first
/// edit.
void Line_Chart::Show_Reference(const Chart_Series& reference) {
  QVector<double> entries(static_cast<qsizetype>(reference.values.size()));
  std::iota(entries.begin(), entries.end(), 1.0);
  reference_->setData(entries, QVector<double>(reference.values.begin(), reference.values.end()));
}

void Line_Chart::Fit_Values(const Chart& chart) {
  const double margin = entries_ > 1 ? 0.5 : 1;
  xAxis->setRange(1 - margin, entries_ + margin);
  const QCPRange wanted = Value_Range(chart);
  if (!Range_Still_Fits(yAxis->range(), wanted)) yAxis->setRange(wanted);
}

void Line_Chart::Mark(const Chart& chart, int first, int last) {
  const bool several = last > first;
  selection_->setVisible(several);
  selection_->topLeft->setCoords(first - 0.5, 1e6);
  selection_->bottomRight->setCoords(last + 0.5, -1e6);
  const auto entry = static_cast<std::size_t>(chart.current - 1);
  const bool known = !chart.series.empty() && entry < chart.series[0].values.size();
  current_->setVisible(known);
  cursor_->setVisible(known);
  read_out_->setText(" ");  // keeps its height
  if (!known) return;
  const double value = chart.series[0].values[entry];
  current_->setData({static_cast<double>(chart.current)}, {value});
  cursor_->point1->setCoords(chart.current, 0);
  cursor_->point2->setCoords(chart.current, 1);
  const std::string label = entry < chart.labels.size() ? chart.labels[entry] : "";
  read_out_->setText(QString::fromStdString(label + " " + chart.axis_title + ":  ") +
                     QString::number(value, 'g', 6) + " " + QString::fromStdString(chart.value_title) +
                     Reference_Read_Out(chart.reference, entry));
}

void Line_Chart::Show(const Chart& chart, int first, int last) {
  entries_ = chart.series.empty() ? 0 : static_cast<int>(chart.series[0].values.size());
  Set_Series_Count(static_cast<int>(chart.series.size()));
  QVector<double> entries(entries_);
  std::iota(entries.begin(), entries.end(), 1.0);
  for (int i = 0; i < static_cast<int>(chart.series.size()); ++i) {
    const Chart_Series& series = chart.series[static_cast<std::size_t>(i)];
    graph(i + 1)->setName(QString::fromStdString(series.name.empty() ? "table" : series.name));
    graph(i + 1)->setData(entries, QVector<double>(series.values.begin(), series.values.end()), true);
  }
  Show_Reference(chart.reference);
  if (shown_labels_ != chart.labels) Set_Labels(chart.labels);
  xAxis->setLabel(QString::fromStdString(chart.axis_title));
  yAxis->setLabel(QString::fromStdString(chart.value_title));
  Fit_Values(chart);
  Mark(chart, first, last);
  drag_->Follow(chart.series.empty() ? std::vector<double>() : chart.series[0].values, first, last,
                QString::fromStdString(chart.value_title));
  Draw();
}

void Line_Chart::Draw() {
  stale_ = !isVisible();
  if (!stale_) replot(rpQueuedReplot);
}

void Line_Chart::showEvent(QShowEvent* event) {
  QCustomPlot::showEvent(event);
  Set_Labels(std::vector<std::string>(shown_labels_));
  if (stale_) Draw();
}

void Line_Chart::Set_Place(const std::optional<Chart_Place>& place) {
  if (place == place_) return;
  const QRect before = Place_Strip();
  place_ = place;
  update(before.united(Place_Strip()));
}

/// Held at the edge of the chart where the value is beyond it.
QPointF Line_Chart::Place_Point() const {
  const QRect area = axisRect()->rect();
  return {xAxis->coordToPixel(place_->entry),
          std::clamp(yAxis->coordToPixel(place_->value), area.top() * 1.0, area.bottom() * 1.0)};
}

/// At the end of the line that is farther from the curve, on the side that has the room.
QRectF Line_Chart::Place_Label() const {
  const QRectF area = axisRect()->rect();
  QRectF label(0, 0, fontMetrics().horizontalAdvance(place_->text) + 2 * label_room,
               fontMetrics().height() + label_room);
  const QPointF point = Place_Point();
  const bool right = point.x() + half_diamond + label.width() <= area.right();
  const bool top = point.y() > area.center().y();
  label.moveTo(right ? point.x() + half_diamond : point.x() - half_diamond - label.width(),
               top ? area.top() + 2 : area.bottom() - label.height() - 2);
  return label;
}

/// What the mark covers, from the top of the chart to its foot.
QRect Line_Chart::Place_Strip() const {
  if (!place_ || !isVisible()) return {};
  const QRectF area = axisRect()->rect();
  const double x = Place_Point().x();
  const QRectF line(x - half_diamond, area.top(), 2 * half_diamond, area.height());
  return line.united(Place_Label()).toAlignedRect().adjusted(-2, -half_diamond - 2, 2, half_diamond + 2);
}

/// The mark stands over the drawn chart and is no part of it: it moves twenty times a second.
void Line_Chart::paintEvent(QPaintEvent* event) {
  QCustomPlot::paintEvent(event);
  if (!place_) return;
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const QPointF point = Place_Point();
  const QRect area = axisRect()->rect();
  painter.setPen(QPen(Engine_Colour(), 2));
  painter.drawLine(QPointF(point.x(), area.top()), QPointF(point.x(), area.bottom()));
  painter.setPen(QPen(palette().color(QPalette::Text), 1));
  painter.setBrush(Engine_Colour());
  painter.drawPolygon(QPolygonF({point - QPointF(half_diamond, 0), point - QPointF(0, half_diamond),
                                 point + QPointF(half_diamond, 0), point + QPointF(0, half_diamond)}));
  const QRectF label = Place_Label();
  painter.setBrush(palette().color(QPalette::Base));
  painter.drawRect(label);
  painter.drawText(label, Qt::AlignCenter, place_->text);
}

void Line_Chart::resizeEvent(QResizeEvent* event) {
  Set_Labels(std::vector<std::string>(shown_labels_));
  QCustomPlot::resizeEvent(event);
}

void Line_Chart::changeEvent(QEvent* event) {
  QCustomPlot::changeEvent(event);
  if (current_ == nullptr) return;
  if (event->type() == QEvent::PaletteChange || event->type() == QEvent::FontChange) {
    Apply_Palette();
    Draw();
  }
}

int Line_Chart::Row_At(const QPointF& position) const {
  return std::clamp(static_cast<int>(std::lround(xAxis->pixelToCoord(position.x()))), 1,
                    std::max(1, entries_));
}

void Line_Chart::mousePressEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton || entries_ == 0) return;
  Pick_From(event->position());
}

void Line_Chart::Pick_From(const QPointF& position) {
  picked_row_ = Row_At(position);
  emit Entries_Picked(picked_row_, picked_row_);
}

void Line_Chart::mouseMoveEvent(QMouseEvent* event) {
  if ((event->buttons() & Qt::LeftButton) != 0 && picked_row_ > 0) {
    emit Entries_Picked(picked_row_, Row_At(event->position()));
  }
}

}  // namespace kx
