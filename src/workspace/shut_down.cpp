#include "workspace/shut_down.h"

#include "boxlink/comm_port.h"
#include "boxlink/transfer.h"
#include "logging/live_log.h"
#include "settings/refresh.h"

namespace kx {

void Begin_Shutdown() {
  Finish_Log_For_Close();  // while its boxes still open
  Closing = true;
  End_Transfer();
  MSComm1.Set_PortOpen(false);
}

}  // namespace kx
