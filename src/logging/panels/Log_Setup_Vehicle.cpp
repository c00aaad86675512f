#include "logging/panels/Log_Setup_Vehicle.h"

#include <QButtonGroup>
#include <QFormLayout>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include "logging/log_setup_commands.h"
#include "logging/log_state.h"
#include "widgets/form_helpers.h"

namespace kx {
namespace {

constexpr int number_width = 8;  ///< characters

/// Option buttons "name(0)" up, one for each unit; @p chosen is the unit that holds.
template <typename Unit>
QWidget* Options(const QString& name, const QString& tip, std::initializer_list<Unit> units, Unit& chosen,
                 void (*handler)(Unit), Setting_Controls& settings) {
  auto* line = new QWidget;
  auto* layout = new QHBoxLayout(line);
  layout->setContentsMargins(0, 0, 0, 0);
  auto* group = new QButtonGroup(line);
  for (const Unit unit : units) {
    auto* option = new QRadioButton(Text(Unit_Name(unit)));
    option->setObjectName(QString("%1(%2)").arg(name).arg(static_cast<int>(unit)));
    option->setToolTip(tip);
    On_Click(option, [unit, handler] { handler(unit); });
    group->addButton(option, static_cast<int>(unit));
    layout->addWidget(option);
  }
  layout->addStretch(1);
  settings.Add([group, &chosen] { group->button(static_cast<int>(chosen))->setChecked(true); });
  return line;
}

}  // namespace

Log_Setup_Vehicle::Log_Setup_Vehicle(Setting_Controls& settings, QWidget* parent)
    : QWidget(parent), frame_Advanced_(Make_Advanced(settings)) {
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(4, 0, 4, 0);
  layout->addWidget(Make_Files(settings));
  layout->addWidget(Make_Car(settings));
  layout->addWidget(Make_Units(settings));
  layout->addWidget(Make_Gearing(settings));
  layout->addWidget(frame_Advanced_);
  layout->addStretch(1);
  frame_Advanced_->hide();
}

QWidget* Log_Setup_Vehicle::Make_Car(Setting_Controls& settings) {
  auto* frame = new QGroupBox("Car");
  auto* rows = new QFormLayout(frame);
  rows->setRowWrapPolicy(QFormLayout::WrapLongRows);
  auto* weight = new QWidget;
  auto* line = new QHBoxLayout(weight);
  line->setContentsMargins(0, 0, 0, 0);
  line->addWidget(settings.Line("txt_Weight", log_settings.txt_Weight,
                                "Weight of the car with its driver, above 0, in the unit beside",
                                number_width));
  line->addWidget(Options("Weight_option", "Unit of the weight; the number is converted",
                          {Weight_Unit::kg, Weight_Unit::lbs}, log_settings.Weight_option,
                          Weight_option_Click, settings));
  rows->addRow("Car weight", weight);
  const auto number = [&](const QString& caption, const QString& name, std::string& text,
                          const QString& tip) {
    rows->addRow(caption, settings.Line(name, text, tip, number_width));
  };
  number("Air resistance [Cw]", "txt_AirResistance", log_settings.txt_AirResistance,
         "Drag coefficient of the car, 0 to about 1; 0 or nothing leaves air resistance out");
  number("Frontal area [m2]", "txt_FrontalArea", log_settings.txt_FrontalArea,
         "Frontal area of the car, m2, about 1.5 to 3");
  number("Air density [kg/m3] (Norm 1.225 at sea level)", "txt_AirDensity", log_settings.txt_AirDensity,
         "Density of the air, kg/m3, about 0.9 to 1.4");
  number("Maximum hp showed in graph", "txt_Max_Hp", log_settings.txt_Max_Hp,
         "More power than this is shown as this, hp");
  number("Minimum hp showed in graph", "txt_Min_Hp", log_settings.txt_Min_Hp,
         "Less power than this is shown as this, hp");
  return frame;
}

QWidget* Log_Setup_Vehicle::Make_Gearing(Setting_Controls& settings) {
  auto* frame = new QGroupBox("Gearing for different gears (speed @ 1000rpm)");
  auto* grid = new QGridLayout(frame);
  for (int gear = 1; gear <= gear_count; ++gear) {
    const int column = (gear - 1) % 3 * 2;
    const int row = (gear - 1) / 3;
    grid->addWidget(new QLabel(QString::number(gear)), row, column, Qt::AlignRight);
    grid->addWidget(
        settings.Line(QString("txt_Gearing(%1)").arg(gear),
                      log_settings.txt_Gearing[static_cast<std::size_t>(gear)],
                      "Speed in this gear at 1000 rpm, above 0, in the chosen unit of speed", number_width),
        row, column + 1);
  }
  auto* result =
      settings.Line("txt_Gearing(0)", log_settings.txt_Gearing[0],
                    "Speed at 1000 rpm by the calculator: copy it to the gear it is for", number_width);
  auto* calculate = new QPushButton("Calculate");
  calculate->setObjectName("cmd_Calc_Gearing");
  calculate->setToolTip("Speed at 1000 rpm from the speed at an engine speed");
  On_Click(calculate, cmd_Calc_Gearing_Click);
  auto* line = new QHBoxLayout;
  line->addWidget(new QLabel("Speed"));
  line->addWidget(settings.Line("txt_Speed", log_settings.txt_Speed,
                                "Speed in the gear, whole number in the chosen unit of speed", number_width));
  line->addWidget(new QLabel("at"));
  line->addWidget(settings.Line("txt_RPM", log_settings.txt_RPM,
                                "Engine speed at that speed, rpm, whole number above 0", number_width));
  line->addWidget(new QLabel("rpm"));
  line->addWidget(calculate);
  line->addStretch(1);
  auto* answer = new QHBoxLayout;
  answer->addWidget(result);
  answer->addWidget(new QLabel("[speed/tRPM]"));
  answer->addStretch(1);
  grid->addLayout(line, 2, 0, 1, 6);
  grid->addLayout(answer, 3, 0, 1, 6);
  return frame;
}

QWidget* Log_Setup_Vehicle::Make_Units(Setting_Controls& settings) {
  auto* frame = new QGroupBox("Units");
  auto* rows = new QFormLayout(frame);
  rows->addRow("Speed", Options("Speed_option", "Unit of speed; the gears are converted",
                                {Speed_Unit::kmh, Speed_Unit::mph, Speed_Unit::ms}, log_settings.Speed_option,
                                Speed_option_Click, settings));
  rows->addRow("Torque", Options("Torque_option", "Unit of torque", {Torque_Unit::Nm, Torque_Unit::ft_lbs},
                                 log_settings.Torque_option, Torque_option_Click, settings));
  return frame;
}

QWidget* Log_Setup_Vehicle::Make_Files(Setting_Controls& settings) {
  auto* frame = new QGroupBox("Log files");
  auto* rows = new QFormLayout(frame);
  const auto check = [&](const QString& name, const QString& caption, bool& state, const QString& tip) {
    QCheckBox* box = settings.Check(name, caption, state, tip);
    rows->addRow(box);
    return box;
  };
  rows->addRow("Default name", settings.Line("txt_Default_Save_Name", log_settings.txt_Default_Save_Name,
                                             "What the names of new logs begin with; date and time follow"));
  check("check_AutoSave", "Auto save log file without showing a naming dialog", log_settings.check_AutoSave,
        "Each log is saved at STOP under the default name with date and time");
  check("check_SettingsInLogg",
        "Include box settings in the log file when making new log\n"
        "(Reads out the current settings from box atomatically)",
        log_settings.check_SettingsInLogg, "START reads the box first; the tune on show comes back at STOP");
  QCheckBox* only =
      check("check_LogToFileOnly", "Log to file, without showing real time graph",
            log_settings.check_LogToFileOnly, "For slow computers: nothing is drawn until STOP");
  On_Click(only, [] { Show_Log(log_view_hooks.show_settings); });
  auto* longest = Named_Text("Label_Max_Log_Length", Text(Max_Log_Length_Text()));
  longest->setToolTip("A longer log goes on in the next numbered file");
  rows->addRow("Maximal log length per file:", longest);
  return frame;
}

QGroupBox* Log_Setup_Vehicle::Make_Advanced(Setting_Controls& settings) {
  auto* frame = new QGroupBox("Calculations");
  frame->setObjectName("frame_Advanced");
  auto* rows = new QFormLayout(frame);
  rows->addRow(
      "Smoothing of rpm",
      settings.Line("txt_FIR(0)", log_settings.txt_FIR[0],
                    "Rows to each side that rpm is averaged over, whole number from 0", number_width));
  rows->addRow("Smoothing of power",
               settings.Line("txt_FIR(1)", log_settings.txt_FIR[1],
                             "Rows before that power is averaged over, whole number from 0", number_width));
  auto* filter = new QCheckBox("Fuel filter");
  filter->setObjectName("Fuel_filter_check");
  filter->setToolTip("Shows the injectors as fully open where their time collapses at full load");
  connect(filter, &QCheckBox::clicked, filter,
          [](bool on) { Guarded([on] { Fuel_filter_check_Click(on); }); });
  settings.Add([filter] { filter->setChecked(log_settings.Fuel_filter_check); });
  rows->addRow(filter);
  auto* import = new QPushButton("Import default sensors");
  import->setObjectName("cmd_Import_Default_Sensors");
  import->setToolTip("Add the built-in sensors that this log does not have");
  On_Click(import, cmd_Import_Default_Sensors_Click);
  rows->addRow(import);
  return frame;
}

}  // namespace kx
