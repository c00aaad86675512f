#include "settings/numbers.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "settings/failure.h"

namespace kx {
namespace {

TEST(Numbers, Format_Rounds_Half_Away_On_The_Decimal_Text) {
  struct Sample {
    double value;
    const char *mask, *text;
  };
  for (const Sample& s : {Sample{12.5, "00", "13"},
                          {-12.5, "00", "-13"},
                          {-3, "00", "-03"},
                          {0.3, "00", "00"},
                          {-0.3, "00", "00"},
                          {-0.04, "0.0", "0.0"},
                          {-0.05, "0.0", "-0.1"},
                          {2.675, "0.00", "2.68"},  // a hair under 2.675 as a double
                          {1.005, "0.00", "1.01"},
                          {0.1 + 0.2, "0.0", "0.3"},
                          {999.95, "0.0", "1000.0"},
                          {5, "0.00", "5.00"},
                          {0.05, "0.00", "0.05"},
                          {7, "000", "007"},
                          {2500, "000", "2500"},
                          {1e15, "0", "1000000000000000"},
                          {1e-20, "0.00", "0.00"},
                          {62.5, "", "62.5"}}) {
    EXPECT_EQ(Format(s.value, s.mask), s.text) << Number_Text(s.value) << " as " << s.mask;
  }
  EXPECT_EQ(Format(std::optional<double>(), "0.0"), "");
  EXPECT_EQ(Format(std::numeric_limits<double>::infinity(), "0"), "");
  EXPECT_EQ(Format(std::nan(""), ""), "");
}

/// @p numerator / @p denominator to @p decimals places, half away, in whole numbers only.
std::string Exact(int numerator, int denominator, int decimals, std::size_t whole_digits) {
  int scale = 1;
  for (int i = 0; i < decimals; ++i) scale *= 10;
  const int units = (std::abs(numerator) * scale * 2 + denominator) / (2 * denominator);
  std::string digits = std::to_string(units);
  const std::size_t least = whole_digits + static_cast<std::size_t>(decimals);
  if (digits.size() < least) digits.insert(0, least - digits.size(), '0');
  if (decimals > 0) digits.insert(digits.size() - static_cast<std::size_t>(decimals), ".");
  return (numerator < 0 && units > 0 ? "-" : "") + digits;
}

TEST(Numbers, Every_Raw_Byte_Shows_As_Exact_Arithmetic_Says) {
  for (int raw = 0; raw < 256; ++raw) {
    EXPECT_EQ(Format((raw - 128) / 0.64, "00"), Exact((raw - 128) * 25, 16, 0, 2)) << raw;
    EXPECT_EQ(Format((raw - 128) / 1.28, "00"), Exact((raw - 128) * 25, 32, 0, 2)) << raw;
    EXPECT_EQ(Format(raw * 1.5625 - 200, "00"), Exact(raw * 25 - 3200, 16, 0, 2)) << raw;
    EXPECT_EQ(Format(raw / 2.56, "0.0"), Exact(raw * 25, 64, 1, 1)) << raw;
    EXPECT_EQ(Format(raw / 5.0 - 25.6, "0.0"), Exact(raw - 128, 5, 1, 1)) << raw;
    EXPECT_EQ(Format(raw / 51.0, "0.00"), Exact(raw, 51, 2, 1)) << raw;
    EXPECT_EQ(Format(raw * 0.0256 - 128 * 0.0256, "0.00"), Exact((raw - 128) * 16, 625, 2, 1)) << raw;
  }
}

TEST(Numbers, Rounding_Takes_Ties_To_Even) {
  struct Sample {
    double value;
    int decimals;
    double result;
  };
  for (const Sample& s : {Sample{0.125, 2, 0.12},
                          {0.375, 2, 0.38},
                          {2.675, 2, 2.68},
                          {2.665, 2, 2.66},
                          {-0.125, 2, -0.12},
                          {99.60784, 1, 99.6},
                          {100.39, 1, 100.4},
                          {0.05, 1, 0},
                          {0.15, 1, 0.2},
                          {0.951, 1, 1},
                          {0.996, 2, 1},
                          {12345.6789, 2, 12345.68},
                          {2.5, 0, 2},
                          {3.5, 0, 4},
                          {-2.5, 0, -2},
                          {0.004, 2, 0},
                          {0.006, 2, 0.01}}) {
    EXPECT_DOUBLE_EQ(Round_To(s.value, s.decimals), s.result) << s.value << " to " << s.decimals;
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
  struct Sample {
    double value;
    int byte;
  };
  for (const Sample& s : {Sample{255.9, 255},
                          {256, 255},
                          {-1, 0},
                          {127.9995, 128},
                          {127.9985, 127},
                          {2.56, 2},
                          {0.9989, 0},
                          {0.999, 1},
                          {1e300, 255},
                          {-1e300, 0},
                          {std::nan(""), 0},
                          {189.5, 189}}) {
    EXPECT_EQ(byte_chk(s.value), s.byte) << s.value;
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
                                    {-0.25, "-0.25"},
                                    {12.0, "12"},
                                    {62.5, "62.5"},
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
