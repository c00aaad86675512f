#pragma once

#include "workspace/panels/Control_Group.h"
#include "workspace/panels/Tables_Panel.h"

namespace kx {

/// Tab "Analog".
class Analog_Panel : public Tables_Panel {
  Q_OBJECT

 public:
  explicit Analog_Panel(Control_Index& index, QWidget* parent = nullptr);
  void Show_Layout() override;

 private:
  void Make_Analog2(Control_Index& index);
  QWidget* Make_Generator(Control_Index& index);

  QLabel* an1_help_;
  Table_Page* an2_page_;
  QFrame* an2_frame_;
  QLabel* an2_notification_;
  QLabel* limit_help_;
  QFrame* limit_frame_;
  QFrame* function_frame_;
  Control_Group* activation_frame_;
};

}  // namespace kx
