#include <gmock/gmock.h>

#include "boxlink/protocol.h"
#include "settings/message.h"
#include "support/card_fixture.h"

namespace kx {
namespace {

using testing::ElementsAre;

/// The card in the box's socket.
class Box_Card : public test::Card_Fixture {
 protected:
  Box_Card() {
    kx_crw_text.On_Change([this] { words_.push_back(kx_crw_text.Text()); });
  }
  ~Box_Card() override { kx_crw_text.On_Change(nullptr); }

  /// Seconds that @p click takes; what was shown stands in words_.
  double Run(void (*click)()) {
    words_.clear();
    port_.writes.clear();
    const double start = clock_.Elapsed();
    Guarded(click);
    return clock_.Elapsed() - start;
  }
  std::vector<std::string> words_;
};

TEST_F(Box_Card, Sends_Bytes_1_To_255_Behind_The_Query_And_Closes_The_Port) {
  const double took = Run(Command4_Click);
  EXPECT_THAT(words_, ElementsAre("< ... >", "< ... >", "< Card Write OK >"));
  ASSERT_EQ(port_.writes.size(), 3U + 255U);
  EXPECT_EQ(port_.writes[0] + port_.writes[1] + port_.writes[2], "vvbr");
  EXPECT_EQ(port_.writes[3], dec2hex(CardByte[1], 2));
  EXPECT_EQ(port_.writes.back(), dec2hex(CardByte[255], 2));
  EXPECT_FALSE(MSComm1.PortOpen());
  // The information twice, and for each byte the card's time, two characters out and one back.
  const double ideal = 0.05 + 0.012 + 255 * (sim::Smart_Card::Byte_Time + 3 * sim::Character_Time);
  EXPECT_LT(took, 1.1 * ideal);
}

TEST_F(Box_Card, Tells_Whether_A_Card_Is_There_And_Leaves_The_Port_Open) {
  Run(Command5_Click);
  EXPECT_THAT(words_, ElementsAre("< ... >", "< ... >", "< MapCard inserted... >"));
  Box().Card_Present = false;
  EXPECT_NEAR(Run(Command5_Click), 0.864 + 0.01, 0.01);
  EXPECT_EQ(words_.back(), "< MapCard not inserted...>");
  EXPECT_TRUE(MSComm1.PortOpen());
}

TEST_F(Box_Card, A_Silent_Box_Is_Waited_For_Twice_And_Asked_For_Nothing_More) {
  Set_Faults("stall=0");
  EXPECT_NEAR(Run(Command4_Click), 0.05 + 0.432 + 0.864, 0.02);
  EXPECT_THAT(words_, ElementsAre("< ... >", "< ... >", "< No response...>", "< No MapCard present >"));
  EXPECT_EQ(port_.Sent(), "vv");
  EXPECT_FALSE(MSComm1.PortOpen());
  EXPECT_NEAR(Run(Command5_Click), 0.432 + 0.864, 0.02);
  EXPECT_THAT(words_, ElementsAre("< ... >", "< ... >", "< No response... >"));
}

TEST_F(Box_Card, A_Box_That_Does_Not_Get_Ready_Is_Sent_No_Byte) {
  Set_Faults("refuse,on=br");
  Run(Command4_Click);
  EXPECT_EQ(words_.back(), "< No response... >");
  EXPECT_EQ(port_.Sent(), "vvbr");
}

TEST_F(Box_Card, After_A_Failure_The_Next_Bytes_Are_Sent_And_The_Word_Stays) {
  Set_Faults("on=br,from=100,times=1,refuse");  // the "m" of byte 99
  const double took = Run(Command4_Click);
  EXPECT_EQ(words_.back(), "< failure... >");
  EXPECT_EQ(port_.writes.size(), 3U + 255U);
  EXPECT_EQ(Box().Socket.Card.Memory[255], CardByte[255]);
  EXPECT_GT(took, 1.7);
}

/// The box may end the last byte as it pleases.
TEST_F(Box_Card, The_Last_Byte_Passes_By_Any_Of_Its_Endings) {
  for (const auto& [ending, passes] : std::vector<std::pair<std::string, bool>>{{"!", true},
                                                                                {"m", true},
                                                                                {"m!", true},
                                                                                {"m\r\n!\r", true},
                                                                                {"mm\r\n\r\n", true},
                                                                                {"w", false},
                                                                                {"#", false},
                                                                                {"m\r\n", false}}) {
    SCOPED_TRACE(ending);
    port_.deliver = nullptr;
    int bytes = 0;
    port_.answer = [&, ending = ending](const std::string& text) -> std::string {
      if (text == "v") return "Smartcard present\r\nMaster mode\r\n";
      if (text == "br") return "#";
      return ++bytes < 255 ? "m" : ending;
    };
    Run(Command4_Click);
    EXPECT_EQ(words_.back(), passes ? "< Card Write OK >" : "< failure... >");
  }
}

TEST_F(Box_Card, Midnight_Ends_A_Wait_At_Once_And_It_Is_Said) {
  Set_Faults("stall=0");
  clock_.Set_Time_Of_Day(86399.9);
  bool midnight = false;
  loop_.on_turn = [&] {
    if (!midnight && port_.writes.size() == 2) clock_.Set_Time_Of_Day(1);
    midnight = port_.writes.size() == 2;
  };
  EXPECT_LT(Run(Command4_Click), 0.05 + 0.864 + 0.1) << "the first wait has ended before its 0.43 s";
  EXPECT_THAT(words_, ElementsAre("< ... >", "< ... >", "< No response...>", "< No MapCard present >"));
  Set_Faults("");
  loop_.on_turn = nullptr;
  Set_Faults("on=br,from=20,times=1,refuse");
  clock_.Set_Time_Of_Day(86399.0);
  const double took = Run(Command4_Click);
  EXPECT_EQ(words_.back(), "< failure... >");
  EXPECT_LT(took, 0.1 + 1.0 + 255 * 0.006);
}

TEST_F(Box_Card, A_Port_That_Does_Not_Open_Shows_So_In_Both_Lines) {
  Run(Command4_Click);
  port_.refuse = [](const std::string&) { return platform::Port_Error{2, "no such device"}; };
  for (void (*const click)() : {Command4_Click, Command5_Click}) {
    Run(click);
    EXPECT_EQ(Status(), "< Failed to open COM9 >");
    EXPECT_THAT(words_, ElementsAre("< ... >", "< Failed to open COM9 >"));
  }
}

TEST_F(Box_Card, A_Line_That_Breaks_Or_Is_Closed_Ends_The_Write_As_A_Failure) {
  Set_Faults("hang_up_received=200");
  ask_.Expect("Lost connection with USB port");
  Run(Command4_Click);
  EXPECT_EQ(words_.back(), "< failure... >");
  Set_Faults("");
  loop_.on_turn = [this] {
    if (port_.writes.size() == 50) Com_knapp2_Click();
  };
  EXPECT_LT(Run(Command4_Click), 1.0);
  EXPECT_FALSE(Quiet_Close) << "or the next closing would say nothing";
  EXPECT_EQ(words_.back(), "< failure... >");
  EXPECT_LE(port_.writes.size(), 51U);
  EXPECT_FALSE(MSComm1.PortOpen());
}

TEST_F(Box_Card, A_Read_Of_The_Box_Shows_Its_Words_And_Waits_For_Its_End) {
  Box().Master = test::As_Sent(Other_Tune());
  Run(Command6_Click);
  ASSERT_EQ(words_.size(), 2U);
  EXPECT_EQ(words_[0], "< reading data from KX... >");
  EXPECT_TRUE(words_[1].starts_with("< KX read ")) << words_[1];
  EXPECT_EQ(CardByte, Other_Tune());
  Set_Faults("stall=0");
  Run(Command6_Click);
  EXPECT_EQ(words_.back(), "< communication error >");
  Set_Faults("hang_up_received=1");
  ask_.Expect("Lost connection with USB port");
  kx_crw_text.Set("< Card Write OK >");
  Run(Command6_Click);
  ASSERT_FALSE(words_.empty());
  EXPECT_EQ(words_.back(), "< communication error >") << "not the word of an earlier write";
}

}  // namespace
}  // namespace kx
