#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "settings/shown_text.h"

/// What the program keeps of its surroundings while it runs.
namespace kx {

/// Working directory of the run, "/" at its end: home of the ini file, the dataset texts, the default log
/// file and the temporary logs. Set once at start; empty means the process's own.
extern std::string start_dir;

/// Name of the current file before one is opened or saved.
constexpr const char* first_card_data_file = "New1.kxs";

/// Bare name of the current .kxs file, without directory. Written by open, save as, read and log commands.
extern std::string card_data_file;

/// Directory of the current .kxs file, "/" at its end, so that directory + name is the full name; empty means
/// the working directory. Kept in the ini file on every load and save.
extern std::string card_data_dir;

/// The tune's free text description, lines ended by CR LF.
extern Shown_Text txt_File_Description;

/// Card interface as the ini file has it: "SC_Reader", "Serial", "KX_MapCard" or "TodosII_Reader"; other
/// words are kept and select nothing. Written by the start and by the preferences.
extern std::string Default_Interface;

constexpr std::int16_t first_com_port = 1;

/// COM number of the box, from 1; first_com_port until the ini file names another. Read from the ini file,
/// written by the preferences.
extern std::int16_t Com_Port_Number;

/// @p directory with "/" at its end; empty stays empty.
[[nodiscard]] std::string With_Separator(std::string_view directory);

void Reset_Session_State();

}  // namespace kx
