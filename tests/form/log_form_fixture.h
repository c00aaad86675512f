#pragma once

#include <QAbstractButton>
#include <QApplication>
#include <QTest>
#include <string>

#include "form_fixture.h"
#include "logging/KX_Log.h"
#include "logging/log_files.h"
#include "logging/log_settings.h"
#include "logging/log_state.h"
#include "settings/text_encoding.h"
#include "widgets/log_chart.h"

namespace kx {

/// The log window, open over the main form, in a folder with the shipped files.
class Log_Form_Fixture : public Form_Fixture {
 protected:
  void SetUp() override {
    Form_Fixture::SetUp();
    Trigger("log_window");
    log_ = Window("KX_Log");
    ASSERT_NE(log_, nullptr);
  }

  static QWidget* Window(const QString& name) {
    for (QWidget* window : QApplication::topLevelWidgets()) {
      if (window->objectName() == name) return window;
    }
    ADD_FAILURE() << "no window " << name.toStdString();
    return nullptr;
  }

  template <typename Widget>
  static Widget* Part(const QWidget* window, const QString& name) {
    auto* widget = window->findChild<Widget*>(name);
    EXPECT_NE(widget, nullptr) << name.toStdString();
    return widget;
  }

  /// The control of that name in the log window.
  template <typename Widget>
  Widget* In_Log(const QString& name) {
    return Part<Widget>(log_, name);
  }
  void Press(const QString& button) { In_Log<QAbstractButton>(button)->click(); }
  void Choose(const QString& entry) { In_Log<QAction>(entry)->trigger(); }
  Log_Chart* Chart() { return In_Log<Log_Chart>("MSChart1"); }

  /// What the user types into a box of @p window in place of its text, and Enter.
  static void Type(const QWidget* window, const QString& name, const QString& text) {
    auto* box = Part<QLineEdit>(window, name);
    box->selectAll();
    QTest::keyClicks(box, text);
    QTest::keyClick(box, Qt::Key_Return);
  }

  /// The key, once @p window has come to the front. qWaitForWindowActive would not do: it takes a form for
  /// active as soon as the form it stands over is, and the key would go to that one.
  static void Escape(QWidget* window) {
    ASSERT_TRUE(QTest::qWaitFor([window] { return QApplication::activeWindow() == window; }));
    QTest::keyClick(window, Qt::Key_Escape);
  }

  /// The tick box of a row.
  QCheckBox* Tick(int row) { return In_Log<QCheckBox>(QString("Check_SignalsToView(%1)").arg(row)); }

  /// Bytes of a log of @p rows rows that pulls from 2000 rpm by 10 rpm a row, all other fields 100.
  static std::string Log_Of(int rows, const std::string& dataset = "") {
    std::string text = "[log_data]\r\na\r\n";
    for (int i = 0; i < rows; ++i) {
      text += QString::number(2 + 0.01 * i, 'f', 4).toStdString();
      for (int field = 0; field < 19; ++field) text += " 100";
      text += " \r\n";
    }
    return text + "[end log_data]\r\n" + dataset;
  }

  /// Writes such a log into the folder and opens it.
  void Open_Log(int rows, const std::string& dataset = "") {
    Write_File("pull.kxl", Log_Of(rows, dataset));
    ASSERT_TRUE(Open_File(folder() + "pull.kxl"));
    QApplication::processEvents();
  }

  QWidget* log_ = nullptr;
};

}  // namespace kx
