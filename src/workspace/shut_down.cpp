#include "workspace/shut_down.h"

#include "boxlink/comm_port.h"
#include "boxlink/timer_engine.h"
#include "settings/refresh.h"

namespace kx {

void Begin_Shutdown() {
  Closing = true;
  Stop_Timer_Engine();
  MSComm1.Set_PortOpen(false);
}

}  // namespace kx
