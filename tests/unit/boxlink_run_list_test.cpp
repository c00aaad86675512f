#include "boxlink/run_list.h"

#include <gmock/gmock.h>

#include "boxlink/image_block.h"
#include "sim/box.h"

namespace kx {
namespace {

using testing::ElementsAre;

TEST(Run_List, Holds_Byte_1_And_Each_Stretch_Of_Differing_Bytes) {
  EXPECT_EQ(Master_Run_List({}), ",001,001,");
  EXPECT_EQ(Master_Run_List({5, 6, 9}), ",001,001,005,002,009,001,");
  EXPECT_EQ(Master_Run_List({0, 1, 2, 249}), ",001,001,000,003,249,001,");
  EXPECT_EQ(Slave_Run_List({0, 1, 249}), ",000,001,001,001,249,001");
  EXPECT_EQ(Offsets_Text({5, 6, 249}), "5,6,249,");
}

TEST(Run_List, Bytes_250_To_255_Are_Not_Compared) {
  Byte_Image tune;
  Byte_Image box;
  for (const int i : {0, 249, 250, 255}) box[i] = 1;
  EXPECT_THAT(Differing_Offsets(tune, box), ElementsAre(0, 249));
}

/// A block of 00 between the given markers, with what the box sends around it.
std::string Block(char first, char last) {
  return std::string("rd\r\n") + first + std::string(512, '0') + last + "\r\n";
}

TEST(Timer_Image, Is_Taken_By_Place_When_One_Of_Its_Markers_Is_There) {
  const std::string digits(512, '0');
  for (const std::string& text : {Block('@', '@'), Block('#', '#'), Block('#', '@'), Block('@', ' '),
                                  Block(' ', '#'), Block('@', '@').substr(0, 518), Block('@', '@') + "more"})
    EXPECT_EQ(Timer_Image_Digits(text), digits) << text.substr(0, 6);
  for (const std::string& text : {Block(' ', '@'), Block('#', ' '), Block(' ', ' '), std::string(),
                                  Block('@', '@').substr(0, 517), " " + Block('@', '@')})
    EXPECT_EQ(Timer_Image_Digits(text), std::nullopt) << text.substr(0, 6);
}

TEST(Timer_Image, Has_512_Digits_In_Upper_Case) {
  std::string digits;
  for (int i = 0; i < 256; ++i) digits += dec2hex(255 - i, 2);
  const auto image = Decode_Timer_Digits(digits);
  ASSERT_TRUE(image);
  for (int i = 0; i < 256; ++i) EXPECT_EQ((*image)[i], 255 - i);
  for (const char* pair : {"0a", "ff"})
    EXPECT_FALSE(Decode_Timer_Digits(digits.replace(510, 2, pair))) << pair;
  for (const std::string& wrong : {digits.substr(1) + "@", "0" + digits, digits.replace(8, 1, "G")})
    EXPECT_EQ(Timer_Image_Digits("rd\r\n@" + wrong + "@\r\n"), std::nullopt) << wrong.substr(0, 10);
}

}  // namespace
}  // namespace kx
