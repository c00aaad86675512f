#pragma once

#include <QMainWindow>
#include <QPlainTextEdit>
#include <optional>

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

  /// No point is read out: the rows are another log's.
  void Forget_Point();

 private:
  void Make_Menu();
  void Clear_LineTextWindow();
  void Show_All_Point_Values(int row);
  void Show_Mark();

  Log_Chart* MSChart2_;
  QPlainTextEdit* line_data_;
  std::optional<int> point_;  ///< row of the log that is read out; it stays while a log runs on
};

}  // namespace kx
