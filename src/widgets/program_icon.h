#pragma once

#include <QIcon>

namespace kx {

/// The picture of the program's windows, painted for every size that a desktop asks for: the one that
/// packaging/kxbench.svg installs in menus, for which no image plugin is needed here.
[[nodiscard]] QIcon Program_Icon();

}  // namespace kx
