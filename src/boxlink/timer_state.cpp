#include "boxlink/timer_state.h"

namespace kx {

Tx Tx_State = Tx::none;
bool Rx_Reading = false;
std::string Rx_Text;
std::string Rx_Prompt;
std::int16_t Rx_Idle_Ticks = 0;
std::int16_t Rx_Silent_Ticks = 0;
bool Word_Sent_Again = false;
std::string Run_List;
std::int16_t Run_Pos = 0;
std::uint8_t Run_Start = 0;
std::uint8_t Run_Length = 0;
std::uint8_t Run_Left = 0;
Byte_Image Verify_Image;
Byte_Image Slave_Image;
bool Slave_Needed = false;
bool Slave_Pending = false;
bool Slave_Pass = false;
bool Slave_Write = false;
std::array<Slave_Row, map::image_size> Slave_Table;
std::uint8_t Slave_Run_No = 0;
Slave_Progress Slave_Repairs;

namespace {

void Reset_Run() {
  Run_List.clear();
  Run_Pos = 0;
  Run_Start = 0;
  Run_Length = 0;
  Run_Left = 0;
}

void Reset_Receiver() {
  Rx_Reading = false;
  Rx_Text.clear();
  Rx_Prompt.clear();
  Rx_Idle_Ticks = 0;
  Rx_Silent_Ticks = 0;
  Word_Sent_Again = false;
}

}  // namespace

void Clear_Slave_Phase() {
  Slave_Pending = false;
  Slave_Pass = false;
  Slave_Write = false;
  Slave_Repairs = {};
}

void Reset_Timer_State() {
  Tx_State = Tx::none;
  Reset_Receiver();
  Reset_Run();
  Verify_Image = {};
  Slave_Image = {};
  Slave_Needed = false;
  Clear_Slave_Phase();
  Slave_Table = {};
  Slave_Run_No = 0;
}

}  // namespace kx
