#pragma once

#include <string>

/// Opening and saving logs and the default log settings file, and what the menu of KX_Log calls for it.
namespace kx {

enum class Log_Open { log, default_settings };

/// Reads the file @p path (UTF-8, full name) and shows it, after the question for an unsaved log; an empty
/// path ends there. A file that holds an end-of-text mark is repaired on disk first; a file too large to be a
/// log is refused before it is read. False when nothing was opened, which leaves the log as it was.
bool Open_File(const std::string& path, Log_Open as = Log_Open::log);

/// Writes the log to @p path, settings as the controls hold them. A file that is write protected is asked
/// about. True when the disk has confirmed it; else a box has told why, and name and mark of the log stay. As
/// default settings it leaves them in any case. A log of more than 6000 rows goes into several files, @p path
/// and those that follow it by number, which a box tells; the first of them is the log in hand then. No
/// other file is replaced by these.
bool Save_File(const std::string& path, Log_Open as = Log_Open::log);

/// Saves without a dialog: a part of a long log under its number, any other log under the default name with
/// date and time.
bool Log_File_Auto_Save();

/// Offers to save an unsaved log. False when the user wants to and it has not come to be.
bool Check_If_Unsaved_File();

/// Takes name and directory of the current log from a full name.
void Update_Current_Dir(const std::string& path);

/// The menu. Save asks for a name when the log has none of the user's choice.
void Log_File_Open_Click();
void Log_File_Save_Click();
void Log_File_Save_As_Click();
void Open_Default_File_Click();
void Restore_Default_File_Click();
void Save_as_Default_File_Click();

/// As KX_Log loads: the default log settings file when it is there and can be opened, else the built-in
/// settings.
void Load_Log_Window();

/// @p name with "-" for each character that a file name cannot hold.
[[nodiscard]] std::string Sound_File_Name(std::string name);

}  // namespace kx
