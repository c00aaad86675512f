#include "widgets/open_form.h"

#include <QScreen>
#include <QShortcut>
#include <QWindow>
#include <algorithm>

#include "widgets/window_place.h"

namespace kx {
namespace {

constexpr const char* placed = "placed_by_open_form";

/// The window manager keeps the form over the main form, also when both come to the front again.
void Stand_Over(QWidget& form, const QWidget& main_form) {
  form.winId();  // makes the window handle
  if (form.windowHandle() != nullptr) form.windowHandle()->setTransientParent(main_form.windowHandle());
}

void Close_By_Escape(QWidget& form) {
  auto* escape = new QShortcut(Qt::Key_Escape, &form);
  escape->setAutoRepeat(false);  // a key held too long leaves the forms behind this one open
  QObject::connect(escape, &QShortcut::activated, &form, &QWidget::close);
}

void Place(QWidget& form, const QWidget& main_form) {
  const QRect screen = main_form.screen()->availableGeometry();
  if (form.property(placed).toBool()) return Keep_Inside_Screen(form);
  form.setProperty(placed, true);
  Close_By_Escape(form);
  Remember_Place_Of(form);
  form.ensurePolished();
  if (Restore_Place(form)) return;
  if (!form.testAttribute(Qt::WA_Resized)) form.resize(form.sizeHint());
  QRect wanted = form.geometry();
  wanted.moveCenter(main_form.geometry().center());
  form.setGeometry(Inside_Screen(wanted, screen, Frame_Of(form)));
}

}  // namespace

QMargins Frame_Of(const QWidget& form) {
  const QRect outer = form.frameGeometry();
  const QRect inner = form.geometry();
  if (outer != inner)
    return {inner.left() - outer.left(), inner.top() - outer.top(), outer.right() - inner.right(),
            outer.bottom() - inner.bottom()};
  const int title = form.fontMetrics().height() * 2;
  return {4, title, 4, 4};
}

QRect Inside_Screen(QRect wanted, const QRect& screen, const QMargins& border) {
  const QRect room = screen.marginsRemoved(border);
  wanted.setSize(wanted.size().boundedTo(room.size()));
  wanted.moveLeft(std::clamp(wanted.left(), room.left(), room.right() - wanted.width() + 1));
  wanted.moveTop(std::clamp(wanted.top(), room.top(), room.bottom() - wanted.height() + 1));
  return wanted;
}

void Keep_Inside_Screen(QWidget& form) {
  const QRect wanted = form.geometry();
  const QRect inside = Inside_Screen(wanted, form.screen()->availableGeometry(), Frame_Of(form));
  if (inside != wanted) form.setGeometry(inside);
}

void Open_Main_Form(QWidget& form, const QSize& first_size) {
  Remember_Place_Of(form);
  if (!Restore_Place(form)) {
    form.resize(first_size);
    Keep_Inside_Screen(form);
  }
  form.show();
}

void Open_Form(QWidget& form, QWidget& main_form) {
  if (!form.isVisible()) {
    Stand_Over(form, main_form);
    Place(form, main_form);
  }
  if (form.isMinimized()) form.showNormal();
  form.show();
  form.raise();
  form.activateWindow();
}

}  // namespace kx
