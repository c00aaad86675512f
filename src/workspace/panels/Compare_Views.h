#pragma once

#include <QLabel>
#include <QMainWindow>
#include <QTabWidget>
#include <memory>
#include <vector>

#include "workspace/KX_Compare.h"
#include "workspace/KX_Config.h"
#include "workspace/panels/Compare_Menu.h"
#include "workspace/panels/Tables_Panel.h"

namespace kx {

/// What the main form shows of the comparison with the reference beside the marks: menu, counts on the tabs,
/// status, the list, and the way from the list to a place.
class Compare_Views : public QObject {
  Q_OBJECT

 public:
  /// Adds its menu to the bar of @p form and its text to the status line. @p tables are the tabs of @p tabs
  /// behind the first.
  Compare_Views(QMainWindow& form, QTabWidget& tabs, std::vector<Tables_Panel*> tables, KX_Config& config);

  /// From the differences as last reckoned.
  void Show();

  void Close_List() { list_.close(); }

 private:
  void Make_Menu();
  void Show_Counts();
  void Go_To(const Difference& difference);
  QWidget* Shown_Place(const Difference& difference);
  QWidget* Show_Entry(const Difference& difference);
  QWidget* Show_Control(const Difference& difference);

  QMainWindow& form_;
  QTabWidget& tabs_;
  std::vector<Tables_Panel*> tables_;
  KX_Config& config_;
  Compare_Menu* menu_;
  QLabel* status_;
  KX_Compare list_;
};

}  // namespace kx
