// Speed of what is made of a full log of 6000 rows: the calculated signals, as set up at first and with all
// that a user can switch on, and the hit map.
#include <benchmark/benchmark.h>

#include <string>

#include "logging/hit_map.h"
#include "logging/log_calculations.h"
#include "logging/log_signals.h"
#include "sim/drive.h"

namespace {

constexpr int rows = kx::log_capacity;

/// A drive as decoded: rpm, two injection times and the raw boost.
kx::Log_Array Decoded_Drive() {
  kx::Log_Array log;
  kx::sim::Drive drive;
  for (int row = 1; row <= rows; ++row) {
    const std::string text = drive.Next().Text;
    log(row, 1) = std::stod(text) * 1000;
    log(row, 7) = std::stod(text.substr(27)) * 0.204;
    log(row, 8) = std::stod(text.substr(31)) * 0.204;
    log(row, 31) = std::stod(text.substr(7));
  }
  return log;
}

kx::Calculation_Inputs Usual_Inputs() {
  kx::Calculation_Inputs inputs;
  inputs.gearing = 28.7;
  inputs.in_gain = inputs.tot_gain = 1;
  return inputs;
}

void Bench_Calculation_Run(benchmark::State& state, const kx::Calculation_Inputs& inputs) {
  const kx::Log_Array decoded = Decoded_Drive();
  for (auto step : state) {
    state.PauseTiming();
    kx::Log_Array log = decoded;
    state.ResumeTiming();
    kx::Calculate_Signals(log, rows, inputs);
    benchmark::DoNotOptimize(log(rows, 22));
  }
  state.counters["ns_a_row"] = benchmark::Counter(
      rows * 1e-9, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

/// The hit map of a table with 41 RPM entries.
void Bench_Hit_Map(benchmark::State& state) {
  const kx::Log_Array decoded = Decoded_Drive();
  kx::Hit_Choice choice;
  choice.load = {33, 8};
  choice.rpm = {41, 250};
  choice.value_slot = 8;
  choice.last_row = rows;
  choice.ranges[0] = {7, 0, 50};
  int counted = 0;
  for (auto step : state) benchmark::DoNotOptimize(counted = kx::Hit_Map_Of_Log(decoded, choice).rows);
  state.counters["rows"] = counted;
  state.counters["ns_a_row"] = benchmark::Counter(
      rows * 1e-9, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

}  // namespace

int main(int argc, char** argv) {
  kx::Load_Default_Signal_Names();
  kx::Calculation_Inputs all = Usual_Inputs();
  all.rpm_smoothing = all.power_smoothing = 10;
  all.fuel_filter = true;
  all.boost_sensor = 0;
  benchmark::RegisterBenchmark("Bench_Calculation_Run/usual", Bench_Calculation_Run, Usual_Inputs());
  benchmark::RegisterBenchmark("Bench_Calculation_Run/smoothed_and_filtered", Bench_Calculation_Run, all);
  benchmark::RegisterBenchmark("Bench_Hit_Map", Bench_Hit_Map);
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
