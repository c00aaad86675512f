#pragma once

#include <QColor>

namespace kx {

/// Colour of @p share, 0 to 1, from dark violet over green to yellow: every step is lighter than the one
/// before, so that it can be told by those who see few colours and on grey paper.
[[nodiscard]] QColor Heat_Colour(double share);

/// Black or white, whichever stands out more on @p colour; never below a contrast of 4.5.
[[nodiscard]] QColor Ink_On(const QColor& colour);

}  // namespace kx
