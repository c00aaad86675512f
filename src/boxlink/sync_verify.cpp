#include <string>

#include "boxlink/box_info.h"
#include "boxlink/comm_port.h"
#include "boxlink/image_block.h"
#include "boxlink/link_state.h"
#include "boxlink/link_texts.h"
#include "boxlink/protocol.h"
#include "boxlink/sync_steps.h"
#include "settings/message.h"
#include "settings/refresh.h"

namespace kx::sync {
namespace {

void Report_Verify_Start() {
  if (Write_Mode) return Add_To_Journal(With_Time(words::verify_started));
  if (Write_Verify) return Add_To_Journal(With_Time(words::write_verify_started));
  Report_First_Step(words::verify_started);
}

/// With a master that does not answer, the image of the last comparison stands for it.
void Fetch_Master() {
  std::string digits;
  if (!Fetch_Digits("rd", master_marker, digits)) return;
  Decode_Digits(digits, map::last_compared, Box_Master_Image);
  Diff_Flags.Fill(0, map::last_compared, 0);
}

/// @return true when there is a mismatch.
bool Compare_Master() {
  bool mismatch = false;
  for (int i = 0; i <= map::last_compared; ++i) {
    if (CardByte[i] == Box_Master_Image[i]) continue;
    mismatch = true;
    Diff_Flags[i] = 255;
    if (!Write_Mode) Add_To_Journal("Master miss match " + std::to_string(i));
  }
  Add_To_Journal(mismatch ? "Some master miss match" : "No master miss match");
  return mismatch;
}

void Report_Mismatch() {
  if (Write_Verify) Tell("Write verify failed!", platform::Icon::critical);
  if (Write_Mode) return;
  rs232_text.Set(With_Time(words::verify_failed));
  Add_To_Journal(With_Time(words::verify_finished_and_failed));
}

void Report_Match() {
  Add_To_Journal(With_Time(Write_Verify ? words::write_verify_finished : words::verify_finished));
  if (!Write_Mode) rs232_text.Set(With_Time(words::verify_finished));
}

void Compare() {
  if (!Open_And_Ask()) return;
  if (!Box_Info_OK) {
    Report_Step(words::read_aborted);
    MSComm1.Set_PortOpen(false);
    return;
  }
  Fetch_Master();
  bool mismatch = Compare_Master();
  if (Slave_Present) mismatch |= Compare_Slave();
  mismatch ? Report_Mismatch() : Report_Match();
  Finish_Read(Update_All);
  Verify_Mode = false;
}

}  // namespace

void Verify() {
  Verify_Mode = true;
  Report_Verify_Start();
  if (!Open_And_Ask()) return Add_To_Journal(rs232_text.Text());
  MSComm1.Set_PortOpen(false);
  if (Box_Info_OK) return Compare();
  Report_Step(words::verify_aborted);
}

}  // namespace kx::sync
