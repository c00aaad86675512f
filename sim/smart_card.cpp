#include "sim/smart_card.h"

#include <algorithm>
#include <charconv>
#include <fstream>
#include <sstream>

namespace kx::sim {
namespace {

/// The value behind the last line of @p text that begins with @p key; nothing without one.
std::optional<std::string> Value_Of(const std::string& text, const std::string& key) {
  const std::size_t at = text.rfind("\n" + key + "=");
  if (at == std::string::npos) return std::nullopt;
  const std::size_t start = at + key.size() + 2;
  return text.substr(start, text.find_first_of("\r\n", start) - start);
}

std::optional<unsigned> Number(const std::string& text, int base = 10) {
  unsigned value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value, base);
  if (error != std::errc{} || end != text.data() + text.size()) return std::nullopt;
  return value;
}

bool Take_Protected(const std::string& text, Smart_Card& card) {
  std::istringstream items(text);
  for (std::string item; std::getline(items, item, ',');) {
    const auto address = Number(item);
    if (!address || *address >= Smart_Card::Protectable) return false;
    card.Protected.at(*address) = true;
  }
  return true;
}

bool Take_Pin(const std::string& text, Smart_Card& card) {
  const auto value = Number(text, 16);
  if (!value || text.size() != 2 * card.Secret.size()) return false;
  card.Secret = {static_cast<std::uint8_t>(*value >> 16U), static_cast<std::uint8_t>(*value >> 8U),
                 static_cast<std::uint8_t>(*value)};
  return true;
}

bool Take_Tries(const std::string& text, Smart_Card& card) {
  const auto tries = Number(text);
  card.Tries = static_cast<int>(tries.value_or(0));
  return tries && *tries <= Smart_Card::All_Tries;
}

bool Take_Needs_Pin(const std::string& text, Smart_Card& card) {
  card.Needs_Pin = text == "1";
  return text == "0" || text == "1";
}

struct Line_Row {
  const char* key;
  bool (*take)(const std::string& text, Smart_Card& card);
};

constexpr std::array lines{Line_Row{"protected", Take_Protected}, Line_Row{"pin", Take_Pin},
                           Line_Row{"tries", Take_Tries}, Line_Row{"needs_pin", Take_Needs_Pin}};

std::string Whole_File(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  std::ostringstream text;
  text << file.rdbuf();
  return text.str();
}

}  // namespace

bool Smart_Card::Store(std::size_t address, std::uint8_t value) {
  Asked.emplace_back(address, value);
  if (!Takes_Writes() || address >= Memory.size()) return false;
  if (address < Protectable && Protected.at(address)) return true;
  Memory.at(address) = value;
  return true;
}

bool Smart_Card::Protect(std::size_t address, std::uint8_t value) {
  if (!Takes_Writes() || address >= Protectable) return false;
  if (Memory.at(address) == value) Protected.at(address) = true;
  return true;
}

bool Smart_Card::Verify(const Pin& pin) {
  verified_ = !Locked() && pin == Secret;
  if (verified_)
    Tries = All_Tries;
  else if (!Locked())
    --Tries;
  return verified_;
}

bool Smart_Card::Change(const Pin& pin, const Pin& new_pin) {
  if (!Verify(pin)) return false;
  Secret = new_pin;
  return true;
}

Loaded_Card Read_Card(const std::string& path) {
  Loaded_Card loaded;
  Loaded_Image memory = Read_Image(path);
  loaded.Error = std::move(memory.Error);
  loaded.Card.Memory = memory.Bytes;
  const std::string text = Whole_File(path);
  for (const Line_Row& row : lines) {
    const auto value = Value_Of(text, row.key);
    if (value && !row.take(*value, loaded.Card)) loaded.Error = path + ": " + row.key + "=" + *value;
  }
  loaded.Faults = Value_Of(text, "faults").value_or("");
  return loaded;
}

std::string Write_Card(const std::string& path, const Smart_Card& card, const std::string& faults) {
  std::string error = Write_Image(path, card.Memory);
  if (!error.empty()) return error;
  std::string kept;
  for (std::size_t i = 0; i < Smart_Card::Protectable; ++i) {
    if (card.Protected.at(i)) kept += (kept.empty() ? "" : ",") + std::to_string(i);
  }
  std::array<char, 8> pin{};
  std::snprintf(pin.data(), pin.size(), "%02X%02X%02X", card.Secret[0], card.Secret[1], card.Secret[2]);
  std::ofstream file(path, std::ios::binary | std::ios::app);
  if (!kept.empty()) file << "protected=" << kept << "\r\n";
  file << "pin=" << pin.data() << "\r\ntries=" << card.Tries << "\r\nneeds_pin=" << card.Needs_Pin << "\r\n";
  if (!faults.empty()) file << "faults=" << faults << "\r\n";
  file.close();
  return file ? std::string() : path + ": cannot be written";
}

}  // namespace kx::sim
