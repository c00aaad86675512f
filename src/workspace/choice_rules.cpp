#include "workspace/choice_rules.h"

#include <algorithm>

#include "settings/image.h"
#include "settings/message.h"
#include "settings/refresh.h"
#include "workspace/table_limits.h"
#include "workspace/tables.h"

namespace kx::choice {
namespace {

constexpr int io_five_fuel = 2;  ///< list index of io_combo: ignition output B drives fuel E
constexpr int fuel_synchronised = 1;
constexpr int fuel_pwm = 2;

bool Any(int) { return true; }

int Read_Field(const Choice_Row& row, const Byte_Image& image) { return Field_Of(image, row.field); }

void Write_Field(const Choice_Row& row, int index) { Set_Field(row.field, index); }

int Read_Inverted(const Choice_Row& row, const Byte_Image& image) { return 1 - Field_Of(image, row.field); }

void Write_Inverted(const Choice_Row& row, int index) { Set_Field(row.field, 1 - index); }

int Read_At_Most_One(const Choice_Row& row, const Byte_Image& image) {
  return std::min(Field_Of(image, row.field), 1);
}

void Write_Never_Clearing(const Choice_Row& row, int index) {
  const bool was_set = Get_Field(row.field) == 1;
  Set_Field(map::fuel_rpm_250, 0);
  Set_Field(row.field, was_set ? 1 : index);
}

void Write_By_Mirror(const Choice_Row& row, int index) {
  Set_Field({map::mirror, row.field.mask}, index);
  CardByte[map::flags_c] = CardByte[map::mirror];
}

int Read_Fuel_Mode(const Choice_Row&, const Byte_Image& image) {
  if (Field_Of(image, map::fuel_by_pwm) == 1) return fuel_pwm;
  return Field_Of(image, map::fuel_not_extended) == 1 ? fuel_synchronised : 0;
}

void Write_Fuel_Mode(const Choice_Row&, int index) {
  Set_Field(map::fuel_not_extended, index == 0 ? 0 : 1);
  Set_Field(map::fuel_by_pwm, index == fuel_pwm ? 1 : 0);
}

int Read_Io_Mode(const Choice_Row& row, const Byte_Image& image) {
  return Field_Of(image, map::io_mode_4) == 1 ? io_pwm_on_ignb : Field_Of(image, row.field);
}

void Write_Io_Mode(const Choice_Row& row, int index) {
  Set_Field(row.field, index == io_five_fuel ? index : 0);
  Set_Field(map::io_mode_4, index == io_pwm_on_ignb ? 1 : 0);
}

bool Accepts_Io_Mode(int index) {
  if (index != 0 && index != io_five_fuel && index != io_pwm_on_ignb) {
    Tell("Not availible in this version!");
    return false;
  }
  // The trimmed limit of Analog 2 needs ignition output B as well.
  if (index != io_five_fuel || Get_Field(map::an2_mode) != an2_mode::limit_trim) return true;
  Tell("This seting not possible at the same time as analog2 Mode3!");
  return false;
}

void Write_Table_Units(const Choice_Row& row, int index) {
  Set_Field(row.field, index);
  Set_Field(map::ignition_rpm_fine, 0);
}

void Write_Trim(const Choice_Row& row, int index) {
  Set_Field(row.field, index);
  Mirror_Flags_C();
}

}  // namespace

const Choice_Rules plain{Read_Field, Write_Field, Any};
const Choice_Rules inverted{Read_Inverted, Write_Inverted, Any};
const Choice_Rules two_modes{Read_At_Most_One, Write_Field, Any};
const Choice_Rules never_clears{Read_Field, Write_Never_Clearing, Any};
const Choice_Rules by_mirror{Read_Field, Write_By_Mirror, Any};
const Choice_Rules fuel_mode{Read_Fuel_Mode, Write_Fuel_Mode, Any};
const Choice_Rules io_mode{Read_Io_Mode, Write_Io_Mode, Accepts_Io_Mode};
const Choice_Rules table_units{Read_Field, Write_Table_Units, Any};
const Choice_Rules trim{Read_Field, Write_Trim, Any};

void Update_Meaning() {
  Update_Tabs();
  Update_All();
}

void Update_Ignition() {
  Update_Meaning();
  const auto table = Active_Table();
  if (table == Table::ignition_load) Get_igmap_maxmin();
  if (table == Table::ignition_rpm) Get_igrpm_maxmin();
}

void Update_Boost_Control() {
  Update_All();
  Update_Tabs();
  Get_pwm_maxmin();
}

void Update_Resolution() {
  Update_Meaning();
  Show_Right_Tabs();
}

}  // namespace kx::choice
