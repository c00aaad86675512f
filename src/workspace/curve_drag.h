#pragma once

#include "workspace/tables.h"

/// A table's curve moved by hand: the selected entries go up and down by whole steps, those of "+" and "-",
/// while a point of them is dragged. There is one drag at a time. From its beginning to its end it is one
/// undo step, and none when it ends where it began.
namespace kx {

/// First row whose point may be dragged; 0 when none may, because the numbers behind the bytes are not known.
[[nodiscard]] int First_Row_To_Drag(Table table);

/// Begins a drag of the selected entries by the point of @p row. A drag that still runs is ended before.
void Begin_Curve_Drag(Table table, int row);

/// Moves the selection by as many steps as bring the entry under the pointer nearest to @p delta, in the
/// shown unit, from where it was at the beginning; entries at an end of the scale stay there. False when
/// there is no drag any more: something else has changed the tune, or a transfer has begun.
[[nodiscard]] bool Drag_Curve(double delta);

/// The end of a drag: what it has changed stays, and can be undone.
void End_Curve_Drag();

/// Brings back what was there before the drag, unless something else has changed the tune since.
void Take_Back_Curve_Drag();

/// True from the beginning of a drag to its end.
[[nodiscard]] bool Curve_Drag_Runs();

/// Forgets a drag.
void Reset_Curve_Drag();

}  // namespace kx
