#include "boxlink/link_state.h"

#include <exception>
#include <optional>
#include <string>
#include <utility>

#include "boxlink/box_info.h"
#include "boxlink/comm_port.h"
#include "boxlink/line_log.h"
#include "boxlink/link_texts.h"
#include "boxlink/protocol.h"
#include "boxlink/timer_engine.h"
#include "boxlink/transfer.h"
#include "settings/numbers.h"
#include "settings/reference_tune.h"
#include "settings/refresh.h"

namespace kx {

Byte_Image Box_Master_Image;
Byte_Image Box_Slave_Image;
Byte_Image Diff_Flags;
bool Verify_Mode = false;
bool Write_Mode = false;
bool Write_Verify = false;
bool Run_Left_Open = false;

namespace {

using Box_Identity = std::pair<int, std::string>;  ///< serial and dataset number
std::optional<Box_Identity> read_from;             ///< the box that was read last, if it had told

Box_Identity Who_Answered() { return {Box_Serial, Box_SC_ID}; }

void Reset_Texts() {
  rs232_text.Set(words::at_start);
  for (Shown_Text* text : {&rs232_tool_tip, &Debug_txt, &Text1, &uncoded}) text->Set("");
}

}  // namespace

void Note_Master_Read(const Byte_Image& read) {
  read_from.reset();
  if (Box_Info_OK) read_from = Who_Answered();
  Note_Box_Image(read, Box_Info_OK ? byte_chk(Box_SC_ID) : read[map::dataset]);
}

void Note_Master_Run() {
  if (Doubt_Box_Image(Box_Doubt::written)) Refresh_Views(Show_Reference);
}

void Note_Box_Answer() {
  if (!read_from || *read_from == Who_Answered()) return;
  if (Doubt_Box_Image(Box_Doubt::other_box)) Refresh_Views(Show_Reference);
}

void Clear_Transfer_Modes() {
  Verify_Mode = false;
  Write_Mode = false;
  Write_Verify = false;
}

void Refresh_Views(void (*refresh)()) {
  try {
    refresh();
  } catch (const std::exception&) {
    rs232_text.Set(words::error_in_updating);
  }
}

void Reset_Link_State() {
  on_transfer_change = nullptr;
  End_Transfer();
  Reset_Timer_Engine();
  Box_Master_Image = {};
  Box_Slave_Image = {};
  Diff_Flags = {};
  Clear_Transfer_Modes();
  Run_Left_Open = false;
  read_from.reset();
  MSComm1.Reset();
  MSComm1.OnComm = MSComm1_OnComm;
  Box_Info_OK = false;
  Quiet_Close = false;
  Reset_Line_Log();
  Reset_Box_Info();
  Reset_Texts();
}

}  // namespace kx
