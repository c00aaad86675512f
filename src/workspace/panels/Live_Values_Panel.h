#pragma once

#include <QGroupBox>
#include <QLineEdit>
#include <array>

#include "logging/live_log.h"

namespace kx {

/// What the engine does while a log runs: the newest values, beside the tune. Empty without a log.
class Live_Values_Panel : public QGroupBox {
  Q_OBJECT

 public:
  explicit Live_Values_Panel(QWidget* parent = nullptr);

 private:
  void Show_Values();

  std::array<QLineEdit*, live_value_count> fields_{};
};

}  // namespace kx
