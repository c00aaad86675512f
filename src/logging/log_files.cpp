#include "logging/log_files.h"

#include <algorithm>
#include <vector>

#include "logging/file_panel.h"
#include "logging/log_array.h"
#include "logging/log_backup.h"
#include "logging/log_parts.h"
#include "logging/log_reader.h"
#include "logging/log_repair.h"
#include "logging/log_sections.h"
#include "logging/log_settings.h"
#include "logging/log_state.h"
#include "platform/files.h"
#include "platform/folders.h"
#include "platform/seams.h"
#include "settings/brand.h"
#include "settings/message.h"
#include "settings/notice.h"
#include "settings/recent_files.h"
#include "settings/session.h"
#include "settings/text_encoding.h"

namespace kx {
namespace {

constexpr std::string_view extension = ".kxl";

std::string Default_File_Path() { return start_dir + Log_Settings_File_Name; }

std::string Default_Log_Name() {
  return From_Windows_1252(log_settings.txt_Default_Save_Name) + std::string(extension);
}

std::string File_Bytes() {
  return Join_Log_File(
      {Log_Setting_Text, Log_Sens_Def_Text, Readable_Settings_Text, Log_Data_Text, Log_Dataset_Text});
}

/// Replaces the file; one that is write protected after a question.
platform::File_Result Write_Asking(const std::string& path, const std::string& bytes) {
  auto result = platform::Replace_File(path, bytes);
  if (result.Ok() || !platform::Is_Write_Protected(path)) return result;
  if (!Ask_Yes_No("The file is write protected. Do you want to overwrite?")) return result;
  auto allowed = platform::Allow_Writing(path);
  return allowed.Ok() ? platform::Replace_File(path, bytes) : allowed;
}

/// What a failed save must leave as it was.
struct Log_Name_State {
  std::string name = Log_File_Name;
  std::string directory = Log_Directory;

  void Restore() const { Update_Current_Dir(directory + name); }
};

/// What a log that goes into several files must be again when one of them fails.
struct Whole_Log {
  Log_Name_State name = {};
  std::string data = Log_Data_Text;
  std::string length = log_settings.txt_Log_Length;
  int first = Log_Chart_First;
  int last = Log_Chart_Last;

  void Restore() const {
    Log_Data_Text = data;
    log_settings.txt_Log_Length = length;
    Log_Chart_First = first;
    Log_Chart_Last = last;
    name.Restore();
  }
};

/// One name a part, from @p path on; there is no file of a further one yet.
std::vector<std::string> Names_Of_Parts(std::string path, std::size_t count) {
  std::vector<std::string> names{path};
  while (names.size() < count) {
    path = Next_Part_Name(path);
    if (!platform::Exists(path)) names.push_back(path);
  }
  return names;
}

void Mark_Saved(bool present) {
  Log_File_Unsaved = false;
  Log_File_Present = present;
  Show_Log(log_view_hooks.show_file);
}

void Read_And_Show(const std::string& bytes, bool default_file) {
  KX_Info_Data_File_Test(bytes, default_file);
  Read_All_Log_Setting_Variables();
  KX_Log_Data_Read(default_file);
  Show_Log(log_view_hooks.show_chart);
  const int rows = Row_Count_Of(Log_Data_Text);
  if (rows > log_capacity) Show_Notice(Long_Log_Text(rows));
}

platform::File_Result Write_Log(const std::string& path) {
  Update_Current_Dir(path);
  Update_All_Log_Setting_Variables();
  return Write_Asking(path, File_Bytes());
}

platform::File_Result Write_Part(const std::string& path, const std::string& data) {
  Log_Data_Text = data;
  Log_Chart_First = 1;
  Log_Chart_Last = Row_Count_Of(data);
  log_settings.txt_Log_Length = Log_Length_Text(Log_Chart_Last);
  return Write_Log(path);
}

/// A log that is shown is shown anew; one that went to the file alone is not decoded here either.
void Show_First_Part() {
  if (!LogArray.Has(1, 0)) return;
  KX_Log_Data_Read();
  Show_Whole_Log();
  Show_Log(log_view_hooks.show_chart);
}

/// From the last part to the first, which so is the log in hand at the end.
bool Save_In_Parts(const std::string& path, const std::vector<std::string>& parts) {
  const Whole_Log whole;
  const std::vector<std::string> names = Names_Of_Parts(path, parts.size());
  for (std::size_t part = parts.size(); part-- > 0;) {
    const auto result = Write_Part(names[part], parts[part]);
    if (result.Ok()) continue;
    whole.Restore();
    Tell(result.reason, platform::Icon::critical);
    return false;
  }
  Show_First_Part();
  Mark_Saved(Log_File_Present);
  Tell(Saved_In_Parts_Text(Row_Count_Of(whole.data), names), platform::Icon::information);
  return true;
}

bool Save_Default_File(const std::string& path) {
  Update_All_Log_Setting_Variables();
  const auto result = Write_Asking(path, File_Bytes());
  if (result.Ok()) {
    Keep_Default_Settings();
  } else {
    Tell(result.reason, platform::Icon::critical);
  }
  return result.Ok();
}

/// Date, time and remarks belong to the log, not to the way it is shown.
void Keep_What_Tells_Of_The_Log(const Log_Settings& before) {
  if (!Log_File_Present) return;
  log_settings.txt_Log_Date = before.txt_Log_Date;
  log_settings.txt_Log_Time = before.txt_Log_Time;
  log_settings.txt_Log_Free_Text = before.txt_Log_Free_Text;
}

}  // namespace

bool Open_File(const std::string& path, Log_Open as) {
  if (!Check_If_Unsaved_File() || path.empty()) return false;
  Reset_File_Panel();
  std::string bytes;
  if (!Read_Log_File(path, bytes)) return false;
  const bool default_file = as == Log_Open::default_settings;
  if (!default_file) Update_Current_Dir(path);
  Log_Chunk_No = 0;
  Read_And_Show(bytes, default_file);
  Log_File_Named = !default_file;
  Mark_Saved(true);
  if (!default_file && path != Log_Backup_Path()) Note_Recent_File(path);
  return true;
}

bool Save_File(const std::string& path, Log_Open as) {
  if (as == Log_Open::default_settings) return Save_Default_File(path);
  const std::vector<std::string> parts = Parts_Of_Log(Log_Data_Text);
  if (parts.size() > 1) return Save_In_Parts(path, parts);
  const Log_Name_State before;
  const auto result = Write_Log(path);
  if (result.Ok()) {
    Mark_Saved(Log_File_Present);
  } else {
    before.Restore();
    Tell(result.reason, platform::Icon::critical);
  }
  return result.Ok();
}

bool Log_File_Auto_Save() {
  std::string name = Log_File_Name;
  if (Log_Chunk_No == 0) {
    name = From_Windows_1252(log_settings.txt_Default_Save_Name + log_settings.txt_Log_Date + "_" +
                             log_settings.txt_Log_Time) +
           std::string(extension);
  }
  const bool saved = Save_File(Log_Directory + Sound_File_Name(name));
  Show_Log(log_view_hooks.show_folder);
  return saved;
}

bool Check_If_Unsaved_File() {
  if (!Log_File_Present || !Log_File_Unsaved) return true;
  if (!Ask_Yes_No("Do you want to save current log file: " + Log_File_Name + "?")) return true;
  Log_File_Save_Click();
  return !Log_File_Unsaved;
}

void Update_Current_Dir(const std::string& path) {
  const std::size_t bare = path.find_last_of('/') + 1;
  Log_File_Name = path.substr(bare);
  Set_Log_Directory(path.substr(0, bare));
  Show_Log(log_view_hooks.show_file);
}

void Log_File_Open_Click() {
  const auto name = platform::seams.ask->Open_Name(
      {"Open", "KXBench logg files (*.kxl)|*.kxl|All (*.*)|*.*", Log_Directory, "", "kxl"});
  if (name) Open_File(*name);
}

void Log_File_Save_Click() {
  if (!Log_File_Named) return Log_File_Save_As_Click();
  if (Save_File(Log_Directory + Log_File_Name)) Note_Recent_File(Log_Directory + Log_File_Name);
}

void Log_File_Save_As_Click() {
  platform::File_Question question{"Save As", "Logg files (*.kxl)|*.kxl|All (*.*)|*.*", Log_Directory,
                                   Sound_File_Name(Log_File_Name), "kxl"};
  question.asks_to_replace = false;
  const auto name = platform::seams.ask->Save_Name(question);
  if (!name || name->empty()) return;
  const std::string bare = name->substr(name->find_last_of('/') + 1);
  if (platform::Exists(*name) && !Ask_Yes_No("Do you want to replace existing file " + bare + "?")) return;
  if (!Save_File(*name)) return;
  Log_File_Named = true;
  Note_Recent_File(*name);
  Show_Log(log_view_hooks.show_file);
  Show_Log(log_view_hooks.show_folder);
}

void Open_Default_File_Click() {
  if (!Open_File(Default_File_Path(), Log_Open::default_settings)) return;
  Log_File_Present = false;
  Log_File_Name = Default_Log_Name();
  Show_Log(log_view_hooks.show_file);
}

void Restore_Default_File_Click() {
  if (Default_Log_Setting_Text.empty()) return Open_Default_File_Click();
  const Log_Settings before = log_settings;
  Log_Setting_Text = Default_Log_Setting_Text;
  Read_Log_Settings();
  Keep_What_Tells_Of_The_Log(before);
  KX_Log_Data_Read();
  Show_Whole_Log();
  Show_Log(log_view_hooks.show_chart);
  Mark_Log_Unsaved();
}

void Save_as_Default_File_Click() {
  if (!Log_New_Format) {
    return Tell("You can not use this file (ver. 3.4.20 or earlier) as default log settings");
  }
  if (!Ask_Yes_No("Do you really want to replace existing default log settings?")) return;
  Save_File(Default_File_Path(), Log_Open::default_settings);
}

void Load_Log_Window() {
  Load_Log_Directory();
  Load_All_Default_Log_Settings();  // they stay when the file cannot be opened
  Log_File_Name = Default_Log_Name();
  Show_Log(log_view_hooks.show_file);
  const bool there = !Log_Settings_File_Name.empty() && platform::Exists(Default_File_Path());
  if (there) Open_Default_File_Click();
}

std::string Sound_File_Name(std::string name) {
  constexpr std::string_view forbidden = ":/*?<>|\"";
  std::replace_if(
      name.begin(), name.end(), [&](char c) { return forbidden.find(c) != std::string_view::npos; }, '-');
  return name;
}

}  // namespace kx
