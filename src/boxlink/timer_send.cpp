#include <algorithm>

#include "boxlink/comm_port.h"
#include "boxlink/link_state.h"
#include "boxlink/run_list.h"
#include "boxlink/timer_state.h"
#include "boxlink/timer_steps.h"
#include "boxlink/transfer.h"

/// The sending side: the word of a run, its offset, a byte a tick without waiting for the echo, its end.
namespace kx::timer {
namespace {

void Begin_Run() {
  if (Slave_Write) ++Slave_Run_No;
  Send_Word();
  Rx_Idle_Ticks = idle_ticks;
  Word_Sent_Again = false;
  Tx_State = Tx::prompt;
  Listen();
}

std::uint8_t Next_Number() {
  const int number = Run_List_Number(Run_List, Run_Pos);
  Run_Pos = static_cast<std::int16_t>(Run_Pos + run_list_step);
  return static_cast<std::uint8_t>(number);
}

void Send_Offset() {
  Run_Start = Next_Number();
  Run_Length = Next_Number();
  Run_Left = Run_Length;
  Send(dec2hex(Run_Start, 2));
  Tx_State = Tx::bytes;
}

bool Slave_Runs_Left() { return Slave_Write && Slave_Table[Slave_Run_No].offset != 0; }

/// Between two runs to the slave nobody waits for the box.
void End_Run() {
  Send("$");
  Tx_State = Slave_Runs_Left() ? Tx::begin : Tx::end;
  if (Tx_State == Tx::end) Listen();
}

/// What the receiver of the run is to hold at @p offset: a slave keeps the mark that makes it one.
std::uint8_t Byte_To_Send(int offset) {
  const std::uint8_t value = Current_Transfer().image[offset];
  const bool mode_byte = Slave_Write && offset == map::slave_mode.byte;
  return mode_byte ? static_cast<std::uint8_t>(value | map::slave_mode.mask) : value;
}

void Send_Byte() {
  if (Run_Left == 0) return End_Run();
  Send(dec2hex(Byte_To_Send((Run_Start + Run_Length - Run_Left) % Byte_Image::size), 2));
  --Run_Left;
}

}  // namespace

void Send_Word() {
  if (!Slave_Write) Note_Master_Run();
  Send(Slave_Write ? "bs" : "bw");
  Current_Transfer().run_open = true;
}

/// Neither the echo of a word nor a prompt confirms a byte.
void Count_Confirmed(std::string_view received) {
  std::optional<int>& confirmed = Current_Transfer().confirmed;
  const bool of_bytes = Tx_State == Tx::begin || Tx_State == Tx::bytes || Tx_State == Tx::end;
  if (confirmed && of_bytes) *confirmed += static_cast<int>(std::ranges::count(received, 'w'));
}

void Transmit() {
  if (!MSComm1.PortOpen() && !MSComm1.Lost()) Fail();
  switch (Tx_State) {
    case Tx::begin:
      return Begin_Run();
    case Tx::prompt:
      return Send_Offset();
    case Tx::bytes:
      return Send_Byte();
    default:
      return End_Run();
  }
}

}  // namespace kx::timer
