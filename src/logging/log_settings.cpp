#include "logging/log_settings.h"

#include <algorithm>

#include "logging/log_array.h"
#include "logging/log_state.h"
#include "sensors/log_sensors.h"
#include "settings/failure.h"
#include "settings/numbers.h"
#include "settings/text_encoding.h"

namespace kx {
namespace {

constexpr double seconds_a_minute = 60;

/// Sensors that the built-in settings give to rows @p first to @p last.
struct Default_Sensors {
  int first;
  int last;
  int sensor;
};
constexpr std::array<Default_Sensors, 8> default_sensors{
    {{0, 0, 0}, {1, 3, 3}, {4, 4, 1}, {5, 7, 2}, {8, 8, 1}, {9, 12, 3}, {13, 25, 5}, {26, 34, 1}}};

int Default_Sensor(int row) {
  for (const Default_Sensors& range : default_sensors) {
    if (row >= range.first && row <= range.last) return range.sensor;
  }
  return -1;
}

/// True for the signals of the box's rows and for the duty cycles, which take the gain of their sensor.
bool Takes_A_Sensor(int row) {
  const int slot = row + 1;
  return slot <= Slot_Of(Log_Signal::AN4_Slave, Log_Layout::current) ||
         slot == Slot_Of(Log_Signal::IN_Fuel_DC, Log_Layout::current) ||
         slot == Slot_Of(Log_Signal::TOT_Fuel_DC, Log_Layout::current);
}

Log_Signal_Row Default_Row(int row, Log_Layout layout) {
  Log_Signal_Row result;
  result.custom_name = Default_Signal_Name(row, layout);
  result.sensor = Default_Sensor(row);
  result.view = row == 0;
  result.shown = result.custom_name != "Option";
  result.list_enabled = result.shown && Takes_A_Sensor(row);
  return result;
}

/// Unit of a row that no sensor gives; empty for all others.
std::string_view Fixed_Unit(int row) {
  const auto is = [row](Log_Signal signal) { return row + 1 == Slot_Of(signal); };
  if (is(Log_Signal::POWER)) return "hp";
  if (is(Log_Signal::TORQUE)) return Unit_Name(log_settings.Torque_option);
  if (is(Log_Signal::SPEED)) return Unit_Name(log_settings.Speed_option);
  return is(Log_Signal::ACCELERATION) ? "m/s^2" : "";
}

}  // namespace

Log_Settings log_settings;
bool Log_Settings_Loaded = false;

Log_Signal_Row& Signal_Row(int row) {
  if (row < 0 || row >= signal_rows) Fail_Subscript();
  return log_settings.rows[static_cast<std::size_t>(row)];
}

std::string Signal_Sensor_Name(int row) {
  const Log_Sensor* sensor = Find_Log_Sensor(Signal_Row(row).sensor);
  return sensor != nullptr ? sensor->name : "";
}

std::string Signal_Unit(int row) {
  const Log_Sensor* sensor = Find_Log_Sensor(Signal_Row(row).sensor);
  const std::string_view fixed = Fixed_Unit(row);
  if (!fixed.empty()) return std::string(fixed);
  return sensor != nullptr ? sensor->unit : "";
}

std::string Signal_Caption(int row) {
  return From_Windows_1252(Signal_Row(row).custom_name + " [" + Signal_Unit(row) + "]");
}

std::string_view Unit_Name(Speed_Unit unit) {
  return unit == Speed_Unit::kmh ? "km/h" : unit == Speed_Unit::mph ? "mph" : "m/s";
}

std::string_view Unit_Name(Weight_Unit unit) { return unit == Weight_Unit::kg ? "kg" : "lbs"; }

std::string_view Unit_Name(Torque_Unit unit) { return unit == Torque_Unit::Nm ? "Nm" : "ft-lbs"; }

std::string Max_Log_Length_Text() {
  return Format(log_capacity * log_row_seconds / seconds_a_minute, "0.0") + " minutes";
}

void Init_Default_Log_Settings_Controls(Log_Layout layout) {
  for (int row = 0; row < signal_rows; ++row) Signal_Row(row) = Default_Row(row, layout);
}

void Load_Default_Log_Settings() {
  Log_Settings_Loaded = false;
  auto rows = log_settings.rows;
  log_settings = {};
  log_settings.rows = std::move(rows);
  Log_New_Version = Log_New_Format = true;
  Log_Settings_Loaded = true;
}

void Load_Default_Log_Sens_Def() {
  Log_Sens_Def_Tab = Parse_Log_Sensors(Default_Log_Sensor_Block());
  for (int row = 0; row < signal_rows; ++row) Signal_Row(row).sensor = Default_Sensor(row);
  Update_Log_Sens_Def();
  Log_Settings_Loaded = true;
}

void Load_All_Default_Log_Settings() {
  Load_Default_Signal_Names();
  Init_Default_Log_Settings_Controls();
  Load_Default_Log_Settings();
  Load_Default_Log_Sens_Def();
  Update_Log_Settings();
  Show_Log(log_view_hooks.show_settings);
}

void Update_All_Log_Setting_Variables() {
  Update_Log_Sens_Def();
  Update_Log_Settings();
}

void Read_All_Log_Setting_Variables() {
  Read_Log_Sens_Def();
  Read_Log_Settings();
}

void Update_Log_Sens_Def() { Log_Sens_Def_Text = Print_Log_Sensors(Log_Sens_Def_Tab); }

void Read_Log_Sens_Def() { Log_Sens_Def_Tab = Parse_Log_Sensors(Log_Sens_Def_Text); }

void Update_Log_Sens_Tab() { Show_Log(log_view_hooks.show_names); }

void Reset_Log_Settings() {
  log_settings = {};
  Log_Settings_Loaded = false;
  Reset_Log_Sensors();
}

}  // namespace kx
