#pragma once

#include <string>

#include "platform/qt/qt_ask.h"
#include "platform/qt/qt_clock.h"
#include "platform/qt/qt_desktop.h"
#include "platform/qt/qt_event_loop.h"
#include "platform/qt/qt_serial_port.h"
#include "platform/readers/loaded_chipdrive.h"
#include "platform/readers/loaded_todos.h"
#include "platform/readers/pcsc_service.h"
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

/// The folder of the program itself, where the libraries of card readers are looked for.
[[nodiscard]] std::string Program_Folder();

/// The real outside world, one of each. Made after the application object and kept until the last form has
/// gone.
struct Qt_Seams {
  /// Looks for the libraries of card readers in @p reader_folder.
  explicit Qt_Seams(const std::string& reader_folder = Program_Folder())
      : chipdrive(reader_folder), todos(reader_folder) {}

  Qt_Clock clock;
  Qt_Event_Loop event_loop;
  Qt_Ask ask;
  Qt_Serial_Port serial_port;
  System_Port_Devices port_devices;
  Qt_Desktop desktop;
  Loaded_Chipdrive chipdrive;
  Loaded_Todos todos;
  Pcsc_Service card_service;

  /// Makes these the seams of the program.
  void Install();
};

}  // namespace kx::platform
