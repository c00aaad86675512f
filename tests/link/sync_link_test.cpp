#include <QElapsedTimer>
#include <QTimer>
#include <chrono>

#include "boxlink/box_info.h"
#include "boxlink/protocol.h"
#include "boxlink/sync_engine.h"
#include "platform/qt/qt_clock.h"
#include "platform/qt/qt_event_loop.h"
#include "platform/qt/qt_serial_port.h"
#include "settings/failure.h"
#include "settings/wait.h"
#include "sim/pty_box.h"
#include "support/link_fixture.h"

namespace kx {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

/// The real port object on a pseudo terminal, with the simulated box at its far end as COM9.
class Sync_Link : public test::Link_State_Fixture {
 protected:
  Sync_Link() {
    platform::seams.clock = &clock_;
    platform::seams.event_loop = &loop_;
    platform::seams.serial_port = &port_;
    Reset_Link_State();
    Plug_In();
  }
  ~Sync_Link() override { Reset_Link_State(); }
  void TearDown() override {
    EXPECT_FALSE(Transfer_Running() || Write_Mode || Write_Verify);
    EXPECT_FALSE(MSComm1.PortOpen());
  }

  void Plug_In() {
    ASSERT_EQ(box_.Start(), "");
    Name_Device(box_.Path());
  }
  void Name_Device(const std::string& path) { Write_Key("com_device9", path); }
  void Set_Faults(const std::string& knobs) {
    const auto parsed = sim::Parse_Faults(knobs);
    ASSERT_EQ(parsed.Error, "");
    box_.With_Line([&](sim::Line& line) { line.Set_Faults(parsed.Knobs); });
  }
  void Set_Box(const sim::Box_Contents& contents) {
    box_.With_Box([&](sim::Box& box) { box.Contents() = contents; });
  }
  [[nodiscard]] sim::Box_Contents Box() {
    return box_.With_Box([](sim::Box& box) { return box.Contents(); });
  }
  [[nodiscard]] static std::string Status() { return test::Without_Times(rs232_text.Text()); }

  /// The reason with which @p click fails; empty when it does not.
  static std::string Failure_Of(void (*click)()) {
    try {
      click();
    } catch (const Failure& failure) {
      return failure.what();
    }
    return {};
  }

  platform::Qt_Clock clock_;
  platform::Qt_Event_Loop loop_;
  platform::Qt_Serial_Port port_;
  sim::Pty_Box box_{sim::Line(sim::Box(test::Sample_Box()))};
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
  EXPECT_EQ(Box().Master, test::As_Sent(CardByte));
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
  EXPECT_EQ(Box().Master, test::As_Sent(CardByte));
}

TEST_F(Sync_Link, Repairs_A_Slave) {
  auto contents = test::Sample_Box(true);
  contents.Slave[1] = 0x41;
  contents.Slave[99] ^= 1;
  Set_Box(contents);
  Write_Settings_Click();
  EXPECT_EQ(Status(), "Write finished T");
  EXPECT_THAT(Debug_txt.Text(), HasSubstr("Slave reset to slave \r\n"));
  EXPECT_EQ(Box().Slave, sim::As_Slave(test::As_Sent(CardByte)));
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

TEST_F(Sync_Link, A_Line_That_Hangs_Up_Ends_The_Transfer_And_Comes_Back) {
  struct Hang_Up_Case {
    const char* knobs;
    void (*click)();
    const char* status;
  };
  const Hang_Up_Case cases[] = {{"on=rd,hang_up=200", Read_Settings_Click, "Read aborted T"},
                                {"hang_up_received=1", Read_Settings_Click, "Read aborted T"},
                                {"on=rd,hang_up=200", Verify_Settings_Click, "Verify aborted T"},
                                {"on=rd,hang_up=200", Write_Settings_Click, "Write aborted T"},
                                {"on=digit,hang_up=20", Write_Settings_Click, "Write aborted T"},
                                {"on=ue,hang_up=1", Write_Settings_Click, "Write aborted T"}};
  for (const Hang_Up_Case& row : cases) {
    for (int i = 100; i < 200; ++i) CardByte[i] = static_cast<std::uint8_t>(CardByte[i] + 1);
    const Byte_Image before = CardByte;
    Set_Faults(row.knobs);
    EXPECT_EQ(Failure_Of(row.click), "Lost connection with USB port") << row.knobs;
    EXPECT_EQ(Status(), row.status) << row.knobs;
    EXPECT_FALSE(MSComm1.PortOpen());
    EXPECT_EQ(CardByte, before);
    Set_Faults("");
    Plug_In();
  }
  Write_Settings_Click();
  EXPECT_EQ(Status(), "Write finished T");
}

TEST_F(Sync_Link, A_Lost_Line_Closes_An_Idle_Port_Too) {
  ASSERT_TRUE(Open_For_Transfer());
  box_.Stop();
  const Wait_Limit limit(5);
  while (MSComm1.PortOpen() && !limit.Passed()) Do_Events();
  EXPECT_FALSE(MSComm1.PortOpen());
  EXPECT_TRUE(MSComm1.Lost());
  Plug_In();
  Read_Settings_Click();
  EXPECT_EQ(Status(), "Read finished T");
}

struct Answer_Case {
  const char* name;
  const char* knobs;
  const char* box;  ///< "" for none
  const char* status;
};

class Sync_Link_Answers : public Sync_Link, public testing::WithParamInterface<Answer_Case> {};

TEST_P(Sync_Link_Answers, A_Bad_Answer_Leaves_The_Tune_And_The_Next_Read_Works) {
  const Answer_Case& row = GetParam();
  CardByte[60] ^= 1;
  const Byte_Image before = CardByte;
  Set_Faults(row.knobs);
  if (*row.box != '\0') ask_.Expect(row.box);
  Read_Settings_Click();
  EXPECT_EQ(Status(), row.status);
  EXPECT_EQ(CardByte, before);
  Set_Faults("");
  Read_Settings_Click();
  EXPECT_EQ(CardByte, test::Sample_Tune());
}

INSTANTIATE_TEST_SUITE_P(
    Faults, Sync_Link_Answers,
    testing::Values(Answer_Case{"Silent", "refuse", "", "Read aborted T"},
                    Answer_Case{"Late_Info", "on=v,delay=0.07", "", "Read aborted T"},
                    Answer_Case{"Garbled_Info", "on=v,garbage", "", "Read aborted T"},
                    Answer_Case{"Silent_Image", "on=rd,refuse", "Could not read", "Read aborted T"},
                    Answer_Case{"Garbage", "on=rd,garbage,seed=2", "Could not read", "Read aborted T"},
                    Answer_Case{"Half", "on=rd,half", "Could not read", "Read aborted T"},
                    Answer_Case{"Digit_Missing", "on=rd,drop=300", "Could not read", "Read aborted T"}),
    [](const auto& row) { return row.param.name; });

TEST_F(Sync_Link, Lower_Case_And_Missing_Markers_Are_Taken) {
  CardByte = {};
  Set_Faults("lower");
  Read_Settings_Click();
  EXPECT_EQ(CardByte, test::Sample_Tune());
  Set_Faults("no_marker");
  Read_Settings_Click();
  EXPECT_EQ(Status(), "Read finished T");
  EXPECT_EQ(CardByte[0], 255);
}

TEST_F(Sync_Link, Closing_In_The_Middle_Ends_At_Once) {
  struct Closing_Case {
    void (*click)();
    const char* knobs;
    int after;  ///< milliseconds
  };
  const Closing_Case cases[] = {{Read_Settings_Click, "on=v,refuse", 20},
                                {Read_Settings_Click, "on=rd,refuse", 150},
                                {Verify_Settings_Click, "on=rd,refuse", 150},
                                {Write_Settings_Click, "on=digit,refuse", 250},
                                {Write_Settings_Click, "on=ue,refuse", 400}};
  CardByte[100] ^= 1;
  for (const Closing_Case& row : cases) {
    Set_Faults(row.knobs);
    Closing = false;
    QElapsedTimer since;
    QTimer user;
    user.setSingleShot(true);
    QObject::connect(&user, &QTimer::timeout, [&] {
      Closing = true;
      since.start();
    });
    user.start(row.after);
    row.click();
    EXPECT_TRUE(Closing) << row.knobs;
    EXPECT_LT(since.elapsed(), 100) << row.knobs;
    EXPECT_THAT(Status(), HasSubstr(" aborted T"));
  }
}

TEST_F(Sync_Link, A_Second_Click_Is_Not_Entered) {
  CardByte[100] ^= 1;
  int clicks = 0;
  QTimer user;
  QObject::connect(&user, &QTimer::timeout, [&] {
    ++clicks;
    Read_Settings_Click();
    Write_Settings_Click();
    Connect_Info_Click();
  });
  user.start(5);
  Write_Settings_Click();
  EXPECT_GT(clicks, 3);
  EXPECT_EQ(Status(), "Write finished T");
  EXPECT_EQ(Box().Master, test::As_Sent(CardByte));
}

TEST_F(Sync_Link, Port_Test_Finds_The_Box_And_Info_Describes_It) {
  Command3_Click();
  EXPECT_THAT(Text1.Text(), HasSubstr("Com port 9 ok\r\n"));
  EXPECT_THAT(Text1.Text(), HasSubstr("Com port 40 not ok   1 - No such device\r\n"));
  ask_.Expect("TORNVIK KX 4.12\r\nSerial KX1234\r\nSC ID 108\r\nMaster mode\r\n");
  Connect_Info_Click();
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
