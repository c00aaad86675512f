#include "widgets/form_helpers.h"

#include <QHideEvent>
#include <QVBoxLayout>

#include "settings/notice.h"

namespace kx {

void Bind_Text(QLineEdit* box, Shown_Text& text) {
  Follow(box, text, [](QLineEdit* line, const QString& shown) { line->setText(shown); });
  QObject::connect(box, &QLineEdit::textEdited, box,
                   [&text](const QString& typed) { text.Typed(typed.toStdString()); });
}

void Resting_Focus::Rest(QWidget* button, QWidget* on) {
  if (!button->hasFocus()) return;
  button_ = button;
  place_ = on;
  on->setFocus();
}

void Resting_Focus::Give_Back() {
  if (button_ && place_ && place_->hasFocus()) button_->setFocus();
  button_.clear();
}

QLabel* Named_Text(const QString& name, const QString& text) {
  auto* label = new QLabel(text);
  label->setObjectName(name);
  label->setWordWrap(true);
  return label;
}

namespace {

/// Forgets its text when its form is closed.
class Own_Notices : public QLabel {
 protected:
  void hideEvent(QHideEvent* event) override {
    QLabel::hideEvent(event);
    if (!event->spontaneous()) setText({});
  }
};

void Show_Notice_On(QLabel* line) {
  QString text = Text(notice_text.Text());
  line->setToolTip(text.isEmpty() ? text : "<p>" + text.toHtmlEscaped().replace("\n", "</p><p>") + "</p>");
  line->setText(text.replace('\n', ' '));
}

}  // namespace

QLabel* Notice_Line(const QString& name, Notices which) {
  const bool all = which == Notices::all;
  auto* line = all ? new QLabel : new Own_Notices;
  line->setObjectName(name);
  line->setTextFormat(Qt::PlainText);
  line->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
  notice_text.Also_On_Change([alive = QPointer(line), all] {
    if (alive && (all || alive->isVisible())) Show_Notice_On(alive);
  });
  if (all) Show_Notice_On(line);
  return line;
}

QFrame* Plain_Frame(const QString& name, QWidget* inside) {
  auto* frame = new QFrame;
  frame->setObjectName(name);
  auto* layout = new QVBoxLayout(frame);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(inside);
  return frame;
}

}  // namespace kx
