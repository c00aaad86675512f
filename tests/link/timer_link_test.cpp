#include <QElapsedTimer>
#include <QTimer>
#include <algorithm>
#include <fstream>

#include "boxlink/protocol.h"
#include "boxlink/sync_engine.h"
#include "boxlink/timer_engine.h"
#include "boxlink/transfer.h"
#include "link/patient_user.h"
#include "link/pty_fixture.h"
#include "settings/message.h"

namespace kx {
namespace {

/// The timer-driven engine on real timers and the real port object. Other programs may get in the way of what
/// has to be in time, so that everything that must work may be tried again.
class Timer_Link : public test::Pty_Fixture {
 protected:
  static constexpr int attempts = 5;

  void TearDown() override {
    EXPECT_FALSE(Transfer_Running());
    EXPECT_FALSE(MSComm1.PortOpen());
  }
  static void Run_To_End(void (*click)()) {
    Guarded(click);
    for (const Wait_Limit limit(30); Transfer_Running() && !limit.Passed();) Do_Events();
  }
  static void Expect(void (*click)(), const std::string& status) {
    for (int attempt = 0; attempt < attempts && (attempt == 0 || Status() != status); ++attempt)
      Run_To_End(click);
    EXPECT_EQ(Status(), status);
  }
};

TEST_F(Timer_Link, Reads_Writes_Repairs_The_Slave_And_Verifies) {
  test::Patient_User user;
  platform::seams.ask = &user;
  sim::Box_Contents contents = test::Sample_Box(true);
  contents.Slave[99] ^= 1;
  Plug_In_Box(contents);
  CardByte = {};
  Expect(Com_knapp5_Click, "< KX read T >");
  EXPECT_EQ(CardByte, test::Sample_Tune());
  for (const int i : {46, 47, 133}) CardByte[i] ^= 0x5A;
  Expect(Com_knapp3_Click, "< Write finished, slave OK,  T... >");
  EXPECT_THAT(user.texts, testing::Contains("ERROR 3"));
  EXPECT_EQ(Plugged_In_Box().Master, test::As_Sent(CardByte));
  EXPECT_EQ(Plugged_In_Box().Slave, sim::As_Slave(test::As_Sent(CardByte)));
  Expect(Com_knapp4_Click, "< KX data verify OK >");
}

/// Seconds that this thread could have run in and other programs did.
double Held_Up_By_Others() {
  double running = 0;
  double waiting = 0;
  std::ifstream("/proc/thread-self/schedstat") >> running >> waiting;  // nanoseconds
  return waiting / 1e9;
}

/// A click elsewhere: a timer whose ticks show how late the event loop comes to anything.
class Elsewhere {
 public:
  Elsewhere() {
    timer_.setTimerType(Qt::PreciseTimer);
    QObject::connect(&timer_, &QTimer::timeout, [this] {
      Note_Gap();
      ++ticks_;
    });
    timer_.start(1);
  }

  /// Seconds, up to now.
  [[nodiscard]] double Longest_Gap() {
    Note_Gap();
    return longest_;
  }
  [[nodiscard]] int Ticks() const { return ticks_; }

 private:
  void Note_Gap() {
    const double now = Own_Time();
    longest_ = std::max(longest_, now - last_);
    last_ = now;
  }
  [[nodiscard]] double Own_Time() const {
    return static_cast<double>(since_.nsecsElapsed()) / 1e9 - Held_Up_By_Others();
  }
  static QElapsedTimer Started() {
    QElapsedTimer timer;
    timer.start();
    return timer;
  }

  QTimer timer_;
  QElapsedTimer since_ = Started();
  double last_ = Own_Time();
  double longest_ = 0;  // seconds
  int ticks_ = 0;
};

TEST_F(Timer_Link, The_Window_Stays_Alive_During_Either_Engine) {
  const std::pair<void (*)(), const char*> transfers[] = {
      {Com_knapp5_Click, "< KX read T >"},           {Com_knapp4_Click, "< KX data verify OK >"},
      {Com_knapp3_Click, "< Write finished T... >"}, {Read_Settings_Click, "Read finished T"},
      {Verify_Settings_Click, "Verify finished T"},  {Write_Settings_Click, "Write finished T"}};
  test::Patient_User user;
  platform::seams.ask = &user;
  Plug_In_Box(test::Sample_Box());
  for (const auto& [click, good] : transfers) {
    double gap = 1;
    for (int attempt = 0; attempt < attempts && gap > 0.02; ++attempt) {
      const bool writes = click == Com_knapp3_Click || click == Write_Settings_Click;
      for (const int i : {20, 21, 60}) CardByte[i] ^= static_cast<std::uint8_t>(writes ? 0x0F : 0);
      Elsewhere elsewhere;
      Run_To_End(click);
      gap = Status() == good && elsewhere.Ticks() > 20 ? elsewhere.Longest_Gap() : 1;
    }
    EXPECT_LE(gap, 0.02) << good;
  }
}

}  // namespace
}  // namespace kx
