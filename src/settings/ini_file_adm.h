#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "settings/ini_text.h"

/// The ini file: preferences and definitions in one plain text file, Ini_File_Name in start_dir; ini_text.h
/// says how it is written. A build without Ini_File_Name reads and writes nothing.
namespace kx {

/// Value of the @p occurrence-th line (from 1) with @p key: all that follows its first separator. Nothing
/// when there is none, or no file.
[[nodiscard]] std::optional<std::string> Read_Key(std::string_view key, int occurrence = 1);

/// Values of all lines with @p key, in one reading of the file.
[[nodiscard]] std::vector<Ini_Value> Read_Keys(std::string_view key);

/// Values of the "key" + number + "=" lines by their numbers, the first line of each, in one reading of the
/// file.
[[nodiscard]] std::map<int, std::string> Read_Numbered_Keys(std::string_view key);

/// Sets every "key=" line to @p value, or adds one at the end; all other lines keep their bytes. A missing
/// file is made, with all that it held when it was read last; a file that would not change is not written,
/// and one that cannot be read, or that another program seems to be writing, stays as it is. For what the
/// user has asked for: a write that fails shows a box each time. What could not be written stays readable for
/// the run and goes along with the next write that succeeds. True when nothing is left to be written.
bool Write_Key(std::string_view key, std::string_view value);

/// The same for several keys, with one box.
bool Write_Keys(const std::vector<std::pair<std::string, std::string>>& values);

/// The same for what is kept in passing (a directory, a window's size): only the first of the failures that
/// follow each other shows the box.
void Remember_Key(std::string_view key, std::string_view value);

/// New file text from the one that is there. It runs whenever the file is read or written while the change is
/// not on the disk, on the text of that moment, so it must find its lines by what they hold.
using Ini_Edit = std::function<std::string(const std::string& bytes)>;

/// Changes the text of the file by @p edit; what is said of Write_Key holds.
bool Change_Ini(Ini_Edit edit);

/// True when this build has an ini file and there is none.
[[nodiscard]] bool Ini_Missing();

/// Shows the box of a failed write when the ini file could not be written at present, unless one has been
/// shown.
void Check_Ini_Writable();

/// Tells when the file that the program has read cannot be read now, once for each time that it goes. What
/// was read last is what all readers get meanwhile.
void Check_Ini_Readable();

/// The file is taken as it is, whatever it held before. Called at start.
void Forget_Ini_Text();

/// Forgets what was read, what could not be written and what was told.
void Reset_Ini_State();

}  // namespace kx
