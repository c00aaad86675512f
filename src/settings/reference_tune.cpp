#include "settings/reference_tune.h"

#include <utility>

#include "platform/files.h"
#include "settings/setting_file.h"

namespace kx {
namespace {

constexpr const char* box_name = "Box";
constexpr const char* written_box_name = "Box before the last write";
constexpr const char* other_box_name = "Box connected before";
constexpr const char* opened_name = "Opened";

std::optional<Reference_Source> chosen;
std::optional<Reference_Tune> box;
std::optional<Reference_Tune> file;
std::optional<Reference_Tune> opened;
bool box_in_doubt = false;

const std::optional<Reference_Tune>& Kept(Reference_Source source) {
  static const std::optional<Reference_Tune> nothing;
  switch (source) {
    case Reference_Source::box:
      return box;
    case Reference_Source::file:
      return file;
    case Reference_Source::opened:
      return opened;
    case Reference_Source::none:
      break;
  }
  return nothing;
}

std::string Bare_Name(const std::string& path) { return path.substr(path.find_last_of('/') + 1); }

}  // namespace

Reference_Source Shown_Source() {
  return chosen.value_or(box ? Reference_Source::box : Reference_Source::none);
}

const Reference_Tune* Reference() {
  const auto& kept = Kept(Shown_Source());
  return kept ? &*kept : nullptr;
}

bool Reference_Known(Reference_Source source) {
  return source == Reference_Source::none || Kept(source).has_value();
}

void Choose_Reference(Reference_Source source) {
  if (Reference_Known(source)) chosen = source;
}

std::string Load_Reference_File(const std::string& path) {
  std::string bytes;
  const auto result = platform::Read_Whole_File(path, bytes);
  if (!result.Ok()) return result.reason;
  const auto parsed = Parse_Setting_File(bytes);
  if (!parsed) return path + ": this is no box setting file, which begins with 256 numbers from 0 to 255.";
  file = Reference_Tune{parsed->image, Bare_Name(path), parsed->image[map::dataset]};
  chosen = Reference_Source::file;
  return {};
}

void Note_Box_Image(const Byte_Image& read, int dataset) {
  box = Reference_Tune{read, box_name, dataset};
  box_in_doubt = false;
}

/// Once another box has answered, it does not matter what is sent to that one.
bool Doubt_Box_Image(Box_Doubt doubt) {
  const std::string name = doubt == Box_Doubt::written ? written_box_name : other_box_name;
  if (!box || box->name == name || box->name == other_box_name) return false;
  box_in_doubt = true;
  box->name = name;
  return true;
}

bool Box_Image_Certain() { return box && !box_in_doubt; }

void Note_Opened_Tune() { opened = Reference_Tune{CardByte, opened_name, CardByte[map::dataset]}; }

const std::optional<Reference_Tune>& Opened_Tune() { return opened; }

void Restore_Opened_Tune(std::optional<Reference_Tune> tune) { opened = std::move(tune); }

void Reset_Reference_State() {
  chosen.reset();
  box.reset();
  file.reset();
  opened.reset();
  box_in_doubt = false;
}

}  // namespace kx
