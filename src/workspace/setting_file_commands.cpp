#include "workspace/setting_file_commands.h"

#include <string>

#include "boxlink/transfer.h"
#include "logging/live_log.h"
#include "platform/files.h"
#include "platform/folders.h"
#include "platform/seams.h"
#include "settings/earlier_tunes.h"
#include "settings/history.h"
#include "settings/image.h"
#include "settings/ini_file_adm.h"
#include "settings/message.h"
#include "settings/notice.h"
#include "settings/recent_files.h"
#include "settings/refresh.h"
#include "settings/session.h"
#include "settings/setting_file.h"
#include "settings/text_encoding.h"
#include "settings/tune_being_edited.h"
#include "settings/tune_origin.h"

namespace kx {
namespace {

constexpr const char* directory_key = "card_data_dir";

std::string Folder_Of(const std::string& full_name) {
  return full_name.substr(0, full_name.find_last_of('/') + 1);
}

/// Where a save puts the tune.
std::string Save_Path() { return (card_data_dir.empty() ? start_dir : card_data_dir) + card_data_file; }

void Take_Name(const std::string& full_name) {
  card_data_dir = Folder_Of(full_name);
  card_data_file = full_name.substr(card_data_dir.size());
  Set_Title(card_data_file);
}

enum class Outcome { taken, no_setting_file, refused };

/// Also when the name goes another way there than ours does, over a link.
bool Is_Kept(const std::string& full_name) {
  return platform::Same_Place(Folder_Of(full_name), Earlier_Tunes_Folder());
}

/// A tune of the folder of earlier ones comes from where it once came from, and is saved under a name of its
/// own; any other file takes what is saved.
struct Source {
  std::string source;
  std::string save_path;
};

Source Source_Of(const std::string& full_name, std::string_view bytes) {
  const auto kept = Is_Kept(full_name) ? Parse_Tune_Copy(bytes) : std::nullopt;
  if (kept && !kept->name.empty()) return {kept->origin, Name_For_Earlier_Tune(*kept)};
  return {Folder_Of(full_name), full_name};
}

Outcome Take_Tune(const Setting_File& file, const Source& from) {
  Tune_Origin before;
  Replace_Tune(file.image, from.source, [&] {
    Take_Name(from.save_path);
    txt_File_Description.Set(file.description);
  });
  if (!Dataset_Accepted("File", CardByte[map::dataset])) return Outcome::refused;
  Remember_Key(directory_key, card_data_dir);
  before.Taken();
  return Outcome::taken;
}

void Note_Taken(const std::string& full_name) {
  if (Is_Kept(full_name)) return Show_Notice("Opened an earlier tune as " + Save_Path());
  Note_Tune_On_File();
  Note_Recent_File(full_name);
}

Outcome Take_File(const std::string& full_name) {
  std::string bytes;
  const bool readable = platform::Read_Whole_File(full_name, bytes).Ok();
  const auto file = readable ? Parse_Setting_File(bytes) : std::nullopt;
  if (!file) return Outcome::no_setting_file;
  const Source from = Source_Of(full_name, bytes);
  const Outcome outcome = Take_Tune(*file, from);
  if (outcome == Outcome::taken) Note_Taken(full_name);
  return outcome;
}

/// Brings the tune of a program that did not end in order among the earlier ones, by way of the screen if the
/// user wants it. It is saved where it would have been.
void Settle_Left_Tune(const Left_Tune& left) {
  const bool wanted = Ask_Yes_No("The program did not end in order while " + left.tune.name +
                                 " was being edited. Open the tune as it was at " + left.tune.time + "?" +
                                 Crlf() + "No leaves it among the earlier tunes.");
  if (wanted) {
    Capture_History();
    const Setting_File file{left.tune.image, left.tune.description};
    if (Take_Tune(file, {left.tune.origin, left.tune.folder + left.tune.name}) == Outcome::refused) Undo();
    Refresh_Whole_Image();
  }
  Move_Among_Earlier_Tunes(left.path, left.tune);
}

/// The content that a save has replaced stays beside the file.
void Keep_Replaced(const std::string& path, const std::string& replaced) {
  const auto result = platform::Replace_File(path + "~", replaced);
  if (!result.Ok()) Add_Notice("What the file held before could not be kept: " + result.reason);
}

void Save() {
  if (card_data_file.empty()) return;
  Show_Notice("");
  Set_Title(card_data_file);
  Remember_Key(directory_key, card_data_dir);
  Stamp_Image();
  const std::string bytes = Print_Setting_File(CardByte, txt_File_Description.Text());
  std::string replaced;
  const std::string path = Save_Path();
  const bool was_there = platform::Read_Whole_File(path, replaced).Ok();
  if (const auto result = platform::Replace_File(path, bytes); !result.Ok()) {
    return Tell(result.reason, platform::Icon::critical);
  }
  Show_Notice("Saved " + path + " " + platform::seams.clock->Time_Text());
  tune_source = Folder_Of(path);
  Note_Tune_On_File();
  Note_Recent_File(path);
  if (was_there && replaced != bytes) Keep_Replaced(path, replaced);
}

}  // namespace

void Open_Setting_File(const std::string& full_name) {
  Capture_History();
  const Outcome outcome = Take_File(full_name);
  if (outcome == Outcome::refused) return Undo();
  Refresh_Whole_Image();
  if (outcome == Outcome::no_setting_file) Tell("Not a kxs-file");
}

void Offer_Left_Tunes() {
  for (const Left_Tune& left : Left_Tunes()) Guarded([&left] { Settle_Left_Tune(left); });
  // A log has the line for hours, and its rows wait in the port meanwhile.
  Watch_Tune_Being_Edited([] { return Transfer_Running() && !Log_Running(); });
}

void File_open_Click() {
  const auto name = platform::seams.ask->Open_Name(
      {"Open", "Box setting files  *.kxs | *.kxs| All files *.* | *.*", card_data_dir, "", "kxs"});
  if (name) Open_Setting_File(*name);
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
