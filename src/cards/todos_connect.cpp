#include <algorithm>

#include "boxlink/transfer.h"
#include "cards/card_texts.h"
#include "cards/todos_steps.h"
#include "settings/image.h"
#include "settings/message.h"

namespace kx {

platform::Card_Context Todos_Context = 0;
std::int32_t Todos_Card = 0;
std::int32_t Todos_Powered = 0;
std::int32_t Todos_ATR_Length = 0;
bool Todos_Reader_OK = false;

namespace todos {

std::size_t card_type = 0;
std::vector<std::string> readers;
int reader = -1;
std::function<void()> on_readers;

namespace {

constexpr std::int32_t powered = -1;
constexpr std::int32_t power_off = 2;  ///< disposition of a card that is let go
constexpr std::size_t longest_reset_answer = 64;

bool connected = false;

/// Shows @p text as the outcome and in a box.
void Fail(std::string_view text, platform::Icon icon = platform::Icon::none) {
  Set_Result(text);
  Tell(std::string(text), icon);
}

std::string Chosen_Reader() {
  return reader < 0 ? std::string() : readers.at(static_cast<std::size_t>(reader));
}

/// Takes a new list. The choice stays with its reader; without one it is the first.
void Take_Readers(std::vector<std::string> listed) {
  const auto same = std::ranges::find(listed, Chosen_Reader());
  const bool gone = listed.empty() || reader < 0 || same == listed.end();
  const auto place = gone ? 0 : same - listed.begin();
  if (listed == readers) return;
  reader = listed.empty() ? -1 : static_cast<int>(place);
  readers = std::move(listed);
  if (on_readers) on_readers();
}

bool Establish_Context() {
  auto* const service = platform::seams.card_service;
  if (Todos_Context != 0) return true;
  if (service != nullptr && service->SCardEstablishContext(Todos_Context) == 0) return true;
  Todos_Context = 0;
  return false;
}

void Release_Context() {
  if (Todos_Context != 0) (void)platform::seams.card_service->SCardReleaseContext(Todos_Context);
  Todos_Context = 0;
}

/// False when the service does not take the context, as one that was started anew meanwhile.
bool List_Readers() {
  std::string names;
  const bool listed = platform::seams.card_service->SCardListReaders(Todos_Context, names) == 0;
  Take_Readers(listed ? Names_In(names) : std::vector<std::string>());
  return listed;
}

/// A context is kept from one operation to the next, and the card's power with it; one that the service does
/// not know any more is made anew.
bool Open_Service() {
  const bool kept = Todos_Context != 0;
  if (!Establish_Context()) return false;
  if (List_Readers() || !kept) return true;
  Release_Context();
  if (!Establish_Context()) return false;
  (void)List_Readers();
  return true;
}

/// True when a Todos reader is there; a box tells when not.
bool Check_Reader() {
  Todos_Reader_OK = std::ranges::any_of(
      readers, [](const std::string& name) { return name.find(todos_reader_name) != std::string::npos; });
  if (!Todos_Reader_OK) Fail(card_words::no_todos_reader, platform::Icon::critical);
  return Todos_Reader_OK;
}

bool Connect_Card(const std::string& name) {
  const auto status =
      Next_Call([&](auto& library) { return library.AgmSynCardConnect(name, Todos_Context, Todos_Card); });
  connected = status == 0;
  if (connected) return true;
  Set_Result(card_words::no_todos_card);
  Tell(std::string(card_words::no_connection));
  return false;
}

bool Set_Type() {
  const auto type = static_cast<std::uint8_t>(card_type);
  if (Next_Call([&](auto& library) { return library.AgmSynSetCardType(Todos_Card, type); }) == 0) return true;
  Set_Result(card_words::card_type_error);
  return false;
}

std::string Hex_Pairs(std::span<const std::uint8_t> bytes) {
  std::string text;
  for (const std::uint8_t byte : bytes) text += dec2hex(byte, 2) + "  ";
  return text;
}

void Show_Reset_Answer(std::span<const std::uint8_t> answer) {
  output.Set(" ATR in Hex :  " + Hex_Pairs(answer));
  Set_Result(card_words::card_connected);
}

}  // namespace

bool Connected() { return connected; }

void Connect() {
  Todos_Powered = 0;
  if (!Open_Service()) return Fail(card_words::no_resource_manager);
  if (!Check_Reader()) return;
  const std::string name = Chosen_Reader();
  if (Next_Call([&](auto& library) { return library.AgmSynInitial(name, Todos_Context); }) != 0)
    return Fail(card_words::no_initial);
  if (Connect_Card(name) && Set_Type()) Reset_Card();
  Fail_If_Ended();
}

void Reset_Card() {
  Todos_Powered = 0;
  if (!connected) return Set_Result(card_words::connect_first);
  std::array<std::uint8_t, longest_reset_answer> answer{};
  std::int32_t length = 0;
  const auto status =
      Next_Call([&](auto& library) { return library.AgmSynCardReset(Todos_Card, answer, length); });
  if (status != 0) return Set_Result(card_words::card_reset_failure);
  Todos_ATR_Length = std::clamp(length, 0, static_cast<std::int32_t>(answer.size()));
  if (!Set_Type()) return;
  Todos_Powered = powered;
  Show_Reset_Answer(std::span(answer).first(static_cast<std::size_t>(Todos_ATR_Length)));
}

void Disconnect_Card() {
  Set_Result(card_words::disconnecting);
  const bool done = connected && With_Library([](auto& library) {
                                   return library.AgmSynCardDisconnect(Todos_Card, power_off);
                                 }) == 0;
  if (done) {
    output.Set(card_words::remove_card_from_reader);
    Set_Result(card_words::remove_card_from_reader);
  }
  Set_Result(done ? card_words::card_disconnected : card_words::disconnect_error);
  connected = false;
  Todos_Powered = 0;
  Release_Context();
}

}  // namespace todos

std::vector<std::string> Names_In(std::string_view list) {
  std::vector<std::string> names;
  while (!list.empty()) {
    const std::size_t end = std::min(list.find('\0'), list.size());
    if (end > 0) names.emplace_back(list.substr(0, end));
    list.remove_prefix(std::min(end + 1, list.size()));
  }
  return names;
}

void Load_Todos_Form() {
  if (Transfer_Running() || todos::connected) return;
  if (todos::Establish_Context())
    (void)todos::List_Readers();
  else
    todos::Set_Result(card_words::cannot_establish);
  todos::Release_Context();
}

void Leave_Todos() {
  if (todos::connected) {
    (void)todos::With_Library(
        [](auto& library) { return library.AgmSynCardDisconnect(Todos_Card, todos::power_off); });
  }
  todos::connected = false;
  Todos_Powered = 0;
  todos::Release_Context();
}

void Reset_Todos() {
  if (platform::seams.card_service != nullptr) Leave_Todos();
  todos::connected = false;
  Todos_Context = 0;
  Todos_Card = 0;
  Todos_Powered = 0;
  Todos_ATR_Length = 0;
  Todos_Reader_OK = false;
  todos::card_type = 0;
  todos::readers.clear();
  todos::reader = -1;
  todos::on_readers = nullptr;
  todos::Reset_Fields();
}

}  // namespace kx
