#pragma once

#include "platform/clock.h"

namespace kx::platform {

/// The system's local time, to the millisecond.
class Qt_Clock : public Clock {
 public:
  [[nodiscard]] float Seconds_Since_Midnight() const override;
  [[nodiscard]] std::string Time_Text() const override;
  [[nodiscard]] std::string Date_Text() const override;
  [[nodiscard]] long long Monotonic_Microseconds() const override;
};

}  // namespace kx::platform
