#pragma once

#include <QDir>
#include <QString>
#include <QTemporaryDir>

#include "platform/qt/qt_seams.h"
#include "sim/pty_box.h"

namespace kx::bench {

/// Makes @p work a folder to start the program in: the shipped files of @p data, and COM 9 at @p port. Enters
/// it. Throws std::runtime_error with the reason when it cannot.
void Enter_Bench_Folder(const QDir& data, const QDir& work, const QString& port);

/// The shipped data/: the program's first argument, else beside the working directory.
[[nodiscard]] QDir Data_Folder(int argc, char** argv);

/// What a benchmark of the link needs around the main form: the simulated box at real pace on a pseudo
/// terminal, a folder of its own with that box on COM 9, and the real seams. Throws std::runtime_error with
/// the reason when it cannot be set up. Needs a QApplication.
class Box_Stand {
 public:
  explicit Box_Stand(const QDir& data);
  [[nodiscard]] sim::Pty_Box& Box() { return box_; }

 private:
  sim::Pty_Box box_{sim::Line()};
  QTemporaryDir folder_;
  platform::Qt_Seams seams_;
};

}  // namespace kx::bench
