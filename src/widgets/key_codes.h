#pragma once

class QKeyEvent;

/// Keys by the numbers that the cells' line editor knows.
namespace kx {

/// Code of a key as cells know it: taken from the character typed, 0 for a key that has none here.
[[nodiscard]] int Key_Code_Of(const QKeyEvent& event);

/// Bit 0 Shift, bit 1 Ctrl, bit 2 Alt.
[[nodiscard]] int Shift_State_Of(const QKeyEvent& event);

}  // namespace kx
