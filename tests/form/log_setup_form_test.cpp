#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollArea>
#include <QScrollBar>

#include "log_form_fixture.h"
#include "logging/log_array.h"
#include "sensors/log_sensors.h"
#include "settings/section_text.h"

namespace kx {
namespace {

class Log_Setup_Form : public Log_Form_Fixture {
 protected:
  void SetUp() override {
    Log_Form_Fixture::SetUp();
    Open_Log(100);
    Open_Setup();
  }
  void Open_Setup() {
    Choose("Log_Preferenses");
    setup_ = Window("KX_Log_Setup");
  }
  template <typename Widget>
  Widget* In_Setup(const QString& name) {
    return Part<Widget>(setup_, name);
  }
  void Press_Setup(const QString& name) { In_Setup<QAbstractButton>(name)->click(); }
  QString Shown(const QString& name) { return In_Setup<QLineEdit>(name)->text(); }

  QWidget* setup_ = nullptr;
};

TEST_F(Log_Setup_Form, Shows_The_Defaults_Under_Their_Given_Names) {
  EXPECT_EQ(setup_->windowTitle(), "Log settings - KXBench");
  const std::pair<const char*, const char*> texts[] = {{"txt_Weight", "1000"},
                                                       {"txt_Max_Hp", "500"},
                                                       {"txt_Min_Hp", "20"},
                                                       {"txt_AirResistance", "0"},
                                                       {"txt_FrontalArea", "2.0"},
                                                       {"txt_AirDensity", "1.225"},
                                                       {"txt_Gearing(1)", "1"},
                                                       {"txt_Gearing(6)", "6"},
                                                       {"txt_Gearing(0)", "26.72"},
                                                       {"txt_Speed", "135"},
                                                       {"txt_RPM", "3647"},
                                                       {"txt_Default_Save_Name", "KXLog-"},
                                                       {"txt_FIR(0)", "0"},
                                                       {"txt_FIR(1)", "0"},
                                                       {"txt_CustomSignalName(0)", "RPM"},
                                                       {"txt_CustomSignalName(39)", "Option"}};
  for (const auto& [name, text] : texts) {
    EXPECT_EQ(Shown(name), text) << name;
    EXPECT_FALSE(In_Setup<QLineEdit>(name)->toolTip().isEmpty()) << name;
  }
  for (const char* on : {"check_AutoSave", "check_SettingsInLogg"}) {
    EXPECT_TRUE(In_Setup<QCheckBox>(on)->isChecked()) << on;
  }
  for (const char* off : {"check_LogToFileOnly", "Fuel_filter_check"}) {
    EXPECT_FALSE(In_Setup<QCheckBox>(off)->isChecked()) << off;
  }
  for (const char* chosen : {"Speed_option(0)", "Weight_option(0)", "Torque_option(0)"}) {
    EXPECT_TRUE(In_Setup<QRadioButton>(chosen)->isChecked()) << chosen;
  }
  EXPECT_EQ(In_Setup<QLabel>("Label_Max_Log_Length")->text(), "5.0 minutes");
  EXPECT_EQ(In_Setup<QLabel>("label_SignalName(21)")->text(), "POWER");
  EXPECT_EQ(In_Setup<QComboBox>("Log_Sensor_combo(1)")->currentText(), "Analog_0-5V");
  EXPECT_FALSE(In_Setup<QGroupBox>("frame_Advanced")->isVisible());
  Press_Setup("cmd_Advanced_Log_Settings");
  EXPECT_TRUE(In_Setup<QGroupBox>("frame_Advanced")->isVisible());
  EXPECT_EQ(In_Setup<QPushButton>("cmd_Advanced_Log_Settings")->text(), "Standard settings");
}

TEST_F(Log_Setup_Form, Opens_As_Wide_As_Both_Halves_And_Fits_A_Small_Screen) {
  EXPECT_LE(setup_->sizeHint().width(), 1024);
  setup_->resize(setup_->sizeHint());
  QApplication::processEvents();
  const auto halves = setup_->findChildren<QScrollArea*>();
  EXPECT_EQ(halves.size(), 2);
  for (const QScrollArea* half : halves) EXPECT_EQ(half->horizontalScrollBar()->maximum(), 0);
}

TEST_F(Log_Setup_Form, Names_And_Sensors_Show_At_Once_And_Cancel_Takes_Them_Back) {
  auto* name = In_Setup<QLineEdit>("txt_CustomSignalName(1)");
  name->selectAll();
  QTest::keyClicks(name, "Boost");
  EXPECT_EQ(Tick(1)->text(), "Boost [V]");
  const double volts = LogArray(10, 2);
  auto* sensor = In_Setup<QComboBox>("Log_Sensor_combo(1)");
  sensor->setCurrentIndex(5);
  emit sensor->activated(5);
  EXPECT_NE(LogArray(10, 2), volts);
  EXPECT_EQ(LogArray(10, 2), 100) << "the raw byte";
  Press_Setup("CancelButton");
  EXPECT_FALSE(setup_->isVisible());
  EXPECT_EQ(LogArray(10, 2), volts);
  EXPECT_EQ(Tick(1)->text(), "AN1 In [V]");

  Open_Setup();
  name->selectAll();
  QTest::keyClicks(name, "Boost");
  Press_Setup("cmd_Log_Setup_OK");
  Open_Setup();
  setup_->close();
  EXPECT_EQ(Tick(1)->text(), "Boost [V]") << "kept by OK";
  EXPECT_EQ(log_->windowTitle(), "*pull.kxl");
}

TEST_F(Log_Setup_Form, Escape_Reaches_Only_The_Window_In_Front) {
  Type(setup_, "txt_CustomSignalName(1)", "Boost");
  Escape(setup_);
  EXPECT_FALSE(setup_->isVisible());
  EXPECT_TRUE(log_->isVisible());
  EXPECT_EQ(Tick(1)->text(), "AN1 In [V]") << "taken back as by Cancel";
  Tick(3)->click();  // not saved: a close of the log window would ask
  for (const auto& [button, name] : {std::pair("Command9", "KX_RPM"), {"cmd_MAF_Sim", "Maf_Text_Window"}}) {
    Press(button);
    Escape(Window(name));
    EXPECT_FALSE(Window(name)->isVisible()) << name;
    EXPECT_TRUE(log_->isVisible()) << name;
  }
}

TEST_F(Log_Setup_Form, Units_Convert_Gears_And_Weight_And_Name_The_Signals) {
  Type(setup_, "txt_Gearing(4)", "37.01");
  Press_Setup("Speed_option(1)");
  EXPECT_EQ(Shown("txt_Gearing(4)"), "23");
  EXPECT_EQ(Tick(23)->text(), "SPEED [mph]");
  Press_Setup("Torque_option(1)");
  EXPECT_EQ(Tick(22)->text(), "TORQUE [ft-lbs]");
  Type(setup_, "txt_Weight", "1500");
  Press_Setup("Weight_option(1)");
  EXPECT_EQ(Shown("txt_Weight"), "3307");
  Type(setup_, "txt_Speed", "135");
  Press_Setup("cmd_Calc_Gearing");
  EXPECT_EQ(Shown("txt_Gearing(0)"), "37.02");
  Type(setup_, "txt_RPM", "none");
  Expect_Box("Enter the engine speed of the gear as a number above 0.");
  Press_Setup("cmd_Calc_Gearing");
}

TEST_F(Log_Setup_Form, OK_Calculates_With_The_New_Car) {
  Type(setup_, "txt_Gearing(4)", "37");
  Press_Setup("cmd_Log_Setup_OK");
  EXPECT_NEAR(LogArray(50, 24), 37 * 2.49, 0.01);
  EXPECT_EQ(get_log_file_setting(Log_Setting_Text, "Log_Gearing=", 1, 4), "37");
}

TEST_F(Log_Setup_Form, The_Menu_Imports_Sensors_That_Are_Missing) {
  const std::size_t all = Log_Sens_Def_Tab.size();
  Log_Sens_Def_Tab.pop_back();
  Press_Setup("cmd_Import_Default_Sensors");
  EXPECT_EQ(Log_Sens_Def_Tab.size(), all);
  EXPECT_EQ(In_Setup<QComboBox>("Log_Sensor_combo(1)")->count(), static_cast<int>(all));
}

TEST_F(Log_Setup_Form, The_Rpm_Graph_Draws_The_Stretch_Without_Its_First_Row) {
  Press("cmd_ZoomIn");
  Press("Command9");
  QWidget* rpm = Window("KX_RPM");
  ASSERT_TRUE(rpm->isVisible());
  auto* chart = Part<Log_Chart>(rpm, "MSChart2");
  EXPECT_NEAR(chart->xAxis->range().lower, 2260, 0.01);
  EXPECT_NEAR(chart->xAxis->range().upper, 2740, 0.01);
  emit chart->Point_Picked(0);
  EXPECT_EQ(Part<QPlainTextEdit>(rpm, "txt_LineData")->toPlainText(), "2260rpm ; RPM - 2260 rpm");
  Press("cmd_ZoomAll");
  EXPECT_NEAR(chart->xAxis->range().lower, 2010, 0.01) << "it follows the log window";
  Expect_Save_Name(folder() + "rpm.csv");
  Part<QAction>(rpm, "mnu_export")->trigger();
  EXPECT_TRUE(QFile::exists(QString::fromStdString(folder()) + "rpm.csv"));
  EXPECT_NE(Part<QAction>(rpm, "mnu_Print"), nullptr);
  rpm->close();
  EXPECT_FALSE(rpm->isVisible());
}

TEST_F(Log_Setup_Form, The_Maf_Calculator_Shows_And_Hides_Its_Text) {
  Press("cmd_MAF_Sim");
  QWidget* window = Window("Maf_Text_Window");
  ASSERT_TRUE(window->isVisible());
  auto* text = Part<QPlainTextEdit>(window, "Text4");
  EXPECT_TRUE(text->toPlainText().startsWith("MAF-Simulation, calculator\n"));
  EXPECT_TRUE(text->toPlainText().contains("Avarage MAF"));
  Press("cmd_MAF_Sim");
  EXPECT_FALSE(window->isVisible());
  Choose("cmd_MAF_Sim_menu");
  window->close();
  Press("cmd_MAF_Sim");
  EXPECT_TRUE(window->isVisible()) << "closed by the user counts as hidden";
}

}  // namespace
}  // namespace kx
