#pragma once

#include <QRect>
#include <QWidget>

namespace kx {

/// Width of the frame around @p form, a guess as long as the window manager has not told.
[[nodiscard]] QMargins Frame_Of(const QWidget& form);

/// @p wanted moved, and where need be shrunk, to lie inside @p screen with room for a frame of @p border.
[[nodiscard]] QRect Inside_Screen(QRect wanted, const QRect& screen, const QMargins& border);

/// Puts a window, shown or not, with its frame inside the screen it is on; what fits stays as it is.
void Keep_Inside_Screen(QWidget& form);

/// Shows @p form, a window of its own, over @p main_form and brings it to the front. It stands where the
/// user left it, in this run or the last, at first in the middle of the main form at the size it asks for;
/// always inside the screen. Escape closes it, by way of its close event.
void Open_Form(QWidget& form, QWidget& main_form);

/// Shows the program's own window: where the user left it, else at @p first_size, inside the screen.
void Open_Main_Form(QWidget& form, const QSize& first_size);

}  // namespace kx
