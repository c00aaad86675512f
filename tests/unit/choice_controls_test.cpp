#include "workspace/choice_controls.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "settings/history.h"
#include "settings/image.h"
#include "settings/refresh.h"
#include "support/chosen_preset.h"
#include "support/workspace_fixture.h"
#include "workspace/box_settings.h"
#include "workspace/table_limits.h"
#include "workspace/tables.h"
#include "workspace/view_hooks.h"

namespace kx {
namespace {

/// What a choice makes of one byte: (byte AND keep) OR set.
struct Written {
  int byte;
  int keep;
  int set;
};

/// One index of one control: its bytes, what runs afterwards ("T" Update_Tabs, "A" Update_All, "R"
/// Show_Right_Tabs) and the history slots that it fills.
struct Case {
  const char* control;
  int index;
  std::vector<Written> writes;
  const char* afterwards;
  int captures;
};

std::vector<Case> Field(const char* control, int byte, int mask, const char* afterwards, int captures = 0) {
  const int lowest = mask & -mask;
  std::vector<Case> cases;
  for (int index = 0; index * lowest <= mask; ++index) {
    cases.push_back({control, index, {{byte, 255 - mask, index * lowest}}, afterwards, captures});
  }
  return cases;
}

std::vector<Case> All_Cases() {
  std::vector<Case> cases{
      {"AR_Enable", 0, {{1, 191, 0}}, "T", 0},
      {"AR_Enable", 1, {{1, 191, 128}}, "T", 0},
      {"Ext_stock", 0, {{22, 222, 0}}, "TA", 1},
      {"Sync_stock", 1, {{22, 222, 1}}, "TA", 1},
      {"PWM_nostock", 2, {{22, 222, 33}}, "TA", 1},
      {"mafsim_out_combo", 0, {{2, 191, 64}}, "TA", 0},
      {"mafsim_out_combo", 1, {{2, 191, 0}}, "TA", 0},
      {"igtable_mode_combo", 0, {{44, 207, 0}}, "TA", 0},
      {"igtable_mode_combo", 1, {{44, 207, 16}}, "TA", 0},
      {"ig_mode_combo", 0, {{44, 252, 0}}, "TA", 0},
      {"ig_mode_combo", 1, {{44, 252, 1}}, "TA", 0},
      {"ig_mode_slave_combo", 0, {{44, 243, 0}}, "TA", 0},
      {"ig_mode_slave_combo", 1, {{44, 243, 4}}, "TA", 0},
      {"io_combo", 0, {{22, 63, 0}, {2, 251, 0}}, "T", 0},
      {"io_combo", 2, {{22, 63, 128}, {2, 251, 0}}, "T", 0},
      {"io_combo", 4, {{22, 63, 0}, {2, 251, 4}}, "T", 0},
      {"Ind_Trim_Option(0)", 0, {{44, 191, 0}, {22, 255, 0}}, "A", 1},
      {"Ind_Trim_Option(1)", 1, {{44, 191, 64}, {22, 255, 0}}, "A", 1},
  };
  for (const auto& field : {Field("an2_combo", 22, 6, "TA", 1),
                            Field("max_ret", 1, 64, "T"),
                            Field("MAFSIM_enable", 0, 16, "TA"),
                            Field("mafsim_combo", 5, 12, "TA"),
                            Field("mafsim_limit_combo", 2, 128, "TA"),
                            Field("boost_enable_combo", 1, 4, "T"),
                            Field("ignrpm_tblprec_combo", 44, 32, "TA"),
                            Field("ae_combo", 5, 48, "TA"),
                            Field("ae_combo2", 44, 128, "T"),
                            Field("IAT_in_combo", 5, 192, "TA"),
                            Field("an_sync_check(0)", 15, 1, ""),
                            Field("an_sync_check(1)", 15, 2, ""),
                            Field("an_sync_check(2)", 15, 4, ""),
                            Field("an_sync_check(3)", 15, 8, ""),
                            Field("slave", 1, 8, ""),
                            Field("pwm1_check", 2, 8, ""),
                            Field("BoostControlPICheck", 2, 32, "AT"),
                            Field("ig_neg_combo", 3, 3, "T", 1),
                            Field("ig_pos_combo", 3, 12, "T", 1),
                            Field("fuel_neg_combo", 3, 48, "T", 1),
                            Field("fuel_pos_combo", 3, 192, "T", 1),
                            Field("pwm_combo", 4, 3, "T"),
                            Field("boost_combo", 5, 3, "TA"),
                            Field("Res_500", 1, 64, "TAR"),
                            Field("Semi_Sequential_Fuel_opt", 15, 64, "")}) {
    cases.insert(cases.end(), field.begin(), field.end());
  }
  return cases;
}

class Choice_Controls : public Workspace_Fixture {
 protected:
  void SetUp() override {
    Workspace_Fixture::SetUp();
    test::Choose_Preset();
  }

  /// From here on refreshes are only noted.
  void Note_Refreshes() {
    refresh_hooks.update_tabs = [this] { refreshes_ += 'T'; };
    refresh_hooks.update_all = [this] { refreshes_ += 'A'; };
    refresh_hooks.show_right_tabs = [this] { refreshes_ += 'R'; };
  }

  /// Every byte @p value, but a mirror byte that is out of step in every bit.
  static void Fill_Image(int value) {
    CardByte.Fill(0, 255, static_cast<std::uint8_t>(value));
    CardByte[0] = static_cast<std::uint8_t>(255 - value);
  }

  static Byte_Image After(const Case& choice) {
    Byte_Image image = CardByte;
    for (const Written& write : choice.writes) {
      image[write.byte] = static_cast<std::uint8_t>((image[write.byte] & write.keep) | write.set);
      if (write.byte == 22) image[0] = image[22];
      if (write.byte == 0) image[22] = image[0];
    }
    return image;
  }

  std::string refreshes_;
};

/// While the views are being filled a control reads only, and what is chosen already is not stored again.
TEST_F(Choice_Controls, Every_Index_Of_Every_Control_Writes_Its_Bits_Only_From_Every_Start_Value) {
  Note_Refreshes();
  int shown = 0;
  const Choice_Row* changed = nullptr;
  view_hooks.show_choice = [&](const Choice_Row& row) { shown += &row == changed ? 1 : 0; };
  std::vector<std::pair<std::string_view, int>> seen;
  for (const Case& choice : All_Cases()) {
    const Choice_Row& row = Choice_Row_Of(choice.control);
    seen.emplace_back(row.Name(), choice.index);
    for (int value = 0; value < 256; ++value) {
      Fill_Image(value);
      Reset_History();
      refreshes_.clear();
      shown = 0;
      changed = &row;
      const Byte_Image before = CardByte;
      Undo_Busy = true;
      ASSERT_TRUE(Choice_Index(row) >= 0 && Choice_Index(row) < Choice_Count(row)) << choice.control;
      Choice_Changed(row, choice.index);
      Undo_Busy = false;
      ASSERT_EQ(CardByte, before) << choice.control;
      const bool chosen = Choice_Index(row) == choice.index;
      const bool refused = !chosen && row.Name() == "io_combo" && choice.index == 2 && (value & 6) == 4;
      if (refused) Expect_Box("This seting not possible at the same time as analog2 Mode3!");
      const bool changes = !chosen && !refused;
      const Byte_Image expected = changes ? After(choice) : CardByte;
      Choice_Changed(row, choice.index);
      ASSERT_EQ(CardByte, expected) << choice.control << ' ' << choice.index << " from " << value;
      ASSERT_EQ(refreshes_, changes ? choice.afterwards : "") << choice.control;
      ASSERT_EQ(Undo_Index, changes ? choice.captures : 0) << choice.control;
      ASSERT_EQ(shown, 2) << choice.control;
      const bool stays = refused || (row.Name() == "AR_Enable" && value >= 128);
      if (!stays) {
        ASSERT_EQ(Choice_Index(row), choice.index) << choice.control << " from " << value;
      }
    }
  }
  for (const Choice_Row& row : Choice_Rows()) {
    for (int index = 0; index < Choice_Count(row); ++index) {
      const bool not_in_use = row.Name() == "io_combo" && (index == 1 || index == 3);
      EXPECT_EQ(std::ranges::count(seen, std::pair(row.Name(), index)), not_in_use ? 0 : 1) << row.Name();
    }
  }
}

TEST_F(Choice_Controls, Shown_Index_Of_Stored_Values_That_No_List_Writes) {
  for (const auto& [control, byte, value, index] : {std::tuple{"ig_mode_combo", 44, 2, 1},
                                                    {"ig_mode_slave_combo", 44, 8, 1},
                                                    {"io_combo", 22, 64, 1},
                                                    {"io_combo", 22, 192, 3},
                                                    {"Ext_stock", 22, 32, 2}}) {
    CardByte = {};
    CardByte[byte] = static_cast<std::uint8_t>(value);
    EXPECT_EQ(Choice_Index(Choice_Row_Of(control)), index) << control << ' ' << value;
  }
  EXPECT_EQ(Choice_Text(Choice_Row_Of("io_combo")), "Mode1, 4 fuel, 2 ign, PWM on pin 5");
}

TEST_F(Choice_Controls, Modes_Not_In_Use_Are_Refused_And_The_List_Goes_Back) {
  Note_Refreshes();
  const Choice_Row& io = Choice_Row_Of("io_combo");
  CardByte[map::flags_b] = 4;
  const Byte_Image before = CardByte;
  int shown = -1;
  view_hooks.show_choice = [&](const Choice_Row& row) { shown = Choice_Index(row); };
  for (const int index : {1, 3}) {
    Expect_Box("Not availible in this version!");
    Choice_Changed(io, index);
    EXPECT_EQ(CardByte, before);
    EXPECT_EQ(shown, 4);
  }
  EXPECT_EQ(refreshes_, "");
  EXPECT_THROW(Choice_Changed(io, 5), Failure);
  EXPECT_THROW(Choice_Changed(io, -1), Failure);
  EXPECT_THROW((void)Choice_Row_Of(""), Failure);
}

TEST_F(Choice_Controls, Views_Follow_A_Change_Of_Meaning_At_Once) {
  Show_Tab(main_tab::ignition, 0);
  Choice_Changed(Choice_Row_Of("igtable_mode_combo"), 1);
  EXPECT_EQ(maxText.Text(), "199");
  EXPECT_EQ(View_Of_Tune().Label_IG_RPM, "Set spark timing change, in degrees, based on engine RPM.");
  Show_Tab(main_tab::ignition, 1);
  Choice_Changed(Choice_Row_Of("ignrpm_tblprec_combo"), 1);
  EXPECT_EQ(maxText.Text(), "12.7");
  Show_Tab(main_tab::pwm, 1);
  Choice_Changed(Choice_Row_Of("BoostControlPICheck"), 1);
  EXPECT_EQ(minText.Text(), "0.1");
  EXPECT_FALSE(Config_Of_Tune().pwm1_check);
  Choice_Changed(Choice_Row_Of("boost_combo"), 1);  // volts now
  EXPECT_EQ(Grid_Of(Table::pwm_rpm).Text(0, 1), "V");
  EXPECT_EQ(Grid_Of(Table::pwm_rpm).Text(1, 1), "5.00");
  Choice_Changed(Choice_Row_Of("PWM_nostock"), 2);
  EXPECT_EQ(Grid_Of(Table::fuel_load).Text(0, 2), "%");
  EXPECT_EQ(Grid_Of(Table::fuel_load).Text(2, 2), "50.2");
  EXPECT_FALSE(Config_Of_Tune().Inj_Cal_Frame);
  for (const auto& [index, rows] : {std::pair{1, 42}, {0, 22}}) {
    Choice_Changed(Choice_Row_Of("Res_250"), index);
    EXPECT_EQ(Grid_Of(Table::fuel_rpm).Rows(), rows);
  }
  Choice_Changed(Choice_Row_Of("MAFSIM_enable"), 1);
  EXPECT_TRUE(View_Of_Tune().maf_output_tab);
  EXPECT_EQ(View_Of_Tune().Label_AN1, "AN1 is disabled because of MAF-simulation");
}

}  // namespace
}  // namespace kx
