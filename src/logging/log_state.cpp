#include "logging/log_state.h"

#include "logging/log_array.h"
#include "logging/log_settings.h"
#include "logging/log_signals.h"

namespace kx {

std::string Log_Setting_Text;
std::string Log_Sens_Def_Text;
std::string Readable_Settings_Text;
std::string Log_Data_Text;
std::string Log_Dataset_Text;
std::string Default_Log_Setting_Text;
std::string Default_Log_Sens_Def_Text;
int Log_Rows = 0;
int Log_Field_Count = 0;
bool Log_New_Format = true;
bool Log_New_Version = true;
std::string Log_File_Name;
std::string Log_Directory;
int Log_Chunk_No = 0;
bool Log_File_Present = false;
bool Log_File_Unsaved = false;
bool Log_File_Named = false;
bool Log_File_Repaired = false;
int Log_Chart_First = 1;
int Log_Chart_Last = 0;
Log_View_Hooks log_view_hooks;

std::string Log_Window_Caption() { return (Log_File_Unsaved ? "*" : "") + Log_File_Name; }

void Mark_Log_Unsaved() {
  Log_File_Unsaved = Log_File_Present;
  Show_Log(log_view_hooks.show_file);
}

void Show_Log(const std::function<void()>& hook) {
  if (hook) hook();
}

void Reset_Log_State() {
  for (std::string* text :
       {&Log_Setting_Text, &Log_Sens_Def_Text, &Readable_Settings_Text, &Log_Data_Text, &Log_Dataset_Text,
        &Default_Log_Setting_Text, &Default_Log_Sens_Def_Text, &Log_File_Name, &Log_Directory}) {
    text->clear();
  }
  Log_Rows = Log_Field_Count = Log_Chunk_No = 0;
  Log_New_Format = Log_New_Version = true;
  Log_File_Present = Log_File_Unsaved = Log_File_Named = Log_File_Repaired = false;
  Log_Chart_First = 1;
  Log_Chart_Last = 0;
  Load_Default_Signal_Names();
  Reset_Log_Settings();
  LogArray.Clear();
}

}  // namespace kx
