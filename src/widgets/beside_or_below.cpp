#include "widgets/beside_or_below.h"

#include <algorithm>

namespace kx {

Beside_Or_Below::Beside_Or_Below(QWidget* first, QWidget* second)
    : first_(first), second_(second), layout_(new QBoxLayout(QBoxLayout::LeftToRight, this)) {
  layout_->setContentsMargins(0, 0, 0, 0);
  layout_->addWidget(first_);
  layout_->addWidget(second_, 1);
}

QSize Beside_Or_Below::minimumSizeHint() const {
  const int width = std::max(first_->minimumSizeHint().width(), second_->minimumSizeHint().width());
  return {width, layout_->totalMinimumSize().height()};
}

void Beside_Or_Below::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  const int beside =
      first_->sizeHint().width() + second_->minimumSizeHint().width() + std::max(0, layout_->spacing());
  const auto wanted = width() >= beside ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom;
  if (layout_->direction() == wanted) return;
  layout_->setDirection(wanted);
  updateGeometry();
}

}  // namespace kx
