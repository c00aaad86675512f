#include <QElapsedTimer>
#include <QTimer>
#include <chrono>

#include "boxlink/line_log.h"
#include "boxlink/protocol.h"
#include "boxlink/sync_engine.h"
#include "boxlink/transfer.h"
#include "link/pty_fixture.h"

namespace kx {
namespace {

using testing::HasSubstr;

/// The synchronous engine on the real port object.
class Sync_Link : public test::Pty_Fixture {
 protected:
  Sync_Link() { Plug_In_Box(test::Sample_Box()); }
  void TearDown() override {
    EXPECT_FALSE(Transfer_Running() || Write_Mode || Write_Verify);
    EXPECT_FALSE(MSComm1.PortOpen());
  }
  static void Name_Device(const std::string& path) { Write_Key("com_device9", path); }
};

double Seconds_Of(void (*click)()) {
  const auto start = std::chrono::steady_clock::now();
  click();
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

TEST_F(Sync_Link, Reads_Edits_Writes_And_Verifies) {
  CardByte = {};
  Read_Settings_Click();
  EXPECT_EQ(Status(), "Read finished T");
  EXPECT_EQ(CardByte, test::Sample_Tune());
  for (const int i : {46, 47, 48, 133, 250}) CardByte[i] ^= 0x5A;
  Verify_Settings_Click();
  EXPECT_EQ(Status(), "Verify failed T");
  Write_Settings_Click();
  EXPECT_EQ(Status(), "Write finished T");
  EXPECT_EQ(Plugged_In_Box().Master, test::As_Sent(CardByte));
  Verify_Settings_Click();
  EXPECT_EQ(Status(), "Verify finished T");
}

TEST_F(Sync_Link, Writes_Every_Byte_To_A_Box_That_Answers_Character_By_Character) {
  for (int i = 0; i <= map::last_compared; ++i) CardByte[i] = static_cast<std::uint8_t>(~CardByte[i]);
  CardByte[map::flags_a] &= 0xF7;
  Set_Faults("single");
  Write_Settings_Click();
  EXPECT_EQ(Status(), "Write finished T");
  EXPECT_THAT(test::Without_Times(Debug_txt.Text()), HasSubstr("|UE1 OK |UE2 OK |UE3 OK |"));
  EXPECT_EQ(Plugged_In_Box().Master, test::As_Sent(CardByte));
}

TEST_F(Sync_Link, A_Read_Takes_Little_More_Than_The_Wire) {
  // The query's fixed time, two characters out, 520 back; other programs may get in the way of some.
  const double limit = 1.25 * (0.05 + 522 * sim::Character_Time);
  double shortest = 1;
  for (int i = 0; i < 20 && shortest >= limit; ++i)
    shortest = std::min(shortest, Seconds_Of(Read_Settings_Click));
  EXPECT_LT(shortest, limit);
}

TEST_F(Sync_Link, A_Port_That_Does_Not_Open_Is_Reported_With_What_Helps) {
  struct Port_Case {
    std::string path;
    const char* help;
  };
  platform::Qt_Serial_Port other;
  ASSERT_TRUE(other.Open(box_.Path()).Ok());
  const Port_Case cases[] = {{"/dev/no_such_port", "is not there"},
                             {box_.Path(), "in use by another program"},
                             {folder_.Path(), ""},
                             {folder_.Path("test.ini"), ""}};
  for (const Port_Case& row : cases) {
    Name_Device(row.path);
    Read_Settings_Click();
    EXPECT_EQ(Status(), "< Failed to open COM9 >") << row.path;
    EXPECT_THAT(rs232_tool_tip.Text(), HasSubstr(row.help)) << row.path;
    EXPECT_THAT(rs232_tool_tip.Text(), HasSubstr(row.path));
    Write_Settings_Click();
    EXPECT_EQ(Status(), "Write aborted T") << row.path;
  }
  other.Close();
  Name_Device(box_.Path());
  Read_Settings_Click();
  EXPECT_EQ(Status(), "Read finished T");
  EXPECT_EQ(rs232_tool_tip.Text(), "");
}

TEST_F(Sync_Link, A_Lost_Line_Closes_An_Idle_Port_Too) {
  ASSERT_TRUE(Open_For_Transfer());
  box_.Stop();
  const Wait_Limit limit(5);
  while (MSComm1.PortOpen() && !limit.Passed()) Do_Events();
  EXPECT_FALSE(MSComm1.PortOpen());
  EXPECT_TRUE(MSComm1.Lost());
  Plug_In_Box(test::Sample_Box());
  Read_Settings_Click();
  EXPECT_EQ(Status(), "Read finished T");
}

/// What a box said before must not be taken for its answer, though no event has told of it.
TEST_F(Sync_Link, What_The_Device_Holds_Is_There_Without_A_Turn_Of_The_Loop) {
  Set_Faults("on=ue,stale=late");
  for (int round = 0; round < 50; ++round) {
    ASSERT_TRUE(Open_For_Transfer());
    MSComm1.Output("ue");
    std::string arrived;
    for (const Wait_Limit limit(5); arrived.size() < 7 && !limit.Passed();) arrived += MSComm1.Input();
    EXPECT_EQ(arrived, "ue*late");
    if (round % 2 == 0) Do_Events();
    EXPECT_TRUE(MSComm1.PortOpen()) << "an empty notification";
  }
  MSComm1.Set_PortOpen(false);
}

/// Without a wait for it the end of the run would be lost with the closing.
TEST_F(Sync_Link, A_Write_That_Is_Ended_Leaves_The_Box_Out_Of_Its_Run) {
  for (int i = 0; i < 200; ++i) CardByte[i] = static_cast<std::uint8_t>(~CardByte[i]);
  CardByte[map::flags_a] &= 0xF7;
  Set_Faults("single");
  QTimer often;
  QObject::connect(&often, &QTimer::timeout, [&] {
    if (Line_Log().size() < 200) return;  // in the middle of the run
    often.stop();
    Com_knapp2_Click();
  });
  often.start(1);
  Write_Settings_Click();
  EXPECT_EQ(Status(), "Write aborted T");
  EXPECT_THAT(Debug_txt.Text(), HasSubstr("Bytes confirmed by the box: "));
  Set_Faults("");
  for (int attempt = 0; attempt < 5 && Status() != "Read finished T"; ++attempt) Read_Settings_Click();
  EXPECT_EQ(Status(), "Read finished T");
}

TEST_F(Sync_Link, Closing_In_The_Middle_Ends_At_Once) {
  Set_Faults("on=ue,refuse");
  QElapsedTimer since;
  QTimer::singleShot(400, [&] {
    Closing = true;
    since.start();
  });
  Write_Settings_Click();
  EXPECT_TRUE(Closing);
  EXPECT_LT(since.elapsed(), 100);
  EXPECT_EQ(Status(), "Write aborted T");
}

TEST(Line_Counters, Each_That_Moves_Is_An_Event) {
  using platform::Line_Event;
  const platform::Line_Counters before{.framing = 4, .overrun = 3, .parity = 2, .breaks = 1};
  EXPECT_TRUE(platform::Line_Errors(before, before).empty());
  auto after = before;
  ++after.parity;
  EXPECT_THAT(platform::Line_Errors(before, after), testing::ElementsAre(Line_Event::parity));
  after = {.framing = 5, .overrun = 5, .parity = 2, .breaks = 2};
  EXPECT_THAT(platform::Line_Errors(before, after),
              testing::ElementsAre(Line_Event::break_signal, Line_Event::framing, Line_Event::overrun));
}

}  // namespace
}  // namespace kx
