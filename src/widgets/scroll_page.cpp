#include "widgets/scroll_page.h"

#include <QScrollBar>

namespace kx {

Scroll_Page::Scroll_Page(QWidget* content, QWidget* parent) : QScrollArea(parent) {
  setWidgetResizable(true);
  setFrameShape(NoFrame);
  setWidget(content);
}

QSize Scroll_Page::sizeHint() const {
  const int bar = verticalScrollBar()->sizeHint().width();
  return widget()->sizeHint().expandedTo(widget()->minimumSize()) +
         QSize(bar + 2 * frameWidth(), 2 * frameWidth());
}

/// Some lines of text high, some words wide.
QSize Scroll_Page::minimumSizeHint() const {
  return {fontMetrics().averageCharWidth() * 24, fontMetrics().height() * 6};
}

}  // namespace kx
