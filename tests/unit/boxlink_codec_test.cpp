#include <gmock/gmock.h>

#include "boxlink/hex_text.h"
#include "boxlink/image_block.h"
#include "settings/numbers.h"

namespace kx {
namespace {

TEST(Hex_Text, Reads_Pairs) {
  struct Pair_Case {
    const char* pair;
    int value;
    int stored;
  };
  const Pair_Case cases[] = {
      {"aF", 175, 175}, {"G0", 256, 255},         {"zz", 595, 255}, {"  ", -272, 0}, {"0a", 10, 10},
      {"7G", 128, 128}, {":@", 16 * 10 + 9, 169}, {"", 0, 0},       {"4", 64, 64},   {"\xFF", 16 * 168, 255}};
  for (const Pair_Case& row : cases) {
    EXPECT_EQ(Hex_Pair_Value(row.pair), row.value) << row.pair;
    EXPECT_EQ(byte_chk(Hex_Pair_Value(row.pair)), row.stored) << row.pair;
  }
}

TEST(Image_Block, Takes_512_Digits_Behind_The_First_Marker_And_Nothing_Else) {
  std::string digits;
  for (int i = 0; i < 256; ++i) digits += dec2hex(255 - i, 2);
  std::string lower = digits;
  lower.replace(0, 4, "fffe");
  EXPECT_EQ(Image_Digits("rd\r\n@" + digits + "@\r\n", '@'), digits);
  EXPECT_EQ(Image_Digits("@" + lower + "\r", '@'), lower);
  EXPECT_EQ(Image_Digits(digits + "\r\n", '@'), digits);
  for (const std::string& wrong :
       {"@" + digits, "@" + digits.substr(1) + "@\r\n", "@" + digits + "0@\r", "@" + digits.substr(1) + "G@",
        "rs\r\n#" + digits + "#\r\n", std::string(15, 'x') + "\r\n@" + digits.substr(18), std::string()})
    EXPECT_EQ(Image_Digits(wrong, '@'), std::nullopt) << wrong.substr(0, 20);
}

TEST(Image_Block, Decodes_Up_To_The_Last_Byte_Wanted) {
  Byte_Image image;
  image.Fill(0, 255, 99);
  Decode_Digits("00a5FF7E" + std::string(504, '1'), 3, image);
  EXPECT_EQ(image[0], 0);
  EXPECT_EQ(image[1], 0xA5);
  EXPECT_EQ(image[2], 0xFF);
  EXPECT_EQ(image[3], 0x7E);
  EXPECT_EQ(image[4], 99);
}

}  // namespace
}  // namespace kx
