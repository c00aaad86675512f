#include "settings/presets.h"

#include <algorithm>
#include <functional>
#include <utility>

#include "settings/byte_notes.h"
#include "settings/field_text.h"
#include "settings/numbers.h"
#include "settings/text_encoding.h"

namespace kx {
namespace {

constexpr std::string_view changes_heading = "These presets will change:";

Preset Placeholder() { return {"<No preset in ini file>", "68000000", "", "", ""}; }

int Byte_Of_Number(std::string_view text) {
  return static_cast<int>(Round_Whole(std::clamp(Val_Any(text), 0.0, 255.0)));
}

std::string_view Trimmed(std::string_view text) {
  const std::size_t first = text.find_first_not_of(' ');
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

std::string_view Take_Token(std::string_view& program) {
  const std::size_t comma = program.find(',');
  const std::string_view token = program.substr(0, comma);
  program.remove_prefix(comma == std::string_view::npos ? program.size() : comma + 1);
  return Trimmed(token);
}

/// What a value token makes of @p old.
std::uint8_t New_Value(std::string_view token, std::uint8_t old) {
  const char kind = token.empty() ? '\0' : token[0];
  if (kind == 's') return static_cast<std::uint8_t>(old | Byte_Of_Number(token.substr(1)));
  if (kind == 'r') return static_cast<std::uint8_t>(old & Byte_Of_Number(token.substr(1)));
  return static_cast<std::uint8_t>(Byte_Of_Number(token));
}

/// Calls @p take with byte and new value for each value token, in order. The new value is made from @p image
/// as it is at that moment, so what @p take changes in it counts for the tokens behind.
void Work_Program(std::string_view program, const Byte_Image& image,
                  const std::function<void(int, std::uint8_t)>& take) {
  int pointer = 0;
  while (!program.empty()) {
    const std::string_view token = Take_Token(program);
    if (token.starts_with('@')) {
      pointer = Byte_Of_Number(token.substr(1));
      continue;
    }
    take(pointer, New_Value(token, image[pointer]));
    pointer = std::min(pointer + 1, Byte_Image::size - 1);
  }
}

bool Names_Dataset(std::string_view mask) {
  constexpr std::string_view digits = "0123456789ABCDEFabcdef";
  return mask.size() >= 2 && mask.substr(0, 2).find_first_not_of(digits) == std::string_view::npos;
}

const Preset& Preset_At(int index) {
  if (index < 0 || index >= static_cast<int>(Preset_List.size())) Fail_Subscript();
  return Preset_List[static_cast<std::size_t>(index)];
}

}  // namespace

std::vector<Preset> Preset_List{Placeholder()};
int User_Preset = 0;

Preset Parse_Preset(std::string_view line) {
  // An editor that saves UTF-8 makes two characters of the closing one.
  const char* end = line.ends_with("Â£") ? "Â£" : "£";
  return {Get_Between(line, "<", ">"), Get_Between(line, "", "<"), Get_Between(line, ">", "$"),
          Get_Between(line, "$", "!"), Get_Between(line, "!", end)};
}

std::vector<Ini_Fault> Read_Presets(const std::vector<Ini_Value>& lines) {
  std::vector<Ini_Fault> faults;
  Preset_List.clear();
  for (const Ini_Value& line : lines) {
    Preset preset = Parse_Preset(line.text);
    if (preset.name.empty() || !Names_Dataset(preset.mask)) {
      faults.push_back({line.line, "this is no preset and is left out."});
    } else {
      Preset_List.push_back(std::move(preset));
    }
  }
  if (Preset_List.empty()) Preset_List.push_back(Placeholder());
  return faults;
}

const Preset& Selected_Preset() { return Preset_At(User_Preset); }

int Mask_Dataset(std::string_view mask) { return std::clamp(Hex_Byte(mask), 0, 255); }

std::string Mask_Bits(std::string_view mask) {
  std::string bits;
  for (std::size_t i = 0; i < mask.size(); ++i) {
    const int digit = Hex_Digit(mask.substr(i));
    const std::string digits = digit <= 15 ? Dec2Bin(digit) : std::string();
    bits += std::string(4 - digits.size(), '0') + digits;
  }
  return bits;
}

std::string_view Mask_Position(std::string_view bits, int position) {
  const auto index = static_cast<std::size_t>(position - 1);
  return position >= 1 && index < bits.size() ? bits.substr(index, 1) : std::string_view();
}

Preset_Switches Switches_Of_Mask(std::string_view mask) {
  const std::string bits = Mask_Bits(mask);
  Preset_Switches switches;
  for (const Mask_Switch& row : mask_switches) {
    const std::string_view bit = Mask_Position(bits, row.position);
    switches.*row.target = bit == "1" || (bit.empty() && row.on_beyond_end);
  }
  return switches;
}

Byte_Image After_Preset_Program(std::string_view program, Byte_Image image) {
  Work_Program(program, image, [&image](int byte, std::uint8_t value) {
    image[byte] = value;
    if (byte == map::flags_c) image[map::mirror] = value;
  });
  return image;
}

void Apply_Preset_Mask() { DatasetID = static_cast<std::int16_t>(Mask_Dataset(Selected_Preset().mask)); }

std::vector<int> Apply_Preset_Program() {
  const Byte_Image before =
      std::exchange(CardByte, After_Preset_Program(Selected_Preset().program, CardByte));
  std::vector<int> changed;
  for (int i = 0; i < Byte_Image::size; ++i) {
    if (CardByte[i] != before[i]) changed.push_back(i);
  }
  return changed;
}

std::string Preset_Changes(int index) {
  std::string text = std::string(changes_heading) + Crlf();
  Work_Program(Preset_At(index).program, CardByte, [&text](int byte, std::uint8_t value) {
    const std::uint8_t old = CardByte[byte];
    if (value == old) return;
    text += Byte_Name(byte) + ": " + std::to_string(old) + " -> " + std::to_string(value) + Crlf();
  });
  return text;
}

bool Lists_Changes(std::string_view changes) {
  return changes.size() > changes_heading.size() + Crlf().size();
}

void Reset_Preset_State() {
  Preset_List = {Placeholder()};
  User_Preset = 0;
}

}  // namespace kx
