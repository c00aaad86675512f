#include <gtest/gtest.h>
#include <sys/stat.h>

#include "settings/earlier_tunes.h"
#include "settings/notice.h"
#include "settings/session.h"
#include "settings/setting_file.h"
#include "support/file_size_limit.h"
#include "support/other_user.h"
#include "support/workspace_fixture.h"
#include "workspace/setting_file_commands.h"
#include "workspace/shut_down.h"

namespace kx {
namespace {

class Earlier_Tunes_On_A_Bad_Disk : public Workspace_Fixture {
 protected:
  /// One tune is kept, and the folder of the files is known to the settings.
  void SetUp() override {
    Workspace_Fixture::SetUp();
    Open_Setting_File(folder_.Path("demo_box.kxs"));
    Edit(1);
    ASSERT_TRUE(Keep_Earlier_Tune());
  }
  static void Edit(int value) { CardByte[map::fuel_load.first] = static_cast<std::uint8_t>(value); }

  /// A session whose earlier tunes cannot be kept: everything else works, and the reason is told once.
  void Work_On() {
    Offer_Left_Tunes();
    Edit(2);
    loop_.Set_Turn(1);
    loop_.Run(31);
    told_.push_back(notice_text.Text());
    Show_Notice("");
    Open_Setting_File(other_);
    told_.push_back(notice_text.Text());
    Begin_Shutdown();
  }

  const std::string other_ = folder_.Path("demo.kxs");
  std::vector<std::string> told_;
};

TEST_F(Earlier_Tunes_On_A_Bad_Disk, A_Read_Only_Folder) {
  ::chmod(folder_.Path("earlier-tunes").c_str(), 0555);
  ::chmod(folder_.Path().c_str(), 0777);
  {
    const test::Other_User user;
    Work_On();
  }
  ::chmod(folder_.Path("earlier-tunes").c_str(), 0777);
  EXPECT_TRUE(told_[0].starts_with("Earlier tunes can not be kept: ")) << told_[0];
  EXPECT_EQ(told_[1], "");
  EXPECT_EQ(card_data_file, "demo.kxs");
  EXPECT_EQ(Earlier_Tunes().size(), 2U);
}

TEST_F(Earlier_Tunes_On_A_Bad_Disk, A_Full_One) {
  {
    const test::File_Size_Limit full(200);
    Work_On();
  }
  EXPECT_TRUE(told_[0].starts_with("Earlier tunes can not be kept: ")) << told_[0];
  EXPECT_EQ(told_[1], "");
  EXPECT_EQ(card_data_file, "demo.kxs");
  ASSERT_EQ(Earlier_Tunes().size(), 2U) << "no half of a tune, and what is there stays";
  EXPECT_EQ(Earlier_Tunes()[0].tune.image[map::fuel_load.first], 1);
}

TEST_F(Earlier_Tunes_On_A_Bad_Disk, A_Save_Does_Not_Depend_On_What_It_Replaces) {
  Open_Setting_File(other_);
  Edit(3);
  folder_.Write("demo.kxs~", "older");
  ::chmod(folder_.Path("demo.kxs~").c_str(), 0444);
  File_save_Click();
  EXPECT_EQ(Parse_Setting_File(folder_.Read("demo.kxs"))->image[map::fuel_load.first], 3);
  EXPECT_EQ(folder_.Read("demo.kxs~"), "older");
  EXPECT_NE(notice_text.Text().find("\nWhat the file held before could not be kept: "), std::string::npos);
}

}  // namespace
}  // namespace kx
