#include "workspace/table_gestures.h"

#include <algorithm>
#include <functional>
#include <vector>

#include "settings/failure.h"
#include "settings/history.h"
#include "settings/message.h"
#include "settings/notice.h"
#include "settings/refresh.h"
#include "workspace/cell_editing.h"
#include "workspace/shaping.h"
#include "workspace/table_arithmetic.h"
#include "workspace/table_clipboard.h"
#include "workspace/table_values.h"
#include "workspace/view_hooks.h"

namespace kx {
namespace {

constexpr const char* typed_as_percent =
    "In closed loop a typed number is stored as percent of the duty, whatever unit the table shows, "
    "and pasted numbers are typed ones. Paste them all the same?";

/// A tune in the making.
struct Edited {
  Byte_Image image = CardByte;
  int limited = 0;      ///< values that became the limit
  std::string refusal;  ///< why it cannot be taken; empty when it can
};

/// Types @p text into @p row of the tune in the making, as line @p line of what was pasted.
void Type_Into(Edited& edited, Table table, int row, const std::string& text, int line) {
  const Table_Row& place = Row_Of(table);
  if (row < place.first_row || Shows_Already(Grid_Of(table).Text(row, place.text_column), text)) return;
  try {
    const Typed_Cell typed = Typed_Into(Meaning_Of(table), text);
    edited.image[Edited_Byte(table, row)] = typed.byte;
    if (typed.text != text) ++edited.limited;
  } catch (const Failure&) {
    edited.refusal = Line_And_Text(line, text) + "is less than this table can hold.";
  }
}

Edited Type_All(Table table, const std::vector<std::string>& numbers) {
  Edited edited;
  const int first = Grid_Of(table).Row();
  for (int i = 0; i < static_cast<int>(numbers.size()) && edited.refusal.empty(); ++i) {
    Type_Into(edited, table, first + i, numbers[static_cast<std::size_t>(i)], i + 1);
  }
  return edited;
}

void Take_Image(const Byte_Image& image) {
  if (image == CardByte) return;
  Capture_History();
  CardByte = image;
  Update_All();
}

/// Selected rows that may be edited.
std::vector<int> Rows_To_Shape(Table table) {
  std::vector<int> rows;
  Each_Selected(Grid_Of(table), Row_Of(table).first_row, [&rows](int row, int) { rows.push_back(row); });
  return rows;
}

/// New values of a run, from its axis and its values.
using Shape_Function =
    std::function<std::vector<double>(const Axis_Points& axis, const std::vector<double>& values)>;

/// Gives the selection the values that @p shape makes of it.
void Shape(Table table, const Shape_Function& shape) {
  if (!Can_Shape(table)) return;
  const Table_Meaning meaning = Meaning_Of(table);
  const std::vector<int> rows = Rows_To_Shape(table);
  std::vector<double> values;
  values.reserve(rows.size());
  for (const int row : rows) {
    values.push_back(Exact_Value(meaning, CardByte[Edited_Byte(table, row)]).value_or(0));
  }
  const std::vector<double> shaped = shape(Axis_Of(table, rows), values);
  Byte_Image image = CardByte;
  for (std::size_t i = 1; i + 1 < rows.size(); ++i) {
    std::uint8_t& byte = image[Edited_Byte(table, rows[i])];
    byte = Nearest_Byte(meaning, shaped[i], byte);
  }
  Take_Image(image);
}

}  // namespace

void Copy_Table(Table table) { Copy_Selection(Grid_Of(table)); }

void Paste_Table(Table table) {
  if (Meaning_Of(table).by_sensor && !Confirm(typed_as_percent)) return;
  const auto pasted = Pasted_For(Grid_Of(table));
  if (!pasted) return;
  const Edited edited = Type_All(table, pasted->numbers);
  if (!edited.refusal.empty()) return Tell(edited.refusal + nothing_pasted);
  const int first = Grid_Of(table).Row();
  Grid_Enter_Cell(table, first, first + static_cast<int>(pasted->numbers.size()) - 1);
  Take_Image(edited.image);
  Show_Table(table);
  Show_Notice(Paste_Report(*pasted, first, edited.limited));
}

bool Can_Shape(Table table) {
  return Rows_To_Shape(table).size() >= fewest_to_shape && Exact_Value(Meaning_Of(table), 0).has_value();
}

void Interpolate_Table(Table table) { Shape(table, Straightened); }

void Smooth_Table(Table table) {
  Shape(table, [](const Axis_Points&, const std::vector<double>& values) { return Smoothed(values); });
}

}  // namespace kx
