#include <numeric>
#include <ostream>

#include "cards/todos_bench.h"
#include "settings/message.h"
#include "support/card_fixture.h"

namespace kx {
namespace {

using Steps = std::vector<int>;

enum class Kind { connects, reads, writes, on_card };

/// What goes wrong, at which of the steps, and what is said of it.
struct Fault {
  std::string knob;  ///< of the reader, or of the socket or the line for the box; the step stands behind it
  Steps steps;       ///< counted from 1; none for a fault of the whole operation
  std::string word;
  const char* box = nullptr;
};

struct Operation {
  const char* name;
  const Shown_Text* status;
  void (*click)();
  Kind kind;
  std::string word;  ///< of success, or how it begins
  std::vector<Fault> faults;
};

/// For the line that tells which of them failed.
[[maybe_unused]] void PrintTo(const Operation& operation, std::ostream* out) { *out << operation.name; }

Steps From_To(int first, int last) {
  Steps steps(static_cast<std::size_t>(last - first + 1));
  std::iota(steps.begin(), steps.end(), first);
  return steps;
}

using Faults = std::vector<Fault>;

Faults Joined(Faults faults, const Faults& more) {
  faults.insert(faults.end(), more.begin(), more.end());
  return faults;
}

constexpr const char* no_programmer = "No programmer found";

/// The first call is the search, which decides nothing but what is told.
Faults Chipdrive_Faults(const std::string& success, int last_call, int last_byte) {
  const std::string refused = "< Card error 25344 >";
  return {{"refuse_call=", {1}, success, no_programmer},
          {"refuse_call=", From_To(2, last_call), refused},
          {"pull=", From_To(1, last_byte), "< No Card >"},
          {"status=5", {}, "< Card error 5 >", no_programmer},
          {"status=-1", {}, "< Card error -1 >", no_programmer},
          {"throws", {}, "< No Reader >", no_programmer},
          {"no_reader", {}, "< No Reader >", no_programmer},
          {"no_card", {}, "< No Card >"},
          {"garbage", {}, "< Read Data Fail >"},
          {"count=255", {}, "< Read Data Fail >"},
          {"count=70001", {}, "< Read Data Fail >"}};
}

constexpr const char* no_initial = "Could not Initialize the specified reader!";
constexpr const char* no_connection = "Could not connect to card by the specified reader!";
constexpr int connection_calls = 5;

Faults Connection_Faults() {
  return {{"refuse_call=", {1}, no_initial, no_initial},
          {"refuse_call=", {2}, "< No card >", no_connection},
          {"refuse_call=", {3, 5}, "< Card type set error >"},
          {"refuse_call=", {4}, "< Card Reset failure! >"},
          {"throws", {}, no_initial, no_initial},
          {"no_reader", {}, no_initial, no_initial},
          {"no_card", {}, "< No card >", no_connection}};
}

/// Behind a connection; @p failure is all that is said.
Faults Todos_Faults(const std::string& failure, int calls, int last_byte) {
  return Joined(Connection_Faults(),
                {{"refuse_call=", From_To(connection_calls + 1, connection_calls + calls), failure},
                 {"pull=", From_To(1, last_byte), failure},
                 {"garbage", {}, failure},
                 {"count=255", {}, failure},
                 {"count=70001", {}, failure}});
}

/// Of every byte that a write stores, in a card that takes no other.
Faults Store_Faults(const std::string& refused, const std::string& lost) {
  return {{"write_fault=", From_To(1, 256), refused},
          {"lost_write=", From_To(1, 256), lost},
          {"locked", {}, refused}};
}

/// The queries, "br" and the bytes in their order; each is an answer of the box.
Faults Box_Write_Faults() {
  const std::string failure = "< failure... >";
  return {{"times=1,refuse,from=", {1}, "< Card Write OK >"},
          {"times=1,refuse,from=", {2}, "< No MapCard present >"},
          {"times=1,refuse,from=", {3}, "< No response... >"},
          {"times=1,refuse,from=", From_To(4, 258), failure},
          {"pull=", From_To(1, 255), failure},
          {"write_fault=", From_To(1, 255), failure},
          {"lost_write=", From_To(1, 255), failure},
          {"no_card", {}, "< No MapCard present >"},
          {"locked", {}, "< No response... >"}};
}

Faults Box_Read_Faults() {
  const std::string failure = "< communication error >";
  return {{"times=1,refuse,from=", {2}, failure},
          {"on=rd,drop=", From_To(5, 517), failure},
          {"on=rd,hang_up=", {1, 5, 255, 517}, failure, "Lost connection with USB port"}};
}

Faults One_Call(const std::string& failure) { return {{"refuse_call=", {1}, failure}}; }

std::vector<Operation> Operations() {
  const Shown_Text* const chipdrive = &txt_Chipdrive_status;
  const Shown_Text* const box = &kx_crw_text;
  const Shown_Text* const todos = &txt_TodosStatus;
  const std::string read_ok = "< Card Read OK >";
  const std::string write_ok = "< Card Write OK >";
  const std::string no_read = "< Read Data Fail >";
  const std::string no_write = "< Write Data Error >";
  const Faults todos_read = Todos_Faults(no_read, 1, 256);
  const Faults todos_write = Joined(Todos_Faults(no_write, 256 + 32, 512), Store_Faults(no_write, no_write));
  const std::string no_page = "< Write Data in page Failure >";
  return {
      {"Find_Chipdrive", chipdrive, Find_Chipdrive_Click, Kind::connects, "< Card Reader OK >",
       Faults{{"refuse_call=", {1}, "< No Reader >", no_programmer}}},
      {"Command1", chipdrive, Command1_Click, Kind::reads, read_ok, Chipdrive_Faults(read_ok, 2, 256)},
      {"Command2", chipdrive, Command2_Click, Kind::writes, write_ok,
       Joined(Chipdrive_Faults(write_ok, 3, 512),
              Store_Faults("< Card error 25344 >", "< Card differs from tune >"))},
      {"Command5", box, Command5_Click, Kind::connects, "< MapCard inserted... >",
       Faults{{"times=1,refuse,from=", {1}, "< No response... >"},
              {"no_card", {}, "< MapCard not inserted...>"}}},
      {"Command6", box, Command6_Click, Kind::reads, "< KX read ", Box_Read_Faults()},
      {"Command4", box, Command4_Click, Kind::writes, write_ok, Box_Write_Faults()},
      {"cmd_FindTodos", todos, cmd_FindTodos_Click, Kind::connects, "< Card Connected >",
       Connection_Faults()},
      {"cmdReadTodos", todos, cmdReadTodos_Click, Kind::reads, read_ok, todos_read},
      {"cmd_WriteTodos", todos, cmd_WriteTodos_Click, Kind::writes, write_ok, todos_write},
      {"ComRead", todos, ComRead_Click, Kind::reads, "< Read success! >", todos_read},
      {"comwrite", todos, comwrite_Click, Kind::writes, "< Write Data Success! >", todos_write},
      {"CardReset", todos, CardReset_Click, Kind::on_card, "< Card Connected >",
       Faults{{"refuse_call=", {1}, "< Card Reset failure! >"},
              {"refuse_call=", {2}, "< Card type set error >"}}},
      {"Disconnect", todos, Disconnect_Click, Kind::on_card, "< Card Disconnected >",
       One_Call("< Disconnect Error >")},
      {"ComChp", todos, ComChp_Click, Kind::on_card, " PIN Verify Success!", One_Call("PIN Verify Fail!")},
      {"change", todos, change_Click, Kind::on_card, "Change PIN Success!", One_Call("Change PIN Fail")},
      {"ReadPB", todos, ReadPB_Click, Kind::on_card, "< Read Success! >", One_Call(no_read)},
      {"WritePB", todos, WritePB_Click, Kind::on_card, "< Write Protect bit Success! >",
       One_Call("< Write Protect Bit Error >")},
      {"Pagewrite", todos, Pagewrite_Click, Kind::on_card, "< Write Data in page Success >",
       Joined(One_Call(no_page), {{"pull=", {1, 2}, no_page}, {"write_fault=", {1, 2}, no_page}})},
  };
}

/// Each operation of each path, with each fault at each of its steps.
class Card_Faults : public test::Card_Fixture, public testing::WithParamInterface<Operation> {
 protected:
  Card_Faults() {
    loop_.Set_Turn(0.05);  // a byte without an answer costs seconds
    todos::MemAddress.Typed("5");
    todos::WriteData.Typed("AB");
    for (Shown_Text& byte : todos::new_pin) byte.Typed("A5");
  }

  [[nodiscard]] static bool By_Box() { return GetParam().status == &kx_crw_text; }
  [[nodiscard]] sim::Smart_Card& Card() { return By_Box() ? Box().Socket.Card : reader_.Card; }
  [[nodiscard]] static bool Worked() { return GetParam().status->Text().starts_with(GetParam().word); }

  /// All is well, with a tune and a card that differ in every byte; a box holds what its card does.
  void Prepare() {
    Strike("");
    CardByte = As_Card(Random_Tune());
    const sim::Pin secret = Card().Secret;
    Card() = {};
    Card().Secret = secret;
    for (std::size_t i = 0; i < Card().Memory.size(); ++i)
      Card().Memory[i] = static_cast<std::uint8_t>(~CardByte[static_cast<int>(i)]);
    if (GetParam().kind == Kind::reads) Card().Memory = test::As_Sent(As_Card(Random_Tune()));
    todos::MemStatus.Typed(std::to_string(Card().Memory[5]));
    Box().Master = Card().Memory;
    Reader_Found = false;
    if (GetParam().kind == Kind::on_card) Guarded(ConnectCard_Click);
  }

  void Strike(const std::string& knobs) {
    const bool on_line = knobs.find("from=") != std::string::npos || knobs.starts_with("on=");
    Set_Faults(on_line ? knobs : "");
    Set_Reader_Faults(on_line ? "" : knobs);
    Box().Socket.Set_Faults(reader_.Faults());
  }

  /// Byte 0 of a card is not written through the box.
  [[nodiscard]] bool Card_Is_Tune() {
    sim::Image tune = test::As_Sent(CardByte);
    if (By_Box()) tune[0] = Card().Memory[0];
    return tune == Card().Memory;
  }

  void Run_With(const Fault& fault, const std::string& step) {
    SCOPED_TRACE(fault.knob + step);
    Prepare();
    const Byte_Image tune = CardByte;
    if (fault.box != nullptr) ask_.Expect(fault.box);
    Strike(fault.knob + step);
    Guarded(GetParam().click);
    EXPECT_EQ(GetParam().status->Text(), fault.word);
    const bool moves = GetParam().kind == Kind::reads || GetParam().kind == Kind::writes;
    EXPECT_TRUE(Card_Is_Tune() || !moves || !Worked());
    if (GetParam().kind != Kind::reads || !Worked()) {
      EXPECT_EQ(CardByte, tune);
    }
    EXPECT_TRUE(GetParam().kind == Kind::writes || Card().Asked.size() <= todos::WriteData.Text().size());
    Expect_The_Next_To_Work();
  }

  void Expect_The_Next_To_Work() {
    Prepare();
    Guarded(GetParam().click);
    EXPECT_TRUE(Worked()) << GetParam().status->Text();
    if (GetParam().kind == Kind::reads || GetParam().kind == Kind::writes) {
      EXPECT_TRUE(Card_Is_Tune());
    }
  }
};

TEST_P(Card_Faults, Are_Told_And_Leave_Nothing_Behind) {
  for (const Fault& fault : GetParam().faults) {
    if (fault.steps.empty()) Run_With(fault, "");
    for (const int step : fault.steps) Run_With(fault, std::to_string(step));
    if (HasFailure()) return;
  }
}

INSTANTIATE_TEST_SUITE_P(All, Card_Faults, testing::ValuesIn(Operations()),
                         [](const auto& info) { return std::string(info.param.name); });

}  // namespace
}  // namespace kx
