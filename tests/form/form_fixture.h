#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QString>
#include <memory>
#include <string>

#include "platform/qt/qt_seams.h"
#include "settings/refresh.h"
#include "support/queued_answers.h"
#include "support/temp_dir.h"
#include "workspace/BoostProgMain.h"

namespace kx {

/// The real main form on the real event loop, in a folder with the shipped files; boxes and file dialogs are
/// answered from a queue.
class Form_Fixture : public testing::Test {
 protected:
  void SetUp() override;
  void TearDown() override;

  [[nodiscard]] BoostProgMain& form() { return *form_; }
  [[nodiscard]] std::string folder() const { return folder_.Path() + "/"; }

  /// The control of that name; a missing one fails the test.
  template <typename Widget>
  Widget* Find(std::string_view name) {
    auto* widget = form_->findChild<Widget*>(QString::fromUtf8(name.data(), static_cast<int>(name.size())));
    EXPECT_NE(widget, nullptr) << name;
    return widget;
  }

  /// Brings a table on show, as by clicks on its tabs.
  void Show(Table table);

  /// Clicks into the row of the table's grid.
  void Pick(Table table, int row);
  void Click(const char* button);
  void Trigger(const char* entry);
  void Write_File(const std::string& name, const std::string& bytes);

  void Expect_Box(const std::string& text, platform::Answer answer = platform::Answer::ok) {
    ask_.Expect(text, answer);
  }
  void Expect_Open_Name(const std::string& name) { ask_.Expect_Name("Open", name); }
  void Expect_Save_Name(const std::string& name) { ask_.Expect_Name("Save As", name); }

  test::Temp_Dir folder_;
  test::Queued_Answers ask_;
  platform::Qt_Seams qt_;
  std::unique_ptr<BoostProgMain> form_;
};

}  // namespace kx
