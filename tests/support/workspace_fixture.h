#pragma once

#include <gtest/gtest.h>

#include <map>
#include <string>

#include "platform/desktop.h"
#include "support/in_process_loop.h"
#include "support/listed_devices.h"
#include "support/queued_answers.h"
#include "support/scripted_serial_port.h"
#include "support/stepped_clock.h"
#include "support/temp_dir.h"

namespace kx {

/// Keeps what the program would give to the desktop.
class Kept_Desktop : public platform::Desktop {
 public:
  void Set_Clipboard_Text(const std::string& text) override { clipboard = text; }
  [[nodiscard]] std::string Clipboard_Text() const override { return clipboard; }
  void Open_With_Handler(const std::string& address) override { opened = address; }
  [[nodiscard]] std::string Remembered(const std::string& name) override { return habits[name]; }
  void Remember(const std::string& name, const std::string& text) override { habits[name] = text; }
  [[nodiscard]] std::string System_Name() const override { return "Test OS 1"; }

  std::string clipboard;
  std::string opened;
  std::map<std::string, std::string> habits;
};

/// The whole core as after the start of the program in a folder with the shipped files: reset tune, dataset
/// 108, test doubles on every seam.
class Workspace_Fixture : public testing::Test {
 protected:
  void SetUp() override;
  void TearDown() override;

  /// The next box says @p text.
  void Expect_Box(const std::string& text, platform::Answer answer = platform::Answer::ok) {
    ask_.Expect(text, answer);
  }

  /// Brings a tab of the main form and one of its sub-tabs on show.
  static void Show_Tab(int tab, int sub_tab);

  [[nodiscard]] const std::string& Clipboard() const { return desktop_.clipboard; }

  test::Temp_Dir folder_;
  test::Stepped_Clock clock_;
  test::In_Process_Loop loop_{clock_};
  test::Scripted_Serial_Port port_;
  test::Queued_Answers ask_;
  Kept_Desktop desktop_;
  test::Listed_Devices devices_;
};

}  // namespace kx
