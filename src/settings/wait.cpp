#include "settings/wait.h"

#include "platform/seams.h"
#include "settings/refresh.h"

namespace kx {

Wait_Limit::Wait_Limit(double seconds)
    : start_(platform::seams.clock->Seconds_Since_Midnight()), end_(start_ + seconds) {}

bool Wait_Limit::Passed() const {
  const double now = platform::seams.clock->Seconds_Since_Midnight();
  return Closing || now < start_ || now >= end_;
}

void Do_Events() { platform::seams.event_loop->Do_Events(); }

}  // namespace kx
