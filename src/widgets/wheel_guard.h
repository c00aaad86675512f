#pragma once

#include <QWidget>

namespace kx {

/// The wheel never changes what @p widget holds, focused or not; it goes to the page around it, which
/// scrolls. For sliders, lists, numeric boxes and rows of tabs.
void Guard_Wheel(QWidget* widget);

/// The same for every such control that @p form has by now; called at the end of a form's constructor.
void Guard_Wheels_In(QWidget* form);

}  // namespace kx
