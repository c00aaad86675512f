#pragma once

#include <QLabel>
#include <QVBoxLayout>
#include <QWidget>
#include <map>

#include "widgets/line_chart.h"
#include "widgets/table_grid.h"
#include "workspace/engine_place.h"
#include "workspace/tables.h"

namespace kx {

/// One tuning table: its grid over the whole height, beside it the chart or charts, with room above the chart
/// for help texts and below it for the controls that belong to the table.
class Table_Page : public QWidget {
  Q_OBJECT

 public:
  Table_Page(Table table, std::initializer_list<Chart_Id> charts, QWidget* parent = nullptr);

  /// A help text above the table, wrapped to the width.
  QLabel* Add_Help(const QString& name, const QString& text = {});

  /// Puts @p widget above or below the chart.
  void Add_Above(QWidget* widget);
  void Add_Below(QWidget* widget);

  /// Shows the table's grid and the chart that stands beside it now.
  void Show_Values();

  /// Marks where the engine is in grid and chart, or takes the marks away.
  void Show_Place(const std::optional<Table_Place>& place);

  [[nodiscard]] Table Shown_Table() const { return table_; }
  [[nodiscard]] Table_Grid& Grid_Widget() { return *grid_; }

 private:
  [[nodiscard]] QString Tip() const;
  void Connect_Drag(Point_Drag& drag);

  Table table_;
  QVBoxLayout* above_;
  QVBoxLayout* below_;
  Table_Grid* grid_;
  std::map<Chart_Id, Line_Chart*> charts_;
};

}  // namespace kx
