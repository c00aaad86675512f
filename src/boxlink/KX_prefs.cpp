#include "boxlink/KX_prefs.h"

#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QShowEvent>
#include <QVBoxLayout>

#include "boxlink/port_map.h"
#include "boxlink/preferences.h"
#include "settings/session.h"
#include "widgets/form_helpers.h"
#include "widgets/wheel_guard.h"

namespace kx {
namespace {

/// Width of the list of ports; longer descriptions are cut at the list and whole in its tool tips.
constexpr int list_width_in_characters = 44;

template <typename Handler>
QPushButton* Button(const QString& name, const QString& caption, Handler handler) {
  auto* button = new QPushButton(caption);
  button->setObjectName(name);
  On_Click(button, handler);
  return button;
}

}  // namespace

KX_prefs::KX_prefs(QWidget* parent) : QWidget(parent, Qt::Window) {
  setObjectName("KX_prefs");
  setWindowTitle("PC settings");
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(Make_Port_List());
  layout->addWidget(Make_Interface_Options());
  layout->addStretch(1);
  layout->addWidget(Make_Buttons());
  Guard_Wheels_In(this);
  Show_Preferences();
}

QWidget* KX_prefs::Make_Port_List() {
  auto* frame = new QGroupBox("Serial port");
  frame->setObjectName("Port_Frame");
  Combo1_ = new QComboBox;
  Combo1_->setObjectName("Combo1");
  Combo1_->setToolTip("Serial port that the box is connected to");
  Combo1_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  Combo1_->setMinimumContentsLength(list_width_in_characters);
  auto* layout = new QVBoxLayout(frame);
  layout->addWidget(Combo1_);
  return frame;
}

QWidget* KX_prefs::Make_Interface_Options() {
  auto* frame = new QGroupBox("Card interface (Ctrl+T to toggle)");
  frame->setObjectName("Interface_Frame");
  auto* layout = new QVBoxLayout(frame);
  interface_options_ = new QButtonGroup(this);
  for (const Interface_Option& option : interface_options) {
    auto* button = new QRadioButton(Text(option.caption));
    button->setObjectName(Text(option.control));
    button->setToolTip("Way to a card; holds after Apply or OK");
    On_Click(button, [this, &option] { interface_word_ = option.word; });
    interface_options_->addButton(button, Option_Of_Interface(option.word));
    layout->addWidget(button);
  }
  return frame;
}

QWidget* KX_prefs::Make_Buttons() {
  auto* line = new QWidget;
  auto* system = new QLabel(Text(Label_OS_Text()));
  system->setObjectName("Label_OS");
  auto* layout = new QHBoxLayout(line);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(system, 1);
  layout->addWidget(Button("ApplyButton", "&Apply", [this] { ApplyButton_Click(); }));
  layout->addWidget(Button("OKButton", "&OK", [this] {
    ApplyButton_Click();
    hide();
  }));
  return line;
}

void KX_prefs::Show_Preferences() {
  ports_ = List_Ports();
  Combo1_->clear();
  for (const std::string& row : Port_Rows(ports_)) {
    Combo1_->addItem(Text(row));
    Combo1_->setItemData(Combo1_->count() - 1, Text(row), Qt::ToolTipRole);
  }
  Combo1_->setPlaceholderText(Text(Com_Name(Com_Port_Number) + " is not there"));
  Combo1_->setCurrentIndex(Row_Of_Port(ports_, Com_Port_Number));
  Show_Interface();
}

/// A group that wants one button down lets none go up.
void KX_prefs::Show_Interface() {
  interface_word_ = Default_Interface;
  const int chosen = Option_Of_Interface(interface_word_);
  interface_options_->setExclusive(false);
  for (QAbstractButton* option : interface_options_->buttons()) {
    option->setChecked(interface_options_->id(option) == chosen);
  }
  interface_options_->setExclusive(true);
}

void KX_prefs::Enable_Apply(bool enabled) {
  for (const char* name : {"ApplyButton", "OKButton"}) findChild<QPushButton*>(name)->setEnabled(enabled);
}

void KX_prefs::showEvent(QShowEvent* event) {
  QWidget::showEvent(event);
  if (!event->spontaneous()) Guarded([this] { Show_Preferences(); });
}

void KX_prefs::ApplyButton_Click() { Apply_Preferences(ports_, Combo1_->currentIndex(), interface_word_); }

}  // namespace kx
