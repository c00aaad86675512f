#include "logging/KX_Log.h"

#include <QCloseEvent>
#include <QHBoxLayout>
#include <QMenuBar>
#include <QSplitter>
#include <QStatusBar>
#include <QTabWidget>
#include <QVBoxLayout>

#include "logging/KX_Hit_Map.h"
#include "logging/KX_Log_Setup.h"
#include "logging/KX_RPM.h"
#include "logging/chart_export.h"
#include "logging/live_log.h"
#include "logging/log_files.h"
#include "logging/log_setup_commands.h"
#include "logging/log_state.h"
#include "logging/panels/Log_Chart_Panel.h"
#include "logging/panels/Log_File_Panel.h"
#include "logging/panels/Log_Live_Panel.h"
#include "logging/panels/Log_Signal_List.h"
#include "logging/panels/Log_Stretch.h"
#include "logging/panels/Maf_Text_Window.h"
#include "settings/ini_file_adm.h"
#include "widgets/form_helpers.h"
#include "widgets/open_form.h"
#include "widgets/wheel_guard.h"
#include "widgets/window_place.h"
#include "workspace/log_settings_export.h"

namespace kx {
namespace {

constexpr const char* size_key = "Log_Window_Size";
constexpr int size_fields = 5;  ///< left, top, width, height, maximised
constexpr int side_width_in_characters = 36;

QPushButton* Button(const char* name, const QString& caption, const QString& tip) {
  auto* button = new QPushButton(caption);
  button->setObjectName(name);
  button->setToolTip(tip);
  return button;
}

QPlainTextEdit* Line_Data() {
  auto* text = new QPlainTextEdit;
  text->setObjectName("txt_LineData");
  text->setToolTip("Values of the ticked signals where you clicked");
  text->setReadOnly(true);
  Reset_Chart_View();
  Follow(text, txt_LineData, [](QPlainTextEdit* view, const QString& shown) { view->setPlainText(shown); });
  return text;
}

}  // namespace

KX_Log::KX_Log(QWidget* parent)
    : QMainWindow(parent, Qt::Window),
      live_(new Log_Live_Panel(settings_)),
      chart_(new Log_Chart_Panel(settings_)),
      signals_(new Log_Signal_List),
      files_(new Log_File_Panel(settings_)),
      setup_(std::make_unique<KX_Log_Setup>(settings_)),
      maf_(std::make_unique<Maf_Text_Window>()) {
  setObjectName("KX_Log");
  Leave_Place_To(*this);
  auto* work = new QWidget;
  auto* column = new QVBoxLayout(work);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(2);
  column->addWidget(chart_, 1);
  column->addWidget(Make_Tools());
  auto* halves = new QSplitter;
  halves->setObjectName("side_splitter");
  halves->addWidget(Make_Side());
  halves->addWidget(work);
  halves->setStretchFactor(1, 1);
  halves->setSizes({fontMetrics().averageCharWidth() * side_width_in_characters, 1000});
  auto* all = new QWidget;
  auto* layout = new QVBoxLayout(all);
  layout->setContentsMargins(4, 4, 4, 4);
  layout->setSpacing(4);
  layout->addWidget(live_);
  layout->addWidget(halves, 1);
  setCentralWidget(all);
  Make_Menus();
  Make_View_Menu();
  Guard_Wheels_In(this);
  resize(fontMetrics().averageCharWidth() * 150, fontMetrics().height() * 40);
  statusBar()->addWidget(Notice_Line("log_notice", Notices::all), 1);
  connect(live_, &Log_Live_Panel::Log_Cleared, this, [this] {
    Forget_Points();
    Clear_FileTextWindow();
  });
  Set_Hooks();
  Guarded(Load_Log_Window);
  rpm_ = std::make_unique<KX_RPM>();
  hits_ = std::make_unique<KX_Hit_Map>();
  connect(hits_.get(), &KX_Hit_Map::Entry_Wanted, this, &KX_Log::Entry_Wanted);
}

KX_Log::~KX_Log() {
  log_view_hooks = {};
  live_log_hooks.show = {};
}

QWidget* KX_Log::Make_Side() {
  auto* tabs = new QTabWidget;
  tabs->setObjectName("side_tabs");
  tabs->setDocumentMode(true);
  tabs->addTab(signals_, "Signals");
  tabs->addTab(files_, "Files");
  auto* side = new QSplitter(Qt::Vertical);
  side->addWidget(tabs);
  side->addWidget(Line_Data());
  side->setStretchFactor(0, 4);
  side->setStretchFactor(1, 1);
  return side;
}

QWidget* KX_Log::Make_Tools() {
  auto* tools = new QWidget;
  auto* layout = new QHBoxLayout(tools);
  layout->setContentsMargins(0, 0, 0, 0);
  auto* rpm = Button("Command9", "RPM graph", "The ticked signals of this stretch over engine speed");
  On_Click(rpm, [this] { Show_Rpm_Graph(); });
  auto* maf =
      Button("cmd_MAF_Sim", "MAF-Sim",
             "Averages of the air-mass meter in this stretch for each row of the MAF-simulation table");
  On_Click(maf, [this] { maf_->Toggle(*this); });
  auto* settings = Button("cmd_Export_Log_kxs_settings", "Use box settings",
                          "Export current box settings in this log file, to the main program");
  On_Click(settings, cmd_Export_Log_kxs_settings_Click);
  for (QPushButton* button : {rpm, maf, settings}) layout->addWidget(button);
  layout->addStretch(1);
  return tools;
}

void KX_Log::Make_Menus() {
  QMenu* file = menuBar()->addMenu("&File");
  file_entries_ = {Add_Entry(file, "Log_File_Open", "&Open...", QKeySequence::Open, Log_File_Open_Click),
                   Add_Entry(file, "Log_File_Save", "&Save", QKeySequence::Save, Log_File_Save_Click),
                   Add_Entry(file, "Log_File_Save_As", "Save &As...", QKeySequence("Ctrl+Shift+S"),
                             Log_File_Save_As_Click)};
  file->addSeparator();
  file_entries_.insert(
      file_entries_.end(),
      {Add_Entry(file, "Open_Default_File", "Open &default settings", {}, Open_Default_File_Click),
       Add_Entry(file, "Restore_Default_File", "&Restore default settings", {}, Restore_Default_File_Click),
       Add_Entry(file, "Save_as_Default_File", "Save as de&fault settings", {}, Save_as_Default_File_Click)});
  file->addSeparator();
  Add_Entry(file, "Log_Picture_File_Save_As", "&Export chart...", QKeySequence("Ctrl+E"),
            [this] { Export_Picture(); });
  Add_Entry(file, "print", "&Print...", QKeySequence::Print,
            [this] { Print_With_Dialog(chart_->Chart(), this); });
  file->addSeparator();
  QAction* leave = file->addAction("&Close", this, &QWidget::close);
  leave->setObjectName("Log_Close");
  QMenu* log = menuBar()->addMenu("&Log");
  start_entry_ = Add_Entry(log, "Start_Logg", "&Start or stop", QKeySequence("F9"), cmd_Open_Com_Click);
  Add_Entry(log, "Log_Preferenses", "Log se&ttings...", QKeySequence("F2"), [this] { setup_->Open(*this); });
  Add_Entry(log, "Omport_default_sensors", "&Import default sensors", {}, cmd_Import_Default_Sensors_Click);
}

void KX_Log::Make_View_Menu() {
  QMenu* view = menuBar()->addMenu("&View");
  Add_Entry(view, "Redraw", "&Redraw", QKeySequence("F11"), [] { Show_Log(log_view_hooks.show_chart); });
  Add_Entry(view, "Restore_signals_view", "Show all &signals", {}, Restore_signals_view_Click);
  Add_Entry(view, "rpm_graph_entry", "RPM &graph...", QKeySequence("F6"), [this] { Show_Rpm_Graph(); });
  Add_Entry(view, "Log_Hit_Map", "&Hit map...", QKeySequence("Shift+F7"), [this] { Open_Hit_Map(*this); });
  Add_Entry(view, "cmd_MAF_Sim_menu", "&MAF-Sim", {}, [this] { maf_->Toggle(*this); });
  QAction* summary = view->addAction("Setting s&ummary...", this, &KX_Log::Summary_Wanted);
  summary->setObjectName("Setting_Summary");
  summary->setShortcut(QKeySequence("F3"));
}

void KX_Log::Set_Hooks() {
  log_view_hooks.show_settings = [this] { Show_Settings(); };
  log_view_hooks.show_names = [this] { Show_Names(); };
  log_view_hooks.show_file = [this] { Show_File(); };
  log_view_hooks.show_chart = [this] { Update_Chart(); };
  log_view_hooks.show_folder = [this] { files_->Show_Folder(); };
  log_view_hooks.show_preview = [this] { files_->Show_Preview(); };
  live_log_hooks.show = [this] { Show_Live(); };
}

void KX_Log::Show_Settings() {
  settings_.Show();
  Show_Names();
  Show_File();
}

void KX_Log::Show_Names() {
  signals_->Show_Names();
  setup_->Show_Rows();
  Follow_Tables();
}

void KX_Log::Show_File() {
  setWindowTitle(Text(Log_Window_Caption()));
  files_->Show_File();
  settings_.Show();
  if (shown_log_ == Text(Log_File_Name)) return;
  shown_log_ = Text(Log_File_Name);
  Forget_Points();
}

void KX_Log::Forget_Points() {
  chart_->Forget_Point();
  if (rpm_) rpm_->Forget_Point();
}

void KX_Log::Update_Chart() {
  chart_->Update_Chart();
  if (rpm_ && rpm_->isVisible()) rpm_->Show_RPM();
  Follow_Tables();
}

void KX_Log::Open_Hit_Map(QWidget& under) { Open_Form(*hits_, under); }

void KX_Log::Follow_Tables() {
  if (hits_) hits_->Follow_Log();
}

void KX_Log::Show_Live() {
  const Live_Log_View view = Shown_Live_Log();
  live_->Show_State();
  chart_->Show_Graph(!view.only_to_file);
  chart_->Redraw_Button().setEnabled(view.log_buttons_enabled);
  for (QAction* entry : file_entries_) entry->setEnabled(view.log_buttons_enabled);
  start_entry_->setEnabled(view.button_enabled);
  emit Start_Enabled(view.button_enabled);
}

void KX_Log::Show_Rpm_Graph() {
  rpm_->Show_RPM();
  Open_Form(*rpm_, *this);
}

void KX_Log::Export_Picture() {
  Export_Chart(Point_Head::time,
               [this](const std::string& format) { return Picture_Of(chart_->Chart(), Text(format)); });
}

void KX_Log::Open(QWidget& main_form) {
  const bool opens = !isVisible();
  Open_Form(*this, main_form);
  if (opens) Guarded([this] { Get_Default_Window_Size(); });
}

void KX_Log::Get_Default_Window_Size() {
  const QStringList kept = Text(Read_Key(size_key).value_or("")).split(';');
  if (kept.size() != size_fields) return;
  const QRect wanted(kept[0].toInt(), kept[1].toInt(), kept[2].toInt(), kept[3].toInt());
  if (!wanted.isValid()) return;
  setGeometry(wanted);
  Keep_Inside_Screen(*this);
  if (kept[4] == "1") showMaximized();
}

void KX_Log::Save_Log_Window_Size() {
  if (!isVisible()) return;
  const QRect shown = isMaximized() ? normalGeometry() : geometry();
  Remember_Key(size_key, QString("%1;%2;%3;%4;%5")
                             .arg(shown.x())
                             .arg(shown.y())
                             .arg(shown.width())
                             .arg(shown.height())
                             .arg(isMaximized() ? 1 : 0)
                             .toStdString());
}

void KX_Log::Leave() {
  Guarded([this] { Save_Log_Window_Size(); });
  setup_->close();
  rpm_->close();
  hits_->close();
  maf_->close();
  hide();
}

bool KX_Log::Owns(const QWidget* window) const {
  return window == this || window == setup_.get() || window == rpm_.get() || window == hits_.get() ||
         window == maf_.get();
}

void KX_Log::closeEvent(QCloseEvent* event) {
  bool finished = true;
  Guarded([&] { finished = Finish_Log_For_Close(); });
  if (finished) Leave();
  event->setAccepted(finished);
}

}  // namespace kx
