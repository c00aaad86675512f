#include "workspace/setting_file_commands.h"

#include <string>

#include "platform/files.h"
#include "platform/seams.h"
#include "settings/history.h"
#include "settings/image.h"
#include "settings/ini_file_adm.h"
#include "settings/message.h"
#include "settings/notice.h"
#include "settings/refresh.h"
#include "settings/session.h"
#include "settings/setting_file.h"
#include "settings/tune_origin.h"

namespace kx {
namespace {

constexpr const char* directory_key = "card_data_dir";

void Take_Name(const std::string& full_name) {
  const std::size_t bare = full_name.find_last_of('/') + 1;
  card_data_file = full_name.substr(bare);
  card_data_dir = full_name.substr(0, bare);
  Set_Title(card_data_file);
}

enum class Outcome { taken, no_setting_file, refused };

Outcome Take_File(const std::string& full_name) {
  Tune_Origin before;
  Take_Name(full_name);
  std::string bytes;
  const bool readable = platform::Read_Whole_File(full_name, bytes).Ok();
  const auto parsed = readable ? Parse_Setting_File(bytes) : std::nullopt;
  if (!parsed) return Outcome::no_setting_file;
  txt_File_Description.Set(parsed->description);
  CardByte = parsed->image;
  if (!Dataset_Accepted("File", CardByte[map::dataset])) return Outcome::refused;
  Write_Key(directory_key, card_data_dir);
  before.Taken();
  return Outcome::taken;
}

void Load(const std::string& full_name) {
  Capture_History();
  const Outcome outcome = Take_File(full_name);
  if (outcome == Outcome::refused) return Undo();
  Refresh_Whole_Image();
  if (outcome == Outcome::no_setting_file) Tell("Not a kxs-file");
}

void Save() {
  if (card_data_file.empty()) return;
  Show_Notice("");
  Set_Title(card_data_file);
  Write_Key(directory_key, card_data_dir);
  Stamp_Image();
  const std::string bytes = Print_Setting_File(CardByte, txt_File_Description.Text());
  const std::string path = (card_data_dir.empty() ? start_dir : card_data_dir) + card_data_file;
  if (const auto result = platform::Replace_File(path, bytes); !result.Ok()) {
    return Tell(result.reason, platform::Icon::critical);
  }
  Show_Notice("Saved " + path + " " + platform::seams.clock->Time_Text());
}

}  // namespace

void File_open_Click() {
  const auto name = platform::seams.ask->Open_Name(
      {"Open", "Box setting files  *.kxs | *.kxs| All files *.* | *.*", card_data_dir, "", "kxs"});
  if (name) Load(*name);
}

void File_save_Click() { Save(); }

void File_save_As_Click() {
  const auto name = platform::seams.ask->Save_Name(
      {"Save As", "Box setting file *.kxs|*.kxs", card_data_dir, card_data_file, "kxs"});
  if (!name || name->empty()) return;
  Take_Name(*name);
  Save();
}

}  // namespace kx
