#include <string>

#include "boxlink/image_block.h"
#include "boxlink/link_state.h"
#include "boxlink/link_texts.h"
#include "boxlink/sync_steps.h"
#include "boxlink/transfer.h"

namespace kx::sync {
namespace {

/// The slave mark is set in the slave only, which is no mismatch.
bool Differs(int i) {
  const std::uint8_t wanted = Current_Transfer().image[i];
  if (wanted == Box_Slave_Image[i]) return false;
  return i != map::slave_mode.byte || (wanted ^ Box_Slave_Image[i]) != map::slave_mode.mask;
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

Verdict Compare_Slave() {
  std::string digits;
  if (!Fetch_Digits("rs", slave_marker, digits)) return Verdict::not_read;
  Decode_Digits(digits, map::last_compared, Box_Slave_Image);
  bool mismatch = Compare_Bytes();
  Yield();
  mismatch |= Needs_Slave_Mode();
  Add_To_Journal(mismatch ? "Some slave miss match" : "No slave miss match");
  return mismatch ? Verdict::different : Verdict::equal;
}

}  // namespace kx::sync
