#include "workspace/box_settings.h"

#include <array>

#include "boxlink/link_texts.h"
#include "settings/byte_notes.h"
#include "settings/earlier_tunes.h"
#include "settings/image.h"
#include "settings/ini_file_adm.h"
#include "settings/message.h"
#include "settings/refresh.h"
#include "settings/text_encoding.h"
#include "workspace/choice_rules.h"
#include "workspace/tables.h"

namespace kx {

Shown_Text preset_status;

namespace {

constexpr int first_air_temperature_dataset = 108;
constexpr int bypass_dataset = 106;

constexpr std::string_view offsets_of_each =
    "Injector pulse offset in milliseconds. Master                                  Slave";
constexpr std::string_view offset_of_all = "Injector pulse offset in milliseconds.";

/// What bypass mode leaves in the tables.
struct Table_Reset {
  map::Run run;
  std::uint8_t value;
};
constexpr std::array bypass_tables{Table_Reset{map::ignition_load, 0}, Table_Reset{map::ignition_rpm, 192},
                                   Table_Reset{map::fuel_load, 128},   Table_Reset{map::fuel_rpm, 192},
                                   Table_Reset{map::analog2, 255},     Table_Reset{map::analog1, 255},
                                   Table_Reset{map::pwm_load, 128},    Table_Reset{map::pwm_rpm, 128}};

std::string Joined(const std::vector<int>& bytes) {
  std::string text;
  for (const int byte : bytes) text += (text.empty() ? "" : ", ") + std::to_string(byte);
  return text;
}

/// The lines that describe a byte; bits are those of the tune.
std::string Note_Lines(const Byte_Note& note, std::uint8_t value) {
  std::string text = "  " + note.text + Crlf();
  for (const Bit_Note& bit : note.bits) {
    text += "    " + bit.text;
    if (bit.bit < 8) text += " = " + std::to_string(Get_Byte_bit(value, bit.bit));
    text += Crlf();
  }
  return text;
}

}  // namespace

bool Apply_Preset() {
  Apply_Preset_Mask();
  const std::vector<int> changed = Apply_Preset_Program();
  preset_status.Set(changed.empty() ? "" : "Preset changed bytes: " + Joined(changed));
  return !changed.empty();
}

Config_State Config_Of_Tune() {
  const bool stock_pulses = Choice_Index(Choice_Row_Of("Ext_stock")) == 0;
  const bool individual = Get_Field(map::individual_trim) == 1;
  Config_State state;
  static_cast<Preset_Switches&>(state) = Switches_Of_Mask(Selected_Preset().mask);
  state.Inj_Cal_Frame = state.Inj_Cal_Frame && stock_pulses;
  state.IAT_Fuel_tab = DatasetID >= first_air_temperature_dataset;
  state.Fuel_trim = individual;
  state.pwm1_check = !Boost_Closed_Loop();
  state.Label25 = individual ? offsets_of_each : offset_of_all;
  state.Res_250 = state.An2_Available ? Choice_Row_Of("Res_250").items[1] : "250 RPM";
  return state;
}

void Mod_combo_Chosen(int index) {
  if (Undo_Busy) return;
  const std::string changes = Preset_Changes(index);
  if (Lists_Changes(changes) && !Confirm(changes)) return;
  Keep_Earlier_Tune();
  preset_status.Set("");
  User_Preset = index;
  Write_Key("User_Preset", std::to_string(index));
  Refresh_Whole_Image();
}

bool PassBy_Mode_Button_Click() {
  if (DatasetID != bypass_dataset) {
    Tell("Only selectable with dataset 106 or higher", platform::Icon::none, "Bypass mode");
    return false;
  }
  if (!Ask_Yes_No(
          "This will clear all settings. Make sure that you have saved old settings first. Do you want "
          "to continue?",
          "Enter pass by mode")) {
    return false;
  }
  Keep_Earlier_Tune();
  Choice_Changed(Choice_Row_Of("io_combo"), choice::io_pwm_on_ignb);
  for (const Table_Reset& reset : bypass_tables) CardByte.Fill(reset.run, reset.value);
  Update_All();
  return true;
}

void uncoded_Click() {
  const std::vector<Byte_Note>& notes = Byte_Notes();
  std::string text;
  for (int byte = 0; byte < Byte_Image::size; ++byte) {
    const auto index = static_cast<std::size_t>(byte);
    text += std::to_string(byte) + " " + std::to_string(CardByte[byte]) + Crlf();
    if (index < notes.size()) text += Note_Lines(notes[index], CardByte[byte]);
  }
  uncoded.Set(text);
}

void OKButton_Click() {
  Update_Tabs();
  Update_All();
}

void Reset_Box_Settings() { preset_status.Set(""); }

}  // namespace kx
