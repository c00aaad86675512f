#include "settings/brand.h"

#include <array>
#include <string_view>

#include "settings/build_profile.h"
#include "settings/failure.h"
#include "settings/refresh.h"
#include "settings/session.h"

namespace kx {

int Brand = build::brand;
int Edition = build::edition;
std::string Title_Prefix;
std::string Company_Name;
std::string Program_Name;
std::string Card_Tab_Caption;
std::string Box_Tab_Caption;
std::string Ini_File_Name;
std::string Log_Settings_File_Name;
std::string Download_Link;
std::string Link_Caption;
std::string Web_Site;
int Default_Preset = 0;

namespace {

struct Brand_Row {
  std::string_view title_prefix;
  std::string_view company_name;
  std::string_view program_name;
  std::string_view card_tab_caption;
  std::string_view box_tab_caption;
  std::string_view download_link;
  std::string_view web_site;
  bool help_menu_shown;
  int default_preset;
};

constexpr std::array brands{
    Brand_Row{"TORNVIK  KXBenchPro - ", "Tornvik AB", "KXBench", "MapCard", "KX-box", "", "", true, 0},
    Brand_Row{"Lindhamn Racing QRT3 - ", "Lindhamn Racing", "QRT2", "Card", "Direct", "", "", false, 3},
    Brand_Row{"NLM MapCard - ", "", "", "MapCard", "KX-box", "", "", false, 0},
};

struct File_Row {
  int brand;
  int edition;
  std::string_view ini;
  std::string_view log_settings;
};

constexpr std::array brand_files{
    File_Row{0, 0, "KXBenchPro.ini", "KXBenchPro_Default_Log_Settings.kxl"},
    File_Row{0, 1, "KXBenchAlt.ini", "KXBenchAlt_Default_Log_Settings.kxl"},
    File_Row{0, 2, "KXBench.ini", "KXBench_StandAlone_Default_Log_Settings.kxl"},
    File_Row{1, 0, "QRT3.ini", "Qrt3_Default_Log_Settings.kxl"},
    File_Row{1, 1, "QRT2i.ini", "Qrt3i_Default_Log_Settings.kxl"},
};

static_assert(build::brand >= 0 && build::brand < static_cast<int>(brands.size()));
static_assert(build::edition >= 0 && build::edition <= 2);

void Take_Row(const Brand_Row& row) {
  Title_Prefix = row.title_prefix;
  Company_Name = row.company_name;
  Program_Name = row.program_name;
  Card_Tab_Caption = row.card_tab_caption;
  Box_Tab_Caption = row.box_tab_caption;
  Download_Link = row.download_link;
  Web_Site = row.web_site;
  Link_Caption = "Goto " + Web_Site;
  Default_Preset = row.default_preset;
}

/// A pair of brand and edition without a row has no files.
void Take_Files() {
  File_Row files{};
  for (const File_Row& row : brand_files) {
    if (row.brand == Brand && row.edition == Edition) files = row;
  }
  Ini_File_Name = files.ini;
  Log_Settings_File_Name = files.log_settings;
}

}  // namespace

void Set_Brand(int brand) {
  if (brand < 0 || brand >= static_cast<int>(brands.size())) Fail_Subscript();
  Brand = brand;
  Take_Row(brands[static_cast<std::size_t>(brand)]);
  Take_Files();
  card_data_file = first_card_data_file;
  Set_Title(card_data_file);
}

bool Brand_Has_Help_Menu() { return brands.at(static_cast<std::size_t>(Brand)).help_menu_shown; }

std::string Version_Text() {
  return "Ver " + std::to_string(build::version_major) + "." + std::to_string(build::version_minor) + "." +
         std::to_string(build::version_revision);
}

std::string About_Text() {
  std::string text;
  for (const std::string& line : {Program_Name, Version_Text(), Company_Name, Web_Site}) {
    if (!line.empty()) text += (text.empty() ? "" : "\n") + line;
  }
  return text;
}

void Reset_Brand_State() {
  Brand = build::brand;
  Edition = build::edition;
  Take_Row({});
  Link_Caption.clear();
  Ini_File_Name.clear();
  Log_Settings_File_Name.clear();
}

}  // namespace kx
