// A tour over the real forms and the real port object: everything a tuner does at the first sitting, against
// the simulated box on a pseudo terminal, with a line for each step. Ends at the first step that fails.
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QElapsedTimer>
#include <QFile>
#include <QGroupBox>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>
#include <cstdio>
#include <functional>
#include <stdexcept>

#include "bench_folder.h"
#include "boxlink/link_texts.h"
#include "boxlink/protocol.h"
#include "boxlink/transfer.h"
#include "compare_tour.h"
#include "hit_map_tour.h"
#include "log_tour.h"
#include "platform/qt/qt_seams.h"
#include "platform/seams.h"
#include "sensors/sensor_store.h"
#include "settings/image.h"
#include "sim/image_file.h"
#include "sim/pty_box.h"
#include "widgets/table_grid.h"
#include "workspace/BoostProgMain.h"
#include "workspace/choice_controls.h"
#include "workspace/scalar_controls.h"
#include "workspace/sensor_editor.h"

namespace {

using kx::CardByte;

void Require(bool holds, const std::string& what) {
  if (!holds) throw std::runtime_error(what);
}

/// Answers what a tuner would, and keeps every question for the journal.
class Tour_Ask : public kx::platform::Ask {
 public:
  explicit Tour_Ask(std::string file) : file_(std::move(file)) {}
  kx::platform::Answer Show(const kx::platform::Message& message) override {
    questions += message.text + "\n";
    const bool yes_no = message.buttons == kx::platform::Buttons::yes_no;
    return yes_no ? kx::platform::Answer::yes : kx::platform::Answer::ok;
  }
  std::optional<std::string> Open_Name(const kx::platform::File_Question&) override { return file_; }
  std::optional<std::string> Save_Name(const kx::platform::File_Question&) override { return file_; }

  /// The file that the dialogs give from now on.
  void Answer_With(std::string file) { file_ = std::move(file); }

  std::string questions;

 private:
  std::string file_;
};

class Tour {
 public:
  Tour(const QDir& out, Tour_Ask& ask, kx::sim::Pty_Box& box)
      : out_(out),
        ask_(ask),
        box_(box),
        log_(out, [&ask](const QString& file) { ask.Answer_With(file.toStdString()); }) {}

  /// Runs all steps; false at the first that fails.
  bool Run() {
    return Step("start", [this] { Start(); }) && Step("read from the box", [this] { Read(); }) &&
           Step("select three ignition entries, +", [this] { Raise_Ignition(); }) &&
           Step("undo and repeat", [this] { Undo_And_Repeat(); }) &&
           Step("type a fuel cell", [this] { Type_Fuel(); }) &&
           Step("pictures of all tabs", [this] { Take_Pictures(); }) &&
           Step("every slider and list", [this] { Try_All_Controls(); }) &&
           Step("box settings", [this] { Show_Box_Settings(); }) &&
           Step("PC settings", [this] { Show_Pc_Settings(); }) &&
           Step("define a sensor and use it", [this] { Define_Sensor(); }) &&
           Step("3D map", [this] { Show_Map(); }) &&
           Step("setting summary and report", [this] { Make_Report(); }) &&
           Step("write to the box", [this] { Write(); }) && Step("verify", [this] { Verify(); }) &&
           Step("read, verify and write the old way", [this] { Old_Engine(); }) &&
           Step("a card by all three ways", [this] { Carry_By_Cards(); }) &&
           Step("the bench form of the Todos reader", [this] { Show_Todos_Bench(); }) &&
           Step("compare with another tune", [this] { Compare(); }) &&
           Step("line log", [this] { Export_Line_Log(); }) && Step("save", [this] { Save(); }) &&
           Step("open and compare 256 bytes", [this] { Open_Again(); }) &&
           Step("open a demo log", [this] { log_.Open_Demo_Log(); }) &&
           Step("hit map of a drive", [this] { Hit_Map(); }) &&
           Step("record 15 s of the drive", [this] { log_.Record(); }) &&
           Step("power over RPM, save, export", [this] { log_.Show_And_Export(); });
  }

  void Hit_Map() {
    kx::bench::Show_Hit_Map(out_, [this](const QString& file) { ask_.Answer_With(file.toStdString()); });
  }

  void Keep_Journal() {
    QFile journal(out_.filePath("journal.txt"));
    if (!journal.open(QIODevice::WriteOnly)) return;
    journal.write((journal_ + kx::Debug_txt.Text() + ask_.questions).c_str());
  }

 private:
  bool Step(const char* name, const std::function<void()>& action) {
    QElapsedTimer timer;
    timer.start();
    std::string reason;
    try {
      action();
    } catch (const std::exception& failure) {
      reason = failure.what();
    }
    std::printf("%-6s %-36s %8.1f ms  %s\n", reason.empty() ? "ok" : "FAILED", name,
                static_cast<double>(timer.nsecsElapsed()) / 1e6, reason.c_str());
    std::fflush(stdout);
    return reason.empty();
  }

  template <typename Widget>
  Widget* Find(const char* name) {
    auto* widget = form_->findChild<Widget*>(name);
    Require(widget != nullptr, std::string("no control ") + name);
    return widget;
  }

  void Click(const char* button) {
    QTest::mouseClick(Find<QPushButton>(button), Qt::LeftButton);
    QApplication::processEvents();
  }

  void Trigger(const char* entry) {
    Find<QAction>(entry)->trigger();
    QApplication::processEvents();
  }

  void Go_To(int main_tab, const char* sub_tabs, int sub_tab) {
    Find<QTabWidget>("sstab_Main")->setCurrentIndex(main_tab);
    if (sub_tabs != nullptr) Find<QTabWidget>(sub_tabs)->setCurrentIndex(sub_tab);
    QApplication::processEvents();
  }

  void Start() {
    form_ = std::make_unique<kx::BoostProgMain>();
    form_->resize(1366, 740);
    form_->show();
    QApplication::processEvents();
    Require(form_->windowTitle().endsWith("New1.kxs"), "title is " + form_->windowTitle().toStdString());
  }

  kx::Byte_Image Box_Image() {
    const kx::sim::Image held = box_.With_Box([](kx::sim::Box& box) { return box.Contents().Master; });
    kx::Byte_Image image;
    for (int i = 0; i < kx::Byte_Image::size; ++i) image[i] = held[static_cast<std::size_t>(i)];
    return image;
  }

  void Require_Status(const char* word) {
    const std::string status = Find<QLineEdit>("rs232_text")->text().toStdString();
    Require(status.starts_with(word), "status is " + status);
  }

  void Read() {
    Click("Read_Settings");
    Require_Status("Read finished ");
    Require(CardByte == Box_Image(), "the tune is not what the box holds");
    journal_ += kx::Debug_txt.Text();
  }

  static void Pick(kx::Table_Grid* grid, int row) {
    QTest::mouseClick(grid->viewport(), Qt::LeftButton, {},
                      grid->visualRect(grid->model()->index(row - 1, 0)).center());
  }

  void Raise_Ignition() {
    Go_To(1, "SSTab_Ignition", 0);
    auto* grid = Find<kx::Table_Grid>("Ig_MAP_Grid");
    Pick(grid, 20);
    QTest::keyClick(grid, Qt::Key_Down, Qt::ShiftModifier);
    QTest::keyClick(grid, Qt::Key_Down, Qt::ShiftModifier);
    before_ = CardByte;
    Click("plus");
    int raised = 0;
    for (int i = 0; i < kx::Byte_Image::size; ++i) raised += CardByte[i] == before_[i] + 1 ? 1 : 0;
    Require(raised == 3, std::to_string(raised) + " entries went up, not 3");
  }

  void Undo_And_Repeat() {
    const kx::Byte_Image raised = CardByte;
    Trigger("edit_undo");
    Require(CardByte == before_, "undo did not bring the tune back");
    Click("plus");
    Require(CardByte == raised, "the repeated step differs");
  }

  void Type_Fuel() {
    Go_To(2, "SSTab_Fuel", 0);
    auto* grid = Find<kx::Table_Grid>("Fuel_MAP_Grid");
    Pick(grid, 12);
    QTest::keyClicks(grid, "1.6");
    constexpr int byte_of_1_6_ms = 136;
    Require(CardByte[kx::map::fuel_load.first + 11] == byte_of_1_6_ms, "the typed cell was not stored");
  }

  void Write() {
    Click("Write_Settings");
    Require_Status("Write finished ");
    const kx::Byte_Image box = Box_Image();
    for (int i = 0; i <= kx::map::last_compared; ++i) {
      Require(box[i] == CardByte[i], "byte " + std::to_string(i) + " did not reach the box");
    }
    journal_ += kx::Debug_txt.Text();
  }

  void Verify() {
    Click("Verify_Settings");
    Require_Status("Verify finished ");
  }

  void Compare() {
    kx::bench::Compare_Tour tour(out_, [this](const QString& file) { ask_.Answer_With(file.toStdString()); });
    tour.Compare_And_Take(*form_);
  }

  void Save() {
    ask_.Answer_With(out_.filePath("tour.kxs").toStdString());
    Trigger("File_save_As");
    Require(QFile::exists(out_.filePath("tour.kxs")), "no file");
  }

  void Open_Again() {
    const kx::Byte_Image saved = CardByte;
    Trigger("edit_undo");
    Require(!(CardByte == saved), "undo changed nothing");
    Trigger("File_open");
    Require(CardByte == saved, "the file holds another tune");
  }

  void Take_Picture(const std::string& name) { Take_Picture_Of(*form_, name); }

  void Take_Picture_Of(QWidget& form, const std::string& name) {
    const QString path = out_.filePath(QString::fromStdString(name) + ".png");
    Require(form.grab().save(path), "no picture " + name);
  }

  /// A form of its own, by its name.
  static QWidget* Form(const char* name) {
    for (QWidget* form : QApplication::topLevelWidgets()) {
      if (form->objectName() == name) return form;
    }
    throw std::runtime_error(std::string("no form ") + name);
  }

  /// Moves each slider one step and back: its byte follows and comes back with it.
  void Try_All_Controls() {
    const kx::Byte_Image before = CardByte;
    for (const kx::Scalar_Row& row : kx::Scalar_Rows()) {
      const int position = kx::Scalar_Position(row);
      const int tried = position > 0 ? position - 1 : position + 1;
      kx::Scalar_Changed(row, tried);
      Require(kx::Scalar_Position(row) == tried, std::string(row.name) + " does not follow");
      kx::Scalar_Changed(row, position);
    }
    for (const kx::Choice_Row& row : kx::Choice_Rows()) kx::Choice_Changed(row, kx::Choice_Index(row));
    for (int i = 0; i < kx::Byte_Image::size; ++i) {
      Require(CardByte[i] == before[i] || i == kx::map::injector_calibration,
              "byte " + std::to_string(i) + " did not come back");
    }
  }

  void Show_Box_Settings() {
    Trigger("Box_Settings");
    QWidget* config = Form("KX_Config");
    QTest::mouseClick(config->findChild<QPushButton*>("cmd_View_Advanced"), Qt::LeftButton);
    config->resize(config->width(), 1500);
    QApplication::processEvents();
    Take_Picture_Of(*config, "box_settings");
    QTest::mouseClick(config->findChild<QPushButton*>("OKButton"), Qt::LeftButton);
    Require(!config->isVisible(), "OK leaves the box settings open");
  }

  void Show_Pc_Settings() {
    Trigger("PC_Settings");
    QWidget* prefs = Form("KX_prefs");
    QApplication::processEvents();
    Take_Picture_Of(*prefs, "pc_settings");
    prefs->close();
  }

  static void Press(QWidget* form, const char* button) {
    auto* found = form->findChild<QAbstractButton*>(button);
    Require(found != nullptr, std::string("no button ") + button);
    QTest::mouseClick(found, Qt::LeftButton);
    QApplication::processEvents();
  }

  /// The curve of an air temperature sensor, stored, hung on its input, and then the old one again.
  void Define_Sensor() {
    Trigger("Sensor_Settings");
    QWidget* editor = Form("KX_Sensor_Editor");
    editor->resize(1024, 580);
    Press(editor, "cmd_AddValueSensor");
    const std::array boxes{std::pair{"txt_SensorName", "Bench thermistor"}, std::pair{"txt_SensorUnit", "°C"},
                           std::pair{"txt_SensorInUnit", "V"}, std::pair{"txt_SensorDecimals", "1"},
                           std::pair{"set_table_text", "140"}};
    auto* grid = editor->findChild<kx::Table_Grid*>("Sensor_grid");
    for (const auto& [box, text] : boxes) QTest::keyClicks(Select_All(editor, box), text);
    Pick(grid, 1);
    QTest::keyClick(grid, Qt::Key_End, Qt::ShiftModifier);
    Press(editor, "set_table");
    for (int i = 0; i < 5; ++i) Press(editor, "flat");
    QApplication::processEvents();
    Take_Picture_Of(*editor, "sensor_editor");
    const std::size_t sensors = kx::Sens_Def.size();
    Press(editor, "cmd_Add_sensor");
    Require(kx::Sens_Def.size() == sensors + 1, "the sensor was not stored");
    const int input = kx::Get_Field(kx::map::air_temperature_input) + 1;
    auto* used = editor->findChild<QComboBox*>(QString("AN_Combo(%1)").arg(input));
    const QString before = Find<QLabel>("H_IA_Temp_label")->text();
    const int old_sensor = used->currentIndex();
    used->setFocus();
    QTest::keyClick(used, Qt::Key_End);
    Require(kx::Sensor_On_Input(input) == static_cast<int>(sensors), "the input did not take the sensor");
    Require(Find<QLabel>("H_IA_Temp_label")->text() != before, "the temperature texts stay");
    kx::AN_Combo_Click(input, old_sensor);
    Require(Find<QLabel>("H_IA_Temp_label")->text() == before, "the old sensor does not come back");
    editor->close();
  }

  static QLineEdit* Select_All(QWidget* form, const char* name) {
    auto* box = form->findChild<QLineEdit*>(name);
    Require(box != nullptr, std::string("no box ") + name);
    box->selectAll();
    return box;
  }

  void Show_Map() {
    Trigger("Map_3D");
    QWidget* map = Form("KX_3Dmap");
    QApplication::processEvents();
    Take_Picture_Of(*map, "map_3d");
    Press(map, "Option2(1)");
    Take_Picture_Of(*map, "map_data");
    ask_.Answer_With(out_.filePath("map.csv").toStdString());
    Press(map, "Export_Image");
    Require(QFile(out_.filePath("map.csv")).size() > 0, "no csv file");
    ask_.Answer_With(out_.filePath("map.bmp").toStdString());
    Press(map, "Export_Image");
    Require(!QImage(out_.filePath("map.bmp")).isNull(), "no picture");
    map->close();
  }

  void Make_Report() {
    Trigger("Setting_Summary");
    QWidget* viewer = Form("KX_Setting_Summary");
    QApplication::processEvents();
    Take_Picture_Of(*viewer, "setting_summary");
    ask_.Answer_With(out_.filePath("report.rtf").toStdString());
    viewer->findChild<QAction*>("SaveAs")->trigger();
    Require(QFile::exists(out_.filePath("report.rtf")), "no report");
    viewer->close();
  }

  /// Clicks a button of the timer-driven engine and waits for the end of its transfer.
  void Run_Old(const char* button, const char* word) {
    Click(button);
    Require(QTest::qWaitFor([] { return !kx::Transfer_Running(); }, 20000),
            std::string(button) + " does not end");
    Require_Status(word);
  }

  void Old_Engine() {
    Run_Old("Com_knapp5", "< KX read ");
    Run_Old("Com_knapp4", "< KX data verify OK >");
    Go_To(2, "SSTab_Fuel", 0);
    Click("plus");
    Run_Old("Com_knapp3", "< Write finished ");
    Require(Box_Image()[kx::map::fuel_load.first + 11] == CardByte[kx::map::fuel_load.first + 11],
            "the box did not get the changed byte");
  }

  /// The buttons and the line of one way to a card, and its picture.
  struct Card_Way {
    const char* frame;
    const char* write;
    const char* read;
    const char* status;
    const char* picture;
  };

  void Show_Card_Side(bool shown) { Find<QTabWidget>("SSTab_Communication")->setCurrentIndex(shown ? 0 : 1); }

  void Carry_By_Cards() {
    static constexpr std::array<Card_Way, 3> ways{
        {{"Frame1", "Command2", "Command1", "txt_Chipdrive_status", "card_chipdrive"},
         {"kx_crw_frame", "Command4", "Command6", "kx_crw_text", "card_box"},
         {"frame_Todos", "cmd_WriteTodos", "cmdReadTodos", "txt_TodosStatus", "card_todos"}}};
    Go_To(2, "SSTab_Fuel", 0);
    Show_Card_Side(true);
    for (const Card_Way& way : ways) {
      for (std::size_t tries = 0; tries < ways.size() && !Find<QGroupBox>(way.frame)->isVisible(); ++tries)
        Trigger("toggle_interface");
      Require(Find<QGroupBox>(way.frame)->isVisible(), std::string(way.frame) + " does not show");
      Carry_By_Card(way);
    }
    Show_Card_Side(false);
  }

  /// To a card, a step away on screen, and back from the card.
  void Carry_By_Card(const Card_Way& way) {
    Click("plus");
    Click(way.write);
    Require_Word(way.status, "< Card Write OK >");
    const kx::Byte_Image written = CardByte;
    Click("plus");
    Require(!(CardByte == written), "the tune did not change");
    box_.With_Box([](kx::sim::Box& box) { box.Start_With_Card(); });
    Click(way.read);
    const bool by_box = std::string_view(way.read) == "Command6";
    Require_Word(way.status, by_box ? "< KX read " : "< Card Read OK >");
    for (int i = by_box ? 1 : 0; i < kx::Byte_Image::size; ++i)
      Require(CardByte[i] == written[i], "byte " + std::to_string(i) + " did not come back from the card");
    Take_Picture(way.picture);
  }

  void Require_Word(const char* line, const char* word) {
    const std::string status = Find<QLineEdit>(line)->text().toStdString();
    Require(status.starts_with(word), std::string(line) + " is " + status);
  }

  void Show_Todos_Bench() {
    Trigger("Todos_Settings");
    QWidget* bench = Form("frm_TodosII");
    QTest::mouseClick(bench->findChild<QPushButton*>("ConnectCard"), Qt::LeftButton);
    bench->findChild<QCheckBox*>("Check1")->click();
    QApplication::processEvents();
    Require(bench->findChild<QLineEdit*>("result")->text() == "< Card Connected >",
            "the bench does not connect");
    bench->resize(bench->sizeHint());
    Take_Picture_Of(*bench, "todos_bench");
    bench->close();
  }

  void Export_Line_Log() {
    ask_.Answer_With(out_.filePath("line_log.txt").toStdString());
    Click("Export_Line_Log");
    Require(QFile(out_.filePath("line_log.txt")).size() > 0, "no line log");
  }

  void Take_Pictures() {
    Go_To(0, nullptr, 0);
    Take_Picture("general");
    const std::array<std::pair<const char*, const char*>, 4> panels{{{"SSTab_Ignition", "ignition"},
                                                                     {"SSTab_Fuel", "fuel"},
                                                                     {"SSTab_PWM", "pwm"},
                                                                     {"SSTab_Analog", "analog"}}};
    for (int tab = 0; tab < static_cast<int>(panels.size()); ++tab) {
      const auto& [sub_tabs, name] = panels[static_cast<std::size_t>(tab)];
      auto* control = Find<QTabWidget>(sub_tabs);
      for (int sub_tab = 0; sub_tab < control->count(); ++sub_tab) {
        if (!control->isTabVisible(sub_tab)) continue;
        Go_To(tab + 1, sub_tabs, sub_tab);
        Take_Picture(std::string(name) + "_" + std::to_string(sub_tab));
      }
    }
  }

  QDir out_;
  Tour_Ask& ask_;
  kx::sim::Pty_Box& box_;
  kx::bench::Log_Tour log_;
  std::unique_ptr<kx::BoostProgMain> form_;
  kx::Byte_Image before_;
  std::string journal_;
};

/// The box of the tour holds the shipped box image.
kx::sim::Box Tour_Box(const QString& data) {
  const auto image = kx::sim::Read_Image(data.toStdString() + "/demo_box.kxs");
  Require(image.Error.empty(), image.Error);
  kx::sim::Box_Contents contents;
  contents.Master = image.Bytes;
  contents.Card_Present = true;
  return kx::sim::Box(contents);
}

int Run_Tour(const QDir& data) {
  QDir out(QDir::current().absoluteFilePath("out"));
  QFile::remove(out.filePath("tour.kxs"));
  kx::sim::Pty_Box box{kx::sim::Line(Tour_Box(data.path()))};
  const std::string trouble = box.Start();
  Require(trouble.empty(), trouble);
  kx::bench::Enter_Bench_Folder(data, QDir(out.filePath("work")), QString::fromStdString(box.Path()));
  Tour_Ask ask(out.filePath("tour.kxs").toStdString());
  const std::string card = out.filePath("card.kxs").toStdString();
  Require(kx::sim::Write_Card(card, {}, "").empty(), "cannot write " + card);
  qputenv("KXSIM_CARD", card.c_str());
  kx::bench::One_Reader readers;
  kx::platform::Qt_Seams seams(KXBENCH_SIMULATED_READERS);
  seams.Install();
  kx::platform::seams.ask = &ask;
  kx::platform::seams.card_service = &readers;
  Tour tour(out, ask, box);
  const bool passed = tour.Run();
  tour.Keep_Journal();
  return passed ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) {
  if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication application(argc, argv);
  try {
    return Run_Tour(kx::bench::Data_Folder(argc, argv));
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "bench_tour: %s\n", failure.what());
    return 1;
  }
}
