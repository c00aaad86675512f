#pragma once

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QWidget>
#include <array>

#include "logging/log_signals.h"

namespace kx {

/// The rows of KX_Log_Setup: each signal with the user's name for it and the sensor that converts it.
class Log_Setup_Signals : public QWidget {
  Q_OBJECT

 public:
  explicit Log_Setup_Signals(QWidget* parent = nullptr);

  /// Names, sensors and which rows there are, from log_settings and Log_Sens_Def_Tab.
  void Show_Rows();

 private:
  struct Row {
    QLabel* label_SignalName;
    QLineEdit* txt_CustomSignalName;
    QComboBox* Log_Sensor_combo;
  };
  [[nodiscard]] static Row Make_Row(int row);
  static void Show_Row(const Row& widgets, int row, const QStringList& sensors);

  std::array<Row, signal_rows> rows_;
};

}  // namespace kx
