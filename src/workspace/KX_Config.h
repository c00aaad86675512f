#pragma once

#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QPushButton>

#include "widgets/scroll_page.h"
#include "workspace/panels/Control_Group.h"

namespace kx {

/// "Box settings": the configuration bits of the tune and the model preset. Every control writes at once.
class KX_Config : public QWidget {
  Q_OBJECT

 public:
  /// @p main_form comes to the front when the user is done.
  KX_Config(Control_Index& index, QWidget& main_form);

  /// Preset list, dataset, what is enabled, and the title, after Update_All and Update_Tabs.
  void Show_Layout();

  /// Brings a control on show, the advanced settings included, and returns it; null when there is none of
  /// that name.
  QWidget* Shown_Control(const QString& name);

  /// The title follows the current file's.
  void Show_Title();

 signals:
  /// The user asks for the setting summary.
  void Summary_Wanted();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  QWidget* Make_Standard(Control_Index& index);
  QWidget* Make_Advanced(Control_Index& index);
  QWidget* Make_In_Boost(Control_Index& index);
  QWidget* Make_Development();
  void Make_Preset_List();
  void Add_Columns(QWidget* frame, std::initializer_list<QWidget*> left,
                   std::initializer_list<QWidget*> right);
  void Set_Columns(bool two);
  void Make_Rpm_Indicator(Control_Index& index);
  void View_Advanced();
  void Show_Presets();
  QMenuBar* Make_Menu();
  bool Refuses(QEvent& event);
  QLineEdit& Gear_Shift();
  void Take_Rpm_Indicator();
  void Cut_To_Length(const QString& typed);

  Control_Index& index_;
  Scroll_Page* area_;
  std::vector<QBoxLayout*> columns_;
  int two_columns_width_ = 0;  ///< from here on the frames stand in two columns
  QComboBox* presets_;
  QPlainTextEdit* raw_text_;
  QLabel* dataset_;
  Control_Group* table_unit_;
  Control_Group* indicator_;
  Control_Group* resolution_;
  Control_Group* pulses_;
  Control_Group* sequential_;
  Control_Group* in_boost_;
  QGroupBox* advanced_;
  QGroupBox* development_;
  QPushButton* view_advanced_;
};

}  // namespace kx
