#include "workspace/table_operations.h"

#include <algorithm>
#include <functional>

#include "settings/history.h"
#include "settings/image.h"
#include "settings/message.h"
#include "settings/numbers.h"
#include "settings/refresh.h"
#include "workspace/table_arithmetic.h"

namespace kx {

Shown_Text set_table_text;
Shown_Text scale_table_text;

namespace {

/// New byte of one selected cell, @p distance rows behind the first selected one.
using Edit = std::function<std::uint8_t(const Table_Meaning& meaning, const Cell& cell, int distance)>;

void Edit_Selection(Table id, const Table_Meaning& meaning, const Edit& edit) {
  const Table_Row& table = Row_Of(id);
  Each_Selected(Grid_Of(id), table.first_row, [&](int row, int distance) {
    CardByte[Edited_Byte(id, row)] = edit(meaning, Cell_At(id, row), distance);
  });
}

/// What every button does: history, the selection of the table on show, the views.
void Run_On_Shown_Table(const Edit& edit) {
  Capture_History();
  if (const auto table = Active_Table()) Edit_Selection(*table, Meaning_Of(*table), edit);
  Update_All();
}

void Step_Selection(int sign) {
  const int end = sign > 0 ? 255 : 0;
  Run_On_Shown_Table([sign, end](const Table_Meaning& meaning, const Cell& cell, int) {
    return cell.raw == end ? cell.raw : Stepped(meaning, cell, sign);
  });
}

void Slope_Selection(int sign) {
  Run_On_Shown_Table([sign](const Table_Meaning& meaning, const Cell& cell, int distance) {
    return Sloped(meaning, cell, sign * distance);
  });
}

}  // namespace

Cell Cell_At(Table table, int row) {
  const std::string& text = Grid_Of(table).Text(row, Row_Of(table).text_column);
  return {CardByte[Edited_Byte(table, row)], Val_Any(text)};
}

void plus_Click() { Step_Selection(1); }

void minus_Click() { Step_Selection(-1); }

void steep_Click() { Slope_Selection(1); }

void flat_Click() { Slope_Selection(-1); }

void set_table_Click() {
  Capture_History();
  if (const auto table = Active_Table()) {
    const Table_Meaning meaning = Meaning_Of(*table);
    const double typed = Required_Number(set_table_text.Text());
    const double value = Clipped_To_Set(meaning, typed);
    if (value < typed || value > typed) set_table_text.Set(Number_Text(value));
    Edit_Selection(*table, meaning,
                   [value](const Table_Meaning& m, const Cell&, int) { return Set_To(m, value); });
  }
  Update_All();
}

void scale_table_Click() {
  try {
    Run_On_Shown_Table([](const Table_Meaning& meaning, const Cell& cell, int) {
      return Scaled(meaning, cell, Required_Number(scale_table_text.Text()));
    });
  } catch (const Failure&) {
    Tell("not a number");
  }
}

}  // namespace kx
