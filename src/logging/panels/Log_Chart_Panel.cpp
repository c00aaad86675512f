#include "logging/panels/Log_Chart_Panel.h"

#include <QHBoxLayout>
#include <QRadioButton>
#include <QVBoxLayout>
#include <array>

#include "logging/chart_view.h"
#include "logging/live_log.h"
#include "logging/log_setup_commands.h"
#include "logging/log_state.h"
#include "logging/panels/Log_Stretch.h"
#include "widgets/form_helpers.h"

namespace kx {
namespace {

constexpr int scale_width = 7;  ///< characters

struct Stretch_Button {
  const char* name;
  const char* caption;
  const char* tip;
  void (*handler)();
};

constexpr std::array stretch_buttons{
    Stretch_Button{"cmd_Scroll_Left", "<", "Earlier, by a quarter of the width", cmd_Scroll_Left_Click},
    Stretch_Button{"cmd_Scroll_Right", ">", "Later, by a quarter of the width", cmd_Scroll_Right_Click},
    Stretch_Button{"cmd_ZoomIn", "Zoom in", "The middle half of what is shown", cmd_ZoomIn_Click},
    Stretch_Button{"cmd_ZoomOut", "Zoom out", "A quarter more on each side", cmd_ZoomOut_Click},
    Stretch_Button{"cmd_ZoomAll", "All", "The whole log", cmd_ZoomAll_Click}};

/// A box of one end of a value axis; what is typed counts with Enter, and comes back when the box is left.
QLineEdit* Scale_Box(const QString& name, const QString& tip, std::string Log_Settings::*text,
                     Setting_Controls& settings) {
  auto* box = new QLineEdit;
  box->setObjectName(name);
  box->setToolTip(tip + ": a number in the unit of the signals, or Auto; Enter takes it");
  box->setFixedWidth(box->fontMetrics().averageCharWidth() * scale_width);
  QObject::connect(box, &QLineEdit::returnPressed, box,
                   [box, text] { Guarded([=] { Scale_Box_Entered(text, box->text().toStdString()); }); });
  QObject::connect(box, &QLineEdit::editingFinished, box,
                   [box, text] { Show_File_Text(*box, log_settings.*text); });
  settings.Add([box, text] { Show_File_Text(*box, log_settings.*text); });
  return box;
}

}  // namespace

Log_Chart_Panel::Log_Chart_Panel(Setting_Controls& settings, QWidget* parent)
    : QWidget(parent),
      MSChart1_(new Log_Chart("MSChart1", Log_Chart::Gestures::stretch)),
      label_NoGraph_(new QLabel(no_graph_text)),
      view_logg_(nullptr) {
  MSChart1_->setToolTip(
      "Left click and drag mouse in chart to zoom.\nRight click to zoom out.\n"
      "Click at a line to read its values. The wheel zooms, the middle button drags, arrow keys step.");
  label_NoGraph_->setObjectName("label_NoGraph");
  label_NoGraph_->setAlignment(Qt::AlignCenter);
  QFont large = label_NoGraph_->font();
  large.setPointSizeF(large.pointSizeF() * 2);
  label_NoGraph_->setFont(large);
  label_NoGraph_->hide();
  auto* line = new QHBoxLayout;
  line->addWidget(Make_Gears(settings));
  line->addStretch(1);
  line->addWidget(Make_Scales(settings));
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(2);
  layout->addLayout(line);
  layout->addWidget(MSChart1_, 1);
  layout->addWidget(label_NoGraph_, 1);
  layout->addWidget(Make_Buttons());
  Connect_Gestures();
}

QWidget* Log_Chart_Panel::Make_Scales(Setting_Controls& settings) {
  auto* scales = new QWidget;
  auto* layout = new QHBoxLayout(scales);
  layout->setContentsMargins(0, 0, 0, 0);
  const auto add = [&](const QString& name, const QString& caption, std::string Log_Settings::*low,
                       std::string Log_Settings::*high) {
    layout->addWidget(new QLabel(caption));
    layout->addWidget(Scale_Box("txt_" + name + "YScale_Min", "Lower end of the scale", low, settings));
    layout->addWidget(new QLabel("-"));
    layout->addWidget(Scale_Box("txt_" + name + "YScale_Max", "Upper end of the scale", high, settings));
  };
  add("1st", "1st Y", &Log_Settings::txt_1stYScale_Min, &Log_Settings::txt_1stYScale_Max);
  layout->addSpacing(fontMetrics().averageCharWidth());
  add("2nd", "2nd Y", &Log_Settings::txt_2ndYScale_Min, &Log_Settings::txt_2ndYScale_Max);
  return scales;
}

/// A group that wants one button down lets none go up, and a file may have chosen none.
QWidget* Log_Chart_Panel::Make_Gears(Setting_Controls& settings) {
  auto* gears = new QWidget;
  auto* group = new QButtonGroup(this);
  auto* layout = new QHBoxLayout(gears);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(new QLabel("Gear"));
  for (int gear = 1; gear <= gear_count; ++gear) {
    auto* option = new QRadioButton(QString::number(gear));
    option->setObjectName(QString("Gear_option(%1)").arg(gear));
    option->setToolTip(QString("The log was driven in gear %1: for speed, power and torque").arg(gear));
    On_Click(option, [gear] { Gear_option_Click(gear); });
    group->addButton(option, gear);
    layout->addWidget(option);
  }
  settings.Add([group] {
    group->setExclusive(false);
    for (QAbstractButton* option : group->buttons()) {
      option->setChecked(group->id(option) == log_settings.Gear_option);
    }
    group->setExclusive(true);
  });
  return gears;
}

QWidget* Log_Chart_Panel::Make_Buttons() {
  auto* buttons = new QWidget;
  auto* layout = new QHBoxLayout(buttons);
  layout->setContentsMargins(0, 0, 0, 0);
  for (const Stretch_Button& row : stretch_buttons) {
    auto* button = new QPushButton(row.caption);
    button->setObjectName(row.name);
    button->setToolTip(row.tip);
    On_Click(button, row.handler);
    layout->addWidget(button);
  }
  view_logg_ = new QPushButton("Redraw (F11)");
  view_logg_->setObjectName("view_logg");
  view_logg_->setToolTip("Draw the chart anew");
  On_Click(view_logg_, [] { Show_Log(log_view_hooks.show_chart); });
  layout->addStretch(1);
  layout->addWidget(view_logg_);
  return buttons;
}

void Log_Chart_Panel::Connect_Gestures() {
  connect(MSChart1_, &Log_Chart::Stretch_Chosen, this,
          [](double from, double to) { Guarded([=] { Chart_Stretch_Chosen(from, to); }); });
  connect(MSChart1_, &Log_Chart::Zoom_Out_Asked, this, [] { Guarded(cmd_ZoomOut_Click); });
  connect(MSChart1_, &Log_Chart::Wheel_Zoomed, this,
          [](double at, int steps) { Guarded([=] { Chart_Wheel_Zoomed(at, steps); }); });
  connect(MSChart1_, &Log_Chart::Dragged, this,
          [](double share) { Guarded([=] { Chart_Moved_By(share); }); });
  connect(MSChart1_, &Log_Chart::Row_Step_Asked, this,
          [](int step) { Guarded([=] { Chart_Stepped(step); }); });
  connect(MSChart1_, &Log_Chart::Point_Picked, this, [this](std::size_t index) {
    point_ = Log_Chart_First + static_cast<int>(index);
    Guarded([this] { Show_All_Point_Values(*point_); });
    Show_Mark();
  });
}

void Log_Chart_Panel::Update_Chart() {
  const auto between = [](const std::string& low, const std::string& high) -> Fixed_Range {
    const auto ends = Fixed_Scale(low, high);
    return ends ? Fixed_Range(QCPRange(ends->low, ends->high)) : std::nullopt;
  };
  const Log_Settings& chosen = log_settings;
  const Log_Stretch stretch(Log_Chart_First, Log_Chart_Last);
  MSChart1_->Show(stretch.Column(0), "Time [s]", stretch.Ticked(),
                  between(chosen.txt_1stYScale_Min, chosen.txt_1stYScale_Max),
                  between(chosen.txt_2ndYScale_Min, chosen.txt_2ndYScale_Max), no_signal_text);
  Show_Mark();
}

void Log_Chart_Panel::Show_Mark() {
  const bool shown = point_ && *point_ >= Log_Chart_First && *point_ <= Log_Chart_Last;
  MSChart1_->Mark(shown ? std::optional(static_cast<std::size_t>(*point_ - Log_Chart_First)) : std::nullopt);
}

void Log_Chart_Panel::Forget_Point() {
  point_.reset();
  Clear_LineTextWindow();
  MSChart1_->Mark(std::nullopt);
}

void Log_Chart_Panel::Show_Graph(bool shown) {
  MSChart1_->setVisible(shown);
  label_NoGraph_->setVisible(!shown);
}

}  // namespace kx
