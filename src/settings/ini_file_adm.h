#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
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
/// file is made; a file that would not change is not written. The first write of a run that fails shows a
/// box; what could not be written stays readable for the run and goes along with the next write that
/// succeeds.
void Write_Key(std::string_view key, std::string_view value);

/// Sets each of @p lines in place; one beyond the end of its list follows the list's last line, or makes the
/// list at the end of the text. All of them go to the disk together; what is said of Write_Key holds.
void Write_List_Lines(const std::vector<List_Line>& lines);

/// True when this build has an ini file and there is none.
[[nodiscard]] bool Ini_Missing();

/// Shows the box of a failed write when the ini file could not be written at present.
void Check_Ini_Writable();

/// Forgets what could not be written and whether that was told.
void Reset_Ini_State();

}  // namespace kx
