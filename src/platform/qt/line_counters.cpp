#include "platform/qt/line_counters.h"

#ifdef __linux__
#include <linux/serial.h>
#include <sys/ioctl.h>
#endif

namespace kx::platform {

#ifdef __linux__
Line_Counters Read_Line_Counters(int descriptor) {
  serial_icounter_struct counted{};
  if (ioctl(descriptor, TIOCGICOUNT, &counted) != 0) return {};
  return {counted.frame, counted.overrun + counted.buf_overrun, counted.parity, counted.brk};
}
#else
Line_Counters Read_Line_Counters(int) { return {}; }
#endif

std::vector<Line_Event> Line_Errors(const Line_Counters& before, const Line_Counters& after) {
  std::vector<Line_Event> errors;
  if (after.breaks != before.breaks) errors.push_back(Line_Event::break_signal);
  if (after.framing != before.framing) errors.push_back(Line_Event::framing);
  if (after.overrun != before.overrun) errors.push_back(Line_Event::overrun);
  if (after.parity != before.parity) errors.push_back(Line_Event::parity);
  return errors;
}

}  // namespace kx::platform
