#include <gtest/gtest.h>

#include <QDragEnterEvent>
#include <QMenu>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QScreen>
#include <QSettings>
#include <QTest>
#include <QTimer>
#include <filesystem>

#include "log_form_fixture.h"
#include "platform/seams.h"
#include "settings/image.h"
#include "settings/recent_files.h"
#include "settings/session.h"
#include "widgets/open_form.h"

namespace kx {
namespace {

/// What the program remembers for its user, and what can be dropped on it.
class Habits : public Log_Form_Fixture {
 protected:
  void SetUp() override {
    Form_Fixture::SetUp();
    log_ = Window("KX_Log");
  }

  QMenu* Recent() {
    auto* menu = Find<QMenu>("Recent_files");
    emit menu->aboutToShow();
    return menu;
  }

  void Open_Tune(const std::string& name) {
    Expect_Open_Name(folder() + name);
    Trigger("File_open");
  }

  /// Drags files over a widget, and drops them if the pointer says that they may be. True when it does.
  bool Drop(QWidget* on, const QStringList& names) {
    QMimeData files;
    QList<QUrl> urls;
    for (const QString& name : names) urls += QUrl::fromLocalFile(QString::fromStdString(folder()) + name);
    files.setUrls(urls);
    const QPoint at = on->rect().center();
    QDragEnterEvent enter(at, Qt::CopyAction, &files, Qt::LeftButton, {});
    enter.ignore();
    QApplication::sendEvent(on, &enter);
    if (!enter.isAccepted()) return false;
    QDropEvent drop(at, Qt::CopyAction, &files, Qt::LeftButton, {});
    QApplication::sendEvent(on, &drop);
    QApplication::processEvents();
    return drop.isAccepted();
  }

  void Start_Again() {
    form_.reset();
    form_ = std::make_unique<BoostProgMain>();
    Open_Main_Form(*form_, {1000, 600});
    QApplication::processEvents();
    log_ = Window("KX_Log");
  }
};

TEST_F(Habits, Recent_Files_Open_By_Their_Digits_And_Those_That_Are_Gone_Leave) {
  EXPECT_FALSE(Recent()->actions().at(0)->isEnabled());
  Write_File("a & b.kxs", folder_.Read("demo.kxs"));
  for (const char* name : {"demo.kxs", "demo_box.kxs", "a & b.kxs", "demo.kxs"}) Open_Tune(name);
  Write_File("pull.kxl", Log_Of(20));
  ASSERT_TRUE(Open_File(folder() + "pull.kxl"));
  Expect_Save_Name(folder() + "mine.kxs");
  Trigger("File_save_As");
  QStringList captions;
  for (const QAction* entry : Recent()->actions()) captions += entry->text().section("  -  ", 0, 0);
  EXPECT_EQ(captions, QStringList({"&1  mine.kxs", "&2  pull.kxl", "&3  demo.kxs", "&4  a && b.kxs",
                                   "&5  demo_box.kxs"}));
  Recent()->actions().at(1)->trigger();
  EXPECT_TRUE(log_->isVisible());
  std::filesystem::remove(folder() + "demo_box.kxs");
  Expect_Box(folder() + "demo_box.kxs is not there any more. It has left the list.");
  Recent()->actions().at(4)->trigger();
  Recent()->actions().at(3)->trigger();
  EXPECT_EQ(card_data_file, "a & b.kxs");
  for (int i = 0; i < 12; ++i) Note_Recent_File("/tunes/" + std::to_string(i) + ".kxs");
  EXPECT_EQ(Recent()->actions().size(), 10);
  EXPECT_TRUE(Recent()->actions().at(9)->text().startsWith("&0  2.kxs"));
}

TEST_F(Habits, Tunes_And_Logs_Open_When_They_Are_Dropped_And_Nothing_Else_Does) {
  Write_File("pull.kxl", Log_Of(20));
  Write_File("notes.txt", "no tune");
  const Byte_Image before = CardByte;
  EXPECT_FALSE(Drop(&form(), {"notes.txt"}));
  EXPECT_EQ(CardByte, before);
  EXPECT_TRUE(Drop(&form(), {"notes.txt", "demo_box.kxs", "demo.kxs"}));
  EXPECT_EQ(card_data_file, "demo_box.kxs");
  auto* description = Find<QPlainTextEdit>("txt_File_Description");
  EXPECT_TRUE(Drop(description->viewport(), {"demo.kxs"})) << "no text box takes the name as text";
  EXPECT_EQ(card_data_file, "demo.kxs");
  EXPECT_FALSE(description->toPlainText().contains("file:"));
  EXPECT_FALSE(Drop(description->viewport(), {"notes.txt"}));
  EXPECT_TRUE(Drop(&form(), {"pull.kxl"}));
  EXPECT_TRUE(log_->isVisible());
  EXPECT_EQ(Log_File_Name, "pull.kxl");
  Mark_Log_Unsaved();
  Expect_Box("Do you want to save current log file: pull.kxl?", platform::Answer::no);
  EXPECT_TRUE(Drop(log_, {"pull.kxl"})) << "the questions of the open command";
  Write_File("spoilt.KXS", "12");
  Expect_Box("Not a kxs-file");
  EXPECT_TRUE(Drop(&form(), {"spoilt.KXS"}));
  EXPECT_EQ(card_data_file, "demo.kxs");
}

TEST_F(Habits, Windows_And_Tabs_Come_Back_Where_They_Were_Left) {
  const QRect screen = form().screen()->availableGeometry();
  Show(Table::fuel_rpm);
  Start_Again();
  EXPECT_EQ(Find<QTabWidget>("sstab_Main")->currentIndex(), 0)
      << "a program that was killed remembers nothing";
  Show(Table::fuel_rpm);
  const QRect place(30, 60, 600, 480);
  Trigger("Setting_Summary");
  Window("KX_Setting_Summary")->setGeometry(place);
  form().close();
  Start_Again();
  EXPECT_EQ(Find<QTabWidget>("sstab_Main")->currentIndex(), Row_Of(Table::fuel_rpm).tab);
  EXPECT_EQ(Find<QTabWidget>("SSTab_Fuel")->currentIndex(), Row_Of(Table::fuel_rpm).sub_tab);
  Trigger("Setting_Summary");
  EXPECT_EQ(Window("KX_Setting_Summary")->geometry(), place);
  for (const QRect& left : {QRect(-5000, 100, 600, 480), QRect(20, 30, 9000, 9000)}) {
    Window("KX_Setting_Summary")->setGeometry(left);
    form().close();
    Start_Again();
    Trigger("Setting_Summary");
    EXPECT_TRUE(screen.contains(Window("KX_Setting_Summary")->frameGeometry()));
  }
  form().showMaximized();
  form().close();
  Start_Again();
  EXPECT_TRUE(form().isMaximized());
}

}  // namespace
}  // namespace kx
