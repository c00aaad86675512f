#pragma once

#include <QMainWindow>
#include <QPlainTextEdit>

#include "widgets/log_chart.h"

namespace kx {

/// "RPM graph": the ticked signals of the stretch that KX_Log shows, over engine speed, which is what a power
/// curve looks like.
class KX_RPM : public QMainWindow {
  Q_OBJECT

 public:
  explicit KX_RPM(QWidget* parent = nullptr);

  /// Draws the stretch that the log window shows now.
  void Show_RPM();

 private:
  void Make_Menu();
  void Clear_LineTextWindow();
  void Show_All_Point_Values(std::size_t index);

  Log_Chart* MSChart2_;
  QPlainTextEdit* line_data_;
};

}  // namespace kx
