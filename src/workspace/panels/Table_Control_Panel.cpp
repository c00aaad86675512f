#include "workspace/panels/Table_Control_Panel.h"

#include "workspace/table_limits.h"
#include "workspace/table_operations.h"

namespace kx {

Table_Tool_Handlers Table_Panel_Handlers() {
  return {plus_Click,        minus_Click,     steep_Click,       flat_Click, set_table_Click,
          scale_table_Click, &set_table_text, &scale_table_text, &minText,   &maxText};
}

Table_Control_Panel::Table_Control_Panel(QWidget* parent) : Table_Tools(Table_Panel_Handlers(), 4, parent) {}

}  // namespace kx
