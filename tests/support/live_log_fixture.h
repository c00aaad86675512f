#pragma once

#include <algorithm>
#include <string>

#include "boxlink/comm_port.h"
#include "boxlink/protocol.h"
#include "logging/live_log.h"
#include "logging/log_settings.h"
#include "logging/log_state.h"
#include "sim/drive.h"
#include "support/link_fixture.h"

namespace kx::test {

/// A log window without windows: the simulated box streams over the scripted port on a stepped clock.
/// Settings of the box are not read and nothing is saved by itself unless a test says so.
class Live_Log_Fixture : public Link_Fixture {
 protected:
  Live_Log_Fixture() {
    Reset_Log_State();
    Reset_Live_Log();
    Load_All_Default_Log_Settings();
    Log_Directory = folder_.Path() + "/";
    log_settings.check_SettingsInLogg = false;
    log_settings.check_AutoSave = false;
    port_.deliver = nullptr;
    loop_.on_turn = [this] { Let_Arrive(); };
  }
  ~Live_Log_Fixture() override {
    Reset_Live_Log();
    Reset_Log_State();
  }

  static void Click() { Guarded(cmd_Open_Com_Click); }

  /// A box as new, with these faults.
  void Plug_In(const std::string& knobs) {
    sim::Box_Contents contents = Box();
    line_ = sim::Line(sim::Box(contents), Faults_Of(knobs));
  }

  void Let_Arrive() {
    if (line_.Hung_Up()) port_.Lose();
    const std::string text = line_.Deliver(clock_.Elapsed());
    if (!text.empty() && port_.Is_Open()) port_.Arrive(text);
  }

  void Expect_Next_Log_Works() {
    Log_File_Unsaved = false;
    Click();
    loop_.Run(4);
    Click();
    EXPECT_GT(Log_Rows, 60);
    EXPECT_FALSE(Log_Running() || MSComm1.PortOpen());
  }

  /// Rows between the start line and the end of "[log_data]" in @p text.
  [[nodiscard]] static std::string Rows_In(const std::string& text) {
    const std::size_t section = text.find("[log_data]\r\n");
    const std::size_t start = text.find("\r\na", section);
    const std::size_t first = text.find('\n', start + 2) + 1;
    return text.substr(first, text.find("[end log_data]", first) - first);
  }

  /// @p size characters of the drive from row @p first on, the first row being 0.
  [[nodiscard]] static std::string Drive_Rows(std::size_t first, std::size_t size) {
    sim::Drive drive;
    for (std::size_t i = 0; i < first; ++i) (void)drive.Next();
    std::string rows;
    while (rows.size() < size) rows += drive.Next().Text;
    return rows.substr(0, size);
  }

  /// Remarks of interruptions in the log.
  [[nodiscard]] static int Marks() {
    int marks = 0;
    const std::string mark = " 'Interuption of log\r\n";
    for (std::size_t at = Log_Data_Text.find(mark); at != std::string::npos;
         at = Log_Data_Text.find(mark, at + 1))
      ++marks;
    return marks;
  }
};

}  // namespace kx::test
