#include "widgets/chart_look.h"

#include <QPrinter>
#include <algorithm>
#include <array>
#include <cmath>

#include "workspace/value_scale.h"

namespace kx {
namespace {

constexpr double smallest_span = 1;    ///< shown units; a flat curve is not blown up into noise
constexpr double worth_keeping = 0.4;  ///< share of the axis that the curve has to use for it to stay

}  // namespace

QColor Main_Line_Colour() { return {31, 119, 180}; }

QColor Engine_Colour() { return {230, 110, 0}; }

QColor Signal_Colour(int row) {
  static const std::array colours{QColor(0, 114, 178),  QColor(230, 140, 0),   QColor(0, 150, 110),
                                  QColor(205, 70, 160), QColor(70, 170, 230),  QColor(200, 60, 30),
                                  QColor(125, 95, 205), QColor(150, 140, 20),  QColor(0, 165, 175),
                                  QColor(160, 85, 60),  QColor(120, 120, 120), QColor(95, 160, 60)};
  return colours[static_cast<std::size_t>(row) % colours.size()];
}

QCPRange Round_Value_Range(double low, double high) {
  const double missing = std::max(0.0, smallest_span - (high - low));
  // A flat curve stands in the middle of its axis, but the axis does not go below 0 for it.
  low = low >= 0 ? std::max(0.0, low - missing / 2) : low - missing / 2;
  high = std::max(high, low + smallest_span);
  const double span = high - low;
  const double step = Nice_Step(span / 6);
  // A curve that never goes below 0 has no use for an axis that does.
  const double below = low >= 0 ? 0 : span * 0.04;
  return {std::floor((low - below) / step) * step, std::ceil((high + span * 0.08) / step) * step};
}

bool Range_Still_Fits(const QCPRange& shown, const QCPRange& wanted) {
  return shown.lower <= wanted.lower && shown.upper >= wanted.upper &&
         wanted.size() >= worth_keeping * shown.size();
}

void Apply_Chart_Look(QCustomPlot& plot) {
  const QColor ink = plot.palette().color(QPalette::Text);
  const QColor paper = plot.palette().color(QPalette::Base);
  QColor faint = ink;
  faint.setAlpha(45);
  plot.setBackground(paper);
  for (QCPAxis* axis : {plot.xAxis, plot.yAxis, plot.yAxis2}) {
    axis->setBasePen(QPen(ink));
    axis->setTickPen(QPen(ink));
    axis->setSubTickPen(Qt::NoPen);
    axis->setTickLabelColor(ink);
    axis->setLabelColor(ink);
    axis->setTickLabelFont(plot.font());
    axis->setLabelFont(plot.font());
    axis->grid()->setPen(QPen(faint, 0, Qt::DotLine));
    axis->grid()->setZeroLinePen(QPen(faint, 0));
  }
  plot.legend->setBrush(paper);
  plot.legend->setTextColor(ink);
  plot.legend->setFont(plot.font());
  plot.legend->setBorderPen(QPen(faint));
}

void Print_Chart(QCustomPlot& plot, QPrinter& printer) {
  const QPalette on_screen = plot.palette();
  QPalette on_paper = on_screen;
  on_paper.setColor(QPalette::Base, Qt::white);
  on_paper.setColor(QPalette::Text, Qt::black);
  plot.setPalette(on_paper);
  const QRectF page = printer.pageLayout().paintRectPixels(printer.resolution());
  QCPPainter painter;
  if (painter.begin(&printer)) {
    // The chart keeps its shape on screen and grows with the page, letters and lines alike.
    const double scale = std::min(page.width() / plot.width(), page.height() / plot.height());
    painter.setMode(QCPPainter::pmVectorized);
    painter.setMode(QCPPainter::pmNoCaching);
    painter.scale(scale, scale);
    plot.toPainter(&painter, plot.width(), plot.height());
  }
  plot.setPalette(on_screen);
}

}  // namespace kx
