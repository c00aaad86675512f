#include "widgets/form_helpers.h"

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

QLabel* Notice_Line(const QString& name) {
  auto* line = new QLabel;
  line->setObjectName(name);
  line->setTextFormat(Qt::PlainText);
  line->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
  const auto show = [alive = QPointer(line)] {
    if (!alive) return;
    QString text = Text(notice_text.Text());
    alive->setToolTip(text.isEmpty() ? text : "<p>" + text.toHtmlEscaped().replace("\n", "</p><p>") + "</p>");
    alive->setText(text.replace('\n', ' '));
  };
  notice_text.Also_On_Change(show);
  show();
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
