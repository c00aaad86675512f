#include <gmock/gmock.h>

#include <QAction>
#include <QClipboard>
#include <QComboBox>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>
#include <QTest>
#include <QTimer>
#include <QWheelEvent>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "form_fixture.h"
#include "sensors/sensor_store.h"
#include "settings/history.h"
#include "settings/image.h"
#include "widgets/surface_chart.h"
#include "widgets/table_grid.h"

namespace kx {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

/// A form of its own beside the main form.
class Second_Form : public Form_Fixture {
 protected:
  void Open(const char* entry, const char* name) {
    Trigger(entry);
    for (QWidget* widget : QApplication::topLevelWidgets()) {
      if (widget->objectName() == name) second_ = widget;
    }
    ASSERT_NE(second_, nullptr);
    ASSERT_TRUE(second_->isVisible());
  }

  template <typename Widget>
  Widget* In(const char* name) {
    auto* widget = second_->findChild<Widget*>(name);
    EXPECT_NE(widget, nullptr) << name;
    return widget;
  }
  void Press(const char* button) {
    QTest::mouseClick(In<QAbstractButton>(button), Qt::LeftButton);
    QApplication::processEvents();
  }
  void Type(const char* box, const char* text) {
    In<QLineEdit>(box)->selectAll();
    QTest::keyClicks(In<QLineEdit>(box), text);
  }
  void Paste(const char* box, const QString& text) {
    In<QLineEdit>(box)->setText(text);
    emit In<QLineEdit>(box)->textEdited(text);
  }
  void Choose(const char* list, const char* name) {
    auto* combo = In<QComboBox>(list);
    const int index = combo->findText(name);
    ASSERT_GE(index, 0) << name;
    combo->setCurrentIndex(index);
    emit combo->activated(index);
  }
  [[nodiscard]] std::string Read(const std::string& name) const {
    std::ostringstream bytes;
    bytes << std::ifstream(folder() + name, std::ios::binary).rdbuf();
    return bytes.str();
  }

  QWidget* second_ = nullptr;
};

class Map_Form : public Second_Form {
 protected:
  void SetUp() override {
    Second_Form::SetUp();
    Open("Map_3D", "KX_3Dmap");
    chart_ = In<Surface_Chart>("Fuel3dChart");
  }
  std::string Data() { return In<QPlainTextEdit>("Text1")->toPlainText().toStdString(); }

  Surface_Chart* chart_ = nullptr;
};

TEST_F(Map_Form, Follows_Every_Change_Of_The_Tables_While_It_Is_Open) {
  Press("Option1(0)");
  Press("cmd_ShowData");
  EXPECT_TRUE(In<QRadioButton>("Option2(1)")->isChecked());
  EXPECT_THAT(In<QLabel>("Label1")->text().toStdString(),
              StartsWith("Ignition map, Ignition [deg] over RPM"));
  const auto changed_by = [this](const auto& change) {
    const std::string before = Data();
    change();
    QApplication::processEvents();
    return Data() != before;
  };
  CardByte[map::ignition_rpm.first] = 192;
  Update_All();
  EXPECT_TRUE(changed_by([] {
    CardByte[map::ignition_load.first] = 100;
    Update_All();
  }));
  Show(Table::ignition_load);
  Pick(Table::ignition_load, 1);
  EXPECT_TRUE(changed_by([this] { QTest::keyClicks(Find<QWidget>("Ig_MAP_Grid"), "7"); }));
  EXPECT_THAT(Data(), HasSubstr("000>\t7\t"));
  EXPECT_TRUE(changed_by([] {
    Set_Field(map::ignition_load_input, 3);
    Update_Tabs();
  })) << "the axis of another input";
  EXPECT_TRUE(changed_by([this] { Press("Option1(2)"); }));
  Press("Option2(0)");
  EXPECT_TRUE(chart_->isVisible());
  EXPECT_THAT(In<QLabel>("Label1")->text().toStdString(), StartsWith("Drag to turn"));
}

TEST_F(Map_Form, Turns_By_Fields_Mouse_Keys_Wheel_And_Timer) {
  Type("Text2", "40");
  Press("Command3");
  Type("Text3", "-10");
  QTest::keyClick(In<QLineEdit>("Text3"), Qt::Key_Return);
  EXPECT_EQ(chart_->View().elevation, 40);
  EXPECT_EQ(chart_->View().rotation, 350);
  EXPECT_EQ(In<QLineEdit>("Text3")->text(), "350");
  Type("Text2", "high");
  Expect_Box("Elevation, 0 to 90 degrees: not a number");
  Press("Command3");
  EXPECT_EQ(In<QLineEdit>("Text2")->text(), "40");

  const QPoint middle = chart_->rect().center();
  QTest::mousePress(chart_, Qt::LeftButton, {}, middle);
  QTest::mouseMove(chart_, middle + QPoint(50, -25));
  QTest::mouseRelease(chart_, Qt::LeftButton, {}, middle + QPoint(50, -25));
  EXPECT_EQ(chart_->View().rotation, 10);
  EXPECT_EQ(chart_->View().elevation, 30);
  EXPECT_EQ(In<QLineEdit>("Text3")->text(), "10");
  QTest::keyClick(chart_, Qt::Key_Left);
  EXPECT_EQ(chart_->View().rotation, 5);
  QWheelEvent nearer(middle, chart_->mapToGlobal(middle), {}, {0, 120}, Qt::NoButton, {}, Qt::NoScrollPhase,
                     false);
  QApplication::sendEvent(chart_, &nearer);
  EXPECT_GT(chart_->View().zoom, 1);

  auto* timer = In<QTimer>("Timer1");
  EXPECT_FALSE(timer->isActive()) << "off until a turn button is pressed";
  EXPECT_EQ(timer->interval(), 100);
  Press("turn_right_button");
  EXPECT_TRUE(QTest::qWaitFor([this] { return chart_->View().rotation == 15; }, 2000));
  Press("turn_left_button");
  EXPECT_FALSE(In<QPushButton>("turn_right_button")->isChecked());
  EXPECT_TRUE(QTest::qWaitFor([this] { return chart_->View().rotation < 12; }, 2000));
  Press("turn_left_button");
  EXPECT_FALSE(timer->isActive());
  Press("turn_left_button");
  QTest::keyClick(second_, Qt::Key_Escape);
  EXPECT_FALSE(second_->isVisible());
  EXPECT_FALSE(timer->isActive());
}

TEST_F(Map_Form, Tells_Value_Rpm_And_Load_Under_The_Mouse) {
  EXPECT_EQ(chart_->Read_Out_At({1, 1}), "");
  const std::string text = chart_->Read_Out_At(chart_->rect().center()).toStdString();
  EXPECT_THAT(text, StartsWith("Fuel [ms]: "));
  EXPECT_THAT(text, HasSubstr("\nRPM: "));
  EXPECT_THAT(text, HasSubstr("\nLoad [bar]: "));
}

TEST_F(Map_Form, Exports_What_It_Shows) {
  Press("Option2(1)");
  Expect_Save_Name(folder() + "map.csv");
  Press("Export_Image");
  const std::string text = Read("map.csv");
  EXPECT_THAT(text, StartsWith("\t<0.10\t<"));
  EXPECT_EQ(QString::fromStdString(text).remove('\r').toStdString(), Data());
  EXPECT_EQ(ask_.last_question.name, "New1_kxs");
  EXPECT_EQ(ask_.last_question.filter, "3D-map image (*.bmp)|*.bmp|As text file (*.csv)|*.csv");
  EXPECT_EQ(In<QLabel>("map_notice")->text().toStdString(), "Saved " + folder() + "map.csv");
  Expect_Save_Name(folder() + "map.BMP");
  Press("Export_Image");
  const QImage picture(QString::fromStdString(folder() + "map.BMP"), "BMP");
  EXPECT_EQ(picture.size(), chart_->size() * chart_->devicePixelRatioF());
  Expect_Save_Name(folder() + "map.png");
  Expect_Box("A map is exported to a name that ends in .bmp or .csv");
  Press("Export_Image");
  QApplication::clipboard()->setText("the user's");
  Expect_Save_Name("/nowhere/map.csv");
  ask_.Expect("/nowhere/map.csv: No such file or directory");
  Press("Export_Image");
  ask_.Expect_Name("Save As", std::nullopt);
  Press("Export_Image");
  EXPECT_EQ(QApplication::clipboard()->text(), "the user's") << "nothing was exported";
}

TEST_F(Map_Form, Keeps_Its_Place_In_The_Numbers_And_Its_Titles_At_Every_Angle) {
  Press("cmd_ShowData");
  auto* numbers = In<QPlainTextEdit>("Text1");
  numbers->setFixedHeight(150);
  QApplication::processEvents();
  numbers->verticalScrollBar()->setValue(4);
  ASSERT_EQ(numbers->verticalScrollBar()->value(), 4);
  numbers->horizontalScrollBar()->setValue(50);
  ASSERT_EQ(numbers->horizontalScrollBar()->value(), 50);
  CardByte[map::fuel_load.first] = static_cast<std::uint8_t>(CardByte[map::fuel_load.first] + 20);
  Update_All();
  EXPECT_EQ(numbers->verticalScrollBar()->value(), 4);
  EXPECT_EQ(numbers->horizontalScrollBar()->value(), 50);
  Press("cmd_DrawGraph");
  for (const QSize size : {QSize(800, 600), QSize(360, 300)}) {
    chart_->setFixedSize(size);
    for (int rotation = 0; rotation < 360; rotation += 20) {
      for (int elevation = 0; elevation <= 90; elevation += 30) {
        chart_->Set_View({static_cast<double>(rotation), static_cast<double>(elevation), 1});
        QStringList titles;
        for (const Painted_Label& label : chart_->Labels()) {
          if (!QRectF(chart_->rect()).contains(label.place)) continue;
          if (label.text.contains('[') || label.text == "RPM") titles += label.text;
        }
        titles.sort();
        EXPECT_EQ(titles.join(", "), "Fuel [ms], Load [bar], RPM") << rotation << " " << elevation;
      }
    }
  }
}

class Sensor_Form : public Second_Form {
 protected:
  void SetUp() override {
    Second_Form::SetUp();
    Open("Sensor_Settings", "KX_Sensor_Editor");
  }
};

TEST_F(Sensor_Form, Defines_A_Sensor_And_Hangs_It_On_An_Input) {
  EXPECT_FALSE(In<QWidget>("frame_Linear")->isVisible() || In<QWidget>("frame_Table")->isVisible());
  EXPECT_FALSE(In<QPushButton>("cmd_Add_sensor")->isEnabled());
  EXPECT_EQ(In<QLineEdit>("txt_SensorName")->text(), "MySensor");
  EXPECT_EQ(second_->windowTitle(), "Sensor settings New1.kxs");
  Press("cmd_AddLinearSensor");
  EXPECT_TRUE(In<QWidget>("frame_Linear")->isVisible());
  for (const auto& [box, text] : {std::pair{"txt_SensorGain", "1"},
                                  {"txt_SensorOffset", "-40"},
                                  {"txt_SensorMin", "0"},
                                  {"txt_SensorMax", "255"},
                                  {"txt_SensorUnit", "F"},
                                  {"txt_SensorInUnit", "V"}}) {
    Type(box, text);
  }
  Expect_Box("Decimals are a whole number from 0 to 4.");
  Press("cmd_OK");
  EXPECT_TRUE(second_->isVisible()) << "what cannot be stored stays on the form";
  Type("txt_SensorDecimals", "0");
  EXPECT_EQ(In<QPlainTextEdit>("txt_Sensor_Def")->toPlainText(), "MySensor\tLinear\t1\t-40\t0\t255\tF\t0\tV");
  Press("cmd_Add_sensor");
  EXPECT_THAT(Read("KXBenchPro.ini"),
              HasSubstr("\r\nSens_Def=MySensor\tLinear\t1\t-40\t0\t255\tF\t0\tV\r\n"));
  const int input = Get_Field(map::air_temperature_input) + 1;
  const QString before = Find<QLabel>("H_IA_Temp_label")->text();
  Choose(("AN_Combo(" + std::to_string(input) + ")").c_str(), "MySensor");
  EXPECT_EQ(Sensor_Name(Sensor_On_Input(input)), "MySensor");
  EXPECT_NE(Find<QLabel>("H_IA_Temp_label")->text(), before);
  EXPECT_EQ(In<QLabel>("editor_notice")->text(), "Stored the sensor \"MySensor\" in KXBenchPro.ini.");
  Press("cmd_OK");
  EXPECT_FALSE(second_->isVisible());
}

TEST_F(Sensor_Form, Bad_Input_Is_Told_Of_Stays_On_The_Form_And_Changes_No_File) {
  const std::string before = Read("KXBenchPro.ini");
  Press("cmd_AddLinearSensor");
  const auto fill = [this](const char* box, const QString& text) { Paste(box, text); };
  for (const auto& [box, text] : {std::pair{"txt_SensorGain", "1"},
                                  {"txt_SensorOffset", "0"},
                                  {"txt_SensorMin", "0"},
                                  {"txt_SensorMax", "255"},
                                  {"txt_SensorUnit", "V"},
                                  {"txt_SensorInUnit", "V"},
                                  {"txt_SensorDecimals", "0"}}) {
    fill(box, text);
  }
  struct Row {
    const char* box;
    QString bad;
    const char* reason;
    QString good;
  };
  const char* parts =
      "The name has a TAB, a line end or a semicolon in it, which part the fields of the file.";
  const char* decimals = "Decimals are a whole number from 0 to 4.";
  for (const Row& row :
       {Row{"txt_SensorName", "a\tb", parts, "a"},
        {"txt_SensorName", "a;b", parts, "a"},
        {"txt_SensorName", "", "The sensor has no name.", "a"},
        {"txt_SensorName", QString(300, 'x'), "The name has more than 60 characters.", "a"},
        {"txt_SensorName", "Ω", "The name has a character that the settings file cannot hold.", "a"},
        {"txt_SensorGain", "0", "A sensor gain of 0 gives one value for every input.", "1"},
        {"txt_SensorDecimals", "-1", decimals, "0"},
        {"txt_SensorDecimals", "99", decimals, "0"},
        {"txt_SensorDecimals", "x", decimals, "0"}}) {
    fill(row.box, row.bad);
    Expect_Box(row.reason);
    Press("cmd_OK");
    EXPECT_TRUE(second_->isVisible()) << row.reason;
    EXPECT_EQ(In<QLineEdit>(row.box)->text(), row.bad) << "what was typed stays";
    fill(row.box, row.good);
  }
  EXPECT_EQ(Read("KXBenchPro.ini"), before);
  fill("txt_SensorName", "é=ß]€");
  Press("cmd_Add_sensor");
  EXPECT_THAT(Read("KXBenchPro.ini"),
              HasSubstr("\r\nSens_Def=\xE9=\xDF]\x80\tLinear\t1\t0\t0\t255\tV\t0\tV\r\n"));
  EXPECT_EQ(In<QComboBox>("EditSensor_Combo")->currentText(), "é=ß]€");
}

TEST_F(Sensor_Form, Flat_And_Falling_Values_Are_Sensors_And_A_Protected_File_Keeps_Them_For_The_Run) {
  Press("cmd_AddValueSensor");
  Paste("txt_SensorName", "flat");
  Paste("txt_SensorDecimals", "1");
  auto* grid = In<Table_Grid>("Sensor_grid");
  QTest::mouseClick(grid->viewport(), Qt::LeftButton, {},
                    grid->visualRect(grid->model()->index(0, 0)).center());
  QTest::keyClick(grid, Qt::Key_End, Qt::ShiftModifier);
  Paste("set_table_text", "7");
  Press("set_table");
  Press("cmd_Add_sensor");
  EXPECT_EQ(Sens_Tab.back()[33], 7);
  std::filesystem::permissions(folder() + "KXBenchPro.ini", std::filesystem::perms(0444));
  const std::string before = Read("KXBenchPro.ini");
  Paste("txt_SensorName", "falling");
  Press("flat");
  for (int i = 0; i < 2; ++i) {
    Expect_Box(
        "The settings of the program cannot be saved.\n" + folder() +
        "KXBenchPro.ini: the file is write protected\nThe program goes on and tries again with the next "
        "setting that changes.");
    Press("cmd_Add_sensor");
    EXPECT_EQ(Sens_Def.back().name, "falling");
    EXPECT_EQ(Sens_Def.size(), 11U) << "the same one the second time";
    Press("flat");
  }
  EXPECT_EQ(Read("KXBenchPro.ini"), before);
}

TEST_F(Sensor_Form, The_Sensor_On_View_Is_Followed_When_The_File_Moves_It) {
  Choose("EditSensor_Combo", "Wide-band lambda");
  std::string text = Read("KXBenchPro.ini");
  const std::size_t line = text.find("Sens_Def=MAP 4 bar");
  text.erase(line, text.find('\n', line) + 1 - line);
  Write_File("KXBenchPro.ini", text);
  QEvent activated(QEvent::WindowActivate);
  QApplication::sendEvent(second_, &activated);
  EXPECT_EQ(In<QComboBox>("EditSensor_Combo")->currentText(), "Wide-band lambda");
  EXPECT_EQ(In<QComboBox>("EditSensor_Combo")->currentIndex(), 5);
}

TEST_F(Sensor_Form, Undo_Stays_With_What_Is_Typed) {
  Press("cmd_AddValueSensor");
  Capture_History();
  CardByte[10] = static_cast<std::uint8_t>(CardByte[10] + 1);
  const Byte_Image tune = CardByte;
  auto* typed = In<QLineEdit>("txt_SensorName");
  typed->setText("mine");
  typed->setFocus();
  QTest::keyClicks(typed, "x");
  for (QWidget* box : {static_cast<QWidget*>(typed), static_cast<QWidget*>(In<QTableView>("Sensor_grid"))}) {
    QTest::keyClick(box, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(CardByte, tune) << box->objectName().toStdString();
  }
  EXPECT_EQ(typed->text(), "mine");
}

TEST_F(Sensor_Form, Edits_A_Sensor_By_Values_In_Its_Grid) {
  Choose("EditSensor_Combo", "MAP 3 bar table");
  EXPECT_TRUE(In<QWidget>("frame_Table")->isVisible());
  auto* grid = In<Table_Grid>("Sensor_grid");
  QTest::mouseClick(grid->viewport(), Qt::LeftButton, {},
                    grid->visualRect(grid->model()->index(0, 0)).center());
  QTest::keyClicks(grid, "5");
  QTest::keyClick(grid, Qt::Key_Return);
  QTest::keyClick(grid, Qt::Key_Down, Qt::ShiftModifier);
  Press("plus");
  const auto value = [grid](int row) { return grid->model()->index(row - 1, 2).data().toString(); };
  EXPECT_EQ(value(1), "5.00");
  EXPECT_EQ(value(2), "0.15");
  EXPECT_EQ(value(3), "0.25");
  Type("Text1", "128");
  Press("cmd_Frw_Calc");
  EXPECT_EQ(In<QLineEdit>("Text2")->text(), "1.6061") << "of the sensor as it is stored";
  Press("cmd_Rev_Calc");
  EXPECT_EQ(In<QLineEdit>("Text2")->text(), "255");
  for (const auto& [list, name] :
       {std::pair{"Sensor_List_combo", "Log sensor"}, {"EditSensor_Combo", "MAP 2.5 bar"}}) {
    Expect_Box("The changes of \"MAP 3 bar table\" are not stored. Give them up?", platform::Answer::no);
    Choose(list, name);
    EXPECT_EQ(In<QComboBox>("Sensor_List_combo")->currentText(), "Tune sensor");
    EXPECT_EQ(In<QComboBox>("EditSensor_Combo")->currentText(), "MAP 3 bar table");
    EXPECT_EQ(value(1), "5.00");
  }
  Expect_Box("The changes of \"MAP 3 bar table\" are not stored. Give them up?", platform::Answer::yes);
  Choose("Sensor_List_combo", "Log sensor");
  EXPECT_FALSE(In<QWidget>("frame_Table")->isVisible());
  Choose("EditSensor_Combo", "Analog_0-5V");
  Press("cmd_Add_sensor");
  EXPECT_EQ(In<QComboBox>("Sensor_List_combo")->currentText(), "Tune sensor") << "what is stored is one";
  EXPECT_EQ(In<QComboBox>("EditSensor_Combo")->currentText(), "Analog_0-5V");
  QTest::keyClick(second_, Qt::Key_Escape);
  EXPECT_FALSE(second_->isVisible());
}

}  // namespace
}  // namespace kx
