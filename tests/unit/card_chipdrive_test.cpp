#include <gmock/gmock.h>

#include "settings/message.h"
#include "support/card_fixture.h"

namespace kx {
namespace {

using testing::ElementsAre;

constexpr const char* search = "Device,SearchComPort";
constexpr const char* read_all = "Card,MemRead,0,256";
constexpr const char* write_all = "Card,MemWrite,0,256";

class Chipdrive : public test::Card_Fixture {
 protected:
  Chipdrive() {
    txt_Chipdrive_status.On_Change([this] { words_.push_back(txt_Chipdrive_status.Text()); });
  }
  ~Chipdrive() override { txt_Chipdrive_status.On_Change(nullptr); }
  std::vector<std::string> words_;
};

TEST_F(Chipdrive, The_First_Use_Looks_For_The_Reader_And_Pauses) {
  std::vector<bool> pointer;
  refresh_hooks.show_wait_pointer = [&](bool wait) { pointer.push_back(wait); };
  const double start = clock_.Elapsed();
  Command1_Click();
  EXPECT_NEAR(clock_.Elapsed() - start, 0.5, 0.01);
  EXPECT_THAT(chipdrive_.commands, ElementsAre(search, read_all));
  EXPECT_THAT(words_, ElementsAre("< Searching... >", "< Card Reader OK >", "< Card Read OK >"));
  EXPECT_THAT(pointer, ElementsAre(true, false));
  EXPECT_TRUE(Reader_Found);
  chipdrive_.commands.clear();
  Command2_Click();
  EXPECT_THAT(chipdrive_.commands, ElementsAre(write_all, read_all)) << "no search, and a look at the card";
}

TEST_F(Chipdrive, Without_A_Reader_The_Card_Is_Asked_For_All_The_Same) {
  const Byte_Image before = CardByte;
  for (const bool missing : {true, false}) {
    SCOPED_TRACE(missing);
    chipdrive_.missing = missing;
    chipdrive_.commands.clear();
    Set_Reader_Faults("no_reader");
    ask_.Expect("No programmer found");
    Command1_Click();
    EXPECT_THAT(chipdrive_.commands, ElementsAre(search, read_all));
    EXPECT_EQ(words_.back(), "< No Reader >");
    EXPECT_EQ(Card_Status, "666");
    EXPECT_FALSE(Reader_Found);
    EXPECT_EQ(CardByte, before);
  }
  platform::seams.chipdrive = nullptr;
  ask_.Expect("No programmer found");
  Command2_Click();
  EXPECT_EQ(words_.back(), "< No Reader >");
}

TEST_F(Chipdrive, The_Pause_Ends_With_The_Program_And_With_Close_Port) {
  for (const bool closing : {true, false}) {
    SCOPED_TRACE(closing);
    Reader_Found = false;
    chipdrive_.commands.clear();
    loop_.on_turn = [&] {
      if (words_.empty() || words_.back() != "< Card Reader OK >") return;
      closing ? void(Closing = true) : End_Transfer();
    };
    const double start = clock_.Elapsed();
    Command1_Click();
    EXPECT_LT(clock_.Elapsed() - start, 0.1);
    EXPECT_THAT(chipdrive_.commands, ElementsAre(search));
    Closing = false;
    words_.clear();
  }
}

TEST_F(Chipdrive, A_Search_That_Is_Ended_Does_Not_Stay_At_Its_Beginning) {
  loop_.on_turn = [] { End_Transfer(); };
  for (void (*const click)() : {Find_Chipdrive_Click, Command1_Click, Command2_Click}) {
    words_.clear();
    click();
    EXPECT_THAT(words_, ElementsAre("< Searching... >", "< No Reader >"));
  }
}

TEST_F(Chipdrive, The_Second_Search_Tries_Two_Ports) {
  Timer1_Tick();
  EXPECT_EQ(words_.back(), "< Card Reader OK >");
  Set_Reader_Faults("no_reader");
  Timer1_Tick();
  EXPECT_EQ(words_.back(), "< No Reader >");
  EXPECT_THAT(chipdrive_.commands,
              ElementsAre("Device,SearchComPort,1", "Device,SearchComPort,1", "Device,SearchComPort,2"));
}

}  // namespace
}  // namespace kx
