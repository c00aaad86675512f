#pragma once

#include <QPixmap>
#include <QWidget>
#include <optional>

#include "widgets/surface_painter.h"
#include "workspace/map_data.h"
#include "workspace/surface_projection.h"

namespace kx {

/// A map as a surface in perspective. Dragging turns it, the wheel and + and - change its size, the arrow
/// keys turn it in steps, a double click brings the first view back. Under the mouse it tells the value with
/// its RPM and load.
class Surface_Chart : public QWidget {
  Q_OBJECT

 public:
  explicit Surface_Chart(const QString& name, QWidget* parent = nullptr);

  void Show(Map_Points points, Map_Titles titles);

  /// The view is brought inside its limits.
  void Set_View(const Surface_View& view);
  [[nodiscard]] const Surface_View& View() const { return view_; }

  /// The chart without read-out and focus, as it is on show or would be.
  [[nodiscard]] const QPixmap& Picture();

  /// Labels and titles of the axes, as in Picture.
  [[nodiscard]] const std::vector<Painted_Label>& Labels();

  /// What is told at @p position of the widget; empty when no point is there.
  [[nodiscard]] QString Read_Out_At(const QPointF& position) const;

 signals:
  /// The user has turned the surface or changed its size.
  void View_Changed();

 protected:
  bool event(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void changeEvent(QEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void leaveEvent(QEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override;

 private:
  void Redraw();
  void Draw_Picture();
  void Draw_Read_Out(QPainter& painter) const;
  void Take_View_Of_User(const Surface_View& view);
  [[nodiscard]] QString Read_Out_Of(std::size_t point) const;
  [[nodiscard]] QRectF Surface_Area() const;

  Map_Points points_;
  Map_Titles titles_;
  Surface_View view_;
  Surface_Shape shape_;  ///< as painted last
  std::vector<Painted_Label> labels_;
  QPixmap picture_;               ///< all but the read-out; null when it has to be painted anew
  std::optional<QPointF> mouse_;  ///< over the surface, no button held
  std::optional<QPointF> drag_;   ///< where the last step of a drag ended
};

}  // namespace kx
