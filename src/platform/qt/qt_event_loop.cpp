#include "platform/qt/qt_event_loop.h"

#include <QCoreApplication>
#include <utility>

#include "settings/message.h"

namespace kx::platform {

Qt_Interval_Timer::Qt_Interval_Timer() {
  timer_.setTimerType(Qt::PreciseTimer);
  QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] {
    const auto handler = handler_;  // a tick may set another handler
    if (handler) Guarded(handler);
  });
}

void Qt_Interval_Timer::Set_Interval(int milliseconds) { timer_.setInterval(milliseconds); }

void Qt_Interval_Timer::Set_Enabled(bool enabled) {
  if (enabled == timer_.isActive()) return;  // starting anew would put off the next tick
  enabled ? timer_.start() : timer_.stop();
}

bool Qt_Interval_Timer::Enabled() const { return timer_.isActive(); }

void Qt_Interval_Timer::On_Tick(std::function<void()> handler) { handler_ = std::move(handler); }

void Qt_Event_Loop::Do_Events() { QCoreApplication::processEvents(); }

void Qt_Event_Loop::Post(std::function<void()> action) {
  QMetaObject::invokeMethod(
      QCoreApplication::instance(), [action = std::move(action)] { Guarded(action); }, Qt::QueuedConnection);
}

std::unique_ptr<Interval_Timer> Qt_Event_Loop::Make_Timer() { return std::make_unique<Qt_Interval_Timer>(); }

}  // namespace kx::platform
