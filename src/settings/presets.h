#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "settings/image.h"
#include "settings/ini_text.h"

/// Model presets: each names the dataset of a vehicle or box model, switches controls by a mask and forces
/// bytes of the tune by a small program. They come from the "preset_list" lines of the ini file:
/// mask<name>program$spare!spare and a closing pound sign.
namespace kx {

struct Preset {
  std::string name;
  std::string mask;     ///< hex digits, usually 8; the first two are the dataset
  std::string program;  ///< see After_Preset_Program
  std::string spare_3;
  std::string spare_4;
  bool operator==(const Preset&) const = default;
};

/// Never empty: without a line it holds "<No preset in ini file>". Written by Read_Presets.
extern std::vector<Preset> Preset_List;

/// Index into Preset_List, from 0. Written by the start and by Mod_combo.
extern int User_Preset;

[[nodiscard]] Preset Parse_Preset(std::string_view line);

/// Fills Preset_List from the values of the "preset_list" keys. A line without a name or without the two hex
/// digits of a dataset is left out, so that it cannot set dataset 0; such lines are returned.
std::vector<Ini_Fault> Read_Presets(const std::vector<Ini_Value>& lines);

/// The selected preset. Throws Failure "Subscript out of range" when User_Preset is outside the list.
[[nodiscard]] const Preset& Selected_Preset();

/// Dataset of a mask, its first two hex digits, clipped to 0..255.
[[nodiscard]] int Mask_Dataset(std::string_view mask);

/// Four characters "0" or "1" a digit of the mask; what is no hex digit counts as 0.
[[nodiscard]] std::string Mask_Bits(std::string_view mask);

/// "1" or "0" at @p position, from 1, of Mask_Bits; empty beyond its end.
[[nodiscard]] std::string_view Mask_Position(std::string_view bits, int position);

/// What the mask of a preset switches on. Frames and controls are enabled or not, tabs shown or not.
struct Preset_Switches {
  bool PWM_Load_Frame = false;
  bool Rpm_Res_Frame = false;
  bool Frame4 = false;  ///< sequential fuel
  bool gear_shift = false;
  bool Fuel_Load_Base_Frame = false;
  bool AE_Frame = false;
  bool SSTab_PWM = false;  ///< shown
  bool An2_Available = false;
  bool PWM_PID_Frame = false;  ///< its notification label is on when this is off
  bool Inj_Cal_Frame = false;
  bool Enrich_Mode_Frame = false;
  bool config_frame_b = false;
  bool SSTab_Fuel = false;       ///< shown
  bool Sensor_Settings = false;  ///< menu entry, enabled and shown
};

/// A position of the mask and what it switches on: by a "1", and where so marked by a mask that ends before
/// it.
struct Mask_Switch {
  int position;
  bool Preset_Switches::*target;
  bool on_beyond_end = false;
};

/// In ascending order: of two rows with one target the later decides.
inline constexpr std::array mask_switches{
    Mask_Switch{11, &Preset_Switches::PWM_Load_Frame},
    Mask_Switch{16, &Preset_Switches::Rpm_Res_Frame},
    Mask_Switch{18, &Preset_Switches::Frame4},
    Mask_Switch{19, &Preset_Switches::gear_shift},
    Mask_Switch{21, &Preset_Switches::Fuel_Load_Base_Frame},
    Mask_Switch{22, &Preset_Switches::AE_Frame},
    Mask_Switch{23, &Preset_Switches::SSTab_PWM},
    Mask_Switch{26, &Preset_Switches::An2_Available},
    Mask_Switch{27, &Preset_Switches::PWM_PID_Frame},
    Mask_Switch{30, &Preset_Switches::Inj_Cal_Frame},
    Mask_Switch{31, &Preset_Switches::Enrich_Mode_Frame},
    Mask_Switch{32, &Preset_Switches::config_frame_b},
    Mask_Switch{36, &Preset_Switches::SSTab_Fuel, true},
    Mask_Switch{36, &Preset_Switches::Rpm_Res_Frame, true},
    Mask_Switch{40, &Preset_Switches::Sensor_Settings, true},
};

[[nodiscard]] Preset_Switches Switches_Of_Mask(std::string_view mask);

/// The image after a preset program has worked on it. Tokens are parted by commas, the byte pointer starts at
/// 0 and stays within 0..255: "@n" sets it; "s" and a number sets bits, "r" and a number keeps bits, a plain
/// number is stored, each limited to 0..255, and each steps the pointer. What is no number counts as 0. Byte
/// 0 takes each value that is stored in byte 22, whose mirror it is, so that a second run changes nothing.
[[nodiscard]] Byte_Image After_Preset_Program(std::string_view program, Byte_Image image);

/// Takes the dataset of the selected preset's mask into DatasetID.
void Apply_Preset_Mask();

/// Runs the selected preset's program on the tune, makes no history. Returns the bytes that changed.
std::vector<int> Apply_Preset_Program();

/// "These presets will change:" and CR LF, then a line "name: old -> new" for each value token of the preset
/// at list index @p index that differs from the tune. The tune is not changed.
[[nodiscard]] std::string Preset_Changes(int index);

/// True when @p changes, a text of Preset_Changes, holds more than its heading.
[[nodiscard]] bool Lists_Changes(std::string_view changes);

/// Back to a list without lines.
void Reset_Preset_State();

}  // namespace kx
