#pragma once

#include "widgets/table_tools.h"

namespace kx {

/// What the table panel does, on the selected rows of the table on show.
[[nodiscard]] Table_Tool_Handlers Table_Panel_Handlers();

/// The table panel of the main form: works on the selected rows of the table on show.
class Table_Control_Panel : public Table_Tools {
  Q_OBJECT

 public:
  explicit Table_Control_Panel(QWidget* parent = nullptr);
};

}  // namespace kx
