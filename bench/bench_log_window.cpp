// Speed of the log window: opening a full file with all calculations and the first chart, and what a live log
// of 12 signals over 30 s at 10 redraws a second takes of one core. With --soak, in place of that: 20,000
// rows at twenty times a box's pace over the pseudo terminal, with the window open, and how many of them are
// in the files.
#include <benchmark/benchmark.h>
#include <sys/resource.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QTest>
#include <cstdio>

#include "bench_folder.h"
#include "logging/live_log.h"
#include "logging/log_array.h"
#include "logging/log_files.h"
#include "logging/log_settings.h"
#include "logging/log_state.h"
#include "sim/drive.h"
#include "workspace/BoostProgMain.h"

namespace {

constexpr int signals_on_show = 12;
constexpr int warm_up_ms = 35000;  // until 30 s are on show
constexpr int measured_ms = 20000;

void Show_Signals() {
  for (int row = 0; row < kx::signal_rows; ++row) kx::Signal_Row(row).view = row < signals_on_show;
}

std::string Write_Full_File() {
  kx::sim::Drive drive;
  QByteArray text = "[log_data]\r\na\r\n";
  for (int i = 0; i < kx::log_capacity; ++i) text += drive.Next().Text.c_str();
  QFile file("full.kxl");
  if (!file.open(QIODevice::WriteOnly)) return {};
  file.write(text + "[end log_data]\r\n");
  return QDir::current().absoluteFilePath("full.kxl").toStdString();
}

void Bench_Open(benchmark::State& state, const std::string& path) {
  for (auto step : state) {
    if (!kx::Open_File(path)) state.SkipWithError("not opened");
    QApplication::processEvents();
  }
  state.SetLabel(std::to_string(kx::Log_Rows) + " rows");
}

double Cpu_Seconds() {
  rusage used{};
  getrusage(RUSAGE_THREAD, &used);  // the simulated box has a thread of its own
  return static_cast<double>(used.ru_utime.tv_sec + used.ru_stime.tv_sec) +
         static_cast<double>(used.ru_utime.tv_usec + used.ru_stime.tv_usec) / 1e6;
}

void Measure_Live_Log() {
  kx::log_settings.check_SettingsInLogg = kx::log_settings.check_AutoSave = false;
  kx::log_settings.txt_Show_Log_Sek = "30";
  kx::log_settings.txt_Show_Log_Interval = "0.1";
  Show_Signals();
  kx::Log_File_Unsaved = false;
  kx::cmd_Open_Com_Click();
  QTest::qWait(warm_up_ms);
  const double before = Cpu_Seconds();
  QElapsedTimer timer;
  timer.start();
  QTest::qWait(measured_ms);
  const double share = (Cpu_Seconds() - before) / (static_cast<double>(timer.elapsed()) / 1000);
  const int received = kx::Log_Row_Count;
  kx::cmd_Open_Com_Click();
  std::printf("live log, 12 signals over 30 s, 10 redraws a second: %.2f %% of one core, %d rows\n",
              share * 100, received);
  kx::Log_File_Unsaved = false;
}

int Rows_In_Files(const QDir& folder) {
  qsizetype rows = 0;
  for (const QString& name : folder.entryList({"*.kxl"})) {
    QFile file(folder.filePath(name));
    if (!file.open(QIODevice::ReadOnly)) continue;
    const QByteArray text = file.readAll();
    const qsizetype first = text.indexOf("\r\na\r\n") + 5;
    rows += text.mid(first, text.indexOf("[end log_data]", first) - first).count('\n');
  }
  return static_cast<int>(rows);
}

void Measure_Soak(kx::bench::Box_Stand& stand) {
  constexpr std::size_t rows = 20000;
  constexpr int longest_ms = 120000;
  kx::sim::Faults faults;
  faults.Log_Pace = 20;
  stand.Box().With_Line(
      [&](kx::sim::Line& line) { line = kx::sim::Line(kx::sim::Box(), faults, kx::sim::Pace::At_Once); });
  const auto sent = [&] {
    return stand.Box().With_Line([](kx::sim::Line& line) { return line.Counts().Rows_Sent; });
  };
  const QDir folder(QDir::current().absoluteFilePath("soak"));
  QDir().mkpath(folder.path());
  kx::log_settings.check_SettingsInLogg = false;
  kx::log_settings.txt_Show_Log_Interval = "0.1";
  Show_Signals();
  kx::Log_Directory = folder.path().toStdString() + "/";
  kx::cmd_Open_Com_Click();
  (void)QTest::qWaitFor([&] { return sent() >= rows || !kx::Log_Running(); }, longest_ms);
  const std::size_t total = sent();
  if (kx::Log_Running()) kx::cmd_Open_Com_Click();
  std::printf("soak at twenty times the pace: %zu rows sent, %d in %d files\n", total, Rows_In_Files(folder),
              static_cast<int>(folder.entryList({"*.kxl"}).size()));
}

}  // namespace

int main(int argc, char** argv) {
  if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication application(argc, argv);
  kx::bench::Box_Stand stand(kx::bench::Data_Folder(0, nullptr));
  kx::BoostProgMain form;
  form.show();
  form.findChild<QAction*>("log_window")->trigger();
  QApplication::processEvents();
  if (argc > 1 && qstrcmp(argv[1], "--soak") == 0) {
    Measure_Soak(stand);
    return 0;
  }
  const std::string path = Write_Full_File();
  benchmark::Initialize(&argc, argv);
  benchmark::RegisterBenchmark("open a full file, chart painted", Bench_Open, path)
      ->Unit(benchmark::kMillisecond)
      ->Repetitions(5);
  benchmark::RunSpecifiedBenchmarks();
  Measure_Live_Log();
}
