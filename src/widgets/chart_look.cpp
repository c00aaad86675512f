#include "widgets/chart_look.h"

namespace kx {

QColor Main_Line_Colour() { return {31, 119, 180}; }

void Apply_Chart_Look(QCustomPlot& plot) {
  const QColor ink = plot.palette().color(QPalette::Text);
  const QColor paper = plot.palette().color(QPalette::Base);
  QColor faint = ink;
  faint.setAlpha(45);
  plot.setBackground(paper);
  for (QCPAxis* axis : {plot.xAxis, plot.yAxis}) {
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

}  // namespace kx
