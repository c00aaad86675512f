#include "widgets/elided_label.h"

#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>

namespace kx {

Elided_Label::Elided_Label(const QString& name, QWidget* parent) : QLabel(parent) {
  setObjectName(name);
  setTextFormat(Qt::PlainText);
  setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
}

QSize Elided_Label::minimumSizeHint() const { return {0, fontMetrics().height()}; }

bool Elided_Label::event(QEvent* event) {
  if (event->type() != QEvent::ToolTip) return QLabel::event(event);
  QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), text(), this);
  return true;
}

void Elided_Label::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  const QRect room = contentsRect();
  painter.drawText(room, static_cast<int>(alignment()),
                   fontMetrics().elidedText(text(), Qt::ElideMiddle, room.width()));
}

}  // namespace kx
