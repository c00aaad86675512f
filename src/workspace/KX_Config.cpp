#include "workspace/KX_Config.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMenuBar>
#include <QMouseEvent>
#include <QRadioButton>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QTimer>
#include <QVBoxLayout>

#include "boxlink/link_texts.h"
#include "settings/image.h"
#include "settings/presets.h"
#include "settings/refresh.h"
#include "widgets/form_helpers.h"
#include "widgets/scroll_page.h"
#include "widgets/wheel_guard.h"
#include "workspace/box_settings.h"
#include "workspace/start_up.h"

namespace kx {
namespace {

constexpr const char* show_advanced = "View &Advanced Configuration";
constexpr const char* hide_advanced = "Hide &Advanced Configuration";

/// A group of lists, one below the other.
Control_Group* Lists(const QString& name, const QString& title, Control_Index& index,
                     std::initializer_list<const char*> controls) {
  auto* group = new Control_Group(name, title, index);
  for (const char* control : controls) group->Choice(control);
  return group;
}

}  // namespace

KX_Config::KX_Config(Control_Index& index, QWidget& main_form) : index_(index) {
  setObjectName("KX_Config");
  auto* page = new QWidget;
  auto* frames = new QVBoxLayout(page);
  frames->addWidget(Make_Standard(index));
  frames->addWidget(Make_Advanced(index));
  frames->addWidget(Make_In_Boost(index));
  frames->addWidget(Make_Development());
  frames->addStretch(1);
  area_ = new Scroll_Page(page);
  area_->setObjectName("VScroll1");

  view_advanced_ = new QPushButton(show_advanced);
  view_advanced_->setObjectName("cmd_View_Advanced");
  connect(view_advanced_, &QPushButton::clicked, this, &KX_Config::View_Advanced);
  auto* ok = new QPushButton("&OK");
  ok->setObjectName("OKButton");
  On_Click(ok, [this, &main_form] {
    Take_Rpm_Indicator();
    OKButton_Click();
    hide();
    main_form.raise();
    main_form.activateWindow();
  });
  auto* buttons = new QHBoxLayout;
  buttons->addWidget(view_advanced_);
  buttons->addStretch(1);
  buttons->addWidget(new QLabel("Changes apply at once"));
  buttons->addWidget(ok);
  auto* layout = new QVBoxLayout(this);
  layout->setMenuBar(Make_Menu());
  layout->addWidget(area_, 1);
  layout->addLayout(buttons);
  // Reckoned with the advanced settings, so that the columns stay when they come on show.
  Set_Columns(true);
  two_columns_width_ = sizeHint().width();
  advanced_->hide();
  in_boost_->hide();
  development_->hide();
  Guard_Wheels_In(this);
  resize(two_columns_width_, fontMetrics().height() * 42);
}

QMenuBar* KX_Config::Make_Menu() {
  auto* bar = new QMenuBar;
  QMenu* view = bar->addMenu("&View");
  QAction* summary = view->addAction("Setting &summary...", this, &KX_Config::Summary_Wanted);
  summary->setObjectName("Setting_Summary");
  QMenu* help = bar->addMenu("&Help");
  QAction* manual = help->addAction("&Manual");
  manual->setObjectName("Help_file");
  On_Trigger(manual, Open_Help_File);
  return bar;
}

QWidget* KX_Config::Make_Standard(Control_Index& index) {
  auto* frame = new QGroupBox("Standard box settings");
  frame->setObjectName("config_frame_a");
  Make_Preset_List();
  auto* preset = new QGroupBox("Model Presets");
  auto* preset_line = new QHBoxLayout(preset);
  preset_line->addWidget(presets_, 1);
  preset_line->addWidget(dataset_);
  table_unit_ = Lists("Frame3", "Degres or [%] in Ignition tables", index, {"igtable_mode_combo"});
  Make_Rpm_Indicator(index);
  resolution_ = Lists("Rpm_Res_Frame", "Fuel RPM table resolution", index, {"Res_500"});
  auto* boost = Lists("Boost_Frame", "Boost", index, {"boost_combo"});
  boost->Scalar("boost_limit_scroll");
  boost->Scalar("An2_func_Scroll");
  pulses_ = new Control_Group("Rpm_Calc_Frame", "Ignition pulses", index);
  pulses_->Scalar("rpm_calc_scroll");
  pulses_->Scalar("rpm_calc_scroll_s");
  auto* sync = Lists("Analog_Sync_Frame", "Analog input syncronisation", index,
                     {"an_sync_check(0)", "an_sync_check(1)", "an_sync_check(2)", "an_sync_check(3)"});
  auto* ignition = Lists("Ignition_Mode_Frame", "Ignition", index, {"ig_mode_combo", "ig_mode_slave_combo"});
  Add_Columns(frame, {preset, table_unit_, indicator_, resolution_, ignition}, {boost, pulses_, sync});
  return frame;
}

void KX_Config::Make_Preset_List() {
  presets_ = new QComboBox;
  presets_->setObjectName("Mod_combo");
  presets_->setToolTip("Model of the box. A preset may change bytes of the tune; it asks before it does");
  dataset_ = new QLabel;
  dataset_->setObjectName("Dataset_label");
  connect(presets_, &QComboBox::activated, this, [this](int index) {
    Guarded([index] { Mod_combo_Chosen(index); });
    Show_Presets();
  });
}

void KX_Config::Make_Rpm_Indicator(Control_Index& index) {
  indicator_ = new Control_Group("Rpm_Indicator_Frame", "RPM Indicator (Led 2)", index);
  indicator_->Scalar("HScroll3");
  auto* typed = qobject_cast<QLineEdit*>(index.Text_Control("gear_shift"));
  typed->setReadOnly(false);
  typed->setFocusPolicy(Qt::StrongFocus);
  typed->installEventFilter(this);
  connect(typed, &QLineEdit::returnPressed, this, [this] {
    Gear_Shift().setModified(true);  // Enter takes the number that stands there, too
    Guarded([this] { Take_Rpm_Indicator(); });
  });
  connect(typed, &QLineEdit::editingFinished, this, [this] { Guarded([this] { Take_Rpm_Indicator(); }); });
  connect(typed, &QLineEdit::textEdited, this, &KX_Config::Cut_To_Length);
}

QLineEdit& KX_Config::Gear_Shift() { return *qobject_cast<QLineEdit*>(index_.Text_Control("gear_shift")); }

/// What the user has typed into gear_shift. Shown again from the tune it counts as typed no more.
void KX_Config::Take_Rpm_Indicator() {
  if (!Gear_Shift().isModified()) return;
  Gear_Shift().setModified(false);  // a text that is refused is refused once
  gear_shift_Entered(Gear_Shift().text().toStdString());
}

/// Keys stop at the length; a paste is cut there.
void KX_Config::Cut_To_Length(const QString& typed) {
  if (typed.size() <= gear_shift_length) return;
  Gear_Shift().setText(typed.left(gear_shift_length));
  Gear_Shift().setModified(true);
}

QWidget* KX_Config::Make_Advanced(Control_Index& index) {
  advanced_ = new QGroupBox("Advanced box settings");
  advanced_->setObjectName("config_frame_b");
  auto* precision = Lists("Precision_Frame", "Ignition and air temperature", index,
                          {"ignrpm_tblprec_combo", "IAT_in_combo"});
  auto* fuel =
      Lists("Fuel_Strategy_Frame", "Fuel enrichment", index, {"boost_enable_combo", "ae_combo", "ae_combo2"});
  auto* maf = Lists("MAF_Sim_Frame", "MAF simulation", index,
                    {"MAFSIM_enable", "mafsim_combo", "mafsim_out_combo", "mafsim_limit_combo"});
  auto* io = Lists("IO_Mode_Frame", "KX Digital I/O mode", index, {"io_combo"});
  sequential_ = Lists("Frame4", "Sequential fuel or not", index, {"Sequential_Fuel_opt"});
  auto* role = Lists("KX_Mode_Frame", "KX mode", index, {"master"});
  Add_Columns(advanced_, {precision, fuel, maf}, {io, sequential_, role});
  return advanced_;
}

/// It comes on show with the advanced settings, but stays enabled where a preset disables them; so it stands
/// below their frame, not in it.
QWidget* KX_Config::Make_In_Boost(Control_Index& index) {
  in_boost_ = new Control_Group("In_Boost_Frame", "in boost level", index);
  in_boost_->Scalar("inboostlevel");
  return in_boost_;
}

QWidget* KX_Config::Make_Development() {
  development_ = new QGroupBox("View cardbyte");
  development_->setObjectName("Development_frame");
  auto* image = new QPlainTextEdit;
  raw_text_ = image;
  image->setObjectName("uncoded");
  image->setReadOnly(true);
  image->setMinimumHeight(fontMetrics().height() * 14);
  Follow(image, uncoded, [](QPlainTextEdit* view, const QString& text) {
    const int caret = view->textCursor().position();
    view->setPlainText(text);
    QTextCursor cursor = view->textCursor();
    cursor.setPosition(std::min(caret, view->document()->characterCount() - 1));
    view->setTextCursor(cursor);
  });
  image->viewport()->installEventFilter(this);
  auto* bypass = new QPushButton("BY &PASS MODE");
  bypass->setObjectName("PassBy_Mode_Button");
  bypass->setCheckable(true);
  On_Click(bypass, [bypass] {
    bypass->setChecked(false);
    bypass->setChecked(PassBy_Mode_Button_Click());
  });
  auto* note = new QLabel("This will clear all settings! Only possible if Boost control connected to IGNB.");
  note->setWordWrap(true);
  auto* layout = new QVBoxLayout(development_);
  layout->addWidget(image);
  layout->addWidget(bypass);
  layout->addWidget(note);
  return development_;
}

/// A click into the raw text refreshes it, unless the user is selecting from it. gear_shift takes keys up to
/// its length; a longer text of the program's own stays whole.
bool KX_Config::eventFilter(QObject* watched, QEvent* event) {
  if (watched == index_.Text_Control("gear_shift"))
    return event->type() == QEvent::KeyPress && Refuses(*event);
  if (event->type() == QEvent::MouseButtonRelease &&
      static_cast<QMouseEvent*>(event)->button() == Qt::LeftButton &&
      !raw_text_->textCursor().hasSelection()) {
    Guarded(uncoded_Click);
  }
  return QWidget::eventFilter(watched, event);
}

bool KX_Config::Refuses(QEvent& event) {
  const QString text = static_cast<QKeyEvent&>(event).text();
  const bool adds = !text.isEmpty() && text.front().isPrint() && !Gear_Shift().hasSelectedText();
  return adds && Gear_Shift().text().size() >= gear_shift_length;
}

QWidget* KX_Config::Shown_Control(const QString& name) {
  auto* control = findChild<QWidget*>(name);
  if (control == nullptr) return nullptr;
  if (!control->isVisibleTo(this)) View_Advanced();
  // Behind what opening and the advanced settings have still to lay out and to scroll.
  QTimer::singleShot(0, this, [this, control] {
    QTimer::singleShot(0, this, [this, control] { area_->ensureWidgetVisible(control); });
  });
  return control;
}

void KX_Config::View_Advanced() {
  const bool show = !advanced_->isVisibleTo(this);
  advanced_->setVisible(show);
  in_boost_->setVisible(show);
  development_->setVisible(show);
  view_advanced_->setText(show ? hide_advanced : show_advanced);
  if (!show) return;
  // Once the page has its new height.
  QTimer::singleShot(0, this, [this] { area_->verticalScrollBar()->setValue(advanced_->y()); });
}

/// Two columns of frames, which stand one below the other while the form is narrow.
void KX_Config::Add_Columns(QWidget* frame, std::initializer_list<QWidget*> left,
                            std::initializer_list<QWidget*> right) {
  auto* columns = new QBoxLayout(QBoxLayout::LeftToRight, frame);
  for (const auto& widgets : {left, right}) {
    auto* column = new QVBoxLayout;
    for (QWidget* widget : widgets) column->addWidget(widget);
    column->addStretch(1);
    columns->addLayout(column, 1);
  }
  columns_.push_back(columns);
}

void KX_Config::Set_Columns(bool two) {
  for (QBoxLayout* columns : columns_)
    columns->setDirection(two ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom);
}

void KX_Config::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  Set_Columns(width() >= two_columns_width_);
}

void KX_Config::Show_Title() { setWindowTitle("Box settings " + Text(Title_Text())); }

/// The list stands at the preset that holds, also after a choice that was taken back.
void KX_Config::Show_Presets() {
  const QSignalBlocker quiet(presets_);
  if (presets_->count() != static_cast<int>(Preset_List.size())) {
    presets_->clear();
    for (const Preset& preset : Preset_List) presets_->addItem(Text(preset.name));
  }
  presets_->setCurrentIndex(User_Preset);
}

void KX_Config::Show_Layout() {
  const Config_State config_state = Config_Of_Tune();
  Show_Title();
  Show_Presets();
  dataset_->setText("Dataset " + QString::number(DatasetID));
  table_unit_->setEnabled(config_state.Frame3);
  findChild<QWidget*>("HScroll3")->setEnabled(config_state.HScroll3);
  index_.Text_Control("gear_shift")->setEnabled(config_state.gear_shift);
  resolution_->setEnabled(config_state.Rpm_Res_Frame);
  findChild<QRadioButton*>("Res_250")->setText(Text(config_state.Res_250));
  pulses_->setEnabled(config_state.Rpm_Calc_Frame);
  sequential_->setEnabled(config_state.Frame4);
  in_boost_->setEnabled(config_state.In_Boost_Frame);
  advanced_->setEnabled(config_state.config_frame_b);
}

}  // namespace kx
