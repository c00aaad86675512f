// The timer-driven engine against the simulated box at real pace, over the real port object and timers: a
// write of every byte that it compares, against the ideal of its 10 ms timers, and how long the window waits
// meanwhile.
#include <QApplication>
#include <QElapsedTimer>
#include <QTimer>
#include <algorithm>
#include <cstdio>

#include "bench_folder.h"
#include "boxlink/line_log.h"
#include "boxlink/link_texts.h"
#include "boxlink/protocol.h"
#include "boxlink/run_list.h"
#include "boxlink/timer_engine.h"
#include "boxlink/transfer.h"
#include "platform/seams.h"
#include "settings/image.h"
#include "settings/wait.h"
#include "workspace/BoostProgMain.h"

namespace {

constexpr double tick = 0.01;      ///< seconds
constexpr int ticks_of_a_run = 5;  ///< begin, prompt, offset, end, answer to the end
constexpr int rounds = 3;
constexpr double allowed = 1.15;  ///< of the ideal

/// Seconds from the first word of a run to the word that ends the write.
double Seconds_On_The_Line() {
  long long first = 0;
  for (const kx::Line_Entry& entry : kx::Line_Log()) {
    if (entry.direction != kx::Line_Direction::sent) continue;
    if (entry.text == "bw" && first == 0) first = entry.microseconds;
    if (entry.text == "ue" && first != 0) return static_cast<double>(entry.microseconds - first) / 1e6;
  }
  return 0;
}

/// Changes every byte that is compared, without making a slave of the box.
void Change_Tune() {
  for (int i = 0; i <= kx::last_timer_compared; ++i)
    kx::CardByte[i] = static_cast<std::uint8_t>(kx::CardByte[i] ^ 0x11U);
}

/// Longest time in which the event loop came to nothing else, in milliseconds.
double Write_And_Watch() {
  QTimer elsewhere;
  QElapsedTimer since;
  double longest = 0;
  elsewhere.setTimerType(Qt::PreciseTimer);
  QObject::connect(&elsewhere, &QTimer::timeout, [&] {
    longest = std::max(longest, static_cast<double>(since.nsecsElapsed()) / 1e6), since.start();
  });
  since.start();
  elsewhere.start(1);
  kx::Com_knapp3_Click();
  while (kx::Transfer_Running()) kx::Do_Events();
  return longest;
}

bool Bench_Write() {
  const double ideal = tick * (kx::last_timer_compared + 1 + 1 + 2 * ticks_of_a_run - 1);
  double best = 1e9;
  double shortest_wait = 1e9;
  for (int i = 0; i < rounds; ++i) {
    Change_Tune();
    kx::Reset_Line_Log();
    shortest_wait = std::min(shortest_wait, Write_And_Watch());
    best = std::min(best, Seconds_On_The_Line());
  }
  const bool written = kx::rs232_text.Text().starts_with(kx::words::data_read_back);
  std::printf("write of 250 bytes by timer: %.3f s, ideal %.3f s, ratio %.3f (allowed %.2f); %s\n", best,
              ideal, best / ideal, allowed, kx::rs232_text.Text().c_str());
  std::printf("longest wait of the window meanwhile: %.1f ms\n", shortest_wait);
  return written && best <= allowed * ideal;
}

}  // namespace

int main(int argc, char** argv) {
  if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication application(argc, argv);
  kx::bench::Box_Stand stand(kx::bench::Data_Folder(argc, argv));
  kx::bench::Says_Ok ask;  // a box without a slave leaves questions unanswered, each with a box
  kx::platform::seams.ask = &ask;
  kx::BoostProgMain form;
  kx::CardByte = {};
  return Bench_Write() ? 0 : 1;
}
