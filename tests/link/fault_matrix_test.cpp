// Every fault at every stage of every transfer: whatever happens, the transfer ends, the line is free, the
// tune is what the program says that it is, and the next transfer works.
#include <algorithm>
#include <cstdlib>
#include <iostream>
#include <random>

#include "boxlink/line_log.h"
#include "boxlink/protocol.h"
#include "boxlink/run_list.h"
#include "boxlink/sync_engine.h"
#include "boxlink/timer_state.h"
#include "boxlink/transfer.h"
#include "link/fault_cases.h"
#include "link/patient_user.h"
#include "link/pty_fixture.h"
#include "settings/message.h"

namespace kx {
namespace {

using test::Aim;
using test::Fault_Case;
using test::Outcome;
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
  /// The box as it is now.
  virtual sim::Box Plugged_In() = 0;

  /// True when a fault has closed the line.
  virtual bool Hung_Up() = 0;

  /// Stale text reaches the open port.
  virtual void Let_Arrive(const std::string&) {}

  int attempts_ = 1;  ///< for what has to work when no fault is there

  void Try(const Fault_Case& row) {
    SCOPED_TRACE(GetParam().name + " seed " + std::to_string(Seed()) + " " + row.knobs +
                 (row.waiting.empty() ? "" : " waiting: " + row.waiting.substr(0, 10)));
    Reset_Link_State();
    user_.accept = row.accept;
    Set_Up(row.differs, this->Faults_Of(row.knobs));
    if (!row.waiting.empty()) {
      ASSERT_TRUE(Open_For_Transfer());
      Let_Arrive(row.waiting);
    }
    Run_To_End();
    Expect_All_At_Rest();
    Expect_Known_Words();
    Expect_True_Words(row);
    Expect_Outcome(row);
    Expect_The_Box_To_Hear(row);
    Expect_The_Next_To_Work(row);
  }

  const Transfer& GetParam() const { return testing::WithParamInterface<Transfer>::GetParam(); }

 private:
  /// A tune of which the box holds another version when it @p differs, the slave yet another.
  void Set_Up(bool differs, const sim::Faults& faults) {
    user_.texts.clear();
    sim::Box_Contents contents = test::Sample_Box(GetParam().slave);
    if (differs)
      for (const std::size_t i : {5U, 6U, 40U, 248U}) contents.Master[i] ^= 0x21;
    contents.Slave = sim::As_Slave(contents.Master);
    if (differs)
      for (const std::size_t i : {77U, 79U}) contents.Slave[i] ^= 0x40;
    master_before_ = contents.Master;
    CardByte = test::Sample_Tune();
    CardByte[map::reserved_high] = 1;  // a stamp shows
    before_ = CardByte;
    Plug_In(contents, faults);
  }

  static double Now() { return static_cast<double>(platform::seams.clock->Monotonic_Microseconds()) / 1e6; }

  static void Run(double seconds) {
    for (const double end = Now() + seconds; Now() < end;) Do_Events();
  }

  void Run_To_End() {
    Guarded(GetParam().click);
    for (const double end = Now() + 30; Transfer_Running() && Now() < end;) Do_Events();
  }

  void Expect_All_At_Rest() {
    EXPECT_FALSE(Transfer_Running());
    EXPECT_FALSE(Verify_Mode || Write_Mode || Write_Verify || Rx_Reading);
    EXPECT_EQ(user_.open, 0);
    const bool not_answered =
        Is(Aim::read, false) && this->Status() == "Read aborted T" && user_.texts.empty();
    const bool stays_open = this->Status() == "< Dataset ID not matched >" || not_answered;
    EXPECT_EQ(MSComm1.PortOpen(), stays_open && !Hung_Up()) << this->Status();
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
    const bool told = std::ranges::count(user_.texts, lost) == 1 || Gone_Between_Openings();
    EXPECT_TRUE(!Hung_Up() || Is_Good() || told) << "untold loss";
    EXPECT_LE(user_.texts.size(), 8U);
    if (!Gone_Between_Openings()) {
      EXPECT_THAT(this->Status(), Known_Status());
    }
  }

  /// The timer engine closes the port between a write, its read-back and the slave. A line that went in
  /// between is missed at the next opening.
  [[nodiscard]] bool Gone_Between_Openings() {
    return Hung_Up() && GetParam().timer_driven && this->Status() == "< Failed to open COM9 >";
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
    if (GetParam().aim == Aim::read) return Expect_Image_As_Told(row);
    Byte_Image stamped = before_;
    stamped[map::reserved_high] = 0;
    const bool refused = !user_.accept && std::ranges::any_of(user_.texts, [](const std::string& text) {
      return text.find("write anyway?") != std::string::npos;
    });
    if (refused) {
      EXPECT_EQ(Plugged_In().Contents().Master, master_before_);
    }
    EXPECT_TRUE(CardByte == before_ || (GetParam().aim == Aim::write && CardByte == stamped));
    if (!Claims_Equal_Box()) return;
    const sim::Box_Contents box = Plugged_In().Contents();
    Expect_Equal(box.Master, test::As_Sent(CardByte));
    if (Claims_Equal_Slave()) Expect_Equal(box.Slave, sim::As_Slave(test::As_Sent(CardByte)));
  }

  static void Expect_Equal(const sim::Image& box, const sim::Image& tune) {
    for (std::size_t i = 0; i <= last_timer_compared; ++i) ASSERT_EQ(box[i], tune[i]) << i;
  }

  /// The word with which the transfer ends when all is well.
  [[nodiscard]] std::string Good_Word(bool differs) const {
    switch (GetParam().aim) {
      case Aim::read:
        return GetParam().timer_driven ? "< KX read T >" : "Read finished T";
      case Aim::verify:
        if (GetParam().timer_driven)
          return differs ? "< verify failure >5,6,40,248," : "< KX data verify OK >";
        return differs ? "Verify failed T" : "Verify finished T";
      default:
        if (!GetParam().timer_driven) return "Write finished T";
        return GetParam().slave ? "< Write finished, slave OK,  T... >" : "< Write finished T... >";
    }
  }

  [[nodiscard]] bool Is_Good() const {
    return this->Status() == Good_Word(true) || this->Status() == Good_Word(false);
  }

  void Expect_Good_End(bool differs) {
    EXPECT_EQ(this->Status(), Good_Word(differs));
    if (GetParam().aim == Aim::read) {
      EXPECT_EQ(test::As_Sent(CardByte), master_before_);
    }
    if (Is(Aim::verify, false)) {
      for (const char* byte :
           {"Master miss match 5\r\n", "Master miss match 248\r\n", "Slave miss match 77\r\n"}) {
        const bool told = Debug_txt.Text().find(byte) != std::string::npos;
        EXPECT_EQ(told, differs && (GetParam().slave || *byte == 'M')) << byte;
      }
    }
    if (GetParam().aim == Aim::write) {
      EXPECT_TRUE(Claims_Equal_Box());
      EXPECT_EQ(Claims_Equal_Slave(), GetParam().slave);
    }
  }

  void Expect_Outcome(const Fault_Case& row) {
    switch (row.outcome) {
      case Outcome::open:
        return;
      case Outcome::good:
        return Expect_Good_End(row.differs);
      case Outcome::no_image:
        EXPECT_EQ(this->Status(), GetParam().timer_driven ? "< communication error >"
                                  : Is(Aim::read, false)  ? "Read aborted T"
                                                          : "Verify aborted T");
        return;
      case Outcome::not_written:
        EXPECT_EQ(this->Status(), "< Dataset ID not matched >");
        EXPECT_EQ(Plugged_In().Contents().Master, master_before_);
    }
  }

  [[nodiscard]] bool Claims_Equal_Box() const {
    return this->Status() == "Verify finished T" || this->Status() == "< KX data verify OK >" ||
           Debug_txt.Text().find("Write verify finished ") != std::string::npos ||
           this->Status().starts_with("< Write finished");
  }

  [[nodiscard]] bool Claims_Equal_Slave() const {
    return this->Status().starts_with("< Write finished, slave OK") ||
           Debug_txt.Text().find("No slave miss match\r\nWrite verify finished ") != std::string::npos;
  }

  /// A tune that counts as read is the one in the box, but for a digit that has become another on the line.
  void Expect_Image_As_Told(const Fault_Case& row) {
    const bool read = this->Status() == "Read finished T" || this->Status() == "< KX read T >";
    const sim::Image expected = read ? master_before_ : test::As_Sent(before_);
    const sim::Image tune = test::As_Sent(CardByte);
    int differing = 0;
    for (std::size_t i = 0; i < tune.size(); ++i) differing += tune[i] != expected[i] ? 1 : 0;
    EXPECT_LE(differing, read && row.knobs.find("corrupt=") != std::string::npos ? 1 : 0);
  }

  /// No transfer leaves the box in an open run, as long as it could be told.
  void Expect_The_Box_To_Hear(const Fault_Case& row) {
    if (Hung_Up() || row.knobs.find("stall=") != std::string::npos) return;
    EXPECT_NE(Plugged_In().Feed("v"), "");
  }

  /// The same transfer without the fault.
  void Expect_The_Next_To_Work(const Fault_Case& row) {
    for (int attempt = 0; attempt == 0 || (attempt < attempts_ && this->Status() != Good_Word(row.differs));
         ++attempt) {
      Set_Up(row.differs, {});
      Run_To_End();
    }
    Expect_Good_End(row.differs);
    Expect_True_Words({});
  }

  test::Patient_User user_;
  Byte_Image before_;
  sim::Image master_before_{};
};

/// In the process and on a stepped clock: all cases.
class Stepped_Fault_Matrix : public Fault_Matrix<test::Link_Fixture> {
 protected:
  void Plug_In(const sim::Box_Contents& contents, const sim::Faults& faults) override {
    line_ = sim::Line(sim::Box(contents), faults);
  }
  sim::Box Plugged_In() override { return line_.The_Box(); }
  bool Hung_Up() override { return line_.Hung_Up(); }
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
  Pty_Fault_Matrix() { attempts_ = 5; }  // other programs may get in the way of some
  void Plug_In(const sim::Box_Contents& contents, const sim::Faults& faults) override {
    Plug_In_Box(contents, faults);
  }
  sim::Box Plugged_In() override {
    return box_.With_Box([](const sim::Box& box) { return box; });
  }
  bool Hung_Up() override {
    return box_.With_Line([](sim::Line& line) { return line.Hung_Up(); });
  }
};

/// Long delays cost their time and show nothing that the stepped clock has not shown. What must come out well
/// does so in time only when no other program gets in the way.
bool Short(const Fault_Case& row) {
  const bool delayed = row.knobs.find("delay=") < row.knobs.find("delay=0.0");
  return row.waiting.empty() && !delayed && row.outcome != Outcome::good;
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
