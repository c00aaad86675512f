#pragma once

#include <QMainWindow>
#include <QPlainTextEdit>

namespace kx {

/// "Setting summary viewer": the tune as a report to read, save and print.
class KX_Setting_Summary : public QMainWindow {
  Q_OBJECT

 public:
  explicit KX_Setting_Summary(QWidget* parent = nullptr);

  /// Builds the report of the present tune.
  void Show_With_Box_Settings();

 private:
  void Make_Menus();
  void Print();

  QPlainTextEdit* text_;
};

}  // namespace kx
