#pragma once

#include <qcustomplot.h>

#include <optional>

#include "workspace/charts.h"

namespace kx {

class Point_Drag;

/// Where the engine is on a chart.
struct Chart_Place {
  double entry = 1;  ///< 1 up, with fractions between two entries
  double value = 0;  ///< in the unit of the chart
  QString text;      ///< value and unit, as it stands beside the mark

  friend bool operator==(const Chart_Place&, const Chart_Place&) = default;
};

/// A table's curve beside its grid: every entry a point, the current one and the selection marked as in the
/// grid. Clicking or dragging in it picks entries. Draws only while it is on screen.
class Line_Chart : public QCustomPlot {
  Q_OBJECT

 public:
  Line_Chart(const QString& name, QWidget* parent = nullptr);

  /// Shows @p chart with the rows @p first to @p last selected (1 up).
  void Show(const Chart& chart, int first, int last);

  /// Moves points by hand.
  [[nodiscard]] Point_Drag& Drag() { return *drag_; }

  /// Picks the entry at @p position, from which a drag goes on to pick others.
  void Pick_From(const QPointF& position);

  /// Marks where the engine is by a line, a diamond and its value. Draws the chart no more than that needs.
  void Set_Place(const std::optional<Chart_Place>& place);

 signals:
  /// The user picked entries in the chart; rows count from 1.
  void Entries_Picked(int row, int row_sel);

 protected:
  void showEvent(QShowEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void changeEvent(QEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;

 private:
  void Apply_Palette();
  void Set_Series_Count(int count);
  void Show_Legend(bool shown);
  void Show_Reference(const Chart_Series& reference);
  void Set_Labels(const std::vector<std::string>& labels);
  void Fit_Values(const Chart& chart);
  void Mark(const Chart& chart, int first, int last);
  void Draw();
  [[nodiscard]] int Row_At(const QPointF& position) const;
  [[nodiscard]] QPointF Place_Point() const;
  [[nodiscard]] QRectF Place_Label() const;
  [[nodiscard]] QRect Place_Strip() const;

  QSharedPointer<QCPAxisTickerText> labels_{new QCPAxisTickerText};
  std::vector<std::string> shown_labels_;
  QCPItemRect* selection_;
  QCPItemStraightLine* cursor_;
  QCPGraph* current_ = nullptr;  ///< the current entry's point
  QCPCurve* reference_;          ///< the table that it is compared with, thin
  QCPTextElement* read_out_;     ///< above the curves, never on them
  Point_Drag* drag_ = nullptr;
  std::optional<Chart_Place> place_;
  int entries_ = 0;
  int picked_row_ = 0;  ///< where the drag began
  bool stale_ = false;  ///< changed while hidden
};

}  // namespace kx
