// Speed of the views: Update_All with all grids and charts, one step on 33 rows with its repaint, a tab
// change.
#include <benchmark/benchmark.h>

#include <QApplication>
#include <QTabWidget>
#include <QTemporaryDir>

#include "bench_folder.h"
#include "platform/qt/qt_seams.h"
#include "settings/refresh.h"
#include "workspace/BoostProgMain.h"
#include "workspace/cell_editing.h"
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
  benchmark::RegisterBenchmark("two steps on 33 rows, painted", Bench_Two_Steps_On_33_Rows)
      ->Unit(benchmark::kMillisecond);
  benchmark::RegisterBenchmark("tab change, painted", [&form](benchmark::State& state) {
    Bench_Tab_Change(state, form);
  })->Unit(benchmark::kMillisecond);
  benchmark::RunSpecifiedBenchmarks();
}
