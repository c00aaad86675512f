#include "settings/setting_file.h"

#include <gtest/gtest.h>

#include <ctime>

#include "settings/text_encoding.h"
#include "support/temp_dir.h"
#include "support/test_folders.h"

namespace kx {
namespace {

/// 0, 1, 2 up to 255.
Byte_Image Counting() {
  Byte_Image image;
  for (int i = 0; i < 256; ++i) image[i] = static_cast<std::uint8_t>(i);
  return image;
}

/// The numbers 0 to @p count - 1, each as @p before + number + @p behind.
std::string Numbers(int count, const std::string& before, const std::string& behind) {
  std::string text;
  for (int i = 0; i < count; ++i) text += before + std::to_string(i % 256) + behind;
  return text;
}

TEST(Setting_File, Printed_With_Blanks_And_Description_As_It_Stands) {
  const std::string bytes = Print_Setting_File(Counting(), "one, \"two\"\nthree £");
  EXPECT_EQ(bytes, Numbers(256, " ", " \r\n") + "one, \"two\"\nthree \xA3\r\n");
  EXPECT_EQ(Print_Setting_File({}, "").substr(255 * 5), " 0 \r\n\r\n");
}

TEST(Setting_File, Numbers_May_Be_Parted_In_Every_Usual_Way) {
  for (const std::string& bytes :
       {Numbers(256, " ", " \r\n"), Numbers(256, "", "\n"), Numbers(256, "", "\r"), Numbers(256, "", ","),
        Numbers(256, " ", " , "), Numbers(256, "\t", ""), "\r\n \r\n" + Numbers(256, "", "\r\n\r\n"),
        Numbers(256, "", ".0 "), Numbers(256, "00", " ")}) {
    const auto file = Parse_Setting_File(bytes);
    ASSERT_TRUE(file) << bytes.substr(0, 40);
    EXPECT_EQ(file->image, Counting()) << bytes.substr(0, 40);
    EXPECT_EQ(file->description.find_first_not_of(" \r\n"), std::string::npos) << bytes.substr(0, 40);
  }
}

TEST(Setting_File, Anything_But_256_Bytes_Is_Refused) {
  const std::string good = Numbers(255, " ", " \r\n");
  for (const std::string& bytes :
       {std::string(), good, good + " 256 \r\n", good + " -1 \r\n", good + "x\r\n", good + "12x\r\n",
        good + "\"12\"\r\n", good + "255.6\r\n", good + "1e3\r\n", good + ",1\r\n", good + " \x1A 1 \r\n",
        good + "1" + std::string(50, '0') + "\r\n", std::string("PK\x03\x04"), " 300 \r\n" + good,
        "1;" + good, good + "\xA3 1\r\n"}) {
    EXPECT_FALSE(Parse_Setting_File(bytes))
        << bytes.substr(0, 10) << " .. " << bytes.substr(bytes.size() / 2);
  }
  EXPECT_TRUE(Parse_Setting_File(good + "7")) << "the last number needs no end";
}

TEST(Setting_File, Fifty_Megabytes_Of_Noise_Are_Refused_At_Once) {
  std::string noise(50'000'000, '\0');
  unsigned state = 1;
  for (char& c : noise) c = static_cast<char>((state = state * 1664525 + 1013904223) >> 24);
  for (const std::string& bytes : {noise, std::string(50'000'000, '7'), std::string(50'000'000, '\n')}) {
    const std::clock_t start = std::clock();  // of this program alone
    EXPECT_FALSE(Parse_Setting_File(bytes));
    EXPECT_LT(std::clock() - start, 5 * CLOCKS_PER_SEC) << int{bytes[1]};
  }
}

TEST(Setting_File, A_Description_Is_Read_Item_By_Item) {
  const std::string numbers = Numbers(256, " ", " \r\n");
  struct Sample {
    const char *text, *description;
  };
  for (const Sample& s : {Sample{"", ""},
                          {"\r\n", "\r\n"},
                          {"a", "a\r\n"},
                          {"a\r\n", "a\r\n"},
                          {"a,b\r\n", "a\r\nb\r\n"},
                          {"a\r\n\r\nb\r\n", "a\r\n\r\nb\r\n"},
                          {"a\nb\rc", "a\r\nb\r\nc\r\n"},
                          {"  two words \r\n \t\xA0x", "  two words \r\n \t\u00A0x\r\n"},
                          {"a, b,\t\r\n", "a\r\n b\r\n\t\r\n"},
                          {"\"a,b\"\r\n", "a,b\r\n"},
                          {" \"a\" ,b\r\n", " a \r\nb\r\n"},
                          {"\"\r\n", "\"\r\n"},
                          {"\"\" \r\n", " \r\n"},
                          {"\"a\" b\r\n", "\"a\" b\r\n"},
                          {"5\" pipe\r\n", "5\" pipe\r\n"},
                          {"\"open, end\r\n", "\"open\r\n end\r\n"},
                          {"\xA3 20\x1A rest\r\n", "£ 20\r\n"}}) {
    const auto file = Parse_Setting_File(numbers + s.text);
    ASSERT_TRUE(file) << s.text;
    EXPECT_EQ(file->description, s.description) << s.text;
  }
}

TEST(Setting_File, A_Saved_Tune_Comes_Back_With_One_More_Line_End) {
  const auto first = Parse_Setting_File(Print_Setting_File(Counting(), "Stage 2 £"));
  ASSERT_TRUE(first);
  EXPECT_EQ(first->image, Counting());
  EXPECT_EQ(first->description, "Stage 2 £\r\n");
  const auto second = Parse_Setting_File(Print_Setting_File(first->image, first->description));
  ASSERT_TRUE(second);
  EXPECT_EQ(second->description, "Stage 2 £\r\n\r\n");
}

TEST(Setting_File, The_Shipped_Tunes_Read) {
  for (const char* name : {"demo.kxs", "demo_box.kxs"}) {
    std::ifstream stream(test::Shipped_Data() + name, std::ios::binary);
    const std::string bytes(std::istreambuf_iterator<char>(stream), {});
    const auto file = Parse_Setting_File(bytes);
    ASSERT_TRUE(file) << name;
    EXPECT_EQ(file->image[0], file->image[22]) << name;
    EXPECT_EQ(file->image[250] + file->image[251], 0) << name;
    EXPECT_EQ(Print_Setting_File(file->image, file->description).substr(0, 1000), bytes.substr(0, 1000))
        << name;
  }
}

}  // namespace
}  // namespace kx
