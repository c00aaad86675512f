#include "logging/panels/Log_Stretch.h"

#include <QBuffer>
#include <QPdfWriter>
#include <QPrintDialog>
#include <QPrinter>
#include <algorithm>

#include "logging/chart_view.h"
#include "logging/log_array.h"
#include "widgets/chart_look.h"
#include "widgets/form_helpers.h"

namespace kx {

Log_Stretch::Log_Stretch(int first, int last)
    : first_(static_cast<std::size_t>(std::max(first, 1))),
      count_(static_cast<std::size_t>(std::max(std::min(last, Rows_On_Hand()) - std::max(first, 1) + 1, 0))) {
}

std::span<const double> Log_Stretch::Column(int slot) const {
  return std::as_const(LogArray).Column(slot).subspan(first_, count_);
}

std::vector<Log_Series> Log_Stretch::Ticked() const {
  std::vector<Log_Series> series;
  for (const int row : Ticked_Rows()) {
    series.push_back({Text(Signal_Caption(row)), row, Signal_Row(row).secondary, Column(row + 1)});
  }
  return series;
}

std::string Picture_Of(QCustomPlot& plot, const QString& format) {
  QBuffer buffer;
  buffer.open(QIODevice::WriteOnly);
  if (format == "pdf") {
    QPdfWriter writer(&buffer);
    writer.setPageSize(QPageSize(plot.size(), QPageSize::Point));
    writer.setPageMargins({});
    writer.setResolution(72);
    QCPPainter painter;
    if (painter.begin(&writer)) {
      painter.setMode(QCPPainter::pmVectorized);
      painter.setMode(QCPPainter::pmNoCaching);
      plot.toPainter(&painter, plot.width(), plot.height());
    }
  } else if (format == "bmp" || format == "png") {
    plot.toPixmap(plot.width(), plot.height(), 1).toImage().save(&buffer, qPrintable(format.toUpper()));
  }
  return buffer.data().toStdString();
}

void Print_With_Dialog(QCustomPlot& plot, QWidget* over) {
  QPrinter printer(QPrinter::HighResolution);
  printer.setPageOrientation(QPageLayout::Landscape);
  QPrintDialog dialog(&printer, over);
  if (dialog.exec() == QDialog::Accepted) Print_Chart(plot, printer);
}

}  // namespace kx
