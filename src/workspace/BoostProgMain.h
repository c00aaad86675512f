#pragma once

#include <QLabel>
#include <QMainWindow>
#include <QTabWidget>

#include <memory>

#include "boxlink/KX_prefs.h"
#include "cards/Frm_TodosII.h"
#include "logging/KX_Log.h"
#include "sensors/KX_Sensor_Editor.h"
#include "workspace/KX_3Dmap.h"
#include "workspace/KX_Config.h"
#include "workspace/KX_Earlier_Tunes.h"
#include "workspace/KX_Setting_Summary.h"
#include "workspace/panels/Analog_Panel.h"
#include "workspace/panels/Communication_Panel.h"
#include "workspace/panels/Compare_Views.h"
#include "workspace/panels/Engine_Marks.h"
#include "workspace/panels/Fuel_Panel.h"
#include "workspace/panels/General_Panel.h"
#include "workspace/panels/Ignition_Panel.h"
#include "workspace/panels/Main_Tabs.h"
#include "workspace/panels/Pwm_Panel.h"
#include "workspace/panels/Table_Control_Panel.h"

namespace kx {

/// The main form: the tune as tabs of tables, the table tools and the link to the box. A shell of panels;
/// making it runs the start of the program.
class BoostProgMain : public QMainWindow {
  Q_OBJECT

 public:
  explicit BoostProgMain(QWidget* parent = nullptr);
  ~BoostProgMain() override;

 protected:
  void closeEvent(QCloseEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  void Make_Layout();
  void Make_Menus();
  void Set_Hooks();
  void Show_Values();
  void Show_Layout();
  void Apply_Availability();
  void Show_Title();
  void Show_Table(Table table);
  void Show_Entries(Table load_table, int load_entry, int rpm_entry);
  void Tab_Changed();
  void Leave_Drags(bool transfers_enabled);
  void Open_Summary();
  void Make_View_Menu();
  void Make_Log_Menu();
  void Open_Log_Window();
  void Offer_Backup();

  Control_Index controls_;
  QTabWidget* sstab_Main_;
  General_Panel* general_;
  Fuel_Panel* fuel_;
  std::vector<Tables_Panel*> tables_;
  std::unique_ptr<Main_Tabs> main_tabs_;
  Table_Control_Panel* tblctrl_;
  Communication_Panel* communication_;
  QLabel* notification_;
  QLabel* preset_status_;
  std::unique_ptr<KX_Config> config_;
  std::unique_ptr<Compare_Views> compare_;
  std::unique_ptr<KX_Setting_Summary> summary_;
  std::unique_ptr<KX_3Dmap> map3d_;
  std::unique_ptr<KX_Sensor_Editor> sensor_editor_;
  std::unique_ptr<KX_Earlier_Tunes> earlier_;
  QAction* direct_start_ = nullptr;
  QAction* sensor_settings_;
  std::unique_ptr<Engine_Marks> marks_;
  std::unique_ptr<KX_prefs> prefs_;
  std::unique_ptr<KX_Log> log_;
  std::unique_ptr<frm_TodosII> todos_;
  bool config_was_visible_ = false;  ///< before the main form was minimised
};

}  // namespace kx
