#include "boxlink/box_info.h"
#include "settings/failure.h"
#include "support/sync_engine_fixture.h"

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
  [[nodiscard]] static std::string Aborted() { return GetParam().name + std::string(" aborted T"); }
};

TEST_P(Sync_Interrupted, A_Lost_Device_Ends_It) {
  Box_Info_OK = true;
  Interrupt([this] { port_.Lose(); });
  const double start = clock_.Elapsed();
  EXPECT_THROW(Run(), Failure);
  EXPECT_EQ(Status(), Aborted());
  EXPECT_LT(clock_.Elapsed() - start, 2);
}

TEST_P(Sync_Interrupted, The_Closing_Of_The_Program_Ends_It_At_Once_Without_A_Box) {
  double closed_at = 0;
  Interrupt([&] {
    if (!std::exchange(Closing, true)) closed_at = clock_.Elapsed();
  });
  Run();
  EXPECT_TRUE(Closing);
  EXPECT_LT(clock_.Elapsed() - closed_at, 0.003);
  EXPECT_EQ(Status(), Aborted());
}

TEST_P(Sync_Interrupted, Close_Port_Ends_It_And_Nothing_Goes_Out_Any_More) {
  std::string sent;
  Interrupt([&] {
    if (!sent.empty()) return;
    sent = port_.Sent();
    Com_knapp2_Click();
  });
  Run();
  EXPECT_EQ(port_.Sent(), sent);
  EXPECT_EQ(Status(), Aborted());
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
