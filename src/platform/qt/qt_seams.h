#pragma once

#include "platform/qt/qt_ask.h"
#include "platform/qt/qt_clock.h"
#include "platform/qt/qt_desktop.h"
#include "platform/qt/qt_event_loop.h"
#include "platform/qt/qt_serial_port.h"
#ifdef _WIN32
#include "platform/windows/port_devices.h"
#else
#include "platform/linux/port_devices.h"
#endif

namespace kx::platform {

#ifdef _WIN32
using System_Port_Devices = Windows_Port_Devices;
#else
using System_Port_Devices = Linux_Port_Devices;
#endif

/// The real outside world, one of each. Made after the application object and kept until the last form has
/// gone.
struct Qt_Seams {
  Qt_Clock clock;
  Qt_Event_Loop event_loop;
  Qt_Ask ask;
  Qt_Serial_Port serial_port;
  System_Port_Devices port_devices;
  Qt_Desktop desktop;

  /// Makes these the seams of the program.
  void Install();
};

}  // namespace kx::platform
