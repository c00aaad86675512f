#include "workspace/compare.h"

#include <algorithm>
#include <map>
#include <utility>

#include "settings/history.h"
#include "settings/notice.h"
#include "settings/numbers.h"
#include "settings/reference_tune.h"
#include "settings/refresh.h"
#include "workspace/table_meaning.h"
#include "workspace/view_hooks.h"

namespace kx {
namespace {

/// What is on show: whose values, and where they differ.
struct Comparison_Shown {
  std::string reference;
  std::vector<Difference> differences;
  bool operator==(const Comparison_Shown&) const = default;
};
Comparison_Shown shown;
std::map<std::string_view, std::size_t> by_control;  ///< index of a control's difference

void Index_Controls() {
  by_control.clear();
  for (std::size_t i = 0; i < shown.differences.size(); ++i) {
    if (!shown.differences[i].control.empty()) by_control[shown.differences[i].control] = i;
  }
}

/// Rows above the first that may be edited show the byte of that one, and its difference.
void Mark_Grid(const Difference& difference) {
  Grid& grid = Grid_Of(*difference.table);
  const int first = Row_Of(*difference.table).first_row;
  grid.Set_Mark(difference.row, Difference_Tip(difference));
  for (int row = 1; row < first && difference.row == first; ++row) {
    grid.Set_Mark(row, Difference_Tip(difference));
  }
}

/// The reference's curve, when it reads in the units of the chart.
void Draw_Reference(Table table, const Reference_Tune& reference) {
  const Table_Meaning meaning = Meaning_Of(table, reference.image);
  Chart_Series line{reference.name, {}};
  for (int row = 1; row <= Entries_Of(table); ++row) {
    const std::string text = Shown_Text_Of(meaning, reference.image[Shown_Byte(table, row)]);
    if (text.empty()) return;
    line.values.push_back(Val_Any(text));
  }
  Chart_Of(Chart_Beside(table)).reference = std::move(line);
}

void Mark_Tables() {
  for (const Table_Row& row : table_rows) {
    Grid_Of(row.table).Clear_Marks();
    Chart_Of(Chart_Beside(row.table)).reference = {};
  }
  std::optional<Table> drawn;  // the entries of a table stand behind each other
  for (const Difference& difference : shown.differences) {
    if (!difference.table) continue;
    Mark_Grid(difference);
    const bool same_table = std::exchange(drawn, difference.table) == difference.table;
    if (!same_table && !difference.other_meaning) Draw_Reference(*difference.table, *Reference());
  }
}

bool Any_Other_Meaning(std::span<const Difference> rows) {
  return std::ranges::any_of(rows, &Difference::other_meaning);
}

}  // namespace

const std::vector<Difference>& Shown_Differences() { return shown.differences; }

bool Reckon_Differences() {
  const Reference_Tune* reference = Reference();
  Comparison_Shown now;
  if (reference != nullptr) now = {reference->name, Differences(reference->image, CardByte)};
  const bool changed = now != shown;
  shown = std::move(now);
  Index_Controls();
  Mark_Tables();
  return changed;
}

void Follow_Differences() {
  if (Reckon_Differences() && view_hooks.show_differences) view_hooks.show_differences();
}

std::string Difference_Tip(const Difference& difference) {
  const std::string change = difference.change.empty() ? "" : " (" + difference.change + ")";
  return shown.reference + " " + difference.reference + ", here " + difference.here + change;
}

std::string Difference_Tip(std::string_view control) {
  const auto found = by_control.find(control);
  return found == by_control.end() ? std::string() : Difference_Tip(shown.differences[found->second]);
}

int Differences_On(Page page) {
  return static_cast<int>(std::ranges::count(shown.differences, page, &Difference::page));
}

int Differences_On_Tab(int tab) {
  return static_cast<int>(
      std::ranges::count_if(shown.differences, [tab](const Difference& any) { return any.page.tab == tab; }));
}

std::string With_Count(std::string_view caption, int differences) {
  const std::string count = differences == 0 ? "" : " (" + std::to_string(differences) + ")";
  return std::string(caption) + count;
}

void Take_From_Reference(std::span<const Difference> rows) {
  const Reference_Tune* reference = Reference();
  if (reference == nullptr) return;
  const Byte_Image taken = Taken(CardByte, rows);
  if (taken == CardByte) return;
  Capture_History();
  CardByte = taken;
  if (Any_Other_Meaning(rows)) {
    Show_Notice("The bytes are those of " + reference->name +
                " now. They read otherwise here: the settings that say what they mean differ.");
  }
  Refresh_Whole_Image();
}

void Take_Table_From_Reference(Table table) {
  std::vector<Difference> rows;
  std::ranges::copy_if(shown.differences, std::back_inserter(rows),
                       [table](const Difference& any) { return any.table == table; });
  Take_From_Reference(rows);
}

void Reset_Compare_State() {
  shown = {};
  by_control.clear();
}

}  // namespace kx
