#pragma once

#include <qcustomplot.h>

namespace kx {

/// Gives @p plot the colours and the font of its widget, so that it follows light and dark palettes.
void Apply_Chart_Look(QCustomPlot& plot);

/// Colour of the main line of a chart.
[[nodiscard]] QColor Main_Line_Colour();

}  // namespace kx
