#include "workspace/panels/Undo_Keys.h"

#include <QApplication>
#include <QKeyEvent>
#include <utility>

#include "workspace/curve_drag.h"

namespace kx {

Undo_Keys::Undo_Keys(std::function<bool(const QWidget& focus)> is_apart, std::function<bool()> of_the_tune,
                     QObject* parent)
    : QObject(parent), is_apart_(std::move(is_apart)), of_the_tune_(std::move(of_the_tune)) {
  qApp->installEventFilter(this);
}

/// An event that is accepted stays with the widget, one that is ignored comes back as a shortcut.
bool Undo_Keys::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::ShortcutOverride) return false;
  const QKeyCombination keys = static_cast<QKeyEvent*>(event)->keyCombination();
  // A drag keeps all keys to itself.
  if ((keys != undo_keys && keys != redo_keys) || Curve_Drag_Runs()) return false;
  const auto* widget = qobject_cast<QWidget*>(watched);
  const bool apart = widget != nullptr && is_apart_(*widget);
  if (!apart && !of_the_tune_()) return false;
  event->setAccepted(apart);
  return true;
}

}  // namespace kx
