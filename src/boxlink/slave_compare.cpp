#include <string>

#include "boxlink/image_block.h"
#include "boxlink/link_state.h"
#include "boxlink/link_texts.h"
#include "boxlink/protocol.h"
#include "boxlink/sync_steps.h"
#include "settings/wait.h"

namespace kx::sync {
namespace {

/// With a slave that does not answer, the image of the last comparison stands for it.
void Fetch_Slave() {
  std::string digits;
  if (Fetch_Digits("rs", slave_marker, digits)) Decode_Digits(digits, map::last_compared, Box_Slave_Image);
}

/// The slave mark is set in the slave only, which is no mismatch.
bool Differs(int i) {
  if (CardByte[i] == Box_Slave_Image[i]) return false;
  return i != map::slave_mode.byte || (CardByte[i] ^ Box_Slave_Image[i]) != map::slave_mode.mask;
}

bool Compare_Bytes() {
  bool mismatch = false;
  for (int i = 0; i <= map::last_compared; ++i) {
    if (!Differs(i)) continue;
    mismatch = true;
    Diff_Flags[i] = 255;
    if (!Write_Mode) Add_To_Journal("Slave miss match " + std::to_string(i));
  }
  return mismatch;
}

/// A slave that does not stand in slave mode gets its mode byte written, which brings it back.
bool Needs_Slave_Mode() {
  if (Field_Of(Box_Slave_Image, map::slave_mode) == 1) return false;
  Diff_Flags[map::slave_mode.byte] = 255;
  Add_To_Journal(Write_Mode ? "Slave reset to slave " : "Slave need reset to slave ");
  return true;
}

}  // namespace

bool Compare_Slave() {
  Fetch_Slave();
  bool mismatch = Compare_Bytes();
  Do_Events();
  Fail_If_Ended();
  mismatch |= Needs_Slave_Mode();
  Add_To_Journal(mismatch ? "Some slave miss match" : "No slave miss match");
  return mismatch;
}

}  // namespace kx::sync
