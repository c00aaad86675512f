#pragma once

#include <functional>
#include <memory>

namespace kx::platform {

/// A repeating timer, off when made. Its ticks come from the event loop, inside waits as well.
class Interval_Timer {
 public:
  virtual ~Interval_Timer() = default;
  virtual void Set_Interval(int milliseconds) = 0;
  virtual void Set_Enabled(bool enabled) = 0;
  [[nodiscard]] virtual bool Enabled() const = 0;
  virtual void On_Tick(std::function<void()> handler) = 0;
};

class Event_Loop {
 public:
  virtual ~Event_Loop() = default;

  /// Lets every waiting event run its handler, then returns without sleeping. Any handler may run in here.
  virtual void Do_Events() = 0;

  /// Runs @p action from the event loop, after the present handler has returned.
  virtual void Post(std::function<void()> action) = 0;

  [[nodiscard]] virtual std::unique_ptr<Interval_Timer> Make_Timer() = 0;
};

}  // namespace kx::platform
