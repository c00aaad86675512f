#pragma once

namespace kx {

/// Builds the report of the present tune and shows it. It belongs to no file yet.
void Summary_View_Box_Settings_Click();

/// Shows what the log in hand keeps of its settings, its sensors and its box. It belongs to no file yet.
void Summary_View_Log_Settings_Click();

/// Shows a report from a rich text file that the user picks. A file that is none is told of and changes
/// nothing.
void Summary_Open_Click();

/// Asks for a name, suggested from the open tune, date and time, and writes the shown text as rich text.
void Summary_SaveAs_Click();

/// Writes the shown text to the file named last, or asks when there is none.
void Summary_Save_File_Click();

/// Forgets the file named last.
void Reset_Summary_Commands();

}  // namespace kx
