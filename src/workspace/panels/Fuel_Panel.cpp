#include "workspace/panels/Fuel_Panel.h"

#include <QHBoxLayout>
#include <QPainter>
#include <QVBoxLayout>

#include "widgets/beside_or_below.h"
#include "widgets/form_helpers.h"
#include "workspace/box_settings.h"
#include "workspace/temperature_chart.h"

namespace kx {
namespace {

constexpr int air_temperature_tab = 3;
constexpr int trim_gap = 20;       ///< pixels between the master's offsets and the slave's
constexpr int trim_columns = 4;    ///< caption, slider, text, unit
constexpr int first_trim_row = 1;  ///< of the group that holds scroll(36)

QGridLayout& Rows_Of(const Control_Group& group) { return *qobject_cast<QGridLayout*>(group.layout()); }

/// The heading of the injector offsets: a sentence, and below it one word over each column, when it has any.
class Trim_Heading : public QLabel {
 public:
  Trim_Heading() {
    setObjectName("Label25");
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
  }
  QSize sizeHint() const override { return {0, fontMetrics().lineSpacing() * 2}; }
  QSize minimumSizeHint() const override { return sizeHint(); }

 protected:
  void paintEvent(QPaintEvent* /*event*/) override {
    QPainter painter(this);
    painter.setPen(
        palette().color(isEnabled() ? QPalette::Active : QPalette::Disabled, QPalette::WindowText));
    const auto end_of_sentence = text().indexOf('.') + 1;
    painter.drawText(rect(), Qt::AlignTop, text().left(end_of_sentence));
    const QStringList words = text().mid(end_of_sentence).split(' ', Qt::SkipEmptyParts);
    for (qsizetype i = 0; i < words.size(); ++i) {
      const QRect column(static_cast<int>((width() + trim_gap) * i / words.size()), 0, width(), height());
      painter.drawText(column, Qt::AlignBottom, words[i]);
    }
  }
};

/// Keeps the height of a widget that may stand elsewhere. A row without any widget would lose its spacing,
/// too.
class Room_Of : public QWidget {
 public:
  explicit Room_Of(const QWidget& guest) : guest_(guest) {
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
  }
  QSize sizeHint() const override { return {0, guest_.sizeHint().height()}; }
  QSize minimumSizeHint() const override { return sizeHint(); }

 private:
  const QWidget& guest_;
};

/// A group without a border of its own, for a part of another frame.
Control_Group* Bare_Group(const QString& name, Control_Index& index) {
  auto* group = new Control_Group(name, {}, index);
  group->setStyleSheet("QGroupBox { border: none; margin: 0; padding: 0; }");
  group->layout()->setContentsMargins(0, 0, 0, 0);
  return group;
}

}  // namespace

Fuel_Panel::Fuel_Panel(Control_Index& index, QWidget* parent) : Tables_Panel("SSTab_Fuel", parent) {
  Table_Page* load = Add_Page(Table::fuel_load, {Chart_Id::FuelMapChart});
  load_base_ = new Control_Group("Fuel_Load_Base_Frame", "Base fuel load", index);
  load_base_->Choice("fuel_pos_combo");
  load_base_->Choice("fuel_neg_combo");
  load->Add_Below(load_base_);
  Add_Page(Table::fuel_rpm, {Chart_Id::FuelRpmChart});
  Add_Scrolled(page::fuel_options, Make_Options(index));
  Add_Scrolled(page::air_temperature, Make_Air_Temperature(index));
}

QWidget* Fuel_Panel::Make_Options(Control_Index& index) {
  enrichment_ = new Control_Group("Enrich_Mode_Frame", "Boost fuel enrichment method", index);
  enrichment_->Choice("Ext_stock");
  calibration_ = new Control_Group("Inj_Cal_Frame", "Base fuel calibration", index);
  calibration_->Help("Set percentage of original injector pulse to be used.");
  calibration_->Scalar("inj_cal_factor_scroll");
  acceleration_ = new Control_Group("AE_Frame", "Acceleration enrichment", index);
  acceleration_->Scalar("afe_thr_scroll");
  acceleration_->Scalar("afe_gain_scroll", 2);
  acceleration_->Scalar("afe_sus_scroll");
  auto* limits = new Control_Group("Fuel_Cut_Frame", "Fuel cut and forced injection", index);
  for (const char* name :
       {"rpm_limit_scroll", "rpm_openinj_scroll", "volt_openinj_scroll", "pulse_openinj_scroll"}) {
    limits->Scalar(name);
  }
  auto* page = new QWidget;
  auto* layout = new QVBoxLayout(page);
  layout->addWidget(new Beside_Or_Below(enrichment_, calibration_));
  layout->addWidget(acceleration_);
  layout->addWidget(limits);
  layout->addWidget(Make_Trim(index));
  layout->addStretch(1);
  return page;
}

QWidget* Fuel_Panel::Make_Trim(Control_Index& index) {
  auto* trim = new Control_Group("Injector_Trim_Frame", "Injector trim", index);
  trim->Choice("Ind_Trim_Option(0)");
  trim_heading_ = new Trim_Heading;
  trim->Wide(trim_heading_);
  common_trim_ = Bare_Group("Common_Trim_Frame", index);
  calibration_->Wide(common_trim_);
  auto* first = Bare_Group("First_Trim_Frame", index);
  first->Scalar("scroll(36)");
  first_trim_ = first;
  master_trim_ = Bare_Group("Master_Trim_Frame", index);
  Rows_Of(*master_trim_).addWidget(first_trim_, first_trim_row, 0, 1, trim_columns);
  for (const char* name : {"scroll(37)", "scroll(38)", "scroll(39)", "scroll(24)"})
    master_trim_->Scalar(name);
  auto* slave = Bare_Group("Slave_Trim_Frame", index);
  for (const char* name : {"scroll(25)", "scroll(26)", "scroll(27)", "scroll(28)", "scroll(29)"})
    slave->Scalar(name);
  // The other rows stay where they are when the first one goes to the calibration.
  Rows_Of(*master_trim_).addWidget(new Room_Of(*first), first_trim_row, 0);
  for (const Control_Group* group : {first, master_trim_, slave})
    Rows_Of(*group).setColumnMinimumWidth(0, group->fontMetrics().horizontalAdvance("Inj MM"));
  trim_frame_ = new QWidget;
  trim_frame_->setObjectName("Fuel_trim");
  auto* sides = new QHBoxLayout(trim_frame_);
  sides->setContentsMargins(0, 0, 0, 0);
  sides->setSpacing(trim_gap);
  sides->addWidget(master_trim_, 1, Qt::AlignTop);
  sides->addWidget(slave, 1, Qt::AlignTop);
  trim->Wide(trim_frame_);
  return trim;
}

QWidget* Fuel_Panel::Make_Air_Temperature(Control_Index& index) {
  auto* correction = new Control_Group("IAT_Frame", "Fuel correction by intake air temperature", index);
  for (const char* name : {"scroll(7)", "scroll(8)", "scroll(9)", "scroll(10)"}) correction->Scalar(name);
  chart_ = new Xy_Chart("Coolant_Chart", Temperature_Chart::title, Temperature_Chart::x_title,
                        Temperature_Chart::y_title);
  low_limit_ = Named_Text("L_IA_Temp_label");
  high_limit_ = Named_Text("H_IA_Temp_label");
  high_limit_->setAlignment(Qt::AlignRight);
  auto* page = new QWidget;
  auto* layout = new QVBoxLayout(page);
  layout->addWidget(correction);
  layout->addWidget(chart_, 1);
  auto* limits = new QHBoxLayout;
  limits->addWidget(low_limit_);
  limits->addWidget(high_limit_);
  layout->addLayout(limits);
  return page;
}

void Fuel_Panel::Show_Layout() {
  const Config_State config_state = Config_Of_Tune();
  load_base_->setEnabled(config_state.Fuel_Load_Base_Frame);
  enrichment_->setEnabled(config_state.Enrich_Mode_Frame);
  calibration_->setEnabled(config_state.Inj_Cal_Frame);
  acceleration_->setEnabled(config_state.AE_Frame);
  trim_frame_->setEnabled(config_state.Fuel_trim);
  trim_heading_->setText(Text(config_state.Label25));
  Control_Group* place = config_state.Fuel_trim ? master_trim_ : common_trim_;
  if (first_trim_->parentWidget() != place)
    Rows_Of(*place).addWidget(first_trim_, first_trim_row, 0, 1, trim_columns);
  first_trim_->findChild<QLabel*>()->setText(config_state.Fuel_trim ? "Inj A" : "All injectors");
  setTabEnabled(air_temperature_tab, config_state.IAT_Fuel_tab);
}

void Fuel_Panel::Show_Temperature_Chart() {
  QVector<double> x;
  QVector<double> y;
  for (const auto& point : Coolant_Chart.points) {
    if (!Coolant_Chart.has_sensor) break;
    x.append(point.temperature);
    y.append(point.correction);
  }
  chart_->Show(x, y, {Coolant_Chart.axis_min, Coolant_Chart.axis_max}, Temperature_Chart::divisions);
  low_limit_->setText(Text(Coolant_Chart.L_IA_Temp_label));
  high_limit_->setText(Text(Coolant_Chart.H_IA_Temp_label));
}

}  // namespace kx
