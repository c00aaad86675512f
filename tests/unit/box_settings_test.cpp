#include "workspace/box_settings.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "boxlink/link_texts.h"
#include "settings/byte_notes.h"
#include "settings/history.h"
#include "settings/image.h"
#include "settings/ini_file_adm.h"
#include "settings/refresh.h"
#include "support/chosen_preset.h"
#include "support/workspace_fixture.h"
#include "workspace/choice_controls.h"
#include "workspace/view_hooks.h"

namespace kx {
namespace {

using test::Choose_Preset;

using Box_Settings = Workspace_Fixture;

/// A mask of 40 positions, dataset 108, with everything on but the positions @p off.
std::string Mask_Without(const std::vector<int>& off) {
  std::string bits = "01101100" + std::string(32, '1');
  for (const int position : off) bits.at(static_cast<std::size_t>(position - 1)) = '0';
  std::string mask;
  for (std::size_t i = 0; i < bits.size(); i += 4) {
    mask += "0123456789ABCDEF"[std::stoi(bits.substr(i, 4), nullptr, 2)];
  }
  return mask;
}

TEST_F(Box_Settings, Each_Mask_Position_Switches_Its_Controls_Off_And_On_Again) {
  using S = Preset_Switches;
  struct Position {
    std::vector<int> off;
    std::vector<bool S::*> controls;
  };
  const std::vector<Position> positions{
      {{11}, {&S::PWM_Load_Frame}},
      {{18}, {&S::Frame4}},
      {{19}, {&S::gear_shift}},
      {{21}, {&S::Fuel_Load_Base_Frame}},
      {{22}, {&S::AE_Frame}},
      {{23}, {&S::SSTab_PWM}},
      {{26}, {&S::An2_Available}},
      {{27}, {&S::PWM_PID_Frame}},
      {{30}, {&S::Inj_Cal_Frame}},
      {{31}, {&S::Enrich_Mode_Frame}},
      {{32}, {&S::config_frame_b}},
      {{36}, {&S::SSTab_Fuel, &S::Rpm_Res_Frame}},
      {{40}, {&S::Sensor_Settings}},
      {{9, 10, 12, 13, 14, 15, 16, 17, 20, 24, 25, 28, 29, 33, 34, 35, 37, 38, 39}, {}}};
  std::vector<bool S::*> all;
  for (const Position& position : positions) {
    all.insert(all.end(), position.controls.begin(), position.controls.end());
  }
  for (const Position& position : positions) {
    Choose_Preset(Mask_Without(position.off));
    Update_All();
    for (const auto control : all) {
      const bool off = std::ranges::find(position.controls, control) != position.controls.end();
      EXPECT_EQ(Config_Of_Tune().*control, !off) << Mask_Without(position.off);
    }
    EXPECT_EQ(Config_Of_Tune().Label_BoostControl_Notification(), !Config_Of_Tune().PWM_PID_Frame);
    EXPECT_EQ(Config_Of_Tune().Res_250,
              Config_Of_Tune().An2_Available ? "250 RPM, (also disables AN2 out function)" : "250 RPM");
    EXPECT_TRUE(Config_Of_Tune().Rpm_Calc_Frame && Config_Of_Tune().In_Boost_Frame);
    EXPECT_FALSE(Config_Of_Tune().Frame3 || Config_Of_Tune().HScroll3);
  }
}

TEST_F(Box_Settings, Masks_Of_Other_Lengths_Leave_Missing_Positions_Off_But_The_Last_Two) {
  for (const auto& [mask, dataset, air_temperature, precision_frame] :
       {std::tuple{"", 0, false, false}, {"6C216E6", 108, true, false}, {"6B216E67", 107, false, true}}) {
    Choose_Preset(mask);
    Refresh_Whole_Image();
    EXPECT_EQ(DatasetID, dataset) << mask;
    EXPECT_EQ(Config_Of_Tune().IAT_Fuel_tab, air_temperature) << mask;
    EXPECT_EQ(Config_Of_Tune().config_frame_b, precision_frame) << mask;
    EXPECT_TRUE(Config_Of_Tune().SSTab_Fuel && Config_Of_Tune().Sensor_Settings &&
                Config_Of_Tune().Rpm_Res_Frame);
  }
}

TEST_F(Box_Settings, Frames_That_The_Tune_Decides) {
  Choose_Preset();
  CardByte[map::flags_c] = 0;
  Update_All();
  EXPECT_TRUE(Config_Of_Tune().Inj_Cal_Frame);
  EXPECT_FALSE(Config_Of_Tune().Fuel_trim);
  EXPECT_EQ(Config_Of_Tune().Label25, "Injector pulse offset in milliseconds.");
  Choice_Changed(Choice_Row_Of("Sync_stock"), 1);
  EXPECT_FALSE(Config_Of_Tune().Inj_Cal_Frame);
  Choice_Changed(Choice_Row_Of("Ind_Trim_Option(1)"), 1);
  EXPECT_TRUE(Config_Of_Tune().Fuel_trim);
  EXPECT_EQ(Config_Of_Tune().Label25,
            "Injector pulse offset in milliseconds. Master                                  Slave");
}

TEST_F(Box_Settings, A_Preset_Works_On_The_Tune_At_Every_Refresh_And_Says_What_It_Changed) {
  Choose_Preset("6C216E67", "@44,s16,r251,@44,r239");
  CardByte[44] = 5;
  CardByte[45] = 255;
  const int slot = Undo_Index;
  Update_All();
  EXPECT_EQ(CardByte[44], 5);
  EXPECT_EQ(CardByte[45], 251);
  EXPECT_EQ(preset_status.Text(), "Preset changed bytes: 45");
  Update_All();
  EXPECT_EQ(preset_status.Text(), "");
  EXPECT_EQ(Undo_Index, slot);

  // What the user sets against the preset falls back with the next refresh, its layout too.
  Choose_Preset("6C216E67", "@44,r207,@1,64");
  CardByte[44] = 16;
  Refresh_Whole_Image();
  EXPECT_EQ(preset_status.Text(), "Preset changed bytes: 1, 44");
  CardByte[44] = 16;
  Update_Tabs();
  EXPECT_EQ(View_Of_Tune().Label41, "Set percentage of spark timing change, based on manifold pressure.");
  Update_All();
  EXPECT_EQ(View_Of_Tune().Label41, "Set spark timing change, in degrees, based on manifold pressure.");
}

class Preset_Choice : public Workspace_Fixture {
 protected:
  void SetUp() override {
    Workspace_Fixture::SetUp();
    Preset_List = {{"first", "6C216E67", "", "", ""},
                   {"second", "6B216E67", "@1,s8,@35,100", "", ""},
                   {"third", "6A216E47", "@2,r255", "", ""}};
    User_Preset = 0;
    Refresh_Whole_Image();
    CardByte[35] = 128;
  }
  static std::string Stored() { return Read_Key("User_Preset").value_or("none"); }
};

TEST_F(Preset_Choice, Asks_Before_It_Changes_Bytes_And_Is_Taken_At_Once_Otherwise) {
  const std::string question =
      "These presets will change:\r\n" + Byte_Name(1) + ": 0 -> 8\r\n" + Byte_Name(35) + ": 128 -> 100\r\n";
  const Byte_Image before = CardByte;
  Expect_Box(question, platform::Answer::cancel);
  Mod_combo_Chosen(1);
  EXPECT_EQ(User_Preset, 0);
  EXPECT_EQ(Stored(), "0");
  EXPECT_EQ(CardByte, before);
  EXPECT_EQ(DatasetID, 108);
  Expect_Box(question);
  Mod_combo_Chosen(1);
  EXPECT_EQ(ask_.last_box.buttons, platform::Buttons::ok_cancel);
  EXPECT_EQ(Stored(), "1");
  EXPECT_EQ(CardByte[1], 8);
  EXPECT_EQ(CardByte[35], 100);
  EXPECT_EQ(DatasetID, 107);
  EXPECT_EQ(preset_status.Text(), "Preset changed bytes: 1, 35");
  Mod_combo_Chosen(2);
  EXPECT_EQ(User_Preset, 2);
  EXPECT_EQ(DatasetID, 106);
}

TEST_F(Preset_Choice, Filling_The_List_Chooses_Nothing) {
  Undo_Busy = true;
  Mod_combo_Chosen(2);
  EXPECT_EQ(User_Preset, 0);
  EXPECT_EQ(Stored(), "0");
}

TEST_F(Box_Settings, Bypass_Mode_Is_For_Dataset_106_After_A_Question) {
  const std::string question =
      "This will clear all settings. Make sure that you have saved old settings first. Do you want to "
      "continue?";
  Choose_Preset();
  CardByte.Fill(0, 255, 17);
  for (const char* mask : {"69216E67", "6B216E67"}) {
    Choose_Preset(mask);
    Update_All();
    Expect_Box("Only selectable with dataset 106 or higher");
    EXPECT_FALSE(PassBy_Mode_Button_Click());
    EXPECT_EQ(ask_.last_box.title, "Bypass mode");
  }
  Choose_Preset("6A216E67");
  Update_All();
  const Byte_Image before = CardByte;
  Expect_Box(question, platform::Answer::no);
  EXPECT_FALSE(PassBy_Mode_Button_Click());
  EXPECT_EQ(ask_.last_box.title, "Enter pass by mode");
  EXPECT_EQ(CardByte, before);

  Expect_Box(question, platform::Answer::yes);
  EXPECT_TRUE(PassBy_Mode_Button_Click());
  Byte_Image expected = before;
  expected[22] = expected[0] = 17;  // bits 6 and 7 stay 0
  expected[2] = 17 | 4;
  expected.Fill(46, 78, 0);
  expected.Fill(79, 99, 192);
  expected.Fill(100, 132, 128);
  expected.Fill(133, 153, 192);
  expected.Fill(154, 195, 255);
  expected.Fill(196, 249, 128);
  EXPECT_EQ(CardByte, expected);
  EXPECT_EQ(Choice_Index(Choice_Row_Of("io_combo")), 4);
}

TEST_F(Box_Settings, The_Image_As_Text_Has_A_Line_A_Byte_And_What_The_Dataset_Says_Of_It) {
  Choose_Preset("05");
  Update_All();
  CardByte[0] = 22;
  CardByte[255] = 9;
  uncoded_Click();
  EXPECT_TRUE(uncoded.Text().starts_with("0 22\r\n1 0\r\n"));
  EXPECT_TRUE(uncoded.Text().ends_with("\r\n255 9\r\n"));
  EXPECT_EQ(std::ranges::count(uncoded.Text(), '\n'), 256);

  folder_.Write("DatasetID6.txt", "bit 3 before any byte\rFlags\rbit 1 low\rbit 2 high\rbit 9 none\rNext\r");
  Choose_Preset("06");
  Update_All();
  uncoded_Click();
  EXPECT_TRUE(
      uncoded.Text().starts_with("0 22\r\n  Flags\r\n    bit 1 low = 1\r\n    bit 2 high = 1\r\n"
                                 "    bit 9 none\r\n1 0\r\n  Next\r\n2 0\r\n3 0\r\n"))
      << uncoded.Text().substr(0, 200);
}

TEST_F(Box_Settings, Closing_The_Dialog_Lays_Out_And_Fills) {
  std::string refreshes;
  refresh_hooks.update_tabs = [&] { refreshes += 'T'; };
  refresh_hooks.update_all = [&] { refreshes += 'A'; };
  OKButton_Click();
  EXPECT_EQ(refreshes, "TA");
}

}  // namespace
}  // namespace kx
