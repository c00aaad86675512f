#include "logging/chart_view.h"

#include <algorithm>
#include <cmath>

#include "logging/chart_range.h"
#include "logging/live_log.h"
#include "logging/log_array.h"
#include "logging/log_setup_commands.h"
#include "logging/log_signals.h"
#include "logging/log_state.h"
#include "sensors/log_sensors.h"
#include "settings/numbers.h"
#include "settings/section_text.h"
#include "settings/text_encoding.h"

namespace kx {
namespace {

constexpr double zoom_a_step = 0.8;  ///< of the width, a notch of the wheel
constexpr int view_field = 4;        ///< of a "Log_Def" line
constexpr int secondary_field = 5;

/// What a drag has left over, in rows: the mouse moves by less than one.
double rows_left_over = 0;

Chart_Range Shown_Range() { return {Log_Chart_First, Log_Chart_Last}; }

void Show_Range(Chart_Range range) {
  if (range == Shown_Range()) return;
  Log_Chart_First = range.first;
  Log_Chart_Last = range.last;
  if (Log_Settings_Loaded) Mark_Log_Unsaved();
  Show_Log(log_view_hooks.show_chart);
}

void Keep_Tick(int row, int field, bool on) {
  if (Setting_Value(Log_Setting_Text, "Log_Def", row + 1)) {
    set_log_file_setting(Log_Setting_Text, "Log_Def", on ? "1" : "0", row + 1, field);
  }
}

void Show_Ticks() {
  Log_Setting_Changed();
  Show_Log(log_view_hooks.show_names);
  Show_Log(log_view_hooks.show_chart);
}

/// Value with the decimals of its sensor, or as it is.
std::string Value_Text(int row, int signal) {
  if (!LogArray.Has(row, signal + 1)) return {};
  const double value = LogArray(row, signal + 1);
  const Log_Sensor* sensor = Find_Log_Sensor(Signal_Row(signal).sensor);
  const bool of_box = signal + 1 <= Log_Field_Count && sensor != nullptr && !sensor->decimals.empty();
  return of_box ? Format(value, Decimals_Mask(static_cast<int>(Val_Any(sensor->decimals))))
                : Number_Text(Round_To(value, 2));
}

std::string Head_Text(int row, Point_Head head) {
  if (head == Point_Head::time) return Format(LogArray(row, 0), "0.00");
  return Number_Text(LogArray(row, Slot_Of(Log_Signal::RPM)));
}

std::string Cell_Text(int row, int slot) {
  return LogArray.Has(row, slot) ? Number_Text(LogArray(row, slot)) : std::string();
}

}  // namespace

Shown_Text txt_LineData;

int Rows_On_Hand() { return std::min(std::max(Log_Rows, Log_Row_Count), log_capacity); }

std::vector<int> Ticked_Rows() {
  std::vector<int> rows;
  for (int row = 0; row < signal_rows; ++row) {
    if (Signal_Row(row).view) rows.push_back(row);
  }
  return rows;
}

std::optional<Scale_Ends> Fixed_Scale(std::string_view low, std::string_view high) {
  const auto from = Whole_Number_Text(low);
  const auto to = Whole_Number_Text(high);
  if (!from || !to || *from == *to) return std::nullopt;
  return Scale_Ends{std::min(*from, *to), std::max(*from, *to)};
}

void cmd_ZoomIn_Click() { Show_Range(Zoomed_In(Shown_Range(), Rows_On_Hand())); }
void cmd_ZoomOut_Click() { Show_Range(Zoomed_Out(Shown_Range(), Rows_On_Hand())); }
void cmd_ZoomAll_Click() { Show_Range(Zoomed_All(Rows_On_Hand())); }
void cmd_Scroll_Left_Click() { Show_Range(Scrolled_Left(Shown_Range(), Rows_On_Hand())); }
void cmd_Scroll_Right_Click() { Show_Range(Scrolled_Right(Shown_Range(), Rows_On_Hand())); }

void Chart_Stretch_Chosen(double from, double to) {
  Show_Range(Dragged(Shown_Range(), from, to, Rows_On_Hand()));
}

void Chart_Wheel_Zoomed(double at, int steps) {
  Show_Range(Zoomed_About(Shown_Range(), at, std::pow(zoom_a_step, steps), Rows_On_Hand()));
}

void Chart_Moved_By(double share) {
  const double wanted = rows_left_over - share * (Log_Chart_Last - Log_Chart_First);
  const double whole = std::trunc(wanted);
  rows_left_over = wanted - whole;
  Chart_Stepped(static_cast<int>(whole));
}

void Chart_Stepped(int rows) { Show_Range(Moved(Shown_Range(), rows, Rows_On_Hand())); }

void Check_SignalsToView_Click(int row, bool on) {
  Signal_Row(row).view = on;
  Keep_Tick(row, view_field, on);
  Show_Ticks();
}

void Select_All_Signals_Click(bool on) {
  for (int row = 0; row <= last_selected_row; ++row) {
    Signal_Row(row).view = on;
    Keep_Tick(row, view_field, on);
  }
  Show_Ticks();
}

void Secondary_Check_Click(int row, bool on) {
  Signal_Row(row).secondary = on;
  Keep_Tick(row, secondary_field, on);
  Show_Ticks();
}

void Scale_Box_Entered(std::string Log_Settings::*box, std::string_view typed) {
  if (!Log_Settings_Loaded) return;
  const bool automatic = typed == auto_scale || typed == "a" || typed == "A";
  log_settings.*box = automatic ? std::string(auto_scale) : Number_Text(Val_Any(typed));
  Mark_Log_Unsaved();
  Show_Log(log_view_hooks.show_settings);
  Show_Log(log_view_hooks.show_chart);
}

std::string Point_Values(int row, Point_Head head) {
  const std::string first = Head_Text(row, head) + (head == Point_Head::time ? "s ; " : "rpm ; ");
  std::string text;
  for (const int signal : Ticked_Rows()) {
    if (!text.empty()) text += "\n";
    text += first + From_Windows_1252(Signal_Row(signal).custom_name) + " - " + Value_Text(row, signal) +
            " " + From_Windows_1252(Signal_Unit(signal));
  }
  return text;
}

void Show_All_Point_Values(int row) { txt_LineData.Set(Point_Values(row, Point_Head::time)); }

void Clear_LineTextWindow() { txt_LineData.Set(line_data_hint); }

void Clear_FileTextWindow() {
  log_settings.txt_Log_Length = "0,0 s";
  Show_Log(log_view_hooks.show_file);
}

std::string Chart_Table_Text(Point_Head head) {
  const std::vector<int> ticked = Ticked_Rows();
  std::string text;
  for (const int signal : ticked) text += "\t" + Signal_Row(signal).custom_name;
  text += Crlf();
  const int first = head == Point_Head::time ? Log_Chart_First : Log_Chart_First + 1;
  for (int row = first; row <= std::min(Log_Chart_Last, Rows_On_Hand()); ++row) {
    text += Head_Text(row, head);
    for (const int signal : ticked) text += "\t" + Cell_Text(row, signal + 1);
    text += Crlf();
  }
  return text;
}

void Reset_Chart_View() {
  rows_left_over = 0;
  txt_LineData.Set(line_data_hint);
}

}  // namespace kx
