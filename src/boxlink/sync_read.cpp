#include <string>
#include <utility>

#include "boxlink/box_info.h"
#include "boxlink/comm_port.h"
#include "boxlink/image_block.h"
#include "boxlink/link_state.h"
#include "boxlink/link_texts.h"
#include "boxlink/protocol.h"
#include "boxlink/sync_steps.h"
#include "boxlink/transfer.h"
#include "settings/earlier_tunes.h"
#include "settings/message.h"
#include "settings/numbers.h"
#include "settings/reference_tune.h"
#include "settings/refresh.h"
#include "settings/session.h"
#include "settings/text_encoding.h"

namespace kx::sync {
namespace {

constexpr double image_limit = 1.0;  // seconds
constexpr const char* failed_read_file = "ReadFromBox.kxs";

/// A tune that could not be read must not be saved over the file of another.
void Abort_Read() {
  Report_Step(words::read_aborted);
  card_data_file = failed_read_file;
  Set_Title(card_data_file);
  Finish_Read(Update_All);
}

void Load(const std::string& digits) {
  Byte_Image image;
  Decode_Digits(digits, Byte_Image::size - 1, image);
  Replace_Tune(image, box_source);
  Note_Master_Read(image);
  Note_Opened_Tune();
  Report_Step(words::read_finished);
  Finish_Read(Refresh_Whole_Image);
}

}  // namespace

bool Dataset_Accepted(int selected, std::string_view go_on) {
  if (Val_Any(Box_SC_ID) == selected) return true;
  return Confirm("The System has different dataset ID (" + Box_SC_ID +
                 ") than currently selected in preferences (" + std::to_string(selected) + "), " +
                 std::string(go_on));
}

bool Fetch_Digits(std::string_view command, char marker, std::string& digits) {
  std::string received;
  if (!Send_Wait_Rec(command, image_limit, image_block_length, received)) return false;
  auto found = Image_Digits(received, marker);
  if (!found) return false;
  digits = std::move(*found);
  return true;
}

bool Open_And_Ask() {
  if (!Open_For_Transfer()) return false;
  Drop_Input();
  Yield();
  Get_Box_Info();
  return true;
}

void Finish_Read(void (*refresh)()) {
  MSComm1.Set_PortOpen(false);
  Refresh_Views(refresh);
}

void Read() {
  if (!Open_And_Ask()) return;
  if (!Box_Info_OK) return Report_Step(words::read_aborted);
  Report_First_Step(words::read_started);
  std::string digits;
  if (!Fetch_Digits("rd", master_marker, digits)) {
    Tell("Could not read");
    return Abort_Read();
  }
  const std::string question = "load anyway?" + Crlf() + "(Dataset ID is not changed.)";
  Dataset_Accepted(DatasetID, question) ? Load(digits) : Abort_Read();
}

}  // namespace kx::sync
