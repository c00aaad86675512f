#pragma once

#include <QDir>
#include <QWidget>
#include <functional>
#include <string>

namespace kx::bench {

/// The part of the tour in the log window. Each step throws std::runtime_error with the reason when it fails.
class Log_Tour {
 public:
  /// Pictures and files go to @p out; @p answer_with tells what the next file dialog gives.
  Log_Tour(const QDir& out, std::function<void(const QString&)> answer_with);

  /// Opens a demo log and prints its peak power and torque with the true ones beside them.
  void Open_Demo_Log();

  /// Records some seconds of the simulated drive by START and STOP.
  void Record();

  /// Power over engine speed; log, numbers and pictures are left in the folder.
  void Show_And_Export();

 private:
  void Press(const char* button);
  void Choose(const char* entry);
  void Take_Picture(QWidget& form, const char* name) const;

  QDir out_;
  std::function<void(const QString&)> answer_with_;
};

}  // namespace kx::bench
