#include "settings/image.h"

#include <gmock/gmock.h>

#include <vector>

namespace kx {
namespace {

class Image : public testing::Test {
 protected:
  void SetUp() override { Reset_Image_State(); }
  void TearDown() override { Reset_Image_State(); }
};

struct Span {
  int first, last;
  std::uint8_t value;
};

/// The reset tune of dataset 108, worked out by hand from the table of bytes.
Byte_Image Reset_Tune() {
  Byte_Image image;
  for (const Span& span :
       std::vector<Span>{{5, 5, 192},     {6, 6, 2},       {7, 7, 128},     {8, 8, 255},    {9, 9, 128},
                         {11, 11, 255},   {13, 13, 100},   {14, 14, 128},   {16, 16, 2},    {17, 17, 160},
                         {18, 19, 255},   {23, 23, 255},   {24, 29, 128},   {31, 31, 255},  {34, 34, 64},
                         {35, 40, 128},   {41, 43, 1},     {44, 44, 5},     {79, 99, 192},  {101, 133, 128},
                         {134, 153, 192}, {154, 195, 255}, {196, 249, 128}, {255, 255, 108}}) {
    image.Fill(span.first, span.last, span.value);
  }
  return image;
}

void Expect_Image(const Byte_Image& expected) {
  for (int i = 0; i < Byte_Image::size; ++i) EXPECT_EQ(CardByte[i], expected[i]) << "byte " << i;
}

TEST_F(Image, Reset_Gives_The_Bytes_Of_The_Map) {
  DatasetID = 108;
  CardByte.Fill(0, 255, 77);
  Init_Default_Settings(0);
  Expect_Image(Reset_Tune());
}

TEST_F(Image, Reset_Follows_Start_Mode) {
  Byte_Image expected = Reset_Tune();
  expected[255] = 0;
  for (const auto& [mode, master, slave] : {std::array{1, 1, 20}, {2, 0, 0}, {-1, 0, 0}, {0, 2, 2}}) {
    Init_Default_Settings(mode);
    expected[6] = static_cast<std::uint8_t>(master);
    expected[16] = static_cast<std::uint8_t>(slave);
    Expect_Image(expected);
  }
}

TEST_F(Image, Bits_Of_Every_Byte) {
  for (int value = 0; value < 256; ++value) {
    for (int bit = 0; bit < 8; ++bit) {
      EXPECT_EQ(Get_Byte_bit(static_cast<std::uint8_t>(value), bit), value / (1 << bit) % 2) << value << bit;
    }
  }
}

TEST_F(Image, Hex_Text_Has_As_Many_Digits_As_Asked_For) {
  const std::tuple<int, int, const char*> samples[] = {{5, 2, "05"},     {0x1234, 3, "234"},
                                                       {0x1234, 1, "4"}, {255, 0, "0"},
                                                       {10, 9, "000A"},  {0x12345, -1, "2345"}};
  for (const auto& [value, digits, text] : samples) {
    EXPECT_EQ(dec2hex(value, digits), text) << value << " " << digits;
  }
}

TEST_F(Image, A_Field_Refuses_What_Has_No_Room_In_It) {
  CardByte.Fill(0, 255, 77);
  const Byte_Image before = CardByte;
  for (const int index : {-1, 4}) EXPECT_THROW(Set_Field(map::an2_mode, index), Failure);
  EXPECT_EQ(CardByte, before);
}

TEST_F(Image, An_Index_Outside_Is_A_Failure_In_Words) {
  for (const int index : {-1, 256, 100000}) {
    EXPECT_THAT([&] { CardByte[index] = 1; }, testing::ThrowsMessage<Failure>("Subscript out of range"));
    EXPECT_THROW(Set_Byte_Def(index, 0, 0, 1, "0"), Failure);
  }
  EXPECT_THROW(static_cast<void>(Get_Byte_bit(1, 8)), Failure);
  EXPECT_EQ(CardByte, Byte_Image());
}

TEST_F(Image, Leaving_The_Program_Stamps_Three_Bytes_And_No_Other) {
  CardByte.Fill(0, 255, 77);
  DatasetID = 106;
  Stamp_Image();
  Byte_Image expected;
  expected.Fill(0, 255, 77);
  expected[250] = expected[251] = 0;
  expected[255] = 106;
  EXPECT_EQ(CardByte, expected);
}

/// Each edge lies half way between two break points, so that the edges tell all of them.
TEST_F(Image, Maf_Edges_Lie_Between_The_Break_Points) {
  Init_MAF_Sim();
  const std::array<double, 17> edges{0,    192,  448,   640,   896,   1280,  1792,  2560, 3584,
                                     5120, 7168, 10240, 14336, 20480, 28672, 40960, 57344};
  EXPECT_EQ(MAF_Sim_Tab[0][0], 0);
  for (std::size_t row = 1; row < MAF_Sim_Tab.size(); ++row) {
    EXPECT_EQ(MAF_Sim_Tab[row][1], row < 17 ? edges[row] : 0) << row;
    EXPECT_EQ(MAF_Sim_Tab[row][0], row < 17 ? 2 * edges[row] - MAF_Sim_Tab[row - 1][0] : 0) << row;
  }
}

}  // namespace
}  // namespace kx
