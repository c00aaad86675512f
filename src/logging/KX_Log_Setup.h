#pragma once

#include <QPushButton>
#include <QWidget>

namespace kx {

class Log_Setup_Signals;
class Log_Setup_Vehicle;
class Setting_Controls;

/// "Log settings": signals and their sensors, the car, units and habits. What is changed shows at once; OK
/// keeps it, Cancel and closing the window go back.
class KX_Log_Setup : public QWidget {
  Q_OBJECT

 public:
  explicit KX_Log_Setup(Setting_Controls& settings, QWidget* parent = nullptr);

  /// Shows the window over @p over, with what Cancel goes back to.
  void Open(QWidget& over);

  /// Names and sensors of the rows.
  void Show_Rows();

  [[nodiscard]] QSize sizeHint() const override;

 protected:
  void closeEvent(QCloseEvent* event) override;

 private:
  QWidget* Make_Buttons();
  void cmd_Advanced_Log_Settings_Click();

  Log_Setup_Signals* signals_;
  Log_Setup_Vehicle* vehicle_;
  QPushButton* cmd_Advanced_Log_Settings_;
};

}  // namespace kx
