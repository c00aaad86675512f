#include "boxlink/sync_engine.h"

#include "boxlink/comm_port.h"
#include "boxlink/link_state.h"
#include "boxlink/link_texts.h"
#include "boxlink/protocol.h"
#include "boxlink/sync_steps.h"

namespace kx {
namespace {

void End_Early(std::string_view aborted) {
  MSComm1.Set_PortOpen(false);
  Report_Step(aborted);
}

/// Runs one transfer, with the line to itself and the modes cleared behind it.
void Run(void (*transfer)(), std::string_view aborted) {
  const Transfer_Guard running;
  if (!running.Entered()) return;
  struct Modes {
    ~Modes() { Clear_Transfer_Modes(); }
  } const modes;
  try {
    transfer();
  } catch (const Transfer_Ended&) {
    End_Early(aborted);
  } catch (...) {
    End_Early(aborted);
    throw;
  }
}

}  // namespace

void Read_Settings_Click() { Run(sync::Read, words::read_aborted); }

void Verify_Settings_Click() { Run(sync::Verify, words::verify_aborted); }

void Write_Settings_Click() { Run(sync::Write, words::write_aborted); }

}  // namespace kx
