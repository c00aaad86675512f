#include <QCheckBox>
#include <QLabel>
#include <QListWidget>
#include <QMouseEvent>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <fstream>
#include <sstream>

#include "log_form_fixture.h"
#include "logging/file_panel.h"
#include "logging/log_array.h"
#include "settings/image.h"
#include "settings/ini_file_adm.h"
#include "settings/presets.h"
#include "settings/section_text.h"
#include "widgets/form_helpers.h"

namespace kx {
namespace {

using Log_Form = Log_Form_Fixture;

std::string Bytes_Of(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  std::ostringstream bytes;
  bytes << file.rdbuf();
  return bytes.str();
}

TEST_F(Log_Form, Has_Every_Control_By_Its_Name) {
  for (const char* name : {"cmd_Open_Com",
                           "cmd_Clear_Logg",
                           "view_logg",
                           "MSChart1",
                           "label_NoGraph",
                           "txt_Logging_alert",
                           "txt_NoConnection_alert",
                           "Check_SignalsToView(0)",
                           "Check_SignalsToView(39)",
                           "Check_SignalsToView(99)",
                           "Secondary_Check(0)",
                           "Secondary_Check(39)",
                           "txt_1stYScale_Min",
                           "txt_1stYScale_Max",
                           "txt_2ndYScale_Min",
                           "txt_2ndYScale_Max",
                           "Gear_option(1)",
                           "Gear_option(6)",
                           "cmd_ZoomIn",
                           "cmd_ZoomOut",
                           "cmd_ZoomAll",
                           "cmd_Scroll_Left",
                           "cmd_Scroll_Right",
                           "txt_LineData",
                           "File_Info_Frame",
                           "File_Info_Frame_tmp",
                           "txt_Log_Date",
                           "txt_Log_Time",
                           "txt_Log_Length",
                           "txt_Log_Free_Text",
                           "txt_Log_Date_tmp",
                           "txt_Log_Time_tmp",
                           "txt_Log_Length_tmp",
                           "txt_Log_Free_Text_tmp",
                           "txt_File",
                           "txt_Show_Log_Sek",
                           "txt_Show_Log_Interval",
                           "Drive1",
                           "Dir1",
                           "File1",
                           "cmd_Export_Log_kxs_settings",
                           "cmd_MAF_Sim",
                           "Command9"}) {
    const QWidget* control = In_Log<QWidget>(name);
    if (control == nullptr || control->inherits("QLabel") || control->inherits("QGroupBox")) continue;
    EXPECT_FALSE(control->toolTip().isEmpty()) << name;
  }
  for (const char* entry :
       {"Start_Logg", "Log_Preferenses", "Log_File_Open", "Log_File_Save", "Log_File_Save_As",
        "Open_Default_File", "Restore_Default_File", "Save_as_Default_File", "Omport_default_sensors",
        "Restore_signals_view", "Log_Picture_File_Save_As", "print", "Redraw", "cmd_MAF_Sim_menu",
        "Setting_Summary"}) {
    EXPECT_NE(In_Log<QAction>(entry), nullptr) << entry;
  }
  EXPECT_EQ(In_Log<QPushButton>("cmd_Open_Com")->text(), "START");
  EXPECT_EQ(In_Log<QPushButton>("view_logg")->text(), "Redraw (F11)");
  EXPECT_EQ(log_->windowTitle(), "KXLog-.kxl");
  EXPECT_LE(log_->minimumSizeHint().width(), 1024);
  EXPECT_LE(log_->minimumSizeHint().height(), 560);
}

TEST_F(Log_Form, A_File_Is_Seen_On_A_Click_Opened_On_A_Double_Click_And_Deleted_By_Its_Key) {
  std::filesystem::create_directory(folder() + "runs");
  Write_File("runs/one.kxl", "[log_settings]\r\nLog_Date=2031-05-06\r\n[end log_settings]\r\n" + Log_Of(81));
  Show_Log(log_view_hooks.show_folder);
  auto* folders = In_Log<QListWidget>("Dir1");
  const auto items = folders->findItems("runs", Qt::MatchExactly);
  ASSERT_EQ(items.size(), 1);
  emit folders->itemActivated(items.front());
  EXPECT_EQ(Read_Key("Default_Logdir"), folder() + "runs/");
  auto* files = In_Log<QListWidget>("File1");
  ASSERT_EQ(files->count(), 1);
  In_Log<QTabWidget>("side_tabs")->setCurrentIndex(1);
  const QPoint at = files->visualItemRect(files->item(0)).center();
  QTest::mouseClick(files->viewport(), Qt::LeftButton, {}, at);
  EXPECT_TRUE(In_Log<QWidget>("File_Info_Frame_tmp")->isVisible());
  EXPECT_EQ(In_Log<QLineEdit>("txt_Log_Date_tmp")->text(), "2031-05-06");
  QTest::mouseDClick(files->viewport(), Qt::LeftButton, {}, at);
  EXPECT_EQ(log_->windowTitle(), "one.kxl");
  EXPECT_EQ(In_Log<QLineEdit>("txt_Log_Length")->text(), "4.00 s");
  EXPECT_TRUE(In_Log<QWidget>("File_Info_Frame")->isVisible());

  // Remarks and date belong to the log; they come back from the file.
  auto* remarks = In_Log<QPlainTextEdit>("txt_Log_Free_Text");
  remarks->selectAll();
  QTest::keyClicks(remarks, "third gear wet");
  EXPECT_EQ(log_->windowTitle(), "*one.kxl");
  Choose("Log_File_Save");
  EXPECT_EQ(log_->windowTitle(), "one.kxl");
  EXPECT_NE(Bytes_Of(folder() + "runs/one.kxl").find("Log_Description=third gear wet;\r\n"),
            std::string::npos);
  Expect_Save_Name(folder() + "runs/two.kxl");
  Choose("Log_File_Save_As");
  EXPECT_EQ(files->count(), 2);

  Expect_Box("Do you really want to delete this file?", platform::Answer::yes);
  files->setCurrentRow(0);
  QTest::keyClick(files, Qt::Key_Delete);
  EXPECT_EQ(files->count(), 1);
  files->setCurrentRow(0);
  QTest::keyClick(files, Qt::Key_Return);
  EXPECT_EQ(remarks->toPlainText(), "third gear wet");
}

TEST_F(Log_Form, The_Stretch_Follows_Buttons_Drags_Wheel_And_Keys) {
  Open_Log(100);
  const auto range = [] { return std::pair(Log_Chart_First, Log_Chart_Last); };
  EXPECT_EQ(range(), std::pair(1, 100));
  Press("cmd_ZoomIn");
  EXPECT_EQ(range(), std::pair(26, 75));
  Press("cmd_Scroll_Right");
  EXPECT_EQ(range(), std::pair(38, 87));
  Press("cmd_Scroll_Left");
  Press("cmd_ZoomOut");
  EXPECT_EQ(range(), std::pair(14, 88));
  EXPECT_EQ(log_->windowTitle(), "*pull.kxl") << "the stretch is stored in the file";
  Press("cmd_ZoomAll");

  const QRect inner = Chart()->axisRect()->rect();
  const QPoint middle = inner.center();
  QTest::mousePress(Chart(), Qt::LeftButton, {}, middle);
  QMouseEvent moved(QEvent::MouseMove, QPointF(inner.right() + 50, middle.y()), QPointF(), Qt::LeftButton,
                    Qt::LeftButton, {});
  QApplication::sendEvent(Chart(), &moved);
  QTest::mouseRelease(Chart(), Qt::LeftButton, {}, QPoint(inner.right(), middle.y()));
  EXPECT_NEAR(Log_Chart_First, 50, 1);
  EXPECT_EQ(Log_Chart_Last, 100);
  QTest::keyClick(Chart(), Qt::Key_Left);
  EXPECT_EQ(Log_Chart_Last, 99);
  QTest::mouseClick(Chart(), Qt::RightButton, {}, middle);
  EXPECT_EQ(Log_Chart_Last, 100) << "zoomed out up to the end";
  const int before = Log_Chart_First;
  emit Chart()->Wheel_Zoomed(1, 1);
  EXPECT_GT(Log_Chart_First, before);
  EXPECT_EQ(Log_Chart_Last, 100) << "what is under the wheel stays";
  const int width = Log_Chart_Last - Log_Chart_First;
  for (int i = 0; i < 10; ++i) emit Chart()->Dragged(0.05);
  EXPECT_NEAR(Log_Chart_Last, 100 - width / 2, 1) << "small moves add up";
  EXPECT_EQ(Log_Chart_Last - Log_Chart_First, width);
}

TEST_F(Log_Form, Ticks_And_Scales_Reach_Chart_And_Settings) {
  Open_Log(100);
  EXPECT_EQ(Chart()->plottableCount(), 1) << "RPM alone";
  EXPECT_EQ(Tick(0)->text(), "RPM [rpm]");
  Tick(1)->click();
  EXPECT_EQ(Chart()->plottableCount(), 2);
  EXPECT_EQ(get_log_file_setting(Log_Setting_Text, "Log_Def", 2, 4), "1");
  In_Log<QCheckBox>("Secondary_Check(1)")->click();
  EXPECT_EQ(Chart()->plottable(1)->valueAxis(), Chart()->yAxis2);
  EXPECT_EQ(get_log_file_setting(Log_Setting_Text, "Log_Def", 2, 5), "1");
  EXPECT_EQ(log_->windowTitle(), "*pull.kxl");

  Type(log_, "txt_1stYScale_Min", "0,5");
  EXPECT_EQ(log_settings.txt_1stYScale_Min, "0.5");
  EXPECT_NE(Chart()->yAxis->range().lower, 0.5) << "one end alone fixes nothing";
  Type(log_, "txt_1stYScale_Max", "9000");
  EXPECT_EQ(Chart()->yAxis->range().lower, 0.5);
  EXPECT_EQ(Chart()->yAxis->range().upper, 9000);
  Type(log_, "txt_1stYScale_Max", "a");
  EXPECT_EQ(In_Log<QLineEdit>("txt_1stYScale_Max")->text(), "Auto");
  EXPECT_LT(Chart()->yAxis->range().upper, 9000);

  Press("Check_SignalsToView(99)");
  EXPECT_EQ(Chart()->plottableCount(), 35);
  EXPECT_FALSE(Signal_Row(35).view);
  Press("Check_SignalsToView(99)");
  EXPECT_EQ(Chart()->plottableCount(), 0);
  EXPECT_FALSE(Tick(0)->isChecked());
  Choose("Restore_signals_view");
  EXPECT_TRUE(Tick(0)->isChecked());
  EXPECT_TRUE(Tick(39)->isVisibleTo(log_));
}

TEST_F(Log_Form, A_Click_At_A_Line_Reads_All_Ticked_Signals) {
  Open_Log(101);
  Tick(1)->click();
  auto* values = In_Log<QPlainTextEdit>("txt_LineData");
  EXPECT_TRUE(values->toPlainText().startsWith("Show value by clicking at a line."));
  const QRect inner = Chart()->axisRect()->rect();
  QTest::mouseClick(Chart(), Qt::LeftButton, {}, QPoint(inner.right(), inner.center().y()));
  EXPECT_EQ(values->toPlainText().toStdString(), "5.00s ; RPM - 3000 rpm\n5.00s ; AN1 In - 1.95 V");
  Write_File("other.kxl", Log_Of(20));
  Expect_Box("Do you want to save current log file: pull.kxl?", platform::Answer::no);
  ASSERT_TRUE(Open_File(folder() + "other.kxl"));
  EXPECT_TRUE(values->toPlainText().startsWith("Show value")) << "of the log before";
}

TEST_F(Log_Form, The_Gear_Calculates_Anew) {
  Open_Log(100);
  In_Log<QRadioButton>("Gear_option(2)")->click();
  const double slow = LogArray(50, 24);
  EXPECT_NEAR(slow, 2 * 2.49, 0.011) << "2 km/h at 1000 rpm";
  In_Log<QRadioButton>("Gear_option(3)")->click();
  EXPECT_NEAR(LogArray(50, 24), 1.5 * slow, 0.011);
  EXPECT_EQ(get_log_file_setting(Log_Setting_Text, "Log_Gearing=", 1, 7), "3");
}

TEST_F(Log_Form, Exports_Numbers_And_Pictures) {
  Open_Log(100);
  Tick(2)->click();
  Press("cmd_ZoomIn");
  Expect_Save_Name(folder() + "out.csv");
  Choose("Log_Picture_File_Save_As");
  EXPECT_EQ(ask_.last_question.name, "pull_kxl");
  EXPECT_TRUE(
      ask_.last_question.filter.starts_with("Logg file image (*.bmp)|*.bmp|As text file (*.csv)|*.csv"));
  const std::string numbers = Bytes_Of(folder() + "out.csv");
  EXPECT_TRUE(numbers.starts_with("Time\tRPM\tAN2 In\r\n1.25\t2250\t")) << numbers.substr(0, 60);
  EXPECT_TRUE(numbers.ends_with("\r\n"));
  EXPECT_EQ(std::count(numbers.begin(), numbers.end(), '\n'), 51);
  const std::pair<const char*, const char*> pictures[] = {
      {"out.bmp", "BM"}, {"out.png", "\x89PNG"}, {"out.pdf", "%PDF"}};
  for (const auto& [name, head] : pictures) {
    Expect_Save_Name(folder() + name);
    Choose("Log_Picture_File_Save_As");
    EXPECT_TRUE(Bytes_Of(folder() + name).starts_with(head)) << name;
  }
}

TEST_F(Log_Form, Box_Settings_Of_The_Log_Become_The_Tune) {
  Open_Log(20);
  Expect_Box("This log file does not include any valid box settings");
  Press("cmd_Export_Log_kxs_settings");
  std::string dataset = "[log_dataset]\r\n";
  for (int i = 0; i < 256; ++i) dataset += std::to_string(i == 255 ? 104 : i) + "\r\n";
  const Byte_Image before = CardByte;
  Open_Log(20, dataset + "[end log_dataset]\r\n");
  const std::string question =
      "File has different dataset ID (104) than currently selected in preferences (" +
      std::to_string(DatasetID) + "), load anyway?\r\n";
  const auto answer = [&](platform::Answer given) {
    std::string name;
    for (const Preset& preset : Preset_List) {
      if (name.empty() && Mask_Dataset(preset.mask) == 104) name = preset.name;
    }
    Expect_Box(question + name + "\r\n(Dataset ID is not changed.)", given);
    Press("cmd_Export_Log_kxs_settings");
  };
  answer(platform::Answer::cancel);
  EXPECT_EQ(CardByte, before);
  answer(platform::Answer::ok);
  EXPECT_EQ(CardByte[100], 100);
  Trigger("edit_undo");
  EXPECT_EQ(CardByte, before);
}

TEST_F(Log_Form, Default_Settings_Are_Opened_Restored_And_Replaced) {
  Open_Log(50);
  Tick(3)->click();
  Expect_Box("Do you really want to replace existing default log settings?", platform::Answer::yes);
  Choose("Save_as_Default_File");
  Tick(4)->click();
  Choose("Restore_Default_File");
  EXPECT_TRUE(Tick(3)->isChecked());
  EXPECT_FALSE(Tick(4)->isChecked());
  Expect_Box("Do you want to save current log file: pull.kxl?", platform::Answer::no);
  Choose("Open_Default_File");
  EXPECT_TRUE(Tick(3)->isChecked());
  EXPECT_EQ(log_->windowTitle(), "KXLog-.kxl");
}

TEST_F(Log_Form, Escape_Asks_And_Closes_And_The_Size_Is_Kept) {
  Open_Log(50);
  Tick(3)->click();
  log_->resize(700, 520);
  QApplication::processEvents();
  const QSize shown = log_->size();
  Expect_Box("Do you want to save current log file: pull.kxl?", platform::Answer::yes);
  Escape(log_);
  EXPECT_FALSE(log_->isVisible());
  EXPECT_EQ(get_log_file_setting(Bytes_Of(folder() + "pull.kxl"), "Log_Def", 4, 4), "1");
  EXPECT_EQ(Text(*Read_Key("Log_Window_Size")).split(';').mid(2, 2),
            QStringList({QString::number(shown.width()), QString::number(shown.height())}));
  log_->resize(650, 500);
  Trigger("log_window");
  EXPECT_EQ(log_->size(), shown);
}

TEST_F(Log_Form, The_Log_S_Own_Settings_Are_On_Show_In_The_Summary) {
  Open_Log(20);
  Trigger("Setting_Summary");
  QWidget* summary = Window("KX_Setting_Summary");
  Part<QPushButton>(summary, "cmd_View_Log_Settings")->click();
  const QString text = Part<QPlainTextEdit>(summary, "txt_SettingSummary")->toPlainText();
  EXPECT_TRUE(text.startsWith("[log_settings]\nLog_File_Name="));
  EXPECT_TRUE(text.contains("[end log_settings]\n[log_sens_def]\n"));
  EXPECT_TRUE(text.contains("[readable_settings]\n[end readable_settings]\n[log_dataset]\n"));
}

}  // namespace
}  // namespace kx
