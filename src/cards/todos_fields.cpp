#include "cards/card_texts.h"
#include "cards/chipdrive.h"
#include "cards/todos_steps.h"
#include "settings/numbers.h"

namespace kx::todos {

Shown_Text TRAdd;
Shown_Text ReadData;
Shown_Text TWAdd;
Shown_Text WriteData;
Shown_Text writelength;
std::array<Shown_Text, 3> pin;
std::array<Shown_Text, 3> new_pin;
Shown_Text MemAddress;
Shown_Text MemStatus;
Shown_Text result;
Shown_Text output;

void Set_Result(std::string_view text) {
  result.Set(text);
  txt_TodosStatus.Set(text);
  Card_Status = text;
}

const Card_Type& Chosen_Type() { return card_types.at(card_type); }

bool Has_Pin() { return Chosen_Type().pin_bytes > 0; }

bool ReadPBFlag() { return Has_Pin(); }

bool WritePBFlag() { return Has_Pin(); }

std::optional<std::int32_t> Number_In(const Shown_Text& text, int lowest, int highest) {
  const auto number = Whole_Number_Text(text.Text());
  if (!number || *number < lowest || *number > highest) return std::nullopt;
  const auto whole = static_cast<std::int32_t>(*number);
  if (whole != *number) return std::nullopt;
  return whole;
}

void Reset_Fields() {
  for (Shown_Text* text : {&WriteData, &writelength, &MemAddress, &MemStatus, &output}) text->Set("");
  for (Shown_Text* text : {&TRAdd, &TWAdd}) text->Set("0");
  ReadData.Set("256");
  for (Shown_Text& byte : pin) byte.Set("A5");
  for (Shown_Text& byte : new_pin) byte.Set("");
  Set_Result("");
}

}  // namespace kx::todos
