#pragma once

#include <string>

#include "boxlink/protocol.h"
#include "boxlink/sync_engine.h"
#include "boxlink/transfer.h"
#include "support/link_fixture.h"

namespace kx {

/// The synchronous engine against the simulated box, in process and on a stepped clock.
class Sync_Engine : public test::Link_Fixture {
 protected:
  Sync_Engine() {
    card_data_file = "Track day.kxs";
    refresh_hooks.update_all = [this] { refreshed_ += 'a'; };
    refresh_hooks.update_tabs = [this] { refreshed_ += 't'; };
  }
  /// Every way out of a transfer leaves the line free and the modes unset.
  void TearDown() override {
    EXPECT_FALSE(Transfer_Running() || Verify_Mode || Write_Mode || Write_Verify);
    EXPECT_EQ(MSComm1.PortOpen(), port_stays_open_);
  }

  [[nodiscard]] static std::string Journal() { return test::Without_Times(Debug_txt.Text()); }
  std::uint8_t& Master(int i) { return Box().Master[static_cast<std::size_t>(i)]; }

  /// What was sent to write, without the queries around it.
  [[nodiscard]] std::string Written() const {
    const std::string sent = port_.Sent();
    const std::size_t first = sent.find("bw");
    return first == std::string::npos ? "" : sent.substr(first, sent.find("ue") - first);
  }

  std::string refreshed_;
  bool port_stays_open_ = false;
};

}  // namespace kx
