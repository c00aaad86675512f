#include "workspace/shut_down.h"

#include "boxlink/comm_port.h"
#include "boxlink/transfer.h"
#include "settings/refresh.h"

namespace kx {

void Begin_Shutdown() {
  Closing = true;
  End_Transfer();
  MSComm1.Set_PortOpen(false);
}

}  // namespace kx
