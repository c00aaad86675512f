#include "workspace/table_limits.h"

#include "settings/numbers.h"
#include "workspace/table_meaning.h"

namespace kx {

Shown_Text minText;
Shown_Text maxText;

namespace {

void Show_Limits(Table table) {
  const Value_Range limits = Meaning_Of(table).limits;
  minText.Set(Number_Text(limits.min));
  maxText.Set(Number_Text(limits.max));
}

}  // namespace

void Get_igmap_maxmin() { Show_Limits(Table::ignition_load); }

void Get_igrpm_maxmin() { Show_Limits(Table::ignition_rpm); }

void Get_fuelmap_maxmin() { Show_Limits(Table::fuel_load); }

void Get_fuelrpm_maxmin() { Show_Limits(Table::fuel_rpm); }

void Get_pwm_maxmin() {
  if (Active_Table() == Table::pwm_rpm) Show_Limits(Table::pwm_rpm);
}

void Get_an_maxmin() { Show_Limits(Table::analog1); }

void Get_Shown_Table_Maxmin() {
  if (const auto table = Active_Table()) Row_Of(*table).maxmin();
}

void Reset_Table_Limits() {
  minText.Set("");
  maxText.Set("");
}

}  // namespace kx
