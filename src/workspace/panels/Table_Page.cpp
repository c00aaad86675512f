#include "workspace/panels/Table_Page.h"

#include <QHBoxLayout>
#include <QShortcut>

#include "widgets/form_helpers.h"
#include "workspace/cell_editing.h"
#include "workspace/table_meaning.h"
#include "workspace/table_operations.h"
#include "workspace/view_hooks.h"

namespace kx {
namespace {

constexpr int grid_share = 2;
constexpr int chart_share = 5;

}  // namespace

Table_Page::Table_Page(Table table, std::initializer_list<Chart_Id> charts, QWidget* parent)
    : QWidget(parent),
      table_(table),
      above_(new QVBoxLayout),
      below_(new QVBoxLayout),
      grid_(new Table_Grid(Grid_Of(table), Text(Row_Of(table).grid), this)) {
  auto* right = new QVBoxLayout;
  right->addLayout(above_);
  for (const Chart_Id id : charts) {
    auto* chart = new Line_Chart(Text(chart_names[static_cast<std::size_t>(id)]), this);
    charts_[id] = chart;
    right->addWidget(chart, 1);
    connect(chart, &Line_Chart::Entries_Picked, this, [this](int row, int row_sel) {
      Grid_Enter_Cell(table_, row, row_sel);
      grid_->setFocus();
      Show_Values();
    });
  }
  right->addLayout(below_);
  auto* all = new QHBoxLayout(this);
  all->addWidget(grid_, grid_share);
  all->addLayout(right, chart_share);
  connect(grid_, &Table_Grid::Cell_Entered, this, [this](int row, int row_sel) {
    Grid_Enter_Cell(table_, row, row_sel);
    Show_Values();
  });
  connect(grid_, &Table_Grid::Key_Pressed, this, [this](int key_code, int shift_state) {
    Guarded([&] { Grid_Key_Down(table_, key_code, shift_state); });
  });
  Add_Step_Key(QKeySequence("Ctrl+Up"), plus_Click);
  Add_Step_Key(QKeySequence("Ctrl+Down"), minus_Click);
}

/// Steps the selected entries without leaving the grid.
void Table_Page::Add_Step_Key(const QKeySequence& keys, void (*step)()) {
  auto* shortcut = new QShortcut(keys, grid_, nullptr, nullptr, Qt::WidgetShortcut);
  connect(shortcut, &QShortcut::activated, this, [step] { Guarded(step); });
}

QLabel* Table_Page::Add_Help(const QString& name, const QString& text) {
  auto* label = new QLabel(text, this);
  label->setObjectName(name);
  label->setWordWrap(true);
  Add_Above(label);
  return label;
}

void Table_Page::Add_Above(QWidget* widget) { above_->addWidget(widget); }

void Table_Page::Add_Below(QWidget* widget) { below_->addWidget(widget); }

void Table_Page::Show_Values() {
  const Grid& grid = Grid_Of(table_);
  const Chart_Id beside = Chart_Beside(table_);
  for (const auto& [id, chart] : charts_) {
    chart->setVisible(id == beside);
    if (id == beside) chart->Show(Chart_Of(id), grid.Sel_Start(), grid.Sel_Start() + grid.Sel_Count());
  }
  grid_->Refresh();
  grid_->setToolTip(Tip());
}

/// With the range and unit that the bytes have now; a sensor that is missing leaves none to tell.
QString Table_Page::Tip() const {
  const Table_Meaning meaning = Meaning_Of(table_);
  const QString unit = Text(Unit_Of(meaning));
  const QString range = QString::number(meaning.limits.min, 'g', 4) + " to " +
                        QString::number(meaning.limits.max, 'g', 4) + (unit.isEmpty() ? "" : " " + unit);
  return "Type a value: " + range +
         "\nCtrl+Up and Ctrl+Down: a step up or down; Enter: next row; Ctrl+A: all rows.";
}

}  // namespace kx
