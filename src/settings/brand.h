#pragma once

#include <string>

/// Names, titles and file names by brand and edition. One program serves all; the tune format is the same.
namespace kx {

extern int Brand;    ///< 0, 1 or 2; set by Set_Brand
extern int Edition;  ///< 0, 1 or 2; the build's

// The profile, written by Set_Brand. An address that is empty disables what leads to it.
extern std::string Title_Prefix;      ///< start of every window title
extern std::string Company_Name;      ///< maker, for the About text
extern std::string Program_Name;      ///< short name of the tool
extern std::string Card_Tab_Caption;  ///< tab 0 of SSTab_Communication
extern std::string Box_Tab_Caption;   ///< tab 1 of SSTab_Communication
extern std::string Ini_File_Name;     ///< empty: this build keeps no configuration
extern std::string Log_Settings_File_Name;
extern std::string Download_Link;  ///< target of Help_wwwlink
extern std::string Link_Caption;   ///< caption of Help_wwwlink
extern std::string Web_Site;       ///< shown in the About text
extern int Default_Preset;         ///< User_Preset, from 0, while the ini file names none

/// Fills the profile for @p brand and the present Edition; the current file becomes "New1.kxs" and the title
/// shows it. Throws Failure "Subscript out of range" for an unknown brand.
void Set_Brand(int brand);

/// True when the brand shows the help menu.
[[nodiscard]] bool Brand_Has_Help_Menu();

/// "Ver " and the three parts of the version.
[[nodiscard]] std::string Version_Text();

/// Program, version, maker and site, a line each; what the brand does not set is left out.
[[nodiscard]] std::string About_Text();

/// Brand and edition of the build, profile empty.
void Reset_Brand_State();

}  // namespace kx
