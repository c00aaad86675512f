#pragma once

#include "platform/qt/qt_ask.h"
#include "platform/qt/qt_clock.h"
#include "platform/qt/qt_desktop.h"
#include "platform/qt/qt_event_loop.h"
#include "platform/qt/qt_port_devices.h"
#include "platform/qt/qt_serial_port.h"

namespace kx::platform {

/// The real outside world, one of each. Made after the application object and kept until the last form has
/// gone.
struct Qt_Seams {
  Qt_Clock clock;
  Qt_Event_Loop event_loop;
  Qt_Ask ask;
  Qt_Serial_Port serial_port;
  Qt_Port_Devices port_devices;
  Qt_Desktop desktop;

  /// Makes these the seams of the program.
  void Install();
};

}  // namespace kx::platform
