#include "workspace/shut_down.h"

#include "boxlink/comm_port.h"
#include "boxlink/transfer.h"
#include "logging/live_log.h"
#include "settings/earlier_tunes.h"
#include "settings/refresh.h"
#include "settings/tune_being_edited.h"

namespace kx {

void Begin_Shutdown() {
  Finish_Log_For_Close();  // while its boxes still open
  Closing = true;
  End_Transfer();
  MSComm1.Set_PortOpen(false);
  if (Keeping_Tunes() && Keep_Earlier_Tune()) Remove_Tune_Being_Edited();
}

}  // namespace kx
