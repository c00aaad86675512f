#include "settings/earlier_tunes.h"

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <utility>

#include "boxlink/transfer.h"
#include "logging/log_state.h"
#include "platform/seams.h"
#include "settings/history.h"
#include "settings/notice.h"
#include "settings/presets.h"
#include "settings/session.h"
#include "settings/setting_file.h"
#include "settings/tune_being_edited.h"
#include "settings/tune_origin.h"
#include "support/workspace_fixture.h"
#include "workspace/box_settings.h"
#include "workspace/log_settings_export.h"
#include "workspace/setting_file_commands.h"
#include "workspace/shut_down.h"

namespace kx {
namespace {

namespace fs = std::filesystem;

class Earlier_Tunes_Test : public Workspace_Fixture {
 protected:
  /// A tune that differs from the one before it.
  static void Edit(int value) { CardByte[map::fuel_load.first] = static_cast<std::uint8_t>(value); }

  /// A .kxs file in the folder whose first fuel entry is @p value.
  std::string Tune_File(const std::string& name, int value, const std::string& description = "") {
    Byte_Image image = Stamped(CardByte);
    image[map::fuel_load.first] = static_cast<std::uint8_t>(value);
    return folder_.Write(name, Print_Setting_File(image, description));
  }
  [[nodiscard]] static int Newest() { return Earlier_Tunes().at(0).tune.image[map::fuel_load.first]; }

  /// A program that runs in the same folder and was killed, or still runs: the file of its tune and its lock.
  std::string Left_By_Another(int value, const std::string& file = "being-edited.kxs") {
    fs::create_directories(folder_.Path("earlier-tunes"));
    Tune_Copy left = Copy_Of_Tune();
    left.image[map::fuel_load.first] = static_cast<std::uint8_t>(value);
    left.name = "mine.kxs";
    left.folder = folder_.Path() + "/";
    return folder_.Write("earlier-tunes/" + file, Print_Tune_Copy(left));
  }
  static constexpr const char* offer =
      "The program did not end in order while mine.kxs was being edited. Open the tune as it was at "
      "2031-05-17 10:00:00?\r\nNo leaves it among the earlier tunes.";
};

TEST_F(Earlier_Tunes_Test, What_Is_Replaced_Can_Be_Opened_Like_A_File) {
  txt_File_Description.Set("Stage 2, 98 £\r\n\"odd\" fuel");
  Edit(7);
  const Byte_Image before = Stamped(CardByte);
  Open_Setting_File(Tune_File("other.kxs", 9));
  const auto kept = Earlier_Tunes();
  ASSERT_EQ(kept.size(), 1U);
  EXPECT_EQ(kept[0].path, folder_.Path("earlier-tunes/000001 2031-05-17 10-00-00 New1.kxs"));
  EXPECT_EQ(kept[0].tune.time, "2031-05-17 10:00:00");
  EXPECT_EQ(kept[0].tune.name, "New1.kxs");
  EXPECT_EQ(kept[0].tune.origin, "Not saved yet");
  EXPECT_EQ(Differing_Bytes(kept[0].tune.image, CardByte), 1);
  Open_Setting_File(kept[0].path);
  EXPECT_EQ(CardByte, before);
  EXPECT_EQ(txt_File_Description.Text(), "Stage 2\r\n 98 £\r\n\"odd\" fuel\r\n");
  EXPECT_EQ(notice_text.Text(), "Opened an earlier tune as " + folder_.Path("New1 2031-05-17 10-00-00.kxs"));
  EXPECT_EQ(tune_source, "Not saved yet");
  EXPECT_EQ(Earlier_Tunes()[0].tune.origin, folder_.Path() + "/");
  Undo();
  EXPECT_EQ(CardByte[map::fuel_load.first], 9);
}

TEST_F(Earlier_Tunes_Test, Saving_One_That_Was_Opened_Goes_Over_Nothing) {
  const std::string mine = Tune_File("mine.kxs", 3);
  Open_Setting_File(mine);
  const std::string was = folder_.Read("mine.kxs");
  Edit(4);
  Open_Setting_File(Tune_File("other.kxs", 9));
  const auto kept = Earlier_Tunes().at(0);
  const std::string file = kept.path.substr(folder_.Path().size() + 1);
  const std::string content = folder_.Read(file);
  Open_Setting_File(kept.path);
  Edit(5);
  File_save_Click();
  EXPECT_EQ(card_data_file, "mine 2031-05-17 10-00-00.kxs");
  EXPECT_TRUE(folder_.Has(card_data_file));
  EXPECT_EQ(folder_.Read("mine.kxs"), was);
  EXPECT_EQ(folder_.Read(file), content);
  fs::create_directory_symlink(folder_.Path(), folder_.Path("link"));
  Open_Setting_File(folder_.Path("link/" + file));
  EXPECT_EQ(card_data_dir + card_data_file, folder_.Path("mine 2031-05-17 10-00-00.kxs")) << "over a link";
  Open_Setting_File(mine);
  EXPECT_EQ(Name_For_Earlier_Tune(Earlier_Tunes().at(0).tune), folder_.Path("mine 2031-05-17 10-00-00.kxs"));
}

TEST_F(Earlier_Tunes_Test, Every_Command_That_Takes_The_Whole_Tune_Keeps_It) {
  int kept = 0;
  std::string source = "Not saved yet";
  const auto expect_kept = [&](const char* by) {
    EXPECT_EQ(Earlier_Tunes()[0].tune.origin, std::exchange(source, tune_source)) << by;
    EXPECT_EQ(static_cast<int>(Earlier_Tunes().size()), ++kept) << by;
    EXPECT_EQ(Newest(), 70 + kept) << by;
    Edit(71 + kept);
  };
  Edit(71);
  Log_Dataset_Text = "[log_dataset]\r\n";
  for (int i = 0; i < 256; ++i)
    Log_Dataset_Text += std::to_string(i == map::dataset ? DatasetID : 1) + "\r\n";
  Log_Dataset_Text += "[end log_dataset]\r\n";
  Log_File_Name = "pull.kxl";
  cmd_Export_Log_kxs_settings_Click();
  expect_kept("settings of a log");
  const int other = User_Preset == 0 ? 1 : 0;
  const std::string changes = Preset_Changes(other);
  if (Lists_Changes(changes)) Expect_Box(changes);
  Mod_combo_Chosen(other);
  expect_kept("a preset");
  EXPECT_EQ(tune_source, "Box settings of the log pull.kxl");
}

TEST_F(Earlier_Tunes_Test, Identical_Ones_Are_There_Once_And_The_Newest_50_Stay) {
  for (int round = 0; round < 2; ++round) {
    for (const int value : {1, 2, 3}) {
      Edit(value);
      Keep_Earlier_Tune();
      Keep_Earlier_Tune();
    }
  }
  EXPECT_EQ(Earlier_Tunes().size(), 3U);
  EXPECT_EQ(Newest(), 3);
  Edit(1);
  Keep_Earlier_Tune();
  EXPECT_EQ(Earlier_Tunes().size(), 3U);
  EXPECT_EQ(Newest(), 1);
  txt_File_Description.Set("another text");
  Keep_Earlier_Tune();
  EXPECT_EQ(Earlier_Tunes().size(), 4U);
  folder_.Write("earlier-tunes/a file of the user.kxs", "no tune");
  for (int value = 10; value < 90; ++value) {
    Edit(value);
    if (value == 60) clock_.Set_Time_Of_Day(0);  // a clock that is set back puts none of them at the end
    Keep_Earlier_Tune();
  }
  const auto kept = Earlier_Tunes();
  ASSERT_EQ(kept.size(), 50U);
  for (int i = 0; i < 50; ++i)
    EXPECT_EQ(kept[static_cast<std::size_t>(i)].tune.image[map::fuel_load.first], 89 - i);
  EXPECT_TRUE(folder_.Has("earlier-tunes/a file of the user.kxs"));
}

TEST_F(Earlier_Tunes_Test, Names_Of_Every_Length_And_Kind_Are_Kept) {
  std::string longest;
  for (int i = 0; i < 120; ++i) longest += "ö";
  int value = 1;
  for (const std::string& name : {longest + ".kxs", std::string("no extension"), std::string("a.b.txt")}) {
    card_data_file = name;
    Edit(++value);
    ASSERT_TRUE(Keep_Earlier_Tune()) << notice_text.Text();
    EXPECT_EQ(Earlier_Tunes()[0].tune.name, name);
  }
  EXPECT_TRUE(Earlier_Tunes()[0].path.ends_with(" a.b.kxs"));
}

TEST_F(Earlier_Tunes_Test, A_Folder_That_Cannot_Be_Used_Is_Told_Once_And_Stops_Nothing) {
  folder_.Write("earlier-tunes", "a file");
  const std::string other = Tune_File("other.kxs", 9);
  Open_Setting_File(other);
  EXPECT_EQ(CardByte[map::fuel_load.first], 9);
  EXPECT_TRUE(notice_text.Text().starts_with("Earlier tunes can not be kept: ")) << notice_text.Text();
  Show_Notice("");
  Offer_Left_Tunes();
  Edit(8);
  loop_.Set_Turn(1);
  loop_.Run(61);
  Open_Setting_File(other);
  File_save_Click();
  EXPECT_EQ(notice_text.Text().find("Earlier"), std::string::npos) << notice_text.Text();
  Begin_Shutdown();
  EXPECT_EQ(folder_.Read("earlier-tunes"), "a file");
}

TEST_F(Earlier_Tunes_Test, Closing_Keeps_The_Tune_And_Leaves_No_Copy) {
  Offer_Left_Tunes();
  Edit(21);
  loop_.Set_Turn(1);
  loop_.Run(31);
  EXPECT_TRUE(folder_.Has("earlier-tunes/being-edited.kxs"));
  Edit(22);
  Begin_Shutdown();
  EXPECT_EQ(Newest(), 22);
  EXPECT_EQ(std::distance(fs::directory_iterator(folder_.Path("earlier-tunes")), {}), 1);
}

TEST_F(Earlier_Tunes_Test, The_Tune_Being_Edited_Is_Kept_While_It_Stands_In_No_File) {
  const std::string copy = "earlier-tunes/being-edited.kxs";
  const auto run = [this] { loop_.Run(30); };
  loop_.Set_Turn(1);
  Offer_Left_Tunes();
  run();
  EXPECT_FALSE(folder_.Has(copy)) << "the tune of the start is nobody's work";
  Edit(31);
  run();
  EXPECT_EQ(Parse_Setting_File(folder_.Read(copy))->image, Stamped(CardByte));
  const auto an_hour_ago = fs::last_write_time(folder_.Path(copy)) - std::chrono::hours(1);
  fs::last_write_time(folder_.Path(copy), an_hour_ago);
  run();
  EXPECT_EQ(fs::last_write_time(folder_.Path(copy)), an_hour_ago) << "written without a change";
  txt_File_Description.Set("changed");
  run();
  EXPECT_EQ(Parse_Setting_File(folder_.Read(copy))->description, "changed\r\n");
  File_save_Click();
  EXPECT_FALSE(folder_.Has(copy)) << "older than the file";
  run();
  EXPECT_FALSE(folder_.Has(copy));
}

TEST_F(Earlier_Tunes_Test, No_Disk_Is_Waited_For_While_A_Transfer_Has_The_Line) {
  const std::string copy = "earlier-tunes/being-edited.kxs";
  Offer_Left_Tunes();
  Edit(32);
  loop_.Set_Turn(0.1);
  Run_Transfer({.goes_on = [] { return true; }}, [] {});
  loop_.Run(35);
  EXPECT_FALSE(folder_.Has(copy));
  End_Transfer();
  loop_.Run(1.2);
  EXPECT_TRUE(folder_.Has(copy));
}

TEST_F(Earlier_Tunes_Test, What_A_Killed_Program_Has_Left_Is_Offered_Once) {
  for (const bool wanted : {true, false}) {
    const int value = wanted ? 41 : 42;
    Left_By_Another(value);
    Expect_Box(offer, wanted ? platform::Answer::yes : platform::Answer::no);
    Offer_Left_Tunes();
    EXPECT_EQ(CardByte[map::fuel_load.first], 41);
    EXPECT_EQ(card_data_dir + card_data_file, folder_.Path("mine.kxs")) << "a save goes where it would have";
    EXPECT_EQ(Newest(), value);
    EXPECT_FALSE(folder_.Has("earlier-tunes/being-edited.kxs"));
    Offer_Left_Tunes();
  }
  Undo();
  EXPECT_NE(CardByte[map::fuel_load.first], 41);
}

TEST_F(Earlier_Tunes_Test, What_A_Running_Program_Keeps_Is_Its_Own) {
  const std::string path = Left_By_Another(51);
  platform::File_Lock other;
  ASSERT_TRUE(other.Take(path + ".lock").Ok());
  Offer_Left_Tunes();
  Edit(52);
  loop_.Set_Turn(1);
  loop_.Run(31);
  EXPECT_EQ(Parse_Setting_File(folder_.Read("earlier-tunes/being-edited.kxs"))->image[map::fuel_load.first],
            51);
  EXPECT_EQ(Parse_Setting_File(folder_.Read("earlier-tunes/being-edited-2.kxs"))->image[map::fuel_load.first],
            52);
  EXPECT_TRUE(Left_Tunes().empty());
  other.Release();  // it was killed
  EXPECT_EQ(Left_Tunes().size(), 1U);
}

TEST_F(Earlier_Tunes_Test, A_Save_Leaves_What_It_Replaces_Beside_The_File) {
  Open_Setting_File(Tune_File("mine.kxs", 61, "x"));
  const std::string first = folder_.Read("mine.kxs");
  Edit(62);
  File_save_Click();
  EXPECT_EQ(folder_.Read("mine.kxs~"), first);
  const std::string second = folder_.Read("mine.kxs");
  File_save_Click();
  EXPECT_EQ(folder_.Read("mine.kxs~"), first) << "nothing was replaced";
  Edit(63);
  File_save_Click();
  EXPECT_EQ(folder_.Read("mine.kxs~"), second);
  fs::remove(folder_.Path("mine.kxs~"));
  fs::create_directory(folder_.Path("mine.kxs~"));
  Edit(64);
  File_save_Click();
  EXPECT_EQ(Parse_Setting_File(folder_.Read("mine.kxs"))->image[map::fuel_load.first], 64);
  EXPECT_TRUE(notice_text.Text().starts_with("Saved ")) << notice_text.Text();
  EXPECT_NE(notice_text.Text().find("\nWhat the file held before could not be kept: "), std::string::npos);
}

}  // namespace
}  // namespace kx
