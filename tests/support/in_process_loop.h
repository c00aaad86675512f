#pragma once

#include <deque>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

#include "platform/event_loop.h"
#include "settings/message.h"
#include "support/stepped_clock.h"

namespace kx::test {

/// An event loop on a stepped clock: each turn moves the clock on, so that a wait that spins comes to its
/// end, and then runs what is due. Ticks stand under the program's last guard, as in the real loop.
class In_Process_Loop : public platform::Event_Loop {
 public:
  explicit In_Process_Loop(Stepped_Clock& clock, double seconds_a_turn = 0.001)
      : clock_(clock), seconds_a_turn_(seconds_a_turn) {}

  /// What a test lets happen at each turn, before timers and posted actions: a click, arriving text.
  std::function<void()> on_turn;

  void Set_Turn(double seconds) { seconds_a_turn_ = seconds; }

  void Do_Events() override {
    clock_.Advance(seconds_a_turn_);
    if (on_turn) on_turn();
    for (std::size_t waiting = posted_.size(); waiting > 0 && !posted_.empty(); --waiting) {
      const auto action = std::move(posted_.front());
      posted_.pop_front();
      action();
    }
    for (const auto& timer : std::vector(timers_)) timer->Run_If_Due(clock_.Elapsed());
  }

  /// Turns until @p seconds have passed on the clock.
  void Run(double seconds) {
    for (const double end = clock_.Elapsed() + seconds; clock_.Elapsed() < end;) Do_Events();
  }

  void Post(std::function<void()> action) override { posted_.push_back(std::move(action)); }

  [[nodiscard]] std::unique_ptr<platform::Interval_Timer> Make_Timer() override {
    timers_.push_back(std::make_shared<State>(clock_));
    return std::make_unique<Timer>(*this, timers_.back());
  }

 private:
  struct State {
    explicit State(Stepped_Clock& of) : clock(of) {}
    void Run_If_Due(double now) {
      if (!enabled || running || now < due) return;
      due = now + interval;
      running = true;  // a tick does not run inside itself
      const auto tick = handler;
      if (tick) Guarded(tick);
      running = false;
    }
    Stepped_Clock& clock;
    double interval = 0;  // seconds
    double due = 0;
    bool enabled = false;
    bool running = false;
    std::function<void()> handler;
  };

  class Timer : public platform::Interval_Timer {
   public:
    Timer(In_Process_Loop& loop, std::shared_ptr<State> state) : loop_(loop), state_(std::move(state)) {}
    ~Timer() override {
      state_->enabled = false;
      std::erase(loop_.timers_, state_);
    }
    Timer(const Timer&) = delete;
    Timer& operator=(const Timer&) = delete;
    void Set_Interval(int milliseconds) override {
      state_->interval = milliseconds / 1000.0;
      state_->due = state_->clock.Elapsed() + state_->interval;
    }
    void Set_Enabled(bool enabled) override {
      if (enabled && !state_->enabled) state_->due = state_->clock.Elapsed() + state_->interval;
      state_->enabled = enabled;
    }
    [[nodiscard]] bool Enabled() const override { return state_->enabled; }
    void On_Tick(std::function<void()> handler) override { state_->handler = std::move(handler); }

   private:
    In_Process_Loop& loop_;
    std::shared_ptr<State> state_;
  };

  Stepped_Clock& clock_;
  double seconds_a_turn_;
  std::deque<std::function<void()>> posted_;
  std::vector<std::shared_ptr<State>> timers_;
};

}  // namespace kx::test
