#include "widgets/wheel_guard.h"

#include <QAbstractSpinBox>
#include <QComboBox>
#include <QEvent>
#include <QSlider>
#include <QTabBar>

namespace kx {
namespace {

/// An event that is ignored and goes no further here is offered to the parent next, up to the scroll area.
class Wheel_Guard : public QObject {
 public:
  using QObject::QObject;
  bool eventFilter(QObject* /*watched*/, QEvent* event) override {
    if (event->type() != QEvent::Wheel) return false;
    event->ignore();
    return true;
  }
};

template <typename Control>
void Guard_All(QWidget* form) {
  for (Control* control : form->findChildren<Control*>()) Guard_Wheel(control);
}

}  // namespace

void Guard_Wheel(QWidget* widget) {
  const QString guard = "wheel_guard";
  if (widget->findChild<QObject*>(guard, Qt::FindDirectChildrenOnly) != nullptr) return;
  // The wheel gives no focus either: a digit typed next must go where it would have gone before.
  if (widget->focusPolicy() == Qt::WheelFocus) widget->setFocusPolicy(Qt::StrongFocus);
  auto* filter = new Wheel_Guard(widget);
  filter->setObjectName(guard);
  widget->installEventFilter(filter);
}

void Guard_Wheels_In(QWidget* form) {
  Guard_All<QSlider>(form);
  Guard_All<QComboBox>(form);
  Guard_All<QAbstractSpinBox>(form);
  Guard_All<QTabBar>(form);
}

}  // namespace kx
