#pragma once

#include <QCheckBox>
#include <QGroupBox>

#include "workspace/panels/Control_Group.h"
#include "workspace/panels/Tables_Panel.h"

namespace kx {

/// Tab "PWM/Boost".
class Pwm_Panel : public Tables_Panel {
  Q_OBJECT

 public:
  explicit Pwm_Panel(Control_Index& index, QWidget* parent = nullptr);
  void Show_Layout() override;

 private:
  QWidget* Make_Boost_Control(Control_Index& index);

  Control_Group* load_base_;
  QGroupBox* notification_;
  QLabel* notification_text_;
  Control_Group* on_off_;
  Control_Group* pid_;
  QCheckBox* closed_loop_;
  QLabel* not_available_;
};

}  // namespace kx
