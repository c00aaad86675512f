#include "workspace/panels/Table_Control_Panel.h"

#include <QGridLayout>
#include <QLabel>
#include <QPushButton>

#include "widgets/form_helpers.h"
#include "workspace/table_limits.h"
#include "workspace/table_operations.h"

namespace kx {
namespace {

QPushButton* Button(const QString& name, const QString& caption, const QString& tip, void (*handler)()) {
  auto* button = new QPushButton(caption);
  button->setObjectName(name);
  button->setToolTip(tip);
  button->setFocusPolicy(Qt::TabFocus);  // a click leaves the focus in the grid
  On_Click(button, handler);
  return button;
}

QLineEdit* Typed_Box(const QString& name, Shown_Text& text, QPushButton* button) {
  auto* box = new QLineEdit;
  box->setObjectName(name);
  box->setAlignment(Qt::AlignRight);
  Bind_Text(box, text);
  QObject::connect(box, &QLineEdit::returnPressed, button, &QPushButton::click);
  return box;
}

QLineEdit* Limit_Box(const QString& name, Shown_Text& text) {
  auto* box = new QLineEdit;
  box->setObjectName(name);
  box->setAlignment(Qt::AlignRight);
  box->setReadOnly(true);
  box->setFocusPolicy(Qt::NoFocus);
  Bind_Text(box, text);
  return box;
}

}  // namespace

Table_Control_Panel::Table_Control_Panel(QWidget* parent) : QGroupBox("Table Control", parent) {
  setObjectName("tblctrl");
  auto* set = Button("set_table", "Set value", "Give all selected entries this value", set_table_Click);
  auto* scale =
      Button("scale_table", "Scale %", "Scale all selected entries to this percentage", scale_table_Click);
  auto* layout = new QGridLayout(this);
  layout->addWidget(Button("plus", "+", "One step up", plus_Click), 0, 0);
  layout->addWidget(Button("minus", "-", "One step down", minus_Click), 0, 1);
  layout->addWidget(Button("steep", "Steeper", "Each entry one step more than the one before", steep_Click),
                    1, 0);
  layout->addWidget(Button("flat", "Flatter", "Each entry one step less than the one before", flat_Click), 1,
                    1);
  layout->addWidget(set, 2, 0);
  layout->addWidget(Typed_Box("set_table_text", set_table_text, set), 2, 1);
  layout->addWidget(scale, 3, 0);
  layout->addWidget(Typed_Box("scale_table_text", scale_table_text, scale), 3, 1);
  layout->addWidget(new QLabel("Min"), 4, 0);
  layout->addWidget(new QLabel("Max"), 4, 1);
  layout->addWidget(Limit_Box("minText", minText), 5, 0);
  layout->addWidget(Limit_Box("maxText", maxText), 5, 1);
}

}  // namespace kx
