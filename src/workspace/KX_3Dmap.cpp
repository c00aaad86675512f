#include "workspace/KX_3Dmap.h"

#include <QBuffer>
#include <QFontDatabase>
#include <QHBoxLayout>
#include <QRadioButton>
#include <QScrollBar>
#include <QVBoxLayout>

#include "settings/numbers.h"
#include "widgets/form_helpers.h"
#include "widgets/scroll_page.h"
#include "workspace/map_data.h"
#include "workspace/map_export.h"

namespace kx {
namespace {

constexpr int turn_interval = 100;  ///< ms between two steps of the turning surface
constexpr int chart_view = 0;
constexpr int data_view = 1;
constexpr int angle_width_in_characters = 8;

constexpr const char* chart_hint = "Drag to turn, wheel for the size, double click for the first view.";
constexpr const char* data_hint = "A line for each RPM, a column for each load.";

QPushButton* Button(const QString& name, const QString& caption, const QString& tip) {
  auto* button = new QPushButton(caption);
  button->setObjectName(name);
  button->setToolTip(tip);
  return button;
}

QRadioButton* Option(const QString& name, const QString& caption, const QString& tip) {
  auto* option = new QRadioButton(caption);
  option->setObjectName(name);
  option->setToolTip(tip);
  return option;
}

QLineEdit* Angle_Box(const QString& name, const QString& tip, QPushButton* apply) {
  auto* box = new QLineEdit;
  box->setObjectName(name);
  box->setToolTip(tip);
  box->setAlignment(Qt::AlignRight);
  box->setFixedWidth(box->fontMetrics().averageCharWidth() * angle_width_in_characters);
  QObject::connect(box, &QLineEdit::returnPressed, apply, &QPushButton::click);
  return box;
}

/// The part that the user looks at stays on show.
void Set_Text_In_Place(QPlainTextEdit* view, const QString& text) {
  const int across = view->horizontalScrollBar()->value();
  const int down = view->verticalScrollBar()->value();
  view->setPlainText(text);
  view->horizontalScrollBar()->setValue(across);
  view->verticalScrollBar()->setValue(down);
}

}  // namespace

KX_3Dmap::KX_3Dmap(QWidget* parent)
    : QWidget(parent, Qt::Window),
      Fuel3dChart_(new Surface_Chart("Fuel3dChart")),
      Text1_(new QPlainTextEdit),
      views_(new QStackedWidget),
      Label1_(new QLabel),
      Timer1_(new QTimer(this)) {
  setObjectName("KX_3Dmap");
  setWindowTitle("3D map");
  Text1_->setObjectName("Text1");
  Text1_->setReadOnly(true);
  Text1_->setToolTip(
      "Product of load and RPM table, in the unit above; a line for each RPM, a column for each load");
  Fuel3dChart_->setToolTip("RPM, load and their product; point at the surface for its values");
  Text1_->setLineWrapMode(QPlainTextEdit::NoWrap);
  Text1_->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
  Text1_->setTabStopDistance(Text1_->fontMetrics().horizontalAdvance('0') * 9);
  Label1_->setObjectName("Label1");
  Label1_->setWordWrap(true);
  views_->addWidget(Fuel3dChart_);
  views_->addWidget(Text1_);
  auto* page = new QWidget;
  auto* all = new QVBoxLayout(this);
  all->setContentsMargins(0, 0, 0, 0);
  all->addWidget(new Scroll_Page(page));
  auto* layout = new QVBoxLayout(page);
  layout->addWidget(Make_Options());
  layout->addWidget(Label1_);
  layout->addWidget(views_, 1);
  layout->addWidget(Make_View_Line());
  layout->addWidget(Notice_Line("map_notice", Notices::while_shown));
  Timer1_->setObjectName("Timer1");
  Timer1_->setInterval(turn_interval);
  connect(Timer1_, &QTimer::timeout, this, [this] { Guarded([this] { Timer1_Tick(); }); });
  connect(Fuel3dChart_, &Surface_Chart::View_Changed, this, &KX_3Dmap::Show_View);
  Show_View();
}

QWidget* KX_3Dmap::Make_Options() {
  auto* line = new QWidget;
  auto* layout = new QHBoxLayout(line);
  layout->setContentsMargins(0, 0, 0, 0);
  Option1_ = new QButtonGroup(this);
  for (std::size_t i = 0; i < map_captions.size(); ++i) {
    const QString caption = Text(map_captions[i]);
    auto* option =
        Option(QString("Option1(%1)").arg(i), caption, caption + " load table times its RPM table");
    Option1_->addButton(option, static_cast<int>(i));
    layout->addWidget(option);
  }
  Option1_->button(static_cast<int>(Map::fuel))->setChecked(true);
  layout->addStretch(1);
  Option2_ = new QButtonGroup(this);
  Option2_->addButton(Option("Option2(0)", "Chart", "The map as a surface"), chart_view);
  Option2_->addButton(Option("Option2(1)", "Data", "The map as numbers"), data_view);
  Option2_->button(chart_view)->setChecked(true);
  for (QAbstractButton* option : Option2_->buttons()) layout->addWidget(option);
  for (QButtonGroup* group : {Option1_, Option2_}) {
    connect(group, &QButtonGroup::idClicked, this, [this] { Guarded([this] { Update_3D(); }); });
  }
  layout->addStretch(1);
  auto* draw = Button("cmd_DrawGraph", "Draw graph", "Show the map as a surface");
  auto* data = Button("cmd_ShowData", "Show data", "Show the map as numbers");
  auto* save = Button("Export_Image", "Export...", "Save the map as a picture (.bmp) or as text (.csv)");
  On_Click(draw, [this] { cmd_DrawGraph_Click(); });
  On_Click(data, [this] { cmd_ShowData_Click(); });
  On_Click(save, [this] { Export_Image_Click([this] { return Picture(); }); });
  for (QPushButton* button : {draw, data, save}) layout->addWidget(button);
  return line;
}

QWidget* KX_3Dmap::Make_View_Line() {
  auto* line = new QWidget;
  auto* layout = new QHBoxLayout(line);
  layout->setContentsMargins(0, 0, 0, 0);
  auto* elevate = Button("Command3", "Set", "Look from this elevation");
  auto* rotate = Button("Command4", "Set", "Turn the surface to this rotation");
  Text2_ = Angle_Box("Text2", "Elevation of the eye above the floor, 0 to 90 degrees", elevate);
  Text3_ = Angle_Box("Text3", "Rotation of the surface, degrees; a full turn is 360", rotate);
  On_Click(elevate, [this] { Command3_Click(); });
  On_Click(rotate, [this] { Command4_Click(); });
  layout->addWidget(new QLabel("Elevation"));
  layout->addWidget(Text2_);
  layout->addWidget(elevate);
  layout->addSpacing(fontMetrics().height());
  layout->addWidget(new QLabel("Rotation"));
  layout->addWidget(Text3_);
  layout->addWidget(rotate);
  layout->addStretch(1);
  turn_buttons_ = new QButtonGroup(this);
  turn_buttons_->setExclusive(false);
  layout->addWidget(Turn_Button("turn_left_button", "Turn left",
                                "Turn on and on, 50 degrees a second; again to stop", -turn_step));
  layout->addWidget(Turn_Button("turn_right_button", "Turn right",
                                "Turn on and on the other way, 50 degrees a second; again to stop",
                                turn_step));
  return line;
}

QPushButton* KX_3Dmap::Turn_Button(const QString& name, const QString& caption, const QString& tip,
                                   double step) {
  QPushButton* button = Button(name, caption, tip);
  button->setCheckable(true);
  turn_buttons_->addButton(button);
  On_Click(button, [this, button, step] { Turn(button, step); });
  return button;
}

/// One of the two buttons is down while the surface turns, none when it stands.
void KX_3Dmap::Turn(QPushButton* button, double step) {
  for (QAbstractButton* other : turn_buttons_->buttons()) {
    if (other != button) other->setChecked(false);
  }
  turn_ = step;
  button->isChecked() ? Timer1_->start() : Timer1_->stop();
}

void KX_3Dmap::Timer1_Tick() {
  Fuel3dChart_->Set_View(Turned(Fuel3dChart_->View(), turn_));
  Show_View();
}

void KX_3Dmap::Follow_Tables() {
  if (isVisible()) Update_3D();
}

void KX_3Dmap::Update_3D() {
  Option2_->checkedId() == data_view ? cmd_ShowData_Click() : cmd_DrawGraph_Click();
}

void KX_3Dmap::cmd_DrawGraph_Click() {
  const Map map = static_cast<Map>(Option1_->checkedId());
  Calculate_3dmap(map);
  Fuel3dChart_->Show(Points_Of(Map_Data), Titles_Of(map));
  Option2_->button(chart_view)->setChecked(true);
  views_->setCurrentWidget(Fuel3dChart_);
  Label1_->setText(chart_hint);
}

void KX_3Dmap::cmd_ShowData_Click() {
  const Map map = static_cast<Map>(Option1_->checkedId());
  Calculate_3dmap(map);
  Fuel3dChart_->Show(Points_Of(Map_Data), Titles_Of(map));  // the picture to export
  const QString text = Text(Map_Text(Map_Data));
  if (Text1_->toPlainText() != QString(text).remove('\r')) Set_Text_In_Place(Text1_, text);
  Option2_->button(data_view)->setChecked(true);
  views_->setCurrentWidget(Text1_);
  const Map_Titles titles = Titles_Of(map);
  Label1_->setText(
      Text(titles.chart + ", " + titles.value + " over " + titles.rpm + " and " + titles.load + ". ") +
      data_hint);
}

void KX_3Dmap::Command3_Click() {
  Take_Angle(Text2_, &Surface_View::elevation, "Elevation, 0 to 90 degrees");
}

void KX_3Dmap::Command4_Click() { Take_Angle(Text3_, &Surface_View::rotation, "Rotation, in degrees"); }

void KX_3Dmap::Take_Angle(QLineEdit* box, double Surface_View::*angle, const std::string& what) {
  box->setModified(false);
  const auto degrees = Whole_Number_Text(box->text().toStdString());
  if (!degrees) {
    Show_View();
    return Tell(what + ": not a number");
  }
  Surface_View view = Fuel3dChart_->View();
  view.*angle = *degrees;
  Fuel3dChart_->Set_View(view);
  Show_View();
}

/// A number that is being typed stays, also while the surface turns.
void KX_3Dmap::Show_View() {
  const auto show = [](QLineEdit* box, double degrees) {
    if (!(box->hasFocus() && box->isModified())) box->setText(Text(Format(degrees, "0")));
  };
  show(Text2_, Fuel3dChart_->View().elevation);
  show(Text3_, Fuel3dChart_->View().rotation);
}

/// The chart as a bmp file, also while the data are on show.
std::string KX_3Dmap::Picture() {
  QBuffer buffer;
  Fuel3dChart_->Picture().toImage().convertToFormat(QImage::Format_RGB32).save(&buffer, "BMP");
  return buffer.data().toStdString();
}

void KX_3Dmap::showEvent(QShowEvent* event) {
  QWidget::showEvent(event);
  if (!event->spontaneous()) Guarded([this] { Update_3D(); });
}

/// A form that is closed turns nothing.
void KX_3Dmap::hideEvent(QHideEvent* event) {
  QWidget::hideEvent(event);
  if (event->spontaneous()) return;
  Timer1_->stop();
  for (QAbstractButton* button : turn_buttons_->buttons()) button->setChecked(false);
}

}  // namespace kx
