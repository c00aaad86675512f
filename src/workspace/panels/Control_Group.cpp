#include "workspace/panels/Control_Group.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <QSignalBlocker>
#include <QSlider>
#include <QVBoxLayout>

#include "widgets/difference_mark.h"
#include "widgets/form_helpers.h"
#include "widgets/wheel_guard.h"
#include "workspace/compare.h"
#include "workspace/control_tips.h"

namespace kx {
namespace {

QLineEdit* Read_Only_Text(const QString& name) {
  auto* text = new QLineEdit;
  text->setObjectName(name);
  text->setReadOnly(true);
  text->setFocusPolicy(Qt::NoFocus);
  text->setAlignment(Qt::AlignRight);
  text->setFixedWidth(text->fontMetrics().horizontalAdvance("-0000.00 units"));
  return text;
}

void Set_Control_Text(QWidget* control, const std::string& text) {
  if (auto* line = qobject_cast<QLineEdit*>(control)) line->setText(Text(text));
  if (auto* label = qobject_cast<QLabel*>(control)) label->setText(Text(text));
}

/// The largest position stands at the left, and every key moves the handle the way that it points.
void Reverse(QSlider* slider) {
  slider->setInvertedAppearance(true);
  slider->setInvertedControls(true);
  QObject::connect(slider, &QSlider::actionTriggered, slider, [slider](int action) {
    if (action == QSlider::SliderToMinimum) slider->setSliderPosition(slider->maximum());
    if (action == QSlider::SliderToMaximum) slider->setSliderPosition(slider->minimum());
  });
}

QSlider* Make_Slider(const Scalar_Row& row) {
  auto* slider = new QSlider(Qt::Horizontal);
  slider->setObjectName(Text(row.name));
  slider->setRange(0, row.max);
  slider->setPageStep(row.large_step);
  if (row.reversed) Reverse(slider);
  slider->setMinimumWidth(slider->fontMetrics().averageCharWidth() * 14);
  Guard_Wheel(slider);
  QObject::connect(slider, &QSlider::valueChanged, slider,
                   [&row](int position) { Guarded([&] { Scalar_Changed(row, position); }); });
  QObject::connect(slider, &QSlider::sliderPressed, slider, Scalar_Pressed);
  QObject::connect(slider, &QSlider::sliderReleased, slider, Scalar_Released);
  return slider;
}

void Show_Scalar(const Scalar_Row& row, QSlider* slider, Control_Index& index) {
  const QSignalBlocker quiet(slider);
  const int position = Scalar_Position(row);
  slider->setValue(position);
  for (const Scalar_Text_Row& text : Texts_Of(row)) {
    Set_Control_Text(index.Text_Control(text.control), Scalar_Text(row, text, position));
  }
}

constexpr int slider_column = 1;
constexpr int first_text_column = 2;
constexpr int columns = 5;

}  // namespace

void Control_Index::Add(const Scalar_Row& row, std::function<void()> show) { shows_[&row] = std::move(show); }

void Control_Index::Add(const Choice_Row& row, std::function<void()> show) { shows_[&row] = std::move(show); }

void Control_Index::Show(const Scalar_Row& row) const {
  if (const auto found = shows_.find(&row); found != shows_.end()) found->second();
}

void Control_Index::Show(const Choice_Row& row) const {
  if (const auto found = shows_.find(&row); found != shows_.end()) found->second();
}

void Control_Index::Show_All() const {
  for (const Choice_Row& row : Choice_Rows()) Show(row);
  for (const Scalar_Row& row : Scalar_Rows()) Show(row);
  for (const auto& show : others_) show();
}

void Show_Tips(std::string_view control, QWidget& anchor, const QString& tip,
               std::initializer_list<QWidget*> widgets) {
  const QString difference = Text(Difference_Tip(control));
  Mark_Difference(anchor, Text(control), difference);
  for (QWidget* widget : widgets) widget->setToolTip(Tip_With_Difference(difference, tip));
}

QWidget* Control_Index::Text_Control(std::string_view name) {
  QWidget*& control = texts_[name];
  if (control != nullptr) return control;
  if (name.ends_with("_label")) {
    control = new QLabel;
    control->setObjectName(Text(name));
  } else {
    control = Read_Only_Text(Text(name));
  }
  return control;
}

Control_Group::Control_Group(const QString& name, const QString& title, Control_Index& index, QWidget* parent)
    : QGroupBox(title, parent), index_(index), layout_(new QGridLayout(this)) {
  setObjectName(name);
  layout_->setColumnStretch(slider_column, 1);
}

void Control_Group::Scalar(std::string_view name, std::size_t texts) {
  const Scalar_Row& row = Scalar_Row_Of(name);
  const int line = layout_->rowCount();
  auto* label = new QLabel(Text(row.label));
  label->setObjectName(Text(Label_Name(row.name)));
  auto* slider = Make_Slider(row);
  label->setBuddy(slider);
  layout_->addWidget(label, line, 0);
  layout_->addWidget(slider, line, slider_column);
  int column = first_text_column;
  for (const Scalar_Text_Row& text : Texts_Of(row).first(std::min(texts, Texts_Of(row).size()))) {
    layout_->addWidget(index_.Text_Control(text.control), line, column++);
  }
  if (!row.unit.empty()) layout_->addWidget(new QLabel(Text(row.unit)), line, column);
  index_.Add(row, [this, &row, slider, label] {
    Show_Scalar(row, slider, index_);
    Show_Tips(row.name, *label, Text(Tip_Of(row)), {slider, label});
  });
}

QWidget* Control_Group::Make_List(const Choice_Row& row, QLabel* label) {
  auto* list = new QComboBox;
  list->setObjectName(Text(row.Name()));
  for (const std::string_view item : row.items) list->addItem(Text(item));
  list->setSizeAdjustPolicy(QComboBox::AdjustToContents);
  Guard_Wheel(list);
  connect(list, &QComboBox::activated, list,
          [&row](int entry) { Guarded([&] { Choice_Changed(row, entry); }); });
  index_.Add(row, [list, label, &row] {
    list->setCurrentIndex(Choice_Index(row));
    Show_Tips(row.Name(), *label, Text(Tip_Of(row)), {list, label});
  });
  return list;
}

QWidget* Control_Group::Make_Check(const Choice_Row& row) {
  auto* check = new QCheckBox(Text(row.label));
  check->setObjectName(Text(row.Name()));
  connect(check, &QCheckBox::clicked, check,
          [&row](bool ticked) { Guarded([&] { Choice_Changed(row, ticked ? 1 : 0); }); });
  index_.Add(row, [check, &row] {
    check->setChecked(Choice_Index(row) == 1);
    Show_Tips(row.Name(), *check, Text(Tip_Of(row)), {check});
  });
  return check;
}

QWidget* Control_Group::Make_Options(const Choice_Row& row) {
  auto* options = new QWidget;
  auto* lines = new QVBoxLayout(options);
  lines->setContentsMargins(0, 0, 0, 0);
  auto* group = new QButtonGroup(options);
  for (int i = 0; i < Choice_Count(row); ++i) {
    const auto at = static_cast<std::size_t>(i);
    auto* option = new QRadioButton(Text(row.items[at]));
    option->setObjectName(Text(row.controls[at]));
    group->addButton(option, i);
    lines->addWidget(option);
  }
  connect(group, &QButtonGroup::idClicked, options,
          [&row](int id) { Guarded([&] { Choice_Changed(row, id); }); });
  index_.Add(row, [group, options, &row] {
    if (QAbstractButton* shown = group->button(Choice_Index(row))) shown->setChecked(true);
    for (QAbstractButton* option : group->buttons()) {
      Show_Tips(row.Name(), *options, Text(Tip_Of(row)), {option});
    }
  });
  return options;
}

void Control_Group::Choice(std::string_view name) {
  const Choice_Row& row = Choice_Row_Of(name);
  if (row.kind == Choice_Kind::check) return Wide(Make_Check(row));
  if (row.kind == Choice_Kind::options) return Wide(Make_Options(row));
  const int line = layout_->rowCount();
  auto* label = new QLabel(Text(row.label));
  label->setObjectName(Text(Label_Name(row.Name())));
  layout_->addWidget(label, line, 0);
  layout_->addWidget(Make_List(row, label), line, slider_column, 1, columns - slider_column);
}

void Control_Group::Wide(QWidget* widget) { layout_->addWidget(widget, layout_->rowCount(), 0, 1, columns); }

void Control_Group::Help(const QString& text) {
  auto* label = new QLabel(text);
  label->setWordWrap(true);
  Wide(label);
}

}  // namespace kx
