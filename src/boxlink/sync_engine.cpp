#include "boxlink/sync_engine.h"

#include "boxlink/comm_port.h"
#include "boxlink/link_texts.h"
#include "boxlink/sync_steps.h"
#include "boxlink/transfer.h"

namespace kx {
namespace {

void Run(void (*transfer)(), std::string_view aborted) {
  const auto end_early = [aborted](std::string_view) {
    MSComm1.Set_PortOpen(false);
    Report_Step(aborted);
  };
  Run_Transfer({.end_early = end_early}, transfer);
}

}  // namespace

void Read_Settings_Click() { Run(sync::Read, words::read_aborted); }

void Verify_Settings_Click() {
  Run([] { (void)sync::Verify(); }, words::verify_aborted);
}

void Write_Settings_Click() { Run(sync::Write, words::write_aborted); }

}  // namespace kx
