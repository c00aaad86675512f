#pragma once

#include "platform/ask.h"
#include "platform/card_libraries.h"
#include "platform/clock.h"
#include "platform/desktop.h"
#include "platform/event_loop.h"
#include "platform/port_devices.h"
#include "platform/serial_port.h"

namespace kx::platform {

/// The outside world, set once before the main form is made: by main.cpp, a benchmark or a test fixture. The
/// program owns none of these.
struct Seams {
  Clock* clock = nullptr;
  Event_Loop* event_loop = nullptr;
  Ask* ask = nullptr;
  Serial_Port* serial_port = nullptr;
  Port_Devices* port_devices = nullptr;
  Desktop* desktop = nullptr;
  Chipdrive_Library* chipdrive = nullptr;
  Todos_Library* todos = nullptr;
  Card_Service* card_service = nullptr;
};

extern Seams seams;

}  // namespace kx::platform
