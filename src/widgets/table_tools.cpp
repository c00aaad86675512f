#include "widgets/table_tools.h"

#include <QGridLayout>
#include <QLabel>
#include <QPushButton>

#include "widgets/form_helpers.h"
#include "widgets/number_box.h"

namespace kx {
namespace {

QPushButton* Button(const QString& name, const QString& caption, const QString& tip,
                    const std::function<void()>& handler) {
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

Table_Tools::Table_Tools(const Table_Tool_Handlers& handlers, int columns, QWidget* parent)
    : QGroupBox("Table Control", parent) {
  setObjectName("tblctrl");
  const bool limits = handlers.minText != nullptr && handlers.maxText != nullptr;
  const QString range = limits ? "; from Min to Max below" : "";
  auto* layout = new QGridLayout(this);
  int place = 0;
  const auto add = [&](QWidget* widget, Qt::Alignment alignment = {}) {
    layout->addWidget(widget, place / columns, place % columns, alignment);
    ++place;
  };
  add(Button("plus", "&+", "One step up (Ctrl+Up in the table)", handlers.plus));
  add(Button("minus", "&-", "One step down (Ctrl+Down in the table)", handlers.minus));
  add(Button("steep", "Stee&per", "Each entry one step more than the one before", handlers.steep));
  add(Button("flat", "Fla&tter", "Each entry one step less than the one before", handlers.flat));
  auto* set = Button("set_table", "Set val&ue", "Give all selected entries this value", handlers.set_table);
  add(set);
  add(Typed_Box("set_table_text", "Value for the selected entries, in the table's unit" + range,
                *handlers.set_table_text, set));
  auto* scale = Button("scale_table", "Sc&ale %", "Scale all selected entries to this percentage",
                       handlers.scale_table);
  add(scale);
  add(Typed_Box("scale_table_text", "Percentage for the selected entries: 110 makes them a tenth larger",
                *handlers.scale_table_text, scale));
  if (!limits) return;
  add(new QLabel("Min"), Qt::AlignRight);
  add(Limit_Box("minText", "Smallest value of this table", *handlers.minText));
  add(new QLabel("Max"), Qt::AlignRight);
  add(Limit_Box("maxText", "Largest value of this table", *handlers.maxText));
}

}  // namespace kx
