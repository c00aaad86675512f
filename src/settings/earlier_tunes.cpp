#include "settings/earlier_tunes.h"

#include <algorithm>
#include <cctype>
#include <utility>

#include "platform/folders.h"
#include "settings/notice.h"
#include "settings/numbers.h"
#include "settings/session.h"
#include "settings/tune_origin.h"

namespace kx {
namespace {

constexpr std::string_view folder_name = "earlier-tunes/";
constexpr std::string_view extension = ".kxs";

/// Head of the name of each file: number, date and time; "0" stands for a digit.
constexpr std::string_view head_pattern = "000000 0000-00-00 00-00-00 ";
constexpr std::size_t number_digits = 6;
constexpr std::string_view stamp_pattern = " 0000-00-00 00-00-00";

/// Bytes of a tune's own name in the name of its file; a file system takes 255 in all.
constexpr std::size_t longest_stem = 150;

bool keeping = false;
bool failure_told = false;
int changes = 0;

bool Matches(std::string_view text, std::string_view pattern) {
  return std::ranges::equal(text, pattern, [](char c, char wanted) {
    return wanted == '0' ? std::isdigit(static_cast<unsigned char>(c)) != 0 : c == wanted;
  });
}

/// Bare names of the files that this module has written, oldest first.
std::vector<std::string> Names() {
  auto names = platform::Files_In(Earlier_Tunes_Folder(), std::string(extension));
  std::erase_if(names, [](const std::string& name) {
    return !Matches(std::string_view(name).substr(0, head_pattern.size()), head_pattern);
  });
  return names;
}

long Number_Of(const std::string& name) { return std::stol(name.substr(0, number_digits)); }

/// @p name without extension and without the time that an earlier tune had in it, cut between two characters.
std::string Stem_Of(const std::string& name) {
  std::string stem = name.substr(0, name.rfind('.'));
  if (stem.size() > stamp_pattern.size() &&
      Matches(std::string_view(stem).substr(stem.size() - stamp_pattern.size()), stamp_pattern))
    stem.resize(stem.size() - stamp_pattern.size());
  std::size_t end = std::min(stem.size(), longest_stem);
  while (end < stem.size() && (static_cast<unsigned char>(stem[end]) & 0xC0U) == 0x80U) --end;
  return stem.substr(0, end);
}

/// The time as a file name can hold it on every system.
std::string Stamp_Of(const Tune_Copy& tune) {
  std::string stamp = tune.time;
  std::ranges::replace(stamp, ':', '-');
  return stamp;
}

std::string Next_Path(const std::vector<std::string>& names, const Tune_Copy& tune) {
  std::string number = std::to_string(names.empty() ? 1 : Number_Of(names.back()) + 1);
  number.insert(0, number_digits - std::min(number_digits, number.size()), '0');
  return Earlier_Tunes_Folder() + number + " " + Stamp_Of(tune) + " " + Stem_Of(tune.name) +
         std::string(extension);
}

std::optional<Tune_Copy> Read(const std::string& path) {
  std::string bytes;
  return platform::Read_Whole_File(path, bytes).Ok() ? Parse_Tune_Copy(bytes) : std::nullopt;
}

bool Same_Name(const Tune_Copy& a, const Tune_Copy& b) { return a.name == b.name && a.folder == b.folder; }

/// What is there of the tune under an older name goes, and the oldest ones that are too many. One that cannot
/// be removed stays.
void Clear_Up(std::vector<std::string> names, const Tune_Copy& newest) {
  ++changes;
  std::erase_if(names, [&newest](const std::string& name) {
    const std::string path = Earlier_Tunes_Folder() + name;
    const auto tune = Read(path);
    return tune && Same_Tune(*tune, newest) && platform::Remove_File(path).Ok();
  });
  const auto others = static_cast<std::size_t>(earlier_tunes_kept - 1);
  for (std::size_t i = 0; i + others < names.size(); ++i)
    static_cast<void>(platform::Remove_File(Earlier_Tunes_Folder() + names[i]));
}

bool Is_Newest(const std::vector<std::string>& names, const Tune_Copy& tune) {
  if (names.empty()) return false;
  const auto newest = Read(Earlier_Tunes_Folder() + names.back());
  return newest && Same_Tune(*newest, tune) && Same_Name(*newest, tune);
}

}  // namespace

std::string Earlier_Tunes_Folder() { return start_dir + std::string(folder_name); }

std::vector<Earlier_Tune> Earlier_Tunes() {
  std::vector<Earlier_Tune> tunes;
  for (const std::string& name : Names()) {
    const std::string path = Earlier_Tunes_Folder() + name;
    if (auto tune = Read(path)) tunes.push_back({path, std::move(*tune)});
  }
  std::ranges::reverse(tunes);
  return tunes;
}

int Earlier_Tunes_Changes() { return changes; }

bool Tell_Unless_Kept(const platform::File_Result& result) {
  if (!result.Ok() && !std::exchange(failure_told, true))
    Add_Notice("Earlier tunes can not be kept: " + result.reason);
  return result.Ok();
}

bool Keep_Earlier_Tune() {
  if (!keeping) return true;
  if (!Tell_Unless_Kept(platform::Make_Folder(Earlier_Tunes_Folder()))) return false;
  const Tune_Copy tune = Copy_Of_Tune();
  const auto names = Names();
  if (Is_Newest(names, tune)) return true;
  if (!Tell_Unless_Kept(platform::Replace_File(Next_Path(names, tune), Print_Tune_Copy(tune)))) return false;
  Clear_Up(names, tune);
  return true;
}

bool Move_Among_Earlier_Tunes(const std::string& path, const Tune_Copy& tune) {
  const auto names = Names();
  if (!Tell_Unless_Kept(platform::Rename_File(path, Next_Path(names, tune)))) return false;
  Clear_Up(names, tune);
  return true;
}

void Replace_Tune(const Byte_Image& image, const std::string& source,
                  const std::function<void()>& take_name) {
  Keep_Earlier_Tune();
  if (take_name) take_name();
  tune_source = source;
  CardByte = image;
}

std::string Name_For_Earlier_Tune(const Tune_Copy& tune) {
  const std::string stamp = tune.time.empty() ? "" : " " + Stamp_Of(tune);
  return tune.folder + Stem_Of(tune.name) + stamp + std::string(extension);
}

void Start_Keeping_Tunes() { keeping = true; }

bool Keeping_Tunes() { return keeping; }

void Reset_Earlier_Tunes() {
  keeping = failure_told = false;
  tune_source.clear();
}

}  // namespace kx
