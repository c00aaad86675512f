#include "workspace/table_arithmetic.h"

#include <gtest/gtest.h>

#include "settings/failure.h"
#include "settings/image.h"
#include "settings/numbers.h"
#include "support/workspace_fixture.h"
#include "workspace/table_values.h"

namespace kx {
namespace {

const Table_Meaning load_degrees = meaning::ignition_load_degrees;
const Table_Meaning load_percent = meaning::ignition_load_percent;
const Table_Meaning rpm_degrees = meaning::ignition_rpm_degrees;
const Table_Meaning rpm_percent = meaning::ignition_rpm_percent;
const Table_Meaning rpm_percent_fine = meaning::ignition_rpm_percent_fine;
const Table_Meaning fuel_time = meaning::fuel_load_time;
const Table_Meaning fuel_duty = meaning::fuel_load_duty;
const Table_Meaning fuel_rpm = meaning::fuel_rpm;
const Table_Meaning volts = meaning::analog_limit;
const Table_Meaning pwm = meaning::pwm_duty;
const Table_Meaning boost = meaning::Boost_Target(-1);

TEST(Table_Arithmetic, Steps_Start_From_The_Shown_Value_Where_The_Table_Says_So) {
  struct Row {
    Table_Meaning form;
    Cell cell;
    int sign;
    int result;
  };
  const Row rows[] = {
      {pwm, {16, 13}, 1, 18},
      {pwm, {3, 2}, -1, 1},
      {load_percent, {1, 1}, 1, 3},
      {load_degrees, {127, 12.7}, 1, 128},
      {load_degrees, {1, 0.1}, -1, 0},
      {rpm_percent, {136, 13}, 1, 137},
      {rpm_percent_fine, {7, -95}, 1, 7},
      {rpm_percent_fine, {2, -98}, -1, 2},
      {rpm_degrees, {144, 3.2}, 1, 145},
      {fuel_time, {189, 12.2}, 1, 190},
      {fuel_rpm, {8, -188}, -1, 7},
      {volts, {100, 1.96}, 1, 101},
      {boost, {77, 3.1}, -1, 76},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(Stepped(row.form, row.cell, row.sign), row.result)
        << int(row.cell.raw) << " shown " << row.cell.shown << " by " << row.sign;
  }
}

TEST(Table_Arithmetic, Slopes_Clip_But_A_Boost_Target_Overflows) {
  EXPECT_EQ(Sloped(pwm, {64, 50}, 3), 68);
  EXPECT_EQ(Sloped(pwm, {64, 50}, -3), 60);
  EXPECT_EQ(Sloped(pwm, {3, 2}, 0), 3);
  EXPECT_EQ(Sloped(rpm_percent, {136, 13}, 2), 138);
  EXPECT_EQ(Sloped(load_degrees, {250, 25.0}, 9), 255);
  EXPECT_EQ(Sloped(volts, {250, 4.9}, 10), 255);
  EXPECT_EQ(Sloped(fuel_time, {3, -25.0}, -10), 0);
  EXPECT_THROW((void)Sloped(boost, {250, 3}, 10), Failure);
}

TEST(Table_Arithmetic, Set_Clips_Then_Stores) {
  struct Row {
    Table_Meaning form;
    double typed;
    double clipped;
    int raw;
  };
  const Row rows[] = {
      {pwm, 250, 199, 254},           {pwm, 99, 99, 126},           {pwm, -5, -5, 0},
      {fuel_rpm, -300, -200, 0},      {fuel_rpm, 250, 199, 255},    {fuel_rpm, 50, 50, 160},
      {fuel_time, 12.3, 12.3, 189},   {fuel_time, -99, -25.6, 0},   {fuel_duty, 101, 100, 255},
      {volts, 1.5, 1.5, 76},          {volts, 2.5, 2.5, 128},       {volts, 3.5, 3.5, 178},
      {volts, 4.5, 4.5, 230},         {volts, 9, 5, 255},           {load_degrees, 12.7, 12.7, 127},
      {load_degrees, 30, 25.5, 255},  {rpm_percent, -250, -200, 0}, {rpm_percent, 50, 50, 160},
      {rpm_degrees, -25.6, -25.6, 0},
  };
  for (const Row& row : rows) {
    EXPECT_DOUBLE_EQ(Clipped_To_Set(row.form, row.typed), row.clipped) << row.typed;
    EXPECT_EQ(Set_To(row.form, row.clipped), row.raw) << row.typed;
  }
}

TEST(Table_Arithmetic, Scale_Works_On_The_Shown_Value_Of_Signed_Tables) {
  EXPECT_EQ(Scaled(pwm, {16, 13}, 50), 8);
  EXPECT_EQ(Scaled(fuel_rpm, {192, 100}, 50), 160);
  EXPECT_EQ(Scaled(fuel_rpm, {64, -100}, 50), 96);
  EXPECT_EQ(Scaled(fuel_time, {138, 2.0}, 50), 133);
  EXPECT_EQ(Scaled(fuel_time, {118, -2.0}, 50), 123);
  EXPECT_EQ(Scaled(fuel_duty, {100, 39.2}, 50), 50);
  EXPECT_EQ(Scaled(rpm_percent, {136, 13}, 50), 132);
  EXPECT_EQ(Scaled(load_degrees, {100, 10}, 150), 150);
  EXPECT_EQ(Scaled(volts, {200, 3.92}, 200), 255);
}

TEST(Table_Arithmetic, Typing_Has_Limits_Of_Its_Own) {
  EXPECT_EQ(Broken_Typing_Limit(fuel_rpm, 199), 198);
  EXPECT_EQ(Broken_Typing_Limit(fuel_time, -30), -25.6);
  EXPECT_EQ(Broken_Typing_Limit(volts, 5.01), 5);
  EXPECT_EQ(Broken_Typing_Limit(volts, -1), std::nullopt);
  EXPECT_EQ(Broken_Typing_Limit(boost, 200), 199);
  EXPECT_EQ(Broken_Typing_Limit(load_degrees, 25.5), std::nullopt);
  EXPECT_EQ(Typed_To(boost, 99), 126) << "typing knows no closed loop";
  EXPECT_EQ(Typed_To(volts, 1.5), 76);
  EXPECT_THROW((void)Typed_To(volts, -0.1), Failure);
}

class Every_Table : public Workspace_Fixture, public testing::WithParamInterface<Table> {};

/// What a table shows must lead back to the byte, or to one that shows alike when the text is coarser than
/// the byte. All flags that give the bytes another meaning are gone through.
TEST_P(Every_Table, Shown_Text_Of_All_Raw_Values_Leads_Back) {
  const Table table = GetParam();
  for (int flags = 0; flags < 16; ++flags) {
    Set_Field(map::ignition_load_in_percent, flags & 1);
    Set_Field(map::ignition_rpm_fine, (flags >> 1) & 1);
    Set_Field(map::fuel_by_pwm, (flags >> 2) & 1);
    Set_Field(map::an2_mode, (flags >> 3) & 1);
    const Table_Meaning form = Meaning_Of(table);
    const Value_Form& value = form.form;
    const double coarseness = value.mask == "00" ? 0.5 : value.mask == "0.0" ? 0.05 : 0.005;
    for (int raw = 0; raw < 256; ++raw) {
      const std::string text = Shown_Text_Of(table, static_cast<std::uint8_t>(raw));
      if (Broken_Typing_Limit(form, Val_Any(text))) continue;
      const int back = Typed_To(form, Val_Any(text));
      const bool exact = std::abs(Val_Any(text) - value.Shown(raw)) < 1e-9;
      const double counts = coarseness * value.denominator / value.numerator;
      EXPECT_LE(std::abs(back - raw), exact ? 0 : std::floor(counts) + 1) << text << " flags " << flags;
    }
  }
}

INSTANTIATE_TEST_SUITE_P(All, Every_Table, testing::ValuesIn([] {
                           std::vector<Table> tables;
                           for (const Table_Row& row : table_rows) tables.push_back(row.table);
                           return tables;
                         }()));

}  // namespace
}  // namespace kx
