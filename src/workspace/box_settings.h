#pragma once

#include <string_view>

#include "settings/presets.h"
#include "settings/shown_text.h"

namespace kx {

/// What of the forms is enabled, shown or captioned by the selected preset and
/// by the tune. The forms ask for it whenever they show themselves, and decide
/// nothing.
///
/// The preset's mask switches the members of Preset_Switches; here Inj_Cal_Frame is on only while the tune
/// extends stock fuel pulses, too.
struct Config_State : Preset_Switches {
  // The same for every preset.
  bool Rpm_Calc_Frame = true;
  bool In_Boost_Frame = true;
  bool Frame3 = false;    ///< unit of the ignition tables
  bool HScroll3 = false;  ///< the RPM indicator is set by gear_shift

  // By the tune.
  bool IAT_Fuel_tab = false;  ///< enabled, from dataset 108
  bool Fuel_trim = false;     ///< an offset for each injector: scroll(36) stands in it, else in Inj_Cal_Frame
  bool pwm1_check = true;     ///< shown: open loop only
  std::string_view Label25;   ///< heading of the injector offsets

  std::string_view Res_250;  ///< caption of the option

  /// On when the frame of the boost control is off.
  [[nodiscard]] bool Label_BoostControl_Notification() const { return !PWM_PID_Frame; }
};

/// The state for the selected preset and the tune as they are now. Throws Failure "Subscript out of range"
/// when the selected preset is outside the list.
[[nodiscard]] Config_State Config_Of_Tune();

/// "Preset changed bytes: " and their numbers, when applying the preset last changed any.
extern Shown_Text preset_status;

/// The head of Update_All: takes dataset and switches of the selected preset and runs its program on the
/// tune. True when a byte has changed, which preset_status then tells.
bool Apply_Preset();

/// The user has chosen entry @p index of Mod_combo. A preset that would change
/// bytes is asked about first; after Cancel the list goes back to User_Preset.
void Mod_combo_Chosen(int index);

/// The button "BY PASS MODE": clears all tables and puts the PWM output on IgnB, with dataset 106 only and
/// after a question. False when the button has to go up again.
[[nodiscard]] bool PassBy_Mode_Button_Click();

/// Shows the tune in uncoded, a line a byte, with what the dataset's description file says of bytes and bits.
void uncoded_Click();

/// Lays out and fills everything again, as the dialog closes.
void OKButton_Click();

void Reset_Box_Settings();

}  // namespace kx
