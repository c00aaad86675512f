#pragma once

#include <functional>
#include <string>

#include "settings/shown_text.h"

/// What the log window and the rest of the subsystem share. Section texts are the file's own bytes, from
/// bracket line to bracket line without a line end behind; only Log_Data_Text ends in CR LF.
namespace kx {

extern std::string Log_Setting_Text;        ///< "[log_settings]", written by Update_Log_Settings
extern std::string Log_Sens_Def_Text;       ///< "[log_sens_def]", written by Update_Log_Sens_Def
extern std::string Readable_Settings_Text;  ///< "[readable_settings]" as the log was made
extern std::string Log_Data_Text;           ///< "[log_data]", the stream as received
extern std::string Log_Dataset_Text;        ///< "[log_dataset]", the box's 256 bytes as the log was made

/// Settings and sensors of the default log settings file as last opened; empty until then.
extern std::string Default_Log_Setting_Text;
extern std::string Default_Log_Sens_Def_Text;

extern int Log_Rows;  ///< rows in LogArray after a full read, 0 to 6000
extern int
    Log_Field_Count;  ///< spaces in the first data row: the highest slot that decoding reads; 0: no row
extern bool Log_New_Format;   ///< the rows have 14 fields or more and the settings are of the present version
extern bool Log_New_Version;  ///< the settings are of version 3.5, or have been brought to it

extern std::string Log_File_Name;  ///< of the current log, UTF-8, without directory
extern std::string Log_Directory;  ///< of File1 and the next log, UTF-8, "/" at its end
extern int Log_Chunk_No;           ///< part of a long log, from 1; 0 while it is a single file
extern bool Log_File_Present;      ///< a log is held
extern bool Log_File_Unsaved;      ///< it has changes that no file has
extern bool Log_File_Named;        ///< the user has chosen its name: save does not ask for one
extern bool Log_File_Repaired;     ///< the file just opened had to be repaired
extern int Log_Chart_First;        ///< first row that the chart shows, from 1
extern int Log_Chart_Last;         ///< last row, at most Log_Rows

/// Caption of KX_Log: the file name, "*" before it while the log is unsaved.
[[nodiscard]] std::string Log_Window_Caption();

/// The user has changed the log or its settings. Without a log there is nothing to save.
void Mark_Log_Unsaved();

/// How the core reaches KX_Log and KX_Log_Setup. Set by the forms; unset hooks do nothing.
struct Log_View_Hooks {
  std::function<void()> show_settings;  ///< all that log_settings holds, after a read or load
  std::function<void()> show_names;     ///< names, units and captions of the rows
  std::function<void()> show_file;      ///< caption of the window, date, time, length and free text
  std::function<void()> show_chart;     ///< Update_Chart: chart of LogArray from first to last row
  std::function<void()> show_folder;    ///< Drive1, Dir1 and File1 from Log_Directory
  std::function<void()> show_preview;   ///< File_Info_Frame or File_Info_Frame_tmp
};
extern Log_View_Hooks log_view_hooks;

/// Runs a hook that may be unset.
void Show_Log(const std::function<void()>& hook);

void Reset_Log_State();

}  // namespace kx
