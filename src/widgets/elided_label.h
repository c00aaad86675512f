#pragma once

#include <QLabel>

namespace kx {

/// A one-line text that is cut in the middle where it is too long, and whole in its tip. However long it is,
/// it widens no window. For paths and for texts of the program that grow.
class Elided_Label : public QLabel {
  Q_OBJECT

 public:
  explicit Elided_Label(const QString& name, QWidget* parent = nullptr);

  QSize minimumSizeHint() const override;

 protected:
  bool event(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
};

}  // namespace kx
