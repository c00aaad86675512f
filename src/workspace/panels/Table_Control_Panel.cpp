#include "workspace/panels/Table_Control_Panel.h"

#include <QGridLayout>
#include <QLabel>
#include <QPushButton>

#include "widgets/form_helpers.h"
#include "widgets/number_box.h"
#include "workspace/table_limits.h"
#include "workspace/table_operations.h"

namespace kx {
namespace {

QPushButton* Button(const QString& name, const QString& caption, const QString& tip, void (*handler)()) {
  auto* button = new QPushButton(caption);
  button->setObjectName(name);
  button->setToolTip(tip);
  button->setFocusPolicy(Qt::TabFocus);  // a click leaves the focus in the grid
  button->setMinimumWidth(button->fontMetrics().horizontalAdvance("  Set value  "));
  On_Click(button, handler);
  return button;
}

/// A box whose Enter presses @p button. What was used stays selected: the next digit starts a new number.
QLineEdit* Typed_Box(const QString& name, const QString& tip, Shown_Text& text, QPushButton* button) {
  QLineEdit* box = Typed_Number(name, text, tip);
  QObject::connect(box, &QLineEdit::returnPressed, button, &QPushButton::click);
  QObject::connect(button, &QPushButton::clicked, box, [box] {
    if (box->hasFocus()) box->selectAll();
  });
  return box;
}

QLineEdit* Limit_Box(const QString& name, const QString& tip, Shown_Text& text) {
  QLineEdit* box = Typed_Number(name, text, tip);
  box->setReadOnly(true);
  box->setFocusPolicy(Qt::NoFocus);
  return box;
}

}  // namespace

Table_Control_Panel::Table_Control_Panel(QWidget* parent) : QGroupBox("Table Control", parent) {
  setObjectName("tblctrl");
  auto* set = Button("set_table", "Set val&ue", "Give all selected entries this value", set_table_Click);
  auto* scale =
      Button("scale_table", "Sc&ale %", "Scale all selected entries to this percentage", scale_table_Click);
  auto* layout = new QGridLayout(this);
  layout->addWidget(Button("plus", "&+", "One step up (Ctrl+Up in the table)", plus_Click), 0, 0);
  layout->addWidget(Button("minus", "&-", "One step down (Ctrl+Down in the table)", minus_Click), 0, 1);
  layout->addWidget(Button("steep", "Stee&per", "Each entry one step more than the one before", steep_Click),
                    0, 2);
  layout->addWidget(Button("flat", "Fla&tter", "Each entry one step less than the one before", flat_Click), 0,
                    3);
  layout->addWidget(set, 1, 0);
  layout->addWidget(Typed_Box("set_table_text",
                              "Value for the selected entries, in the table's unit; from Min to Max below",
                              set_table_text, set),
                    1, 1);
  layout->addWidget(scale, 1, 2);
  layout->addWidget(
      Typed_Box("scale_table_text", "Percentage for the selected entries: 110 makes them a tenth larger",
                scale_table_text, scale),
      1, 3);
  layout->addWidget(new QLabel("Min"), 2, 0, Qt::AlignRight);
  layout->addWidget(Limit_Box("minText", "Smallest value of this table", minText), 2, 1);
  layout->addWidget(new QLabel("Max"), 2, 2, Qt::AlignRight);
  layout->addWidget(Limit_Box("maxText", "Largest value of this table", maxText), 2, 3);
}

}  // namespace kx
