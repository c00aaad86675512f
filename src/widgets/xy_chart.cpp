#include "widgets/xy_chart.h"

#include "widgets/chart_look.h"

namespace kx {

Xy_Chart::Xy_Chart(const QString& name, const QString& title, const QString& x_title, const QString& y_title,
                   QWidget* parent)
    : QCustomPlot(parent), title_(new QCPTextElement(this, title)) {
  setObjectName(name);
  setMinimumSize(220, 160);
  plotLayout()->insertRow(0);
  plotLayout()->addElement(0, 0, title_);
  xAxis->setLabel(x_title);
  yAxis->setLabel(y_title);
  xAxis->setTicker(divisions_);
  addGraph();
  graph(0)->setPen(QPen(Main_Line_Colour(), 2));
  graph(0)->setScatterStyle({QCPScatterStyle::ssDisc, 6});
  Apply_Palette();
}

void Xy_Chart::Show(const QVector<double>& x, const QVector<double>& y, QCPRange x_range, int divisions) {
  graph(0)->setData(x, y);
  divisions_->setTickOrigin(x_range.lower);
  divisions_->setTickStep(x_range.size() / divisions);
  xAxis->setRange(x_range);
  yAxis->rescale();
  yAxis->setRange(yAxis->range().lower - 1, yAxis->range().upper + 1);
  Draw();
}

void Xy_Chart::Draw() {
  stale_ = !isVisible();
  if (!stale_) replot(rpQueuedReplot);
}

void Xy_Chart::Apply_Palette() {
  Apply_Chart_Look(*this);
  QFont bold = font();
  bold.setBold(true);
  title_->setFont(bold);
  title_->setTextColor(palette().color(QPalette::Text));
}

void Xy_Chart::showEvent(QShowEvent* event) {
  QCustomPlot::showEvent(event);
  if (stale_) Draw();
}

void Xy_Chart::changeEvent(QEvent* event) {
  QCustomPlot::changeEvent(event);
  if (event->type() != QEvent::PaletteChange && event->type() != QEvent::FontChange) return;
  Apply_Palette();
  Draw();
}

}  // namespace kx
