#include "workspace/summary_commands.h"

#include <algorithm>
#include <string>

#include "logging/log_state.h"
#include "platform/files.h"
#include "platform/seams.h"
#include "settings/message.h"
#include "settings/session.h"
#include "settings/text_encoding.h"
#include "workspace/rich_text.h"
#include "workspace/setting_summary.h"

namespace kx {
namespace {

std::string summary_file;

/// Name of the open tune without its extension, "_", date, "_" and time.
std::string Suggested_Name() {
  std::string time = platform::seams.clock->Time_Text();
  std::replace(time.begin(), time.end(), ':', '-');
  return card_data_file.substr(0, card_data_file.rfind('.')) + "_" + platform::seams.clock->Date_Text() +
         "_" + time;
}

void Write_To(const std::string& name) {
  const auto result = platform::Replace_File(name, Write_Rich_Text(txt_SettingSummary.Text()));
  if (!result.Ok()) return Tell(result.reason, platform::Icon::critical);
  summary_file = name;
}

}  // namespace

void Summary_View_Box_Settings_Click() {
  summary_file.clear();
  Update_Readable_Setting_Window();
}

void Summary_View_Log_Settings_Click() {
  summary_file.clear();
  std::string text;
  for (const std::string* block :
       {&Log_Setting_Text, &Log_Sens_Def_Text, &Readable_Settings_Text, &Log_Dataset_Text}) {
    text += From_Windows_1252(*block) + Crlf();
  }
  txt_SettingSummary.Set(text);
}

void Summary_Open_Click() {
  const auto name = platform::seams.ask->Open_Name(
      {"Open", "KXBench setting files (*.rtf)|*.rtf|All (*.*)|*.*", card_data_dir, "", "rtf"});
  if (!name) return;
  std::string bytes;
  const auto result = platform::Read_Whole_File(*name, bytes);
  if (!result.Ok()) return Tell(result.reason, platform::Icon::critical);
  const auto text = Read_Rich_Text(bytes);
  if (!text) return Tell(*name + ": this is no rich text file", platform::Icon::critical);
  txt_SettingSummary.Set(*text);
  summary_file = *name;
}

void Summary_SaveAs_Click() {
  const auto name = platform::seams.ask->Save_Name(
      {"Save As", "Rich text format (*.rtf)|*.rtf|All (*.*)|*.*", card_data_dir, Suggested_Name(), "rtf"});
  if (name && !name->empty()) Write_To(*name);
}

void Summary_Save_File_Click() {
  if (summary_file.empty()) return Summary_SaveAs_Click();
  Write_To(summary_file);
}

void Reset_Summary_Commands() { summary_file.clear(); }

}  // namespace kx
