#pragma once

#include <span>

#include "settings/reference_tune.h"
#include "workspace/differences.h"

/// The menu "Compare" and the window of that name.
namespace kx {

/// Chooses what the tune is compared with. A file is asked for each time; one that is no tune is told of, and
/// the comparison stays as it was.
void Compare_With(Reference_Source source);

/// Puts @p rows on the clipboard, columns parted by TAB, lines ended by CR LF; nothing for no rows.
void Copy_Differences(std::span<const Difference> rows);

/// Asks for a name and writes @p rows there as csv.
void Export_Differences(std::span<const Difference> rows);

}  // namespace kx
