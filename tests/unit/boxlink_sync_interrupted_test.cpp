#include "boxlink/box_info.h"
#include "settings/failure.h"
#include "support/sync_engine_fixture.h"
#include "workspace/shut_down.h"

namespace kx {
namespace {

using testing::HasSubstr;

struct Interruption {
  void (*click)();
  const char* name;
  std::size_t sent;  ///< characters after which it strikes
};

/// Faults that end a transfer in its middle, at every point of its conversation.
class Sync_Interrupted : public Sync_Engine, public testing::WithParamInterface<Interruption> {
 protected:
  /// Strikes with @p interrupt when so many characters have gone out; a write has ten bytes to send.
  void Interrupt(const std::function<void()>& interrupt) {
    for (int i = 40; i < 50; ++i) CardByte[i] ^= 1;
    loop_.on_turn = [this, interrupt] {
      if (port_.Sent().size() >= GetParam().sent) interrupt();
    };
  }
  void Run() { GetParam().click(); }
  /// What the box is to hear before the line is closed: the end of its run.
  [[nodiscard]] std::string Run_End() const {
    return GetParam().sent > 4 && GetParam().sent <= 28 ? "$" : "";
  }

  /// The box is left as one that can be read.
  void Expect_The_Next_Read_To_Work() {
    loop_.on_turn = nullptr;
    Closing = false;
    loop_.Run(0.1);  // what was on its way has come
    Read_Settings_Click();
    EXPECT_EQ(Status(), "Read finished T");
    EXPECT_EQ(test::As_Sent(CardByte), Box().Master);
  }
  [[nodiscard]] static std::string Aborted() { return GetParam().name + std::string(" aborted T"); }
};

TEST_P(Sync_Interrupted, A_Lost_Device_Ends_It) {
  Box_Info_OK = true;
  Interrupt([this] { port_.Lose(); });
  const double start = clock_.Elapsed();
  EXPECT_THROW(Run(), Failure);
  EXPECT_EQ(Status(), Aborted());
  EXPECT_LT(clock_.Elapsed() - start, 2);
  Expect_The_Next_Read_To_Work();
}

TEST_P(Sync_Interrupted, The_Closing_Of_The_Program_Ends_It_At_Once_Without_A_Box) {
  double closed_at = 0;
  std::string sent;
  Interrupt([&] {
    if (Closing) return;
    closed_at = clock_.Elapsed();
    sent = port_.Sent();
    Begin_Shutdown();
  });
  Run();
  EXPECT_TRUE(Closing);
  EXPECT_LT(clock_.Elapsed() - closed_at, 0.003);
  EXPECT_EQ(Status(), Aborted());
  EXPECT_EQ(port_.Sent(), sent + Run_End());
  Expect_The_Next_Read_To_Work();
}

TEST_P(Sync_Interrupted, Close_Port_Ends_It_And_Only_The_End_Of_A_Run_Goes_Out_Any_More) {
  std::string sent;
  Interrupt([&] {
    if (!sent.empty()) return;
    sent = port_.Sent();
    Com_knapp2_Click();
  });
  Run();
  EXPECT_EQ(port_.Sent(), sent + Run_End());
  EXPECT_EQ(Status(), Aborted());
  Expect_The_Next_Read_To_Work();
}

TEST_F(Sync_Engine, The_Journal_Of_A_Write_That_Ends_Early_Says_How_Far_It_Came) {
  for (int i = 40; i < 50; ++i) CardByte[i] ^= 1;
  loop_.on_turn = [this] {
    if (Written().size() == std::string("bw28112233").size() + 1) port_.Lose();  // inside the fourth byte
  };
  EXPECT_THROW(Write_Settings_Click(), Failure);
  EXPECT_THAT(Journal(),
              testing::EndsWith("|Some master miss match|Bytes confirmed by the box: 3|Write aborted T|"));
  loop_.on_turn = nullptr;
  Open_Box_Port();  // by hand, which must not hide that the box stands in its run
  Read_Settings_Click();
  EXPECT_EQ(Status(), "Read finished T");
}

TEST_P(Sync_Interrupted, A_Second_Click_Is_Not_Entered) {
  int clicks = 0;
  Interrupt([&] {
    ++clicks;
    Read_Settings_Click();
    Write_Settings_Click();
    Verify_Settings_Click();
    Connect_Info_Click();
    Command3_Click();
  });
  const std::size_t opened = port_.opened.size();
  Run();
  EXPECT_GT(clicks, 0);
  EXPECT_LE(port_.opened.size() - opened, 5U);
  EXPECT_THAT(Status(), testing::AnyOf("Read finished T", "Verify failed T", "Write finished T"));
}

constexpr Interruption everywhere[] = {
    {Read_Settings_Click, "Read", 1},     {Read_Settings_Click, "Read", 3},
    {Verify_Settings_Click, "Verify", 1}, {Verify_Settings_Click, "Verify", 4},
    {Write_Settings_Click, "Write", 1},   {Write_Settings_Click, "Write", 4},
    {Write_Settings_Click, "Write", 6},   {Write_Settings_Click, "Write", 9},
    {Write_Settings_Click, "Write", 28},  {Write_Settings_Click, "Write", 31},
    {Write_Settings_Click, "Write", 37}};

INSTANTIATE_TEST_SUITE_P(Everywhere, Sync_Interrupted, testing::ValuesIn(everywhere));

}  // namespace
}  // namespace kx
