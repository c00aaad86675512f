#include "settings/reference_tune.h"

#include <gmock/gmock.h>

#include "boxlink/box_info.h"
#include "platform/seams.h"
#include "settings/history.h"
#include "settings/refresh.h"
#include "settings/session.h"
#include "settings/setting_file.h"
#include "support/workspace_fixture.h"
#include "workspace/compare.h"
#include "workspace/compare_commands.h"
#include "workspace/difference_list.h"
#include "workspace/setting_file_commands.h"

namespace kx {
namespace {

using testing::HasSubstr;

class Reference_Of_A_Tune : public Workspace_Fixture {
 protected:
  /// A .kxs file with the tune, but for @p byte.
  std::string Tune_File(const std::string& name, int byte, std::uint8_t value) {
    Byte_Image image = CardByte;
    image[byte] = value;
    return folder_.Write(name, Print_Setting_File(image, ""));
  }
};

TEST_F(Reference_Of_A_Tune, Is_The_Box_By_Itself_Unless_The_User_Has_Chosen) {
  EXPECT_EQ(Reference(), nullptr);
  EXPECT_EQ(Compare_Status(), "");
  Compare_With(Reference_Source::box);
  EXPECT_EQ(Shown_Source(), Reference_Source::none) << "there is none yet";
  Byte_Image box = CardByte;
  box[46] = 12;
  Note_Box_Image(box, 108);
  Show_Reference();
  EXPECT_EQ(Shown_Source(), Reference_Source::box);
  EXPECT_EQ(Compare_Status(), "Box: 1 difference");
  Compare_With(Reference_Source::none);
  Note_Box_Image(box, 108);
  EXPECT_EQ(Shown_Source(), Reference_Source::none);
  EXPECT_TRUE(Shown_Differences().empty());
  Compare_With(Reference_Source::opened);
  EXPECT_EQ(Compare_Title(), "Compare with Opened: no difference");
}

TEST_F(Reference_Of_A_Tune, The_Box_Says_What_A_Write_Would_Send_As_Long_As_It_Is_Known) {
  Byte_Image box = CardByte;
  box[46] = 12;
  box[map::reserved_low] = 7;   // stamped to 0 on the way out
  box[map::reserved_high] = 7;  // these two are never sent
  box[map::card_checksum] = 99;
  CardByte[map::dataset] = 1;  // stamped, too
  Note_Box_Image(box, 108);
  Show_Reference();
  EXPECT_EQ(Compare_Title(), "Compare with Box: 5 differences in 5 bytes, a Write would send 2 bytes");
  std::vector<std::string> left;
  for (const Difference& row : Shown_Differences())
    if (Difference_Row(row)[5] == "not sent by Write") left.push_back(Difference_Row(row)[4]);
  EXPECT_THAT(left, testing::ElementsAre("251: 7 -> 0", "254: 99 -> 0", "255: 108 -> 1"));
  Slave_Present = true;
  EXPECT_THAT(Compare_Title(), testing::EndsWith("a Write would send 2 bytes and what the slave lacks"));
  EXPECT_TRUE(Doubt_Box_Image(Box_Doubt::written));
  EXPECT_FALSE(Doubt_Box_Image(Box_Doubt::written));
  Show_Reference();
  EXPECT_EQ(Compare_Title(),
            "Compare with Box before the last write: 5 differences in 5 bytes, read it again to see what it "
            "holds");
  Note_Box_Image(CardByte, 108);
  EXPECT_TRUE(Box_Image_Certain());
}

TEST_F(Reference_Of_A_Tune, Follows_What_Is_Opened_And_Not_What_Is_Saved) {
  Compare_With(Reference_Source::opened);
  ask_.Expect_Name("Open", Tune_File("other.kxs", 46, 20));
  File_open_Click();
  EXPECT_TRUE(Shown_Differences().empty());
  CardByte[46] = 30;
  ask_.Expect_Name("Save As", folder_.Path("saved.kxs"));
  File_save_As_Click();
  Update_All();
  ASSERT_EQ(Shown_Differences().size(), 1U);
  EXPECT_EQ(Shown_Differences()[0].reference, "2.0 Deg");
  folder_.Write("noise.kxs", "no tune");
  ask_.Expect_Name("Open", folder_.Path("noise.kxs"));
  Expect_Box("Not a kxs-file");
  File_open_Click();
  EXPECT_EQ(Reference()->image[46], 20);
}

TEST_F(Reference_Of_A_Tune, A_File_Changes_Nothing_But_The_Comparison) {
  const Byte_Image tune = CardByte;
  const int slots = Undo_Index;
  const std::string file = card_data_file;
  ask_.Expect_Name("Open", Tune_File("old, 106.kxs", map::dataset, 106));
  Compare_With(Reference_Source::file);
  EXPECT_EQ(Compare_Title(),
            "Compare with old, 106.kxs, of another dataset: 106, here 108: 1 difference in 1 byte");
  EXPECT_EQ(CardByte, tune);
  EXPECT_EQ(DatasetID, 108);
  EXPECT_EQ(Undo_Index, slots);
  EXPECT_EQ(card_data_file, file);
}

TEST_F(Reference_Of_A_Tune, A_File_That_Is_No_Tune_Is_Told_Of_And_The_Comparison_Stays) {
  ask_.Expect_Name("Open", Tune_File("good.kxs", 46, 20));
  Compare_With(Reference_Source::file);
  const std::string whole = Print_Setting_File(CardByte, "");
  const std::string no_tune = ": this is no box setting file, which begins with 256 numbers from 0 to 255.";
  for (const std::string& bytes :
       {std::string(), whole.substr(0, whole.size() / 2), std::string(500000, '\x8f'), " 300 \r\n" + whole}) {
    const std::string name = folder_.Write("bad.kxs", bytes);
    ask_.Expect_Name("Open", name);
    Expect_Box(name + no_tune);
    Compare_With(Reference_Source::file);
    EXPECT_EQ(Reference()->name, "good.kxs");
  }
  for (const std::string& name : {folder_.Path("missing.kxs"), folder_.Path()}) {
    EXPECT_THAT(Load_Reference_File(name), HasSubstr(name));
  }
  ask_.Expect_Name("Open", {});
  Compare_With(Reference_Source::file);
  EXPECT_EQ(Reference()->name, "good.kxs");
  EXPECT_EQ(Shown_Differences().size(), 1U);
}

}  // namespace
}  // namespace kx
