#include "settings/text_encoding.h"

#include <gtest/gtest.h>

namespace kx {
namespace {

TEST(Text_Encoding, Every_Byte_Of_A_File_Comes_Back) {
  for (int i = 0; i < 256; ++i) {
    const std::string byte(1, static_cast<char>(i));
    EXPECT_EQ(To_Windows_1252(From_Windows_1252(byte)), byte) << i;
  }
}

TEST(Text_Encoding, Characters_Have_Their_Places) {
  for (const auto& [utf8, bytes] : {std::pair{"£", "\xA3"},
                                    {"°C",
                                     "\xB0"
                                     "C"},
                                    {"Å", "\xC5"},
                                    {"€", "\x80"},
                                    {"Ÿ", "\x9F"},
                                    {"ÿ", "\xFF"},
                                    {"–", "\x96"},
                                    {"\xC2\x81", "\x81"}}) {
    EXPECT_EQ(To_Windows_1252(utf8), bytes);
    EXPECT_EQ(From_Windows_1252(bytes), utf8);
  }
  // Outside the code page, and what is no UTF-8: a lone lead byte, a lone follower, a cut character.
  for (const auto& [text, bytes] : {std::pair{"Ω", "?"},
                                    {"\xC2\x80", "?"},
                                    {"日本", "??"},
                                    {"\xF0\x9F\x98\x80x", "?x"},
                                    {"\xC3", "?"},
                                    {"\x80z", "?z"},
                                    {"\xE2\x82", "??"},
                                    {"\xC3(", "?("}}) {
    EXPECT_EQ(To_Windows_1252(text), bytes);
  }
  EXPECT_EQ(From_Latin_1("\x80\xFF"), "\xC2\x80\xC3\xBF");
  EXPECT_EQ(From_Latin_1(std::string_view("a\0b", 3)), std::string("a\0b", 3));
}

TEST(Text_Encoding, Lines_End_In_Any_Of_Three_Ways) {
  using Lines = std::vector<std::string_view>;
  for (const auto& [text, lines] : {std::pair{"", Lines{}},
                                    {"a", Lines{"a"}},
                                    {"a\r\n", Lines{"a"}},
                                    {"a\nb", Lines{"a", "b"}},
                                    {"a\rb\r", Lines{"a", "b"}},
                                    {"a\r\n\r\nb", Lines{"a", "", "b"}},
                                    {"\n\n", Lines{"", ""}},
                                    {"a\n\rb", Lines{"a", "", "b"}}}) {
    EXPECT_EQ(Lines_Of(text), lines) << text;
  }
  EXPECT_EQ(Before_End_Of_Text("ab\x1A"
                               "cd\x1A"),
            "ab");
  EXPECT_EQ(Before_End_Of_Text("ab"), "ab");
}

}  // namespace
}  // namespace kx
