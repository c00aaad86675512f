#include "workspace/curve_drag.h"

#include <cmath>
#include <cstdlib>
#include <optional>
#include <utility>
#include <vector>

#include "boxlink/transfer.h"
#include "settings/history.h"
#include "settings/refresh.h"
#include "workspace/table_operations.h"

namespace kx {
namespace {

constexpr int most_steps = 255;  ///< no step is less than one count

struct Entry {
  int row;
  Cell cell;  ///< at the beginning
};

struct Drag {
  Table table;
  Table_Meaning meaning;
  std::vector<Entry> entries;
  Cell held;           ///< the entry under the pointer, at the beginning
  Byte_Image before;   ///< the tune at the beginning
  Byte_Image written;  ///< as the drag has left it last
  bool transfer;       ///< one was running at the beginning
  int steps = 0;       ///< that the entries stand from the beginning
};
std::optional<Drag> drag;

/// Nothing but the drag has changed the tune, and no transfer has begun to work on it.
bool Undisturbed() { return drag && CardByte == drag->written && (drag->transfer || !Transfer_Running()); }

/// Steps that bring the held entry nearest to @p delta from where it was; the fewest of those that do.
int Steps_To(double delta) {
  const double start = Exact_Value(drag->meaning, drag->held.raw).value_or(0);
  const auto distance = [&](int steps) {
    const auto value = Exact_Value(drag->meaning, Moved(drag->meaning, drag->held, steps));
    return std::pair(std::fabs(value.value_or(0) - start - delta), std::abs(steps));
  };
  int nearest = 0;
  for (int steps = -most_steps; steps <= most_steps; ++steps) {
    if (distance(steps) < distance(nearest)) nearest = steps;
  }
  return nearest;
}

void Write_Steps(int steps) {
  drag->steps = steps;
  for (const Entry& entry : drag->entries) {
    CardByte[Edited_Byte(drag->table, entry.row)] = Moved(drag->meaning, entry.cell, steps);
  }
  drag->written = CardByte;
  Update_All();
  if (drag) drag->written = CardByte;  // the views may complete a tune that they are filled from
}

}  // namespace

int First_Row_To_Drag(Table table) { return Exact_Value(Meaning_Of(table), 0) ? Row_Of(table).first_row : 0; }

void Begin_Curve_Drag(Table table, int row) {
  End_Curve_Drag();
  drag = Drag{table, Meaning_Of(table), {}, Cell_At(table, row), CardByte, CardByte, Transfer_Running()};
  Each_Selected(Grid_Of(table), Row_Of(table).first_row, [table](int selected, int) {
    drag->entries.push_back({selected, Cell_At(table, selected)});
  });
}

bool Drag_Curve(double delta) {
  if (!Undisturbed()) return false;
  const int steps = Steps_To(delta);
  if (steps != drag->steps) Write_Steps(steps);
  return true;
}

void End_Curve_Drag() {
  if (!drag) return;
  const Drag ended = *std::exchange(drag, std::nullopt);
  if (ended.written != ended.before) Capture_History_Of(ended.before);
}

void Take_Back_Curve_Drag() {
  if (!Undisturbed()) return End_Curve_Drag();
  CardByte = std::exchange(drag, std::nullopt)->before;
  Update_All();
}

bool Curve_Drag_Runs() { return drag.has_value(); }

void Reset_Curve_Drag() { drag.reset(); }

}  // namespace kx
