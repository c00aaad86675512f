#pragma once

#include <string>
#include <string_view>

#include "logging/log_settings.h"

/// What the controls of KX_Log_Setup, and those of KX_Log that change the calculations, do. Texts from a
/// control are UTF-8. All act only once settings are loaded and mark the log unsaved.
namespace kx {

/// As KX_Log_Setup opens: what Cancel goes back to.
void Log_Setup_Opened();

/// Stores the settings. The form hides.
void cmd_Log_Setup_OK_Click();

/// Reads the stored settings back. The form hides. Remarks of the log and the rows on show stay.
void CancelButton_Click();

/// Log_Sensor_combo(row): sensor number @p index.
void Log_Sensor_combo_Click(int row, int index);

/// txt_CustomSignalName(row); the captions follow at once, save for row 18, whose caption waits for the next
/// refresh.
void Custom_Signal_Name_Changed(int row, std::string_view name);

/// The option buttons of the units; gears and weight are converted from the unit before.
void Speed_option_Click(Speed_Unit unit);
void Weight_option_Click(Weight_Unit unit);
void Torque_option_Click(Torque_Unit unit);

/// Gear_option(gear), 1 to 6, and the fuel filter.
void Gear_option_Click(int gear);
void Fuel_filter_check_Click(bool on);

/// Any other setting has been changed by its control.
void Log_Setting_Changed();

/// Puts speed at 1000 rpm from txt_Speed and txt_RPM, both as whole numbers, into txt_Gearing(0).
void cmd_Calc_Gearing_Click();

/// Adds the built-in sensors that are missing; also Omport_default_sensors.
void cmd_Import_Default_Sensors_Click();

/// Shows all rows, ticks as built in.
void Restore_signals_view_Click();

/// Text of a gear in @p to for one in @p from, 2 decimals.
[[nodiscard]] std::string Converted_Gear(std::string_view gear, Speed_Unit from, Speed_Unit to);

/// Text of a weight in the other unit @p to, its whole part.
[[nodiscard]] std::string Converted_Weight(std::string_view weight, Weight_Unit to);

}  // namespace kx
