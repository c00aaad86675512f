#include "boxlink/comm_port.h"
#include "boxlink/run_list.h"
#include "boxlink/timer_state.h"
#include "boxlink/timer_steps.h"

/// The sending side by Tx_State: 1 begins a run, 2 sends its offset, 3 a byte a tick without waiting for the
/// echo, 4 ends the run.
namespace kx::timer {
namespace {

constexpr std::int16_t next_run = 1;
constexpr std::int16_t run_bytes = 3;

void Begin_Run() {
  if (Slave_Write) ++Slave_Run_No;
  Send(Run_Word());
  Rx_Idle_Ticks = idle_ticks;
  Tx_State = run_begun;
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
  Tx_State = run_bytes;
}

bool Slave_Runs_Left() { return Slave_Write && Slave_Table[Slave_Run_No].offset != 0; }

/// Between two runs to the slave nobody waits for the box.
void End_Run() {
  Send("$");
  Tx_State = Slave_Runs_Left() ? next_run : run_end;
  if (Tx_State == run_end) Listen();
}

void Send_Byte() {
  if (Run_Left == 0) return End_Run();
  Send(dec2hex(CardByte[(Run_Start + Run_Length - Run_Left) % Byte_Image::size], 2));
  --Run_Left;
}

}  // namespace

std::string_view Run_Word() { return Slave_Write ? "bs" : "bw"; }

void Transmit() {
  if (!MSComm1.PortOpen() && !MSComm1.Lost()) return Fail();
  switch (Tx_State) {
    case next_run:
      return Begin_Run();
    case run_begun:
      return Send_Offset();
    case run_bytes:
      return Send_Byte();
    default:
      return End_Run();
  }
}

}  // namespace kx::timer
