#include "logging/file_panel.h"

#include "logging/log_files.h"
#include "logging/log_repair.h"
#include "logging/log_state.h"
#include "platform/files.h"
#include "platform/folders.h"
#include "settings/ini_file_adm.h"
#include "settings/message.h"
#include "settings/session.h"
#include "settings/text_encoding.h"

namespace kx {
namespace {

constexpr const char* directory_key = "Default_Logdir";
constexpr std::size_t line_length = 42;

/// What stands behind @p key up to the end of its line, UTF-8.
std::string Text_Behind(std::string_view file, std::string_view key) {
  const std::size_t at = file.find(key);
  if (at == std::string_view::npos) return {};
  file.remove_prefix(at + key.size());
  return From_Windows_1252(file.substr(0, file.find_first_of("\r\n")));
}

void Show_Preview(const Log_Preview& preview) {
  Preview_Shown = preview.found;
  txt_Log_Date_tmp.Set(preview.date);
  txt_Log_Time_tmp.Set(preview.time);
  txt_Log_Length_tmp.Set(preview.length);
  txt_Log_Free_Text_tmp.Set(preview.text);
  Show_Log(log_view_hooks.show_preview);
}

void Show_Folder(const std::string& directory) {
  if (!platform::Can_List(directory)) {
    Tell("This drive is currently unavailable");
  } else {
    Set_Log_Directory(directory);
  }
  Show_Log(log_view_hooks.show_folder);
}

}  // namespace

bool Preview_Shown = false;
Shown_Text txt_Log_Date_tmp;
Shown_Text txt_Log_Time_tmp;
Shown_Text txt_Log_Length_tmp;
Shown_Text txt_Log_Free_Text_tmp;

std::vector<std::string> Drive_List() { return platform::Drives(); }

std::vector<std::string> Folder_List() { return platform::Folders_In(Log_Directory); }

std::vector<std::string> Log_File_List() { return platform::Files_In(Log_Directory, ".kxl"); }

Log_Preview Preview_Of(std::string_view file) {
  if (file.find("Log_Date=") == std::string_view::npos) return {};
  const std::string line(line_length, '_');
  return {
      Text_Behind(file, "Log_Date="), Text_Behind(file, "Log_Time="), Text_Behind(file, "Log_Length="),
      Text_Behind(file, "Log_File_Name=") + Crlf() + line + Crlf() + Text_Behind(file, "Log_Description="),
      true};
}

void Set_Log_Directory(const std::string& directory) {
  const std::string whole = With_Separator(directory);
  if (whole == Log_Directory) return;
  Log_Directory = whole;
  Remember_Key(directory_key, whole);
  Show_Log(log_view_hooks.show_folder);
}

void Load_Log_Directory() {
  const std::string kept = With_Separator(Read_Key(directory_key).value_or(""));
  Log_Directory = !kept.empty() && platform::Can_List(kept) ? kept : start_dir;
  Show_Log(log_view_hooks.show_folder);
}

void Drive1_Change(const std::string& drive) { Show_Folder(drive); }

void Dir1_Change(const std::string& folder) {
  Show_Folder(folder == ".." ? platform::Folder_Above(Log_Directory) : Log_Directory + folder + "/");
}

void File1_Click(const std::string& name) {
  const std::string path = Log_Directory + name;
  std::string bytes;
  const auto size = platform::File_Size(path);
  const bool fits = size && *size <= largest_log_file;
  if (fits && platform::Read_Whole_File(path, bytes).Ok()) return Show_Preview(Preview_Of(bytes));
  Reset_File_Panel();
  Tell("This file contains non valid data!", platform::Icon::critical);
}

void File1_DblClick(const std::string& name) { Open_File(Log_Directory + name); }

void File1_Delete(const std::string& name) {
  if (name.empty() || !Ask_Yes_No("Do you really want to delete this file?")) return;
  const auto result = platform::Remove_File(Log_Directory + name);
  Reset_File_Panel();
  Show_Log(log_view_hooks.show_folder);
  if (!result.Ok()) return Tell(result.reason, platform::Icon::critical);
  if (name == Log_File_Name) Mark_Log_Unsaved();
}

void Reset_File_Panel() { Show_Preview({}); }

}  // namespace kx
