#pragma once

#include <initializer_list>
#include <string>
#include <vector>

#include "boxlink/protocol.h"
#include "boxlink/timer_engine.h"
#include "boxlink/timer_state.h"
#include "boxlink/transfer.h"
#include "settings/message.h"
#include "support/link_fixture.h"

namespace kx {

/// The timer-driven engine against the simulated box, in process and on a stepped clock.
class Timer_Engine : public test::Link_Fixture {
 protected:
  Timer_Engine() {
    refresh_hooks.update_all = [this] { refreshed_ += 'a'; };
    refresh_hooks.update_tabs = [this] { refreshed_ += 't'; };
    rs232_text.On_Change([this] { statuses_.push_back(Status()); });
    on_transfer_change = [this] { changes_.push_back(Transfer_Running()); };
  }
  ~Timer_Engine() override { rs232_text.On_Change(nullptr); }
  void TearDown() override {
    EXPECT_FALSE(Transfer_Running() || Verify_Mode || Write_Mode || Write_Verify || Rx_Reading ||
                 Quiet_Close);
    EXPECT_EQ(MSComm1.PortOpen(), port_stays_open_);
    const std::size_t sent = port_.writes.size();
    loop_.Run(0.2);
    EXPECT_EQ(port_.writes.size(), sent) << "a timer goes on";
  }

  void Run_To_End(void (*click)()) {
    statuses_.clear();
    port_.writes.clear();
    Guarded(click);
    for (const double limit = clock_.Elapsed() + 30; Transfer_Running() && clock_.Elapsed() < limit;)
      loop_.Do_Events();
  }
  void Expect_Boxes(std::initializer_list<const char*> texts) {
    for (const char* text : texts) ask_.Expect(text);
  }
  /// A box that has no slave leaves three questions of a write unanswered.
  void Write_To_Lone_Master() {
    Expect_Boxes({"ERROR 4", "ERROR 6", "ERROR 3"});
    Run_To_End(Com_knapp3_Click);
  }
  [[nodiscard]] static std::string Hex(int i) { return dec2hex(CardByte[i], 2); }

  std::string refreshed_;
  std::vector<std::string> statuses_;
  std::vector<bool> changes_;
  bool port_stays_open_ = false;
};

}  // namespace kx
