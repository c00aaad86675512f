#pragma once

#include <string>

#include "workspace/choice_controls.h"
#include "workspace/scalar_controls.h"

namespace kx {

/// Tip of a slider: what it sets, what else follows, and its range as its first text shows it for the tune.
[[nodiscard]] std::string Tip_Of(const Scalar_Row& row);

/// Tip of a list, a check box or a group of options: what it chooses and what else follows.
[[nodiscard]] std::string Tip_Of(const Choice_Row& row);

}  // namespace kx
