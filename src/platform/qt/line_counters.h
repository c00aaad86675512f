#pragma once

#include <vector>

#include "platform/serial_port.h"

namespace kx::platform {

/// What the system has counted wrong on a line since its driver was loaded.
struct Line_Counters {
  int framing = 0;
  int overrun = 0;  ///< characters lost in the device or in the system's buffer
  int parity = 0;
  int breaks = 0;
};

/// Counters of the open device @p descriptor; zeros where the device counts nothing.
[[nodiscard]] Line_Counters Read_Line_Counters(int descriptor);

/// One event for each counter that has moved.
[[nodiscard]] std::vector<Line_Event> Line_Errors(const Line_Counters& before, const Line_Counters& after);

}  // namespace kx::platform
