#pragma once

#include <QGroupBox>

namespace kx {

/// "Table Control": the buttons and boxes that edit the selected rows of the table on show.
class Table_Control_Panel : public QGroupBox {
  Q_OBJECT

 public:
  explicit Table_Control_Panel(QWidget* parent = nullptr);
};

}  // namespace kx
