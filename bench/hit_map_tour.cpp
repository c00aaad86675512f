#include "hit_map_tour.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QTabWidget>
#include <QTest>
#include <cmath>
#include <stdexcept>
#include <string>

#include "logging/live_log.h"
#include "tour_controls.h"
#include "workspace/engine_place.h"
#include "workspace/log_hits.h"

namespace kx::bench {
namespace {

constexpr int watched_ms = 3000;

void Take_Picture(const QDir& out, const char* window, const char* name) {
  QApplication::processEvents();
  Require(Window(window)->grab().save(out.filePath(QString(name) + ".png")),
          std::string("no picture ") + name);
}

void Choose(const char* list, int number) {
  auto* combo = Part<QComboBox>("KX_Hit_Map", list);
  combo->setCurrentIndex(combo->findData(number));
  emit combo->activated(combo->currentIndex());
}

}  // namespace

void Show_Hit_Map(const QDir& out, const std::function<void(const QString&)>& answer_with) {
  answer_with(QDir::current().absoluteFilePath("demo_drive.kxl"));
  Part<QAction>("KX_Log", "Log_File_Open")->trigger();
  Part<QAction>("KX_Log", "Log_Hit_Map")->trigger();
  Window("KX_Hit_Map")->resize(1180, 700);
  const QString summary = Part<QLabel>("KX_Hit_Map", "hit_summary")->text();
  Require(summary.contains(" rows in "), "the hit map says: " + summary.toStdString());
  std::printf("       %s\n", qPrintable(summary));
  Take_Picture(out, "KX_Hit_Map", "hit_map_rows");
  Choose("hit_signal", 7);  // TOT Fuel
  Choose("hit_measure", static_cast<int>(Hit_Measure::mean));
  Take_Picture(out, "KX_Hit_Map", "hit_map");
  for (const char* file : {"hit_map.csv", "hit_map_whole.png"}) {
    answer_with(out.filePath(file));
    Part<QPushButton>("KX_Hit_Map", "hit_export")->click();
    Require(QFile(out.filePath(file)).size() > 1000, std::string("no ") + file);
  }
  Window("KX_Hit_Map")->close();
}

void Show_Engine_Place(const QDir& out) {
  Part<QTabWidget>("BoostProgMain", "sstab_Main")->setCurrentIndex(1);
  Part<QTabWidget>("BoostProgMain", "SSTab_Ignition")->setCurrentIndex(0);
  Part<QAction>("BoostProgMain", "Follow_Engine")->trigger();
  Require(Following_Engine(), "the table does not follow");
  QTest::qWait(watched_ms);
  const auto place = Engine_Place(Table::ignition_load);
  Require(place.has_value(), "the engine is nowhere");
  Require(std::fabs(Grid_Of(Table::ignition_load).Row() - place->entry) <= 1,
          "the cursor is not where the engine is");
  Take_Picture(out, "BoostProgMain", "engine_place");
}

}  // namespace kx::bench
