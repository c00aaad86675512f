#pragma once

#include <QButtonGroup>
#include <QLabel>
#include <QPushButton>
#include <optional>

#include "logging/panels/Setting_Controls.h"
#include "widgets/log_chart.h"

namespace kx {

/// The chart of KX_Log with its two scales, the gear of the calculations and the buttons that move the
/// stretch on show.
class Log_Chart_Panel : public QWidget {
  Q_OBJECT

 public:
  explicit Log_Chart_Panel(Setting_Controls& settings, QWidget* parent = nullptr);

  /// Update_Chart: the ticked signals over the stretch.
  void Update_Chart();

  /// No point is read out.
  void Forget_Point();

  /// Chart, or the notice that the log goes to the file alone.
  void Show_Graph(bool shown);

  [[nodiscard]] Log_Chart& Chart() { return *MSChart1_; }

  /// The button "Redraw (F11)", which a log that runs disables.
  [[nodiscard]] QPushButton& Redraw_Button() { return *view_logg_; }

 private:
  QWidget* Make_Scales(Setting_Controls& settings);
  QWidget* Make_Gears(Setting_Controls& settings);
  QWidget* Make_Buttons();
  void Connect_Gestures();
  void Show_Mark();

  Log_Chart* MSChart1_;
  QLabel* label_NoGraph_;
  QPushButton* view_logg_;
  std::optional<int> point_;  ///< row of the log that is read out
};

}  // namespace kx
