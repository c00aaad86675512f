#pragma once

#include <QPainter>
#include <QPalette>
#include <QWidget>

namespace kx {

/// Colour of all that marks a difference from the reference: orange, which stands apart from the blue of
/// selections and curves for every eye, darker on light paper.
[[nodiscard]] QColor Difference_Colour(const QPalette& palette);

/// Ground of a cell that differs: its own with some of that colour, so that its text keeps its contrast.
[[nodiscard]] QColor Difference_Ground(const QPalette& palette);

/// The mark of a cell besides its ground: a filled corner, top left, on a selected cell, too.
void Paint_Difference_Corner(QPainter& painter, const QRect& cell, const QPalette& palette);

/// Marks the control of that name as one that differs by a filled triangle in the margin left of @p anchor,
/// its label or itself, that points at it; an empty @p tip takes the mark away. The mark, by the name of
/// Mark_Name, follows the anchor, also into another frame, and takes no mouse.
void Mark_Difference(QWidget& anchor, const QString& control, const QString& tip);

[[nodiscard]] QString Mark_Name(const QString& control);

/// A tip of a control with what sets it apart from the reference in front, where it differs.
[[nodiscard]] QString Tip_With_Difference(const QString& difference, const QString& tip);

}  // namespace kx
