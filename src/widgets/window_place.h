#pragma once

#include <QWidget>

/// Where the user has left each window, by its name, in the desktop's own place for settings.
namespace kx {

/// Puts @p form, which is not shown yet, where it was left, maximised or not: on a screen that is there now
/// and inside it. False when it was left nowhere or its screen has gone; @p form is as it was then.
bool Restore_Place(QWidget& form);

/// Remembers where @p form stands, whenever it is hidden or closed from now on.
void Remember_Place_Of(QWidget& form);

/// A form that keeps its place in its own way: nothing is remembered of it.
void Leave_Place_To(QWidget& form);

}  // namespace kx
