#pragma once

#include <QGroupBox>
#include <QWidget>

#include "logging/panels/Setting_Controls.h"

namespace kx {

/// The car, the units and the habits of KX_Log_Setup, with frame_Advanced.
class Log_Setup_Vehicle : public QWidget {
  Q_OBJECT

 public:
  explicit Log_Setup_Vehicle(Setting_Controls& settings, QWidget* parent = nullptr);

  [[nodiscard]] QGroupBox& Advanced() { return *frame_Advanced_; }

 private:
  QWidget* Make_Car(Setting_Controls& settings);
  QWidget* Make_Gearing(Setting_Controls& settings);
  QWidget* Make_Units(Setting_Controls& settings);
  QWidget* Make_Files(Setting_Controls& settings);
  QGroupBox* Make_Advanced(Setting_Controls& settings);

  QGroupBox* frame_Advanced_;
};

}  // namespace kx
