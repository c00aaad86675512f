#include "sim/box.h"

#include <algorithm>
#include <cstdio>
#include <utility>

namespace kx::sim {
namespace {

constexpr std::size_t Mode_Offset = 1;
constexpr char stop_character = ' ';
constexpr std::uint8_t Slave_Mode_Bit = 1U << 3U;
/// Commands that the PC sends as a word; the others are single characters of a run.
constexpr std::array Words = {Command::Info,         Command::Read_Master, Command::Read_Slave,
                              Command::Write_Master, Command::Write_Slave, Command::Close,
                              Command::Card,         Command::Log};
constexpr std::uint8_t First_Card_Offset = 1;
constexpr std::string_view Hex_Digits = "0123456789ABCDEF";

/// Only upper-case digits count: "b" of "bw" must stay a command where runs are lenient.
std::optional<std::uint8_t> Nibble(char c) {
  const auto value = Hex_Digits.find(c);
  if (value == std::string_view::npos) return std::nullopt;
  return static_cast<std::uint8_t>(value);
}

std::string Hex_Text(const Image& image) {
  std::string text;
  text.reserve(2 * image.size());
  for (const std::uint8_t byte : image) {
    text += Hex_Digits[byte >> 4U];
    text += Hex_Digits[byte & 0x0FU];
  }
  return text;
}

/// 520 characters: four of lead-in, marker, 512 digits, marker, line end.
std::string Image_Block(std::string_view word, char marker, const Image& image) {
  return std::string(word) + "\r\n" + marker + Hex_Text(image) + marker + "\r\n";
}

std::string Padded(const char* format, unsigned value) {
  std::array<char, 16> text{};
  std::snprintf(text.data(), text.size(), format, value);
  return text.data();
}

std::string Serial_Text(const Box_Contents& box) {
  return box.Serial_As_Hex ? Padded("%04Xh", box.Serial) : Padded("%05u", box.Serial);
}

/// Lines enough for those who wait for 90 characters, short enough for those who wait for 0.05 s.
std::string Info_Text(const Box_Contents& box) {
  const bool slave_mode = (box.Master[Mode_Offset] & Slave_Mode_Bit) != 0;
  std::string text = "TORNVIK KX " + box.Firmware + "\r\n";
  text += "Hardware C, 4 analog in, 2 analog out\r\n";
  text += "Serial KX" + Serial_Text(box) + "\r\n";
  text += "SC ID " + Padded("%03u", box.Dataset) + "\r\n";
  text += "Status " + box.Status + "\r\n";
  text += slave_mode ? "Slave mode\r\n" : "Master mode\r\n";
  if (box.Card_Present && box.Socket.Card_Is_In()) text += "Smartcard present\r\n";
  if (box.Slave_Present) text += "Slave present\r\n";
  return text;
}

std::uint8_t Kept_As_Slave(std::size_t offset, std::uint8_t value) {
  if (offset != Mode_Offset) return value;
  return static_cast<std::uint8_t>(value | Slave_Mode_Bit);
}

}  // namespace

std::string_view Command_Name(Command command) {
  static constexpr std::array<std::string_view, Command_Count> names = {"v",     "rd", "rs", "bw", "bs",
                                                                        "digit", "$",  "ue", "br", "a"};
  return names.at(static_cast<std::size_t>(command));
}

Image As_Slave(Image master) {
  master[Mode_Offset] = Kept_As_Slave(Mode_Offset, master[Mode_Offset]);
  return master;
}

Box::Box(Box_Contents contents) : contents_(std::move(contents)) {}

std::string Box::Feed(std::string_view bytes) {
  std::string answer;
  for (const char c : bytes) answer += Take(c);
  return answer;
}

std::string Box::Take(char c) {
  if (streaming_) {
    streaming_ = c != stop_character;
    return {};
  }
  const auto nibble = Nibble(c);
  if (target_ == Run_Target::Card && nibble) return Take_Card_Digit(*nibble);
  if (!Run_Open()) return Take_Command_Character(c);
  if (c == '$') return End_Run();
  if (!nibble && contents_.Lenient_Runs) return Take_Command_Character(c);
  return Take_Run_Digit(c, nibble.value_or(static_cast<std::uint8_t>(c & 0x0F)));
}

bool Box::Run_Open() const { return target_ == Run_Target::Master || target_ == Run_Target::Slave; }

/// Of a slave that is gone nobody is left to echo, though its run goes on to "$".
bool Box::Heard() const { return target_ == Run_Target::Master || contents_.Slave_Present; }

std::string Box::Take_Command_Character(char c) {
  const std::string text = std::exchange(pending_, {}) + c;
  if (const auto* word = std::ranges::find(Words, text, Command_Name); word != Words.end()) {
    target_ = Run_Target::None;
    return Answer(*word, Run(*word));
  }
  if (std::ranges::any_of(Words, [&](Command word) { return Command_Name(word).starts_with(text); })) {
    pending_ = text;
    return {};
  }
  return text.size() > 1 ? Take(c) : std::string();
}

std::string Box::Answer(Command command, std::string text) {
  if (!text.empty()) last_command_ = command;
  answer_time_ = 0;
  return text;
}

std::string Box::Take_Run_Digit(char c, std::uint8_t nibble) {
  pending_.clear();
  if (!Heard()) return {};
  std::string echo(1, c);
  if (offset_digits_left_ > 0) {
    --offset_digits_left_;
    offset_ = static_cast<std::uint8_t>(offset_ << 4U | nibble);
  } else if (!high_nibble_) {
    high_nibble_ = nibble;
  } else {
    Store(static_cast<std::uint8_t>(*high_nibble_ << 4U | nibble));
    echo += 'w';
  }
  return Answer(Command::Digit, echo);
}

/// Master bytes go on to the slave as well, which the master leaves its mark. What is said to the slave alone
/// is taken as it stands.
void Box::Store(std::uint8_t value) {
  high_nibble_.reset();
  if (target_ == Run_Target::Master) contents_.Master[offset_] = value;
  if (contents_.Slave_Present) {
    contents_.Slave[offset_] = target_ == Run_Target::Slave ? value : Kept_As_Slave(offset_, value);
  }
  ++offset_;
}

/// The card gets bytes 1 to 255. Each that it holds then is acknowledged, the last with the closing "!".
std::string Box::Take_Card_Digit(std::uint8_t nibble) {
  pending_.clear();
  if (!high_nibble_) {
    high_nibble_ = nibble;
    return {};
  }
  const auto value = static_cast<std::uint8_t>(*high_nibble_ << 4U | nibble);
  high_nibble_.reset();
  const std::size_t place = offset_++;
  if (offset_ == 0) target_ = Run_Target::None;
  Card_Reader& socket = contents_.Socket;
  if (!socket.Store_Byte(place, value) || socket.Card.Memory.at(place) != value) return {};
  std::string answer = Answer(Command::Card, offset_ == 0 ? "!" : "m");
  answer_time_ = Smart_Card::Byte_Time;
  return answer;
}

void Box::Start_With_Card() {
  if (!Card_Is_In()) return;
  const Image& card = contents_.Socket.Card.Memory;
  std::copy(card.begin() + First_Card_Offset, card.end(), contents_.Master.begin() + First_Card_Offset);
}

bool Box::Card_Is_In() const { return contents_.Card_Present && contents_.Socket.Card_Is_In(); }

std::string Box::Begin_Run(Run_Target target, std::string prompt) {
  target_ = target;
  offset_digits_left_ = 2;
  high_nibble_.reset();
  return prompt;
}

std::string Box::End_Run() {
  pending_.clear();
  const bool heard = Heard();
  target_ = Run_Target::None;
  return Answer(Command::Run_End, heard ? "!\r\n" : "");
}

std::string Box::Run(Command command) {
  const bool slave = contents_.Slave_Present;
  switch (command) {
    case Command::Info:
      return Info_Text(contents_);
    case Command::Read_Master:
      return Image_Block("rd", '@', contents_.Master);
    case Command::Read_Slave:
      return slave ? Image_Block("rs", '#', contents_.Slave) : "";
    case Command::Write_Master:
      return Begin_Run(Run_Target::Master, "\r\n$");
    case Command::Write_Slave:
      return slave ? Begin_Run(Run_Target::Slave, "\r\n#") : "";
    case Command::Close:
      return "ue*";
    case Command::Card:
      return Begin_Card_Run();
    case Command::Log:
      streaming_ = true;
      return {};
    default:
      return {};
  }
}

std::string Box::Begin_Card_Run() {
  if (!Card_Is_In()) return "\r\nNo card\r\n";
  if (contents_.Socket.Card.Locked()) return "\r\nCard locked\r\n";
  offset_ = First_Card_Offset;
  return Begin_Run(Run_Target::Card, "#");
}

}  // namespace kx::sim
