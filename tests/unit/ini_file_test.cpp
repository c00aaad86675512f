#include "settings/ini_file_adm.h"

#include <gmock/gmock.h>

#include <cstring>
#include <filesystem>

#include "settings/field_text.h"
#include "support/file_size_limit.h"
#include "support/settings_fixture.h"
#include "support/test_folders.h"

namespace kx {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::HasSubstr;
using Texts = std::vector<std::string>;

class Ini_File : public test::Settings_Fixture {
 protected:
  static Texts Texts_Of(std::string_view key) {
    Texts texts;
    for (const Ini_Value& value : Read_Keys(key)) texts.push_back(value.text);
    return texts;
  }

  /// The box that a failed write shows.
  void Expect_Failure(const std::string& reason) {
    ask_.Expect("The settings of the program cannot be saved.\n" + folder_.Path(Ini_File_Name) + ": " +
                reason + "\nThe program goes on and tries again with the next setting that changes.");
  }
};

TEST_F(Ini_File, Reading_Finds_Occurrences_Without_Case_And_All_Behind_The_First_Separator) {
  for (const std::string end : {"\r\n", "\n", "\r"}) {
    Write_Ini("; key=not this" + end + "[x]y" + end + "KEY=a=b]c" + end + "plain text" + end + "key =blank" +
              end + end + "key=" + end + "Key= 2 " + end + "lock]=3" + end + "key=last");
    EXPECT_EQ(Texts_Of("kEy"), (Texts{"a=b]c", "", " 2 ", "last"})) << end;
    EXPECT_EQ(Read_Key("key"), "a=b]c");
    EXPECT_EQ(Read_Key("key", 4), "last");
    EXPECT_EQ(Read_Key("key", 5), std::nullopt);
    EXPECT_EQ(Read_Key("[X"), "y") << "a bracket ends the key of a line without =";
    EXPECT_EQ(Read_Key("lock]"), "3");
    EXPECT_EQ(Read_Key("plain text"), std::nullopt);
  }
  Write_Ini("a=1\n\r\n[x]y\rA=2");
  EXPECT_EQ(Read_Keys("a"), (std::vector<Ini_Value>{{"1", 1}, {"2", 4}})) << "with their lines";
  Write_Ini("a=1\r\n\x1A\r\nb=2\r\n");
  EXPECT_EQ(Read_Key("b"), std::nullopt) << "behind the end of the text";
}

TEST_F(Ini_File, File_Text_Is_Windows_1252_And_Every_Text_Comes_Back) {
  Write_Ini(
      "a=20 \xB0"
      "C\r\nb=x\xC2\xA3\r\n");
  EXPECT_EQ(Read_Key("a"), "20 °C");
  EXPECT_EQ(Read_Key("b"), "xÂ£");
  Write_Key("a", "Ångström £ Ω");
  EXPECT_EQ(Ini(), "a=\xC5ngstr\xF6m \xA3 ?\r\nb=x\xC2\xA3\r\n");
  Write_Key("a", "Â£ Ã„");
  EXPECT_EQ(Read_Key("a"), "Â£ Ã„");
}

TEST_F(Ini_File, Writing_Touches_Only_The_Lines_Of_The_Key) {
  for (const auto& [before, after] : {
           std::pair{"", "Key=v\r\n"},
           {"a=1", "a=1\r\nKey=v\r\n"},
           {"a=1\n", "a=1\nKey=v\r\n"},
           {"key=1\r\nb=2\r\nKEY=3\r\n", "Key=v\r\nb=2\r\nKey=v\r\n"},
           {"key=1\nb=2\rkey=3", "Key=v\nb=2\rKey=v"},
           {"[key]\r\nlock]x\r\n key=1\r\n\xFF\x80\r\n",
            "[key]\r\nlock]x\r\n key=1\r\n\xFF\x80\r\nKey=v\r\n"},
           {"a=1\x1Akey=2\xA3", "a=1\r\nKey=v\r\n\x1Akey=2\xA3"},
           {"\r\n\r\nkey=\r\n\r\n", "\r\n\r\nKey=v\r\n\r\n"},
       }) {
    Write_Ini(before);
    Write_Key("Key", "v");
    EXPECT_EQ(Ini(), after) << before;
    EXPECT_EQ(Read_Key("key"), "v");
  }
  Write_Key("Key", "two\r\nlines\x1A");
  EXPECT_EQ(Read_Key("key"), "two??lines?") << "a value stays on its line";
}

TEST_F(Ini_File, A_Missing_File_Is_Made_And_An_Equal_One_Is_Not_Written) {
  EXPECT_EQ(Read_Key("key"), std::nullopt);
  EXPECT_EQ(Texts_Of("key"), Texts{});
  Write_Key("key", "1");
  EXPECT_EQ(Ini(), "key=1\r\n");
  EXPECT_FALSE(folder_.Has("KXS.new"));
  const fs::path same_file = folder_.Path("same file");
  fs::create_hard_link(folder_.Path(Ini_File_Name), same_file);
  Write_Key("key", "1");
  EXPECT_EQ(fs::hard_link_count(same_file), 2U);
  Write_Key("key", "2");
  EXPECT_EQ(fs::hard_link_count(same_file), 1U);
  EXPECT_EQ(folder_.Read("same file"), "key=1\r\n") << "the old file was never opened for writing";
}

TEST_F(Ini_File, A_Protected_File_Is_Told_For_Each_Thing_Asked_For_And_The_Values_Hold_For_The_Run) {
  Write_Ini("a=1\r\nb=2\r\n");
  fs::permissions(folder_.Path(Ini_File_Name), fs::perms(0444));
  Expect_Failure("the file is write protected");
  Remember_Key("a", "5");
  Remember_Key("a", "6");
  Check_Ini_Writable();
  ask_.Expect_None_Left();
  Expect_Failure("the file is write protected");
  EXPECT_FALSE(Write_Key("a", "9"));
  Expect_Failure("the file is write protected");
  EXPECT_FALSE(Write_Keys({{"C", "8"}, {"a", "9"}}));
  EXPECT_EQ(Ini(), "a=1\r\nb=2\r\n");
  EXPECT_EQ(Read_Key("a"), "9");
  EXPECT_EQ(Texts_Of("c"), Texts{"8"});
  fs::permissions(folder_.Path(Ini_File_Name), fs::perms(0644));
  Write_Key("b", "7");
  EXPECT_EQ(Ini(), "a=9\r\nb=7\r\nC=8\r\n") << "nothing that was set meanwhile is lost";
}

constexpr const char* one_of_each =
    "Sens_Def=a\tLinear\r\nSens_Def=b\tTab\r\nmap_lst=V 0 1\r\npreset_list=6B<p>$!\r\n";

/// The file while another program saves it, or after somebody has moved it away.
TEST_F(Ini_File, What_Was_Read_Outlives_A_File_That_Goes_And_Is_Never_Written_Over_Half_A_File) {
  const std::string whole = one_of_each;
  Write_Ini(whole);
  EXPECT_EQ(Texts_Of("Sens_Def").size(), 2U);
  const std::string halves[] = {"", "; a remark\r\n", whole.substr(0, 20), whole.substr(0, whole.size() - 4)};
  for (const std::string& half : halves) {
    Write_Ini(half);
    EXPECT_EQ(Texts_Of("Sens_Def"), (Texts{"a\tLinear", "b\tTab"})) << half;
    const auto box = "The sensors, load axes and presets cannot be read again and stay as they were.\n" +
                     folder_.Path(Ini_File_Name) +
                     ": definitions are missing that were there; another program may be writing it\nThe file "
                     "is read when it is whole again and is not written until then. If it is meant to be as "
                     "it is, start the program anew.";
    ask_.Expect(box);
    Check_Ini_Readable();
    Check_Ini_Readable();
    Expect_Failure("definitions are missing that were there; another program may be writing it");
    EXPECT_FALSE(Write_Key("comport1", "7"));
    EXPECT_EQ(Ini(), half) << "another program's half is its own";
    Write_Ini(whole + "an_sel1=1\r\n");
    Check_Ini_Readable();
  }
  EXPECT_TRUE(Write_Key("an_sel2", "2"));
  EXPECT_EQ(Ini(), whole + "an_sel1=1\r\ncomport1=7\r\nan_sel2=2\r\n");
  const std::string shorter = "Sens_Def=a\tLinear\r\nmap_lst=V 0 1\r\npreset_list=6B<p>$!\r\n";
  Write_Ini(shorter);
  EXPECT_EQ(Texts_Of("Sens_Def"), Texts{"a\tLinear"}) << "a line that the user has taken out";
  fs::remove(folder_.Path(Ini_File_Name));
  ask_.Expect("The sensors, load axes and presets cannot be read again and stay as they were.\n" +
              folder_.Path(Ini_File_Name) + ": " + std::strerror(ENOENT) +
              "\nThe next setting that changes writes the file anew.");
  Check_Ini_Readable();
  Check_Ini_Readable();
  EXPECT_EQ(Texts_Of("Sens_Def"), Texts{"a\tLinear"});
  EXPECT_TRUE(Write_Key("comport1", "8"));
  EXPECT_EQ(Ini(), shorter + "comport1=8\r\n") << "whole, not a file of one line";
}

TEST_F(Ini_File, A_File_Cut_Anywhere_Is_Told_From_One_That_Was_Edited) {
  const test::Temp_Dir shipped;
  fs::copy(test::Shipped_Data(), shipped.Path(), fs::copy_options::recursive);
  const std::string whole = shipped.Read("KXBenchPro.ini");
  const std::size_t last_line = whole.rfind("an_sel4");
  for (std::size_t cut = 0; cut < whole.size() - 2; ++cut) {
    const bool only_without_last_line = cut + 2 >= last_line && cut <= last_line;
    EXPECT_EQ(Looks_Half_Written(whole.substr(0, cut), whole), !only_without_last_line) << cut;
  }
  const auto without = [&whole](const std::string& start) {
    std::string text = whole;
    return text.erase(text.find(start), text.find('\n', text.find(start)) + 1 - text.find(start));
  };
  for (const std::string& edited : {without("Sens_Def=MAP 4"), without("preset_list=68"), without("an_sel1"),
                                    "; first\r\n" + whole, whole + "Sens_Def=new\tLinear"}) {
    EXPECT_FALSE(Looks_Half_Written(edited, whole));
  }
  // Cut while the head is another one than before.
  for (const char* end : {"map_lst=V", "preset_list=6A216E47<KX by", "Sens_Def=Oil"}) {
    const std::string edited = "; first\r\n" + whole;
    EXPECT_TRUE(Looks_Half_Written(edited.substr(0, edited.find(end) + std::string(end).size()), whole))
        << end;
  }
}

TEST_F(Ini_File, An_Unsaved_Change_Finds_Its_Line_In_The_File_As_It_Is_Then) {
  Write_Ini("x=1\r\n");
  fs::permissions(folder_.Path(Ini_File_Name), fs::perms(0444));
  Expect_Failure("the file is write protected");
  EXPECT_FALSE(Change_Ini([](const std::string& bytes) {
    return With_New_List_Line(bytes, "x", Values_Of_Key(bytes, "x").size() + 1, "mine");
  }));
  EXPECT_EQ(Texts_Of("x"), (Texts{"1", "mine"}));
  fs::permissions(folder_.Path(Ini_File_Name), fs::perms(0644));
  Write_Ini("x=1\r\nx=2\r\ny=3\r\n");
  EXPECT_TRUE(Write_Key("z", "4"));
  EXPECT_EQ(Ini(), "x=1\r\nx=2\r\nx=mine\r\ny=3\r\nz=4\r\n");
}

TEST_F(Ini_File, A_Full_Disk_Leaves_The_Old_File_Whole) {
  const std::string old = "a=1\r\n;" + std::string(3000, 'x') + "\r\n";
  Write_Ini(old);
  Expect_Failure(std::strerror(EFBIG));
  {
    const test::File_Size_Limit full(1000);
    Write_Key("a", "2");
  }
  EXPECT_EQ(Ini(), old);
  EXPECT_FALSE(folder_.Has("KXS.new"));
  EXPECT_EQ(Read_Key("a"), "2");
}

TEST_F(Ini_File, What_Is_No_File_Is_Never_Taken_For_An_Empty_One) {
  fs::create_directory(folder_.Path(Ini_File_Name));
  EXPECT_EQ(Read_Key("a"), std::nullopt);
  Expect_Failure(std::strerror(EISDIR));
  Check_Ini_Writable();
  Expect_Failure(std::strerror(EISDIR));
  Write_Key("a", "1");
  EXPECT_EQ(Read_Key("a"), "1");
  EXPECT_TRUE(fs::is_directory(folder_.Path(Ini_File_Name)));
}

TEST_F(Ini_File, A_Build_Without_A_File_Reads_And_Writes_Nothing) {
  Ini_File_Name.clear();
  Write_Key("a", "1");
  Check_Ini_Writable();
  EXPECT_EQ(Read_Key("a"), std::nullopt);
  EXPECT_TRUE(fs::is_empty(folder_.Path()));
}

TEST_F(Ini_File, Fields_End_At_Tab_Or_Semicolon_Or_Line_End) {
  for (const auto& [line, n, field] : {std::tuple{"a\tb\tc\r\n", 1, "a"},
                                       {"a\tb\tc\r\n", 2, "b"},
                                       {"a\tb\tc\r\n", 3, "c"},
                                       {"a\tb\tc\r\n", 4, ""},
                                       {"a;x\tb;y\r\n", 1, "a;x"},
                                       {"a;x\tb;y\r\n", 2, "b"},
                                       {"a\t\t\r\n", 2, ""},
                                       {"\r\n", 1, ""}}) {
    EXPECT_EQ(Extract_Data(line, n), field) << line << " " << n;
  }
  ask_.Expect("Did not find data no:2");
  EXPECT_EQ(Extract_Data("a\tb", 2), "");
  EXPECT_EQ(ask_.last_box.title, "WARNING");
}

TEST_F(Ini_File, Between_Two_Delimiters) {
  for (const auto& [text, left, right, between] : {std::tuple{"m<name>d", "<", ">", "name"},
                                                   {"m<name>d", "", "<", "m"},
                                                   {"name>d", "<", ">", "name"},
                                                   {"m<name", "<", ">", "name"},
                                                   {"m", "<", ">", ""},
                                                   {"m>a<b", "<", ">", ""},
                                                   {"a<b>c>d", "<", ">", "b"}}) {
    EXPECT_EQ(Get_Between(text, left, right), between) << text;
  }
}

TEST_F(Ini_File, Hex_And_Binary_Digits) {
  for (int value = 0; value < 256; ++value) {
    std::string text = dec2hex(value, 2);
    EXPECT_EQ(Hex_Byte(text), value) << text;
    for (char& c : text) c = static_cast<char>(std::tolower(c));
    EXPECT_EQ(Hex_Byte(text + "rest"), value) << text;
    const std::string bits = Dec2Bin(value);
    EXPECT_EQ(bits.empty() ? 0 : std::stoi(bits, nullptr, 2), value);
    EXPECT_NE(bits.substr(0, 1), "0") << "no leading zeros";
  }
  // Codes beside the digits run on in both directions.
  for (const auto& [text, value] : {std::pair{"G0", 256}, {"zz", 595}, {"  ", -272}, {"", 0}, {"6", 96}}) {
    EXPECT_EQ(Hex_Byte(text), value) << text;
  }
  EXPECT_EQ(Dec2Bin(256), "100000000");
  EXPECT_EQ(Dec2Bin(-5), "");
}

TEST_F(Ini_File, Brands_Name_Their_Files_And_Titles) {
  const std::array prefixes{"TORNVIK  KXBenchPro - ", "Lindhamn Racing QRT3 - ", "NLM MapCard - "};
  struct Sample {
    int brand, edition;
    const char *ini, *log_settings;
  };
  for (const Sample& s : {Sample{0, 0, "KXBenchPro.ini", "KXBenchPro_Default_Log_Settings.kxl"},
                          {0, 1, "KXBenchAlt.ini", "KXBenchAlt_Default_Log_Settings.kxl"},
                          {0, 2, "KXBench.ini", "KXBench_StandAlone_Default_Log_Settings.kxl"},
                          {1, 0, "QRT3.ini", "Qrt3_Default_Log_Settings.kxl"},
                          {1, 1, "QRT2i.ini", "Qrt3i_Default_Log_Settings.kxl"},
                          {2, 0, "", ""}}) {
    card_data_file = "other.kxs";
    Edition = s.edition;
    Set_Brand(s.brand);
    EXPECT_EQ(Ini_File_Name, s.ini);
    EXPECT_EQ(Log_Settings_File_Name, s.log_settings);
    EXPECT_EQ(Title_Prefix, prefixes.at(static_cast<std::size_t>(s.brand)));
    EXPECT_EQ(Box_Tab_Caption, s.brand == 1 ? "Direct" : "KX-box");
    EXPECT_EQ(Default_Preset, s.brand == 1 ? 3 : 0);
    EXPECT_EQ(Brand_Has_Help_Menu(), s.brand == 0);
    EXPECT_EQ(card_data_file + "|" + Title_Text(), "New1.kxs|New1.kxs");
  }
  EXPECT_THROW(Set_Brand(3), Failure);
  EXPECT_EQ(About_Text(), Version_Text()) << "a brand that sets no names";
  Set_Brand(0);
  Web_Site = "www.example.org";
  EXPECT_EQ(About_Text(), "KXBench\n" + Version_Text() + "\nTornvik AB\nwww.example.org");
  EXPECT_THAT(Version_Text(), testing::MatchesRegex("Ver [0-9]+\\.[0-9]+\\.[0-9]+"));
}

}  // namespace
}  // namespace kx
