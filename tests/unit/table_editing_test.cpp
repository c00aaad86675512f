#include <gtest/gtest.h>

#include "settings/history.h"
#include "settings/image.h"
#include "settings/refresh.h"
#include "support/workspace_fixture.h"
#include "workspace/cell_editing.h"
#include "workspace/table_limits.h"
#include "workspace/table_operations.h"

namespace kx {
namespace {

class Table_Editing : public Workspace_Fixture {
 protected:
  void SetUp() override {
    Workspace_Fixture::SetUp();
    Refresh_Whole_Image();
  }

  /// Selects grid rows of the table on show.
  static void Select(Table table, int row, int row_sel) {
    const Table_Row& place = Row_Of(table);
    Show_Tab(place.tab, place.sub_tab);
    Grid_Enter_Cell(table, row, row_sel);
  }
  static int Code_Of(char key) {
    return key == '.' ? key::full_stop : key == ',' ? key::comma : key == '-' ? key::minus : key;
  }
  static void Type(Table table, std::string_view keys) {
    for (const char key : keys) Grid_Key_Down(table, Code_Of(key), 0);
  }
  static std::string Cell_Text(Table table) {
    return Grid_Of(table).Text(Grid_Of(table).Row(), Row_Of(table).text_column);
  }
};

TEST_F(Table_Editing, Every_Button_Changes_The_Selected_Bytes_Of_Every_Table_Only) {
  struct Button {
    const char* name;
    void (*click)();
  };
  const Button buttons[] = {{"plus", plus_Click}, {"minus", minus_Click},   {"steep", steep_Click},
                            {"flat", flat_Click}, {"set", set_table_Click}, {"scale", scale_table_Click}};
  Set_Field(map::maf_sim_enable, 0);
  set_table_text.Set("3");
  scale_table_text.Set("50");
  for (const Table_Row& row : table_rows) {
    for (const Button& button : buttons) {
      Init_Default_Settings(0);
      CardByte.Fill(row.first_byte, row.first_byte + Entries_Of(row.table) - 1, 144);
      Refresh_Whole_Image();
      Select(row.table, 6, 4);
      const Byte_Image before = CardByte;
      button.click();
      for (int byte = 0; byte < Byte_Image::size; ++byte) {
        const bool selected = byte >= row.first_byte + 3 && byte <= row.first_byte + 5;
        if (selected) continue;
        ASSERT_EQ(CardByte[byte], before[byte]) << row.grid << " " << button.name << " byte " << byte;
      }
      EXPECT_NE(CardByte[row.first_byte + 5], 144) << row.grid << " " << button.name;
    }
  }
}

TEST_F(Table_Editing, Slope_Starts_At_The_Upper_End_Whichever_Way_The_Selection_Was_Drawn) {
  CardByte.Fill(map::analog1, 100);
  Refresh_Whole_Image();
  Select(Table::analog1, 7, 5);
  steep_Click();
  EXPECT_EQ(CardByte[map::analog1.first + 4], 100);
  EXPECT_EQ(CardByte[map::analog1.first + 5], 101);
  EXPECT_EQ(CardByte[map::analog1.first + 6], 102);
  flat_Click();
  EXPECT_EQ(CardByte[map::analog1.first + 6], 100);
}

TEST_F(Table_Editing, Ends_Of_The_Scale_Stay_While_The_Others_Move) {
  CardByte[map::fuel_load.first + 1] = 255;
  CardByte[map::fuel_load.first + 2] = 254;
  Refresh_Whole_Image();
  Select(Table::fuel_load, 2, 3);
  plus_Click();
  EXPECT_EQ(CardByte[map::fuel_load.first + 1], 255);
  EXPECT_EQ(CardByte[map::fuel_load.first + 2], 255);
  Select(Table::fuel_load, 1, 1);
  minus_Click();
  EXPECT_EQ(CardByte[map::fuel_load.first], 0);
}

TEST_F(Table_Editing, Maf_Limit_Leaves_The_Ignition_Of_All_Rpms_Alone) {
  Set_Field(map::maf_sim_enable, 1);
  Set_Field(map::maf_sim_limit, 1);
  Refresh_Whole_Image();
  const int ignition = CardByte[map::maf_limit.first];
  Select(Table::maf_limit, 1, 21);
  set_table_text.Set("2");
  set_table_Click();
  Select(Table::maf_limit, 1, 1);
  Type(Table::maf_limit, "1");
  EXPECT_EQ(CardByte[map::maf_limit.first], ignition);
  EXPECT_EQ(CardByte[map::maf_limit.first + 1], 102);
  EXPECT_EQ(CardByte[map::maf_limit.Last()], 102);
  Select(Table::maf_limit, 2, 2);
  Type(Table::maf_limit, "1.5");
  EXPECT_EQ(Grid_Of(Table::maf_limit).Text(1, 1), "1.49") << "row 1 shows the byte of row 2";
  EXPECT_EQ(Chart_Of(Chart_Id::MAFSim_limit_chart).series.at(0).values.at(0), 1.49);
}

TEST_F(Table_Editing, Set_Shows_The_Clipped_Number_And_Refuses_What_Is_None) {
  Select(Table::pwm_load, 1, 1);
  set_table_text.Set("250");
  set_table_Click();
  EXPECT_EQ(set_table_text.Text(), "199");
  EXPECT_EQ(CardByte[map::pwm_load.first], 254);
  set_table_text.Set("12,5");
  set_table_Click();
  EXPECT_EQ(CardByte[map::pwm_load.first], 16);
  set_table_text.Set("12a");
  const Byte_Image before = CardByte;
  EXPECT_THROW(set_table_Click(), Failure);
  EXPECT_EQ(CardByte, before);
}

TEST_F(Table_Editing, Scale_Says_What_Is_No_Number_And_Keeps_The_Table) {
  Select(Table::fuel_rpm, 2, 5);
  const Byte_Image before = CardByte;
  scale_table_text.Set("-");
  Expect_Box("not a number");
  scale_table_Click();
  EXPECT_EQ(CardByte, before);
  scale_table_text.Set("100");
  scale_table_Click();
  EXPECT_EQ(CardByte, before);
}

TEST_F(Table_Editing, Without_A_Table_On_Show_A_Button_Only_Captures) {
  Show_Tab(main_tab::general, 0);
  const Byte_Image before = CardByte;
  plus_Click();
  EXPECT_EQ(CardByte, before);
  EXPECT_EQ(Undo_Index, 1);
}

TEST_F(Table_Editing, Keys_Edit_The_Cell_Text) {
  for (const auto& [before, keys, after] :
       {std::tuple{"0.0", "1.5", "1.5"}, {"3", ".5", "5"}, {"0.0", "-", "-"}, {"0.0", "1,5.", "1,5"}}) {
    Fresh_Cell = true;
    std::string text = before;
    for (const char key : std::string_view(keys)) text = KeyEdit(Code_Of(key), text);
    EXPECT_EQ(text, after) << keys;
  }
  Fresh_Cell = true;
  EXPECT_EQ(KeyEdit(103, "12.5"), "7") << "keypad digit";
  EXPECT_EQ(KeyEdit(key::backspace, "12.5"), "12.");
  EXPECT_EQ(KeyEdit(key::backspace, ""), "");
  EXPECT_EQ(KeyEdit(key::delete_key, "12.5"), "");
  EXPECT_EQ(KeyEdit(109, "12.5"), "12.5") << "keypad minus";
  EXPECT_EQ(KeyEdit(65, "12.5"), "12.5");
}

TEST_F(Table_Editing, Typing_Stores_At_Once_And_Keeps_The_Text_Until_The_Next_Refresh) {
  Select(Table::fuel_load, 5, 5);
  Type(Table::fuel_load, "12.3");
  EXPECT_EQ(CardByte[map::fuel_load.first + 4], 189);
  EXPECT_EQ(Cell_Text(Table::fuel_load), "12.3");
  EXPECT_EQ(Chart_Of(Chart_Id::FuelMapChart).series.at(0).values.at(4), 12.3);
  Update_All();
  EXPECT_EQ(Cell_Text(Table::fuel_load), "12.2");

  Select(Table::ignition_load, 3, 3);
  Type(Table::ignition_load, "250");
  EXPECT_EQ(Cell_Text(Table::ignition_load), "25.5");
  EXPECT_EQ(CardByte[map::ignition_load.first + 2], 255);
}

TEST_F(Table_Editing, A_Key_That_Changes_Nothing_Stores_Nothing) {
  CardByte[map::pwm_load.first] = 3;  // shows "02", which would read back as byte 2
  Refresh_Whole_Image();
  Select(Table::pwm_load, 1, 1);
  for (const int code : {16, 40, 109, 0}) Grid_Key_Down(Table::pwm_load, code, 0);
  EXPECT_EQ(CardByte[map::pwm_load.first], 3);
  Type(Table::pwm_load, "2");
  EXPECT_EQ(CardByte[map::pwm_load.first], 2);
  Select(Table::pwm_load, 33, 33);
  Grid_Key_Down(Table::pwm_load, key::enter, 0);
  EXPECT_EQ(Grid_Of(Table::pwm_load).Row(), 33);
}

TEST_F(Table_Editing, Copy_Puts_The_Fuel_Load_Bytes_On_The_Clipboard) {
  Select(Table::fuel_load, 1, 1);
  Grid_Key_Down(Table::fuel_load, key::letter_c, key::ctrl_state);
  EXPECT_EQ(Clipboard().substr(0, 8), "0\r\n128\r\n");
  EXPECT_EQ(Clipboard().size(), 3U + 32 * 5);
}

TEST_F(Table_Editing, Limits_Follow_The_Table_On_Show) {
  Show_Tab(main_tab::fuel, 0);
  Get_Shown_Table_Maxmin();
  EXPECT_EQ(minText.Text() + " " + maxText.Text(), "-25.6 25.4");
  Show_Tab(main_tab::pwm, 0);
  Get_Shown_Table_Maxmin();
  EXPECT_EQ(maxText.Text(), "25.4") << "PWM Load leaves the limits as they were";
  Show_Tab(main_tab::pwm, 1);
  Get_Shown_Table_Maxmin();
  EXPECT_EQ(minText.Text() + " " + maxText.Text(), "0 199");
  Set_Field(map::ignition_load_in_percent, 1);
  Set_Field(map::ignition_rpm_fine, 1);
  Show_Tab(main_tab::ignition, 1);
  Get_Shown_Table_Maxmin();
  EXPECT_EQ(minText.Text() + " " + maxText.Text(), "-12.8 12.7");
}

TEST_F(Table_Editing, Undo_Walks_Slots_And_Redo_Walks_Past_The_Newest) {
  const Byte_Image start = CardByte;
  Undo();
  EXPECT_EQ(CardByte, start);
  Select(Table::fuel_load, 5, 5);
  plus_Click();
  Undo();
  EXPECT_EQ(CardByte, start);
  Redo();
  EXPECT_EQ(CardByte, Byte_Image{}) << "slot 1 was never captured";
  Undo();
  EXPECT_EQ(CardByte, start);
}

TEST_F(Table_Editing, A_Full_History_Drops_The_Oldest) {
  for (int i = 0; i < 103; ++i) {
    CardByte[map::fuel_load.first] = static_cast<std::uint8_t>(i);
    Capture_History();
  }
  EXPECT_EQ(Undo_Index, 100);
  for (int i = 0; i < 100; ++i) Undo();
  EXPECT_EQ(CardByte[map::fuel_load.first], 3);
  EXPECT_EQ(Undo_Index, 0);
  Undo_Busy = true;
  Capture_History();
  EXPECT_EQ(Undo_Index, 0);
}

}  // namespace
}  // namespace kx
