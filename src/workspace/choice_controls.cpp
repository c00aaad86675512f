#include "workspace/choice_controls.h"

#include <algorithm>

#include "settings/failure.h"
#include "settings/history.h"
#include "settings/refresh.h"
#include "workspace/compare.h"
#include "workspace/view_hooks.h"

namespace kx {
namespace {

/// A choice may have changed bits that another control shows: one bit of flags A has two of them.
void Show_Sharing_Byte(const Choice_Row& changed) {
  if (!view_hooks.show_choice) return;
  for (const Choice_Row& row : Choice_Rows()) {
    if (row.field.byte == changed.field.byte) view_hooks.show_choice(row);
  }
}

}  // namespace

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

int Choice_Index(const Choice_Row& row, const Byte_Image& image) { return row.rules->read(row, image); }

std::string_view Choice_Text(const Choice_Row& row, const Byte_Image& image) {
  return row.items[static_cast<std::size_t>(Choice_Index(row, image))];
}

void Choice_Changed(const Choice_Row& row, int index) {
  if (index < 0 || index >= Choice_Count(row)) Fail_Subscript();
  if (!Undo_Busy && index != Choice_Index(row) && row.rules->accepts(index)) {
    if (row.captures) Capture_History();
    row.rules->write(row, index);
    if (row.afterwards) row.afterwards();
    Follow_Differences();
  }
  Show_Sharing_Byte(row);
}

std::string Label_Name(std::string_view control) {
  constexpr std::array<std::string_view, 12> numbered{
      "ig_mode_combo",      "boost_combo",  "mafsim_combo",        "mafsim_out_combo",
      "mafsim_limit_combo", "IAT_in_combo", "ig_mode_slave_combo", "ignrpm_tblprec_combo",
      "boost_enable_combo", "ae_combo",     "ae_combo2",           "HScroll3"};
  const auto* const found = std::find(numbered.begin(), numbered.end(), control);
  if (found == numbered.end()) return {};
  return "Label3(" + std::to_string(found - numbered.begin()) + ")";
}

}  // namespace kx
