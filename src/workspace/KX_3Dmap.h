#pragma once

#include <QButtonGroup>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QStackedWidget>
#include <QTimer>
#include <QWidget>

#include "widgets/surface_chart.h"

namespace kx {

/// "3D map": a load table times its RPM table as a surface to turn, or as numbers.
class KX_3Dmap : public QWidget {
  Q_OBJECT

 public:
  explicit KX_3Dmap(QWidget* parent = nullptr);

  /// Shows the tables as they are now; nothing while the form is closed.
  void Follow_Tables();

 protected:
  void showEvent(QShowEvent* event) override;
  void hideEvent(QHideEvent* event) override;

 private:
  QWidget* Make_Options();
  QWidget* Make_View_Line();
  QPushButton* Turn_Button(const QString& name, const QString& caption, const QString& tip, double step);
  void Update_3D();
  void cmd_DrawGraph_Click();
  void cmd_ShowData_Click();
  void Command3_Click();
  void Command4_Click();
  void Take_Angle(QLineEdit* box, double Surface_View::*angle, const std::string& what);
  void Timer1_Tick();
  void Turn(QPushButton* button, double step);
  void Show_View();
  [[nodiscard]] std::string Picture();

  Surface_Chart* Fuel3dChart_;
  QPlainTextEdit* Text1_;
  QStackedWidget* views_;
  QLabel* Label1_;
  QButtonGroup* Option1_;  ///< ids are Map
  QButtonGroup* Option2_;
  QLineEdit* Text2_;
  QLineEdit* Text3_;
  QButtonGroup* turn_buttons_;
  QTimer* Timer1_;
  double turn_ = 0;  ///< degrees a tick
};

}  // namespace kx
