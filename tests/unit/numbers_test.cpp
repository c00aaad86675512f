#include "settings/numbers.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "settings/failure.h"

namespace kx {
namespace {

TEST(Numbers, Format_Rounds_Half_Away_On_The_Decimal_Text) {
  for (const auto& [value, mask, text] : {std::tuple{-12.5, "00", "-13"},
                                          {-3, "00", "-03"},
                                          {-0.3, "00", "00"},
                                          {-0.05, "0.0", "-0.1"},
                                          {2.675, "0.00", "2.68"},
                                          {1.005, "0.00", "1.01"},
                                          {12.96, "0.0", "13.0"},
                                          {999.95, "0.0", "1000.0"},
                                          {0.05, "0.00", "0.05"},
                                          {7, "000", "007"},
                                          {1e15, "0", "1000000000000000"},
                                          {1e-20, "0.00", "0.00"},
                                          {62.5, "", "62.5"}}) {
    EXPECT_EQ(Format(value, mask), text) << Number_Text(value) << " as " << mask;
  }
  EXPECT_EQ(Format(std::optional<double>(), "0.0"), "");
  EXPECT_EQ(Format(std::numeric_limits<double>::infinity(), "0"), "");
  EXPECT_EQ(Format(std::nan(""), ""), "");
}

TEST(Numbers, Rounding_Takes_Ties_To_Even) {
  const std::tuple<double, int, double> samples[] = {
      {0.125, 2, 0.12}, {0.375, 2, 0.38}, {2.675, 2, 2.68}, {-0.125, 2, -0.12}, {100.39, 1, 100.4},
      {0.05, 1, 0},     {0.951, 1, 1},    {2.5, 0, 2},      {0.004, 2, 0},      {0.006, 2, 0.01}};
  for (const auto& [value, decimals, result] : samples) {
    EXPECT_DOUBLE_EQ(Round_To(value, decimals), result) << value << " to " << decimals;
  }
  EXPECT_EQ(To_Byte(127.5), 128);
  EXPECT_EQ(To_Byte(126.5), 126);
  EXPECT_EQ(To_Byte(255.49), 255);
  EXPECT_EQ(To_Byte(-0.5), 0);
  EXPECT_EQ(To_Int16(-32768.5), -32768);
  EXPECT_EQ(To_Int16(32767.4), 32767);
  for (const double value : {255.5, -0.51, 1e300, std::nan("")}) {
    EXPECT_THROW(static_cast<void>(To_Byte(value)), Failure) << value;
  }
  for (const double value : {32767.5, -32769.0, std::nan("")}) {
    EXPECT_THROW(static_cast<void>(To_Int16(value)), Failure) << value;
  }
}

TEST(Numbers, Byte_Check_Floors_And_Clips) {
  for (const auto& [value, byte] : {std::pair{256.0, 255},
                                    {-1.0, 0},
                                    {127.9995, 128},
                                    {127.9985, 127},
                                    {1e300, 255},
                                    {std::nan(""), 0}}) {
    EXPECT_EQ(byte_chk(value), byte) << value;
  }
  EXPECT_EQ(byte_chk(std::nullopt), 0);
  for (const auto& [text, byte] : {std::pair{"", 0}, {"12,9", 12}, {"300", 255}, {"-4", 0}, {"abc", 0}}) {
    EXPECT_EQ(byte_chk(text), byte) << text;
  }
}

TEST(Numbers, Default_Text_Is_Short_And_Reads_Back) {
  for (const auto& [value, text] : {std::pair{0.0, "0"},
                                    {-0.0, "0"},
                                    {0.5, "0.5"},
                                    {0.1 + 0.2, "0.3"},
                                    {1.0 / 3, "0.333333333333333"},
                                    {10000.0, "10000"},
                                    {123456789012345.0, "123456789012345"}}) {
    EXPECT_EQ(Number_Text(value), text);
    EXPECT_NEAR(Val_Any(text), value, 1e-15);
  }
  for (const auto& [decimals, mask] :
       {std::pair{-1, "0"}, {0, "0"}, {1, "0.0"}, {4, "0.0000"}, {9, "0.0000"}}) {
    EXPECT_EQ(Decimals_Mask(decimals), mask);
  }
}

TEST(Numbers, Reading_Takes_The_Leading_Number_Or_The_Whole_Text) {
  struct Sample {
    const char* text;
    double leading;
    bool whole;  ///< the text is one number
  };
  for (const Sample& s :
       {Sample{"12", 12, true}, {"1,5", 1.5, true},       {"1.5", 1.5, true},    {" -3 ", -3, true},
        {"+7", 7, true},        {".5", 0.5, true},        {"5.", 5, true},       {"1e3", 1000, true},
        {"2E-1", 0.2, true},    {"12 V", 12, false},      {"1.5.3", 1.5, false}, {"1,5,3", 1.5, false},
        {"3e", 3, false},       {"3e+", 3, false},        {"--3", 0, false},     {"abc", 0, false},
        {"-", 0, false},        {".", 0, false},          {"", 0, false},        {"   ", 0, false},
        {"1e999", 1e308, true}, {"-1e999", -1e308, true}, {"1E-999", 0, true},   {"0x10", 0, false},
        {"nan", 0, false},      {"inf", 0, false}}) {
    EXPECT_DOUBLE_EQ(Val_Any(s.text), s.leading) << s.text;
    EXPECT_EQ(Whole_Number_Text(s.text).has_value(), s.whole) << s.text;
    EXPECT_DOUBLE_EQ(Whole_Number_Text(s.text).value_or(s.leading), s.leading) << s.text;
  }
  EXPECT_EQ(Val_Any("1 2"), 12) << "blanks do not count";
  EXPECT_FALSE(Whole_Number_Text("1 2"));
  const std::string tiny = "0." + std::string(400, '0') + "1";
  EXPECT_EQ(Val_Any(tiny), 0);
  EXPECT_EQ(Val_Any(std::string(400, '9')), 1e308);
}

}  // namespace
}  // namespace kx
