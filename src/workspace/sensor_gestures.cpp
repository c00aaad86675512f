#include "workspace/sensor_gestures.h"

#include <algorithm>
#include <functional>
#include <optional>
#include <utility>
#include <vector>

#include "settings/message.h"
#include "settings/notice.h"
#include "settings/numbers.h"
#include "workspace/sensor_editor.h"
#include "workspace/shaping.h"
#include "workspace/table_arithmetic.h"
#include "workspace/table_clipboard.h"

namespace kx {
namespace {

constexpr double most_steps = 1e6;  ///< of a drag; far beyond any screen

struct Drag {
  Sensor_Values before;
  Sensor_Values written;
};
std::optional<Drag> drag;

std::size_t Index_Of(int row) { return static_cast<std::size_t>(row - 1); }

using Shape_Function =
    std::function<std::vector<double>(const Axis_Points& axis, const std::vector<double>& values)>;

void Shape(const Shape_Function& shape) {
  if (!Can_Shape_Sensor_Values()) return;
  Sensor_Values texts = Edited_Values();
  Axis_Points axis;
  std::vector<double> values;
  Each_Selected(Sensor_grid, 1, [&](int row, int distance) {
    axis.positions.push_back(distance);  // the raw counts are evenly spaced
    values.push_back(Val_Any(texts[Index_Of(row)]));
  });
  const std::vector<double> shaped = shape(axis, values);
  for (std::size_t i = 1; i + 1 < shaped.size(); ++i) {
    texts[Index_Of(Sensor_grid.Sel_Start()) + i] = Number_Text(Round_To(shaped[i], Sensor_Decimals()));
  }
  Set_Edited_Values(texts);
}

/// Values of a sensor go into the thousands, those of a table never do.
bool Commas_Are_Meant(const Pasted& pasted) {
  const auto line = Doubtful_Line(pasted);
  if (!line) return true;
  const std::string& number = pasted.numbers[Index_Of(*line)];
  return Confirm(Line_And_Text(*line, number) + "is read as " + Number_Text(Val_Any(number)) +
                 ": the comma is the decimal sign. Paste them all the same?");
}

bool Drag_Holds() { return drag && Edited_Kind() == Editing::table && Edited_Values() == drag->written; }

}  // namespace

void Copy_Sensor_Values() { Copy_Selection(Sensor_grid); }

void Paste_Sensor_Values() {
  if (Edited_Kind() != Editing::table) return;
  const auto pasted = Pasted_For(Sensor_grid);
  if (!pasted || !Commas_Are_Meant(*pasted)) return;
  const int first = Sensor_grid.Row();
  Sensor_Values values = Edited_Values();
  for (int i = 0; i < static_cast<int>(pasted->numbers.size()); ++i) {
    const std::string& number = pasted->numbers[static_cast<std::size_t>(i)];
    if (!Shows_Already(Sensor_grid.Text(first + i, Sensor_grid.Columns() - 1), number))
      values[Index_Of(first + i)] = Number_Text(Val_Any(number));
  }
  Sensor_grid.Select(first, first + static_cast<int>(pasted->numbers.size()) - 1);
  Set_Edited_Values(values);
  Show_Notice(Paste_Report(*pasted, first, 0));
}

bool Can_Shape_Sensor_Values() {
  return Edited_Kind() == Editing::table && Sensor_grid.Sel_Count() + 1 >= fewest_to_shape;
}

void Interpolate_Sensor_Values() { Shape(Straightened); }

void Smooth_Sensor_Values() {
  Shape([](const Axis_Points&, const std::vector<double>& values) { return Smoothed(values); });
}

void Begin_Sensor_Drag() { drag = Drag{Edited_Values(), Edited_Values()}; }

bool Drag_Sensor_Curve(double delta) {
  if (!Drag_Holds()) return false;
  const double steps = std::clamp(Round_Whole(delta / Sensor_Step()), -most_steps, most_steps);
  Sensor_Values values = drag->before;
  Each_Selected(Sensor_grid, 1, [&](int row, int) {
    std::string& text = values[Index_Of(row)];
    if (steps != 0) text = Number_Text(Moved_Value(Val_Any(text), Sensor_Step(), static_cast<int>(steps)));
  });
  if (values == drag->written) return true;
  drag->written = values;
  Set_Edited_Values(values);
  return true;
}

void End_Sensor_Drag() { drag.reset(); }

void Take_Back_Sensor_Drag() {
  if (Drag_Holds()) Set_Edited_Values(drag->before);
  drag.reset();
}

void Reset_Sensor_Drag() { drag.reset(); }

}  // namespace kx
