// Every fault at every stage of every transfer: whatever happens, the transfer ends, the line is free, the
// tune is what the program says that it is, and the next transfer works.
#include <algorithm>
#include <cstdlib>
#include <iostream>
#include <random>

#include "boxlink/hex_text.h"
#include "boxlink/line_log.h"
#include "boxlink/protocol.h"
#include "boxlink/run_list.h"
#include "boxlink/sync_engine.h"
#include "boxlink/timer_state.h"
#include "link/fault_cases.h"
#include "link/patient_user.h"
#include "link/pty_fixture.h"
#include "settings/message.h"
#include "settings/numbers.h"

namespace kx {
namespace {

using test::Aim;
using test::Fault_Case;
using test::Transfer;
using testing::AnyOf;
using testing::Each;
using testing::HasSubstr;
using testing::StartsWith;

constexpr auto lost = "Lost connection with USB port";

/// The number that the random part of all cases follows from: KXBENCH_SEED, or another one in each run.
std::uint32_t Seed() {
  static const std::uint32_t seed = [] {
    const char* given = std::getenv("KXBENCH_SEED");
    return given != nullptr ? static_cast<std::uint32_t>(std::stoul(given)) : std::random_device()();
  }();
  return seed;
}

/// Tries a case on the line of @p Fixture, which says how a box comes to it.
template <typename Fixture>
class Fault_Matrix : public Fixture, public testing::WithParamInterface<Transfer> {
 protected:
  Fault_Matrix() { platform::seams.ask = &user_; }

  virtual void Plug_In(const sim::Box_Contents& contents, const sim::Faults& faults) = 0;
  virtual sim::Box_Contents Plugged_In() = 0;

  /// Stale text reaches the open port.
  virtual void Let_Arrive(const std::string&) {}

  int attempts_ = 1;  ///< for what has to work when no fault is there

  void Try(const Fault_Case& row) {
    SCOPED_TRACE(GetParam().name + " seed " + std::to_string(Seed()) + " " + row.knobs +
                 (row.waiting.empty() ? "" : " waiting: " + row.waiting));
    Prepare(row);
    Guarded(GetParam().click);
    Wait_For_The_End();
    Expect_All_At_Rest();
    Expect_Known_Words();
    Expect_True_Words(row);
    Expect_The_Next_To_Work();
  }

  const Transfer& GetParam() const { return testing::WithParamInterface<Transfer>::GetParam(); }

 private:
  /// A tune of which the box holds another version, the slave yet another.
  void Prepare(const Fault_Case& row) {
    Reset_Link_State();
    user_.texts.clear();
    user_.accept = row.accept;
    sim::Box_Contents contents = test::Sample_Box(GetParam().slave);
    if (row.differs)
      for (const std::size_t i : {5U, 6U, 40U, 248U}) contents.Master[i] ^= 0x21;
    contents.Slave = sim::As_Slave(contents.Master);
    if (row.differs) contents.Slave[77] ^= 0x40;
    master_before_ = contents.Master;
    CardByte = test::Sample_Tune();
    CardByte[map::reserved_low] = 1;
    before_ = CardByte;
    const auto parsed = sim::Parse_Faults(row.knobs);
    ASSERT_EQ(parsed.Error, "");
    Plug_In(contents, parsed.Knobs);
    if (row.waiting.empty()) return;
    ASSERT_TRUE(Open_For_Transfer());
    stale_ = row.waiting;
    Let_Arrive(row.waiting);
  }

  static double Now() { return static_cast<double>(platform::seams.clock->Monotonic_Microseconds()) / 1e6; }

  static void Run(double seconds) {
    for (const double end = Now() + seconds; Now() < end;) Do_Events();
  }

  static void Wait_For_The_End() {
    for (const double end = Now() + 30; Transfer_Running() && Now() < end;) Do_Events();
  }

  [[nodiscard]] static std::string Status() { return test::Without_Times(rs232_text.Text()); }

  void Expect_All_At_Rest() {
    EXPECT_FALSE(Transfer_Running());
    EXPECT_FALSE(Verify_Mode || Write_Mode || Write_Verify || Rx_Reading);
    EXPECT_EQ(user_.open, 0);
    const bool may_stay_open =
        Status() == "< Dataset ID not matched >" || (Is(Aim::read, false) && Status() == "Read aborted T");
    EXPECT_TRUE(may_stay_open || !MSComm1.PortOpen()) << Status();
    const std::size_t log = Line_Log().size();
    const std::string status = rs232_text.Text();
    Run(0.04);
    EXPECT_EQ(rs232_text.Text(), status) << "a timer goes on";
    for (std::size_t i = log; i < Line_Log().size(); ++i)
      EXPECT_NE(Line_Log()[i].direction, Line_Direction::sent) << "a timer goes on";
  }

  [[nodiscard]] bool Is(Aim aim, bool timer_driven) const {
    return GetParam().aim == aim && GetParam().timer_driven == timer_driven;
  }

  void Expect_Known_Words() {
    EXPECT_THAT(user_.texts,
                Each(AnyOf(lost, "Could not read", "Port not open", "Write verify failed!", "ERROR 3",
                           "ERROR 4", "ERROR 5", "ERROR 6", "\r\nDataset ID not matched",
                           StartsWith("The System has different"))));
    EXPECT_LE(std::ranges::count(user_.texts, lost), 1);
    EXPECT_LE(user_.texts.size(), 8U);
    EXPECT_THAT(Status(), Known_Status());
  }

  [[nodiscard]] testing::Matcher<std::string> Known_Status() const {
    const auto failed = AnyOf("< communication error >", "< Card byte error >");
    const auto differs = StartsWith("< verify failure >");
    switch (GetParam().aim) {
      case Aim::read:
        if (GetParam().timer_driven) return AnyOf("< KX read T >", failed);
        return AnyOf("Read finished T", "Read aborted T");
      case Aim::verify:
        if (GetParam().timer_driven) return AnyOf("< KX data verify OK >", differs, failed);
        return AnyOf("Verify finished T", "Verify failed T", "Verify aborted T", "Read aborted T");
      default:
        if (!GetParam().timer_driven) return AnyOf("Write finished T", "Write aborted T");
        return AnyOf("< Write finished T... >", "< Write finished, slave OK,  T... >", differs, failed,
                     "< Dataset ID not matched >", "< Slave EE not matching... >");
    }
  }

  /// What the status claims is so.
  void Expect_True_Words(const Fault_Case& row) {
    if (GetParam().aim == Aim::read) return Expect_Image_As_Told();
    Byte_Image stamped = before_;
    stamped[map::reserved_low] = 0;
    EXPECT_THAT(CardByte, AnyOf(before_, stamped));
    const bool never_ours = row.knobs.find("from=1,dataset") != std::string::npos && Is(Aim::write, true);
    if (never_ours) {
      EXPECT_EQ(Plugged_In().Master, master_before_);
    }
    if (!Claims_Equal_Box()) return;
    const sim::Box_Contents box = Plugged_In();
    for (int i = 0; i <= last_timer_compared; ++i)
      ASSERT_EQ(box.Master[static_cast<std::size_t>(i)], CardByte[i]) << i;
    if (Claims_Equal_Slave()) {
      EXPECT_EQ(box.Slave[77], CardByte[77]);
    }
  }

  [[nodiscard]] static bool Claims_Equal_Box() {
    return Status() == "Verify finished T" || Status() == "< KX data verify OK >" ||
           Debug_txt.Text().find("Write verify finished ") != std::string::npos ||
           Status().starts_with("< Write finished");
  }

  [[nodiscard]] static bool Claims_Equal_Slave() {
    return Status().starts_with("< Write finished, slave OK") ||
           Debug_txt.Text().find("No slave miss match\r\nWrite verify finished ") != std::string::npos;
  }

  /// A tune that counts as read is the one that came, from its first byte to its last.
  void Expect_Image_As_Told() {
    if (Status() != "Read finished T" && Status() != "< KX read T >") {
      EXPECT_EQ(CardByte, before_);
      return;
    }
    std::string received = stale_;
    for (const Line_Entry& entry : Line_Log())
      if (entry.direction == Line_Direction::received) received += entry.text;
    bool found = false;
    for (std::size_t at = 0; at + 512 <= received.size() && !found; ++at)
      found = Holds(std::string_view(received).substr(at, 512));
    EXPECT_TRUE(found);
  }

  [[nodiscard]] bool Holds(std::string_view digits) const {
    for (int i = 0; i < Byte_Image::size; ++i) {
      const auto pair = digits.substr(2 * static_cast<std::size_t>(i), 2);
      const int value = GetParam().timer_driven ? Timer_Pair_Value(pair) : byte_chk(Hex_Pair_Value(pair));
      if (value != CardByte[i]) return false;
    }
    return true;
  }

  void Expect_The_Next_To_Work() {
    const sim::Box_Contents contents = test::Sample_Box();
    Plug_In(contents, {});
    CardByte = {};
    for (int attempt = 0; attempt == 0 || (attempt < attempts_ && Status() != "Read finished T"); ++attempt)
      Guarded(Read_Settings_Click);
    EXPECT_EQ(Status(), "Read finished T");
    EXPECT_EQ(test::As_Sent(CardByte), contents.Master);
  }

  test::Patient_User user_;
  Byte_Image before_;
  sim::Image master_before_{};
  std::string stale_;
};

/// In the process and on a stepped clock: all cases.
class Stepped_Fault_Matrix : public Fault_Matrix<test::Link_Fixture> {
 protected:
  void Plug_In(const sim::Box_Contents& contents, const sim::Faults& faults) override {
    line_ = sim::Line(sim::Box(contents), faults);
  }
  sim::Box_Contents Plugged_In() override { return Box(); }
  void Let_Arrive(const std::string& text) override { port_.Arrive(text); }
};

TEST_P(Stepped_Fault_Matrix, Every_Fault_At_Every_Stage_Is_Survived) {
  std::size_t all = 0;
  for (const Transfer& transfer : test::All_Transfers()) all += test::Fault_Cases(transfer, Seed()).size();
  EXPECT_GE(all, 300U);
  const auto cases = test::Fault_Cases(GetParam(), Seed());
  std::cout << GetParam().name << ": seed " << Seed() << ", " << cases.size() << " of " << all << " cases\n";
  for (const Fault_Case& row : cases) {
    Try(row);
    if (HasFailure()) return;
  }
}

const auto transfer_name = [](const testing::TestParamInfo<Transfer>& row) { return row.param.name; };

INSTANTIATE_TEST_SUITE_P(Transfers, Stepped_Fault_Matrix, testing::ValuesIn(test::All_Transfers()),
                         transfer_name);

/// On a pseudo terminal and the real port: a sample of the cases, which take their real time here.
class Pty_Fault_Matrix : public Fault_Matrix<test::Pty_Fixture> {
 protected:
  Pty_Fault_Matrix() { attempts_ = 30; }  // other programs may get in the way of some
  void Plug_In(const sim::Box_Contents& contents, const sim::Faults& faults) override {
    Plug_In_Box(contents, faults);
  }
  sim::Box_Contents Plugged_In() override { return Plugged_In_Box(); }
};

/// Long delays cost their time and show nothing that the stepped clock has not shown.
bool Short(const Fault_Case& row) {
  return row.waiting.empty() && row.knobs.find("delay") == std::string::npos;
}

bool Hangs_Up(const Fault_Case& row) { return row.knobs.find("hang_up") != std::string::npos; }

TEST_P(Pty_Fault_Matrix, The_Real_Port_Survives_Too) {
  auto cases = test::Fault_Cases(GetParam(), Seed());
  std::erase_if(cases, [](const Fault_Case& row) { return !Short(row); });
  std::ranges::shuffle(cases, std::mt19937(Seed()));
  const auto others = std::ranges::stable_partition(cases, Hangs_Up);
  ASSERT_GE(others.size(), 1U);
  std::cout << GetParam().name << ": seed " << Seed() << "\n";
  Try(cases.front());
  Try(others.front());
}

INSTANTIATE_TEST_SUITE_P(Transfers, Pty_Fault_Matrix, testing::ValuesIn(test::All_Transfers()),
                         transfer_name);

}  // namespace
}  // namespace kx
