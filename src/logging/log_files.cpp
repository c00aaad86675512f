#include "logging/log_files.h"

#include <algorithm>

#include "logging/file_panel.h"
#include "logging/log_backup.h"
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
  const Log_Name_State before;
  if (as == Log_Open::log) Update_Current_Dir(path);
  Update_All_Log_Setting_Variables();
  const auto result = Write_Asking(path, File_Bytes());
  if (!result.Ok()) {
    before.Restore();
    Tell(result.reason, platform::Icon::critical);
  } else if (as == Log_Open::log) {
    Mark_Saved(Log_File_Present);
  } else {
    Keep_Default_Settings();
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
