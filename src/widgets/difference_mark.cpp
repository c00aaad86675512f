#include "widgets/difference_mark.h"

#include <QEvent>
#include <algorithm>

namespace kx {
namespace {

constexpr double ground_share = 0.28;
constexpr int least_corner = 9;  ///< pixels
constexpr int mark_width = 8;
constexpr int mark_height = 12;

bool Is_Dark(const QPalette& palette) { return palette.color(QPalette::Base).lightness() < 128; }

/// Stands beside its anchor, in the anchor's own parent.
class Margin_Mark : public QWidget {
 public:
  Margin_Mark(QWidget& anchor, const QString& name) : QWidget(anchor.parentWidget()), anchor_(anchor) {
    setObjectName(name);
    setAttribute(Qt::WA_TransparentForMouseEvents);
    anchor.installEventFilter(this);
    connect(&anchor, &QObject::destroyed, this, &QObject::deleteLater);
    Follow_Anchor();
  }

  void Show_If(bool shown) {
    wanted_ = shown;
    Follow_Anchor();
  }

 protected:
  bool eventFilter(QObject* /*watched*/, QEvent* event) override {
    switch (event->type()) {
      case QEvent::ParentChange:
      case QEvent::Move:
      case QEvent::Resize:
      case QEvent::Show:
      case QEvent::Hide:
        Follow_Anchor();
        break;
      default:
        break;
    }
    return false;
  }

  void paintEvent(QPaintEvent* /*event*/) override {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(Difference_Colour(palette()));
    painter.drawPolygon(QPolygonF({{0.5, 0.5}, {width() - 0.5, height() / 2.0}, {0.5, height() - 0.5}}));
  }

 private:
  void Follow_Anchor() {
    if (parentWidget() != anchor_.parentWidget()) setParent(anchor_.parentWidget());
    const QRect beside = anchor_.geometry();
    setGeometry(Left_Of_Mark(beside.left()), beside.center().y() - mark_height / 2, mark_width, mark_height);
    setVisible(wanted_ && !anchor_.isHidden());
    raise();
  }

  /// Where there is no margin a label has room behind its text.
  [[nodiscard]] int Left_Of_Mark(int anchor_left) const {
    const int left = anchor_left - mark_width - 1;
    return left >= 0 ? left : anchor_left + anchor_.sizeHint().width() + 1;
  }

  QWidget& anchor_;
  bool wanted_ = false;
};

}  // namespace

QColor Difference_Colour(const QPalette& palette) {
  return Is_Dark(palette) ? QColor(255, 176, 64) : QColor(184, 80, 0);
}

QColor Difference_Ground(const QPalette& palette) {
  const QColor base = palette.color(QPalette::Base);
  const QColor mark = Difference_Colour(palette);
  const auto mixed = [](int ground, int front) {
    return static_cast<int>(ground + (front - ground) * ground_share);
  };
  return {mixed(base.red(), mark.red()), mixed(base.green(), mark.green()), mixed(base.blue(), mark.blue())};
}

void Paint_Difference_Corner(QPainter& painter, const QRect& cell, const QPalette& palette) {
  const int side = std::max(least_corner, cell.height() * 3 / 5);
  // The edge parts it from the ground of a selection, which is as dark as the mark.
  painter.setPen(palette.color(QPalette::Base));
  painter.setBrush(Difference_Colour(palette));
  const QPoint corner = cell.topLeft();
  painter.drawPolygon(QPolygon({corner, corner + QPoint(side, 0), corner + QPoint(0, side)}));
}

QString Mark_Name(const QString& control) { return "difference_mark(" + control + ")"; }

void Mark_Difference(QWidget& anchor, const QString& control, const QString& tip) {
  const QWidget* place = anchor.parentWidget();
  if (place == nullptr) return;
  auto* mark =
      static_cast<Margin_Mark*>(place->findChild<QWidget*>(Mark_Name(control), Qt::FindDirectChildrenOnly));
  if (mark == nullptr && !tip.isEmpty()) mark = new Margin_Mark(anchor, Mark_Name(control));
  if (mark != nullptr) mark->Show_If(!tip.isEmpty());
}

QString Tip_With_Difference(const QString& difference, const QString& tip) {
  return difference.isEmpty() ? tip : difference + "\n" + tip;
}

}  // namespace kx
