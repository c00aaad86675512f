#include "workspace/panels/Pwm_Panel.h"

#include <QCheckBox>
#include <QVBoxLayout>

#include "widgets/form_helpers.h"
#include "workspace/box_settings.h"
#include "workspace/view_hooks.h"

namespace kx {

Pwm_Panel::Pwm_Panel(Control_Index& index, QWidget* parent) : Tables_Panel("SSTab_PWM", parent) {
  Table_Page* load = Add_Page(Table::pwm_load, {Chart_Id::PwmMapChart});
  load_base_ = new Control_Group("PWM_Load_Frame", "Base PWM load", index);
  load_base_->Choice("pwm_combo");
  load->Add_Below(load_base_);
  Table_Page* rpm = Add_Page(Table::pwm_rpm, {Chart_Id::PwmRpmChart});
  notification_ = new QGroupBox;
  notification_->setObjectName("Frame_PWMRPM_Notification");
  notification_text_ = Named_Text("txt_PWMRPM_Notification");
  auto* layout = new QVBoxLayout(notification_);
  layout->addWidget(notification_text_);
  rpm->Add_Above(notification_);
  Add_Scrolled(page::boost_control, Make_Boost_Control(index));
}

QWidget* Pwm_Panel::Make_Boost_Control(Control_Index& index) {
  auto* mode = new Control_Group("Boost_Mode_Frame", "Closed loop", index);
  mode->Choice("BoostControlPICheck");
  closed_loop_ = mode->findChild<QCheckBox*>("BoostControlPICheck");
  not_available_ = Named_Text("Label_BoostControl_Notification",
                              "Closed loop boost control is not available with the selected model preset.");
  mode->Wide(not_available_);
  on_off_ = new Control_Group("PWM_On_Off_Frame", "Open loop", index);
  on_off_->Choice("pwm1_check");
  pid_ = new Control_Group("PWM_PID_Frame", "PID regulator", index);
  for (const char* name : {"scroll(40)", "scroll(41)", "scroll(42)", "scroll(43)"}) {
    pid_->Scalar(name);
    pid_->Help(Text(Scalar_Row_Of(name).tip));
  }
  auto* page = new QWidget;
  auto* layout = new QVBoxLayout(page);
  layout->addWidget(mode);
  layout->addWidget(pid_);
  layout->addWidget(on_off_);
  layout->addStretch(1);
  return page;
}

void Pwm_Panel::Show_Layout() {
  const View_State view_state = View_Of_Tune();
  const Config_State config_state = Config_Of_Tune();
  load_base_->setEnabled(config_state.PWM_Load_Frame);
  pid_->setEnabled(config_state.PWM_PID_Frame);
  closed_loop_->setEnabled(config_state.PWM_PID_Frame);
  not_available_->setEnabled(config_state.Label_BoostControl_Notification());
  not_available_->setVisible(config_state.Label_BoostControl_Notification());
  on_off_->setVisible(config_state.pwm1_check);
  notification_->setTitle(QString::fromStdString(view_state.Frame_PWMRPM_Notification));
  notification_text_->setText(QString::fromStdString(view_state.txt_PWMRPM_Notification));
}

}  // namespace kx
