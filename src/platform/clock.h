#pragma once

#include <string>

namespace kx::platform {

/// The time of day, as the link's waits and the time stamps need it.
class Clock {
 public:
  virtual ~Clock() = default;

  /// Seconds since local midnight, single precision as the limits of the box link were tuned with. Falls back
  /// to 0 at midnight; see Wait_Limit for what a wait makes of that.
  [[nodiscard]] virtual float Seconds_Since_Midnight() const = 0;

  /// Local time of day as "hh:mm:ss", 24 hours, whatever the locale.
  [[nodiscard]] virtual std::string Time_Text() const = 0;

  /// Local date as "yyyy-mm-dd", whatever the locale.
  [[nodiscard]] virtual std::string Date_Text() const = 0;

  /// Microseconds on a clock that never steps back; its zero means nothing. For the line log only.
  [[nodiscard]] virtual long long Monotonic_Microseconds() const = 0;
};

}  // namespace kx::platform
