#include <gmock/gmock.h>

#include "boxlink/hex_text.h"
#include "boxlink/image_block.h"
#include "settings/numbers.h"

namespace kx {
namespace {

TEST(Hex_Text, Reads_Pairs_In_Two_Ways) {
  struct Pair_Case {
    const char* pair;
    int value;
    int stored;
    int timer_value;
  };
  const Pair_Case cases[] = {{"aF", 175, 175, 799},
                             {"G0", 256, 255, 368},
                             {"zz", 595, 255, 1258},
                             {"  ", -272, 0, 544},
                             {"0a", 10, 10, 49},
                             {"7G", 128, 128, 135},
                             {"ff", 255, 255, 918},
                             {":@", 16 * 10 + 9, 169, 57},
                             {"", 0, 0, 0},
                             {"4", 64, 64, 64},
                             {"\xFF", 16 * 168, 255, 16 * 207}};
  for (const Pair_Case& row : cases) {
    EXPECT_EQ(Hex_Pair_Value(row.pair), row.value) << row.pair;
    EXPECT_EQ(byte_chk(Hex_Pair_Value(row.pair)), row.stored) << row.pair;
    EXPECT_EQ(Timer_Pair_Value(row.pair), row.timer_value) << row.pair;
  }
}

TEST(Image_Block, Takes_512_Characters_Behind_The_First_Marker) {
  std::string digits;
  for (int i = 0; i < 256; ++i) digits += dec2hex(255 - i, 2);
  EXPECT_EQ(Image_Digits("rd\r\n@" + digits + "@\r\n", '@'), digits);
  EXPECT_EQ(Image_Digits("@" + digits, '@'), digits);
  EXPECT_EQ(Image_Digits("rs\r\n@" + digits + "@\r\n", '#'), ("rs\r\n@" + digits).substr(0, 512));
  EXPECT_EQ(Image_Digits("rd\r\n@" + digits.substr(1), '@'), std::nullopt);
  EXPECT_EQ(Image_Digits(digits.substr(1), '@'), std::nullopt);
  EXPECT_EQ(Image_Digits(std::string(15, 'x') + "\r\n@" + digits.substr(18), '@'), std::nullopt);
  EXPECT_EQ(Image_Digits("", '@'), std::nullopt);
}

TEST(Image_Block, Decodes_Up_To_The_Last_Byte_Wanted) {
  Byte_Image image;
  image.Fill(0, 255, 99);
  Decode_Digits("00a5FFzz" + std::string(504, '1'), 3, image);
  EXPECT_EQ(image[0], 0);
  EXPECT_EQ(image[1], 0xA5);
  EXPECT_EQ(image[2], 0xFF);
  EXPECT_EQ(image[3], 255);
  EXPECT_EQ(image[4], 99);
}

}  // namespace
}  // namespace kx
