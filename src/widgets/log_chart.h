#pragma once

#include <qcustomplot.h>

#include <optional>
#include <span>
#include <vector>

namespace kx {

/// One signal of a log as a chart takes it. The values are copied.
struct Log_Series {
  QString name;            ///< with its unit, as the legend shows it
  int row = 0;             ///< row of the signal, for its colour
  bool secondary = false;  ///< drawn against the right value axis
  std::span<const double> values;
};

/// Fixed ends of a value axis; nothing for automatic ones.
using Fixed_Range = std::optional<QCPRange>;

class Signal_Line;

/// Signals of a log over time, or over another signal, against two value axes. Takes thousands of rows: what
/// is painted of a line is its least and greatest value a pixel column. Draws only while it is on screen.
class Log_Chart : public QCustomPlot {
  Q_OBJECT

 public:
  /// What the user may do with the stretch shown.
  enum class Gestures {
    read_out,  ///< pick a point
    stretch    ///< also choose another stretch: by drag, wheel, keys
  };

  Log_Chart(const QString& name, Gestures gestures, QWidget* parent = nullptr);

  /// Shows @p series over @p x, whose title is @p x_title. Without any series the chart says @p nothing.
  void Show(std::span<const double> x, const QString& x_title, const std::vector<Log_Series>& series,
            const Fixed_Range& left, const Fixed_Range& right, const QString& nothing);

  /// Marks entry @p index of x as the one that was read; nothing takes the mark away.
  void Mark(std::optional<std::size_t> index);

 signals:
  /// The user chose a stretch: its ends as shares of the axis, 0 to 1, in order.
  void Stretch_Chosen(double from, double to);
  /// Right button.
  void Zoom_Out_Asked();
  /// Wheel over share @p at of the axis: in above 0, out below.
  void Wheel_Zoomed(double at, int steps);
  /// Dragged with the middle button by @p share of the axis; above 0 shows what is earlier.
  void Dragged(double share);
  /// Arrow key: one row to the left or right.
  void Row_Step_Asked(int step);
  /// A click at a line; @p index counts the entries of x from 0.
  void Point_Picked(std::size_t index);

 protected:
  bool event(QEvent* event) override;
  void showEvent(QShowEvent* event) override;
  void changeEvent(QEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void Apply_Palette();
  void Set_Lines(const std::vector<Log_Series>& series);
  void Fit_Axis(QCPAxis& axis, const Fixed_Range& fixed, bool secondary);
  void Place_Legend();
  void Draw();
  void End_Drag();
  [[nodiscard]] double Share_At(double pixel) const;
  [[nodiscard]] std::optional<std::size_t> Entry_Near(const QPointF& position) const;

  Gestures gestures_;
  std::vector<double> x_;
  std::vector<Signal_Line*> lines_;  ///< owned by the plot
  QCPItemRect* chosen_;
  QCPItemStraightLine* mark_;
  QCPItemText* nothing_;
  std::optional<QPointF> pressed_;  ///< where the left or middle button went down
  bool dragging_ = false;           ///< moved far enough to be no click
  bool stale_ = false;              ///< changed while hidden
};

}  // namespace kx
