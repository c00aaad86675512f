#include "workspace/BoostProgMain.h"

#include <QApplication>
#include <QCloseEvent>
#include <QHBoxLayout>
#include <QMenuBar>
#include <QScrollBar>
#include <QStatusBar>
#include <QTimer>
#include <array>

#include "boxlink/preferences.h"
#include "cards/todos.h"
#include "logging/live_log.h"
#include "logging/log_backup.h"
#include "logging/log_state.h"
#include "platform/seams.h"
#include "settings/brand.h"
#include "settings/history.h"
#include "settings/refresh.h"
#include "settings/tune_being_edited.h"
#include "widgets/elided_label.h"
#include "widgets/file_drop.h"
#include "widgets/form_helpers.h"
#include "widgets/open_form.h"
#include "widgets/point_drag.h"
#include "widgets/program_icon.h"
#include "widgets/scroll_page.h"
#include "widgets/wheel_guard.h"
#include "workspace/box_settings.h"
#include "workspace/file_habits.h"
#include "workspace/panels/Recent_Files_Menu.h"
#include "workspace/panels/Undo_Keys.h"
#include "workspace/setting_file_commands.h"
#include "workspace/shut_down.h"
#include "workspace/start_up.h"
#include "workspace/table_axes.h"
#include "workspace/update_views.h"
#include "workspace/view_hooks.h"

namespace kx {
namespace {

constexpr const char* colour_scale_habit = "colour_scale";  ///< empty: off
constexpr int side_width_in_characters = 46;

}  // namespace

BoostProgMain::BoostProgMain(QWidget* parent) : QMainWindow(parent) {
  setObjectName("BoostProgMain");
  Prepare_Start();
  if (!Program_Name.empty()) QApplication::setApplicationName(Text(Program_Name));
  QApplication::setWindowIcon(Program_Icon());
  Make_Layout();
  Make_Menus();
  main_tabs_ = std::make_unique<Main_Tabs>(*sstab_Main_, tables_);
  main_tabs_->Make_Keys(*this);
  // What is typed in the sensor editor, in the description and in the windows of the log is not the tune's.
  new Undo_Keys([this](const QWidget& focus) { return focus.window() == sensor_editor_.get(); },
                [this] {
                  return !general_->Description_Has_Focus() && QApplication::activeModalWidget() == nullptr &&
                         !(log_ && log_->Owns(QApplication::activeWindow()));
                },
                this);
  Guard_Wheels_In(this);
  Set_Hooks();
  Guarded(Load_Event);
  prefs_ = std::make_unique<KX_prefs>();
  connect(communication_, &Communication_Panel::Transfers_Enabled, prefs_.get(), &KX_prefs::Enable_Apply);
  log_ = std::make_unique<KX_Log>();
  connect(log_.get(), &KX_Log::Start_Enabled, direct_start_, &QAction::setEnabled);
  connect(log_.get(), &KX_Log::Summary_Wanted, this, &BoostProgMain::Open_Summary);
  connect(communication_, &Communication_Panel::Transfers_Enabled, this, &BoostProgMain::Leave_Drags);
  connect(log_.get(), &KX_Log::Entry_Wanted, this, &BoostProgMain::Show_Entries);
  todos_ = std::make_unique<frm_TodosII>();
  connect(communication_, &Communication_Panel::Transfers_Enabled, todos_.get(),
          &frm_TodosII::Enable_Buttons);
  Show_Title();
  main_tabs_->Restore();
  new File_Drop(
      {this, log_.get()}, Can_Open_By_Name,
      [this](const std::string& path) {
        if (Open_By_Name(path)) Open_Log_Window();
      },
      this);
  QTimer::singleShot(0, this, &BoostProgMain::Offer_Backup);
}

BoostProgMain::~BoostProgMain() {
  view_hooks = {};
  refresh_hooks.show_title = {};
  refresh_hooks.show_wait_pointer = {};
  Leave_Todos();
  Reset_Tune_Being_Edited();
}

void BoostProgMain::Make_Layout() {
  sstab_Main_ = new QTabWidget;
  sstab_Main_->setObjectName("sstab_Main");
  sstab_Main_->setDocumentMode(true);
  general_ = new General_Panel;
  fuel_ = new Fuel_Panel(controls_);
  tables_ = {new Ignition_Panel(controls_), fuel_, new Pwm_Panel(controls_), new Analog_Panel(controls_)};
  sstab_Main_->addTab(general_, Text(Main_Caption_Of(main_tab::general)));
  for (std::size_t i = 0; i < tables_.size(); ++i) {
    sstab_Main_->addTab(tables_[i], Text(Main_Caption_Of(static_cast<int>(i) + 1)));
    connect(tables_[i], &QTabWidget::currentChanged, this, &BoostProgMain::Tab_Changed);
  }
  connect(sstab_Main_, &QTabWidget::currentChanged, this, &BoostProgMain::Tab_Changed);

  tblctrl_ = new Table_Control_Panel;
  communication_ = new Communication_Panel;
  auto* side = new QVBoxLayout;
  side->addWidget(communication_, 1);
  side->addWidget(tblctrl_);
  auto* side_widget = new QWidget;
  side_widget->setLayout(side);
  side->setContentsMargins(0, 0, 0, 0);
  auto* side_page = new Scroll_Page(side_widget);
  side_page->setObjectName("side_page");
  const int bar = side_page->verticalScrollBar()->sizeHint().width();
  side_page->setFixedWidth(std::max(fontMetrics().averageCharWidth() * side_width_in_characters,
                                    side_widget->minimumSizeHint().width() + bar));

  auto* all = new QWidget;
  auto* layout = new QHBoxLayout(all);
  layout->addWidget(sstab_Main_, 1);
  layout->addWidget(side_page);
  setCentralWidget(all);
  notification_ = new QLabel;
  notification_->setObjectName("Label_Notification");
  preset_status_ = new Elided_Label("preset_status");
  Follow(preset_status_, preset_status, [](QLabel* label, const QString& text) { label->setText(text); });
  statusBar()->addWidget(notification_);
  statusBar()->addWidget(preset_status_);
  auto* history = new QLabel;
  history->setObjectName("history_status");
  Follow(history, history_status, [](QLabel* label, const QString& text) { label->setText(text); });
  statusBar()->addWidget(history);
  statusBar()->addWidget(Notice_Line("notice_text", Notices::all), 1);
  config_ = std::make_unique<KX_Config>(controls_, *this);
  summary_ = std::make_unique<KX_Setting_Summary>();
  map3d_ = std::make_unique<KX_3Dmap>();
  sensor_editor_ = std::make_unique<KX_Sensor_Editor>();
  earlier_ = std::make_unique<KX_Earlier_Tunes>();
  connect(config_.get(), &KX_Config::Summary_Wanted, this, &BoostProgMain::Open_Summary);
}

void BoostProgMain::Make_Menus() {
  QMenu* file = menuBar()->addMenu("&File");
  Add_Entry(file, "File_open", "&Open...", QKeySequence::Open, File_open_Click);
  auto* recent = new Recent_Files_Menu(file);
  file->addMenu(recent);
  connect(recent, &Recent_Files_Menu::Log_Opened, this, &BoostProgMain::Open_Log_Window);
  QAction* earlier = file->addAction("&Earlier tunes...");
  earlier->setObjectName("File_earlier");
  On_Trigger(earlier, [this] {
    earlier_->Show_List();
    Open_Form(*earlier_, *this);
  });
  file->addSeparator();
  Add_Entry(file, "File_save", "&Save", QKeySequence::Save, File_save_Click);
  Add_Entry(file, "File_save_As", "Save &As...", QKeySequence("Ctrl+Shift+S"), File_save_As_Click);
  file->addSeparator();
  QAction* leave = file->addAction("E&xit");
  leave->setObjectName("File_exit");
  leave->setShortcut(QKeySequence("Ctrl+Q"));
  connect(leave, &QAction::triggered, this, &QWidget::close);
  QMenu* edit = menuBar()->addMenu("&Edit");
  // The tune's from every form, not only from this one.
  for (QAction* action : {Add_Entry(edit, "edit_undo", "&Undo", undo_keys, Undo),
                          Add_Entry(edit, "edit_redo", "&Redo", redo_keys, Redo)}) {
    action->setShortcutContext(Qt::ApplicationShortcut);
  }
  Make_View_Menu();
  QMenu* settings = menuBar()->addMenu("&Settings");
  QAction* config = settings->addAction("&Box settings...", QKeySequence("F2"), this,
                                        [this] { Open_Form(*config_, *this); });
  config->setObjectName("Box_Settings");
  QAction* prefs =
      settings->addAction("&PC settings...", QKeySequence("F4"), this, [this] { Open_Form(*prefs_, *this); });
  prefs->setObjectName("PC_Settings");
  QAction* todos = settings->addAction("&Todos II settings...", QKeySequence("Shift+F4"), this,
                                       [this] { Open_Form(*todos_, *this); });
  todos->setObjectName("Todos_Settings");
  sensor_settings_ = settings->addAction("S&ensor settings...", QKeySequence("F6"), this,
                                         [this] { Open_Form(*sensor_editor_, *this); });
  sensor_settings_->setObjectName("Sensor_Settings");
  QAction* map =
      settings->addAction("3D &map...", QKeySequence("F7"), this, [this] { Open_Form(*map3d_, *this); });
  map->setObjectName("Map_3D");
  QAction* next = settings->addAction("&Next card interface");
  next->setObjectName("toggle_interface");
  next->setShortcut(QKeySequence("Ctrl+T"));
  On_Trigger(next, [this] {
    toggle_interface();
    prefs_->Show_Interface();
  });
  Add_Entry(settings, "toggle_interface_box_chip", "Other side of the &link panel",
            QKeySequence("Ctrl+Shift+T"), toggle_interface_box_chip);
  QAction* summary =
      settings->addAction("Setting &summary...", QKeySequence("F3"), this, &BoostProgMain::Open_Summary);
  summary->setObjectName("Setting_Summary");
  Make_Log_Menu();
  compare_ = std::make_unique<Compare_Views>(*this, *sstab_Main_, tables_, *config_);
  QMenu* help = menuBar()->addMenu("&Help");
  help->menuAction()->setObjectName("Help_menu");
  help->menuAction()->setVisible(Brand_Has_Help_Menu());
  Add_Entry(help, "Help_file", "&Manual", QKeySequence::HelpContents, Open_Help_File);
  QAction* link = Add_Entry(help, "Help_wwwlink", QString::fromStdString(Link_Caption), {}, Open_Help_Link);
  link->setEnabled(!Download_Link.empty());
  Add_Entry(help, "Help_about", "&About", {}, Show_About);
}

void BoostProgMain::Make_View_Menu() {
  QMenu* view = menuBar()->addMenu("View");
  QAction* colours = view->addAction("&Colour scale");
  colours->setObjectName("Colour_scale");
  colours->setCheckable(true);
  colours->setToolTip("Colours behind the values of every table, from the smallest to the largest");
  connect(colours, &QAction::toggled, this, [](bool shown) {
    platform::seams.desktop->Remember(colour_scale_habit, shown ? "1" : "");
    for (QWidget* widget : QApplication::allWidgets()) {
      if (auto* grid = qobject_cast<Table_Grid*>(widget)) grid->Show_Colour_Scale(shown);
    }
  });
  colours->setChecked(!platform::seams.desktop->Remembered(colour_scale_habit).empty());
}

void BoostProgMain::Make_Log_Menu() {
  QMenu* log = menuBar()->addMenu("&Log");
  QAction* window =
      log->addAction("&Log window...", QKeySequence("Shift+F9"), this, &BoostProgMain::Open_Log_Window);
  window->setObjectName("log_window");
  marks_ = std::make_unique<Engine_Marks>(tables_, log);
  QAction* hits =
      log->addAction("&Hit map...", QKeySequence("Shift+F7"), this, [this] { log_->Open_Hit_Map(*this); });
  hits->setObjectName("Hit_Map");
  QAction* start = log->addAction("&Start or stop a log");
  start->setObjectName("Direct_startlog");
  start->setShortcut(QKeySequence("F9"));
  direct_start_ = start;
  On_Trigger(start, [this] {
    cmd_Open_Com_Click();
    Open_Log_Window();
  });
}

void BoostProgMain::Set_Hooks() {
  Install_Refresh_Hooks();
  view_hooks.show_values = [this] { Show_Values(); };
  view_hooks.show_layout = [this] { Show_Layout(); };
  view_hooks.show_table = [this](Table table) { Show_Table(table); };
  view_hooks.show_scalar = [this](const Scalar_Row& row) {
    controls_.Show(row);
    earlier_->Show_Differences();
  };
  view_hooks.show_choice = [this](const Choice_Row& row) {
    controls_.Show(row);
    earlier_->Show_Differences();
  };
  view_hooks.show_differences = [this] { Show_Values(); };
  view_hooks.show_temp_chart = [this] { fuel_->Show_Temperature_Chart(); };
  refresh_hooks.show_title = [this] { Show_Title(); };
  refresh_hooks.show_wait_pointer = [this](bool wait) { wait ? setCursor(Qt::WaitCursor) : unsetCursor(); };
}

void BoostProgMain::Show_Values() {
  general_->Show_Values();
  communication_->Show_Values();
  for (Tables_Panel* panel : tables_) panel->Show_Values();
  controls_.Show_All();
  Apply_Availability();
  compare_->Show();
  map3d_->Follow_Tables();
  earlier_->Show_Differences();
  if (log_) log_->Follow_Tables();
}

/// What the preset and the tune make available: depends on values and layout alike, so both show it.
void BoostProgMain::Apply_Availability() {
  for (Tables_Panel* panel : tables_) panel->Show_Layout();
  const Config_State config_state = Config_Of_Tune();
  sstab_Main_->setTabVisible(main_tab::fuel, config_state.SSTab_Fuel);
  sstab_Main_->setTabVisible(main_tab::pwm, config_state.SSTab_PWM);
  sensor_settings_->setVisible(config_state.Sensor_Settings);
  sensor_settings_->setEnabled(config_state.Sensor_Settings);
  config_->Show_Layout();
  tblctrl_->setVisible(View_Of_Tune().tblctrl);
}

void BoostProgMain::Show_Layout() {
  for (Tables_Panel* panel : tables_) panel->Show_Values();
  Apply_Availability();
  communication_->Show_Layout();
  map3d_->Follow_Tables();
  if (log_) log_->Follow_Tables();
}

void BoostProgMain::Show_Title() {
  setWindowTitle(Text(Title_Prefix + Title_Text()));
  general_->Show_Values();
  config_->Show_Title();
  sensor_editor_->Show_Title();
}

void BoostProgMain::Show_Table(Table table) {
  for (Tables_Panel* panel : tables_) {
    if (Table_Page* page = panel->Page_Of(table)) page->Show_Values();
  }
  map3d_->Follow_Tables();
  earlier_->Show_Differences();
}

/// From a cell of the hit map: the cursors stand on its entries, and the table on show is that of the load.
void BoostProgMain::Show_Entries(Table load_table, int load_entry, int rpm_entry) {
  main_tabs_->Go_To_Entry(Rpm_Table_Beside(load_table), rpm_entry);
  if (load_entry > 0) main_tabs_->Go_To_Entry(load_table, load_entry);
  activateWindow();
}

void BoostProgMain::Tab_Changed() {
  main_tabs_->Note_Shown();
  Guarded(Shown_Tab_Changed);
  if (marks_) marks_->Show();
}

/// What begins works on the tune as it is now, not on one that is half moved.
void BoostProgMain::Leave_Drags(bool transfers_enabled) {
  if (transfers_enabled) return;
  for (auto* chart : findChildren<Line_Chart*>()) chart->Drag().Leave();
}

void BoostProgMain::Open_Summary() {
  summary_->Show_With_Box_Settings();
  Open_Form(*summary_, *this);
}

void BoostProgMain::Open_Log_Window() { log_->Open(*this); }

/// What a killed program has left of its tune and its log comes on show when the user wants it.
void BoostProgMain::Offer_Backup() {
  Guarded(Offer_Left_Tunes);
  Guarded(Offer_Unfinished_Backup);
  if (Log_File_Present && Log_File_Unsaved) Open_Log_Window();
}

/// Box settings go down and come back with the main form.
void BoostProgMain::changeEvent(QEvent* event) {
  QMainWindow::changeEvent(event);
  if (event->type() != QEvent::WindowStateChange || config_ == nullptr) return;
  if (isMinimized()) {
    config_was_visible_ = config_was_visible_ || config_->isVisible();
    config_->hide();
  } else if (config_was_visible_) {
    config_was_visible_ = false;
    config_->show();
  }
}

void BoostProgMain::closeEvent(QCloseEvent* event) {
  notification_->setText("Remove MapCard from reader to close the program");
  notification_->repaint();
  Begin_Shutdown();
  main_tabs_->Remember();
  earlier_->close();
  config_->close();
  summary_->close();
  compare_->Close_List();
  map3d_->close();
  sensor_editor_->close();
  prefs_->close();
  log_->Leave();
  todos_->close();
  event->accept();
}

}  // namespace kx
