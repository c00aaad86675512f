#include "settings/ini_file_adm.h"

#include <map>
#include <utility>

#include "platform/files.h"
#include "settings/brand.h"
#include "settings/message.h"
#include "settings/session.h"

namespace kx {
namespace {

/// What no write has brought to the disk so far, so that a run without a writable ini file loses nothing: by
/// key, and by the occurrence of a line of a list; occurrence 0 stands for every line with the key.
std::map<std::pair<std::string, std::size_t>, std::string> unsaved;
bool failure_told = false;

std::string Ini_Path() { return start_dir + Ini_File_Name; }
std::string Beside_Path() { return start_dir + "KXS.new"; }

std::string With_Unsaved(std::string bytes) {
  for (const auto& [line, value] : unsaved) {
    const auto& [key, occurrence] = line;
    bytes = occurrence == 0 ? With_Key(bytes, key, value) : With_List_Line(bytes, {key, occurrence, value});
  }
  return bytes;
}

/// The file as it is, empty when it does not exist.
platform::File_Result Read_File(std::string& bytes) {
  auto result = platform::Read_Whole_File(Ini_Path(), bytes);
  return result.missing ? platform::File_Result{} : result;
}

/// What the program takes for the file: empty when it cannot be read.
std::string Contents() {
  std::string bytes;
  if (Ini_File_Name.empty()) return bytes;
  if (!Read_File(bytes).Ok()) bytes.clear();
  return With_Unsaved(std::move(bytes));
}

void Tell_Failure(const std::string& reason) {
  if (failure_told) return;
  failure_told = true;
  Tell("The settings of the program cannot be saved.\n" + reason +
           "\nThe program goes on and tries again with the next setting that changes.",
       platform::Icon::warning);
}

/// Brings everything unsaved to the disk.
platform::File_Result Save() {
  std::string old;
  if (auto result = Read_File(old); !result.Ok()) return result;
  const std::string bytes = With_Unsaved(old);
  return bytes == old ? platform::File_Result{} : platform::Replace_File(Ini_Path(), Beside_Path(), bytes);
}

/// Brings all of @p unsaved to the disk, or tells once that it cannot.
void Save_Or_Tell() {
  if (const auto result = Save(); result.Ok()) {
    unsaved.clear();
  } else {
    Tell_Failure(result.reason);
  }
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

void Write_Key(std::string_view key, std::string_view value) {
  if (Ini_File_Name.empty()) return;
  unsaved[{std::string(key), 0}] = value;
  Save_Or_Tell();
}

void Write_List_Lines(const std::vector<List_Line>& lines) {
  if (Ini_File_Name.empty()) return;
  for (const List_Line& line : lines) unsaved[{line.key, line.occurrence}] = line.value;
  Save_Or_Tell();
}

void Check_Ini_Writable() {
  if (Ini_File_Name.empty()) return;
  if (const auto result = platform::Check_Replaceable(Ini_Path(), Beside_Path()); !result.Ok()) {
    Tell_Failure(result.reason);
  }
}

void Reset_Ini_State() {
  unsaved.clear();
  failure_told = false;
}

}  // namespace kx
