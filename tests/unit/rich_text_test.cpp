#include "workspace/rich_text.h"

#include <gtest/gtest.h>

namespace kx {
namespace {

TEST(Rich_Text, What_Was_Written_Reads_Back) {
  for (const char* text :
       {"", "one line\r\n", "a\tb\tc\r\n\r\n\r\nd\r\n", "back \\ slash {braces} 'ticks'\r\n",
        "temperature \u00B0C, sum \u20AC, \u00E5\u00E4\u00F6\r\n", "\\par \\'41 {\\*\\x}\r\n"}) {
    EXPECT_EQ(Read_Rich_Text(Write_Rich_Text(text)), text);
  }
  EXPECT_EQ(Read_Rich_Text(Write_Rich_Text("LF\nonly, no end")), "LF\r\nonly, no end\r\n");
  EXPECT_EQ(Read_Rich_Text(Write_Rich_Text("\u0416\r\n")), "?\r\n");
  std::string every_byte;
  for (int code = 0xA0; code < 0x100; ++code) {
    every_byte += static_cast<char>(0xC0 | (code >> 6));
    every_byte += static_cast<char>(0x80 | (code & 0x3F));
  }
  const std::string file = Write_Rich_Text(every_byte);
  EXPECT_EQ(Read_Rich_Text(file), every_byte + "\r\n");
  for (const char c : file) EXPECT_TRUE(c == '\r' || c == '\n' || (c >= ' ' && c < 0x7F));
}

TEST(Rich_Text, Other_Programs_Markup_Is_Left_Out) {
  struct Sample {
    const char* file;
    const char* text;
  };
  for (const Sample& sample :
       {Sample{"{\\rtf1\\ansi{\\fonttbl{\\f0 Arial;}}{\\colortbl;\\red0;}{\\*\\generator W 6;}\\pard\\fs-20 "
               "Text\\par}",
               "Text\r\n"},
        {"{\\rtf1 a\\b  bold\\b0  c}", "a bold c"},
        {"{\\rtf1 split\r\nline\\line next}", "splitline\r\nnext"},
        {"{\\rtf1 \\'e5\\'E4\\'zz\\'4}", "\u00E5\u00E4zz4"},
        {"{\\rtf1 {\\pict\\bin4 }}{{ hidden}shown\\~b\\_c}", "shown b-c"},
        {"{\\rtf1 {\\info{\\title T}}after}tail", "after"},
        {"{\\rtf1 cut off\\", "cut off"},
        {"{\\rtf1 cut {off\\pa", "cut off"},
        {"{\\rtf1 }}}}", ""},
        {"{\\rtf1 \\bin99999999999 a}", "a"},
        {"{\\rtf1 a\\bin9 b}", "a"}}) {
    EXPECT_EQ(Read_Rich_Text(sample.file), sample.text) << sample.file;
  }
}

TEST(Rich_Text, A_File_That_Is_None_Is_Refused) {
  for (const char* file : {"", "{", "{\\rt", "plain text", "\\rtf1", " {\\rtf1 a}", "PK\x03\x04"}) {
    EXPECT_EQ(Read_Rich_Text(file), std::nullopt) << file;
  }
  const std::string deep = "{\\rtf1 " + std::string(1000000, '{') + "x";
  EXPECT_EQ(Read_Rich_Text(deep), "x");
}

}  // namespace
}  // namespace kx
