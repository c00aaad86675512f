#include <string>

#include "boxlink/box_info.h"
#include "boxlink/comm_port.h"
#include "boxlink/image_block.h"
#include "boxlink/link_state.h"
#include "boxlink/link_texts.h"
#include "boxlink/protocol.h"
#include "boxlink/sync_steps.h"
#include "boxlink/transfer.h"
#include "settings/message.h"
#include "settings/refresh.h"

namespace kx::sync {
namespace {

void Report_Verify_Start() {
  if (Write_Mode) return Add_To_Journal(With_Time(words::verify_started));
  if (Write_Verify) return Add_To_Journal(With_Time(words::write_verify_started));
  Report_First_Step(words::verify_started);
}

/// @return true when there is a mismatch.
bool Compare_Bytes() {
  bool mismatch = false;
  for (int i = 0; i <= map::last_compared; ++i) {
    if (Current_Transfer().image[i] == Box_Master_Image[i]) continue;
    mismatch = true;
    Diff_Flags[i] = 255;
    if (!Write_Mode) Add_To_Journal("Master miss match " + std::to_string(i));
  }
  Add_To_Journal(mismatch ? "Some master miss match" : "No master miss match");
  return mismatch;
}

Verdict Compare_Master() {
  std::string digits;
  if (!Fetch_Digits("rd", master_marker, digits)) return Verdict::not_read;
  Decode_Digits(digits, map::last_compared, Box_Master_Image);
  Byte_Image whole;
  Decode_Digits(digits, Byte_Image::size - 1, whole);
  Note_Master_Read(whole);
  Refresh_Views(Show_Reference);
  return Compare_Bytes() ? Verdict::different : Verdict::equal;
}

/// The worse of what the master and the slave have come to.
Verdict Compare_Both() {
  const Verdict master = Compare_Master();
  if (master == Verdict::not_read || !Slave_Present) return master;
  const Verdict slave = Compare_Slave();
  return slave == Verdict::equal ? master : slave;
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

/// What was not read is not compared, so nothing may be sent for it.
void Report_Not_Read() {
  Diff_Flags = {};
  if (!Write_Verify) Tell("Could not read");
  Report_Step(words::verify_aborted);
}

bool Compare() {
  const Verdict verdict = Compare_Both();
  switch (verdict) {
    case Verdict::equal:
      Report_Match();
      break;
    case Verdict::different:
      Report_Mismatch();
      break;
    case Verdict::not_read:
      Report_Not_Read();
      break;
  }
  Finish_Read(Update_All);
  return verdict != Verdict::not_read;
}

/// Opens the port and asks who is there; when nobody tells, the port is closed and @p aborted said.
bool Answered(std::string_view aborted) {
  if (!Open_And_Ask()) {
    Add_To_Journal(rs232_text.Text());
    return false;
  }
  if (Box_Info_OK) return true;
  MSComm1.Set_PortOpen(false);
  Report_Step(aborted);
  return false;
}

bool Ask_And_Compare() {
  if (!Answered(words::verify_aborted)) return false;
  MSComm1.Set_PortOpen(false);
  return Answered(words::read_aborted) && Compare();
}

}  // namespace

bool Verify() {
  Verify_Mode = true;
  Diff_Flags = {};
  Report_Verify_Start();
  const bool compared = Ask_And_Compare();
  if (!compared && Write_Verify) Tell("Write verify failed!", platform::Icon::critical);
  Verify_Mode = false;
  return compared;
}

}  // namespace kx::sync
