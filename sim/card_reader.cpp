#include "sim/card_reader.h"

#include <algorithm>
#include <charconv>
#include <stdexcept>

namespace kx::sim {
namespace {

constexpr std::int32_t the_card = 7;  // the handle of the one card
constexpr std::uint8_t sle4442 = 0;   // its place in the library's list of types
constexpr std::array<std::uint8_t, 4> reset_answer{0xA2, 0x13, 0x10, 0x91};
constexpr std::int32_t nonsense = -1234567;

template <typename Number>
bool Read_Number(std::string_view text, std::optional<Number>& number) {
  Number value{};
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  number = value;
  return error == std::errc{} && end == text.data() + text.size();
}

struct Knob {
  std::string_view name;
  bool (*read)(Reader_Faults& faults, std::string_view value);
};

template <auto Member>
bool Flag(Reader_Faults& faults, std::string_view value) {
  faults.*Member = true;
  return value.empty();
}

template <auto Member>
bool Counted(Reader_Faults& faults, std::string_view value) {
  return Read_Number(value, faults.*Member);
}

constexpr std::array knobs{
    Knob{"no_reader", Flag<&Reader_Faults::No_Reader>},
    Knob{"no_card", Flag<&Reader_Faults::No_Card>},
    Knob{"pull", Counted<&Reader_Faults::Pull>},
    Knob{"write_fault", Counted<&Reader_Faults::Write_Fault>},
    Knob{"lost_write", Counted<&Reader_Faults::Lost_Write>},
    Knob{"wrong_pin", Flag<&Reader_Faults::Wrong_Pin>},
    Knob{"locked", Flag<&Reader_Faults::Locked>},
    Knob{"garbage", Flag<&Reader_Faults::Garbage>},
    Knob{"count", Counted<&Reader_Faults::Count>},
    Knob{"status", Counted<&Reader_Faults::Status>},
    Knob{"refuse",
         [](Reader_Faults& faults, std::string_view value) {
           faults.Refuse = value;
           return !value.empty();
         }},
    Knob{"refuse_call", Counted<&Reader_Faults::Refuse_Call>},
    Knob{"byte_time", Counted<&Reader_Faults::Byte_Time>},
    Knob{"throws", Flag<&Reader_Faults::Throws>},
};

std::string Turn_Knob(Reader_Faults& faults, std::string_view text) {
  const std::size_t equals = std::min(text.find('='), text.size());
  const auto* const knob = std::ranges::find(knobs, text.substr(0, equals), &Knob::name);
  const bool known = knob != knobs.end();
  if (known && knob->read(faults, text.substr(std::min(equals + 1, text.size())))) return {};
  return "Unknown card reader fault \"" + std::string(text) + "\"";
}

Pin Pin_Of(std::span<const std::uint8_t> bytes) {
  Pin pin{};
  std::copy_n(bytes.begin(), std::min(bytes.size(), pin.size()), pin.begin());
  return pin;
}

}  // namespace

std::string Parse_Reader_Faults(std::string_view text, Reader_Faults& faults) {
  faults = {};
  std::string error;
  while (!text.empty() && error.empty()) {
    const std::size_t end = std::min(text.find(','), text.size());
    error = Turn_Knob(faults, text.substr(0, end));
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return error;
}

void Card_Reader::Set_Faults(const Reader_Faults& faults) {
  faults_ = faults;
  calls_ = 0;
  moved_ = 0;
  stored_ = 0;
  if (faults.Locked) Card.Tries = 0;
}

bool Card_Reader::Card_Is_In() const {
  return !faults_.No_Reader && !faults_.No_Card && (!faults_.Pull || moved_ < *faults_.Pull);
}

/// Counts a byte; false when the card is gone with it.
bool Card_Reader::Move_Byte() {
  ++moved_;
  return Card_Is_In();
}

bool Card_Reader::Store_Byte(std::size_t address, std::uint8_t value) {
  if (!Move_Byte()) return false;
  ++stored_;
  const Image before = Card.Memory;
  const bool stored = Card.Store(address, value);
  const bool refused = faults_.Write_Fault == stored_;
  if (refused || faults_.Lost_Write == stored_) Card.Memory = before;
  return stored && !refused;
}

std::int32_t Card_Reader::Claimed(std::int32_t truth) const {
  return faults_.Garbage ? nonsense : faults_.Count.value_or(truth);
}

std::int32_t Card_Reader::Command(std::string_view command, Const_Bytes input, Bytes output,
                                  std::int32_t& length) {
  ++calls_;
  if (faults_.Throws) throw std::runtime_error("the library throws");
  if (faults_.Refuse_Call == calls_) return Chipdrive_Refused;
  if (faults_.Status) return *faults_.Status;
  if (faults_.No_Reader) return Chipdrive_No_Reader;
  if (command.starts_with("Device,SearchComPort")) return Ok;
  if (!Card_Is_In()) return Chipdrive_No_Card;
  if (command == "Card,MemWrite,0,256") return Write_All(input);
  if (command != "Card,MemRead,0,256") return Chipdrive_Refused;
  length = Claimed(static_cast<std::int32_t>(Card.Memory.size()));
  return Read_All(output);
}

std::int32_t Card_Reader::Read_All(Bytes output) {
  for (std::size_t i = 0; i < Card.Memory.size() && i < output.size(); ++i) {
    if (!Move_Byte()) return Chipdrive_No_Card;
    output[i] = Card.Memory.at(i);
  }
  return output.size() < Card.Memory.size() ? Chipdrive_Refused : Ok;
}

std::int32_t Card_Reader::Write_All(Const_Bytes input) {
  if (input.size() != Card.Memory.size()) return Chipdrive_Refused;
  for (std::size_t i = 0; i < input.size(); ++i) {
    if (!Store_Byte(i, input[i])) return Card_Is_In() ? Chipdrive_Refused : Chipdrive_No_Card;
  }
  return Ok;
}

bool Card_Reader::Refused(std::string_view call) {
  ++calls_;
  if (faults_.Throws) throw std::runtime_error("the library throws");
  return faults_.No_Reader || faults_.Refuse_Call == calls_ || faults_.Refuse == call;
}

bool Card_Reader::Ready(std::string_view call, std::int32_t card) {
  return !Refused(call) && card == the_card && connected_ && typed_ && powered_ && Card_Is_In();
}

std::int32_t Card_Reader::Initial(std::string_view reader) {
  if (Refused("AgmSynInitial") || reader.empty()) return Failed;
  bound_ = true;
  return Ok;
}

std::int32_t Card_Reader::Connect(std::int32_t& card) {
  connected_ = !Refused("AgmSynCardConnect") && bound_ && Card_Is_In();
  if (!connected_) return Failed;
  card = the_card;
  return Ok;
}

std::int32_t Card_Reader::Set_Type(std::int32_t card, std::uint8_t type) {
  if (Refused("AgmSynSetCardType") || card != the_card || !connected_) return Failed;
  typed_ = type == sle4442;
  return typed_ ? Ok : Failed;
}

std::int32_t Card_Reader::Reset(std::int32_t card, Bytes answer, std::int32_t& length) {
  if (Refused("AgmSynCardReset") || card != the_card || !connected_ || !typed_ || !Card_Is_In())
    return Failed;
  if (!powered_) Card.Power_Off();
  powered_ = true;
  std::copy_n(reset_answer.begin(), std::min(answer.size(), reset_answer.size()), answer.begin());
  length = Claimed(static_cast<std::int32_t>(reset_answer.size()));
  return Ok;
}

std::int32_t Card_Reader::Disconnect(std::int32_t card) {
  if (Refused("AgmSynCardDisconnect") || card != the_card || !connected_) return Failed;
  connected_ = typed_ = powered_ = false;
  Card.Power_Off();
  return Ok;
}

std::int32_t Card_Reader::Read(std::int32_t card, std::int32_t address, std::int32_t length, Bytes buffer,
                               std::int32_t& count) {
  if (!Ready("AgmSynCardRead", card) || address < 0 || length < 0) return Failed;
  const auto first = static_cast<std::size_t>(address);
  const auto wanted = static_cast<std::size_t>(length);
  if (first + wanted > Card.Memory.size() || wanted > buffer.size()) return Failed;
  for (std::size_t i = 0; i < wanted; ++i) {
    if (!Move_Byte()) return Failed;
    buffer[i] = Card.Memory.at(first + i);
  }
  count = Claimed(length);
  return Ok;
}

std::int32_t Card_Reader::Write_One_Byte(std::int32_t card, std::int32_t address, std::uint8_t data) {
  if (!Ready("AgmSynCardWriteOneByte", card) || address < 0) return Failed;
  return Store_Byte(static_cast<std::size_t>(address), data) ? Ok : Failed;
}

std::int32_t Card_Reader::Page_Write(std::int32_t card, std::int32_t address, Const_Bytes data) {
  if (!Ready("AgmSynCardPageWrite", card) || address < 0) return Failed;
  auto place = static_cast<std::size_t>(address);
  const bool stored = std::ranges::all_of(data, [&](std::uint8_t byte) { return Store_Byte(place++, byte); });
  return stored ? Ok : Failed;
}

std::int32_t Card_Reader::Read_Protect_Bit(std::int32_t card, std::int32_t address, std::uint8_t& bit) {
  const auto place = static_cast<std::size_t>(address);
  if (!Ready("AgmSynCardMemReadPB", card) || address < 0 || place >= Smart_Card::Protectable) return Failed;
  bit = Card.Protected.at(place) ? 0 : 1;
  return Ok;
}

std::int32_t Card_Reader::Write_Protect_Bit(std::int32_t card, std::int32_t address, std::uint8_t data) {
  if (!Ready("AgmSynCardMemWritePB", card) || address < 0) return Failed;
  return Card.Protect(static_cast<std::size_t>(address), data) ? Ok : Failed;
}

std::int32_t Card_Reader::Verify_Pin(std::int32_t card, Const_Bytes pin) {
  if (!Ready("AgmSynCardVerifyPIN", card) || pin.size() != Card.Secret.size()) return Failed;
  if (faults_.Wrong_Pin) Card.Secret = {0x12, 0x34, 0x56};
  return Card.Verify(Pin_Of(pin)) ? Ok : Failed;
}

std::int32_t Card_Reader::Change_Pin(std::int32_t card, Const_Bytes pin, Const_Bytes new_pin) {
  const std::size_t size = Card.Secret.size();
  if (!Ready("AgmSynCardChangePIN", card) || pin.size() != size || new_pin.size() != size) return Failed;
  return Card.Change(Pin_Of(pin), Pin_Of(new_pin)) ? Ok : Failed;
}

}  // namespace kx::sim
