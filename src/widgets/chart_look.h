#pragma once

#include <qcustomplot.h>

class QPrinter;

namespace kx {

/// Gives @p plot the colours and the font of its widget, so that it follows light and dark palettes.
void Apply_Chart_Look(QCustomPlot& plot);

/// Colour of the main line of a chart.
[[nodiscard]] QColor Main_Line_Colour();

/// Colour of the marks that show where the engine is; they have a shape of their own, too.
[[nodiscard]] QColor Engine_Colour();

/// Colour of signal @p row of a log, 0 up: the same in every chart and beside its tick box. Readable on light
/// and on dark paper; neighbours differ in lightness too, for those who see few colours.
[[nodiscard]] QColor Signal_Colour(int row);

/// Round ends of a value axis for values from @p low to @p high, with room above the greatest.
[[nodiscard]] QCPRange Round_Value_Range(double low, double high);

/// True while values that want @p wanted fit into @p shown and use it well: then an axis stays, so that it
/// does not jump at every change.
[[nodiscard]] bool Range_Still_Fits(const QCPRange& shown, const QCPRange& wanted);

/// @p plot as large as the page of @p printer allows, in ink on white whatever the screen's palette is.
void Print_Chart(QCustomPlot& plot, QPrinter& printer);

}  // namespace kx
