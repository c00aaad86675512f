#pragma once

#include "widgets/table_grid.h"
#include "widgets/table_tools.h"

namespace kx {

/// What a table's context menu does beside its panel.
struct Table_Menu_Handlers {
  std::function<void()> copy;
  std::function<void()> paste;
  std::function<void()> interpolate;
  std::function<void()> smooth;
  std::function<bool()> can_shape;  ///< the last two have something to do
};

/// Gives @p grid its context menu, by the right button, the menu key and Shift+F10, and the keys that stand
/// in it: Ctrl+Shift+C and V, Ctrl+Up and Down. Its entries: copy and paste, the two shapes, and what the
/// table's panel does.
void Add_Table_Menu(Table_Grid& grid, const Table_Menu_Handlers& handlers, const Table_Tool_Handlers& tools);

}  // namespace kx
