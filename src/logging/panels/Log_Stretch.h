#pragma once

#include <span>
#include <vector>

#include "widgets/log_chart.h"

namespace kx {

/// A stretch of the log in hand, as the charts take it.
class Log_Stretch {
 public:
  /// Rows @p first to @p last; what the log does not have of them is left out.
  Log_Stretch(int first, int last);

  /// The cells of a slot, 0 (the time) to 40.
  [[nodiscard]] std::span<const double> Column(int slot) const;

  /// The ticked signals.
  [[nodiscard]] std::vector<Log_Series> Ticked() const;

 private:
  std::size_t first_;
  std::size_t count_;
};

/// Bytes of @p plot as a file of @p format: "bmp", "png" or "pdf"; empty for any other.
[[nodiscard]] std::string Picture_Of(QCustomPlot& plot, const QString& format);

/// The platform's dialog, then the chart on a page; without a printer it offers a PDF file.
void Print_With_Dialog(QCustomPlot& plot, QWidget* over);

}  // namespace kx
