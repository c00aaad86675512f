#include "settings/image.h"

#include <gtest/gtest.h>

#include <vector>

#include "settings/numbers.h"

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

TEST_F(Image, Reset_Follows_Start_Mode_And_Point_Counts) {
  Byte_Image expected = Reset_Tune();
  expected[255] = 0;
  for (const auto& [mode, master, slave] : {std::array{1, 1, 20}, {2, 0, 0}, {-1, 0, 0}, {0, 2, 2}}) {
    Init_Default_Settings(mode);
    expected[6] = static_cast<std::uint8_t>(master);
    expected[16] = static_cast<std::uint8_t>(slave);
    Expect_Image(expected);
  }
  // One ignition value for all RPMs leaves the rest of its table 0; 41 fuel entries take Analog 2's but the
  // last.
  IgRpmPoints = 1;
  FuelRpmPoints = 41;
  Init_Default_Settings(0);
  expected.Fill(80, 99, 0);
  expected.Fill(134, 173, 192);
  Expect_Image(expected);
}

TEST_F(Image, Slider_Descriptors_Show_The_Ends_Of_Their_Ranges) {
  Init_Default_Settings(0);
  struct Shown {
    int byte;
    const char *least, *middle, *greatest;
  };
  for (const Shown& row :
       {Shown{7, "-25.1", "0.0", "24.9"}, Shown{9, "-25.1", "0.0", "24.9"}, Shown{8, "0.0", "2.5", "5.0"},
        Shown{24, "-3.28", "0.00", "3.25"}, Shown{29, "-3.28", "0.00", "3.25"},
        Shown{36, "-3.28", "0.00", "3.25"}, Shown{39, "-3.28", "0.00", "3.25"}, Shown{40, "0", "128", "255"},
        Shown{43, "0", "128", "255"}}) {
    const auto text = [i = static_cast<std::size_t>(row.byte)](int raw) {
      return Format((raw - Byte_Offset[i]) * Byte_Factor[i], Byte_Format[i]);
    };
    EXPECT_EQ(text(0), row.least) << row.byte;
    EXPECT_EQ(text(128), row.middle) << row.byte;
    EXPECT_EQ(text(255), row.greatest) << row.byte;
  }
  EXPECT_EQ(Byte_Format[30], "") << "no descriptor";
}

TEST_F(Image, Bits_And_Their_Text_Agree_For_Every_Byte) {
  for (int value = 0; value < 256; ++value) {
    CardByte[200] = static_cast<std::uint8_t>(value);
    const std::string text = Show_Cardbyte_bits(200);
    ASSERT_EQ(text.size(), 8U);
    EXPECT_EQ(Bin_2_Dec(text), value);
    for (int bit = 0; bit < 8; ++bit) {
      EXPECT_EQ(Get_CardByte_bit(200, bit), value / (1 << bit) % 2) << value << " bit " << bit;
      EXPECT_EQ(text[static_cast<std::size_t>(7 - bit)] - '0', Get_Byte_bit(CardByte[200], bit));
    }
  }
  for (const char* text : {"", "1111111", "111111111"}) EXPECT_EQ(Bin_2_Dec(text), 0) << text;
}

TEST_F(Image, Hex_Text_Has_As_Many_Digits_As_Asked_For) {
  struct Sample {
    int value, digits;
    const char* text;
  };
  for (const Sample& s : {Sample{171, 2, "AB"},
                          {5, 2, "05"},
                          {0x1234, 3, "234"},
                          {0x1234, 1, "4"},
                          {255, 0, "0"},
                          {0xABCD, 4, "ABCD"},
                          {10, 9, "000A"},
                          {0x12345, -1, "2345"}}) {
    EXPECT_EQ(dec2hex(s.value, s.digits), s.text) << s.value << " " << s.digits;
  }
}

TEST_F(Image, Fields_Keep_The_Other_Bits_Of_Every_Byte) {
  for (const map::Field& field : {map::fuel_enrichment_strategy,
                                  map::slave_mode,
                                  map::fuel_rpm_250,
                                  map::retard_on_ae,
                                  map::io_mode_4,
                                  map::pwm_on_off,
                                  map::boost_pid,
                                  map::maf_sim_output,
                                  map::maf_sim_limit,
                                  map::ignition_load_second,
                                  map::ignition_load_input,
                                  map::fuel_load_second,
                                  map::fuel_load_input,
                                  map::pwm_load_input,
                                  map::boost_input,
                                  map::maf_sim_input,
                                  map::ae_input,
                                  map::air_temperature_input,
                                  map::Analog_Sync(0),
                                  map::Analog_Sync(3),
                                  map::semi_sequential_fuel,
                                  map::fuel_not_extended,
                                  map::an2_mode,
                                  map::maf_sim_enable,
                                  map::fuel_by_pwm,
                                  map::io_mode,
                                  map::ignition_mode_master,
                                  map::ignition_mode_slave,
                                  map::ignition_load_in_percent,
                                  map::ignition_rpm_fine,
                                  map::individual_trim,
                                  map::ae_by_maf_signal}) {
    const int greatest = field.mask / field.Lowest();
    for (int start = 0; start < 256; ++start) {
      for (int index = 0; index <= greatest; ++index) {
        CardByte[field.byte] = static_cast<std::uint8_t>(start);
        Set_Field(field, index);
        ASSERT_EQ(CardByte[field.byte], (start & ~field.mask) | (index * field.Lowest()))
            << "byte " << field.byte << " mask " << int{field.mask} << " start " << start;
        ASSERT_EQ(Get_Field(field), index);
        ASSERT_TRUE(field.byte != 22 || CardByte[0] == CardByte[22]);
      }
    }
    const Byte_Image before = CardByte;
    EXPECT_THROW(Set_Field(field, greatest + 1), Failure);
    EXPECT_THROW(Set_Field(field, -1), Failure);
    EXPECT_EQ(CardByte, before) << "a refused index changes nothing";
  }
}

TEST_F(Image, An_Index_Outside_Is_A_Failure_In_Words) {
  for (const int index : {-1, 256, 100000}) {
    try {
      CardByte[index] = 1;
      ADD_FAILURE() << index;
    } catch (const Failure& failure) {
      EXPECT_STREQ(failure.what(), "Subscript out of range");
    }
    EXPECT_THROW(Set_Byte_Def(index, 0, 0, 1, "0"), Failure);
    EXPECT_THROW(static_cast<void>(Get_CardByte_bit(index, 0)), Failure);
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

TEST_F(Image, Maf_Edges_Lie_Between_The_Break_Points) {
  Init_MAF_Sim();
  const std::array<double, 17> values{0,    384,  512,   768,   1024,  1536,  2048,  3072, 4096,
                                      6144, 8192, 12288, 16384, 24576, 32768, 49152, 65536};
  const std::array<double, 17> edges{0,    192,  448,   640,   896,   1280,  1792,  2560, 3584,
                                     5120, 7168, 10240, 14336, 20480, 28672, 40960, 57344};
  for (std::size_t row = 0; row < MAF_Sim_Tab.size(); ++row) {
    EXPECT_EQ(MAF_Sim_Tab[row][0], row < 17 ? values[row] : 0) << row;
    EXPECT_EQ(MAF_Sim_Tab[row][1], row < 17 ? edges[row] : 0) << row;
  }
}

}  // namespace
}  // namespace kx
