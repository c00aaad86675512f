// A tune to a card and back by each of the three ways, in the whole program on the real event loop: the box
// at real pace on a pseudo terminal, the readers' libraries loaded as the program loads them. Shows how long
// each takes, how long the window stands still meanwhile, and a write through the box against its ideal.
#include <QApplication>
#include <QElapsedTimer>
#include <QTimer>
#include <algorithm>
#include <cstdio>

#include "bench_folder.h"
#include "boxlink/link_texts.h"
#include "cards/card_paths.h"
#include "platform/seams.h"
#include "settings/history.h"
#include "workspace/BoostProgMain.h"

namespace {

constexpr int rounds = 5;
constexpr double allowed = 1.1;  ///< of a write's ideal

/// The box says twice who it is, once for as long as it is listened to. Then each byte takes the card its
/// time, two characters out and one back.
constexpr double box_write_ideal =
    0.05 + 0.012 + 255 * (kx::sim::Smart_Card::Byte_Time + 3 * kx::sim::Character_Time);

struct Measured {
  double seconds = 1e9;
  double still = 1e9;  ///< longest time between two turns of the event loop, in seconds
};

/// One operation from the click to its end, with what the event loop came to meanwhile.
Measured Run(void (*click)()) {
  QTimer beat;
  QElapsedTimer since;
  double longest = 0;
  const auto note = [&] {
    longest = std::max(longest, static_cast<double>(since.nsecsElapsed()) / 1e9);
    since.start();
  };
  beat.setTimerType(Qt::PreciseTimer);
  QObject::connect(&beat, &QTimer::timeout, note);
  beat.start(1);
  for (QElapsedTimer lead; since.start(), !lead.isValid();) lead.start(), QCoreApplication::processEvents();
  QElapsedTimer whole;
  whole.start();
  click();
  const double seconds = static_cast<double>(whole.nsecsElapsed()) / 1e9;
  QCoreApplication::processEvents();
  note();
  return {seconds, longest};
}

/// The round that other work of the machine has disturbed least. False when @p status does not begin with
/// @p word behind each.
bool Show(const char* what, void (*click)(), const kx::Shown_Text& status, std::string_view word,
          Measured& best) {
  best = {};
  for (int i = 0; i < rounds; ++i) {
    const Measured measured = Run(click);
    best.seconds = std::min(best.seconds, measured.seconds);
    best.still = std::min(best.still, measured.still);
    if (!status.Text().starts_with(word)) {
      std::fprintf(stderr, "%s: %s\n", what, status.Text().c_str());
      return false;
    }
  }
  std::printf("%-28s %7.1f ms, window still for %7.1f ms\n", what, best.seconds * 1e3, best.still * 1e3);
  return true;
}

bool Show_Path(const kx::Card_Path& path, const std::string& name, std::string_view read_word,
               Measured& write) {
  Measured read;
  return Show((name + ", write").c_str(), path.write, *path.status, kx::card_words::write_ok, write) &&
         Show((name + ", read").c_str(), path.read, *path.status, read_word, read);
}

/// With readers that answer at once, and with such that take @p byte_time milliseconds for each byte.
bool Show_Readers(const std::string& card, int byte_time) {
  const std::string faults = byte_time == 0 ? "" : "byte_time=" + std::to_string(byte_time);
  if (!kx::sim::Write_Card(card, {}, faults).empty()) return false;
  const std::string pace = byte_time == 0 ? " at once" : " " + std::to_string(byte_time) + " ms a byte";
  Measured write;
  return Show_Path(kx::card_paths[0], "Chipdrive" + pace, kx::card_words::read_ok, write) &&
         Show_Path(kx::card_paths[2], "Todos" + pace, kx::card_words::read_ok, write);
}

bool Show_Box() {
  Measured write;
  if (!Show_Path(kx::card_paths[1], "box", "< KX read ", write)) return false;
  const double ratio = write.seconds / box_write_ideal;
  std::printf("write through the box: %.3f s, ideal %.3f s, ratio %.3f (allowed %.2f)\n", write.seconds,
              box_write_ideal, ratio, allowed);
  return ratio <= allowed;
}

}  // namespace

int main(int argc, char** argv) {
  if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication application(argc, argv);
  kx::bench::Box_Stand stand(kx::bench::Data_Folder(argc, argv));
  stand.Box().With_Box([](kx::sim::Box& box) { box.Contents().Card_Present = true; });
  const std::string card = QDir::current().absoluteFilePath("card.kxs").toStdString();
  qputenv("KXSIM_CARD", card.c_str());
  kx::bench::Says_Ok ask;
  kx::bench::One_Reader service;
  kx::platform::Loaded_Chipdrive chipdrive(KXBENCH_SIMULATED_READERS);
  kx::platform::Loaded_Todos todos(KXBENCH_SIMULATED_READERS);
  kx::platform::seams.ask = &ask;
  kx::platform::seams.card_service = &service;
  kx::platform::seams.chipdrive = &chipdrive;
  kx::platform::seams.todos = &todos;
  kx::BoostProgMain form;
  form.show();
  const bool shown = Show_Box() && Show_Readers(card, 0) && Show_Readers(card, 1);
  kx::Reset_Cards();
  return shown ? 0 : 1;
}
