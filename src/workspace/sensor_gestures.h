#pragma once

/// What the context menu, keys and the chart of the sensor editor's value grid do beside its table panel: as
/// in the tuning tables, without limits and without history. While no sensor by values is edited they do
/// nothing.
namespace kx {

/// Puts the selected rows on the clipboard as they are shown.
void Copy_Sensor_Values();

/// Pastes the clipboard's numbers from the current row down, all or none; a number that a cell shows already
/// leaves the full value behind it. A box says why none, and another asks where a comma may part thousands.
void Paste_Sensor_Values();

/// True when values stand between the ends of the selection.
[[nodiscard]] bool Can_Shape_Sensor_Values();

/// As in the tables; rounded to the decimals of the sensor.
void Interpolate_Sensor_Values();
void Smooth_Sensor_Values();

/// A drag of the selected values; see curve_drag.h. Each of them does nothing once another sensor has come on
/// show.
void Begin_Sensor_Drag();
[[nodiscard]] bool Drag_Sensor_Curve(double delta);
void End_Sensor_Drag();
void Take_Back_Sensor_Drag();

void Reset_Sensor_Drag();

}  // namespace kx
