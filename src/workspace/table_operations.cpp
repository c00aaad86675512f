#include "workspace/table_operations.h"

#include <algorithm>
#include <functional>

#include "settings/image.h"
#include "settings/message.h"
#include "settings/numbers.h"
#include "settings/refresh.h"
#include "workspace/history.h"
#include "workspace/table_limits.h"

namespace kx {

Shown_Text set_table_text;
Shown_Text scale_table_text;

namespace {

/// New byte of one selected cell; @p row is its grid row.
using Edit = std::function<std::uint8_t(const Edit_Form& form, const Cell& cell, int row)>;

Edit_Rule Ignition_Rule(Table table) {
  const bool load_percent = Get_Field(map::ignition_load_in_percent) == 1;
  if (table == Table::ignition_load) {
    return load_percent ? Edit_Rule::ignition_load_percent : Edit_Rule::ignition_load_degrees;
  }
  return load_percent ? Edit_Rule::ignition_rpm_degrees : Edit_Rule::ignition_rpm_percent;
}

Edit_Rule Rule_Of(Table table) {
  switch (table) {
    case Table::ignition_load:
    case Table::ignition_rpm:
      return Ignition_Rule(table);
    case Table::fuel_load:
      return Get_Field(map::fuel_by_pwm) == 1 ? Edit_Rule::fuel_duty : Edit_Rule::fuel_time;
    case Table::fuel_rpm:
      return Edit_Rule::fuel_rpm;
    case Table::pwm_load:
      return Edit_Rule::pwm;
    case Table::pwm_rpm:
      return Boost_Closed_Loop() ? Edit_Rule::boost_target : Edit_Rule::pwm;
    default:
      return Edit_Rule::volts;
  }
}

Cell Cell_At(const Table_Row& table, int row) {
  const std::string& text = Grid_Of(table.table).Text(row, table.text_column);
  return {CardByte[Edited_Byte(table.table, row)], Val_Any(text)};
}

void Edit_Selection(Table id, const Edit_Form& form, const Edit& edit) {
  const Table_Row& table = Row_Of(id);
  const Grid& grid = Grid_Of(id);
  for (int row = table.first_row; row < grid.Rows(); ++row) {
    if (grid.Selected(row)) CardByte[Edited_Byte(id, row)] = edit(form, Cell_At(table, row), row);
  }
}

/// What every button does: history, the selection of the table on show, the views.
void Run_On_Shown_Table(const Edit& edit) {
  Capture_History();
  if (const auto table = Active_Table()) Edit_Selection(*table, Edit_Form_Of(*table, false), edit);
  Update_All();
}

void Step_Selection(int sign) {
  const int end = sign > 0 ? 255 : 0;
  Run_On_Shown_Table([sign, end](const Edit_Form& form, const Cell& cell, int) {
    return cell.raw == end ? cell.raw : Stepped(form, cell, sign);
  });
}

void Slope_Selection(int sign) {
  const auto table = Active_Table();
  const int start = table ? Grid_Of(*table).Sel_Start() : 0;
  Run_On_Shown_Table([sign, start](const Edit_Form& form, const Cell& cell, int row) {
    return Sloped(form, cell, sign * (row - start));
  });
}

}  // namespace

Edit_Form Edit_Form_Of(Table table, bool fresh_limits) {
  if (table == Table::ignition_load) Get_igmap_maxmin();
  if (table == Table::ignition_rpm) Get_igrpm_maxmin();
  if (table == Table::fuel_load && fresh_limits) Get_fuelmap_maxmin();
  Edit_Form form{Rule_Of(table), Table_Max, Table_Min, Table_Gain, Table_Offset1, Table_Offset2};
  if (form.rule == Edit_Rule::boost_target) form.boost_sensor = Boost_Sensor();
  return form;
}

void plus_Click() { Step_Selection(1); }

void minus_Click() { Step_Selection(-1); }

void steep_Click() { Slope_Selection(1); }

void flat_Click() { Slope_Selection(-1); }

void set_table_Click() {
  Capture_History();
  if (const auto table = Active_Table()) {
    const Edit_Form form = Edit_Form_Of(*table, true);
    const double typed = Required_Number(set_table_text.Text());
    const double value = Clipped_To_Set(form, typed);
    if (value < typed || value > typed) set_table_text.Set(Number_Text(value));
    Edit_Selection(*table, form, [value](const Edit_Form& f, const Cell&, int) { return Set_To(f, value); });
  }
  Update_All();
}

void scale_table_Click() {
  try {
    Run_On_Shown_Table([](const Edit_Form& form, const Cell& cell, int) {
      return Scaled(form, cell, Required_Number(scale_table_text.Text()));
    });
  } catch (const Failure&) {
    Tell("not a number");
  }
}

}  // namespace kx
