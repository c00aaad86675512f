#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "workspace/differences.h"

/// The tune beside its reference (settings/reference_tune.h) as the views show it: marks in grids, charts and
/// controls, counts on tabs, the list.
namespace kx {

/// The differences that the views show, as last reckoned; none without a reference.
[[nodiscard]] const std::vector<Difference>& Shown_Differences();

/// Reckons them from the image, with the marks in grids and charts. True when anything has changed. Called by
/// Update_All before it shows the values.
bool Reckon_Differences();

/// The same after an edit that needs no Update_All; has the views follow when anything has changed.
void Follow_Differences();

/// "Box 3.5 Deg, here 4.0 Deg (+0.5)".
[[nodiscard]] std::string Difference_Tip(const Difference& difference);

/// Tip of a control that differs; empty for one that does not.
[[nodiscard]] std::string Difference_Tip(std::string_view control);

/// How many differences stand on a page, and on all pages of a tab of the main form.
[[nodiscard]] int Differences_On(Page page);
[[nodiscard]] int Differences_On_Tab(int tab);

/// "Ignition (3)"; the bare caption without differences.
[[nodiscard]] std::string With_Count(std::string_view caption, int differences);

/// Brings the bytes of @p rows, or every differing entry of @p table, from the reference into the tune: one
/// step back. Nothing happens without a reference or a difference.
void Take_From_Reference(std::span<const Difference> rows);
void Take_Table_From_Reference(Table table);

void Reset_Compare_State();

}  // namespace kx
