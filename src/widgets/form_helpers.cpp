#include "widgets/form_helpers.h"

#include <QVBoxLayout>

namespace kx {

void Bind_Text(QLineEdit* box, Shown_Text& text) {
  Follow(box, text, [](QLineEdit* line, const QString& shown) { line->setText(shown); });
  QObject::connect(box, &QLineEdit::textEdited, box,
                   [&text](const QString& typed) { text.Typed(typed.toStdString()); });
}

QLabel* Named_Text(const QString& name, const QString& text) {
  auto* label = new QLabel(text);
  label->setObjectName(name);
  label->setWordWrap(true);
  return label;
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
