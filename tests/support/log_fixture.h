#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "logging/log_array.h"
#include "logging/log_reader.h"
#include "logging/log_settings.h"
#include "logging/log_state.h"
#include "sensors/log_sensors.h"
#include "support/settings_fixture.h"
#include "support/stepped_clock.h"

namespace kx::test {

/// The log subsystem with the built-in settings and no log, in an empty folder.
class Log_Fixture : public Settings_Fixture {
 protected:
  void SetUp() override {
    Settings_Fixture::SetUp();
    platform::seams.clock = &clock_;
    log_view_hooks = {};
    Reset_Log_State();
    Load_All_Default_Log_Settings();
    Log_Directory = folder_.Path() + "/";
  }
  void TearDown() override {
    log_view_hooks = {};
    Reset_Log_State();
    Settings_Fixture::TearDown();
  }

  /// A row of the present box: RPM field and 19 times @p field, which has three characters.
  static std::string Row(const std::string& rpm, const std::string& field) {
    std::string row = rpm;
    for (int i = 0; i < 19; ++i) row += " " + field;
    return row + " ";
  }

  /// A data section with the given lines between its brackets.
  static std::string Data(const std::vector<std::string>& lines) {
    std::string text = "[log_data]\r\n";
    for (const std::string& line : lines) text += line + "\r\n";
    return text + "[end log_data]\r\n";
  }

  void Expect_Box(const std::string& text, platform::Answer answer = platform::Answer::ok) {
    ask_.Expect(text, answer);
  }

  Stepped_Clock clock_;
};

}  // namespace kx::test
