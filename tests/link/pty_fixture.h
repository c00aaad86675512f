#pragma once

#include "boxlink/comm_port.h"
#include "boxlink/link_state.h"
#include "platform/qt/qt_clock.h"
#include "platform/qt/qt_event_loop.h"
#include "platform/qt/qt_serial_port.h"
#include "settings/wait.h"
#include "sim/pty_box.h"
#include "support/link_fixture.h"

namespace kx::test {

/// The link on the real clock, loop and port object, with a simulated box on a pseudo terminal as COM9.
class Pty_Fixture : public Link_State_Fixture {
 protected:
  Pty_Fixture() {
    platform::seams.clock = &clock_;
    platform::seams.event_loop = &loop_;
    platform::seams.serial_port = &port_;
    Reset_Link_State();
  }
  ~Pty_Fixture() override { Reset_Link_State(); }

  /// Another box at another terminal; a port that is open on the old one finds it gone.
  void Plug_In_Box(const sim::Box_Contents& contents, const sim::Faults& faults = {}) {
    box_.Stop();
    for (const Wait_Limit limit(5); MSComm1.PortOpen() && !limit.Passed();) Do_Events();
    box_.With_Line([&](sim::Line& line) { line = sim::Line(sim::Box(contents), faults); });
    ASSERT_EQ(box_.Start(), "");
    Write_Key("com_device9", box_.Path());
  }
  void Set_Faults(const std::string& knobs) {
    box_.With_Line([&](sim::Line& line) { line.Set_Faults(Faults_Of(knobs)); });
  }
  [[nodiscard]] sim::Box_Contents Plugged_In_Box() {
    return box_.With_Box([](sim::Box& box) { return box.Contents(); });
  }

  platform::Qt_Clock clock_;
  platform::Qt_Event_Loop loop_;
  platform::Qt_Serial_Port port_;
  sim::Pty_Box box_{sim::Line()};
};

}  // namespace kx::test
