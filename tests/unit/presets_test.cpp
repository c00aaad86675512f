#include "settings/presets.h"

#include <gmock/gmock.h>

#include "support/settings_fixture.h"
#include "support/test_folders.h"

namespace kx {
namespace {

using testing::ElementsAre;
using Presets = test::Settings_Fixture;

/// Positions of the ones of a mask.
std::vector<int> Ones(const std::string& mask) {
  const std::string bits = Mask_Bits(mask);
  std::vector<int> ones;
  for (int i = 1; i <= 1000; ++i) {
    if (Mask_Position(bits, i) == "1") ones.push_back(i);
  }
  return ones;
}

TEST_F(Presets, A_Line_Has_Five_Fields_And_May_Lack_Any) {
  struct Sample {
    const char* line;
    Preset preset;
  };
  for (const Sample& s :
       {Sample{"6C216E67<KX standard>@44,s4,r251$!£", {"KX standard", "6C216E67", "@44,s4,r251", "", ""}},
        {"6C<n>1$x!y£ remark", {"n", "6C", "1", "x", "y"}},
        {"6C<n>1", {"n", "6C", "1", "", ""}},
        {"6C<n>", {"n", "6C", "", "", ""}},
        {"", {}},
        {"no delimiter", {}},
        {"<n>", {"n", "", "", "", ""}}}) {
    EXPECT_EQ(Parse_Preset(s.line), s.preset) << s.line;
  }
}

TEST_F(Presets, A_Line_That_Names_No_Dataset_Is_Left_Out_And_Told) {
  const auto faults = Read_Presets({{"6C<one>$!£", 3},
                                    {"junk", 4},
                                    {"<no mask>$!£", 5},
                                    {"6<half a dataset>$!£", 6},
                                    {"x6C<n>$!£", 7},
                                    {"6C<>$!£", 8},
                                    {"6a<two>$!£", 9}});
  std::vector<int> lines;
  for (const Ini_Fault& fault : faults) lines.push_back(fault.line);
  EXPECT_THAT(lines, ElementsAre(4, 5, 6, 7, 8));
  ASSERT_EQ(Preset_List.size(), 2U);
  EXPECT_EQ(Preset_List[1].name, "two");
  Read_Presets({});
  EXPECT_EQ(Preset_List, (std::vector<Preset>{{"<No preset in ini file>", "68000000", "", "", ""}}));
  User_Preset = 1;
  EXPECT_THROW(static_cast<void>(Selected_Preset()), Failure);
}

TEST_F(Presets, A_Mask_Is_Read_Bit_By_Bit) {
  EXPECT_EQ(Mask_Dataset("6C216E67"), 108);
  EXPECT_THAT(Ones("00216E67"), ElementsAre(11, 16, 18, 19, 21, 22, 23, 26, 27, 30, 31, 32));
  for (const auto& [mask, dataset, positions] : {std::tuple{"", 0, 0U},
                                                 {"6", 96, 4},
                                                 {"6C216E6", 108, 28},
                                                 {"6C216E6700", 108, 40},
                                                 {"6C216E670000000000000000000000000000FFFF", 108, 160},
                                                 {"zz216E67", 255, 32},
                                                 {"  216E67", 0, 32},
                                                 {"G0", 255, 8}}) {
    EXPECT_EQ(Mask_Dataset(mask), dataset) << mask;
    EXPECT_EQ(Mask_Bits(mask).size(), positions) << mask;
  }
  EXPECT_THAT(Ones("g8 1\xC3!F"), ElementsAre(5, 16, 25, 26, 27, 28)) << "what is no hex digit counts as 0";
  EXPECT_EQ(Mask_Position("01", 0), "");
  EXPECT_EQ(Mask_Position("01", 3), "");
}

TEST_F(Presets, A_Program_Works_Left_To_Right) {
  struct Sample {
    const char* program;
    std::vector<std::pair<int, int>> changed;  ///< byte and value, of an image of 15s
  };
  for (const Sample& s : std::vector<Sample>{{"", {}},
                                             {"1", {{0, 1}}},
                                             {"@44, s16, r254 ", {{44, 31}, {45, 14}}},
                                             {"@7,r255,3", {{8, 3}}},
                                             {"@7,s0,@7,3,@7,s4", {{7, 7}}},
                                             {"@254,1,2,s4", {{254, 1}, {255, 6}}},
                                             {"@300,1", {{255, 1}}},
                                             {"@-5,1", {{0, 1}}},
                                             {"300,-1", {{0, 255}, {1, 0}}},
                                             {"s1000", {{0, 255}}},
                                             {"x,y", {{0, 0}, {1, 0}}},
                                             {",,7", {{0, 0}, {1, 0}, {2, 7}}},
                                             {"@,r", {{0, 0}}},
                                             {"3 deg", {{0, 3}}}}) {
    Byte_Image expected;
    expected.Fill(0, 255, 15);
    const Byte_Image before = expected;
    for (const auto& [byte, value] : s.changed) expected[byte] = static_cast<std::uint8_t>(value);
    EXPECT_EQ(After_Preset_Program(s.program, before), expected) << s.program;
  }
}

TEST_F(Presets, Applying_Takes_Dataset_And_Bytes_From_The_Selected_Preset) {
  Preset_List = {{"a", "6C216E67", "@44,s4,r251", "", ""}, {"b", "6A000000", "@22,18,@7,9", "", ""}};
  Init_Default_Settings(0);
  Apply_Preset_Mask();
  EXPECT_EQ(DatasetID, 108);
  EXPECT_TRUE(Apply_Preset_Program().empty()) << "changes nothing in a reset tune";
  User_Preset = 1;
  Apply_Preset_Mask();
  EXPECT_EQ(DatasetID, 106);
  EXPECT_THAT(Apply_Preset_Program(), ElementsAre(0, 7, 22)) << "byte 0 mirrors byte 22";
  EXPECT_EQ(CardByte[0], 18);
  EXPECT_TRUE(Apply_Preset_Program().empty()) << "a second run finds its own work";
  // Each writes byte 22 or its mirror, byte 0, more than once.
  for (const auto& [program, mirror] :
       {std::pair{"@22,1,@22,18", 18}, {"@0,5,@22,18", 18}, {"@22,18,@0,s1", 19}, {"@22,18,@0,5", 5}}) {
    CardByte.Fill(0, 255, 0);
    CardByte[22] = 18;
    const Byte_Image once = After_Preset_Program(program, CardByte);
    EXPECT_EQ(once[0], mirror) << program;
    EXPECT_EQ(After_Preset_Program(program, once), once) << program;
  }
}

TEST_F(Presets, The_Question_Lists_What_Would_Change) {
  folder_.Write("DatasetID108.txt", "Mirror\nbit 0 Sync\nFlags A\n\nLoad base\n");
  DatasetID = 108;
  CardByte.Fill(0, 255, 15);
  Preset_List = {{"a", "6C216E67", "@0,15,s16,1,@3,7,@200,9,@3,r240", "", ""},
                 {"b", "6C216E67", "@5,15", "", ""}};
  const Byte_Image before = CardByte;
  EXPECT_EQ(Preset_Changes(0),
            "These presets will change:\r\nFlags A: 15 -> 31\r\n2: 15 -> 1\r\nLoad base: 15 -> 7\r\n"
            "200: 15 -> 9\r\nLoad base: 15 -> 0\r\n");
  EXPECT_TRUE(Lists_Changes(Preset_Changes(0)));
  EXPECT_EQ(Preset_Changes(1).size(), 28U);
  EXPECT_FALSE(Lists_Changes(Preset_Changes(1)));
  EXPECT_EQ(CardByte, before);
  EXPECT_THROW(static_cast<void>(Preset_Changes(2)), Failure);
}

TEST_F(Presets, Byte_Notes_Follow_The_Dataset) {
  EXPECT_EQ(Byte_Name(7), "7") << "no file";
  folder_.Write("DatasetID106.txt",
                "bit 1 before any byte\rFirst\rbit 3 Slave\rbit 9 \xB0\rbitter\rbits of\rbit x\r");
  folder_.Write("DatasetID107.txt", std::string(100000, '\n') + "late");
  DatasetID = 106;
  EXPECT_EQ(Byte_Name(0), "First");
  EXPECT_EQ(Byte_Name(1), "bitter");
  EXPECT_EQ(Byte_Name(2), "bits of");
  EXPECT_EQ(Byte_Name(3), "bit x");
  EXPECT_EQ(Byte_Name(4), "4");
  ASSERT_EQ(Byte_Notes().at(0).bits.size(), 2U);
  EXPECT_EQ(Byte_Notes()[0].bits[0].bit, 3);
  EXPECT_EQ(Byte_Notes()[0].bits[1].text, "bit 9 °");
  folder_.Write("DatasetID106.txt", "changed on the disk");
  EXPECT_EQ(Byte_Name(0), "First") << "read once";
  DatasetID = 107;
  EXPECT_EQ(Byte_Name(0), "0");
  EXPECT_EQ(Byte_Notes().size(), 256U);
}

TEST_F(Presets, The_Shipped_Texts_Describe_Every_Byte) {
  start_dir = test::Shipped_Data();
  for (const int id : {104, 106, 107, 108}) {
    DatasetID = static_cast<std::int16_t>(id);
    ASSERT_EQ(Byte_Notes().size(), 256U) << id;
    for (int i = 0; i < 256; ++i) EXPECT_NE(Byte_Name(i), std::to_string(i)) << id;
    EXPECT_FALSE(Byte_Notes()[22].bits.empty()) << id;
  }
}

}  // namespace
}  // namespace kx
