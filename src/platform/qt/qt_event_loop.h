#pragma once

#include <QTimer>

#include "platform/event_loop.h"

namespace kx::platform {

/// A QTimer as exact as the system can make it. Nothing that a handler throws reaches Qt, which could not
/// carry it: the program's last guard shows its text.
class Qt_Interval_Timer : public Interval_Timer {
 public:
  Qt_Interval_Timer();
  void Set_Interval(int milliseconds) override;
  void Set_Enabled(bool enabled) override;
  [[nodiscard]] bool Enabled() const override;
  void On_Tick(std::function<void()> handler) override;

 private:
  QTimer timer_;
  std::function<void()> handler_;
};

/// The event loop of the application object, which must outlive every call. Posted actions stand under the
/// same guard as ticks.
class Qt_Event_Loop : public Event_Loop {
 public:
  void Do_Events() override;
  void Post(std::function<void()> action) override;
  [[nodiscard]] std::unique_ptr<Interval_Timer> Make_Timer() override;
};

}  // namespace kx::platform
