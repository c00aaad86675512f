#pragma once

#include <string>

#include "settings/shown_text.h"

namespace kx {

/// The tune and the configuration as a report for a person: lines ended by CR LF, columns of tables by TAB,
/// between its two marker lines. Written by Update_Readable_Setting_Window; a log keeps a copy.
extern std::string Readable_Settings;

/// What the setting summary viewer shows: the report, or what was opened in its place.
extern Shown_Text txt_SettingSummary;

/// Builds Readable_Settings from the tune, the grids and what is known of the box, which is asked first when
/// it can be reached, and shows it. Raises no box.
void Update_Readable_Setting_Window();

/// The tables of the report one below the other, from the grids.
[[nodiscard]] std::string Show_Tabels_Alt1();

/// The tables of the report side by side, from the grids. The report uses this style.
[[nodiscard]] std::string Show_Tabels_Alt2();

void Reset_Setting_Summary();

}  // namespace kx
