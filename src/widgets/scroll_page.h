#pragma once

#include <QScrollArea>

namespace kx {

/// A page that scrolls when it does not fit: asks for the room that its content wants, and is content with
/// much less. The control that gets the focus by Tab comes into sight.
class Scroll_Page : public QScrollArea {
  Q_OBJECT

 public:
  explicit Scroll_Page(QWidget* content, QWidget* parent = nullptr);

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;
};

}  // namespace kx
