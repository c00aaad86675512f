#pragma once

#include <QWidget>

namespace kx {

/// The scale of colours of a heat grid with numbers under it.
class Heat_Legend : public QWidget {
  Q_OBJECT

 public:
  explicit Heat_Legend(const QString& name, QWidget* parent = nullptr);

  /// @p marks stand at even distances from the low to the high end of the scale.
  void Show(const QStringList& marks);

  QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QStringList marks_;
};

}  // namespace kx
