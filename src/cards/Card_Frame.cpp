#include "cards/Card_Frame.h"

#include <QLabel>
#include <QVBoxLayout>

#include "boxlink/link_texts.h"
#include "boxlink/transfer.h"
#include "widgets/form_helpers.h"

namespace kx {

Card_Frame::Card_Frame(const QString& name, const QString& title, const Card_Path& path, QWidget* parent)
    : QGroupBox(title, parent) {
  setObjectName(name);
  auto* layout = new QVBoxLayout(this);
  for (const Card_Button& row : path.buttons) {
    if (!row.name.empty()) layout->addWidget(Make_Button(row));
  }
  status_ = new QLineEdit;
  status_->setObjectName(Text(path.status_name));
  status_->setReadOnly(true);
  status_->setToolTip("Outcome of the last card operation");
  Follow(status_, *path.status, [](QLineEdit* line, const QString& text) {
    line->setText(text);
    line->setCursorPosition(0);
  });
  layout->addWidget(status_);
  auto* about = Named_Text(name + "_about", Text(path.about));
  layout->addWidget(about);
}

QPushButton* Card_Frame::Make_Button(const Card_Button& row) {
  auto* button = new QPushButton(Text(row.caption));
  button->setObjectName(Text(row.name));
  button->setToolTip(Text(row.tip));
  button->setFocusPolicy(Qt::TabFocus);  // a click leaves the focus in the grid
  if (!row.placeholder.empty()) {
    connect(button, &QPushButton::pressed, this, [&row] { rs232_text.Set(row.placeholder); });
  }
  On_Click(button, row.handler);
  if (row.handler != End_Transfer) {
    transfer_buttons_.push_back(button);
  } else {
    // "Stop" stays: it is the way out. It never takes the focus of a button that goes off, or Space pressed
    // twice on "Write" would end the write.
    button->setFocusPolicy(Qt::NoFocus);
  }
  return button;
}

}  // namespace kx
