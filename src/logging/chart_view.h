#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "logging/log_settings.h"
#include "settings/shown_text.h"

/// What the charts of KX_Log and KX_RPM show of the log, and what the user does to the stretch on show. Every
/// change of the stretch, the ticks and the scales belongs to the file, so it marks the log unsaved, and ends
/// in Update_Chart.
namespace kx {

/// The box "Select/deselect all" and the last row that it sets; the rows behind are free.
inline constexpr int select_all_index = 99;
inline constexpr int last_selected_row = 34;

inline constexpr const char* no_signal_text = "Select a signal to view";

/// Rows of the log that may be shown: those of the log read last, or those decoded so far of a live log.
[[nodiscard]] int Rows_On_Hand();

/// Signals to draw, rows 0 to 39 in their order.
[[nodiscard]] std::vector<int> Ticked_Rows();

struct Scale_Ends {
  double low;
  double high;
};

/// The ends of a value axis: fixed when both texts hold a number and these differ, else nothing.
[[nodiscard]] std::optional<Scale_Ends> Fixed_Scale(std::string_view low, std::string_view high);

/// The stretch: a quarter of its width off or on each end, by a quarter to a side, all.
void cmd_ZoomIn_Click();
void cmd_ZoomOut_Click();
void cmd_ZoomAll_Click();
void cmd_Scroll_Left_Click();
void cmd_Scroll_Right_Click();

/// Gestures in MSChart1. Places are shares of the inner width, 0 to 1.
void Chart_Stretch_Chosen(double from, double to);
void Chart_Wheel_Zoomed(double at, int steps);
void Chart_Moved_By(double share);
void Chart_Stepped(int rows);

/// Check_SignalsToView(row), (99) and Secondary_Check(row). The state goes into the row's line of
/// Log_Setting_Text, too, so that Cancel of the settings keeps it.
void Check_SignalsToView_Click(int row, bool on);
void Select_All_Signals_Click(bool on);
void Secondary_Check_Click(int row, bool on);

/// Enter in a scale box; @p typed is UTF-8. "Auto", "a" and "A" are automatic, all else is a number.
void Scale_Box_Entered(std::string Log_Settings::*box, std::string_view typed);

/// What stands before the value in a line of the read-out.
enum class Point_Head { time, rpm };

/// One line for each ticked signal at @p row of the log, UTF-8, parted by LF.
[[nodiscard]] std::string Point_Values(int row, Point_Head head);

/// txt_LineData of KX_Log; a click at a line shows the values of its row.
extern Shown_Text txt_LineData;
inline constexpr const char* line_data_hint =
    "Show value by clicking at a line. Zoom by clicking on the right mouse button.";
void Show_All_Point_Values(int row);
void Clear_LineTextWindow();

/// No log: its length is "0,0 s".
void Clear_FileTextWindow();

/// The numbers of a chart in file bytes, as a chart hands them to the clipboard: names, then a line a row,
/// fields parted by TAB, lines ended by CR LF. The first field of every line is the time, or the rpm; that of
/// the names is empty. Of a stretch, the rpm chart leaves the first row out.
[[nodiscard]] std::string Chart_Table_Text(Point_Head head);

void Reset_Chart_View();

}  // namespace kx
