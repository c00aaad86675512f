#include "widgets/heat_legend.h"

#include <QPainter>

#include "widgets/heat_colours.h"

namespace kx {
namespace {

constexpr int scale_width_in_lines = 16;
constexpr int half_mark_in_lines = 2;  ///< room for half of a number at each end

}  // namespace

Heat_Legend::Heat_Legend(const QString& name, QWidget* parent) : QWidget(parent) {
  setObjectName(name);
  setToolTip("What the colours of the cells stand for");
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void Heat_Legend::Show(const QStringList& marks) {
  if (marks == marks_) return;
  marks_ = marks;
  update();
}

void Heat_Legend::paintEvent(QPaintEvent* /*event*/) {
  if (marks_.size() < 2) return;
  QPainter painter(this);
  const int line = fontMetrics().height();
  const int half_mark = half_mark_in_lines * line;
  const QRect bar(half_mark, 0, width() - 2 * half_mark, height() - line - 3);
  for (int x = 0; x < bar.width(); ++x) {
    painter.fillRect(bar.left() + x, bar.top(), 1, bar.height(),
                     Heat_Colour(static_cast<double>(x) / (bar.width() - 1)));
  }
  painter.setPen(palette().color(QPalette::WindowText));
  for (qsizetype i = 0; i < marks_.size(); ++i) {
    const int x = bar.left() + static_cast<int>(i * (bar.width() - 1) / (marks_.size() - 1));
    painter.drawLine(x, bar.bottom(), x, bar.bottom() + 3);
    painter.drawText(QRect(x - half_mark, bar.bottom() + 3, 2 * half_mark, line), Qt::AlignCenter, marks_[i]);
  }
}

QSize Heat_Legend::sizeHint() const {
  const int line = fontMetrics().height();
  return {(scale_width_in_lines + 2 * half_mark_in_lines) * line, 2 * line + 3};
}

}  // namespace kx
