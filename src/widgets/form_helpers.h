#pragma once

#include <QAbstractButton>
#include <QAction>
#include <QFrame>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPointer>
#include <QString>
#include <string_view>

#include "settings/message.h"
#include "settings/shown_text.h"

namespace kx {

/// A core text for a control.
[[nodiscard]] inline QString Text(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

/// Runs @p handler under the last guard when @p button is clicked by the user.
template <typename Handler>
void On_Click(QAbstractButton* button, Handler handler) {
  QObject::connect(button, &QAbstractButton::clicked, button, [handler] { Guarded(handler); });
}

/// The same for a menu entry.
template <typename Handler>
void On_Trigger(QAction* action, Handler handler) {
  QObject::connect(action, &QAction::triggered, action, [handler] { Guarded(handler); });
}

/// Adds an entry to @p menu that calls @p handler; @p keys may be empty.
template <typename Handler>
QAction* Add_Entry(QMenu* menu, const QString& name, const QString& caption, const QKeySequence& keys,
                   Handler handler) {
  QAction* action = menu->addAction(caption);
  action->setObjectName(name);
  action->setShortcut(keys);
  On_Trigger(action, handler);
  return action;
}

/// Calls @p show with the widget whenever the core changes @p text, as long as the widget lives.
template <typename Widget, typename Show>
void Follow(Widget* widget, Shown_Text& text, Show show) {
  text.On_Change([alive = QPointer<Widget>(widget), &text, show] {
    if (alive) show(alive.data(), QString::fromStdString(text.Text()));
  });
  show(widget, QString::fromStdString(text.Text()));
}

/// Keeps a one-line box and the core's text of it the same, both ways.
void Bind_Text(QLineEdit* box, Shown_Text& text);

/// Keeps the focus while the button that has it is off: it would hop to a field of values or to a way out,
/// and the next key with it. Meanwhile it rests on a control that does nothing with keys.
class Resting_Focus {
 public:
  /// To be called before @p button goes off; nothing unless it has the focus.
  void Rest(QWidget* button, QWidget* on);

  /// Back to the button, unless the user has taken the focus elsewhere.
  void Give_Back();

 private:
  QPointer<QWidget> button_;
  QPointer<QWidget> place_;
};

/// A wrapped text of that name.
[[nodiscard]] QLabel* Named_Text(const QString& name, const QString& text = {});

/// What the program says without asking for an answer: its sentences in one line, which never widens the
/// window; all of them are in its tip. A form beside the main form shows those that come while it is open.
enum class Notices { all, while_shown };
[[nodiscard]] QLabel* Notice_Line(const QString& name, Notices which = Notices::all);

/// A frame that holds one widget without margins.
[[nodiscard]] QFrame* Plain_Frame(const QString& name, QWidget* inside);

}  // namespace kx
