#include "logging/log_reader.h"

#include <algorithm>

#include "logging/calculation_inputs.h"
#include "logging/log_rows.h"
#include "logging/log_sections.h"
#include "logging/log_settings.h"
#include "logging/log_signals.h"
#include "logging/log_state.h"
#include "settings/message.h"
#include "settings/numbers.h"

namespace kx {
namespace {

int Line_Count(std::string_view rows) {
  const auto lines = std::count(rows.begin(), rows.end(), '\n');
  return static_cast<int>(std::min<std::ptrdiff_t>(lines, log_capacity));
}

/// The sections that every file has, read or built in.
void Take_Settings(Log_Sections& sections) {
  Log_Setting_Text = std::move(sections.settings);
  Log_Sens_Def_Text = std::move(sections.sensors);
  if (sections.settings_found && sections.sensors_found) return;
  const std::string settings = std::move(Log_Setting_Text);
  const std::string sensors = std::move(Log_Sens_Def_Text);
  Load_All_Default_Log_Settings();
  if (sections.settings_found) Log_Setting_Text = settings;
  if (sections.sensors_found) Log_Sens_Def_Text = sensors;
}

/// An old box's rows without settings: the built-in names would stand beside other signals.
void Name_Rows_Of_Old_Box() {
  Init_Default_Log_Settings_Controls(Log_Layout::old);
  Update_Log_Settings();
}

/// The slots of the log are those of its rows, whatever log was open before.
void Choose_Positions() {
  if (Log_Field_Count == 0) return;
  if (Is_Short_Row(Log_Field_Count)) return Load_Old_Signal_Positions_InLogDataArray();
  Load_Default_Signal_Names();
}

/// Keeps the range inside the log; one that was the whole of it stays so.
void Fit_Chart_Range(bool whole) {
  Log_Chart_Last = std::min(Log_Chart_Last, Log_Rows);
  if (whole || Log_Chart_First < 1 || Log_Chart_First >= Log_Chart_Last) Show_Whole_Log();
}

}  // namespace

void KX_Info_Data_File_Test(std::string_view file_text, bool default_file) {
  Log_Sections sections = Split_Log_File(file_text, log_settings.Log_Start_String);
  Take_Settings(sections);
  if (default_file) Keep_Default_Settings();
  Readable_Settings_Text = std::move(sections.readable);
  Log_Data_Text = std::move(sections.data);
  Log_Dataset_Text = std::move(sections.dataset);
  const std::string_view rows = Row_Text(Log_Data_Text);
  const std::string_view first = First_Data_Row(rows);
  Log_Field_Count = Field_Count_Of(first);
  if (!sections.settings_found && Is_Short_Row(Log_Field_Count)) Name_Rows_Of_Old_Box();
  Log_Rows = first.empty() ? 0 : Line_Count(rows);
  Show_Whole_Log();
  if (first.empty() && !default_file) Tell("This is a log file without compleet log data");
}

int Decode_Rows(std::string_view data_section, Log_Array& target) {
  std::string_view rows = Row_Text(data_section);
  const std::string_view first = First_Data_Row(rows);
  Row_Decoder decoder(target, Field_Count_Of(first));
  decoder.Write_Names();
  int count = 0;
  while (!rows.empty() && !first.empty() && count < log_capacity) {
    const std::string_view row = Next_Line(rows);
    if (Is_Sound_Row(row, first.size())) decoder.Decode(row, ++count);
  }
  return count;
}

void KX_Log_Data_Read(bool default_file) {
  const bool whole = Log_Chart_First == 1 && Log_Chart_Last == Log_Rows;
  LogArray.Clear();
  Log_Field_Count = Field_Count_Of(First_Data_Row(Row_Text(Log_Data_Text)));
  Choose_Positions();
  Log_Rows = Decode_Rows(Log_Data_Text, LogArray);
  Calculate_Signals(LogArray, Log_Rows, Inputs_Of_Log(default_file));
  log_settings.txt_Log_Length = Log_Length_Text(Log_Rows);
  Fit_Chart_Range(whole);
  Show_Log(log_view_hooks.show_file);
}

void Keep_Default_Settings() {
  Default_Log_Setting_Text = Log_Setting_Text;
  Default_Log_Sens_Def_Text = Log_Sens_Def_Text;
}

std::string Log_Length_Text(int rows) {
  return Format(std::max(rows - 1, 0) * log_row_seconds, "0.00") + " s";
}

void Show_Whole_Log() {
  Log_Chart_First = 1;
  Log_Chart_Last = Log_Rows;
}

}  // namespace kx
