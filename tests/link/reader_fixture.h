#pragma once

#include <cstdlib>
#include <string>

#include "cards/card_paths.h"
#include "link/pty_fixture.h"
#include "platform/readers/loaded_chipdrive.h"
#include "platform/readers/loaded_todos.h"
#include "platform/readers/pcsc_service.h"
#include "settings/history.h"
#include "sim/smart_card.h"

namespace kx::test {

/// The readers' libraries as the program loads them, with simulated ones in their place and the card in a
/// file, on the real clock and loop.
class Reader_Fixture : public Pty_Fixture {
 protected:
  Reader_Fixture() {
    ::setenv("KXSIM_CARD", card_file_.c_str(), 1);
    Put_In({});
    platform::seams.chipdrive = &chipdrive_;
    platform::seams.todos = &todos_;
    platform::seams.card_service = &service_;
    Reset_History();
    Reset_Cards();
  }
  ~Reader_Fixture() override {
    Reset_Cards();
    ::unsetenv("KXSIM_CARD");
  }

  void Put_In(const sim::Smart_Card& card, const std::string& faults = {}) {
    ASSERT_EQ(sim::Write_Card(card_file_, card, faults), "");
  }
  [[nodiscard]] sim::Image Card_In_File() const { return sim::Read_Card(card_file_).Card.Memory; }

  std::string card_file_ = folder_.Path("card.kxs");
  platform::Loaded_Chipdrive chipdrive_{KXBENCH_SIMULATED_READERS};
  platform::Loaded_Todos todos_{KXBENCH_SIMULATED_READERS};
  platform::Pcsc_Service service_;
};

}  // namespace kx::test
