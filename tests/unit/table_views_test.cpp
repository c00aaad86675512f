#include <gtest/gtest.h>

#include "sensors/sensor_store.h"
#include "settings/image.h"
#include "settings/refresh.h"
#include "support/workspace_fixture.h"
#include "workspace/table_meaning.h"
#include "workspace/table_values.h"
#include "workspace/tables.h"
#include "workspace/view_hooks.h"

namespace kx {
namespace {

using Table_Views = Workspace_Fixture;

std::vector<std::string> Row_Texts(Table table, int row) {
  std::vector<std::string> texts;
  for (int column = 0; column < Grid_Of(table).Columns(); ++column)
    texts.push_back(Grid_Of(table).Text(row, column));
  return texts;
}

using Texts = std::vector<std::string>;

TEST_F(Table_Views, Charts_Show_The_Axis_And_Values_Of_Their_Grids) {
  Refresh_Whole_Image();
  EXPECT_EQ(Row_Texts(Table::maf_output, 17), (Texts{"65536", "5.00"}));
  EXPECT_EQ(Chart_Of(Chart_Id::FuelRpmChart).labels.back(), "10000");
  EXPECT_EQ(Chart_Of(Chart_Id::FuelMapChart).series.at(0).values.at(0), -25.6);
}

TEST_F(Table_Views, Maf_Limit_Takes_Over_The_Ignition_Rpm_Table) {
  Set_Field(map::maf_sim_enable, 1);
  Set_Field(map::maf_sim_limit, 1);
  CardByte[map::maf_limit.first] = 200;
  CardByte[map::maf_limit.first + 1] = 51;
  Refresh_Whole_Image();
  EXPECT_EQ(CardByte[map::mirror], CardByte[map::flags_c]);
  EXPECT_EQ(Grid_Of(Table::ignition_rpm).Rows(), 2);
  EXPECT_EQ(Row_Texts(Table::ignition_rpm, 1)[1], "113");
  EXPECT_EQ(Row_Texts(Table::maf_limit, 1), (Texts{"000", "1.00"})) << "row 1 shows the byte of row 2";
  EXPECT_EQ(Row_Texts(Table::maf_limit, 2), (Texts{"500", "1.00"}));
  EXPECT_TRUE(View_Of_Tune().Frame_IG_RPM_MAFSIM);
  EXPECT_TRUE(View_Of_Tune().maf_limit_tab && View_Of_Tune().maf_output_tab && !View_Of_Tune().analog1_tab);
}

TEST_F(Table_Views, Closed_Loop_Shows_Boost_In_The_Sensors_Unit) {
  Set_Field(map::boost_pid, 1);
  CardByte[map::pwm_rpm.first] = 127;
  Refresh_Whole_Image();
  EXPECT_EQ(Row_Texts(Table::pwm_rpm, 0)[1], Sensor_Unit(Sensor_On_Input(1)));
  // Bytes from 128 up are beyond the sensor's 8-bit span and show alike.
  EXPECT_EQ(Shown_Text_Of(Table::pwm_rpm, 128), Shown_Text_Of(Table::pwm_rpm, 255));
  EXPECT_NE(Row_Texts(Table::pwm_rpm, 1)[1], Shown_Text_Of(Table::pwm_rpm, 10));
  Show_Tab(main_tab::pwm, 1);
  Show_Right_Tabs();
  EXPECT_EQ(View_Of_Tune().Frame_PWMRPM_Notification,
            "PWM PID Control activated. Analog1 - " + Sensor_Name(Sensor_On_Input(1)));
}

/// Two images beside each other read each by its own flags.
TEST_F(Table_Views, Meanings_Are_Those_Of_The_Image_Asked_For) {
  Byte_Image other = CardByte;
  other[map::flags_c] = 0x20 | 0x02;
  other[map::ignition_flags] = 0x30;
  struct Read {
    Table table;
    const char* here;
    const char* there;
  };
  for (const Read& read : {Read{Table::fuel_load, "0.0 ms", "50.2 %"},
                           {Table::ignition_load, "12.8 Deg", "100 %"},
                           {Table::ignition_rpm, "00 %", "0.0 Deg"},
                           {Table::analog2, "2.51 limit [V]", "2.51 out [V]"}}) {
    const auto reads = [&](const Byte_Image& image) {
      const Table_Meaning meaning = Meaning_Of(read.table, image);
      return Shown_Text_Of(meaning, 128) + " " + Unit_Of(meaning);
    };
    EXPECT_EQ(reads(CardByte), read.here);
    EXPECT_EQ(reads(other), read.there);
  }
  EXPECT_EQ(Entries_Of(Table::analog2, other), 17);
}

TEST_F(Table_Views, Analog2_Curve_Has_Guide_Lines) {
  Set_Field(map::an2_mode, 1);
  CardByte[map::an_gain] = 50;
  CardByte[map::an_offset] = 128 + 51;
  Refresh_Whole_Image();
  const auto& series = Chart_Of(Chart_Id::an2_out_chart).series;
  ASSERT_EQ(series.size(), 3U);
  EXPECT_DOUBLE_EQ(series[1].values.at(0), 1);
  EXPECT_DOUBLE_EQ(series[1].values.at(16), 3.5);
  EXPECT_DOUBLE_EQ(series[2].values.at(16), 5);
}

TEST_F(Table_Views, Table_Panel_Shows_Only_Where_It_Has_A_Table) {
  const auto panel_on = [](int tab, int sub_tab) {
    Show_Tab(tab, sub_tab);
    Show_Right_Tabs();
    return View_Of_Tune().tblctrl;
  };
  EXPECT_FALSE(panel_on(main_tab::general, 0));
  for (const int tab : {main_tab::ignition, main_tab::fuel, main_tab::pwm, main_tab::analog})
    EXPECT_TRUE(panel_on(tab, 1)) << tab;
  for (const int tab : {main_tab::fuel, main_tab::pwm}) EXPECT_FALSE(panel_on(tab, 2)) << tab;
  EXPECT_TRUE(panel_on(main_tab::analog, 3));
  Set_Field(map::fuel_rpm_250, 1);
  Refresh_Whole_Image();
  EXPECT_FALSE(panel_on(main_tab::analog, 1));
}

}  // namespace
}  // namespace kx
