#include "platform/qt/qt_clock.h"

#include <QDate>
#include <QTime>
#include <chrono>

namespace kx::platform {

float Qt_Clock::Seconds_Since_Midnight() const {
  return static_cast<float>(QTime::currentTime().msecsSinceStartOfDay() / 1000.0);
}

// Given as a format, date and time are written in plain digits; only the named formats follow the locale.
std::string Qt_Clock::Time_Text() const { return QTime::currentTime().toString("HH:mm:ss").toStdString(); }

std::string Qt_Clock::Date_Text() const { return QDate::currentDate().toString("yyyy-MM-dd").toStdString(); }

long long Qt_Clock::Monotonic_Microseconds() const {
  const auto now = std::chrono::steady_clock::now().time_since_epoch();
  return std::chrono::duration_cast<std::chrono::microseconds>(now).count();
}

}  // namespace kx::platform
