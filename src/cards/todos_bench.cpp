#include "cards/todos_bench.h"

#include <algorithm>
#include <charconv>
#include <span>
#include <vector>

#include "cards/card_session.h"
#include "cards/card_texts.h"
#include "cards/todos_steps.h"
#include "settings/text_encoding.h"

namespace kx {
namespace todos {
namespace {

using Bytes = std::vector<std::uint8_t>;

constexpr int highest_byte = 255;

/// One or two hex digits as a byte.
std::optional<std::uint8_t> Hex_Value(const std::string& text) {
  constexpr int hexadecimal = 16;
  std::uint8_t value = 0;
  const char* const end = text.data() + text.size();
  const auto [read, error] = std::from_chars(text.data(), end, value, hexadecimal);
  if (error != std::errc{} || read != end || text.size() > 2) return std::nullopt;
  return value;
}

/// The first bytes of @p fields, as many as the chosen card's PIN has; nothing when one of them is none.
std::optional<Bytes> Pin_In(std::span<const Shown_Text> fields) {
  Bytes bytes;
  for (const Shown_Text& field : fields.first(Chosen_Type().pin_bytes)) {
    const auto value = Hex_Value(field.Text());
    if (!value) return std::nullopt;
    bytes.push_back(*value);
  }
  return bytes;
}

void Verify_Pin() {
  if (!Connected()) return Set_Result(card_words::pin_connect_first);
  const auto presented = Pin_In(pin);
  if (!presented) return Set_Result(card_words::pin_digits);
  const auto status =
      With_Library([&](auto& library) { return library.AgmSynCardVerifyPIN(Todos_Card, *presented); });
  Set_Result(status == 0 ? Chosen_Type().verify_success : Chosen_Type().verify_fail);
}

void Change_Pin() {
  if (!Connected()) return Set_Result(card_words::pin_connect_first);
  const auto presented = Pin_In(pin);
  const auto wanted = Pin_In(new_pin);
  if (!presented || !wanted) return Set_Result(card_words::pin_digits);
  const auto status = With_Library(
      [&](auto& library) { return library.AgmSynCardChangePIN(Todos_Card, *presented, *wanted); });
  Set_Result(status == 0 ? Chosen_Type().change_success : Chosen_Type().change_fail);
}

void Read_Protect_Bit() {
  const auto address = Number_In(MemAddress, 0, last_address);
  if (!address) return Set_Result(card_words::no_start_address);
  if (!Connected()) return Set_Result(card_words::read_data_fail);
  std::uint8_t bit = 0;
  const auto status =
      With_Library([&](auto& library) { return library.AgmSynCardMemReadPB(Todos_Card, *address, bit); });
  if (status != 0) return Set_Result(card_words::read_data_fail);
  output.Set(std::string(card_words::protect_bit) + std::to_string(bit));
  Set_Result(card_words::protect_bit_read);
}

void Write_Protect_Bit() {
  const auto address = Number_In(MemAddress, 0, last_address);
  if (!address) return Set_Result(card_words::no_start_address);
  const auto data = Number_In(MemStatus, 0, highest_byte);
  if (!data) return Set_Result(card_words::no_protect_data);
  if (!Connected()) return Set_Result(card_words::protect_bit_error);
  const auto status = With_Library([&](auto& library) {
    return library.AgmSynCardMemWritePB(Todos_Card, *address, static_cast<std::uint8_t>(*data));
  });
  Set_Result(status == 0 ? card_words::protect_bit_written : card_words::protect_bit_error);
}

/// The bytes of a page: nothing when there are none, or fewer than the length asks for.
std::optional<Bytes> Page() {
  const std::string characters = To_Windows_1252(WriteData.Text());
  Bytes bytes(characters.begin(), characters.end());
  if (bytes.empty()) return std::nullopt;
  if (writelength.Text().empty()) return bytes;
  const auto length = Number_In(writelength, 1, static_cast<int>(bytes.size()));
  if (!length) return std::nullopt;
  bytes.resize(static_cast<std::size_t>(*length));
  return bytes;
}

void Write_Page() {
  if (Todos_Powered == 0) return Set_Result(card_words::page_power_first);
  const auto start = Number_In(TWAdd, 0, last_address);
  if (!start) return Set_Result(card_words::page_no_start);
  const auto page = Page();
  if (!page) return Set_Result(card_words::page_no_data);
  const auto status =
      With_Library([&](auto& library) { return library.AgmSynCardPageWrite(Todos_Card, *start, *page); });
  Set_Result(status == 0 ? card_words::page_success : card_words::page_failure);
}

}  // namespace
}  // namespace todos

void ComChp_Click() { Run_Card_Operation(todos::Verify_Pin); }

void change_Click() { Run_Card_Operation(todos::Change_Pin); }

void ReadPB_Click() { Run_Card_Operation(todos::Read_Protect_Bit); }

void WritePB_Click() { Run_Card_Operation(todos::Write_Protect_Bit); }

void Pagewrite_Click() { Run_Card_Operation(todos::Write_Page); }

}  // namespace kx
