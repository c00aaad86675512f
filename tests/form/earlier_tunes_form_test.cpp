#include <gtest/gtest.h>
#include <signal.h>
#include <spawn.h>
#include <sys/prctl.h>
#include <sys/wait.h>

#include <QSettings>
#include <QTest>
#include <QTimer>
#include <QTreeWidget>
#include <array>
#include <filesystem>

#include "form/editing_child.h"
#include "form_fixture.h"
#include "platform/seams.h"
#include "settings/earlier_tunes.h"
#include "settings/history.h"
#include "settings/image.h"
#include "settings/session.h"
#include "settings/setting_file.h"
#include "settings/tune_being_edited.h"
#include "widgets/table_grid.h"
#include "workspace/differences.h"
#include "workspace/tables.h"

namespace kx {
namespace {

class Earlier_Form : public Form_Fixture {
 protected:
  static QWidget* Window(const char* name) {
    for (QWidget* window : QApplication::topLevelWidgets())
      if (window->objectName() == name) return window;
    ADD_FAILURE() << name;
    return nullptr;
  }

  /// Another program in the folder, killed at the end at the latest.
  void Start_Child() {
    std::string program = "/proc/self/exe";
    std::string mark = "--edit-tune";
    std::string where = folder();
    std::array<char*, 4> arguments = {program.data(), mark.data(), where.data(), nullptr};
    ASSERT_EQ(posix_spawn(&child_, program.c_str(), nullptr, nullptr, arguments.data(), environ), 0);
  }
  void Kill_Child() {
    if (child_ <= 0) return;
    ::kill(child_, SIGKILL);
    ::waitpid(child_, nullptr, 0);
    child_ = 0;
  }
  void TearDown() override {
    Kill_Child();
    Form_Fixture::TearDown();
  }

  /// Starts the program once more, in the state that a killed one leaves.
  void Start_Again() {
    form_.reset();
    form_ = std::make_unique<BoostProgMain>();
    form_->show();
    QApplication::processEvents();
  }

  /// Fuel entry of the tune that a running or killed program keeps; -1 for none.
  int Kept_Entry() {
    const auto file = Parse_Setting_File(folder_.Read("earlier-tunes/being-edited.kxs"));
    return file ? file->image[edited] : -1;
  }

  const int edited = Edited_Byte(Table::fuel_load, 1);  ///< by the child
  pid_t child_ = 0;
};

TEST_F(Earlier_Form, Lists_What_Was_Replaced_And_Opens_It_Like_A_File) {
  QWidget* window = Window("KX_Earlier_Tunes");
  Trigger("File_earlier");
  EXPECT_FALSE(window->findChild<QPushButton*>("cmd_Open_Earlier_Folder")->isEnabled()) << "none yet";
  window->close();
  Show(Table::fuel_load);
  Pick(Table::fuel_load, 3);
  Click("plus");
  const Byte_Image mine = CardByte;
  Expect_Open_Name(folder() + "demo_box.kxs");
  Trigger("File_open");
  Expect_Open_Name(folder() + "demo.kxs");
  Trigger("File_open");
  Trigger("File_earlier");
  EXPECT_TRUE(window->findChild<QPushButton*>("cmd_Open_Earlier_Folder")->isEnabled());
  auto* list = window->findChild<QTreeWidget*>("earlier_tunes_list");
  ASSERT_EQ(list->topLevelItemCount(), 2);
  EXPECT_EQ(list->topLevelItem(0)->text(1), "demo_box.kxs");
  EXPECT_EQ(list->topLevelItem(0)->text(2).toStdString(), folder());
  EXPECT_EQ(list->topLevelItem(1)->text(1), "New1.kxs");
  const QString differing = list->topLevelItem(1)->text(3);
  EXPECT_EQ(differing.toInt(), static_cast<int>(Differences(Stamped(mine), Stamped(CardByte)).size()));
  Click("plus");
  EXPECT_TRUE(QTest::qWaitFor([&] { return list->topLevelItem(1)->text(3) != differing; }))
      << "follows the tune of now";
  list->setCurrentItem(list->topLevelItem(1));
  Expect_Open_Name(folder() + "demo_box.kxs");
  Trigger("File_open");
  EXPECT_EQ(list->topLevelItemCount(), 3) << "one is kept while the window is open";
  EXPECT_EQ(list->topLevelItem(0)->text(1), "demo.kxs");
  EXPECT_EQ(list->indexOfTopLevelItem(list->currentItem()), 2) << "the choice goes with its row";
  QTest::mouseClick(window->findChild<QPushButton*>("cmd_Open_Earlier"), Qt::LeftButton);
  EXPECT_EQ(CardByte, Stamped(mine));
  EXPECT_FALSE(window->isVisible());
  EXPECT_TRUE(form().windowTitle().contains("New1 20")) << form().windowTitle().toStdString();
  Trigger("edit_undo");
  EXPECT_NE(CardByte, mine);
  Trigger("File_earlier");
  EXPECT_EQ(list->topLevelItemCount(), 3);
  const std::string gone = Earlier_Tunes()[0].path;
  std::filesystem::remove(gone);
  Expect_Box(gone + " is not there any more.");
  QTest::mouseClick(window->findChild<QPushButton*>("cmd_Open_Earlier"), Qt::LeftButton);
  EXPECT_EQ(list->topLevelItemCount(), 2);
  ASSERT_TRUE(QTest::qWaitFor([window] { return QApplication::activeWindow() == window; }));
  QTest::keyClick(window, Qt::Key_Escape);
  EXPECT_FALSE(window->isVisible());
}

TEST_F(Earlier_Form, A_Program_Killed_In_Mid_Edit_Loses_Next_To_Nothing) {
  Start_Child();
  ASSERT_TRUE(QTest::qWaitFor([this] { return Kept_Entry() > 5; }, 30000));
  Start_Again();
  EXPECT_TRUE(Left_Tunes().empty()) << "its tune is not offered as long as it runs";
  Kill_Child();
  const int kept = Kept_Entry();
  const auto left = Parse_Tune_Copy(folder_.Read("earlier-tunes/being-edited.kxs"));
  ASSERT_TRUE(left);
  const auto offer =
      "The program did not end in order while New1.kxs was being edited. Open the tune as it was at " +
      left->time + "?\r\nNo leaves it among the earlier tunes.";
  Expect_Box(offer, platform::Answer::yes);
  Start_Again();
  EXPECT_EQ(CardByte[edited], kept);
  EXPECT_EQ(card_data_file, "New1.kxs");
  EXPECT_EQ(Kept_Entry(), -1);
  Trigger("edit_undo");
  EXPECT_NE(CardByte[edited], kept) << "one step back, as from a file";
  Start_Again();
  ASSERT_FALSE(Earlier_Tunes().empty());
  EXPECT_EQ(Earlier_Tunes()[0].tune.image[edited], kept) << "it stays among the earlier ones";
}

/// A program in whose time 30 s are 50 ms.
class Hasty_Loop : public platform::Qt_Event_Loop {
 public:
  std::unique_ptr<platform::Interval_Timer> Make_Timer() override {
    class Hasty : public platform::Qt_Interval_Timer {
     public:
      void Set_Interval(int milliseconds) override {
        Qt_Interval_Timer::Set_Interval(milliseconds == 30000 ? 50 : milliseconds);
      }
    };
    return std::make_unique<Hasty>();
  }
};

}  // namespace

namespace test {

int Run_Editing_Child(const char* folder) {
  prctl(PR_SET_PDEATHSIG, SIGKILL);
  std::filesystem::current_path(folder);
  QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, "desktop");
  platform::Qt_Seams seams;
  Hasty_Loop loop;
  seams.Install();
  platform::seams.event_loop = &loop;
  BoostProgMain form;
  form.show();
  QTimer user;
  QObject::connect(&user, &QTimer::timeout, &form, [&form] {
    form.findChild<QTabWidget*>("sstab_Main")->setCurrentIndex(Row_Of(Table::fuel_load).tab);
    auto* grid = form.findChild<Table_Grid*>("Fuel_MAP_Grid");
    QTest::mouseClick(grid->viewport(), Qt::LeftButton, {},
                      grid->visualRect(grid->model()->index(0, 0)).center());
    QTest::mouseClick(form.findChild<QPushButton*>("plus"), Qt::LeftButton);
  });
  user.start(20);
  return QApplication::exec();
}

}  // namespace test
}  // namespace kx
