#pragma once

#include "settings/shown_text.h"
#include "workspace/table_arithmetic.h"

namespace kx {

/// The typed boxes of the table panel.
extern Shown_Text set_table_text;
extern Shown_Text scale_table_text;

/// The entry of a table's row as an edit finds it: its byte and the number that its cell shows.
[[nodiscard]] Cell Cell_At(Table table, int row);

/// The buttons of the table panel, on the selected rows of the table on show.
/// Each captures history first and rebuilds the views from the image at its
/// end; with no table on show it does only that.
void plus_Click();
void minus_Click();

/// The first selected cell keeps its place, each further one moves one count more than the one before.
void steep_Click();
void flat_Click();

/// Writes the number in set_table_text, clipped, into the selection; a clipped number is shown. Throws
/// Failure "Type mismatch" when the text is no number.
void set_table_Click();

/// Scales the selection to the percentage in scale_table_text. Any failure shows "not a number" and ends the
/// operation; cells already changed stay changed.
void scale_table_Click();

}  // namespace kx
