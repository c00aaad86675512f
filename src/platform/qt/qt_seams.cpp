#include "platform/qt/qt_seams.h"

#include <QCoreApplication>

#include "platform/seams.h"

namespace kx::platform {

std::string Program_Folder() { return QCoreApplication::applicationDirPath().toStdString(); }

void Qt_Seams::Install() {
  seams = {&clock,   &event_loop, &ask,   &serial_port, &port_devices,
           &desktop, &chipdrive,  &todos, &card_service};
}

}  // namespace kx::platform
