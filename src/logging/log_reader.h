#pragma once

#include <string>
#include <string_view>

#include "logging/log_array.h"

/// From the text of a log file to the section texts, and from these to LogArray.
namespace kx {

/// Splits the text of a whole file into the section texts and finds what its rows are like: Log_Field_Count,
/// Log_Rows, length and chart range. Settings or sensors that the file lacks are the built-in ones. A log
/// without a row is told of by a box. With @p default_file the settings are kept for Restore_Default_File,
/// and no row is expected.
void KX_Info_Data_File_Test(std::string_view file_text, bool default_file);

/// Decodes all rows of Log_Data_Text into LogArray, which is emptied first, and runs the calculated signals.
/// Log_Rows becomes the number of rows decoded; chart range and length follow it. Called when a file has been
/// read, when a log ends and when a setting changes what the rows mean. @p default_file is true while the
/// default log settings are being opened.
void KX_Log_Data_Read(bool default_file = false);

/// Decodes the rows of a data section into @p target, at most 6000; returns how many. A line that is shorter
/// than the first row, is a header, or has a remark behind it is passed over, and the next one takes its
/// number.
int Decode_Rows(std::string_view data_section, Log_Array& target);

/// Keeps the section texts of settings and sensors for Restore_Default_File.
void Keep_Default_Settings();

/// "12.50 s" for 251 rows.
[[nodiscard]] std::string Log_Length_Text(int rows);

/// The chart shows rows 1 to Log_Rows.
void Show_Whole_Log();

}  // namespace kx
