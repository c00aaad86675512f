#include "cards/card_image.h"

#include <gtest/gtest.h>

#include "settings/session.h"

namespace kx {
namespace {

TEST(Card_Image, The_Checksum_Makes_Up_For_Bytes_1_To_253) {
  Byte_Image image;
  EXPECT_EQ(Card_Checksum(image), 1);
  image[1] = 1;
  EXPECT_EQ(Card_Checksum(image), 0);
  image[253] = 1;
  EXPECT_EQ(Card_Checksum(image), 255);
  for (const int outside : {0, 254, 255}) image[outside] = 77;
  EXPECT_EQ(Card_Checksum(image), 255);
  image.Fill(1, 253, 255);  // 253 x 255 = 64515 = 252 x 256 + 3
  EXPECT_EQ(Card_Checksum(image), 254);
}

TEST(Card_Image, The_Reset_Tune_Has_Checksum_97) {
  Reset_Image_State();
  DatasetID = 104;
  Init_Default_Settings(0);
  Prepare_Card_Image();
  EXPECT_EQ(CardByte[map::card_checksum], 97);
  EXPECT_EQ(CardByte[map::dataset], 104);
  EXPECT_EQ(CardByte[map::reserved_low] + CardByte[map::reserved_high], 0);
  Reset_Image_State();
}

}  // namespace
}  // namespace kx
