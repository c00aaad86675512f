#include "cards/chipdrive.h"

#include <memory>

#include "boxlink/transfer.h"
#include "cards/card_image.h"
#include "cards/card_session.h"
#include "cards/card_texts.h"
#include "platform/seams.h"
#include "settings/earlier_tunes.h"
#include "settings/history.h"
#include "settings/message.h"
#include "settings/refresh.h"
#include "settings/wait.h"

namespace kx {

bool Reader_Found = false;
std::string Card_Status;
std::string Card_Buffer;
bool Chipdrive_Delay_Done = false;

namespace {

constexpr int pause_milliseconds = 500;
constexpr int search_milliseconds = 1000;
constexpr auto buffer_size = static_cast<std::size_t>(Byte_Image::size);

constexpr std::string_view search = "Device,SearchComPort";
constexpr std::string_view search_port_1 = "Device,SearchComPort,1";
constexpr std::string_view search_port_2 = "Device,SearchComPort,2";
constexpr std::string_view read_all = "Card,MemRead,0,256";
constexpr std::string_view write_all = "Card,MemWrite,0,256";

std::unique_ptr<platform::Interval_Timer> timer_Chipdrive;
std::unique_ptr<platform::Interval_Timer> Timer1;

std::unique_ptr<platform::Interval_Timer> Make_Timer(int milliseconds, void (*tick)()) {
  auto made = platform::seams.event_loop->Make_Timer();
  made->Set_Interval(milliseconds);
  made->On_Tick(tick);
  return made;
}

void Make_Timers() {
  if (!timer_Chipdrive) timer_Chipdrive = Make_Timer(pause_milliseconds, timer_Chipdrive_Tick);
  if (!Timer1) Timer1 = Make_Timer(search_milliseconds, Timer1_Tick);
}

/// What the library claims to have filled of Card_Buffer by the last command.
std::int32_t buffer_claim = 0;

/// A library that throws counts as none.
std::int32_t Call_Library(std::string_view command, const std::string& input) {
  auto* const library = platform::seams.chipdrive;
  if (library == nullptr) return card_status::no_reader;
  try {
    return library->SCardComand(std::string(command), input, Card_Buffer, buffer_claim)
        .value_or(card_status::no_reader);
  } catch (...) {
    return card_status::no_reader;
  }
}

std::int32_t Run_Command(std::string_view command, const std::string& input = {}) {
  Card_Buffer.assign(buffer_size, ' ');
  buffer_claim = static_cast<std::int32_t>(buffer_size);
  const std::int32_t status = Call_Library(command, input);
  Card_Buffer.resize(buffer_size, ' ');
  Card_Status = std::to_string(status);
  return status;
}

std::string Characters_Of(const Byte_Image& image) {
  std::string text;
  for (int i = 0; i < Byte_Image::size; ++i) text += static_cast<char>(image[i]);
  return text;
}

Byte_Image Image_Of(const std::string& characters) {
  Byte_Image image;
  for (int i = 0; i < Byte_Image::size; ++i)
    image[i] = static_cast<std::uint8_t>(characters[static_cast<std::size_t>(i)]);
  return image;
}

/// Reads the card into Card_Buffer; true when the whole of it has come.
bool Fill_Buffer() {
  const bool done = Run_Command(read_all) == card_status::done;
  return done && buffer_claim == static_cast<std::int32_t>(buffer_size);
}

/// What to show of the last command, which was not the success that its caller asked for.
std::string Failure_Word() {
  if (Card_Status == std::to_string(card_status::no_card)) return std::string(card_words::no_card);
  if (Card_Status == std::to_string(card_status::no_reader)) return std::string(card_words::no_reader);
  if (Card_Status == std::to_string(card_status::done)) return std::string(card_words::read_data_fail);
  return std::string(card_words::card_error) + Card_Status + " >";
}

void Report_Failure() { txt_Chipdrive_status.Set(Failure_Word()); }

/// A reader that was searched for gets a pause before the card is asked for, found or not.
void Look_For_Reader() {
  if (Reader_Found) return;
  Chipdrive_Connect();
  Make_Timers();
  Chipdrive_Delay_Done = false;
  timer_Chipdrive->Set_Enabled(true);
  while (!Chipdrive_Delay_Done) Yield();
}

void Read() {
  Look_For_Reader();
  Capture_History();
  Card_Read() ? Finish_Card_Read(txt_Chipdrive_status) : Report_Failure();
}

/// The library's word alone does not tell what the card holds: protected bytes keep what they have.
void Compare_With_Card(const std::string& written) {
  if (!Fill_Buffer()) return Report_Failure();
  txt_Chipdrive_status.Set(Card_Buffer == written ? card_words::write_ok : card_words::card_differs);
}

void Write() {
  Capture_History();
  Look_For_Reader();
  Warn_Of_Slave_Mode();
  Fail_If_Ended();
  Prepare_Card_Image();
  const std::string written = Characters_Of(CardByte);
  if (!Card_Write()) return Report_Failure();
  Do_Events();  // each of the two calls takes the library its time
  Compare_With_Card(written);
}

void Show_Search(bool found) {
  txt_Chipdrive_status.Set(found ? card_words::reader_ok : card_words::no_reader);
}

/// Only the search and the pause behind it have waits: what is known is whether the reader has answered.
void End_Early(std::string_view) { Show_Search(Reader_Found); }

/// The pointer says wait while this lives.
struct Wait_Pointer {
  Wait_Pointer() { Show_Wait_Pointer(true); }
  ~Wait_Pointer() { Show_Wait_Pointer(false); }
  Wait_Pointer(const Wait_Pointer&) = delete;
  Wait_Pointer& operator=(const Wait_Pointer&) = delete;
};

}  // namespace

bool Card_Command(std::string_view command) { return Run_Command(command) == card_status::done; }

bool Card_Read() {
  if (!Fill_Buffer()) return false;
  Replace_Tune(Image_Of(Card_Buffer), card_source);
  return true;
}

bool Card_Write() { return Run_Command(write_all, Characters_Of(CardByte)) == card_status::done; }

void Chipdrive_Connect() {
  txt_Chipdrive_status.Set(card_words::searching);
  {
    const Wait_Pointer pointer;
    Yield();
    Reader_Found = Card_Command(search);
  }
  Show_Search(Reader_Found);
  if (!Reader_Found) Tell("No programmer found");
}

void Find_Chipdrive_Click() { Run_Card_Operation(Chipdrive_Connect, End_Early); }

void Command1_Click() { Run_Card_Operation(Read, End_Early); }

void Command2_Click() { Run_Card_Operation(Write, End_Early); }

void timer_Chipdrive_Tick() { Chipdrive_Delay_Done = true; }

void Timer1_Tick() { Show_Search(Card_Command(search_port_1) || Card_Command(search_port_2)); }

void Reset_Chipdrive() {
  timer_Chipdrive.reset();
  Timer1.reset();
  Reader_Found = false;
  Card_Status.clear();
  Card_Buffer.clear();
  Chipdrive_Delay_Done = false;
  txt_Chipdrive_status.Set("");
}

}  // namespace kx
