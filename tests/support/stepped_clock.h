#pragma once

#include <cmath>
#include <cstdio>
#include <string>

#include "platform/clock.h"

namespace kx::test {

/// A clock that moves only when told. Starts at 10:00:00 on 2031-05-17.
class Stepped_Clock : public platform::Clock {
 public:
  /// Moves on by @p seconds; over midnight the time of day falls back to 0 and the date stays.
  void Advance(double seconds) {
    elapsed_ += seconds;
    time_of_day_ = std::fmod(time_of_day_ + seconds, 86400.0);
  }
  void Set_Time_Of_Day(double seconds) { time_of_day_ = seconds; }

  /// Seconds advanced since this clock was made.
  [[nodiscard]] double Elapsed() const { return elapsed_; }

  [[nodiscard]] float Seconds_Since_Midnight() const override { return static_cast<float>(time_of_day_); }
  [[nodiscard]] std::string Time_Text() const override {
    const int seconds = static_cast<int>(time_of_day_);
    char text[16];
    std::snprintf(text, sizeof text, "%02d:%02d:%02d", seconds / 3600 % 24, seconds / 60 % 60, seconds % 60);
    return text;
  }
  [[nodiscard]] std::string Date_Text() const override { return "2031-05-17"; }
  [[nodiscard]] long long Monotonic_Microseconds() const override {
    return static_cast<long long>(elapsed_ * 1e6);
  }

 private:
  double time_of_day_ = 36000;
  double elapsed_ = 0;
};

}  // namespace kx::test
