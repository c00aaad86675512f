#pragma once

#include "workspace/panels/Control_Group.h"
#include "workspace/panels/Tables_Panel.h"

namespace kx {

/// Tab "Ignition".
class Ignition_Panel : public Tables_Panel {
  Q_OBJECT

 public:
  explicit Ignition_Panel(Control_Index& index, QWidget* parent = nullptr);
  void Show_Layout() override;

 private:
  QLabel* load_help_;
  QLabel* rpm_help_;
  QFrame* rpm_normal_;
  QFrame* rpm_maf_limit_;
};

}  // namespace kx
