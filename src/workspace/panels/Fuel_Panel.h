#pragma once

#include "widgets/xy_chart.h"
#include "workspace/panels/Control_Group.h"
#include "workspace/panels/Tables_Panel.h"

namespace kx {

/// Tab "Fuel".
class Fuel_Panel : public Tables_Panel {
  Q_OBJECT

 public:
  explicit Fuel_Panel(Control_Index& index, QWidget* parent = nullptr);
  void Show_Layout() override;

  /// Coolant_Chart and the labels of its limits.
  void Show_Temperature_Chart();

 private:
  QWidget* Make_Options(Control_Index& index);
  QWidget* Make_Trim(Control_Index& index);
  QWidget* Make_Air_Temperature(Control_Index& index);

  Control_Group* load_base_;
  Control_Group* enrichment_;
  Control_Group* calibration_;
  Control_Group* acceleration_;
  Control_Group* common_trim_;  ///< scroll(36) alone, inside the calibration frame
  Control_Group* master_trim_;
  QWidget* trim_frame_;
  QWidget* first_trim_;  ///< scroll(36) with its label and text; moves between the two places
  QLabel* trim_heading_;
  Xy_Chart* chart_;
  QLabel* low_limit_;
  QLabel* high_limit_;
};

}  // namespace kx
