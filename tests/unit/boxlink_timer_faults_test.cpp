// What the timer-driven engine makes of a line, a box and a user that do not keep to the plan.
#include "boxlink/box_info.h"
#include "boxlink/sync_engine.h"
#include "support/timer_engine_fixture.h"
#include "workspace/shut_down.h"

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

TEST_F(Timer_Engine, A_Word_Goes_Out_Again_After_Five_Silent_Ticks_And_Ten_Are_The_End) {
  CardByte[20] ^= 1;
  Set_Faults("on=bw,refuse");
  Expect_Boxes({"ERROR 4", "ERROR 6"});
  Run_To_End(Com_knapp3_Click);
  EXPECT_EQ(Status(), "< communication error >");
  EXPECT_THAT(port_.Sent(), testing::EndsWith("rdbwbw$bw$"));
  EXPECT_THAT(Debug_txt.Text(), testing::EndsWith("Bytes confirmed by the box: 0\r\n"));
  Set_Faults("");
  Run_To_End(Com_knapp5_Click);
  EXPECT_EQ(Status(), "< KX read T >") << "the box has been left in its run";
}

/// The word is lost, or its prompt is late, so that the second word is an offset to the box.
TEST_F(Timer_Engine, A_Run_Whose_Word_Went_Out_Twice_Begins_Anew) {
  for (const char* knobs : {"drop_received=9", "drop_received=10", "on=bw,times=1,delay=0.055"}) {
    CardByte[20] ^= 1;
    Set_Faults(knobs);
    Write_To_Lone_Master();
    EXPECT_EQ(Status(), "< Write finished T... >") << knobs;
    EXPECT_THAT(port_.Sent(), HasSubstr("bwbw$bw01" + Hex(1) + "$bw14" + Hex(20) + "$ue")) << knobs;
    EXPECT_EQ(Box().Master, test::As_Sent(CardByte)) << knobs;
  }
  for (const char* knobs : {"on=bs,times=1,refuse", "on=bs,times=1,delay=0.055"}) {
    Box() = test::Sample_Box(true);
    Box().Slave = sim::As_Slave(test::As_Sent(CardByte));
    Box().Master = test::As_Sent(CardByte);
    for (const std::size_t i : {30U, 31U}) Box().Slave[i] ^= 1;
    Set_Faults(knobs);
    Expect_Boxes({"ERROR 3", "ERROR 3"});
    Run_To_End(Com_knapp3_Click);
    EXPECT_EQ(Status(), "< Write finished, slave OK,  T... >") << knobs;
    EXPECT_THAT(port_.Sent(), HasSubstr("rsbsbs$bs1E" + Hex(30) + "$bs1F" + Hex(31) + "$ue")) << knobs;
  }
}

/// Neither an end that comes late, nor one that is lost, nor a prompt behind it may let a word be swallowed.
TEST_F(Timer_Engine, Nothing_But_Its_End_Goes_Out_Into_An_Open_Run) {
  struct End_Case {
    const char* knobs;
    const char* status;
  };
  for (const auto& [knobs, status] : {End_Case{"on=$,delay=0.03", "< Write finished T... >"},
                                      {"on=$,times=1,delay=0.06", "< Write finished T... >"},
                                      {"drop_received=15", "< Write finished T... >"},
                                      {"on=$,times=1,refuse", "< communication error >"},
                                      {"on=$,stale=bw#", "< communication error >"}}) {
    Set_Faults("");
    Run_To_End(Com_knapp5_Click);  // ends the run in which the case before may have left the box
    Box() = test::Sample_Box();
    CardByte = test::Sample_Tune();
    CardByte[20] ^= 1;
    Set_Faults(knobs);
    const bool good = std::string_view(status) != "< communication error >";
    good ? Expect_Boxes({"ERROR 4", "ERROR 6", "ERROR 3"}) : Expect_Boxes({"ERROR 4", "ERROR 6"});
    Run_To_End(Com_knapp3_Click);
    EXPECT_EQ(Status(), status) << knobs;
    std::string sent = port_.Sent();
    for (std::size_t at = 0; (at = sent.find("$$")) != std::string::npos;) sent.erase(at, 1);
    const std::string first = "rsvrsvrdbw01" + Hex(1) + "$";
    EXPECT_EQ(sent, good ? first + "bw14" + Hex(20) + "$uevrdue" : first) << knobs;
    EXPECT_EQ(Box().Master[20] == CardByte[20], good);
  }
}

TEST_F(Timer_Engine, A_Block_With_A_Digit_Too_Many_Too_Few_Or_Of_Another_Kind_Leaves_The_Tune) {
  CardByte[60] ^= 1;
  const Byte_Image before = CardByte;
  for (const auto& [knobs, status] : {std::pair{"on=rd,lower", "< Card byte error >"},
                                      {"on=rd,drop=77", "< communication error >"},
                                      {"on=rd,duplicate=77", "< communication error >"},
                                      {"on=rd,corrupt=77,seed=7", "< communication error >"}}) {
    for (const auto click : {Com_knapp5_Click, Com_knapp4_Click}) {
      Set_Faults(knobs);
      Run_To_End(click);
      EXPECT_EQ(Status(), status) << knobs;
      EXPECT_EQ(CardByte, before);
    }
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
  /// The box is left as one that can be read.
  void Expect_The_Next_Read_To_Work() {
    loop_.on_turn = nullptr;
    Closing = false;
    loop_.Run(0.1);  // what was on its way has come
    Run_To_End(Com_knapp5_Click);
    EXPECT_EQ(Status(), "< KX read T >");
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
  EXPECT_THAT(Debug_txt.Text(), HasSubstr(GetParam() < 5 ? "" : "Bytes confirmed by the box: "));
  Expect_The_Next_Read_To_Work();
}

TEST_P(Timer_Engine_Interrupted, Closing_The_Program_Ends_It_At_Once_Without_A_Box) {
  Expect_Boxes_Before();
  double closed_at = 0;
  Write_Until([&] {
    Begin_Shutdown();
    closed_at = clock_.Elapsed();
  });
  EXPECT_LT(clock_.Elapsed() - closed_at, 0.012);
  Expect_The_Next_Read_To_Work();
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
