#include "workspace/panels/Analog_Panel.h"

#include <QGridLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "widgets/number_box.h"
#include "workspace/analog2.h"
#include "workspace/view_hooks.h"

namespace kx {
namespace {

constexpr int analog1_tab = 0;
constexpr int maf_output_tab = 2;
constexpr int maf_limit_tab = 3;

}  // namespace

Analog_Panel::Analog_Panel(Control_Index& index, QWidget* parent) : Tables_Panel("SSTab_Analog", parent) {
  an1_help_ = Add_Page(Table::analog1, {Chart_Id::an1_out_chart})->Add_Help("Label_AN1");
  Make_Analog2(index);
  Add_Page(Table::maf_output, {Chart_Id::MAFSim_chart})
      ->Add_Help("Label_MAFSim", "Enter the desired MAF-signal for each RPM*MAP");
  Add_Page(Table::maf_limit, {Chart_Id::MAFSim_limit_chart})
      ->Add_Help("Label_MAFSim_limit", "Row 1 shows the byte of row 2 and cannot be edited.");
}

/// The tab shows An2out_frame or, while the output is not available, only the notification.
void Analog_Panel::Make_Analog2(Control_Index& index) {
  an2_notification_ = Named_Text("Label_Analog2_notification", "Analog 2 out is disabled");
  auto* mode = new Control_Group("an2_mode_frame", {}, index);
  mode->Choice("an2_combo");
  limit_help_ = Named_Text("Label_AN2_limitexplain");
  limit_frame_ = Plain_Frame("an2_limit_frame", limit_help_);
  function_frame_ =
      Plain_Frame("an2_func_set", Named_Text("Label_AN2_function",
                                             "The table sets the voltage on Analog 2 out for each "
                                             "voltage on Analog 2 in."));
  activation_frame_ = new Control_Group("an2_activation_frame", "Boost sensor activated output", index);
  activation_frame_->Scalar("Boost_activ_level_AN2_scroll");
  activation_frame_->Scalar("AN2_level_scroll");
  an2_page_ = Add_Page(Table::analog2, {Chart_Id::an2_out_limchart, Chart_Id::an2_out_chart},
                       [this, mode](Table_Page* page) {
                         auto* inside = new QWidget;
                         auto* framed = new QVBoxLayout(inside);
                         framed->setContentsMargins(0, 0, 0, 0);
                         framed->addWidget(mode);
                         framed->addWidget(activation_frame_);
                         framed->addWidget(page, 1);
                         framed->addStretch(0);
                         an2_frame_ = Plain_Frame("An2out_frame", inside);
                         auto* tab = new QWidget;
                         auto* layout = new QVBoxLayout(tab);
                         layout->addWidget(an2_notification_, 0, Qt::AlignTop);
                         layout->addWidget(an2_frame_, 1);
                         return tab;
                       });
  an2_page_->Add_Above(limit_frame_);
  an2_page_->Add_Above(function_frame_);
  an2_page_->Add_Below(Make_Generator(index));
}

QWidget* Analog_Panel::Make_Generator(Control_Index& index) {
  auto* frame = new QGroupBox("Curve generator");
  frame->setObjectName("Curve_Generator_Frame");
  auto* run = new QPushButton("Ge&nerate");
  run->setObjectName("Command12");
  run->setToolTip(
      "Mode2: fills the table with a straight line; Mode1 and Mode3: stores gain and offset in the box");
  On_Click(run, Command12_Click);
  auto* layout = new QGridLayout(frame);
  // "Gain         Offset": each word over its box.
  layout->addWidget(new QLabel("Gain"), 0, 0);
  layout->addWidget(new QLabel("Offset"), 0, 1);
  QWidget* gain = Typed_Number("an_gain", an_gain, "Gain of the generated curve: 0 to 255 %");
  QWidget* offset = Typed_Number("an_offset", an_offset, "Offset of the generated curve: -2.51 to 2.49 V");
  layout->addWidget(gain, 1, 0);
  layout->addWidget(offset, 1, 1);
  for (QWidget* box : {gain, offset}) {
    index.Add_Other([box, name = box->objectName().toStdString(), tip = box->toolTip()] {
      Show_Tips(name, *box, tip, {box});
    });
  }
  layout->addWidget(run, 1, 2);
  return frame;
}

void Analog_Panel::Show_Layout() {
  const View_State view_state = View_Of_Tune();
  setTabVisible(analog1_tab, view_state.analog1_tab);
  setTabVisible(maf_output_tab, view_state.maf_output_tab);
  setTabVisible(maf_limit_tab, view_state.maf_limit_tab);
  an1_help_->setText(QString::fromStdString(view_state.Label_AN1));
  an2_frame_->setVisible(view_state.An2out_frame);
  an2_notification_->setVisible(!view_state.An2out_frame);
  const Analog2_Frames frames = Analog2_Frames_Shown();
  limit_help_->setText(QString::fromStdString(view_state.Label_AN2_limitexplain));
  limit_frame_->setVisible(frames.an2_limit_frame);
  function_frame_->setVisible(frames.an2_func_set);
  activation_frame_->setVisible(frames.an2_activation_frame);
  an2_page_->setVisible(frames.an2_out_grid);
}

}  // namespace kx
