#include "workspace/cell_editing.h"

#include "platform/seams.h"
#include "settings/history.h"
#include "settings/image.h"
#include "settings/numbers.h"
#include "settings/text_encoding.h"
#include "workspace/table_arithmetic.h"
#include "workspace/table_values.h"
#include "workspace/view_hooks.h"

namespace kx {

bool Fresh_Cell = false;

namespace {

/// Digit of a key code of the main block or the keypad; -1 for another key.
int Digit_Of(int key_code) {
  if (key_code >= 48 && key_code <= 57) return key_code - 48;
  if (key_code >= 96 && key_code <= 105) return key_code - 96;
  return -1;
}

std::string With_Digit(int digit, const std::string& text) {
  const std::string kept = Fresh_Cell ? "" : text;
  Fresh_Cell = false;
  return kept + std::to_string(digit);
}

/// The point leaves the cell fresh, so that a first digit after it still replaces the whole text.
std::string With_Point(char point, const std::string& text) {
  return text.find_first_of(".,") == std::string::npos ? text + point : text;
}

std::string Without_Last(const std::string& text) {
  Fresh_Cell = false;
  return text.substr(0, text.empty() ? 0 : text.size() - 1);
}

void Copy_Fuel_Load_Bytes() {
  std::string text;
  for (int byte = map::fuel_load.first; byte <= map::fuel_load.Last(); ++byte) {
    text += std::to_string(CardByte[byte]) + Crlf();
  }
  platform::seams.desktop->Set_Clipboard_Text(text);
}

void Show_Chart_Point(Table table, int row, double value) {
  Chart& chart = Chart_Of(Chart_Beside(table));
  const auto point = static_cast<std::size_t>(row - 1);
  if (!chart.series.empty() && point < chart.series[0].values.size()) chart.series[0].values[point] = value;
}

void Show_Cell(Table table, int row, const std::string& text) {
  Grid_Of(table).Set_Text(row, Row_Of(table).text_column, text);
  Show_Chart_Point(table, row, Val_Any(text));
}

/// Rows above the first that may be edited show the byte of that one: they follow it.
void Show_Rows_Above(Table table) {
  const int first = Row_Of(table).first_row;
  for (int row = 1; row < first; ++row) {
    Show_Cell(table, row, Shown_Text_Of(table, CardByte[Shown_Byte(table, row)]));
  }
}

std::string Limited_Text(const Table_Meaning& meaning, const std::string& text) {
  const auto limit = Broken_Typing_Limit(meaning, Val_Any(text));
  return limit ? Number_Text(*limit) : text;
}

/// Limits the typed text of the current cell, shows it in grid and chart, and
/// stores its byte.
void Store_Typed(Table table, const Table_Meaning& meaning, Grid& grid, const std::string& text) {
  Show_Cell(table, grid.Row(), Limited_Text(meaning, text));
  CardByte[Edited_Byte(table, grid.Row())] = Typed_Into(meaning, text).byte;
  Show_Rows_Above(table);
}

}  // namespace

std::string KeyEdit(int key_code, const std::string& text) {
  if (const int digit = Digit_Of(key_code); digit >= 0) return With_Digit(digit, text);
  switch (key_code) {
    case key::backspace:
      return Without_Last(text);
    case key::delete_key:
      return "";
    case key::keypad_point:
    case key::full_stop:
      return With_Point('.', text);
    case key::comma:
      return With_Point(',', text);
    case key::minus:
      Fresh_Cell = false;
      return "-";
    default:
      return text;
  }
}

Typed_Cell Typed_Into(const Table_Meaning& meaning, const std::string& text) {
  const std::string limited = Limited_Text(meaning, text);
  return {limited, Typed_To(meaning, Val_Any(limited))};
}

bool Go_Down(Grid& grid) {
  if (grid.Row() + 1 >= grid.Rows()) return false;
  grid.Select(grid.Row() + 1, grid.Row() + 1);
  grid.Set_Top_Row(grid.Top_Row() + 1);
  Fresh_Cell = true;
  return true;
}

void Grid_Enter_Cell(Table table, int row, int row_sel) {
  Grid& grid = Grid_Of(table);
  grid.Select(row, row_sel);
  Fresh_Cell = true;
  Chart_Of(Chart_Beside(table)).current = grid.Row();
}

void Grid_Key_Down(Table table, int key_code, int shift_state) {
  Grid& grid = Grid_Of(table);
  const Table_Row& row = Row_Of(table);
  if (key_code == key::letter_c && shift_state == key::ctrl_state) {
    if (table == Table::fuel_load) Copy_Fuel_Load_Bytes();
    return;
  }
  if (row.captures_typing) Capture_History();
  if (key_code != key::enter || !Go_Down(grid)) {
    const std::string& text = grid.Text(grid.Row(), row.text_column);
    const std::string edited = KeyEdit(key_code, text);
    if (edited != text && grid.Row() >= row.first_row) Store_Typed(table, Meaning_Of(table), grid, edited);
  }
  Chart_Of(Chart_Beside(table)).current = grid.Row();
  Show_Table(table);
}

}  // namespace kx
