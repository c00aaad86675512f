#include "workspace/choice_controls.h"

#include <algorithm>

#include "settings/failure.h"
#include "settings/refresh.h"
#include "workspace/history.h"
#include "workspace/view_hooks.h"

namespace kx {

const Choice_Row& Choice_Row_Of(std::string_view name) {
  const auto rows = Choice_Rows();
  const auto found = std::ranges::find_if(rows, [name](const Choice_Row& row) {
    return std::ranges::find(row.controls, name) != row.controls.end();
  });
  if (found == rows.end() || name.empty()) Fail_Subscript();
  return *found;
}

int Choice_Count(const Choice_Row& row) {
  return row.kind == Choice_Kind::check ? 2 : static_cast<int>(row.items.size());
}

int Choice_Index(const Choice_Row& row) { return row.rules->read(row); }

std::string_view Choice_Text(const Choice_Row& row) {
  return row.items[static_cast<std::size_t>(Choice_Index(row))];
}

void Choice_Changed(const Choice_Row& row, int index) {
  if (index < 0 || index >= Choice_Count(row)) Fail_Subscript();
  if (!Undo_Busy && row.rules->accepts(index)) {
    if (row.captures) Capture_History();
    row.rules->write(row, index);
    if (row.afterwards) row.afterwards();
  }
  if (view_hooks.show_choice) view_hooks.show_choice(row);
}

}  // namespace kx
