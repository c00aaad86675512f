#include <algorithm>
#include <vector>

#include "boxlink/transfer.h"
#include "cards/card_image.h"
#include "cards/card_session.h"
#include "cards/card_texts.h"
#include "cards/todos_steps.h"
#include "settings/earlier_tunes.h"
#include "settings/history.h"
#include "settings/image.h"
#include "settings/refresh.h"
#include "settings/text_encoding.h"

namespace kx {
namespace todos {
namespace {

/// Room that the library is told of, whatever it is asked for.
constexpr std::size_t library_buffer_size = 70000;

constexpr std::size_t compared_at_once = 8;

using Bytes = std::vector<std::uint8_t>;

/// What a command moves: the bench form any part of a card, the main form whole cards only, whatever the
/// bench form's fields say.
enum class Scope { part, whole };

bool Refuse(std::string_view word) {
  Set_Result(word);
  return false;
}

/// @p length bytes of the card from @p address on; nothing when they have not all come.
std::optional<Bytes> Fetch(std::int32_t address, std::int32_t length) {
  Bytes buffer(library_buffer_size + 1);
  std::int32_t count = 0;
  const auto status = Next_Call(
      [&](auto& library) { return library.AgmSynCardRead(Todos_Card, address, length, buffer, count); });
  if (status != 0 || count != length) return std::nullopt;
  buffer.resize(static_cast<std::size_t>(length));
  return buffer;
}

std::optional<std::int32_t> Start_In(const Shown_Text& field, Scope scope) {
  const auto start = Number_In(field, 0, scope == Scope::whole ? 0 : last_address);
  if (!start) Set_Result(card_words::no_start_address);
  return start;
}

std::optional<std::int32_t> Length_In(const Shown_Text& field, Scope scope) {
  const auto length = Number_In(field, scope == Scope::whole ? Byte_Image::size : 1, Byte_Image::size);
  if (!length) Set_Result(card_words::no_data_length);
  return length;
}

/// Reads by TRAdd and ReadData into CardByte from its byte 0 on; true when all of it has come.
bool Read(Scope scope) {
  Connect();
  if (Todos_Powered == 0) return false;
  const auto start = Start_In(TRAdd, scope);
  const auto length = start ? Length_In(ReadData, scope) : std::nullopt;
  if (!length) return false;
  Set_Result(card_words::reading);
  const auto bytes = Fetch(*start, *length);
  if (!bytes) return Refuse(card_words::read_data_fail);
  Byte_Image image = CardByte;
  for (std::size_t i = 0; i < bytes->size(); ++i) image[static_cast<int>(i)] = (*bytes)[i];
  Replace_Tune(image, card_source);
  output.Set("Read Data : " + Crlf() + Byte_Lines(*bytes));
  Set_Result(card_words::read_success);
  return true;
}

Bytes Bytes_Of(const Byte_Image& image) {
  Bytes bytes;
  for (int i = 0; i < Byte_Image::size; ++i) bytes.push_back(image[i]);
  return bytes;
}

/// Ends at the first byte that the library refuses.
bool Send(std::int32_t start, const Bytes& bytes) {
  std::int32_t address = start;
  for (const std::uint8_t byte : bytes) {
    const auto status =
        Next_Call([&](auto& library) { return library.AgmSynCardWriteOneByte(Todos_Card, address, byte); });
    if (status != 0) return false;
    ++address;
  }
  return true;
}

/// Reads back in pieces: a whole card in one call would keep the window still for as long as that takes.
bool Card_Holds(std::int32_t start, const Bytes& bytes) {
  for (std::size_t at = 0; at < bytes.size(); at += compared_at_once) {
    const std::size_t end = std::min(at + compared_at_once, bytes.size());
    const auto held = Fetch(start + static_cast<std::int32_t>(at), static_cast<std::int32_t>(end - at));
    if (!held || !std::equal(held->begin(), held->end(), bytes.begin() + static_cast<std::ptrdiff_t>(at)))
      return false;
  }
  return true;
}

/// Writes the tune as it stands now from TWAdd on, then reads it back: protected bytes keep what they have,
/// and the library need not tell. True when the card holds the tune.
bool Write(Scope scope) {
  Connect();
  if (Todos_Powered == 0) return false;
  const auto start = Start_In(TWAdd, scope);
  if (!start) return false;
  Set_Result(card_words::writing);
  const Bytes bytes = Bytes_Of(Stamped(CardByte));
  output.Set("Written Data : " + Crlf() + Byte_Lines(bytes));
  if (!Send(*start, bytes) || !Card_Holds(*start, bytes)) return Refuse(card_words::write_data_error);
  Set_Result(card_words::write_data_success);
  return true;
}

void Read_Bytes() {
  Capture_History();
  if (Read(Scope::part)) Refresh_Whole_Image();
}

/// The bench leaves the tune and its checksum as they stand: a start address may put it anywhere.
void Write_Bytes() { (void)Write(Scope::part); }

void Read_Card() {
  txt_TodosStatus.Set(card_words::todos_pressed);
  Capture_History();
  if (Read(Scope::whole)) Finish_Card_Read(txt_TodosStatus);
}

void Write_Card() {
  Capture_History();
  txt_TodosStatus.Set(card_words::todos_pressed);
  Warn_Of_Slave_Mode();
  Fail_If_Ended();
  Prepare_Card_Image();
  if (Write(Scope::whole)) txt_TodosStatus.Set(card_words::write_ok);
}

void Disconnect_From_Main_Form() {
  txt_TodosStatus.Set(card_words::remove_card);
  Disconnect_Card();
}

/// A connection that was ended half made is none.
void Run_Connection(void (*connect)()) {
  Run_Card_Operation(connect, [](std::string_view) {
    Leave_Todos();
    Set_Result(card_words::card_disconnected);
  });
}

void Run_Read(void (*read)()) {
  Run_Card_Operation(read, [](std::string_view) { Set_Result(card_words::read_data_fail); });
}

void Run_Write(void (*write)()) {
  Run_Card_Operation(write, [](std::string_view) { Set_Result(card_words::write_data_error); });
}

}  // namespace
}  // namespace todos

void ConnectCard_Click() { todos::Run_Connection(todos::Connect); }

void CardReset_Click() { todos::Run_Connection(todos::Reset_Card); }

void Disconnect_Click() { Run_Card_Operation(todos::Disconnect_Card); }

void ComRead_Click() { todos::Run_Read(todos::Read_Bytes); }

void comwrite_Click() { todos::Run_Write(todos::Write_Bytes); }

void cmd_FindTodos_Click() { ConnectCard_Click(); }

void cmdReadTodos_Click() { todos::Run_Read(todos::Read_Card); }

void cmd_WriteTodos_Click() { todos::Run_Write(todos::Write_Card); }

void cmd_DisConnectTodos_Click() { Run_Card_Operation(todos::Disconnect_From_Main_Form); }

}  // namespace kx
