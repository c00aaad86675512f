#include "settings/byte_notes.h"

#include <optional>

#include "platform/files.h"
#include "settings/image.h"
#include "settings/session.h"
#include "settings/text_encoding.h"

namespace kx {
namespace {

struct Notes_File {
  std::string path;
  std::vector<Byte_Note> notes;
};
std::optional<Notes_File> last_read;

/// Digit of a line such as "bit 3 Slave mode"; nothing for any other line.
std::optional<int> Bit_Of_Line(std::string_view line) {
  constexpr std::size_t digit_position = 4;
  if (!line.starts_with("bit") || line.size() <= digit_position) return {};
  const char digit = line[digit_position];
  if (digit < '0' || digit > '9') return {};
  return digit - '0';
}

}  // namespace

std::vector<Byte_Note> Parse_Byte_Notes(std::string_view bytes) {
  std::vector<Byte_Note> notes;
  for (const std::string_view line : Lines_Of(Before_End_Of_Text(bytes))) {
    const auto bit = Bit_Of_Line(line);
    if (!bit) {
      if (notes.size() == map::image_size) break;
      notes.push_back({From_Windows_1252(line), {}});
    } else if (!notes.empty()) {
      notes.back().bits.push_back({*bit, From_Windows_1252(line)});
    }
  }
  return notes;
}

const std::vector<Byte_Note>& Byte_Notes() {
  const std::string path = start_dir + "DatasetID" + std::to_string(DatasetID) + ".txt";
  if (!last_read || last_read->path != path) {
    std::string bytes;
    if (!platform::Read_Whole_File(path, bytes).Ok()) bytes.clear();
    last_read = {path, Parse_Byte_Notes(bytes)};
  }
  return last_read->notes;
}

std::string Byte_Name(int byte_index) {
  const auto& notes = Byte_Notes();
  const auto index = static_cast<std::size_t>(byte_index);
  return index < notes.size() && !notes[index].text.empty() ? notes[index].text : std::to_string(byte_index);
}

void Reset_Byte_Notes_State() { last_read.reset(); }

}  // namespace kx
