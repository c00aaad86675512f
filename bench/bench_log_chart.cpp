// Speed of the log chart: a redraw of 40 signals over a full log, and of what a live log shows.
#include <benchmark/benchmark.h>

#include <QApplication>
#include <cmath>
#include <cstddef>
#include <vector>

#include "widgets/log_chart.h"

namespace {

/// Engine-like signals: slow waves with a raw value's steps on them.
std::vector<std::vector<double>> Signals(std::size_t count, std::size_t rows) {
  std::vector<std::vector<double>> all(count, std::vector<double>(rows));
  for (std::size_t s = 0; s < count; ++s) {
    for (std::size_t i = 0; i < rows; ++i) {
      const double time = static_cast<double>(i) * 0.05;
      const double noise = static_cast<double>((i * 7919 + s * 104729) % 13);
      all[s][i] = 100 + 80 * std::sin(time / (3 + static_cast<double>(s))) + noise;
    }
  }
  return all;
}

/// Filled and painted anew, as each update of a live log does.
void Bench_Redraw(benchmark::State& state) {
  const auto count = static_cast<std::size_t>(state.range(0));
  const auto rows = static_cast<std::size_t>(state.range(1));
  kx::Log_Chart chart("MSChart1", kx::Log_Chart::Gestures::stretch);
  chart.resize(1000, 600);
  chart.show();
  const std::vector<std::vector<double>> values = Signals(count, rows);
  std::vector<double> time(rows);
  for (std::size_t i = 0; i < rows; ++i) time[i] = static_cast<double>(i) * 0.05;
  std::vector<kx::Log_Series> series;
  for (std::size_t s = 0; s < count; ++s) {
    series.push_back({"signal " + QString::number(s), static_cast<int>(s), s % 4 == 0, values[s]});
  }
  for (auto step : state) {
    chart.Show(time, "Time [s]", series, {}, {}, "");
    chart.replot(QCustomPlot::rpImmediateRefresh);
  }
}

}  // namespace

int main(int argc, char** argv) {
  if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication application(argc, argv);
  benchmark::Initialize(&argc, argv);
  benchmark::RegisterBenchmark("redraw, signals x rows", Bench_Redraw)
      ->Args({40, 6000})
      ->Args({12, 600})
      ->Args({12, 6000})
      ->Unit(benchmark::kMillisecond);
  benchmark::RunSpecifiedBenchmarks();
}
