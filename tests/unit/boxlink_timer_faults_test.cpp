// What the timer-driven engine makes of a line, a box and a user that do not keep to the plan.
#include "boxlink/box_info.h"
#include "boxlink/sync_engine.h"
#include "support/timer_engine_fixture.h"

namespace kx {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

TEST_F(Timer_Engine, Nothing_Starts_On_A_Port_That_Does_Not_Open) {
  port_.refuse = [](const std::string&) { return platform::Port_Error{3, "Device is in use"}; };
  for (const auto click : {Com_knapp3_Click, Com_knapp4_Click, Com_knapp5_Click}) {
    Run_To_End(click);
    EXPECT_THAT(statuses_, ElementsAre("< Failed to open COM9 >"));
  }
  EXPECT_THAT(changes_, ElementsAre(true, false, true, false, true, false));
}

TEST_F(Timer_Engine, Prompts_May_Come_In_Pieces_And_Twice) {
  std::deque<std::pair<double, char>> on_its_way;
  port_.deliver = [&] {  // prompts and echoes a character a tick
    const double now = clock_.Elapsed();
    const std::string text = line_.Deliver(now);
    for (const char c : text) {
      const double before = on_its_way.empty() ? now : std::max(now, on_its_way.back().first);
      on_its_way.emplace_back(text.size() < 10 ? before + 0.01 : before, c);
    }
    std::string arrived;
    for (; !on_its_way.empty() && on_its_way.front().first <= now; on_its_way.pop_front())
      arrived += on_its_way.front().second;
    return arrived;
  };
  for (const char* knobs : {"", "on=bw+$,twice", "on=bw+$,delay=0.012"}) {
    for (const int i : {20, 22, 23}) CardByte[i] ^= 0x3C;
    Set_Faults(knobs);
    Write_To_Lone_Master();
    EXPECT_EQ(Status(), "< Write finished T... >") << knobs;
    EXPECT_EQ(Box().Master, test::As_Sent(CardByte)) << knobs;
  }
}

TEST_F(Timer_Engine, What_Came_Before_A_Send_Is_No_Answer_To_It) {
  port_.deliver = [this] {
    const std::string text = line_.Deliver(clock_.Elapsed());
    return text.ends_with(Hex(1) + "w") ? text + "\r\n$" : text;  // a prompt behind an echo
  };
  Set_Faults("on=$,delay=0.015");
  Write_To_Lone_Master();
  EXPECT_EQ(Status(), "< Write finished T... >");
  EXPECT_THAT(port_.Sent(), testing::Not(HasSubstr("$$")));
}

TEST_F(Timer_Engine, An_Empty_Tick_Sends_The_Word_Of_The_Run_Again_Until_Ten_Are_Used_Up) {
  CardByte[20] ^= 1;
  Set_Faults("on=bw,refuse");
  Expect_Boxes({"ERROR 4", "ERROR 6"});
  Run_To_End(Com_knapp3_Click);
  EXPECT_EQ(Status(), "< communication error >");
  EXPECT_THAT(port_.Sent(), testing::EndsWith("rdbwbwbwbwbwbwbwbwbwbw"));
  Box() = test::Sample_Box(true);
  Box().Slave[30] ^= 1;
  Set_Faults("on=bs,refuse,times=2");
  Expect_Boxes({"ERROR 3", "ERROR 3"});
  Run_To_End(Com_knapp3_Click);
  EXPECT_EQ(Status(), "< Write finished, slave OK,  T... >");
  EXPECT_THAT(port_.Sent(), HasSubstr("rsbsbsbs1E" + Hex(30) + "$ue"));
}

TEST_F(Timer_Engine, A_Pair_That_Stands_For_No_Byte_Leaves_The_Tune) {
  CardByte[60] ^= 1;
  const Byte_Image before = CardByte;
  Set_Faults("on=rd,lower");
  for (const auto click : {Com_knapp5_Click, Com_knapp4_Click}) {
    Run_To_End(click);
    EXPECT_EQ(Status(), "< Card byte error >");
    EXPECT_EQ(CardByte, before);
  }
}

TEST_F(Timer_Engine, A_Box_That_Talks_Without_End_Is_A_Communication_Error) {
  port_.deliver = [] { return std::string(100, 'x'); };
  Run_To_End(Com_knapp5_Click);
  EXPECT_EQ(Status(), "< communication error >");
}

TEST_F(Timer_Engine, Ten_Empty_Ticks_Are_The_End_However_Much_Comes_Between) {
  port_.deliver = [this, next = 0.0]() mutable {
    if (clock_.Elapsed() < next) return std::string();
    next = clock_.Elapsed() + 0.02;
    return std::string("x");
  };
  const double start = clock_.Elapsed();
  Run_To_End(Com_knapp5_Click);
  EXPECT_EQ(Status(), "< communication error >");
  EXPECT_LT(clock_.Elapsed() - start, 0.3);
}

TEST_F(Timer_Engine, A_Line_That_Echoes_The_End_Of_A_Run_Is_A_Communication_Error) {
  port_.answer = [this, echo = false](const std::string& text) mutable {
    echo = echo || text == "$";
    if (echo) return text;
    line_.Receive(text, clock_.Elapsed());
    return std::string();
  };
  Expect_Boxes({"ERROR 4", "ERROR 6"});
  Run_To_End(Com_knapp3_Click);
  EXPECT_EQ(Status(), "< communication error >");
}

/// What ends a transfer in its middle, at every point of its conversation.
class Timer_Engine_Interrupted : public Timer_Engine, public testing::WithParamInterface<std::size_t> {
 protected:
  /// Writes to a master with a slave that differs; strikes once when so many characters have gone out.
  void Write_Until(const std::function<void()>& interrupt) {
    Box() = test::Sample_Box(true);
    Box().Slave[79] ^= 1;
    CardByte[40] ^= 1;
    bool struck = false;
    loop_.on_turn = [this, interrupt, struck]() mutable {
      if (struck || port_.Sent().size() < GetParam()) return;
      struck = true;
      interrupt();
    };
    Run_To_End(Com_knapp3_Click);
    EXPECT_GE(port_.Sent().size(), GetParam());
  }
  /// Boxes of the write that stand before the point.
  void Expect_Boxes_Before() {
    if (GetParam() >= 22) ask_.Expect("ERROR 3");
    if (GetParam() >= 39) ask_.Expect("ERROR 3");
  }
};

TEST_P(Timer_Engine_Interrupted, Closing_The_Port_Ends_It) {
  Expect_Boxes_Before();
  Write_Until([] { Com_knapp2_Click(); });
  EXPECT_EQ(Status(), "< COM9 closed >");
  EXPECT_THAT(changes_, ElementsAre(true, false));
}

TEST_P(Timer_Engine_Interrupted, Closing_The_Program_Ends_It_At_Once_Without_A_Box) {
  Expect_Boxes_Before();
  double closed_at = 0;
  Write_Until([&] {
    Closing = true;
    MSComm1.Set_PortOpen(false);
    closed_at = clock_.Elapsed();
  });
  EXPECT_LT(clock_.Elapsed() - closed_at, 0.012);
}

TEST_P(Timer_Engine_Interrupted, A_Second_Click_Is_Not_Entered) {
  Expect_Boxes({"ERROR 3", "ERROR 3"});
  const std::size_t opened = port_.opened.size();
  Write_Until([] {
    for (const auto click : {Com_knapp3_Click, Com_knapp4_Click, Com_knapp5_Click, Read_Settings_Click,
                             Write_Settings_Click, Connect_Info_Click})
      click();
  });
  EXPECT_EQ(Status(), "< Write finished, slave OK,  T... >");
  EXPECT_EQ(port_.opened.size() - opened, 4U);
}

// rs v rd  bw 01 dd $  bw 28 dd $  ue v rd ue  v rs  bs 4F dd $  ue v rs ue: 5, 12, 19, 26, 29, 36, 43 in
// all.
INSTANTIATE_TEST_SUITE_P(Everywhere, Timer_Engine_Interrupted,
                         testing::Values(2, 3, 5, 7, 9, 12, 17, 19, 20, 22, 24, 26, 29, 31, 33, 35, 37, 39));

}  // namespace
}  // namespace kx
