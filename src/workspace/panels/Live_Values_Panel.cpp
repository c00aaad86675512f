#include "workspace/panels/Live_Values_Panel.h"

#include <QGridLayout>
#include <QLabel>
#include <QPointer>

#include "logging/log_signals.h"
#include "widgets/form_helpers.h"

namespace kx {
namespace {

constexpr int fields_a_line = 4;

}  // namespace

Live_Values_Panel::Live_Values_Panel(QWidget* parent) : QGroupBox("Engine, while a log runs", parent) {
  setObjectName("Live_Values_Frame");
  auto* grid = new QGridLayout(this);
  for (int i = 0; i < live_value_count; ++i) {
    const QString caption = Text(Default_Signal_Name(i, Log_Layout::current));
    auto* field = new QLineEdit;
    field->setObjectName(live_values.at(static_cast<std::size_t>(i)).field);
    field->setToolTip("Newest " + caption + " of the log, in the unit of its sensor");
    field->setReadOnly(true);
    field->setFocusPolicy(Qt::NoFocus);
    field->setAlignment(Qt::AlignRight);
    fields_.at(static_cast<std::size_t>(i)) = field;
    const int line = i / fields_a_line * 2;
    grid->addWidget(new QLabel(caption), line, i % fields_a_line);
    grid->addWidget(field, line + 1, i % fields_a_line);
  }
  live_log_hooks.show_values = [alive = QPointer(this)] {
    if (alive) alive->Show_Values();
  };
}

void Live_Values_Panel::Show_Values() {
  for (std::size_t i = 0; i < fields_.size(); ++i) fields_.at(i)->setText(Text(live_values.at(i).text));
}

}  // namespace kx
