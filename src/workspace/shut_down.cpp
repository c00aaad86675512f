#include "workspace/shut_down.h"

#include "boxlink/comm_port.h"
#include "settings/refresh.h"

namespace kx {

void Begin_Shutdown() {
  Closing = true;
  MSComm1.Set_PortOpen(false);
}

}  // namespace kx
