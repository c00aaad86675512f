#include "logging/KX_Hit_Map.h"

#include <QBuffer>
#include <QHBoxLayout>
#include <QPainter>
#include <QPdfWriter>
#include <QShowEvent>
#include <QVBoxLayout>

#include "logging/chart_export.h"
#include "logging/log_settings.h"
#include "logging/log_state.h"
#include "settings/numbers.h"
#include "widgets/form_helpers.h"
#include "widgets/wheel_guard.h"

namespace kx {
namespace {

constexpr int legend_marks = 5;
constexpr int number_width_in_characters = 8;
constexpr const char* any_rows = "any signal";

/// Fills @p list with @p captions and their numbers, with @p chosen chosen; the user has not touched it.
void Fill(QComboBox* list, const std::vector<std::pair<QString, int>>& entries, int chosen) {
  const QSignalBlocker quiet(list);
  list->clear();
  for (const auto& [caption, number] : entries) list->addItem(caption, number);
  list->setCurrentIndex(list->findData(chosen));
}

/// The signals of the log, as the tick boxes beside its chart list them.
std::vector<std::pair<QString, int>> Signals() {
  std::vector<std::pair<QString, int>> rows;
  for (int row = 0; row < signal_rows; ++row) {
    if (Signal_Row(row).shown) rows.emplace_back(Text(Signal_Caption(row)), row);
  }
  return rows;
}

Heat_Table Table_Of(const Log_Hits& hits) {
  Heat_Table table;
  table.corner = Text(hits.load_unit);
  for (const std::string& rpm : hits.rpm) table.columns << Text(rpm);
  for (const std::string& load : hits.load) table.rows << Text(load);
  const Heat_Scale scale = Scale_Of(hits);
  for (int load = 1; load <= hits.map.load.entries; ++load) {
    for (int rpm = 1; rpm <= hits.map.rpm.entries; ++rpm) {
      const auto value = Measure_Of(hits.map.At(load, rpm), hits.measure);
      table.cells.push_back(
          {Text(Cell_Text(hits, load, rpm)), value ? std::optional(scale.Share(*value)) : std::nullopt});
    }
  }
  return table;
}

QStringList Marks_Of(const Log_Hits& hits) {
  if (hits.map.rows == 0) return {};
  QStringList marks;
  for (int i = 0; i < legend_marks; ++i) {
    marks << Text(Scale_Text(hits, Scale_Of(hits).Value(i / (legend_marks - 1.0))));
  }
  return marks;
}

/// Bytes of @p picture as a file of @p format; empty for a format that there is not.
std::string Bytes_Of(const QPixmap& picture, const std::string& format) {
  QBuffer buffer;
  buffer.open(QIODevice::WriteOnly);
  if (format == "pdf") {
    QPdfWriter writer(&buffer);
    writer.setPageSize(QPageSize(picture.deviceIndependentSize(), QPageSize::Point));
    writer.setPageMargins({});
    QPainter painter(&writer);
    painter.drawPixmap(painter.viewport(), picture);
  } else if (format == "bmp" || format == "png") {
    picture.toImage().convertToFormat(QImage::Format_RGB32).save(&buffer, qPrintable(Text(format).toUpper()));
  }
  return buffer.data().toStdString();
}

}  // namespace

KX_Hit_Map::KX_Hit_Map(QWidget* parent)
    : QWidget(parent, Qt::Window),
      grid_(new Heat_Grid("hit_grid")),
      summary_(Named_Text("hit_summary")),
      legend_(new Heat_Legend("hit_legend")) {
  setObjectName("KX_Hit_Map");
  setWindowTitle("Hit map");
  auto* below = new QHBoxLayout;
  below->addWidget(summary_, 1);
  below->addWidget(legend_);
  auto* all = new QVBoxLayout(this);
  all->addWidget(Make_Choices());
  all->addWidget(Make_Filter());
  all->addWidget(grid_, 1);
  all->addLayout(below);
  connect(grid_, &Heat_Grid::Cell_Wanted, this,
          [this](int row, int column) { Guarded([=, this] { Want_Entry(row, column); }); });
  Guard_Wheels_In(this);
  resize(fontMetrics().averageCharWidth() * 172, fontMetrics().height() * 44);
}

QComboBox* KX_Hit_Map::List(const QString& name, const QString& tip) {
  auto* list = new QComboBox;
  list->setObjectName(name);
  list->setToolTip(tip);
  list->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  list->setMinimumContentsLength(number_width_in_characters);
  connect(list, &QComboBox::activated, this, [this] { Guarded([this] { Choice_Changed(); }); });
  return list;
}

QCheckBox* KX_Hit_Map::Check(const QString& name, const QString& caption, const QString& tip) {
  auto* check = new QCheckBox(caption);
  check->setObjectName(name);
  check->setToolTip(tip);
  connect(check, &QCheckBox::clicked, this, [this] { Guarded([this] { Choice_Changed(); }); });
  return check;
}

QWidget* KX_Hit_Map::Make_Choices() {
  table_ = List("hit_table", "The table whose load and RPM entries make the cells");
  load_ = List("hit_load", "What counts as load: what the table's load is, or an analog input alone");
  signal_ = List("hit_signal", "The signal whose mean, smallest and largest value the cells show");
  measure_ = List("hit_measure", "What the cells show and what colours them");
  std::vector<std::pair<QString, int>> tables;
  for (const Table table : hit_tables) {
    tables.emplace_back(Text(hit_table_names.at(tables.size())), static_cast<int>(table));
  }
  Fill(table_, tables, static_cast<int>(request_.table));
  std::vector<std::pair<QString, int>> measures;
  for (const std::string_view name : hit_measure_names) {
    measures.emplace_back(Text(name), static_cast<int>(measures.size()));
  }
  Fill(measure_, measures, static_cast<int>(request_.measure));
  auto* save = new QPushButton("&Export...");
  save->setObjectName("hit_export");
  save->setToolTip("Save the map as a picture (.bmp, .png, .pdf) or what its cells show as text (.csv)");
  On_Click(save, [this] { Export(); });
  auto* line = new QWidget;
  auto* layout = new QHBoxLayout(line);
  layout->setContentsMargins(0, 0, 0, 0);
  const auto add = [&](const QString& caption, QComboBox* list, int share) {
    auto* label = new QLabel(caption);
    label->setBuddy(list);
    layout->addWidget(label);
    layout->addWidget(list, share);
  };
  add("Ta&ble", table_, 1);
  add("&Load", load_, 3);
  add("S&how", measure_, 1);
  add("&of", signal_, 3);
  layout->addWidget(save);
  return line;
}

QWidget* KX_Hit_Map::Make_Filter() {
  high_load_ =
      Check("hit_high_load", "Hi&gh load",
            "Only rows above the least RPM, load and injection time from which on the fuel filter of "
            "this log learns; as set up at first 3000 RPM, 100 counts of load and 5 ms");
  stretch_ = Check("hit_stretch", "&Stretch on screen", "Only the rows that the chart of the log shows now");
  auto* line = new QWidget;
  auto* layout = new QHBoxLayout(line);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(new QLabel("Only"));
  layout->addWidget(high_load_);
  layout->addWidget(stretch_);
  for (std::size_t i = 0; i < limits_.size(); ++i) {
    limits_.at(i) = Make_Limit(i);
    layout->addSpacing(fontMetrics().averageCharWidth());
    layout->addWidget(limits_.at(i).signal, 3);
    layout->addWidget(new QLabel("from"));
    layout->addWidget(limits_.at(i).from, 1);
    layout->addWidget(new QLabel("to"));
    layout->addWidget(limits_.at(i).to, 1);
  }
  return line;
}

KX_Hit_Map::Limit_Controls KX_Hit_Map::Make_Limit(std::size_t index) {
  const auto box = [&](const char* name, std::optional<double> Hit_Limit::*end) {
    auto* edit = new QLineEdit;
    edit->setObjectName(QString("%1(%2)").arg(name).arg(index));
    edit->setAlignment(Qt::AlignRight);
    edit->setMinimumWidth(edit->fontMetrics().averageCharWidth() * number_width_in_characters);
    connect(edit, &QLineEdit::editingFinished, this,
            [=, this] { Guarded([=, this] { Take_Limit(index, edit, end); }); });
    return edit;
  };
  return {
      List(QString("hit_limit(%1)").arg(index), "Only rows in which this signal is in the range beside it"),
      box("hit_from", &Hit_Limit::from), box("hit_to", &Hit_Limit::to)};
}

/// An empty box does not limit; what is no number is told of, and the box is as before.
void KX_Hit_Map::Take_Limit(std::size_t index, QLineEdit* box, std::optional<double> Hit_Limit::*end) {
  auto& limit = request_.limits.at(index).*end;
  const std::string typed = box->text().trimmed().toStdString();
  const auto number = Whole_Number_Text(typed);
  if (!number && !typed.empty()) {
    box->setText(limit ? Text(Number_Text(*limit)) : "");
    return Tell("Limit of the hit map: not a number");
  }
  if (limit == number) return;
  limit = number;
  Show_Map();
}

void KX_Hit_Map::Choice_Changed() {
  signal_chosen_ = signal_chosen_ || request_.signal_row != signal_->currentData().toInt();
  request_.table = static_cast<Table>(table_->currentData().toInt());
  request_.input = load_->currentData().toInt();
  request_.signal_row = signal_->currentData().toInt();
  request_.measure = static_cast<Hit_Measure>(measure_->currentData().toInt());
  request_.high_load = high_load_->isChecked();
  request_.stretch_only = stretch_->isChecked();
  for (std::size_t i = 0; i < limits_.size(); ++i) {
    request_.limits.at(i).signal_row = limits_.at(i).signal->currentData().toInt();
  }
  Fill_Lists();
  Show_Map();
}

/// Names and units are the log's and may change with it.
void KX_Hit_Map::Fill_Lists() {
  if (!signal_chosen_) request_.signal_row = First_Hit_Signal();
  std::vector<std::pair<QString, int>> loads{
      {"the table's (" + Text(Load_Name(request_.table, own_load)) + ")", own_load}};
  for (int input = 0; input < analog_inputs; ++input) {
    loads.emplace_back(Text(Load_Name(request_.table, input)), input);
  }
  Fill(load_, loads, request_.input);
  std::vector<std::pair<QString, int>> rows = Signals();
  Fill(signal_, rows, request_.signal_row);
  rows.insert(rows.begin(), {any_rows, no_signal});
  for (std::size_t i = 0; i < limits_.size(); ++i) {
    Fill(limits_.at(i).signal, rows, request_.limits.at(i).signal_row);
  }
}

void KX_Hit_Map::Show_Map() {
  hits_ = Hits_Of(request_);
  Heat_Table table = Table_Of(hits_);
  table.tip = [this](int row, int column) { return Text(Cell_Tip(hits_, row + 1, column + 1)); };
  grid_->Show(std::move(table));
  grid_->setAccessibleName(Text(Title_Of(hits_)));
  summary_->setText(Text(Summary_Of(hits_)));
  legend_->Show(Marks_Of(hits_));
  legend_->setToolTip(Text(Title_Of(hits_)));
  Show_Tips();
}

/// What a limit is worth setting to: the range of the signal in this log.
void KX_Hit_Map::Show_Tips() {
  for (std::size_t i = 0; i < limits_.size(); ++i) {
    const int row = request_.limits.at(i).signal_row;
    const QString range = row == no_signal ? "choose a signal first" : Text(Signal_Range_Text(row));
    limits_.at(i).from->setToolTip("Smallest value that counts, empty for any: " + range);
    limits_.at(i).to->setToolTip("Largest value that counts, empty for any: " + range);
    for (QLineEdit* box : {limits_.at(i).from, limits_.at(i).to}) box->setEnabled(row != no_signal);
  }
}

void KX_Hit_Map::Follow_Log() {
  if (!isVisible()) return;
  Fill_Lists();
  Show_Map();
}

void KX_Hit_Map::Want_Entry(int row, int column) {
  emit Entry_Wanted(request_.table, request_.input == own_load ? row + 1 : 0, column + 1);
}

void KX_Hit_Map::Export() {
  Export_Of_Log(
      "_hits", [this] { return Hits_File_Text(hits_); },
      [this](const std::string& format) { return Picture(format); });
}

/// The whole map, whatever of it is in sight, between what it shows and its colours.
std::string KX_Hit_Map::Picture(const std::string& format) {
  const QPixmap cells = grid_->Whole_Picture();
  const QPixmap colours = legend_->grab();
  const int line = fontMetrics().height();
  const QSize size = cells.deviceIndependentSize().toSize();
  const int legend_height = colours.deviceIndependentSize().toSize().height();
  QPixmap page(QSize(size.width() + line, size.height() + legend_height + 4 * line) * devicePixelRatioF());
  page.setDevicePixelRatio(devicePixelRatioF());
  page.fill(palette().color(QPalette::Window));
  QPainter painter(&page);
  painter.setFont(font());
  painter.setPen(palette().color(QPalette::WindowText));
  const QRect head(line / 2, line / 2, size.width(), 2 * line);
  painter.drawText(head, Qt::AlignTop,
                   Text(Log_File_Name + "  " + Title_Of(hits_) + ", " + hits_.load_name + " [" +
                        hits_.load_unit + "] by RPM"));
  painter.drawText(head, Qt::AlignBottom, Text(Summary_Of(hits_)));
  painter.drawPixmap(line / 2, 3 * line, cells);
  painter.drawPixmap(line / 2, size.height() + 3 * line + line / 2, colours);
  painter.end();
  return Bytes_Of(page, format);
}

void KX_Hit_Map::showEvent(QShowEvent* event) {
  QWidget::showEvent(event);
  if (!event->spontaneous()) Guarded([this] { Follow_Log(); });
}

}  // namespace kx
