#include <string>
#include <utility>

#include "boxlink/box_info.h"
#include "boxlink/comm_port.h"
#include "boxlink/image_block.h"
#include "boxlink/link_state.h"
#include "boxlink/protocol.h"
#include "boxlink/run_list.h"
#include "boxlink/slave_strategy.h"
#include "boxlink/timer_state.h"
#include "boxlink/timer_steps.h"
#include "boxlink/transfer.h"
#include "settings/earlier_tunes.h"
#include "settings/message.h"
#include "settings/numbers.h"
#include "settings/reference_tune.h"
#include "settings/refresh.h"
#include "settings/session.h"
#include "settings/text_encoding.h"

namespace kx::timer {
namespace {

constexpr double end_limit = 1.0;  // seconds
constexpr int end_wanted = 500;    // more than the box has to say: the whole limit is waited for
constexpr const char* first_file = "New1.kxs";
constexpr const char* loaded = "Settings loaded from box";

void Report_Loaded() {
  rs232_text.Set(With_Time(words::data_read, words::end));
  card_data_file = first_file;
  Set_Title(loaded);
  txt_File_Description.Set(loaded);
  Refresh_Views(Refresh_Whole_Image);
}

void Report_Difference(const std::vector<int>& offsets) {
  rs232_text.Set(std::string(words::data_differs) + Offsets_Text(offsets));
}

/// The slave's turn comes behind a read-back without a difference only: its good end must not stand in the
/// status in place of the master's failure.
void Compare() {
  const bool read_back = std::exchange(Write_Verify, false);
  rs232_text.Set(read_back ? With_Time(words::data_read_back, words::dotted_end)
                           : std::string(words::data_verified));
  const auto offsets = Differing_Offsets(Current_Transfer().image, Verify_Image);
  Slave_Pending = read_back && Slave_Needed && offsets.empty();
  offsets.empty() ? Send("ue") : Report_Difference(offsets);
  Run_List = Master_Run_List(offsets);
  Verify_Mode = false;
}

/// Tells the box that the runs are over, and reads back what it has made of them.
void Finish_Write() {
  Rest();
  std::string answer;
  if (!Send_Wait_Rec("ue", end_limit, end_wanted, answer)) Tell("ERROR 3");
  Fail_If_Ended();
  rs232_text.Set(With_Time(words::data_written, words::end));
  Write_Mode = false;
  Close_Quietly();
  Verify_Mode = Write_Verify = !Slave_Pass;
  Start_Read();
}

/// The tune must not reach a box that would read its bytes in another way. The port stays open for what the
/// user does about it.
void Refuse_Dataset() {
  Rest();
  rs232_text.Set(words::dataset_not_matched);
  Tell(Crlf() + "Dataset ID not matched");
}

void Begin_Write() {
  rs232_text.Set(words::writing_data);
  const bool told = Box_Info_OK || Slave_Pass;  // the master has been written by then
  if (!told) Fail();
  if (Val_Any(Box_SC_ID) != Current_Transfer().image[map::dataset]) return Refuse_Dataset();
  if (Run_List == ",") return Finish_Write();
  Tx_State = Tx::begin;
  Run_Pos = 2;
  Talk();
}

void Take_Image(const Byte_Image& image) {
  if (Verify_Mode) {
    Verify_Image = image;
    Note_Master_Read(image);
    Refresh_Views(Show_Reference);
    Compare();
  } else if (Slave_Pass) {
    Slave_Image = image;
    MasterSlaveCompare();
  } else {
    Replace_Tune(image, box_source);
    Note_Master_Read(image);
    Note_Opened_Tune();
    Report_Loaded();
  }
  Rx_Reading = false;
  if (Write_Mode) return Begin_Write();
  Rest();
  Close_Quietly();
}

/// A box that talks on and on without what is awaited would never let an idle tick happen.
void Fail_If_Endless(const std::string& text) {
  if (text.size() > Comm_Port::input_buffer_size) Fail();
}

void Collect(const std::string& chunk) {
  Rx_Text += chunk;
  const auto digits = Timer_Image_Digits(Rx_Text);
  if (!digits) return Fail_If_Endless(Rx_Text);
  const auto image = Decode_Timer_Digits(*digits);
  if (!image) Fail(words::card_byte_error);
  Take_Image(*image);
}

void End_Run() {
  if (!Runs_Left(Run_List, Run_Pos)) return Finish_Write();
  Tx_State = Tx::begin;
  Talk();
}

constexpr std::string_view run_confirmed = "!\r\n";
constexpr std::string_view prompts = "$#";

/// An end behind which a prompt stands is none: a box that prompts stands in a run.
bool Run_Has_Ended() {
  const std::size_t at = Rx_Prompt.rfind(run_confirmed);
  return at != std::string::npos && Rx_Prompt.find_first_of(prompts, at) == std::string::npos;
}

bool Prompted() { return Rx_Prompt.ends_with('$') || Rx_Prompt.ends_with('#') || Rx_Prompt == "w"; }

/// After a word that went out twice nobody knows whether the box has taken one of the two for an offset.
void Restart_Run() {
  Send("$");
  Tx_State = Tx::restart;
}

/// An end that comes while a prompt is awaited belongs to the run before.
void Await_Prompt() {
  if (Word_Sent_Again) return Restart_Run();
  Prompted() ? Talk() : Fail_If_Endless(Rx_Prompt);
}

/// A prompt behind a run says that its "$" has not been heard. It takes an idle tick, or a line that gives
/// each "$" back would have it sent for ever.
void Await_End() {
  if (!Run_Has_Ended()) {
    if (!Prompted()) return Fail_If_Endless(Rx_Prompt);
    if (--Rx_Idle_Ticks <= 0) Fail();
    return Send("$");
  }
  Current_Transfer().run_open = false;
  if (Tx_State == Tx::end) return End_Run();
  Send_Word();
  Word_Sent_Again = false;
  Tx_State = Tx::prompt;
}

void Take_Prompt(const std::string& chunk) {
  Count_Confirmed(chunk);
  Rx_Prompt += chunk;
  Tx_State == Tx::prompt ? Await_Prompt() : Await_End();
}

/// For the word of a run or its "$" the box may have been deaf. What is sent again while a prompt is awaited
/// must not be followed by an offset.
void Send_Again() {
  if (Tx_State != Tx::prompt) return Send("$");
  Send_Word();
  Word_Sent_Again = true;
}

void Count_Idle_Tick() {
  if (--Rx_Idle_Ticks <= 0) Fail();
  if (++Rx_Silent_Ticks >= silent_ticks && Write_Mode && !Rx_Reading) Send_Again();
}

void Start_Pending_Slave_Pass() {
  if (!Slave_Pending || !Slave_Present) return;
  Slave_Pending = false;
  Slave_Pass = true;
  Start_Read();
}

}  // namespace

void Receive() {
  if (!MSComm1.PortOpen() && !MSComm1.Lost()) Fail();
  const std::string chunk = MSComm1.Input();
  if (chunk.empty()) return Count_Idle_Tick();
  Rx_Silent_Ticks = 0;
  Rx_Reading ? Collect(chunk) : Take_Prompt(chunk);
  Start_Pending_Slave_Pass();
}

}  // namespace kx::timer
