#pragma once

#include <QEvent>
#include <QMouseEvent>
#include <vector>

class QCPItemText;

namespace kx {

class Line_Chart;

/// Dragging a point of the present selection up and down in a Line_Chart. It sees the chart's events before
/// the chart does and takes those of a drag; a press that turns out to be a click, or goes sideways, is given
/// back to the chart, which picks entries. The pointer's shape tells which of the two a press would begin.
/// A drag ends with the button, the focus, the chart's place on screen or its being enabled; Escape takes it
/// back.
class Point_Drag : public QObject {
  Q_OBJECT

 public:
  explicit Point_Drag(Line_Chart& chart);

  /// Points of the selection from row @p first on can be dragged; 0 for none.
  void Allow_From(int first) { allowed_from_ = first; }

  /// The chart shows @p values with the rows @p first to @p last selected (1 up); @p unit stands behind the
  /// value beside the pointer.
  void Follow(const std::vector<double>& values, int first, int last, const QString& unit);

  /// Ends a drag as letting the button go would.
  void Leave();

 signals:
  /// The user drags the point of @p row.
  void Began(int row);

  /// The pointer is @p delta, in the chart's unit, above where the drag began.
  void Moved(double delta);

  /// The drag is over; what it did stays when @p kept, and is to be taken back otherwise.
  void Ended(bool kept);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  enum class State {
    idle,
    pressed,   ///< on a point; not yet known what for
    dragging,  ///< from Began to Ended
    spent      ///< over, but the button is still down
  };

  bool Press(const QMouseEvent& event);
  bool Move(const QMouseEvent& event);
  bool Release(const QMouseEvent& event);
  bool Key(const QKeyEvent& event);
  void Begin(const QPointF& position);
  void End(bool kept);
  bool Move_From_Press(const QPointF& position);
  void Drag_To(const QPointF& position);
  void Show_Value();
  void Dress_Label();
  void Place_Label(int width);
  void Show_Pointer(const QPointF& position);
  [[nodiscard]] int Point_At(const QPointF& position) const;
  [[nodiscard]] double Units_A_Pixel() const;
  [[nodiscard]] double Value_Of(int row) const;

  Line_Chart& chart_;
  QCPItemText* label_;  ///< beside the pointer
  std::vector<double> values_;
  QString unit_;
  int first_ = 0;
  int last_ = -1;
  int allowed_from_ = 0;
  State state_ = State::idle;
  bool over_ = false;   ///< the pointer tells of a point
  int row_ = 0;         ///< that is dragged
  double start_ = 0;    ///< its value when the drag began
  double delta_ = 0;    ///< of the pointer, in the chart's unit
  QPointF pressed_at_;  ///< where the button went down
  QPointF pointer_;     ///< where it was last
};

}  // namespace kx
