#include "logging/panels/Log_Setup_Signals.h"

#include <QGridLayout>
#include <QVBoxLayout>

#include "logging/log_settings.h"
#include "logging/log_setup_commands.h"
#include "logging/panels/Setting_Controls.h"
#include "sensors/log_sensors.h"
#include "widgets/form_helpers.h"
#include "widgets/scroll_page.h"

namespace kx {
namespace {

constexpr int name_width_in_characters = 18;

/// Fills a list that does not hold just @p items.
void Fill(QComboBox& list, const QStringList& items) {
  bool same = list.count() == items.size();
  for (int i = 0; same && i < list.count(); ++i) same = list.itemText(i) == items[i];
  if (same) return;
  list.clear();
  list.addItems(items);
}

QStringList Sensor_Names() {
  QStringList names;
  for (const Log_Sensor& sensor : Log_Sens_Def_Tab) names << Shown_Bytes(sensor.name);
  return names;
}

}  // namespace

Log_Setup_Signals::Log_Setup_Signals(QWidget* parent) : QWidget(parent), rows_{} {
  auto* page = new QWidget;
  auto* grid = new QGridLayout(page);
  grid->setVerticalSpacing(2);
  grid->addWidget(new QLabel("Signal"), 0, 0);
  grid->addWidget(new QLabel("Your name for it"), 0, 1);
  grid->addWidget(new QLabel("Sensor"), 0, 2);
  for (int row = 0; row < signal_rows; ++row) {
    const Row widgets = Make_Row(row);
    rows_[static_cast<std::size_t>(row)] = widgets;
    grid->addWidget(widgets.label_SignalName, row + 1, 0);
    grid->addWidget(widgets.txt_CustomSignalName, row + 1, 1);
    grid->addWidget(widgets.Log_Sensor_combo, row + 1, 2);
  }
  grid->setRowStretch(signal_rows + 1, 1);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(new Scroll_Page(page));
}

Log_Setup_Signals::Row Log_Setup_Signals::Make_Row(int row) {
  const auto named = [row](auto* widget, const char* name) {
    widget->setObjectName(QString("%1(%2)").arg(name).arg(row));
    return widget;
  };
  const Row widgets{named(new QLabel, "label_SignalName"), named(new QLineEdit, "txt_CustomSignalName"),
                    named(new QComboBox, "Log_Sensor_combo")};
  widgets.label_SignalName->setToolTip(
      QString("Column %1 of the log: what the box or the program puts there").arg(row + 1));
  widgets.txt_CustomSignalName->setToolTip("What the chart, its tick box and exports call this signal");
  widgets.txt_CustomSignalName->setMinimumWidth(
      widgets.txt_CustomSignalName->fontMetrics().averageCharWidth() * name_width_in_characters);
  widgets.Log_Sensor_combo->setSizeAdjustPolicy(QComboBox::AdjustToContents);
  widgets.Log_Sensor_combo->setToolTip("How the logged number, 0 to 255, becomes a value");
  connect(
      widgets.txt_CustomSignalName, &QLineEdit::textEdited, widgets.txt_CustomSignalName,
      [row](const QString& name) { Guarded([&] { Custom_Signal_Name_Changed(row, name.toStdString()); }); });
  connect(widgets.Log_Sensor_combo, &QComboBox::activated, widgets.Log_Sensor_combo,
          [row](int index) { Guarded([=] { Log_Sensor_combo_Click(row, index); }); });
  return widgets;
}

void Log_Setup_Signals::Show_Row(const Row& widgets, int row, const QStringList& sensors) {
  const Log_Signal_Row& signal = Signal_Row(row);
  widgets.label_SignalName->setText(Text(Default_Signal_Name(row)));
  Show_File_Text(*widgets.txt_CustomSignalName, signal.custom_name);
  Fill(*widgets.Log_Sensor_combo, sensors);
  // A row without a sensor stands at the first of the list.
  widgets.Log_Sensor_combo->setCurrentIndex(signal.sensor < 0 ? 0 : signal.sensor);
  widgets.label_SignalName->setVisible(signal.shown);
  widgets.txt_CustomSignalName->setVisible(signal.shown);
  widgets.Log_Sensor_combo->setVisible(signal.list_enabled);
  widgets.Log_Sensor_combo->setEnabled(signal.list_enabled);
}

void Log_Setup_Signals::Show_Rows() {
  const QStringList sensors = Sensor_Names();
  for (int row = 0; row < signal_rows; ++row) {
    Show_Row(rows_[static_cast<std::size_t>(row)], row, sensors);
  }
}

}  // namespace kx
