#include "settings/tune_copy.h"

#include <array>

#include "platform/seams.h"
#include "settings/session.h"
#include "settings/setting_file.h"
#include "settings/text_encoding.h"
#include "settings/tune_origin.h"

namespace kx {
namespace {

struct Label_Row {
  std::string_view key;
  std::string Tune_Copy::*value;
};

/// In UTF-8, unlike the tune before it: a path must come back as it was.
constexpr std::array label_rows{
    Label_Row{"name=", &Tune_Copy::name}, Label_Row{"folder=", &Tune_Copy::folder},
    Label_Row{"origin=", &Tune_Copy::origin}, Label_Row{"time=", &Tune_Copy::time}};

constexpr char end_of_text = '\x1A';

std::string_view Without_Last_Line_Ends(std::string_view text) {
  return text.substr(0, text.find_last_not_of("\r\n") + 1);
}

std::string Print(const Byte_Image& image, std::string_view description) {
  return Print_Setting_File(image, Without_Last_Line_Ends(description));
}

void Take_Label(std::string_view line, Tune_Copy& copy) {
  for (const Label_Row& row : label_rows) {
    if (line.starts_with(row.key)) copy.*row.value = line.substr(row.key.size());
  }
}

}  // namespace

std::string Content_Of_Tune() { return Print(Stamped(CardByte), txt_File_Description.Text()); }

Tune_Copy Copy_Of_Tune() {
  Tune_Copy copy;
  if (const auto tune = Parse_Tune_Copy(Content_Of_Tune())) copy = *tune;
  copy.name = card_data_file;
  copy.folder = card_data_dir;
  copy.origin = tune_source.empty() ? "Not saved yet" : tune_source;
  copy.time = platform::seams.clock->Date_Text() + " " + platform::seams.clock->Time_Text();
  return copy;
}

std::string Print_Tune_Copy(const Tune_Copy& copy) {
  std::string bytes = Print(copy.image, copy.description) + end_of_text + Crlf();
  for (const Label_Row& row : label_rows) bytes += std::string(row.key) + copy.*row.value + Crlf();
  return bytes;
}

std::optional<Tune_Copy> Parse_Tune_Copy(std::string_view bytes) {
  auto tune = Parse_Setting_File(bytes);
  if (!tune) return {};
  Tune_Copy copy;
  copy.image = tune->image;
  copy.description = std::move(tune->description);
  bytes.remove_prefix(Before_End_Of_Text(bytes).size());
  for (const std::string_view line : Lines_Of(bytes)) Take_Label(line, copy);
  return copy;
}

bool Same_Tune(const Tune_Copy& a, const Tune_Copy& b) {
  return a.image == b.image && Without_Last_Line_Ends(a.description) == Without_Last_Line_Ends(b.description);
}

int Differing_Bytes(const Byte_Image& a, const Byte_Image& b) {
  int differing = 0;
  for (int i = 0; i < Byte_Image::size; ++i) differing += a[i] != b[i] ? 1 : 0;
  return differing;
}

}  // namespace kx
