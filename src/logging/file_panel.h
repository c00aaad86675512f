#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "settings/shown_text.h"

/// The file panel of KX_Log: Drive1, Dir1 and File1, and the frame that shows what a file holds. All names
/// are UTF-8 with "/" as separator.
namespace kx {

/// What Drive1 lists: the root, the home directory and mounted volumes.
[[nodiscard]] std::vector<std::string> Drive_List();

/// What Dir1 lists below Log_Directory, bare names.
[[nodiscard]] std::vector<std::string> Folder_List();

/// What File1 lists in Log_Directory: the "*.kxl" files, bare names.
[[nodiscard]] std::vector<std::string> Log_File_List();

/// True while File_Info_Frame_tmp shows in the place of File_Info_Frame.
extern bool Preview_Shown;

extern Shown_Text txt_Log_Date_tmp;
extern Shown_Text txt_Log_Time_tmp;
extern Shown_Text txt_Log_Length_tmp;
extern Shown_Text txt_Log_Free_Text_tmp;

/// The head of a log file, from plain search in its text.
struct Log_Preview {
  std::string date;
  std::string time;
  std::string length;
  std::string text;  ///< file name, CR LF, a line, CR LF, description
  bool found = false;
};

/// UTF-8 from the bytes of a file; not found without "Log_Date=".
[[nodiscard]] Log_Preview Preview_Of(std::string_view file);

/// Takes the directory of the panel and of the next log; a changed one is kept in the ini file.
void Set_Log_Directory(const std::string& directory);

/// As KX_Log loads: the directory that the ini file keeps, else the working directory.
void Load_Log_Directory();

/// A choice in Drive1; one that cannot be read is told of and the earlier one stays.
void Drive1_Change(const std::string& drive);

/// A folder of Dir1, bare name; ".." is the one above.
void Dir1_Change(const std::string& folder);

/// One click on a file of File1: its preview.
void File1_Click(const std::string& name);

/// Double click or Enter: opens it.
void File1_DblClick(const std::string& name);

/// The Delete key: deletes it after a question.
void File1_Delete(const std::string& name);

/// Hides the preview.
void Reset_File_Panel();

}  // namespace kx
