#pragma once

#include <QComboBox>
#include <QGroupBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QWidget>
#include <array>

#include "widgets/line_chart.h"
#include "widgets/table_grid.h"
#include "workspace/sensor_editor.h"

class QVBoxLayout;

namespace kx {

/// "Sensor settings": the sensor on each analog input, the curves of all sensors, and new definitions.
class KX_Sensor_Editor : public QWidget {
  Q_OBJECT

 public:
  explicit KX_Sensor_Editor(QWidget* parent = nullptr);
  ~KX_Sensor_Editor() override;

  /// The open file's name stands in the title.
  void Show_Title();

 protected:
  bool event(QEvent* event) override;

 private:
  QWidget* Make_Used_Sensors();
  QWidget* Make_View_Lists();
  QWidget* Make_Try_Out();
  QWidget* Make_Definition();
  QWidget* Make_Linear_Frame();
  QWidget* Make_Table_Frame();
  void Connect_Drag();
  QWidget* Make_Buttons();
  QLineEdit* Box(const QString& name, Shown_Text& text, const QString& tip);
  void Make_Menu(QVBoxLayout* layout);

  void Fill_Lists();
  void Show_Edited();
  [[nodiscard]] bool May_Leave();
  void Show_Chosen();
  void Choose_Stored();
  void cmd_OK_Click();
  [[nodiscard]] Sensor_List List() const;

  std::array<QComboBox*, 4> AN_Combo_{};
  QComboBox* list_combo_;
  QComboBox* EditSensor_Combo_;
  int viewed_list_ = 0;  ///< places in both lists of what is on view
  int viewed_ = -1;
  QWidget* Try_Frame_ = nullptr;
  QWidget* Definition_Frame_ = nullptr;
  QLineEdit* txt_SensorName_ = nullptr;
  QWidget* frame_Linear_ = nullptr;
  QWidget* frame_Table_ = nullptr;
  QPushButton* cmd_Add_sensor_ = nullptr;
  Table_Grid* Sensor_grid_ = nullptr;
  Line_Chart* Sensor_chart_;
};

}  // namespace kx
