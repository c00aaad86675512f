#include <QLabel>
#include <QMenu>
#include <QPlainTextEdit>
#include <QPushButton>
#include <cmath>

#include "boxlink/transfer.h"
#include "log_form_fixture.h"
#include "logging/live_log.h"
#include "settings/ini_file_adm.h"
#include "settings/session.h"
#include "sim/pty_box.h"
#include "widgets/chart_look.h"
#include "widgets/form_helpers.h"
#include "widgets/line_chart.h"
#include "widgets/table_grid.h"
#include "workspace/cell_editing.h"
#include "workspace/engine_place.h"
#include "workspace/file_habits.h"

namespace kx {
namespace {

/// The log window on a simulated box that streams its drive at its own pace.
class Live_Log_Form : public Log_Form_Fixture {
 protected:
  void SetUp() override {
    Log_Form_Fixture::SetUp();
    ASSERT_EQ(box_.Start(), "");
    Write_Key("com_device9", box_.Path());
    Com_Port_Number = 9;
    log_settings.check_SettingsInLogg = false;
    log_settings.txt_Show_Log_Interval = "0.1";
  }
  static bool Comes(const std::function<bool()>& event) { return QTest::qWaitFor(event, 20000); }
  QPushButton* Start() { return In_Log<QPushButton>("cmd_Open_Com"); }
  void Switch_Off_After(std::size_t rows) {
    sim::Faults faults;
    faults.Log_Off = rows;
    faults.Log_Off_Seconds = 60;
    box_.With_Line([&](sim::Line& line) { line.Set_Faults(faults); });
  }

  sim::Pty_Box box_{sim::Line()};
};

TEST_F(Live_Log_Form, Start_Shows_The_Drive_And_Stop_Keeps_It) {
  Trigger("Direct_startlog");
  EXPECT_EQ(Start()->text(), "STOP");
  EXPECT_TRUE(Start()->font().bold());
  ASSERT_TRUE(Comes([] { return Log_Row_Count > 15; }));
  EXPECT_EQ(log_->windowTitle(), "*KXLog-.kxl");
  EXPECT_TRUE(Find<QLineEdit>("txt_Live_1")->text().endsWith(" rpm"));
  EXPECT_TRUE(Find<QLineEdit>("txt_Live_7")->text().endsWith(" ms"));
  EXPECT_GT(Chart()->xAxis->range().upper, 0.5);
  ASSERT_TRUE(Comes([this] { return In_Log<QLabel>("txt_Logging_alert")->isVisible(); }));
  for (const char* off : {"cmd_Clear_Logg", "view_logg"}) {
    EXPECT_FALSE(In_Log<QPushButton>(off)->isEnabled()) << off;
  }
  for (const char* off : {"Read_Settings", "Write_Settings", "Verify_Settings", "Connect_Info"}) {
    EXPECT_FALSE(Find<QPushButton>(off)->isEnabled()) << off;
  }
  EXPECT_FALSE(Part<QPushButton>(Window("KX_prefs"), "ApplyButton")->isEnabled());
  EXPECT_FALSE(In_Log<QAction>("Log_File_Open")->isEnabled());
  EXPECT_FALSE(Can_Open_By_Name("other.kxl")) << "the pointer refuses a drop";
  EXPECT_FALSE(Open_By_Name("other.kxl"));
  EXPECT_TRUE(Can_Open_By_Name("tune.KXS"));
  Press("cmd_ZoomIn");

  const int received = Log_Row_Count;
  Press("cmd_Open_Com");
  EXPECT_EQ(Start()->text(), "START");
  EXPECT_GE(Log_Rows, received);
  EXPECT_EQ(std::pair(Log_Chart_First, Log_Chart_Last), std::pair(1, Log_Rows));
  EXPECT_EQ(Find<QLineEdit>("txt_Live_1")->text(), "");
  EXPECT_FALSE(In_Log<QLabel>("txt_Logging_alert")->isVisible());
  EXPECT_TRUE(Find<QPushButton>("Read_Settings")->isEnabled());
  EXPECT_TRUE(Part<QPushButton>(Window("KX_prefs"), "ApplyButton")->isEnabled());
  EXPECT_FALSE(Log_File_Unsaved) << "saved by itself";
  EXPECT_TRUE(QFile::exists(Text(folder() + Log_File_Name)));
  Press("cmd_Clear_Logg");
  EXPECT_EQ(Log_Rows, 0);
  EXPECT_EQ(In_Log<QLineEdit>("txt_Log_Length")->text(), "0,0 s");
}

TEST_F(Live_Log_Form, Silence_Is_Told_And_A_Log_To_File_Draws_Nothing) {
  box_.Stop();
  log_settings.check_LogToFileOnly = true;
  Expect_Box("Could not open Com port. Please check settings");
  Press("cmd_Open_Com");
  EXPECT_EQ(Start()->text(), "START");

  Switch_Off_After(40);
  ASSERT_EQ(box_.Start(), "");
  Write_Key("com_device9", box_.Path());
  Press("cmd_Open_Com");
  EXPECT_TRUE(In_Log<QLabel>("label_NoGraph")->isVisible());
  EXPECT_FALSE(Chart()->isVisible());
  ASSERT_TRUE(Comes([] { return Shown_Live_Log().logging_alert; }));
  auto* alert = In_Log<QLabel>("txt_NoConnection_alert");
  ASSERT_TRUE(Comes([=] { return alert->isVisible(); }));
  EXPECT_EQ(alert->text(), "No response from system! \nPlease check connection.");
  Expect_Box("There were some interruptions during the log");
  EXPECT_TRUE(log_->close()) << "the log ends with its window";
  EXPECT_FALSE(Log_Running());
  EXPECT_EQ(Log_Rows, 0) << "decoded when it is opened";
}

/// Whichever window START was pressed in, its own line says why nothing happens; a start that is under way
/// can not be asked for again, by no key.
TEST_F(Live_Log_Form, Start_Says_Why_It_Waits_And_Is_Off_While_It_Works) {
  Run_Transfer({}, [this] { Press("cmd_Open_Com"); });
  const QString why = "A transfer has the line. START works when it has ended.";
  EXPECT_EQ(In_Log<QLabel>("log_notice")->text(), why);
  EXPECT_EQ(Find<QLabel>("notice_text")->text(), why);
  log_settings.check_SettingsInLogg = true;
  int seen = 0;
  const auto show = live_log_hooks.show;
  live_log_hooks.show = [&] {
    show();
    if (Shown_Live_Log().button != "Reading box settings") return;
    ++seen;
    EXPECT_FALSE(In_Log<QAction>("Start_Logg")->isEnabled());
    EXPECT_FALSE(Find<QAction>("Direct_startlog")->isEnabled());
  };
  Press("cmd_Open_Com");
  EXPECT_GT(seen, 0);
  EXPECT_EQ(In_Log<QLabel>("log_notice")->text(), "");
  EXPECT_TRUE(In_Log<QAction>("Start_Logg")->isEnabled());
  EXPECT_TRUE(Find<QAction>("Direct_startlog")->isEnabled());
  live_log_hooks.show = show;
  ASSERT_TRUE(Comes([] { return Log_Row_Count > 5; }));
  Press("Command9");
  auto* rpm = Window("KX_RPM");
  emit Part<Log_Chart>(rpm, "MSChart2")->Point_Picked(2);
  const QString read = Part<QPlainTextEdit>(rpm, "txt_LineData")->toPlainText();
  EXPECT_TRUE(read.contains("; RPM - ")) << read.toStdString();
  const int row = Log_Row_Count;
  ASSERT_TRUE(Comes([=] { return Log_Row_Count > row + 5; }));
  EXPECT_EQ(Part<QPlainTextEdit>(rpm, "txt_LineData")->toPlainText(), read)
      << "it stays while the log runs on";
  auto* mark = Part<Log_Chart>(rpm, "MSChart2")->findChild<QCPItemStraightLine*>();
  ASSERT_NE(mark, nullptr);
  EXPECT_TRUE(mark->visible());
  Press("cmd_Open_Com");
}

/// True when the mark of the engine is on @p widget.
bool Shows_Engine(QWidget* widget) {
  const QImage picture = widget->grab().toImage();
  for (int y = 0; y < picture.height(); ++y) {
    for (int x = 0; x < picture.width(); ++x) {
      if (picture.pixelColor(x, y) == Engine_Colour()) return true;
    }
  }
  return false;
}

TEST_F(Live_Log_Form, The_Table_On_Show_Marks_The_Engine_And_Follows_It) {
  auto* follow = Find<QAction>("Follow_Engine");
  auto* grid = Find<Table_Grid>("Ig_RPM_Grid");
  auto* chart = Find<Line_Chart>("IgRPMChart");
  Show(Table::ignition_rpm);
  EXPECT_FALSE(follow->isEnabled() || Shows_Engine(grid) || Shows_Engine(chart));
  Press("cmd_Open_Com");
  ASSERT_TRUE(Comes([&] { return Shows_Engine(grid) && Shows_Engine(chart); }));
  Show(Table::fuel_load);
  EXPECT_TRUE(Comes([&] { return Shows_Engine(Find<Table_Grid>("Fuel_MAP_Grid")); }));
  Show(Table::ignition_rpm);
  Pick(Table::ignition_rpm, 19);
  EXPECT_EQ(Grid_Of(Table::ignition_rpm).Row(), 19);
  EXPECT_TRUE(follow->isEnabled() && !follow->isChecked()) << "off at start";
  follow->trigger();
  const auto near = [] {
    const auto place = Engine_Place(Table::ignition_rpm);
    return place && std::fabs(Grid_Of(Table::ignition_rpm).Row() - place->entry) <= 0.6;
  };
  ASSERT_TRUE(Comes(near));
  QMenu menu;
  menu.addAction("of an entry");
  menu.popup({});
  Grid_Enter_Cell(Table::ignition_rpm, 20, 20);
  const auto newest = Newest_Live_Row();
  ASSERT_TRUE(Comes([&] { return Newest_Live_Row() != newest; }));
  EXPECT_EQ(Grid_Of(Table::ignition_rpm).Row(), 20) << "not while a menu is open";
  menu.close();
  ASSERT_TRUE(Comes(near));
  const int row = Grid_Of(Table::ignition_rpm).Row();
  const int before = CardByte[Edited_Byte(Table::ignition_rpm, row)];
  Click("plus");
  EXPECT_GT(CardByte[Edited_Byte(Table::ignition_rpm, row)], before) << "+ acts where the engine is";
  Press("cmd_Open_Com");
  EXPECT_FALSE(Shows_Engine(grid) || Shows_Engine(chart));
  EXPECT_FALSE(follow->isEnabled() || follow->isChecked());
}

}  // namespace
}  // namespace kx
