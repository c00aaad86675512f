#pragma once

#include <array>
#include <string>
#include <string_view>

#include "logging/log_signals.h"

/// What the controls of KX_Log and KX_Log_Setup hold and a log file keeps: the section "[log_settings]".
///
/// Every text here is the file's own bytes (Windows-1252), so that a file comes back as it was; a form
/// converts it with settings/text_encoding when it shows it and when the user has changed it. Numbers that
/// the user types stay texts and are read with Val_Any.
namespace kx {

enum class Speed_Unit { kmh, mph, ms };
enum class Weight_Unit { kg, lbs };
enum class Torque_Unit { Nm, ft_lbs };

constexpr int gear_count = 6;
constexpr int smoothing_count = 2;  ///< 0: rpm, 1: power
constexpr int fuel_limit_count = 5;
constexpr std::string_view auto_scale = "Auto";

/// One row of the setup window, that is one slot, with its two tick boxes in KX_Log.
struct Log_Signal_Row {
  std::string custom_name;    ///< txt_CustomSignalName(r)
  int sensor = -1;            ///< row of Log_Sens_Def_Tab; -1 is none
  bool view = false;          ///< Check_SignalsToView(r)
  bool secondary = false;     ///< Secondary_Check(r)
  bool shown = true;          ///< label, name box and both tick boxes are visible
  bool list_enabled = false;  ///< Log_Sensor_combo(r) is visible and enabled
  std::string kept = "0";     ///< field 8 of the row's line, kept unchanged

  friend bool operator==(const Log_Signal_Row&, const Log_Signal_Row&) = default;
};

/// The values here are those of Load_Default_Log_Settings.
struct Log_Settings {
  std::string txt_Log_Date;  ///< ISO date of a log made here; any text of a file
  std::string txt_Log_Time;  ///< "hh:mm:ss" likewise
  std::string txt_Log_Length = "0.0 s";
  std::string txt_Log_Free_Text = "Enter you comments here";

  std::array<Log_Signal_Row, signal_rows> rows;

  std::string txt_1stYScale_Min{auto_scale};  ///< a number or auto_scale, as the next three
  std::string txt_1stYScale_Max{auto_scale};
  std::string txt_2ndYScale_Min{auto_scale};
  std::string txt_2ndYScale_Max{auto_scale};

  /// Speed at 1000 rpm in the chosen unit: 1 to 6 of the gears, 0 the result of the calculator.
  std::array<std::string, gear_count + 1> txt_Gearing{"26.72", "1", "2", "3", "4", "5", "6"};
  int Gear_option = 4;            ///< 1 to 6; 0 is none
  std::string txt_Speed = "135";  ///< calculator, in the chosen unit
  std::string txt_RPM = "3647";   ///< calculator, rpm

  Speed_Unit Speed_option = Speed_Unit::kmh;
  Weight_Unit Weight_option = Weight_Unit::kg;
  Torque_Unit Torque_option = Torque_Unit::Nm;

  std::string txt_Weight = "1000";  ///< in the chosen unit
  std::string txt_Min_Hp = "20";
  std::string txt_Max_Hp = "500";
  std::string txt_AirResistance = "0";   ///< Cw
  std::string txt_FrontalArea = "2.0";   ///< m2
  std::string txt_AirDensity = "1.225";  ///< kg/m3

  bool check_AutoSave = true;
  std::string txt_Default_Save_Name = "KXLog-";
  bool check_SettingsInLogg = true;
  bool check_LogToFileOnly = false;
  std::string txt_Show_Log_Sek = "5";         ///< width of the live chart, s
  std::string txt_Show_Log_Interval = "0.5";  ///< of the update tick, s

  std::array<std::string, smoothing_count> txt_FIR{"0", "0"};  ///< rows of the moving averages
  bool Fuel_filter_check = false;
  /// Least rpm, raw boost and injection time (ms) to learn from, ratio, raw boost drop a row.
  std::array<std::string, fuel_limit_count> fuel_limits{"3000", "100", "5", "0.7", "-10"};

  std::string Log_Start_String = "a";  ///< starts and resumes the box's stream

  friend bool operator==(const Log_Settings&, const Log_Settings&) = default;
};

/// The one instance that the controls show. Written by the readers below and by the controls.
extern Log_Settings log_settings;

/// Row @p row, 0 to 39. Throws Failure "Subscript out of range" elsewhere, as all that takes a row.
[[nodiscard]] Log_Signal_Row& Signal_Row(int row);

/// Column 1 and 2 of Log_Sens_Tab in file bytes: name of the row's sensor and unit of the row, which is fixed
/// for power, torque, speed and acceleration. Empty without a sensor.
[[nodiscard]] std::string Signal_Sensor_Name(int row);
[[nodiscard]] std::string Signal_Unit(int row);

/// Caption of Check_SignalsToView(row), UTF-8: custom name, " [", unit and "]".
[[nodiscard]] std::string Signal_Caption(int row);

/// What the sections and file names call a unit.
[[nodiscard]] std::string_view Unit_Name(Speed_Unit unit);
[[nodiscard]] std::string_view Unit_Name(Weight_Unit unit);
[[nodiscard]] std::string_view Unit_Name(Torque_Unit unit);

/// "5.0 minutes", caption of Label_Max_Log_Length.
[[nodiscard]] std::string Max_Log_Length_Text();

/// True once settings have been read or loaded; while it is false a control that is being filled changes
/// nothing.
extern bool Log_Settings_Loaded;

/// Names of the present layout and all settings and sensors as built in.
void Load_All_Default_Log_Settings();

/// The rows of the setup: names as @p layout has them, ticks and what is shown.
void Init_Default_Log_Settings_Controls(Log_Layout layout = Log_Layout::current);

/// Everything else that log_settings holds.
void Load_Default_Log_Settings();

/// The built-in sensors, and the sensors of the rows that belong to them.
void Load_Default_Log_Sens_Def();

/// Controls to text: Log_Sens_Def_Text, then Log_Setting_Text.
void Update_All_Log_Setting_Variables();
void Update_Log_Sens_Def();
void Update_Log_Settings();

/// Text to controls: Log_Sens_Def_Text, then Log_Setting_Text. A key that the text lacks leaves its default.
void Read_All_Log_Setting_Variables();
void Read_Log_Sens_Def();
void Read_Log_Settings();

/// Refreshes what shows names and units of the rows.
void Update_Log_Sens_Tab();

void Reset_Log_Settings();

}  // namespace kx
