#include "workspace/setting_file_commands.h"

#include <exception>
#include <string>

#include "platform/files.h"
#include "platform/seams.h"
#include "settings/image.h"
#include "settings/ini_file_adm.h"
#include "settings/message.h"
#include "settings/notice.h"
#include "settings/refresh.h"
#include "settings/session.h"
#include "settings/setting_file.h"
#include "settings/text_encoding.h"
#include "workspace/history.h"

namespace kx {
namespace {

constexpr const char* directory_key = "card_data_dir";

/// What a file that is not taken must leave as it was, besides the tune itself: put back at the end of the
/// scope unless the file was taken.
class File_Before {
 public:
  File_Before() = default;
  ~File_Before() {
    if (taken_) return;
    try {
      Restore();
    } catch (const std::exception&) {
      // What ended the load is told already; a second failure must not end the program.
    }
  }
  File_Before(const File_Before&) = delete;
  File_Before& operator=(const File_Before&) = delete;
  void Taken() { taken_ = true; }

 private:
  void Restore() const {
    card_data_file = file_;
    card_data_dir = directory_;
    txt_File_Description.Set(description_);
    Set_Title(title_);
  }

  std::string file_ = card_data_file;
  std::string directory_ = card_data_dir;
  std::string title_ = Title_Text();
  std::string description_ = txt_File_Description.Text();
  bool taken_ = false;
};

void Take_Name(const std::string& full_name) {
  const std::size_t bare = full_name.find_last_of('/') + 1;
  card_data_file = full_name.substr(bare);
  card_data_dir = full_name.substr(0, bare);
  Set_Title(card_data_file);
}

bool Accept_Dataset() {
  const int found = CardByte[map::dataset];
  if (found == DatasetID) return true;
  return Confirm("File has different dataset ID (" + std::to_string(found) +
                 ") than currently selected in preferences (" + std::to_string(DatasetID) +
                 "), load anyway?" + Crlf() + "(Dataset ID is not changed.)");
}

enum class Outcome { taken, no_setting_file, refused };

Outcome Take_File(const std::string& full_name) {
  File_Before before;
  Take_Name(full_name);
  std::string bytes;
  const bool readable = platform::Read_Whole_File(full_name, bytes).Ok();
  const auto parsed = readable ? Parse_Setting_File(bytes) : std::nullopt;
  if (!parsed) return Outcome::no_setting_file;
  txt_File_Description.Set(parsed->description);
  CardByte = parsed->image;
  if (!Accept_Dataset()) return Outcome::refused;
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
