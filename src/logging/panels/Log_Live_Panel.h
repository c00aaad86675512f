#pragma once

#include <QFrame>
#include <QLabel>
#include <QPushButton>

#include "logging/panels/Setting_Controls.h"

namespace kx {

/// The upper line of KX_Log: START and STOP, the two alerts, large enough for the driver's seat, and what the
/// live chart shows.
class Log_Live_Panel : public QWidget {
  Q_OBJECT

 public:
  explicit Log_Live_Panel(Setting_Controls& settings, QWidget* parent = nullptr);

  /// From Shown_Live_Log.
  void Show_State();

 signals:
  /// The user has emptied the log.
  void Log_Cleared();

 private:
  QFrame* Make_Interval(Setting_Controls& settings);

  QPushButton* cmd_Open_Com_;
  QPushButton* cmd_Clear_Logg_;
  QLabel* txt_Logging_alert_;
  QLabel* txt_NoConnection_alert_;
};

}  // namespace kx
