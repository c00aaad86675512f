#pragma once

#include "workspace/tables.h"

/// What a table's context menu and keys do beside the table panel. Each works on the table that is named, is
/// one undo step when it changes a byte and none otherwise, and rebuilds the views from the image at its end.
namespace kx {

/// Puts the selected rows on the clipboard as they are shown.
void Copy_Table(Table table);

/// Pastes the clipboard's numbers from the current row down, each as if it had been typed; a number that a
/// cell shows already leaves its byte alone. All of them or none: a box says why none. Where typing
/// goes by another unit than the cells show (closed loop boost) it asks first.
void Paste_Table(Table table);

/// True when the selection holds entries between its ends whose numbers are known.
[[nodiscard]] bool Can_Shape(Table table);

/// Puts the entries between the ends of the selection on the straight line between them, over the axis as it
/// is shown. Each becomes the byte that comes nearest.
void Interpolate_Table(Table table);

/// Takes each entry between the ends of the selection towards its neighbours.
void Smooth_Table(Table table);

}  // namespace kx
