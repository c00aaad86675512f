#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <numeric>
#include <string>
#include <utility>
#include <vector>

#include "sim/image_file.h"
#include "sim/line.h"

namespace kx::sim {
namespace {

using namespace testing;

/// A box of bytes 40, 41, 42 and so on in hex, with a slave that holds the same.
Box Box_With_Slave() {
  Box_Contents contents;
  std::iota(contents.Master.begin(), contents.Master.end(), std::uint8_t{0x40});
  contents.Slave = As_Slave(contents.Master);
  contents.Slave_Present = true;
  return Box(contents);
}

Line Faulty_Line(const std::string& knobs) {
  const Parsed_Faults parsed = Parse_Faults(knobs);
  EXPECT_EQ(parsed.Error, "") << knobs;
  return Line(Box_With_Slave(), parsed.Knobs, Pace::At_Once);
}

std::string Say(Line& line, std::string_view bytes) {
  line.Receive(bytes, 0);
  return line.Deliver(1e6);
}

std::string Say_Once(const std::string& knobs, std::string_view bytes) {
  Line line = Faulty_Line(knobs);
  return Say(line, bytes);
}

/// What stands between the bars of @p table.
std::vector<std::string> Items(std::string_view table) {
  std::vector<std::string> items(1);
  for (const char c : table) c == '|' ? items.emplace_back() : items.back() += c;
  return items;
}

TEST(Sim_Box, Answers_The_Whole_Vocabulary_In_Any_Portions) {
  const auto talk = Items(  // sent, answered
      "bw|\r\n$|0|0|5|5|A|A|F|Fw|0|0|1|1w|$|!\r\n|ue|ue*|?x\r\n ||77$||bb||w|\r\n$|FF|FF|11|11w|"
      "22|22w|$|!\r\n|rs||bs||0033$||ru||e|ue*|br|\r\nNo card\r\n|"
      "bw05A$|\r\n$05A!\r\n|bw0711$|\r\n$0711w!\r\n");
  Box by_turns;
  std::string all_sent;
  std::string all_answers;
  for (std::size_t i = 0; i < talk.size(); i += 2) {
    EXPECT_EQ(by_turns.Feed(talk[i]), talk[i + 1]) << talk[i];
    all_sent += talk[i];
    all_answers += talk[i + 1];
  }
  Box at_once;
  EXPECT_EQ(at_once.Feed(all_sent), all_answers);
  Image expected = {0x22, 0, 0, 0, 0, 0xAF, 0x01, 0x11};
  expected[255] = 0x11;
  EXPECT_EQ(at_once.Contents().Master, expected);
}

TEST(Sim_Box, An_Open_Run_Takes_Everything_Up_To_Its_End) {
  Box box = Box_With_Slave();
  EXPECT_EQ(box.Feed("bw05uebrrd$ue"), "\r\n$05uewbrwrdw!\r\nue*");
  EXPECT_EQ(std::vector(box.Contents().Master.begin() + 5, box.Contents().Master.begin() + 9),
            std::vector<std::uint8_t>({0x55, 0x22, 0x24, 0x48}));
  EXPECT_EQ(box.Feed("bwbw11$"), "\r\n$bw11w!\r\n");
  EXPECT_EQ(box.Contents().Master[0x27], 0x11);
  EXPECT_EQ(box.Feed("bs0641"), "\r\n#0641w");
  box.Contents().Slave_Present = false;
  EXPECT_EQ(box.Feed("12rd$ue"), "ue*");
  EXPECT_EQ(Say_Once("lenient", "bw05ue22bwbw"), "\r\n$05ue*\r\n$\r\n$");
}

TEST(Sim_Box, Tells_Who_It_Is_Within_The_Time_That_It_Gets) {
  Box box = Box_With_Slave();
  box.Contents().Card_Present = true;
  const std::string info = box.Feed("v");
  EXPECT_THAT(info, StartsWith("TORNVIK KX 4.12\r\n"));
  EXPECT_THAT(info, EndsWith("Serial KX01234\r\nSC ID 108\r\nStatus 000\r\nMaster mode\r\nSmartcard "
                             "present\r\nSlave present\r\n"));
  EXPECT_LT(static_cast<double>(info.size()) * Character_Time, 0.025);

  box.Contents().Master[1] |= 8;
  box.Contents().Slave_Present = box.Contents().Card_Present = false;
  box.Contents().Serial_As_Hex = true;
  box.Contents().Serial = 4783;
  const std::string slave_info = box.Feed("v");
  EXPECT_THAT(slave_info, EndsWith("Serial KX12AFh\r\nSC ID 108\r\nStatus 000\r\nSlave mode\r\n"));
  EXPECT_THAT(slave_info, Not(HasSubstr("Master")));
  EXPECT_GE(slave_info.size(), 90U);
}

TEST(Sim_Box, Hands_Master_Bytes_To_The_Slave_Which_Stays_A_Slave) {
  Box box = Box_With_Slave();
  EXPECT_THAT(box.Feed("rd"), MatchesRegex("rd\r\n@404142[0-9A-F]*3E3F@\r\n"));
  EXPECT_THAT(box.Feed("rs"), MatchesRegex("rs\r\n#404942[0-9A-F]*3E3F#\r\n"));
  box.Feed("bw00112233$");
  EXPECT_EQ(box.Feed("rs").substr(5, 6), "112A33");
  EXPECT_EQ(box.Feed("bs010055$"), "\r\n#0100w55w!\r\n");
  EXPECT_EQ(box.Feed("rs").substr(5, 6), "110055");
  EXPECT_EQ(box.Feed("rd").substr(5, 6), "112233");
}

TEST(Sim_Box, Writes_A_Card_From_Byte_One_On) {
  Box box;
  box.Contents().Card_Present = true;
  box.Contents().Socket.Card.Memory = {0x5A};
  EXPECT_EQ(box.Feed("br"), "#");
  for (int i = 1; i < 255; ++i) ASSERT_EQ(box.Feed("C3"), "m") << i;
  EXPECT_EQ(box.Feed("E711"), "!");
  const Image& card = box.Contents().Socket.Card.Memory;
  EXPECT_THAT(std::vector({card[0], card[1], card[254], card[255]}), ElementsAre(0x5A, 0xC3, 0xC3, 0xE7));
}

TEST(Sim_Line, Answers_Take_The_Time_Of_The_Wire) {
  Line line;
  line.Receive("rd", 10);
  const double due = 10 + 522 * Character_Time;
  EXPECT_NEAR(line.Next_Delivery().value_or(0), due, 1e-9);
  EXPECT_EQ(line.Deliver(due - 1e-6), "");
  EXPECT_EQ(line.Deliver(due + 1e-6).size(), 520U);
  EXPECT_FALSE(line.Next_Delivery());
  line.Set_Faults(Parse_Faults("single").Knobs);
  line.Receive("rd", 11);
  EXPECT_EQ(line.Deliver(11 + 262.5 * Character_Time).size(), 260U);
  EXPECT_EQ(line.Deliver(12).size(), 260U);
  line.Set_Faults(Parse_Faults("on=ue,times=1,delay=0.5").Knobs);
  line.Receive("ueue", 13);
  EXPECT_EQ(line.Deliver(13.5), "");
  EXPECT_EQ(line.Deliver(13.51), "ue*ue*");
}

TEST(Sim_Line, Counts_An_Exchange_For_Every_Answer) {
  Line line = Faulty_Line("");
  for (const char c : std::string("bw05AABB$bw09CC$")) Say(line, {&c, 1});
  EXPECT_EQ(line.Counts().Exchanges, 14U);
  EXPECT_EQ(line.Counts().Bytes_Received + line.Counts().Bytes_Sent, 16U + 25U);
}

TEST(Sim_Faults, Each_Knob_Does_What_It_Says) {
  const auto rows = Items(  // knobs, sent, answered
      "|ueue|ue*ue*|drop=2|ueue|u*ue*|duplicate=3|ueue|ue**ue*|drop=100%|ueue||twice|ue|ue*ue*|"
      "stall=2|ueue|ue*|on=digit+bw,drop=5|uebw05AA$|ue*\r\n$0AAw!\r\n|stale=xy|ue|ue*xy|"
      "refuse,on=$+ue|bw0000$ue|\r\n$0000w|refuse,from=2,times=1|uerdue|ue*ue*|"
      "burst|ueueue|ue*ue*|burst,times=1|ueueue|ue*ue*ue*|slave_lost=5|bs0ABBB$rsue|\r\n#0ABue*|"
      "drop_received=2|ueue|ue*|duplicate_received=3|bw05AA|\r\n$005AwA|corrupt_received=4|bw05|\r\n$04|"
      "hang_up=4|ueueue|ue*u|hang_up=1,on=bw|uebw|ue*\r|hang_up_received=1|ue|");
  for (std::size_t i = 0; i < rows.size(); i += 3) {
    Line line = Faulty_Line(rows[i]);
    EXPECT_EQ(Say(line, rows[i + 1]), rows[i + 2]) << rows[i];
    EXPECT_EQ(line.Hung_Up(), rows[i].starts_with("hang_up")) << rows[i];
    line.Set_Faults({});
    EXPECT_THAT(Say(line, "$ue"), EndsWith("ue*")) << rows[i];
  }
}

TEST(Sim_Faults, Images_And_Info_Are_Changed_As_Named) {
  EXPECT_THAT(Say_Once("lower", "rd"), HasSubstr("494a4b4c4d4e4f50"));
  EXPECT_EQ(Say_Once("half,on=rd", "rd"), Say_Once("", "rd").substr(0, 260));
  EXPECT_EQ(Say_Once("no_marker", "rs").substr(0, 8), "rs\r\n 404");
  EXPECT_EQ(Say_Once("no_marker", "rd").size(), 520U);
  EXPECT_THAT(Say_Once("dataset=7", "v"), HasSubstr("SC ID 007\r\nStatus 000"));
}

TEST(Sim_Faults, Corruption_And_Garbage_Repeat_With_Their_Seed) {
  const std::string image = Say_Once("", "rd");
  std::string bent = Say_Once("corrupt=17", "rd");
  EXPECT_NE(std::exchange(bent.at(16), image[16]), image[16]);
  EXPECT_EQ(bent, image);
  for (const std::string knobs : {"corrupt=5%,seed=", "drop=5%,seed=", "garbage,seed="}) {
    const std::string first = Say_Once(knobs + "3", "rd");
    EXPECT_NE(first, image) << knobs;
    EXPECT_EQ(first, Say_Once(knobs + "3", "rd")) << knobs;
    EXPECT_NE(first, Say_Once(knobs + "4", "rd")) << knobs;
  }
}

TEST(Sim_Faults, A_Knob_That_Is_Not_Understood_Is_Named) {
  const auto texts = Items(  // knobs, part of their error
      "seed=2,dorp=3|Unknown fault knob \"dorp\"; known are on, from|drop|wants N or P%, not \"\"|"
      "drop=101%|not \"101%\"|dataset=256|wants 0..255|delay=-1|wants SECONDS, not \"-1\"|"
      "delay=inf|wants SECONDS|on=rd+xx|not \"rd+xx\"|twice=2|\"twice\" takes no value");
  for (std::size_t i = 0; i < texts.size(); i += 2) {
    EXPECT_THAT(Parse_Faults(texts[i]).Error, HasSubstr(texts[i + 1]));
  }
}

TEST(Sim_Image_File, Comes_Back_As_Written_And_Says_What_Is_Wrong) {
  const std::string path = TempDir() + std::to_string(getpid()) + "sim_test.kxs";
  EXPECT_EQ(Write_Image(path, Box_With_Slave().Contents().Master), "");
  EXPECT_EQ(Read_Image(path).Bytes, Box_With_Slave().Contents().Master);
  const auto texts = Items("|ends after 0 of 256| 1 \r\n2,3|ends after 3|1 300|item 2 is|x|item 1 is");
  for (std::size_t i = 0; i < texts.size(); i += 2) {
    std::ofstream(path) << texts[i];
    EXPECT_THAT(Read_Image(path).Error, HasSubstr(texts[i + 1]));
  }
  std::filesystem::remove(path);
  EXPECT_THAT(Read_Image(path).Error, HasSubstr("cannot be opened"));
}

}  // namespace
}  // namespace kx::sim
