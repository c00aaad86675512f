#include "workspace/engine_place.h"

#include <gmock/gmock.h>

#include "logging/live_log.h"
#include "logging/log_settings.h"
#include "logging/log_state.h"
#include "support/live_log_fixture.h"
#include "support/workspace_fixture.h"
#include "workspace/cell_editing.h"
#include "workspace/sensor_editor.h"
#include "workspace/table_meaning.h"

namespace kx {
namespace {

using namespace testing;

/// A row of the present box: RPM field, AN1 to AN4, AN1 Out, AN2 Out; all else 000.
Live_Row Row_Of_Box(const std::string& rpm, const std::array<int, 4>& in, int out1 = 0, int out2 = 0) {
  std::array<int, 19> fields{};
  std::copy(in.begin(), in.end(), fields.begin());
  fields[9] = out1;
  fields[10] = out2;
  std::string row = rpm;
  for (const int field : fields) {
    const std::string digits = std::to_string(field);
    row += " " + std::string(3 - digits.size(), '0') + digits;
  }
  return Live_Row(row + " ");
}

class Engine_Place_Test : public Workspace_Fixture {
 protected:
  void SetUp() override {
    Workspace_Fixture::SetUp();
    Load_All_Default_Log_Settings();
  }
  static double Entry(Table table, const Live_Row& row) {
    const auto place = Place_In(table, row);
    return place ? place->entry : 0;
  }
};

/// Load tables by the counts of the input that the tune names, RPM tables by the engine speed.
TEST_F(Engine_Place_Test, Both_Kinds_Of_Table_And_Both_Ends_Of_Their_Axes) {
  Set_Field(map::ignition_load_input, 0);
  Set_Field(map::fuel_load_input, 1);
  Set_Field(map::pwm_load_input, 3);
  const Live_Row low = Row_Of_Box("0.0000", {0, 0, 0, 0});
  const Live_Row high = Row_Of_Box("A.0000", {255, 255, 255, 255});
  const Live_Row middle = Row_Of_Box("3.1250", {100, 8, 0, 248});
  struct Case {
    Table table;
    double middle;
    double high;
  };
  const Case cases[] = {{Table::ignition_load, 13.5, 32.875}, {Table::fuel_load, 2, 32.875},
                        {Table::pwm_load, 32, 32.875},        {Table::ignition_rpm, 7.25, 21},
                        {Table::fuel_rpm, 7.25, 21},          {Table::pwm_rpm, 7.25, 21},
                        {Table::analog1, 7.25, 21},           {Table::analog2, 7.25, 21}};
  for (const Case& c : cases) {
    EXPECT_EQ(Entry(c.table, low), 1) << Row_Of(c.table).grid;
    EXPECT_EQ(Entry(c.table, middle), c.middle) << Row_Of(c.table).grid;
    EXPECT_EQ(Entry(c.table, high), c.high) << Row_Of(c.table).grid;
  }
  EXPECT_FALSE(Place_In(Table::maf_output, middle));
  Set_Field(map::fuel_rpm_250, 1);
  EXPECT_EQ(Entry(Table::fuel_rpm, middle), 13.5);
  EXPECT_EQ(Entry(Table::fuel_rpm, high), 41);
  Set_Field(map::an2_mode, an2_mode::curve);
  EXPECT_EQ(Entry(Table::analog2, middle), 1.5) << "a curve is over Analog2 in, 16 counts an entry";
  EXPECT_EQ(Entry(Table::analog2, high), 16.9375);
  Set_Field(map::maf_sim_enable, 1);
  Set_Field(map::maf_sim_limit, 1);
  EXPECT_EQ(Entry(Table::ignition_rpm, middle), 1) << "one entry for all RPMs";
  EXPECT_EQ(Entry(Table::maf_limit, middle), 7.25);
}

TEST_F(Engine_Place_Test, What_The_Box_Subtracts_Counts) {
  Set_Field(map::ignition_load_input, 0);
  const Live_Row row = Row_Of_Box("1.0000", {100, 20, 0, 0}, 52, 180);
  const std::array entries{13.5, 7.0, 1.0, 11.0};  // nothing, Analog1 out, Analog2 out, Analog2 in
  for (int second = 0; second < 4; ++second) {
    Set_Field(map::ignition_load_second, second);
    EXPECT_EQ(Entry(Table::ignition_load, row), entries.at(static_cast<std::size_t>(second))) << second;
  }
}

TEST_F(Engine_Place_Test, The_Value_Lies_Between_The_Entries) {
  Set_Field(map::ignition_load_input, 0);
  CardByte[map::ignition_load.first + 12] = 100;  // 10.0 Deg
  CardByte[map::ignition_load.first + 13] = 120;  // 12.0 Deg
  CardByte[map::ignition_load.Last()] = 35;
  const auto place = Place_In(Table::ignition_load, Row_Of_Box("1.0000", {102, 0, 0, 0}));
  ASSERT_TRUE(place);
  EXPECT_DOUBLE_EQ(place->value, 11.5);
  EXPECT_EQ(place->text, "11.5 Deg");
  Byte_Image other = CardByte;
  other.Fill(map::fuel_rpm.first, map::fuel_rpm.Last(), 192);
  EXPECT_EQ(Place_In(Table::fuel_rpm, Row_Of_Box("A.0000", {}), other)->text, "100 %");
}

TEST_F(Engine_Place_Test, Without_The_Sensor_Of_The_Values_There_Is_A_Place_And_No_Number) {
  Set_Field(map::boost_pid, 1);
  AN_Combo_Click(Get_Field(map::boost_input) + 1, 0);
  CardByte.Fill(map::pwm_rpm.first, map::pwm_rpm.Last(), 90);
  const auto place = Place_In(Table::pwm_rpm, Row_Of_Box("3.1250", {}));
  ASSERT_TRUE(place);
  EXPECT_EQ(place->entry, 7.25);
  EXPECT_EQ(place->text, "no sensor");
}

TEST_F(Engine_Place_Test, Rows_That_Lack_The_Signal_Have_No_Place) {
  Set_Field(map::ignition_load_input, 3);
  const Live_Row old_row("2.5000 100 101 102 103 104 105 106 107 108 109 110 111");
  EXPECT_FALSE(Place_In(Table::ignition_load, old_row)) << "the short row carries no AN4";
  Set_Field(map::ignition_load_input, 2);
  EXPECT_EQ(Entry(Table::ignition_load, old_row), 13.75);
  EXPECT_EQ(Entry(Table::ignition_rpm, old_row), 6);
  EXPECT_FALSE(Place_In(Table::ignition_load, Live_Row("2.5000 100 101 1x2 103")));
  log_settings.rows[0].sensor = -1;
  EXPECT_FALSE(Place_In(Table::ignition_rpm, old_row));
}

TEST(Newest_Row_Of_A_Stream, Is_The_Last_Whole_One_As_Long_As_The_One_Before) {
  const auto newest = [](const std::string& text) { return Newest_Row(text); };
  EXPECT_EQ(newest("a\r\n1.0 001\r\n2.0 002\r\n3.0 0"), Live_Row("2.0 002"));
  EXPECT_FALSE(newest("a\r\n1.0 001\r\n"));
  EXPECT_FALSE(newest("1.0 001\r\n2.0 02\r\n")) << "a character has been lost";
  EXPECT_FALSE(newest("1.0 001 'l\r\n2.0 002 'l\r\n")) << "marked";
  EXPECT_FALSE(newest("half a row"));
  EXPECT_FALSE(newest(""));
}

TEST_F(Engine_Place_Test, Follow_Moves_The_Cursor_But_Not_Under_The_Users_Hands) {
  Show_Tab(main_tab::ignition, 0);
  const auto follow = [](double entry) { return Follow_To_Place(Table::ignition_load, {entry, 0, ""}); };
  const Grid& grid = Grid_Of(Table::ignition_load);
  EXPECT_TRUE(follow(12.4));
  EXPECT_EQ(grid.Row(), 12);
  EXPECT_FALSE(follow(12.59)) << "noise half way between two entries";
  EXPECT_TRUE(follow(12.61));
  EXPECT_EQ(grid.Row(), 13);
  Grid_Key_Down(Table::ignition_load, '7', 0);
  EXPECT_FALSE(follow(20)) << "a value is being typed";
  Grid_Key_Down(Table::ignition_load, key::enter, 0);
  EXPECT_TRUE(follow(20));
  Grid_Enter_Cell(Table::ignition_load, 18, 22);
  EXPECT_TRUE(follow(20.2)) << "one entry, not a selection around it";
  EXPECT_EQ(grid.Sel_Count(), 0);
  EXPECT_EQ(Chart_Of(Chart_Id::IgMapChart).current, 20);
  EXPECT_TRUE(Follow_To_Place(Table::maf_limit, {5, 0, ""}));
  EXPECT_TRUE(Follow_To_Place(Table::maf_limit, {1, 0, ""}));
  EXPECT_EQ(Grid_Of(Table::maf_limit).Row(), 2) << "the first row that may be edited";
}

/// The mark goes with each row of the simulated drive, whatever the update tick does.
class Live_Place_Test : public test::Live_Log_Fixture {
 protected:
  Live_Place_Test() {
    live_log_hooks.show_place = [this] { ++shown_; };
  }
  int shown_ = 0;
};

TEST_F(Live_Place_Test, Twenty_Rows_A_Second_From_Start_To_Stop) {
  log_settings.txt_Show_Log_Interval = "5";
  EXPECT_FALSE(Newest_Live_Row());
  Follow_Engine_Click(true);
  EXPECT_FALSE(Following_Engine()) << "without a log";
  Click();
  loop_.Run(2);
  const int before = shown_;
  int behind = 0;
  for (int i = 0; i < 200; ++i) {
    loop_.Run(0.05);
    const std::string rows = Log_Data_Text + std::string(MSComm1.Waiting());
    const std::size_t end = rows.rfind('\n');
    const std::string last = rows.substr(end - 84, 83);
    behind += Newest_Live_Row() == Live_Row(last) ? 0 : 1;
  }
  EXPECT_EQ(behind, 0) << "of the newest row that has arrived";
  EXPECT_GT(shown_ - before, 180) << "in 10 s";
  Follow_Engine_Click(true);
  EXPECT_TRUE(Following_Engine());
  Click();
  EXPECT_FALSE(Newest_Live_Row());
  EXPECT_FALSE(Following_Engine());
  Log_File_Unsaved = false;
  Click();
  EXPECT_FALSE(Following_Engine()) << "off as the next log begins";
  Click();
}

TEST_F(Live_Place_Test, A_Silent_Box_Is_Nowhere) {
  Plug_In("log_off=60:3");
  Click();
  loop_.Run(2.9);
  EXPECT_TRUE(Newest_Live_Row());
  loop_.Run(1.8);
  EXPECT_FALSE(Newest_Live_Row());
  loop_.Run(4);
  EXPECT_TRUE(Newest_Live_Row()) << "back with the stream";
  ask_.Expect("There were some interruptions during the log");
  Click();
  Log_File_Unsaved = false;
}

TEST_F(Live_Place_Test, A_Mark_That_Cannot_Be_Shown_Costs_No_Row) {
  live_log_hooks.show_place = [] { throw Failure("no mark"); };
  ask_.Expect("no mark");
  ask_.Expect("no mark");
  ask_.Expect("no mark");
  Click();
  loop_.Run(5);
  Click();
  EXPECT_GT(Log_Rows, 80);
}

}  // namespace
}  // namespace kx
