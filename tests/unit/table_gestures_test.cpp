#include "workspace/table_gestures.h"

#include <gmock/gmock.h>

#include <functional>

#include "boxlink/transfer.h"
#include "sensors/sensor_store.h"
#include "settings/history.h"
#include "settings/image.h"
#include "settings/notice.h"
#include "settings/refresh.h"
#include "support/workspace_fixture.h"
#include "workspace/cell_editing.h"
#include "workspace/curve_drag.h"
#include "workspace/sensor_editor.h"
#include "workspace/sensor_gestures.h"
#include "workspace/shaping.h"
#include "workspace/table_clipboard.h"
#include "workspace/table_values.h"

namespace kx {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

TEST(Pasted_Text, What_Spreadsheets_Give_Is_Read_And_The_Line_That_Cannot_Be_Is_Named) {
  for (const auto& [text, columns, numbers] :
       {std::tuple{"1\n2.5\n-3", 1, std::vector<std::string>{"1", "2.5", "-3"}},
        {"0,5\r\n 1 \r\n\r\n", 1, {"0,5", "1"}},
        {"1\r2,5\r\r", 1, {"1", "2,5"}},
        {"000\t10\n500\t20\n", 2, {"10", "20"}},
        {"0.00\t0.10\t7.5\r\n", 3, {"7.5"}}}) {
    const Pasted pasted = Read_Pasted(text, 3);
    EXPECT_EQ(pasted.refusal, "") << text;
    EXPECT_EQ(pasted.numbers, numbers) << text;
    EXPECT_EQ(pasted.columns, columns) << text;
  }
  for (const auto& [text, refusal] :
       {std::pair{"", "The clipboard holds no text."},
        {"\r\n", "The clipboard holds no text."},
        {"1\n2\nabc\n", "Line 3, \"abc\", is not a number."},
        {"1\n12 %", "Line 2, \"12 %\", is not a number."},
        {"1.234,5", "Line 1, \"1.234,5\", is not a number."},
        {"RPM\t%\n0\t1", "Line 1, \"%\", is not a number."},
        {"1\n\n2", "Line 2 is empty."},
        {"1\t2\n3", "Line 2 has 1 column where line 1 has 2."},
        {"1\t2\t3\t4",
         "Line 1 has 4 columns: a table takes one column of values, or its axis and the values."},
        {"1\n2\n3\n4", "Line 4 is one too many: the table has 3 rows from the current one to its end."},
        {"\xC3\xA5\xC3\xA4\xC3\xB6xxxxxxxxxxxxxxxxxxxx",
         "Line 1, \"\xC3\xA5\xC3\xA4\xC3\xB6xxxxxxxxxxxxxxxxx...\", is not a number."}}) {
    const Pasted pasted = Read_Pasted(text, 3);
    EXPECT_EQ(pasted.refusal, std::string(refusal) + " Nothing was pasted.") << text;
    EXPECT_TRUE(pasted.numbers.empty()) << text;
  }
}

TEST(Pasted_Text, Ten_Megabytes_Are_Refused_Whatever_They_Hold) {
  constexpr std::size_t size = 10'000'000;
  std::string lines;
  while (lines.size() < size) lines += "1.5\r\n";
  for (const std::string& text :
       {lines, std::string(size, '1'), std::string(size, '\t'), std::string(size, '\0')}) {
    const Pasted pasted = Read_Pasted(text, 33);
    EXPECT_FALSE(pasted.refusal.empty());
    EXPECT_LT(pasted.refusal.size(), 200U);
  }
}

TEST(Shapes, A_Line_Over_The_Axis_And_A_Mean_Of_Neighbours) {
  EXPECT_THAT(Straightened({{0, 1, 2, 3}}, {10, 0, 0, 40}), ElementsAre(10, 20, 30, 40));
  EXPECT_THAT(Straightened({{0, 1, 4, 10}}, {0, 9, 9, 20}), ElementsAre(0, 2, 8, 20)) << "an uneven axis";
  EXPECT_THAT(Straightened({{10, 6, 0}}, {0, 9, 20}), ElementsAre(0, 8, 20)) << "a falling axis";
  EXPECT_THAT(Straightened({{1, 1, 2}}, {0, 9, 20}), ElementsAre(0, 10, 20)) << "an axis that stands still";
  EXPECT_THAT(Straightened({{0.10, 0.18, 0.25}, 0.01}, {0, 9, 20}), ElementsAre(0, 10, 20))
      << "a rounded axis";
  EXPECT_THAT(Straightened({{1, 2}}, {3, 4}), ElementsAre(3, 4));
  EXPECT_THAT(Smoothed({0, 8, 0, 8, 4}), ElementsAre(0, 4, 4, 5, 4)) << "of the old values";
}

class Table_Gestures : public Workspace_Fixture {
 protected:
  void SetUp() override {
    Workspace_Fixture::SetUp();
    Refresh_Whole_Image();
  }
  static void Select(Table table, int row, int row_sel) {
    Show_Tab(Row_Of(table).tab, Row_Of(table).sub_tab);
    Grid_Enter_Cell(table, row, row_sel);
  }
  static void Fill(Table table, std::initializer_list<int> bytes, int row = 1) {
    for (const int byte : bytes) CardByte[Edited_Byte(table, row++)] = static_cast<std::uint8_t>(byte);
    Update_All();
  }
  static std::vector<int> Bytes(Table table, int row, int count) {
    std::vector<int> bytes;
    for (int i = 0; i < count; ++i) bytes.push_back(CardByte[Edited_Byte(table, row + i)]);
    return bytes;
  }
  static void Hang_On_Boost_Input(const std::string& sensor) {
    const auto names = Sensor_Names(Sensor_List::tune);
    Set_Field(map::boost_pid, 1);
    Set_Field(map::boost_input, 0);
    AN_Combo_Click(1, static_cast<int>(std::ranges::find(names, sensor) - names.begin()));
    Refresh_Whole_Image();
  }
  void Paste(Table table, const std::string& text) {
    desktop_.clipboard = text;
    Paste_Table(table);
  }
};

/// One rule of editing with figures worked out by hand: what a pasted number becomes, and where a drag takes
/// a byte.
struct Rule_Case {
  Edit_Rule rule;
  Table table;
  std::vector<map::Field> flags;
  const char* pasted;
  int pasted_byte;
  int start;
  double delta;
  int dragged;
};

class Every_Rule : public Table_Gestures, public testing::WithParamInterface<Rule_Case> {
 protected:
  void SetUp() override {
    Table_Gestures::SetUp();
    for (const map::Field& flag : GetParam().flags) Set_Field(flag, 1);
    if (GetParam().rule == Edit_Rule::boost_target) Hang_On_Boost_Input("MAP 2.5 bar");
    Refresh_Whole_Image();
    ASSERT_EQ(Meaning_Of(GetParam().table).rule, GetParam().rule);
    Fill(GetParam().table, {GetParam().start, GetParam().start, GetParam().start, GetParam().start});
  }
};

constexpr const char* closed_loop_question =
    "In closed loop a typed number is stored as percent of the duty, whatever unit the table shows, "
    "and pasted numbers are typed ones. Paste them all the same?";

TEST_P(Every_Rule, A_Paste_Is_Typed_And_One_Undo_Step) {
  const Rule_Case& rule = GetParam();
  Select(rule.table, 2, 2);
  Reset_History();
  const Byte_Image before = CardByte;
  if (rule.rule == Edit_Rule::boost_target) Expect_Box(closed_loop_question);
  Paste(rule.table, std::string(rule.pasted) + "\r\n" + rule.pasted + "\r\n");
  EXPECT_THAT(Bytes(rule.table, 1, 4),
              ElementsAre(rule.start, rule.pasted_byte, rule.pasted_byte, rule.start));
  EXPECT_EQ(Grid_Of(rule.table).Sel_Start(), 2);
  EXPECT_EQ(Grid_Of(rule.table).Sel_Count(), 1);
  EXPECT_EQ(notice_text.Text(), "Pasted 2 values into rows 2 to 3.");
  EXPECT_EQ(Undo_Index, 1);
  Undo();
  EXPECT_EQ(CardByte, before);
}

TEST_P(Every_Rule, A_Drag_Goes_By_Its_Steps_And_Is_One_Undo_Step) {
  const Rule_Case& rule = GetParam();
  Select(rule.table, 3, 2);
  Reset_History();
  const Byte_Image before = CardByte;
  Begin_Curve_Drag(rule.table, 2);
  EXPECT_TRUE(Drag_Curve(1000) && Drag_Curve(-1000) && Drag_Curve(rule.delta));
  EXPECT_THAT(Bytes(rule.table, 1, 4), ElementsAre(rule.start, rule.dragged, rule.dragged, rule.start));
  End_Curve_Drag();
  EXPECT_EQ(Undo_Index, 1);
  Undo();
  EXPECT_EQ(CardByte, before);
  Begin_Curve_Drag(rule.table, 2);
  EXPECT_TRUE(Drag_Curve(rule.delta) && Drag_Curve(0));
  EXPECT_EQ(CardByte, before) << "back at the start";
  End_Curve_Drag();
  Begin_Curve_Drag(rule.table, 2);
  EXPECT_TRUE(Drag_Curve(rule.delta));
  Take_Back_Curve_Drag();
  EXPECT_EQ(CardByte, before);
  EXPECT_EQ(Undo_Index, 0);
}

INSTANTIATE_TEST_SUITE_P(
    All, Every_Rule,
    testing::Values(
        Rule_Case{Edit_Rule::ignition_load_counts, Table::ignition_load, {}, "12,7", 127, 100, 0.5, 105},
        Rule_Case{Edit_Rule::ignition_load_units,
                  Table::ignition_load,
                  {map::ignition_load_in_percent},
                  "99",
                  126,
                  64,
                  3,
                  68},
        Rule_Case{Edit_Rule::ignition_rpm_counts,
                  Table::ignition_rpm,
                  {map::ignition_load_in_percent},
                  "-3.2",
                  112,
                  144,
                  -1,
                  139},
        Rule_Case{Edit_Rule::ignition_rpm_share, Table::ignition_rpm, {}, "50", 160, 136, 10, 142},
        Rule_Case{Edit_Rule::fuel, Table::fuel_load, {}, "12.3", 189, 138, 1, 143},
        Rule_Case{Edit_Rule::counts, Table::fuel_load, {map::fuel_by_pwm}, "50", 127, 100, 2, 105},
        Rule_Case{Edit_Rule::volts, Table::analog1, {}, "2.5", 128, 100, 0.1, 105},
        Rule_Case{Edit_Rule::duty, Table::pwm_load, {}, "99", 126, 16, 2, 19},
        Rule_Case{Edit_Rule::boost_target, Table::pwm_rpm, {map::boost_pid}, "99", 126, 50, 0.1, 55}));

TEST_F(Table_Gestures, A_Copy_Goes_Back_Unchanged_And_A_Refused_Paste_Changes_Nothing) {
  Fill(Table::pwm_load, {3, 200, 16});  // "02" typed would be byte 2
  Select(Table::pwm_load, 1, 3);
  Copy_Table(Table::pwm_load);
  EXPECT_EQ(Clipboard(), "0.00\t" + Axis_Texts(Table::pwm_load, 1)[1] + "\t02\r\n0.16\t" +
                             Axis_Texts(Table::pwm_load, 2)[1] + "\t156\r\n0.31\t" +
                             Axis_Texts(Table::pwm_load, 3)[1] + "\t13\r\n");
  const Byte_Image before = CardByte;
  Paste_Table(Table::pwm_load);
  EXPECT_EQ(notice_text.Text(), "Pasted 3 values into rows 1 to 3, the last of 3 columns.");
  EXPECT_EQ(CardByte, before);
  Paste(Table::pwm_load, "2\r\n156.0\r\n1,3e1\r\n");
  EXPECT_EQ(CardByte, before) << "the same numbers, as a spreadsheet writes them";
  Select(Table::analog1, 20, 20);
  for (const auto& [text, refusal] :
       {std::pair{"1\n-0.5", "Line 2, \"-0.5\", is less than this table can hold. Nothing was pasted."},
        {"1\n2\n3",
         "Line 3 is one too many: the table has 2 rows from the current one to its end. Nothing was pasted."},
        {"1\nx", "Line 2, \"x\", is not a number. Nothing was pasted."}}) {
    Expect_Box(refusal);
    Paste(Table::analog1, text);
    EXPECT_EQ(CardByte, before) << text;
  }
  Hang_On_Boost_Input("MAP 2.5 bar");
  const Byte_Image boost = CardByte;
  Expect_Box(closed_loop_question, platform::Answer::cancel);
  Paste(Table::pwm_rpm, "1.2");
  EXPECT_EQ(CardByte, boost);
  EXPECT_EQ(Undo_Index, 0);
}

TEST_F(Table_Gestures, A_Paste_Keeps_The_Limits_And_The_Byte_That_Is_Another_Tables) {
  Select(Table::ignition_load, 33, 33);
  Paste(Table::ignition_load, "99");
  EXPECT_EQ(CardByte[map::ignition_load.Last()], 255);
  EXPECT_EQ(notice_text.Text(), "Pasted 1 value into row 33. 1 beyond the range became the limit.");
  Set_Field(map::maf_sim_enable, 1);
  Set_Field(map::maf_sim_limit, 1);
  Refresh_Whole_Image();
  const int ignition = CardByte[map::maf_limit.first];
  Select(Table::maf_limit, 1, 1);
  Paste(Table::maf_limit, "1\n1\n2");
  EXPECT_THAT(Bytes(Table::maf_limit, 1, 3), ElementsAre(ignition, 51, 102));
  Select(Table::maf_limit, 1, 3);
  Begin_Curve_Drag(Table::maf_limit, 2);
  EXPECT_TRUE(Drag_Curve(0.1));
  End_Curve_Drag();
  EXPECT_THAT(Bytes(Table::maf_limit, 1, 3), ElementsAre(ignition, 56, 107));
  EXPECT_FALSE(Can_Shape(Table::maf_limit)) << "two entries can be edited";
}

TEST_F(Table_Gestures, Shapes_Are_Worked_Out_On_Bytes_And_Are_One_Undo_Step) {
  Fill(Table::ignition_load, {100, 7, 9, 90, 50}, 4);
  Select(Table::ignition_load, 8, 4);
  Reset_History();
  Interpolate_Table(Table::ignition_load);
  EXPECT_THAT(Bytes(Table::ignition_load, 4, 5), ElementsAre(100, 88, 75, 62, 50)) << "87.5 and 62.5 to even";
  EXPECT_EQ(Undo_Index, 1);
  Interpolate_Table(Table::ignition_load);
  EXPECT_EQ(Undo_Index, 1) << "nothing left to do";
  Undo();
  EXPECT_THAT(Bytes(Table::ignition_load, 4, 5), ElementsAre(100, 7, 9, 90, 50));
  Smooth_Table(Table::ignition_load);
  EXPECT_THAT(Bytes(Table::ignition_load, 4, 5), ElementsAre(100, 31, 29, 60, 50)) << "30.75, 28.75, 59.75";
  Select(Table::ignition_load, 4, 5);
  EXPECT_FALSE(Can_Shape(Table::ignition_load));
  Fill(Table::pwm_load, {16, 16, 16, 16});
  Select(Table::pwm_load, 1, 4);
  const Byte_Image flat = CardByte;
  Interpolate_Table(Table::pwm_load);
  Smooth_Table(Table::pwm_load);
  EXPECT_EQ(CardByte, flat) << "shown as 13, which would be byte 17";
}

TEST_F(Table_Gestures, A_Line_Is_Straight_Over_The_Axis_And_In_The_Unit_Of_The_Sensor) {
  MAF_Sim_Tab[0][0] = 0;
  MAF_Sim_Tab[1][0] = 100;
  MAF_Sim_Tab[2][0] = 400;
  Fill(Table::maf_output, {0, 200, 200});
  Select(Table::maf_output, 1, 3);
  Interpolate_Table(Table::maf_output);
  EXPECT_THAT(Bytes(Table::maf_output, 1, 3), ElementsAre(0, 50, 200));
  Hang_On_Boost_Input("MAP 2.5 bar");
  Fill(Table::pwm_rpm, {10, 0, 30, 200, 210, 220});
  Select(Table::pwm_rpm, 1, 3);
  Interpolate_Table(Table::pwm_rpm);
  EXPECT_THAT(Bytes(Table::pwm_rpm, 1, 3), ElementsAre(10, 20, 30));
  Select(Table::pwm_rpm, 4, 6);
  Smooth_Table(Table::pwm_rpm);
  EXPECT_THAT(Bytes(Table::pwm_rpm, 4, 3), ElementsAre(200, 210, 220)) << "all at the end of the sensor";
  AN_Combo_Click(1, 0);
  EXPECT_FALSE(Can_Shape(Table::pwm_rpm)) << "no sensor";
  EXPECT_EQ(First_Row_To_Drag(Table::pwm_rpm), 0);
}

TEST_F(Table_Gestures, A_Drag_Holds_At_The_Ends_And_Ends_When_Something_Else_Works_On_The_Tune) {
  Fill(Table::fuel_load, {250, 254, 255});
  Select(Table::fuel_load, 1, 3);
  Begin_Curve_Drag(Table::fuel_load, 1);
  EXPECT_TRUE(Drag_Curve(0.8));
  EXPECT_THAT(Bytes(Table::fuel_load, 1, 3), ElementsAre(254, 255, 255));
  EXPECT_TRUE(Drag_Curve(-0.2));
  EXPECT_THAT(Bytes(Table::fuel_load, 1, 3), ElementsAre(249, 253, 254));
  CardByte[map::pwm_load.first] = 77;
  EXPECT_FALSE(Drag_Curve(1));
  Take_Back_Curve_Drag();
  EXPECT_THAT(Bytes(Table::fuel_load, 1, 3), ElementsAre(249, 253, 254))
      << "not taken back from under another";
  EXPECT_EQ(Undo_Index, 1);
  EXPECT_FALSE(Curve_Drag_Runs());
  Begin_Curve_Drag(Table::fuel_load, 1);
  Run_Transfer({.goes_on = [] { return true; }}, [] {});
  EXPECT_FALSE(Drag_Curve(1));
  End_Curve_Drag();
  Begin_Curve_Drag(Table::fuel_load, 1);
  EXPECT_TRUE(Drag_Curve(-1)) << "what the transfer works on is a copy";
  End_Transfer();
  EXPECT_TRUE(Drag_Curve(-0.4));
  EXPECT_EQ(CardByte[map::fuel_load.first], 247);
  End_Curve_Drag();
}

TEST_F(Table_Gestures, The_Sensor_Editors_Values_Are_Pasted_Shaped_And_Dragged_Alike) {
  cmd_AddValueSensor_Click();
  Sensor_Grid_Enter_Cell(31, 31);
  Expect_Box(
      "Line 4 is one too many: the table has 3 rows from the current one to its end. Nothing was pasted.");
  desktop_.clipboard = "1\n2\n3\n4\n";
  Paste_Sensor_Values();
  desktop_.clipboard = "0,125\r\n9\r\n3.005\r\n";
  Paste_Sensor_Values();
  const auto values = [] {
    return std::vector<std::string>(Edited_Values().begin() + 30, Edited_Values().end());
  };
  EXPECT_THAT(values(), ElementsAre("0.125", "9", "3.005"));
  Sensor_Grid_Enter_Cell(31, 33);
  Copy_Sensor_Values();
  EXPECT_EQ(Clipboard(), "240\t93.8\t0.13\r\n248\t96.9\t9.00\r\n256\t100.0\t3.01\r\n");
  Paste_Sensor_Values();
  EXPECT_THAT(values(), ElementsAre("0.125", "9", "3.005")) << "what a cell shows is no new value";
  Interpolate_Sensor_Values();
  EXPECT_THAT(values(), ElementsAre("0.125", "1.56", "3.005"));
  Sensor_Grid_Enter_Cell(31, 32);
  EXPECT_FALSE(Can_Shape_Sensor_Values());
  Begin_Sensor_Drag();
  EXPECT_TRUE(Drag_Sensor_Curve(-0.054));
  EXPECT_THAT(values(), ElementsAre("0.075", "1.51", "3.005"));
  Take_Back_Sensor_Drag();
  EXPECT_THAT(values(), ElementsAre("0.125", "1.56", "3.005"));
  const auto doubtful = [&](const std::string& line, platform::Answer answer) {
    Expect_Box(line + ": the comma is the decimal sign. Paste them all the same?", answer);
  };
  desktop_.clipboard = "950.5\r\n1,013\r\n";
  doubtful("Line 2, \"1,013\", is read as 1.013", platform::Answer::cancel);
  Paste_Sensor_Values();
  EXPECT_THAT(values(), ElementsAre("0.125", "1.56", "3.005"));
  desktop_.clipboard = "-12,500\r\n";
  doubtful("Line 1, \"-12,500\", is read as -12.5", platform::Answer::ok);
  Paste_Sensor_Values();
  desktop_.clipboard = "1,013\r\n0,95\r\n";  // no other number could have its comma so
  Paste_Sensor_Values();
  EXPECT_THAT(values(), ElementsAre("1.013", "0.95", "3.005"));
  Begin_Sensor_Drag();
  cmd_AddLinearSensor_Click();
  EXPECT_FALSE(Drag_Sensor_Curve(1)) << "another sensor has come on show";
  EXPECT_EQ(Undo_Index, 0);
}

}  // namespace
}  // namespace kx
