#include "boxlink/timer_engine.h"

#include <memory>

#include "boxlink/box_info.h"
#include "boxlink/comm_port.h"
#include "boxlink/link_state.h"
#include "boxlink/protocol.h"
#include "boxlink/slave_strategy.h"
#include "boxlink/timer_state.h"
#include "boxlink/timer_steps.h"
#include "boxlink/transfer.h"
#include "platform/seams.h"
#include "settings/image.h"
#include "settings/message.h"
#include "settings/refresh.h"

namespace kx {
namespace {

constexpr int tick_milliseconds = 10;

std::unique_ptr<platform::Interval_Timer> Timer_TX;
std::unique_ptr<platform::Interval_Timer> Timer_RX;

std::unique_ptr<platform::Interval_Timer> Make_Timer(void (*tick)()) {
  auto made = platform::seams.event_loop->Make_Timer();
  made->Set_Interval(tick_milliseconds);
  made->On_Tick(tick);
  return made;
}

void Timer_TX_Tick() { Step_Transfer(timer::Transmit); }

void Timer_RX_Tick() { Step_Transfer(timer::Receive); }

bool Ticks_To_Come() { return Timer_TX->Enabled() || Timer_RX->Enabled(); }

void End_Ticks() {
  timer::Rest();
  Rx_Reading = false;
}

/// The user who closes the port says so himself.
void End_Early(std::string_view word) {
  if (word.empty()) return;
  rs232_text.Set(word);
  Quiet_Close = false;
  MSComm1.Set_PortOpen(false);
}

void Click(void (*step)()) {
  if (!Timer_TX) Timer_TX = Make_Timer(Timer_TX_Tick);
  if (!Timer_RX) Timer_RX = Make_Timer(Timer_RX_Tick);
  Run_Transfer({End_Early, Ticks_To_Come, End_Ticks}, [step] {
    Clear_Slave_Phase();
    step();
  });
}

void Start_Verify() {
  Verify_Mode = true;
  timer::Start_Read();
}

void Start_Write() {
  if (!Check_Slave_Data_Strategy()) return;
  if (Get_Field(map::slave_mode) == 1) Tell("This setting will set ChargeMarshal to slave");
  Fail_If_Ended();
  Begin_Sending();
  Write_Mode = true;
  Start_Verify();
}

}  // namespace

namespace timer {

void Talk() {
  Timer_RX->Set_Enabled(false);
  Timer_TX->Set_Enabled(true);
}

void Listen() {
  Timer_TX->Set_Enabled(false);
  Timer_RX->Set_Enabled(true);
}

void Rest() {
  Timer_TX->Set_Enabled(false);
  Timer_RX->Set_Enabled(false);
}

void Send(std::string_view text) {
  Count_Confirmed(MSComm1.Input());
  Rx_Prompt.clear();
  Rx_Silent_Ticks = 0;
  MSComm1.Output(text);
}

void Close_Quietly() {
  Quiet_Close = true;
  Close_Box_Port();
}

void Fail(std::string_view word) { throw Transfer_Ended{word}; }

/// A box that does not tell who it is gets its chance to send the image all the same.
void Start_Read() {
  Rest();
  if (!Open_For_Transfer()) return;
  Drop_Input();
  Get_Box_Info();
  Send(Slave_Pass && Slave_Needed ? "rs" : "rd");
  Rx_Reading = true;
  Rx_Text.clear();
  Rx_Idle_Ticks = idle_ticks;
  rs232_text.Set(Verify_Mode ? words::verifying : words::reading_data);
  Timer_RX->Set_Interval(tick_milliseconds);
  Listen();
}

}  // namespace timer

void Com_knapp5_Click() { Click(timer::Start_Read); }

void Com_knapp4_Click() { Click(Start_Verify); }

void Com_knapp3_Click() { Click(Start_Write); }

void Reset_Timer_Engine() {
  Timer_TX.reset();
  Timer_RX.reset();
  Reset_Timer_State();
}

}  // namespace kx
