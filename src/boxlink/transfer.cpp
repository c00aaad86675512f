#include "boxlink/transfer.h"

#include <string>
#include <utility>

#include "boxlink/comm_port.h"
#include "boxlink/link_state.h"
#include "boxlink/link_texts.h"
#include "boxlink/protocol.h"
#include "settings/refresh.h"
#include "settings/session.h"
#include "settings/wait.h"

namespace kx {

std::function<void()> on_transfer_change;

namespace {

std::optional<Transfer> current;

void Tell_Change() {
  if (on_transfer_change) on_transfer_change();
}

/// The "$" is all that brings a box out of its run.
void Leave_Run() {
  if (!std::exchange(current->run_open, false)) return;
  Run_Left_Open = true;
  if (!MSComm1.PortOpen()) return;
  try {
    MSComm1.Output("$");
  } catch (const Failure&) {
    // The next operation sends it.
  }
}

void Report_Early_End(std::string_view word) {
  if (current->confirmed)
    Add_To_Journal("Bytes confirmed by the box: " + std::to_string(*current->confirmed));
  if (current->kind.end_early) current->kind.end_early(word);
}

/// The one way out. @p early has the reason of an end before its time.
void Finish(const Transfer_Ended* early) {
  if (current->kind.rest != nullptr) current->kind.rest();
  Leave_Run();
  if (early != nullptr) Report_Early_End(early->word);
  Clear_Transfer_Modes();
  current.reset();
  Tell_Change();
}

bool Goes_On() { return current->kind.goes_on != nullptr && current->kind.goes_on(); }

void Step(const std::function<void()>& step) {
  current->inside_step = true;
  try {
    Fail_If_Ended();
    step();
  } catch (const Transfer_Ended& early) {
    return Finish(&early);
  } catch (...) {
    const Transfer_Ended early{words::communication_error};
    Finish(&early);
    throw;
  }
  current->inside_step = false;
  if (!Goes_On()) Finish(nullptr);
}

}  // namespace

void Run_Transfer(Transfer_Kind kind, const std::function<void()>& step) {
  if (current) return;
  Leave_Other_Port();
  current.emplace(Transfer{.kind = std::move(kind), .port = Com_Port_Number, .image = CardByte});
  Tell_Change();
  Step(step);
}

void Step_Transfer(const std::function<void()>& step) {
  if (current && !current->inside_step) Step(step);
}

void End_Transfer() {
  if (!current) return;
  Leave_Run();
  current->end_asked = true;
  const Transfer_Ended early;
  if (!current->inside_step) Finish(&early);
}

Transfer& Current_Transfer() {
  if (!current) throw Failure("No transfer runs");
  return *current;
}

bool Transfer_Running() { return current.has_value(); }

void Begin_Sending() {
  Stamp_Image();
  current->image = CardByte;
  current->confirmed = 0;
}

std::vector<int> Bytes_To_Write(const Byte_Image& box, const Byte_Image& tune) {
  const Byte_Image sent = Stamped(tune);
  std::vector<int> bytes;
  for (int i = 0; i <= map::last_compared; ++i) {
    if (sent[i] != box[i]) bytes.push_back(i);
  }
  return bytes;
}

void Yield() {
  Do_Events();
  Fail_If_Ended();
}

bool Transfer_Ending() { return Closing || (current && current->end_asked); }

void Fail_If_Ended() {
  if (Transfer_Ending()) throw Transfer_Ended();
}

}  // namespace kx
