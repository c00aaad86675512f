#include "cards/box_card.h"

#include <string>

#include "boxlink/box_info.h"
#include "boxlink/comm_port.h"
#include "boxlink/link_texts.h"
#include "boxlink/protocol.h"
#include "boxlink/timer_engine.h"
#include "boxlink/transfer.h"
#include "cards/card_image.h"
#include "cards/card_session.h"
#include "cards/card_texts.h"
#include "settings/history.h"
#include "settings/wait.h"

namespace kx {

Byte_Image Card_Send_Buffer;

namespace {

// The waits for the socket are fractions of a day.
constexpr double day = 86400;                  // seconds
constexpr double first_wait = 0.000005 * day;  // for any answer, about 0.43 s
constexpr double answer_wait = 0.00001 * day;  // for a whole one, about 0.86 s
constexpr double byte_wait = 0.00002 * day;    // for the card to take a byte, about 1.73 s
constexpr int first_sent = 1;
constexpr std::size_t line_end = 4;  // characters that may stand behind the last acknowledgement

/// Collects what arrives in @p text until @p enough says so; false when the limit came first.
template <typename Enough>
bool Wait_For(double limit, std::string& text, Enough enough) {
  const Wait_Limit wait(limit);
  bool passed = false;
  while (!passed) {
    Yield();
    passed = wait.Passed();  // before the last look at the port: what came in time counts
    text += MSComm1.Input();
    if (enough(text)) return true;
  }
  return false;
}

/// Opens the port and shows that the box is being asked.
bool Open() {
  kx_crw_text.Set(card_words::box_pressed);
  if (Open_For_Transfer()) return true;
  kx_crw_text.Set(rs232_text.Text());
  return false;
}

/// Asks the box whether a card is in its socket; @p silent is the word for no answer at all.
bool Card_Found(std::string_view silent) {
  Drop_Input();
  kx_crw_text.Set(card_words::box_pressed);
  MSComm1.Output("v");
  std::string text;
  if (!Wait_For(first_wait, text, [](const std::string& all) { return !all.empty(); }))
    kx_crw_text.Set(silent);
  return Wait_For(answer_wait, text,
                  [](const std::string& all) { return all.find("Smartcard present") != std::string::npos; });
}

bool Socket_Ready() {
  std::string text;
  MSComm1.Output("br");
  if (Wait_For(answer_wait, text, [](const std::string& all) { return all.ends_with('#'); })) return true;
  kx_crw_text.Set(card_words::no_response);
  return false;
}

bool Acknowledged(const std::string& text) { return text.ends_with('m'); }

/// The box ends the last byte with "!", or with "m" and up to a line end behind it.
bool Last_Acknowledged(const std::string& text) {
  if (Acknowledged(text) || text.ends_with('!')) return true;
  return text.size() > line_end && Acknowledged(text.substr(0, text.size() - line_end));
}

/// What waits is no answer to a byte that has not been sent.
bool Send_Byte(int i) {
  Drop_Input();
  MSComm1.Output(dec2hex(Card_Send_Buffer[i], 2));
  std::string text;
  return Wait_For(byte_wait, text, i < Byte_Image::size - 1 ? Acknowledged : Last_Acknowledged);
}

void Send_Card() {
  Prepare_Card_Image();
  Card_Send_Buffer = CardByte;
  bool all_taken = true;
  for (int i = first_sent; i < Byte_Image::size; ++i) {
    if (Send_Byte(i)) continue;
    all_taken = false;
    kx_crw_text.Set(card_words::failure);
  }
  if (all_taken) kx_crw_text.Set(card_words::write_ok);
}

/// The port may be closed already, by the user; the next closing is not to be a quiet one for it.
void Close_Quietly() {
  Quiet_Close = true;
  Close_Box_Port();
  Quiet_Close = false;
}

void Write_Card() {
  Capture_History();
  if (!Open()) return;
  Drop_Input();
  Get_Box_Info();
  if (!Card_Found(card_words::write_no_response)) {
    if (kx_crw_text.Text() != card_words::no_response) kx_crw_text.Set(card_words::no_map_card);
  } else if (Socket_Ready()) {
    Send_Card();
  }
  Close_Quietly();
}

void End_Write_Early(std::string_view) {
  kx_crw_text.Set(card_words::failure);
  Close_Quietly();
}

void Check_Card() {
  if (!Open()) return;
  const bool found = Card_Found(card_words::no_response);
  if (kx_crw_text.Text() == card_words::no_response) return;
  kx_crw_text.Set(found ? card_words::card_inserted : card_words::card_not_inserted);
}

void End_Check_Early(std::string_view) { kx_crw_text.Set(card_words::no_response); }

}  // namespace

void Command4_Click() { Run_Card_Operation(Write_Card, End_Write_Early); }

void Command5_Click() { Run_Card_Operation(Check_Card, End_Check_Early); }

void Command6_Click() {
  if (Transfer_Running()) return;
  try {
    Com_knapp5_Click();
  } catch (...) {
    kx_crw_text.Set(rs232_text.Text());  // or the word of the operation before would stand on
    throw;
  }
  kx_crw_text.Set(rs232_text.Text());
  while (Transfer_Running() && rs232_text.Text() == words::reading_data) Do_Events();
  kx_crw_text.Set(rs232_text.Text());
}

void Reset_Box_Card() {
  Card_Send_Buffer = {};
  kx_crw_text.Set(card_words::box_writer_at_start);
}

}  // namespace kx
