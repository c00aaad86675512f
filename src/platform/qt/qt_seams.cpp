#include "platform/qt/qt_seams.h"

#include "platform/seams.h"

namespace kx::platform {

void Qt_Seams::Install() { seams = {&clock, &event_loop, &ask, &serial_port, &port_devices, &desktop}; }

}  // namespace kx::platform
