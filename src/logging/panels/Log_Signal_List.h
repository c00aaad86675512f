#pragma once

#include <QCheckBox>
#include <QGridLayout>
#include <QScrollArea>
#include <QWidget>
#include <array>

#include "logging/log_signals.h"

namespace kx {

/// The tick boxes of KX_Log, each beside the colour of its line: what the chart shows, and against which
/// scale. Only the rows that the settings show.
class Log_Signal_List : public QWidget {
  Q_OBJECT

 public:
  explicit Log_Signal_List(QWidget* parent = nullptr);

  /// Names, units, ticks and which rows there are, from log_settings.
  void Show_Names();

 private:
  void Add_Row(int row, QGridLayout* layout);

  QCheckBox* all_;
  QScrollArea* page_;
  std::array<QCheckBox*, signal_rows> view_{};
  std::array<QCheckBox*, signal_rows> secondary_{};
};

}  // namespace kx
