#pragma once

#include <QDir>
#include <QString>
#include <QTemporaryDir>

#include "platform/ask.h"
#include "platform/qt/qt_seams.h"
#include "sim/pty_box.h"

namespace kx::bench {

/// Makes @p work a folder to start the program in: the shipped files of @p data, and COM 9 at @p port; what
/// the desktop remembers goes there too, and nothing is left of the run before. Enters it. Throws
/// std::runtime_error with the reason when it cannot.
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

/// A user who says OK to everything and names no file.
class Says_Ok : public platform::Ask {
 public:
  platform::Answer Show(const platform::Message&) override { return platform::Answer::ok; }
  std::optional<std::string> Open_Name(const platform::File_Question&) override { return std::nullopt; }
  std::optional<std::string> Save_Name(const platform::File_Question&) override { return std::nullopt; }
};

/// A card service with one reader, under the name by which the program knows a Todos reader.
class One_Reader : public platform::Card_Service {
 public:
  long SCardEstablishContext(platform::Card_Context& context) override {
    context = 1;
    return 0;
  }
  long SCardListReaders(platform::Card_Context, std::string& names) override {
    names = "Todos Argos Mini II USB 00 00";
    return 0;
  }
  long SCardReleaseContext(platform::Card_Context) override { return 0; }
};

}  // namespace kx::bench
