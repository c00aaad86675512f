#include "workspace/panels/Table_Page.h"

#include <QHBoxLayout>

#include "widgets/form_helpers.h"
#include "widgets/point_drag.h"
#include "widgets/table_menu.h"
#include "workspace/cell_editing.h"
#include "workspace/curve_drag.h"
#include "workspace/panels/Table_Control_Panel.h"
#include "workspace/table_gestures.h"
#include "workspace/table_meaning.h"
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
    Connect_Drag(chart->Drag());
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
  Add_Table_Menu(
      *grid_,
      {[table] { Copy_Table(table); }, [table] { Paste_Table(table); }, [table] { Interpolate_Table(table); },
       [table] { Smooth_Table(table); }, [table] { return Can_Shape(table); }},
      Table_Panel_Handlers());
}

/// The keys go to the chart while a point is dragged, and come back.
void Table_Page::Connect_Drag(Point_Drag& drag) {
  connect(&drag, &Point_Drag::Began, this,
          [this](int row) { Guarded([=, this] { Begin_Curve_Drag(table_, row); }); });
  connect(&drag, &Point_Drag::Moved, this, [&drag](double delta) {
    Guarded([&] {
      if (!Drag_Curve(delta)) drag.Leave();
    });
  });
  connect(&drag, &Point_Drag::Ended, this, [this](bool kept) {
    Guarded(kept ? End_Curve_Drag : Take_Back_Curve_Drag);
    grid_->setFocus();
  });
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
    chart->Drag().Allow_From(First_Row_To_Drag(table_));
    if (id == beside) chart->Show(Chart_Of(id), grid.Sel_Start(), grid.Sel_Start() + grid.Sel_Count());
  }
  grid_->Refresh();
  grid_->setToolTip(Tip());
}

void Table_Page::Show_Place(const std::optional<Table_Place>& place) {
  std::optional<Chart_Place> mark;
  if (place) mark = {place->entry, place->value, Text(place->text)};
  grid_->Set_Place(place ? std::optional(place->entry) : std::nullopt);
  for (const auto& [id, chart] : charts_) chart->Set_Place(mark);
}

/// With the range and unit that the bytes have now; a sensor that is missing leaves none to tell.
QString Table_Page::Tip() const {
  const Table_Meaning meaning = Meaning_Of(table_);
  const QString unit = Text(Unit_Of(meaning));
  const QString range = QString::number(meaning.limits.min, 'g', 4) + " to " +
                        QString::number(meaning.limits.max, 'g', 4) + (unit.isEmpty() ? "" : " " + unit);
  return "Type a value: " + range +
         "\nCtrl+Up and Ctrl+Down: a step up or down; Enter: next row; Ctrl+A: all rows."
         "\nCtrl+Shift+C and Ctrl+Shift+V: copy and paste as a spreadsheet does; right button: more.";
}

}  // namespace kx
