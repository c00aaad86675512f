#pragma once

#include <QBoxLayout>
#include <QWidget>

namespace kx {

/// Two widgets side by side, the second one taking what room is left; one below the other while it is too
/// narrow for that, so that a page with them need not scroll sideways.
class Beside_Or_Below : public QWidget {
 public:
  Beside_Or_Below(QWidget* first, QWidget* second);

  /// As wide as the wider one of the two.
  [[nodiscard]] QSize minimumSizeHint() const override;

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  QWidget* first_;
  QWidget* second_;
  QBoxLayout* layout_;
};

}  // namespace kx
