#include "settings/ini_file_adm.h"

#include <algorithm>
#include <utility>

#include "platform/files.h"
#include "settings/brand.h"
#include "settings/message.h"
#include "settings/session.h"

namespace kx {
namespace {

struct Unsaved {
  std::string key;  ///< of a Write_Key, whose later value takes its place; empty for any other change
  Ini_Edit edit;
};

/// What no write has brought to the disk so far, in its order, so that a run without a writable ini file
/// loses nothing.
std::vector<Unsaved> unsaved;

/// The file as it was read or written last: what the program goes on with while there is no sound one.
std::string last_whole;

bool failure_told = false;
bool absence_told = false;

std::string Ini_Path() { return start_dir + Ini_File_Name; }
std::string Beside_Path() { return start_dir + "KXS.new"; }

std::string With_Unsaved(std::string bytes) {
  for (const Unsaved& change : unsaved) bytes = change.edit(bytes);
  return bytes;
}

/// The file as it is or, with the reason, as it was last.
platform::File_Result Read_File(std::string& bytes) {
  auto result = platform::Read_Whole_File(Ini_Path(), bytes);
  if (result.Ok() && Looks_Half_Written(bytes, last_whole)) {
    result.reason =
        Ini_Path() + ": definitions are missing that were there; another program may be writing it";
  }
  if (result.Ok()) {
    last_whole = bytes;
    absence_told = false;
  } else {
    bytes = last_whole;
  }
  return result;
}

/// What the program takes for the file.
std::string Contents() {
  std::string bytes;
  if (Ini_File_Name.empty()) return bytes;
  static_cast<void>(Read_File(bytes));
  return With_Unsaved(std::move(bytes));
}

void Tell_Failure(const std::string& reason) {
  failure_told = true;
  Tell("The settings of the program cannot be saved.\n" + reason +
           "\nThe program goes on and tries again with the next setting that changes.",
       platform::Icon::warning);
}

/// Brings everything unsaved to the disk; a missing file is made whole again, one that cannot be read stays.
platform::File_Result Save() {
  std::string old;
  auto found = Read_File(old);
  if (!found.Ok() && !found.missing) return found;
  std::string bytes = With_Unsaved(old);
  if (found.Ok() && bytes == old) return {};
  auto result = platform::Replace_File(Ini_Path(), Beside_Path(), bytes);
  if (!result.Ok()) return result;
  failure_told = false;
  last_whole = std::move(bytes);
  return result;
}

enum class Cause { user, in_passing };

/// Brings all of @p unsaved to the disk, or tells that it cannot; in passing only for the first time.
bool Save_Or_Tell(Cause cause) {
  const auto result = Save();
  if (result.Ok()) {
    unsaved.clear();
  } else if (cause == Cause::user || !failure_told) {
    Tell_Failure(result.reason);
  }
  return result.Ok();
}

void Keep(std::string_view key, std::string_view value) {
  std::erase_if(unsaved, [key](const Unsaved& change) { return change.key == key; });
  unsaved.push_back(
      {std::string(key), [key = std::string(key), value = std::string(value)](const std::string& bytes) {
         return With_Key(bytes, key, value);
       }});
}

}  // namespace

std::vector<Ini_Value> Read_Keys(std::string_view key) { return Values_Of_Key(Contents(), key); }

std::optional<std::string> Read_Key(std::string_view key, int occurrence) {
  const auto values = Read_Keys(key);
  const auto index = static_cast<std::size_t>(occurrence - 1);
  return index < values.size() ? std::optional(values[index].text) : std::nullopt;
}

std::map<int, std::string> Read_Numbered_Keys(std::string_view key) {
  return Values_By_Number(Contents(), key);
}

bool Ini_Missing() {
  std::string bytes;
  return !Ini_File_Name.empty() && platform::Read_Whole_File(Ini_Path(), bytes).missing;
}

bool Write_Keys(const std::vector<std::pair<std::string, std::string>>& values) {
  if (Ini_File_Name.empty()) return true;
  for (const auto& [key, value] : values) Keep(key, value);
  return Save_Or_Tell(Cause::user);
}

bool Write_Key(std::string_view key, std::string_view value) {
  return Write_Keys({{std::string(key), std::string(value)}});
}

void Remember_Key(std::string_view key, std::string_view value) {
  if (Ini_File_Name.empty()) return;
  Keep(key, value);
  Save_Or_Tell(Cause::in_passing);
}

bool Change_Ini(Ini_Edit edit) {
  if (Ini_File_Name.empty()) return true;
  unsaved.push_back({"", std::move(edit)});
  return Save_Or_Tell(Cause::user);
}

void Check_Ini_Writable() {
  if (Ini_File_Name.empty() || failure_told) return;
  if (const auto result = platform::Check_Replaceable(Ini_Path(), Beside_Path()); !result.Ok()) {
    Tell_Failure(result.reason);
  }
}

void Check_Ini_Readable() {
  if (Ini_File_Name.empty() || last_whole.empty()) return;
  std::string bytes;
  const auto result = Read_File(bytes);
  if (result.Ok() || std::exchange(absence_told, true)) return;
  Tell("The sensors, load axes and presets cannot be read again and stay as they were.\n" + result.reason +
           (result.missing
                ? "\nThe next setting that changes writes the file anew."
                : "\nThe file is read when it is whole again and is not written until then. If it is meant "
                  "to be as it is, start the program anew."),
       platform::Icon::warning);
}

void Forget_Ini_Text() { last_whole.clear(); }

void Reset_Ini_State() {
  unsaved.clear();
  last_whole.clear();
  failure_told = false;
  absence_told = false;
}

}  // namespace kx
