// Time from the entry of main to the first painted main window, and the memory then resident. Run it several
// times and take the median.
#include <QApplication>
#include <QElapsedTimer>
#include <QTemporaryDir>
#include <QTextStream>
#include <cstdio>

#include "bench_folder.h"
#include "platform/qt/qt_seams.h"
#include "workspace/BoostProgMain.h"

namespace {

/// Notes when the watched window has been painted.
class First_Paint : public QObject {
 public:
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::Paint) painted = true;
    return QObject::eventFilter(watched, event);
  }
  bool painted = false;
};

/// Resident memory in MB.
double Resident() {
  QFile status("/proc/self/status");
  if (!status.open(QIODevice::ReadOnly)) return 0;
  for (const QByteArray& line : status.readAll().split('\n')) {
    if (line.startsWith("VmRSS:")) return line.mid(6).trimmed().split(' ').front().toDouble() / 1024;
  }
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  QElapsedTimer timer;
  timer.start();
  if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication application(argc, argv);
  const qint64 before_folder = timer.nsecsElapsed();
  QTemporaryDir folder;
  kx::bench::Enter_Bench_Folder(kx::bench::Data_Folder(argc, argv), QDir(folder.path()), "/dev/null");
  const qint64 preparing = timer.nsecsElapsed() - before_folder;
  kx::platform::Qt_Seams seams;
  seams.Install();
  kx::BoostProgMain form;
  First_Paint first;
  form.installEventFilter(&first);
  form.resize(1366, 740);
  form.show();
  while (!first.painted) QApplication::processEvents();
  const double seconds = static_cast<double>(timer.nsecsElapsed() - preparing) / 1e9;
  std::printf("start to first paint %.3f s, resident %.1f MB\n", seconds, Resident());
}
