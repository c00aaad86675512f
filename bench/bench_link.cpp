// The synchronous engine against the simulated box at real pace, over the real port object on a pseudo
// terminal: a read against its wire time, and writes of n differing bytes with their exchanges.
#include <QApplication>
#include <QElapsedTimer>
#include <algorithm>
#include <cstdio>
#include <vector>

#include "bench_folder.h"
#include "boxlink/sync_engine.h"
#include "settings/image.h"
#include "workspace/BoostProgMain.h"

namespace {

constexpr double info_seconds = 0.05;  ///< fixed time of one info query
constexpr int image_characters = 520;
constexpr int rounds = 5;

double Median(std::vector<double> values) {
  std::sort(values.begin(), values.end());
  return values[values.size() / 2];
}

double Seconds_Of(void (*click)()) {
  QElapsedTimer timer;
  timer.start();
  click();
  return static_cast<double>(timer.nsecsElapsed()) / 1e9;
}

std::size_t Exchanges(kx::sim::Pty_Box& box) {
  return box.With_Line([](kx::sim::Line& line) { return line.Counts().Exchanges; });
}

void Bench_Read() {
  std::vector<double> seconds;
  for (int i = 0; i < rounds; ++i) seconds.push_back(Seconds_Of(kx::Read_Settings_Click));
  const double wire = (image_characters + 2) * kx::sim::Character_Time;
  const double beyond = Median(seconds) - info_seconds;
  std::printf("read: %.1f ms beyond the info query, wire time %.1f ms, ratio %.2f\n", beyond * 1e3,
              wire * 1e3, beyond / wire);
}

/// Changes every @p stride-th byte of the tune, @p count in all, and writes.
void Bench_Write(kx::sim::Pty_Box& box, int count, int stride) {
  std::vector<double> seconds;
  std::size_t used = 0;
  for (int i = 0; i < rounds; ++i) {
    for (int n = 0; n < count; ++n) {
      // From byte 2 on: byte 1 could turn the box into a slave.
      kx::CardByte[2 + n * stride] = static_cast<std::uint8_t>(kx::CardByte[2 + n * stride] ^ 1U);
    }
    const std::size_t before = Exchanges(box);
    seconds.push_back(Seconds_Of(kx::Write_Settings_Click));
    used = Exchanges(box) - before;
  }
  const int runs = stride == 1 ? 1 : count;
  // "v" and "rd" before; three exchanges for each run and one at its end, two a byte; two "ue"; "v", "rd" and
  // "v" of the two verifies; the last "ue".
  const int counted = 4 * runs + 2 * count;
  std::printf("write of %3d bytes in %3d runs: %.3f s, %zu exchanges, of these %d for the bytes\n", count,
              runs, Median(seconds), used, counted);
}

}  // namespace

int main(int argc, char** argv) {
  if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication application(argc, argv);
  kx::bench::Box_Stand stand(kx::bench::Data_Folder(argc, argv));
  kx::BoostProgMain form;
  Bench_Read();
  for (const int count : {0, 1, 10, 100}) Bench_Write(stand.Box(), count, 1);
  for (const int count : {10, 100}) Bench_Write(stand.Box(), count, 2);
}
