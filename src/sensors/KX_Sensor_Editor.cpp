#include "sensors/KX_Sensor_Editor.h"

#include <QEvent>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QMenuBar>
#include <QSignalBlocker>
#include <QVBoxLayout>
#include <algorithm>

#include "sensors/sensor_store.h"
#include "settings/refresh.h"
#include "widgets/form_helpers.h"
#include "widgets/point_drag.h"
#include "widgets/scroll_page.h"
#include "widgets/table_menu.h"
#include "widgets/table_tools.h"
#include "widgets/wheel_guard.h"
#include "workspace/sensor_gestures.h"
#include "workspace/start_up.h"

namespace kx {
namespace {

constexpr int list_width_in_characters = 18;  ///< longer names are cut at the list and whole in its tips
constexpr int short_box_in_characters = 8;
constexpr double definition_lines = 3.5;  ///< height of the box with the definition line

QPushButton* Button(const QString& name, const QString& caption, const QString& tip) {
  auto* button = new QPushButton(caption);
  button->setObjectName(name);
  button->setToolTip(tip);
  return button;
}

QComboBox* List_Box(const QString& name, const QString& tip) {
  auto* list = new QComboBox;
  list->setObjectName(name);
  list->setToolTip(tip);
  list->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  list->setMinimumContentsLength(list_width_in_characters);
  return list;
}

/// Place of @p name in @p names, at @p index if it stands there still; -1 when it has gone.
int Place_Of(const std::vector<std::string>& names, const std::string& name, int index) {
  const auto place = static_cast<std::size_t>(index);
  if (index >= 0 && place < names.size() && names[place] == name) return index;
  const auto found = std::ranges::find(names, name);
  return found == names.end() ? -1 : static_cast<int>(found - names.begin());
}

/// Puts @p names into @p list, which keeps its index while it has it.
void Fill(QComboBox* list, const std::vector<std::string>& names, int index) {
  const QSignalBlocker quiet(list);
  list->clear();
  for (const std::string& name : names) {
    list->addItem(Text(name));
    list->setItemData(list->count() - 1, Text(name), Qt::ToolTipRole);
  }
  list->setCurrentIndex(index < list->count() ? index : -1);
}

}  // namespace

KX_Sensor_Editor::KX_Sensor_Editor(QWidget* parent)
    : QWidget(parent, Qt::Window),
      list_combo_(List_Box("Sensor_List_combo", "The sensors of the tune, or those of the log")),
      EditSensor_Combo_(
          List_Box("EditSensor_Combo", "Sensor to look at, to change or to start a new one from")),
      Sensor_chart_(new Line_Chart("Sensor_chart")) {
  setObjectName("KX_Sensor_Editor");
  Sensor_chart_->setToolTip("Value in the sensor's unit over the input, 0 to 100 % of 5 V");
  auto* left = new QVBoxLayout;
  left->addWidget(Make_Used_Sensors());
  left->addWidget(Make_View_Lists());
  left->addWidget(Make_Try_Out());
  left->addStretch(1);
  auto* middle = new QVBoxLayout;
  middle->addWidget(Make_Definition());
  middle->addWidget(Sensor_chart_, 1);
  middle->addWidget(Make_Buttons());
  frame_Table_ = Make_Table_Frame();
  // The form keeps its size when a sensor by values comes on show.
  QSizePolicy kept = frame_Table_->sizePolicy();
  kept.setRetainSizeWhenHidden(true);
  frame_Table_->setSizePolicy(kept);
  auto* all = new QHBoxLayout;
  all->addLayout(left);
  all->addLayout(middle, 1);
  all->addWidget(frame_Table_);
  auto* page = new QWidget;
  page->setLayout(all);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  Make_Menu(layout);
  layout->addWidget(new Scroll_Page(page), 1);
  QLabel* notice = Notice_Line("editor_notice", Notices::while_shown);
  notice->setMargin(fontMetrics().height() / 4);
  layout->addWidget(notice);
  connect(Sensor_chart_, &Line_Chart::Entries_Picked, this, [](int row, int row_sel) {
    if (Edited_Kind() == Editing::table) Guarded([&] { Sensor_Grid_Enter_Cell(row, row_sel); });
  });
  Connect_Drag();
  sensor_editor_changed = [this] { Show_Edited(); };
  Guard_Wheels_In(this);
  Fill_Lists();
  Show_Edited();
  Show_Title();
}

KX_Sensor_Editor::~KX_Sensor_Editor() { sensor_editor_changed = {}; }

void KX_Sensor_Editor::Make_Menu(QVBoxLayout* layout) {
  auto* bar = new QMenuBar;
  QAction* manual = bar->addMenu("&Help")->addAction("&Help file");
  manual->setObjectName("Help_file");
  On_Trigger(manual, [] { Open_Help_Page("sensors.html"); });
  layout->setMenuBar(bar);
}

QWidget* KX_Sensor_Editor::Make_Used_Sensors() {
  auto* frame = new QGroupBox("Used Analog Sensor");
  frame->setObjectName("Used_Sensor_Frame");
  auto* layout = new QGridLayout(frame);
  for (std::size_t i = 0; i < AN_Combo_.size(); ++i) {
    const int input = static_cast<int>(i) + 1;
    AN_Combo_[i] =
        List_Box(QString("AN_Combo(%1)").arg(input), "Select sensor type used for guidance when tuning");
    layout->addWidget(new QLabel(QString("Analog %1").arg(input)), static_cast<int>(i), 0);
    layout->addWidget(AN_Combo_[i], static_cast<int>(i), 1);
    connect(AN_Combo_[i], &QComboBox::activated, this,
            [input](int sensor) { Guarded([=] { AN_Combo_Click(input, sensor); }); });
  }
  return frame;
}

QWidget* KX_Sensor_Editor::Make_View_Lists() {
  auto* frame = new QGroupBox("View and edit");
  frame->setObjectName("View_Frame");
  list_combo_->addItems({"Tune sensor", "Log sensor"});
  connect(list_combo_, &QComboBox::activated, this, [this] {
    if (!May_Leave()) return;
    Fill(EditSensor_Combo_, Sensor_Names(List()), -1);
    Show_Chosen();
  });
  connect(EditSensor_Combo_, &QComboBox::activated, this, [this] {
    if (May_Leave()) Show_Chosen();
  });
  auto* linear = Button("cmd_AddLinearSensor", "New linear sensor", "Start a definition by gain and offset");
  auto* values = Button("cmd_AddValueSensor", "New sensor by values", "Start a definition by 33 values");
  for (QPushButton* button : {linear, values}) {
    On_Click(button, [this, button, linear] {
      if (!May_Leave()) return;
      EditSensor_Combo_->setCurrentIndex(-1);
      button == linear ? cmd_AddLinearSensor_Click() : cmd_AddValueSensor_Click();
      // The proposed name is there to be typed over.
      txt_SensorName_->setFocus();
      txt_SensorName_->selectAll();
    });
  }
  auto* layout = new QVBoxLayout(frame);
  for (QWidget* widget : std::initializer_list<QWidget*>{list_combo_, EditSensor_Combo_, linear, values}) {
    layout->addWidget(widget);
  }
  return frame;
}

QWidget* KX_Sensor_Editor::Make_Try_Out() {
  auto* frame = new QGroupBox("Try the viewed sensor");
  frame->setObjectName("Try_Frame");
  Try_Frame_ = frame;
  auto* given = new QLineEdit;
  given->setObjectName("Text1");
  given->setToolTip("Raw number of the input, 0 to 255, or a value in the sensor's unit");
  auto* result = new QLineEdit;
  result->setObjectName("Text2");
  result->setToolTip("The result; empty for a sensor that converts nothing");
  result->setReadOnly(true);
  auto* forward = Button("cmd_Frw_Calc", "Raw to value", "Value of the raw number above");
  auto* reverse = Button("cmd_Rev_Calc", "Value to raw", "Raw number of the value above");
  On_Click(forward, [=, this] {
    result->clear();
    result->setText(
        Text(Try_Forward(List(), EditSensor_Combo_->currentIndex(), given->text().toStdString())));
  });
  On_Click(reverse, [=, this] {
    result->clear();
    result->setText(
        Text(Try_Reversed(List(), EditSensor_Combo_->currentIndex(), given->text().toStdString())));
  });
  connect(given, &QLineEdit::returnPressed, forward, &QPushButton::click);
  auto* layout = new QGridLayout(frame);
  layout->addWidget(given, 0, 0, 1, 2);
  layout->addWidget(forward, 1, 0);
  layout->addWidget(reverse, 1, 1);
  layout->addWidget(result, 2, 0, 1, 2);
  return frame;
}

/// A box of the definition; line and curve follow what is typed into it.
QLineEdit* KX_Sensor_Editor::Box(const QString& name, Shown_Text& text, const QString& tip) {
  auto* box = new QLineEdit;
  box->setObjectName(name);
  box->setToolTip(tip);
  box->setMinimumWidth(box->fontMetrics().averageCharWidth() * short_box_in_characters);
  Bind_Text(box, text);
  connect(box, &QLineEdit::textEdited, this, [] { Guarded(Sensor_Box_Typed); });
  return box;
}

QWidget* KX_Sensor_Editor::Make_Definition() {
  auto* frame = new QGroupBox("Definition");
  frame->setObjectName("Definition_Frame");
  Definition_Frame_ = frame;
  auto* line = new QPlainTextEdit;
  line->setObjectName("txt_Sensor_Def");
  line->setToolTip("The line of the settings file in the making");
  line->setReadOnly(true);
  line->setTabChangesFocus(true);
  line->setFixedHeight(static_cast<int>(line->fontMetrics().height() * definition_lines));
  Follow(line, txt_Sensor_Def, [](QPlainTextEdit* view, const QString& text) { view->setPlainText(text); });
  auto* layout = new QGridLayout(frame);
  layout->addWidget(new QLabel("New sensor name"), 0, 0);
  txt_SensorName_ =
      Box("txt_SensorName", txt_SensorName, "Up to 60 characters; another name makes another sensor");
  layout->addWidget(txt_SensorName_, 0, 1, 1, 5);
  layout->addWidget(new QLabel("Unit"), 1, 0);
  layout->addWidget(
      Box("txt_SensorUnit", txt_SensorUnit, "Unit of the value, as bar or °C; up to 20 characters"), 1, 1);
  layout->addWidget(new QLabel("Input unit"), 1, 2);
  layout->addWidget(
      Box("txt_SensorInUnit", txt_SensorInUnit, "Unit of the input, mostly V; up to 20 characters"), 1, 3);
  layout->addWidget(new QLabel("Decimals"), 1, 4);
  layout->addWidget(Box("txt_SensorDecimals", txt_SensorDecimals, "Decimals that are shown, 0 to 4"), 1, 5);
  frame_Linear_ = Make_Linear_Frame();
  layout->addWidget(frame_Linear_, 2, 0, 1, 6);
  layout->addWidget(line, 3, 0, 1, 6);
  return frame;
}

QWidget* KX_Sensor_Editor::Make_Linear_Frame() {
  auto* frame = new QGroupBox("Linear control");
  frame->setObjectName("frame_Linear");
  auto* layout = new QGridLayout(frame);
  layout->addWidget(new QLabel("Sensor gain"), 0, 0);
  layout->addWidget(Box("txt_SensorGain", txt_SensorGain, "Units a raw count, not 0; 5 V are 255 counts"), 0,
                    1);
  layout->addWidget(new QLabel("Sensor offset"), 0, 2);
  layout->addWidget(Box("txt_SensorOffset", txt_SensorOffset, "Value at raw 0, in the sensor's unit"), 0, 3);
  layout->addWidget(new QLabel("Sensor in min"), 1, 0);
  layout->addWidget(Box("txt_SensorMin", txt_SensorMin, "Least raw count, mostly 0"), 1, 1);
  layout->addWidget(new QLabel("Sensor in max"), 1, 2);
  layout->addWidget(Box("txt_SensorMax", txt_SensorMax, "Greatest raw count, mostly 255"), 1, 3);
  return frame;
}

QWidget* KX_Sensor_Editor::Make_Table_Frame() {
  auto* frame = new QGroupBox("Values");
  frame->setObjectName("frame_Table");
  Sensor_grid_ = new Table_Grid(Sensor_grid, "Sensor_grid");
  Sensor_grid_->setToolTip("Value at raw 0, 8 to 256, in the sensor's unit; any number");
  connect(Sensor_grid_, &Table_Grid::Cell_Entered, this,
          [](int row, int row_sel) { Guarded([=] { Sensor_Grid_Enter_Cell(row, row_sel); }); });
  connect(Sensor_grid_, &Table_Grid::Key_Pressed, this,
          [](int key_code, int) { Guarded([=] { Sensor_Grid_Key_Down(key_code); }); });
  Table_Tool_Handlers handlers{Sensor_plus_Click,      Sensor_minus_Click,      Sensor_steep_Click,
                               Sensor_flat_Click,      Sensor_set_table_Click,  Sensor_scale_table_Click,
                               &Sensor_set_table_text, &Sensor_scale_table_text};
  Add_Table_Menu(*Sensor_grid_,
                 {Copy_Sensor_Values, Paste_Sensor_Values, Interpolate_Sensor_Values, Smooth_Sensor_Values,
                  Can_Shape_Sensor_Values},
                 handlers);
  auto* layout = new QVBoxLayout(frame);
  layout->addWidget(Sensor_grid_, 1);
  layout->addWidget(new Table_Tools(handlers, 2));
  return frame;
}

void KX_Sensor_Editor::Connect_Drag() {
  Point_Drag& drag = Sensor_chart_->Drag();
  connect(&drag, &Point_Drag::Began, this, [] { Begin_Sensor_Drag(); });
  connect(&drag, &Point_Drag::Moved, this, [&drag](double delta) {
    Guarded([&] {
      if (!Drag_Sensor_Curve(delta)) drag.Leave();
    });
  });
  connect(&drag, &Point_Drag::Ended, this, [this](bool kept) {
    Guarded(kept ? End_Sensor_Drag : Take_Back_Sensor_Drag);
    Sensor_grid_->setFocus();
  });
}

QWidget* KX_Sensor_Editor::Make_Buttons() {
  auto* line = new QWidget;
  cmd_Add_sensor_ =
      Button("cmd_Add_sensor", "Store tune sensor", "Keep the definition as a sensor of the tune");
  auto* ok = Button("cmd_OK", "OK", "Keep what is edited and close");
  On_Click(cmd_Add_sensor_, [this] {
    if (!cmd_Add_sensor_Click()) return;
    list_combo_->setCurrentIndex(0);
    Fill_Lists();
    Choose_Stored();
  });
  On_Click(ok, [this] { cmd_OK_Click(); });
  auto* layout = new QHBoxLayout(line);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addStretch(1);
  layout->addWidget(cmd_Add_sensor_);
  layout->addWidget(ok);
  return line;
}

Sensor_List KX_Sensor_Editor::List() const {
  return list_combo_->currentIndex() == 1 ? Sensor_List::log : Sensor_List::tune;
}

/// Asks about what is edited. The lists show that until the user agrees: a form that comes back to the front
/// reads them.
bool KX_Sensor_Editor::May_Leave() {
  const int chosen_list = list_combo_->currentIndex();
  const int chosen = EditSensor_Combo_->currentIndex();
  list_combo_->setCurrentIndex(viewed_list_);
  EditSensor_Combo_->setCurrentIndex(viewed_);
  bool leaves = false;
  Guarded([&leaves] { leaves = Leave_Edited(); });
  if (!leaves) return false;
  list_combo_->setCurrentIndex(chosen_list);
  EditSensor_Combo_->setCurrentIndex(chosen);
  return true;
}

void KX_Sensor_Editor::Show_Chosen() {
  Guarded([this] { EditSensor_Combo_Click(List(), EditSensor_Combo_->currentIndex()); });
}

/// What has been stored, also from a log's, is the tune sensor on view.
void KX_Sensor_Editor::Choose_Stored() {
  EditSensor_Combo_->setCurrentIndex(
      Place_Of(Sensor_Names(Sensor_List::tune), txt_SensorName.Text(), EditSensor_Combo_->currentIndex()));
  Show_Edited();
}

/// A definition that cannot be stored keeps the form open.
void KX_Sensor_Editor::cmd_OK_Click() {
  if (kx::cmd_OK_Click()) close();
}

void KX_Sensor_Editor::Fill_Lists() {
  const auto tune = Sensor_Names(Sensor_List::tune);
  for (std::size_t i = 0; i < AN_Combo_.size(); ++i) {
    Fill(AN_Combo_[i], tune, Sensor_On_Input(static_cast<int>(i) + 1));
  }
  // Another program may have moved the sensor on view to another number.
  const auto names = Sensor_Names(List());
  const int viewed = EditSensor_Combo_->currentIndex();
  Fill(EditSensor_Combo_, names,
       viewed < 0 ? viewed : Place_Of(names, EditSensor_Combo_->currentText().toStdString(), viewed));
}

void KX_Sensor_Editor::Show_Edited() {
  viewed_list_ = list_combo_->currentIndex();
  viewed_ = EditSensor_Combo_->currentIndex();
  const Editing kind = Edited_Kind();
  frame_Linear_->setVisible(kind == Editing::linear);
  frame_Table_->setVisible(kind == Editing::table);
  cmd_Add_sensor_->setEnabled(kind != Editing::nothing);
  Definition_Frame_->setEnabled(kind != Editing::nothing);
  Try_Frame_->setEnabled(EditSensor_Combo_->currentIndex() >= 0);
  Sensor_grid_->Refresh();
  Sensor_chart_->Drag().Allow_From(kind == Editing::table ? 1 : 0);
  Sensor_chart_->Show(Sensor_chart, Sensor_grid.Sel_Start(),
                      Sensor_grid.Sel_Start() + Sensor_grid.Sel_Count());
}

void KX_Sensor_Editor::Show_Title() { setWindowTitle("Sensor settings " + Text(Title_Text())); }

/// Another program, or the user's editor, may have changed the definitions meanwhile.
bool KX_Sensor_Editor::event(QEvent* event) {
  if (event->type() == QEvent::WindowActivate) {
    Guarded([this] {
      Sensor_Editor_Activated();
      Fill_Lists();
      Show_Edited();
    });
  }
  return QWidget::event(event);
}

}  // namespace kx
