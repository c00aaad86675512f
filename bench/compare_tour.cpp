#include "compare_tour.h"

#include <QAction>
#include <QApplication>
#include <QFile>
#include <QPushButton>
#include <QTabWidget>
#include <QTableView>
#include <QTest>
#include <stdexcept>

#include "settings/image.h"
#include "settings/setting_file.h"
#include "tour_controls.h"
#include "workspace/compare.h"

namespace kx::bench {
namespace {

constexpr const char* other_file = "last year.kxs";
constexpr const char* list_file = "differences.csv";

void Trigger(const QWidget& form, const char* entry) {
  auto* action = form.findChild<QAction*>(entry);
  Require(action != nullptr, std::string("no entry ") + entry);
  action->trigger();
  QApplication::processEvents();
}

void Show_Tab(const QWidget& form, int tab, const char* sub_tabs, int sub_tab) {
  form.findChild<QTabWidget*>("sstab_Main")->setCurrentIndex(tab);
  form.findChild<QTabWidget*>(sub_tabs)->setCurrentIndex(sub_tab);
  QApplication::processEvents();
}

}  // namespace

Compare_Tour::Compare_Tour(const QDir& out, std::function<void(const QString&)> answer_with)
    : out_(out), answer_with_(std::move(answer_with)) {}

/// The tune with less advance in the middle, less fuel at the top and some other settings.
void Compare_Tour::Write_Other_Tune() const {
  Byte_Image other = CardByte;
  for (int i = 8; i < 20; ++i) {
    std::uint8_t& entry = other[map::ignition_load.first + i];
    entry = static_cast<std::uint8_t>(entry > 12 ? entry - (i - 5) : entry + (i - 5));
  }
  for (int i = 24; i < map::fuel_load.count; ++i) other[map::fuel_load.first + i] ^= 3;
  other[map::rpm_limit] -= 8;
  other[map::load_base] ^= 0x04;
  other[map::analog_sync] ^= 0x02;
  QFile file(out_.filePath(other_file));
  Require(file.open(QIODevice::WriteOnly), "cannot write the other tune");
  file.write(Print_Setting_File(other, "").c_str());
}

void Compare_Tour::Take_Picture(QWidget& form, const char* name) const {
  Require(form.grab().save(out_.filePath(QString(name) + ".png")), std::string("no picture ") + name);
}

void Compare_Tour::Take_A_Table_And_Undo(const QWidget& main_form) {
  const Byte_Image before = CardByte;
  auto* list = Part<QTableView>("KX_Compare", "difference_list");
  list->selectRow(0);
  QTest::mouseClick(Part<QPushButton>("KX_Compare", "take_table"), Qt::LeftButton);
  int taken = 0;
  for (int i = 0; i < map::ignition_load.count; ++i) {
    const int byte = map::ignition_load.first + i;
    taken += CardByte[byte] != before[byte] ? 1 : 0;
  }
  Require(taken == 12, std::to_string(taken) + " entries were taken, not 12");
  Require(Differences_On({main_tab::ignition, 0}) == 1, "what is left on the page is not the list alone");
  Trigger(main_form, "edit_undo");
  Require(CardByte == before, "one step back did not bring the table back");
}

void Compare_Tour::Export_List() {
  answer_with_(out_.filePath(list_file));
  Trigger(*Window("KX_Compare"), "Export_differences");
  QFile file(out_.filePath(list_file));
  Require(file.open(QIODevice::ReadOnly), "no list was exported");
  const auto lines = file.readAll().count("\r\n");
  Require(lines == static_cast<qsizetype>(Shown_Differences().size()) + 1, "the list has another length");
}

void Compare_Tour::Compare_And_Take(QWidget& main_form) {
  Write_Other_Tune();
  answer_with_(out_.filePath(other_file));
  Trigger(main_form, "Compare_file");
  Require(Shown_Differences().size() == 12 + 9 + 3, std::to_string(Shown_Differences().size()) + " rows");
  Show_Tab(main_form, main_tab::ignition, "SSTab_Ignition", 0);
  Take_Picture(main_form, "compare_marks");
  Show_Tab(main_form, main_tab::fuel, "SSTab_Fuel", 2);
  Take_Picture(main_form, "compare_controls");
  Trigger(main_form, "Compare_list");
  Take_Picture(*Window("KX_Compare"), "compare_list");
  Take_A_Table_And_Undo(main_form);
  Export_List();
  Window("KX_Compare")->close();
  Trigger(main_form, "Compare_box");
}

}  // namespace kx::bench
