#pragma once

#include <QMainWindow>
#include <QPlainTextEdit>
#include <memory>

#include "logging/panels/Setting_Controls.h"
#include "workspace/tables.h"

namespace kx {

class KX_Hit_Map;
class KX_Log_Setup;
class KX_RPM;
class Log_Chart_Panel;
class Log_File_Panel;
class Log_Live_Panel;
class Log_Signal_List;
class Maf_Text_Window;

/// The log window: makes logs, opens and saves them and shows them as a chart. A shell of panels.
class KX_Log : public QMainWindow {
  Q_OBJECT

 public:
  explicit KX_Log(QWidget* parent = nullptr);
  ~KX_Log() override;

  /// log_window: shows the window over @p main_form at the size that the configuration keeps.
  void Open(QWidget& main_form);

  /// The hit map, over @p under.
  void Open_Hit_Map(QWidget& under);

  /// The axes of the tune have changed: the hit map goes along.
  void Follow_Tables();

  /// Keeps the size of the window and takes it and all that belong to it off the screen, without a question.
  void Leave();

  /// True for this window and those that belong to it: keys of text, such as undo, are theirs.
  [[nodiscard]] bool Owns(const QWidget* window) const;

 signals:
  /// The user asks for the setting summary.
  void Summary_Wanted();

  /// START and STOP work, or not: one is under way.
  void Start_Enabled(bool enabled);

  /// The user asks for the entries that a cell of the hit map belongs to, from 1; a load entry of 0 is none.
  void Entry_Wanted(kx::Table load_table, int load_entry, int rpm_entry);

 protected:
  void closeEvent(QCloseEvent* event) override;

 private:
  QWidget* Make_Side();
  QWidget* Make_Tools();
  void Make_Menus();
  void Make_View_Menu();
  void Set_Hooks();
  void Show_Settings();
  void Show_Names();
  void Show_File();
  void Update_Chart();
  void Show_Live();
  void Show_Rpm_Graph();
  void Forget_Points();
  void Export_Picture();
  void Get_Default_Window_Size();
  void Save_Log_Window_Size();

  Setting_Controls settings_;
  Log_Live_Panel* live_;
  Log_Chart_Panel* chart_;
  Log_Signal_List* signals_;
  Log_File_Panel* files_;
  std::unique_ptr<KX_Log_Setup> setup_;
  std::unique_ptr<KX_RPM> rpm_;
  std::unique_ptr<KX_Hit_Map> hits_;
  std::unique_ptr<Maf_Text_Window> maf_;
  std::vector<QAction*> file_entries_;  ///< what would take the place of a log that runs
  QAction* start_entry_ = nullptr;
  QString shown_log_;  ///< name of the log whose point may be read out
};

}  // namespace kx
