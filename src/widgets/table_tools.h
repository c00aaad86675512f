#pragma once

#include <QGroupBox>
#include <functional>

#include "settings/shown_text.h"

namespace kx {

/// What the buttons and boxes of a table panel do.
struct Table_Tool_Handlers {
  std::function<void()> plus;
  std::function<void()> minus;
  std::function<void()> steep;
  std::function<void()> flat;
  std::function<void()> set_table;
  std::function<void()> scale_table;
  Shown_Text* set_table_text = nullptr;
  Shown_Text* scale_table_text = nullptr;
  Shown_Text* minText = nullptr;  ///< limits; nothing where a table has none
  Shown_Text* maxText = nullptr;
};

/// "Table Control": the buttons and boxes that edit the selected rows of a table, in rows
/// of @p columns.
class Table_Tools : public QGroupBox {
  Q_OBJECT

 public:
  Table_Tools(const Table_Tool_Handlers& handlers, int columns, QWidget* parent = nullptr);
};

}  // namespace kx
