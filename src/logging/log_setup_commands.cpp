#include "logging/log_setup_commands.h"

#include <cmath>

#include "logging/live_log.h"
#include "logging/log_reader.h"
#include "logging/log_state.h"
#include "sensors/log_sensors.h"
#include "settings/message.h"
#include "settings/numbers.h"
#include "settings/text_encoding.h"

namespace kx {
namespace {

/// Units in one m/s as the gears have always been converted; the calculations know a mile more exactly.
constexpr double kmh_in_ms = 3.6;
constexpr double mph_in_ms = 2.237;
constexpr double lbs_in_kg = 2.205;
constexpr int gear_decimals = 2;

/// Its caption does not follow while it is being typed.
constexpr int row_without_following_caption = 18;

double In_One_Ms(Speed_Unit unit) {
  return unit == Speed_Unit::kmh ? kmh_in_ms : unit == Speed_Unit::mph ? mph_in_ms : 1;
}

/// The rows mean something else now, or what is computed from them. While a log runs nothing is computed.
void Read_Rows_Again() {
  if (!Decode_Live_Log_Again()) KX_Log_Data_Read();
}

void Calculate_And_Show() {
  Read_Rows_Again();
  Show_Log(log_view_hooks.show_chart);
  Mark_Log_Unsaved();
}

void Store_And_Calculate() {
  Update_Log_Settings();
  Calculate_And_Show();
}

}  // namespace

void Log_Setup_Opened() { Update_All_Log_Setting_Variables(); }

void cmd_Log_Setup_OK_Click() {
  const std::string before = Log_Sens_Def_Text + Log_Setting_Text;
  Update_All_Log_Setting_Variables();
  if (before != Log_Sens_Def_Text + Log_Setting_Text) Calculate_And_Show();
}

void CancelButton_Click() {
  const Log_Settings before = log_settings;
  const int first = Log_Chart_First;
  const int last = Log_Chart_Last;
  Read_All_Log_Setting_Variables();
  log_settings.txt_Log_Date = before.txt_Log_Date;
  log_settings.txt_Log_Time = before.txt_Log_Time;
  log_settings.txt_Log_Free_Text = before.txt_Log_Free_Text;
  Log_Chart_First = first;
  Log_Chart_Last = last;
  Read_Rows_Again();
  Show_Log(log_view_hooks.show_chart);
}

void Log_Sensor_combo_Click(int row, int index) {
  if (!Log_Settings_Loaded || Signal_Row(row).sensor == index) return;
  Signal_Row(row).sensor = index;
  Update_Log_Sens_Tab();
  Calculate_And_Show();
}

void Custom_Signal_Name_Changed(int row, std::string_view name) {
  const std::string bytes = To_Windows_1252(name);
  if (!Log_Settings_Loaded || From_Windows_1252(Signal_Row(row).custom_name) == name) return;
  Signal_Row(row).custom_name = bytes;
  if (row != row_without_following_caption) Update_Log_Sens_Tab();
  Mark_Log_Unsaved();
}

void Speed_option_Click(Speed_Unit unit) {
  const Speed_Unit before = log_settings.Speed_option;
  if (!Log_Settings_Loaded || unit == before) return;
  for (std::size_t gear = 1; gear <= gear_count; ++gear) {
    log_settings.txt_Gearing[gear] = Converted_Gear(log_settings.txt_Gearing[gear], before, unit);
  }
  log_settings.Speed_option = unit;
  Show_Log(log_view_hooks.show_settings);
  Update_Log_Sens_Tab();
  Calculate_And_Show();
}

void Weight_option_Click(Weight_Unit unit) {
  if (!Log_Settings_Loaded || unit == log_settings.Weight_option) return;
  log_settings.txt_Weight = Converted_Weight(log_settings.txt_Weight, unit);
  log_settings.Weight_option = unit;
  Show_Log(log_view_hooks.show_settings);
  Mark_Log_Unsaved();
}

void Torque_option_Click(Torque_Unit unit) {
  if (!Log_Settings_Loaded || unit == log_settings.Torque_option) return;
  log_settings.Torque_option = unit;
  Update_Log_Sens_Tab();
  Calculate_And_Show();
}

void Gear_option_Click(int gear) {
  if (!Log_Settings_Loaded || gear == log_settings.Gear_option) return;
  log_settings.Gear_option = gear;
  Store_And_Calculate();
}

void Fuel_filter_check_Click(bool on) {
  if (!Log_Settings_Loaded || on == log_settings.Fuel_filter_check) return;
  log_settings.Fuel_filter_check = on;
  Store_And_Calculate();
}

void Log_Setting_Changed() {
  if (Log_Settings_Loaded) Mark_Log_Unsaved();
}

void cmd_Calc_Gearing_Click() {
  const double speed = Round_Whole(Val_Any(log_settings.txt_Speed));
  const double rpm = Round_Whole(Val_Any(log_settings.txt_RPM));
  if (rpm <= 0) return Tell("Enter the engine speed of the gear as a number above 0.");
  log_settings.txt_Gearing[0] = Number_Text(Round_To(speed / rpm * 1000, gear_decimals));
  Show_Log(log_view_hooks.show_settings);
}

void cmd_Import_Default_Sensors_Click() {
  const std::size_t before = Log_Sens_Def_Tab.size();
  Import_Default_Log_Sensors();
  if (Log_Sens_Def_Tab.size() == before) return;
  Show_Log(log_view_hooks.show_settings);
  Update_Log_Sens_Tab();
  Mark_Log_Unsaved();
}

void Restore_signals_view_Click() {
  for (int row = 0; row < signal_rows; ++row) {
    Signal_Row(row).shown = true;
    Signal_Row(row).view = row == 0;
    Signal_Row(row).secondary = false;
  }
  Show_Log(log_view_hooks.show_settings);
  Show_Log(log_view_hooks.show_chart);
  Log_Setting_Changed();
}

std::string Converted_Gear(std::string_view gear, Speed_Unit from, Speed_Unit to) {
  return Number_Text(Round_To(Val_Any(gear) * In_One_Ms(to) / In_One_Ms(from), gear_decimals));
}

std::string Converted_Weight(std::string_view weight, Weight_Unit to) {
  const double given = Val_Any(weight);
  return Number_Text(std::trunc(to == Weight_Unit::lbs ? given * lbs_in_kg : given / lbs_in_kg));
}

}  // namespace kx
