#include "boxlink/protocol.h"

#include "boxlink/transfer.h"
#include "settings/failure.h"
#include "support/link_fixture.h"

namespace kx {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

class Protocol : public test::Link_Fixture {
 protected:
  Protocol() {
    clock_.Advance(1);
    port_.deliver = nullptr;
    port_.answer = [this](const std::string&) {
      sent_at_ = clock_.Elapsed();
      return std::string();
    };
  }
  void Open() { ASSERT_TRUE(Open_For_Transfer()); }

  /// @p text arrives @p seconds after the command has gone out.
  void Arrives(std::string text, double seconds) {
    port_.deliver = [this, text, seconds]() mutable {
      return sent_at_ > 0 && clock_.Elapsed() >= sent_at_ + seconds ? std::exchange(text, {}) : std::string();
    };
  }

  double sent_at_ = 0;
  std::string received_ = "as it was";
};

TEST_F(Protocol, Waits_For_The_Wanted_Length) {
  struct Wait_Case {
    const char* stale;
    const char* answer;
    double after;  ///< seconds
    bool enough;
    const char* received;
  };
  const Wait_Case cases[] = {{"", "abc", 0.05, true, "abc"}, {"", "abcde", 0.05, true, "abcde"},
                             {"", "ab", 0.05, false, "ab"},  {"", "abc", 0.2, false, ""},
                             {"x", "ab", 0.05, true, "xab"}, {"xyz", "abc", 0.05, true, "xyz"},
                             {"x", "", 0, false, "x"}};
  for (const Wait_Case& row : cases) {
    Open();
    port_.Arrive(row.stale);
    sent_at_ = 0;
    Arrives(row.answer, row.after);
    EXPECT_EQ(Send_Wait_Rec("cmd", 0.1, 3, received_), row.enough) << row.answer;
    EXPECT_EQ(received_, row.received);
    EXPECT_LE(clock_.Elapsed() - sent_at_, 0.11);
    MSComm1.Set_PortOpen(false);
  }
  EXPECT_EQ(port_.writes.size(), std::size(cases));
}

TEST_F(Protocol, What_Arrives_At_The_Limit_Still_Counts) {
  Open();
  clock_.Set_Time_Of_Day(1000);
  loop_.Set_Turn(0.0625);
  Arrives("late", 0.125);
  EXPECT_TRUE(Send_Wait_Rec("cmd", 0.125, 4, received_));
}

TEST_F(Protocol, Limits_Follow_The_Single_Precision_Clock) {
  Open();
  loop_.Set_Turn(1.0 / 1024);
  clock_.Set_Time_Of_Day(86000.1);
  EXPECT_EQ(clock_.Seconds_Since_Midnight(), 86000.1015625F);
  EXPECT_FALSE(Send_Wait_Rec("cmd", 0.1, 1, received_));
  // The first reading at or above 86000.2015625; the reading itself is rounded to 1/128 s.
  EXPECT_EQ(clock_.Seconds_Since_Midnight(), 86000.203125F);
}

TEST_F(Protocol, A_Wait_Ends_At_Midnight_And_When_The_Program_Closes) {
  Open();
  clock_.Set_Time_Of_Day(86399.99);
  EXPECT_FALSE(Send_Wait_Rec("cmd", 3600, 1, received_));
  EXPECT_LT(clock_.Elapsed() - sent_at_, 0.02);
  loop_.on_turn = [] { Closing = true; };
  EXPECT_THROW(Send_Wait_Rec("cmd", 3600, 1, received_), Transfer_Ended);
  EXPECT_LT(clock_.Elapsed() - sent_at_, 0.002);
}

TEST_F(Protocol, A_Closed_Port_Is_Told_And_A_Lost_One_Fails) {
  ask_.Expect("Port not open");
  EXPECT_FALSE(Send_Wait_Rec("cmd", 1, 1, received_));
  EXPECT_EQ(received_, "as it was");
  Open();
  loop_.on_turn = [this] { port_.Lose(); };
  EXPECT_THROW(Send_Wait_Rec("cmd", 1, 1, received_), Failure);
  EXPECT_LT(clock_.Elapsed() - sent_at_, 0.01);
  EXPECT_THROW(Send_Wait_Rec("cmd", 1, 1, received_), Failure);
}

TEST_F(Protocol, Opening_Reports_Its_Failure_With_What_Helps) {
  Box_Info_OK = true;
  port_.refuse = [](const std::string&) { return platform::Port_Error{2, "Permission denied"}; };
  EXPECT_FALSE(Open_For_Transfer());
  EXPECT_EQ(rs232_text.Text(), "< Failed to open COM9 >");
  EXPECT_THAT(rs232_tool_tip.Text(), HasSubstr("dialout"));
  EXPECT_FALSE(Box_Info_OK);
  Open_Box_Port();
  EXPECT_EQ(rs232_text.Text(), "< Failed to open COM9 >");
  port_.refuse = nullptr;
  Open_Box_Port();
  EXPECT_EQ(rs232_text.Text(), "< COM9 open >");
  EXPECT_EQ(rs232_tool_tip.Text(), "");
  EXPECT_THAT(port_.opened, ElementsAre("/dev/ttyUSB4"));
}

TEST_F(Protocol, Closing_Is_Reported_For_A_Closed_Port_Too) {
  Com_knapp2_Click();
  EXPECT_EQ(rs232_text.Text(), "< COM9 closed >");
}

TEST_F(Protocol, Another_Number_Holds_From_The_Next_Operation_On) {
  Open();
  Com_Port_Number = 5;
  Com_knapp2_Click();
  EXPECT_EQ(rs232_text.Text(), "< COM9 closed >");
  Open_Box_Port();
  Com_Port_Number = 9;
  Run_Transfer({}, [] {
    EXPECT_FALSE(MSComm1.PortOpen());
    Com_Port_Number = 6;
    EXPECT_TRUE(Open_For_Transfer());
  });
  Open_Box_Port();
  EXPECT_EQ(rs232_text.Text(), "< COM6 open >");
  port_.Lose();
  Com_Port_Number = 7;
  Open_Box_Port();
  EXPECT_EQ(rs232_text.Text(), "< COM7 open >");
  EXPECT_THAT(port_.opened,
              ElementsAre("/dev/ttyUSB4", "/dev/ttyUSB0", "/dev/ttyUSB4", "/dev/ttyUSB1", "/dev/ttyUSB2"));
  MSComm1.Set_PortOpen(false);
  Closing = true;
  EXPECT_FALSE(Open_For_Transfer());
}

TEST_F(Protocol, The_Line_Belongs_To_One_Operation_However_It_Ends) {
  std::string told;
  on_transfer_change = [&] { told += Transfer_Running() ? "taken " : "free "; };
  const auto end_early = [&](std::string_view word) { told += "early" + std::string(word) + " "; };
  const auto run = [&](const std::function<void()>& step) { Run_Transfer({.end_early = end_early}, step); };
  run([&] {
    EXPECT_TRUE(Transfer_Running());
    run([] { ADD_FAILURE() << "entered twice"; });
    Step_Transfer([] { ADD_FAILURE() << "a step inside another"; });
  });
  run([] { throw Transfer_Ended{"!"}; });
  run([] {
    End_Transfer();
    Yield();
    ADD_FAILURE() << "went on";
  });
  EXPECT_THROW(run([] { throw Failure("gone"); }), Failure);
  EXPECT_EQ(told, "taken free taken early! free taken early free taken early< communication error > free ");
  Step_Transfer([] { ADD_FAILURE() << "nothing runs"; });
  EXPECT_THROW((void)Current_Transfer(), Failure);
}

}  // namespace
}  // namespace kx
