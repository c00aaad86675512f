// Speed of the log file reader: decoding of 6000 raw rows into LogArray, and all that opening such a file
// does without a window.
#include <benchmark/benchmark.h>

#include <random>
#include <string>

#include "logging/log_reader.h"
#include "logging/log_sections.h"
#include "logging/log_settings.h"
#include "logging/log_state.h"

namespace {

/// A data section of full length, as a box sends it, values at random.
std::string Full_Data() {
  std::mt19937 random(1);
  const auto three_digits = [&] {
    const std::string digits = std::to_string(random() % 256);
    return std::string(3 - digits.size(), '0') + digits;
  };
  std::string data = "[log_data]\r\na\r\n";
  for (int row = 0; row < kx::log_capacity; ++row) {
    const std::string rpm = std::to_string(10000 + random() % 90000);
    data += rpm.substr(0, 1) + "." + rpm.substr(1);
    for (int field = 0; field < 19; ++field) data += " " + three_digits();
    data += " \r\n";
  }
  return data + "[end log_data]\r\n";
}

void Bench_Decode_6000_Rows(benchmark::State& state) {
  kx::Load_All_Default_Log_Settings();
  const std::string data = Full_Data();
  int rows = 0;
  for (auto step : state) rows = kx::Decode_Rows(data, kx::LogArray);
  state.counters["rows"] = rows;
  state.counters["rows_a_second"] =
      benchmark::Counter(static_cast<double>(rows), benchmark::Counter::kIsIterationInvariantRate);
}
BENCHMARK(Bench_Decode_6000_Rows)->Unit(benchmark::kMicrosecond);

/// Splitting, settings, sensors and decoding of a file of 6000 rows that is in memory.
void Bench_Open_6000_Rows(benchmark::State& state) {
  kx::Load_All_Default_Log_Settings();
  const std::string file = kx::Join_Log_File({kx::Log_Setting_Text, kx::Log_Sens_Def_Text,
                                              kx::Empty_Section(kx::Log_Section::readable), Full_Data(),
                                              kx::Empty_Section(kx::Log_Section::dataset)});
  for (auto step : state) {
    kx::KX_Info_Data_File_Test(file, false);
    kx::Read_All_Log_Setting_Variables();
    kx::KX_Log_Data_Read();
  }
  state.counters["rows"] = kx::Log_Rows;
}
BENCHMARK(Bench_Open_6000_Rows)->Unit(benchmark::kMicrosecond);

}  // namespace

BENCHMARK_MAIN();
