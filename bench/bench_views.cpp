// Speed of the views: Update_All with all grids and charts, without and with marks, the list of differences,
// one step on 33 rows with its repaint, a tab change; the 3D map: one painting, a turn, an edit of a table
// until the map shows it.
#include <benchmark/benchmark.h>

#include <QAction>
#include <QApplication>
#include <QTabWidget>
#include <QTemporaryDir>
#include <stdexcept>

#include "bench_folder.h"
#include "platform/qt/qt_seams.h"
#include "settings/image.h"
#include "settings/reference_tune.h"
#include "settings/refresh.h"
#include "widgets/surface_chart.h"
#include "workspace/BoostProgMain.h"
#include "workspace/cell_editing.h"
#include "workspace/compare.h"
#include "workspace/compare_commands.h"
#include "workspace/table_operations.h"
#include "workspace/tables.h"

namespace {

void Show_Ignition(kx::BoostProgMain& form) {
  form.findChild<QTabWidget*>("sstab_Main")->setCurrentIndex(kx::main_tab::ignition);
  QApplication::processEvents();
}

void Bench_Update_All(benchmark::State& state) {
  for (auto step : state) kx::Update_All();
}

/// A reference that differs from the tune in 250 bytes; its own Update_All shows what the marks take.
void Compare_With_250_Bytes() {
  kx::Byte_Image other = kx::CardByte;
  for (int i = 0; i <= kx::map::pwm_rpm.Last(); ++i) other[i] ^= 0x11;
  kx::Note_Box_Image(other, kx::DatasetID);
  kx::Compare_With(kx::Reference_Source::box);
}

void Bench_Update_All_Marked(benchmark::State& state) {
  Compare_With_250_Bytes();
  for (auto step : state) kx::Update_All();
  state.counters["rows"] = static_cast<double>(kx::Shown_Differences().size());
  kx::Compare_With(kx::Reference_Source::none);
}

/// From F8 until the list is painted.
void Bench_Open_List(benchmark::State& state, kx::BoostProgMain& form) {
  Compare_With_250_Bytes();
  auto* open = form.findChild<QAction*>("Compare_list");
  for (auto step : state) {
    open->trigger();
    QApplication::processEvents();
    state.PauseTiming();
    for (QWidget* any : QApplication::topLevelWidgets()) {
      if (any->objectName() == "KX_Compare") any->hide();
    }
    QApplication::processEvents();
    state.ResumeTiming();
  }
  kx::Compare_With(kx::Reference_Source::none);
}

/// A step up and a step down, each painted: two frames an iteration.
void Bench_Two_Steps_On_33_Rows(benchmark::State& state) {
  kx::Grid_Enter_Cell(kx::Table::ignition_load, 1, 33);
  for (auto step : state) {
    kx::plus_Click();
    QApplication::processEvents();
    kx::minus_Click();
    QApplication::processEvents();
  }
}

void Bench_Tab_Change(benchmark::State& state, kx::BoostProgMain& form) {
  auto* tabs = form.findChild<QTabWidget*>("sstab_Main");
  int tab = 0;
  for (auto step : state) {
    tab = tab % kx::main_tab::analog + 1;
    tabs->setCurrentIndex(tab);
    QApplication::processEvents();
  }
  Show_Ignition(form);
}

/// The 3D map at 800 x 600 with a hill in it.
kx::Surface_Chart& Open_Map(int fuel_rpm_250) {
  kx::Set_Field(kx::map::fuel_rpm_250, fuel_rpm_250);
  kx::Refresh_Whole_Image();
  for (int i = 0; i < kx::map::fuel_load.count; ++i) {
    kx::CardByte[kx::map::fuel_load.first + i] = static_cast<std::uint8_t>(130 + 3 * i);
  }
  for (int i = 0; i + 1 < kx::Grid_Of(kx::Table::fuel_rpm).Rows(); ++i) {
    kx::CardByte[kx::map::fuel_rpm.first + i] = static_cast<std::uint8_t>(190 - (i - 10) * (i - 10) / 8);
  }
  kx::Refresh_Whole_Image();
  for (QWidget* form : QApplication::topLevelWidgets()) {
    auto* chart = form->findChild<kx::Surface_Chart*>("Fuel3dChart");
    if (chart == nullptr) continue;
    chart->setFixedSize(800, 600);
    form->show();
    QApplication::processEvents();
    return *chart;
  }
  throw std::runtime_error("no 3D map");
}

/// Each painting stands a little turned, as while the user drags.
void Bench_Turn_Map(benchmark::State& state, int fuel_rpm_250) {
  kx::Surface_Chart& chart = Open_Map(fuel_rpm_250);
  for (auto step : state) {
    chart.Set_View(kx::Turned(chart.View(), kx::turn_step));
    chart.repaint();
  }
  chart.window()->hide();
}

/// A typed digit, until grid, chart and map are painted.
void Bench_Edit_Under_Map(benchmark::State& state) {
  kx::Surface_Chart& chart = Open_Map(0);
  kx::Grid_Enter_Cell(kx::Table::fuel_load, 5, 5);
  int digit = '1';
  for (auto step : state) {
    digit = digit == '1' ? '2' : '1';
    kx::Fresh_Cell = true;
    kx::Grid_Key_Down(kx::Table::fuel_load, digit, 0);
    QApplication::processEvents();
  }
  chart.window()->hide();
}

}  // namespace

int main(int argc, char** argv) {
  if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication application(argc, argv);
  const QDir data = kx::bench::Data_Folder(0, nullptr);
  QTemporaryDir folder;
  kx::bench::Enter_Bench_Folder(data, QDir(folder.path()), "/dev/null");
  kx::platform::Qt_Seams seams;
  seams.Install();
  kx::BoostProgMain form;
  form.resize(1366, 740);
  form.show();
  Show_Ignition(form);
  benchmark::Initialize(&argc, argv);
  benchmark::RegisterBenchmark("Update_All", Bench_Update_All)->Unit(benchmark::kMillisecond);
  benchmark::RegisterBenchmark("Update_All, 250 bytes differ from the reference", Bench_Update_All_Marked)
      ->Unit(benchmark::kMillisecond);
  benchmark::RegisterBenchmark("list of 250 differing bytes, until it is painted",
                               [&form](benchmark::State& state) { Bench_Open_List(state, form); })
      ->Unit(benchmark::kMillisecond);
  benchmark::RegisterBenchmark("two steps on 33 rows, painted", Bench_Two_Steps_On_33_Rows)
      ->Unit(benchmark::kMillisecond);
  benchmark::RegisterBenchmark("tab change, painted", [&form](benchmark::State& state) {
    Bench_Tab_Change(state, form);
  })->Unit(benchmark::kMillisecond);
  benchmark::RegisterBenchmark("3D map of 33 x 21, turned and painted at 800 x 600", Bench_Turn_Map, 0)
      ->Unit(benchmark::kMillisecond);
  benchmark::RegisterBenchmark("3D map of 33 x 41, turned and painted at 800 x 600", Bench_Turn_Map, 1)
      ->Unit(benchmark::kMillisecond);
  benchmark::RegisterBenchmark("typed digit until the 3D map shows it", Bench_Edit_Under_Map)
      ->Unit(benchmark::kMillisecond);
  benchmark::RunSpecifiedBenchmarks();
}
