#include <algorithm>
#include <functional>
#include <vector>

#include "logging/log_settings.h"
#include "logging/log_state.h"
#include "settings/numbers.h"
#include "settings/section_text.h"
#include "settings/text_encoding.h"

/// The section "[log_settings]": one table of its lines serves reader and writer.
namespace kx {
namespace {

constexpr std::string_view present_version = "3.5";
constexpr std::string_view old_version = "3.4";
constexpr std::string_view start_string_of_old_settings = "La";

/// One field of a line: its text, and what a text of a file changes.
struct Field {
  std::function<std::string(const Log_Settings&)> print;
  std::function<void(Log_Settings&, std::string_view)> read;
};

struct Line {
  std::string_view key;  ///< with its "="
  std::vector<Field> fields;
  bool trailing_tab = false;
};

/// @p text fit for one field: what would end the field or the line is a blank.
std::string One_Field(std::string_view text) {
  std::string field(text);
  std::replace_if(
      field.begin(), field.end(), [](char c) { return c == '\t' || c == '\r' || c == '\n' || c == '\x1A'; },
      ' ');
  return field;
}

std::string Number_Field(std::string_view text) {
  std::string field = One_Field(text);
  std::replace(field.begin(), field.end(), ',', '.');
  return field;
}

bool Is_On(std::string_view text) { return Val_Any(text) != 0; }

Field Text(std::string Log_Settings::*member) {
  return {[member](const Log_Settings& settings) { return One_Field(settings.*member); },
          [member](Log_Settings& settings, std::string_view text) { settings.*member = text; }};
}

Field Number(std::string Log_Settings::*member) {
  return {[member](const Log_Settings& settings) { return Number_Field(settings.*member); },
          [member](Log_Settings& settings, std::string_view text) { settings.*member = text; }};
}

/// Element @p index of an array of numbers; with @p keeps_default an empty field leaves what is there.
template <std::size_t size>
Field Number(std::array<std::string, size> Log_Settings::*member, std::size_t index,
             bool keeps_default = false) {
  return {[=](const Log_Settings& settings) { return Number_Field((settings.*member)[index]); },
          [=](Log_Settings& settings, std::string_view text) {
            if (!text.empty() || !keeps_default) (settings.*member)[index] = text;
          }};
}

Field Flag(bool Log_Settings::*member) {
  return {[member](const Log_Settings& settings) { return settings.*member ? "1" : "0"; },
          [member](Log_Settings& settings, std::string_view text) { settings.*member = Is_On(text); }};
}

/// A unit by its name; another name leaves what is there.
template <typename Unit>
Field Choice(Unit Log_Settings::*member, std::vector<Unit> units) {
  return {[member](const Log_Settings& settings) { return std::string(Unit_Name(settings.*member)); },
          [=](Log_Settings& settings, std::string_view text) {
            for (const Unit unit : units) {
              if (Unit_Name(unit) == text) settings.*member = unit;
            }
          }};
}

Field Selected_Gear() {
  return {[](const Log_Settings& settings) { return std::to_string(settings.Gear_option); },
          [](Log_Settings& settings, std::string_view text) {
            const double gear = Round_Whole(Val_Any(text));
            if (gear >= 1 && gear <= gear_count) settings.Gear_option = static_cast<int>(gear);
          }};
}

Field Start_String() {
  return {[](const Log_Settings& settings) { return One_Field(settings.Log_Start_String); },
          [](Log_Settings& settings, std::string_view text) {
            settings.Log_Start_String = text.empty() ? start_string_of_old_settings : text;
          }};
}

/// A border of the chart, which is no setting but state of the view.
Field Chart_Row(int& row) {
  return {[&row](const Log_Settings&) { return std::to_string(row); },
          [&row](Log_Settings&, std::string_view text) {
            const double wanted = Round_Whole(Val_Any(text));
            if (text != auto_scale && wanted >= 1 && wanted <= INT16_MAX) row = static_cast<int>(wanted);
          }};
}

Line Gearing_Line() {
  Line line{"Log_Gearing=", {}, true};
  for (std::size_t gear = 1; gear <= gear_count; ++gear) {
    line.fields.push_back(Number(&Log_Settings::txt_Gearing, gear));
  }
  line.fields.push_back(Selected_Gear());
  line.fields.push_back(Number(&Log_Settings::txt_Speed));
  line.fields.push_back(Number(&Log_Settings::txt_RPM));
  return line;
}

Line Smoothing_Line() {
  Line line{"Log_Signal_Smoothing=", {}};
  for (std::size_t i = 0; i < smoothing_count; ++i) line.fields.push_back(Number(&Log_Settings::txt_FIR, i));
  line.fields.push_back(Flag(&Log_Settings::Fuel_filter_check));
  for (std::size_t i = 0; i < fuel_limit_count; ++i) {
    line.fields.push_back(Number(&Log_Settings::fuel_limits, i, true));
  }
  return line;
}

Line Power_Line() {
  const Field unused{[](const Log_Settings&) { return std::string(); },
                     [](Log_Settings&, std::string_view) {}};
  return {"Log_Hp=",
          {Number(&Log_Settings::txt_Weight), Number(&Log_Settings::txt_Min_Hp),
           Number(&Log_Settings::txt_Max_Hp), unused, Number(&Log_Settings::txt_AirResistance),
           Number(&Log_Settings::txt_FrontalArea), Number(&Log_Settings::txt_AirDensity)}};
}

/// The lines behind those of the signals, in their order.
std::vector<Line> Setting_Lines() {
  using S = Log_Settings;
  return {{"Log_Scale=",
           {Number(&S::txt_1stYScale_Min), Number(&S::txt_1stYScale_Max), Number(&S::txt_2ndYScale_Min),
            Number(&S::txt_2ndYScale_Max)},
           true},
          {"Log_Zoom=", {Chart_Row(Log_Chart_First), Chart_Row(Log_Chart_Last)}},
          Gearing_Line(),
          {"Log_Speed_Unit=", {Choice(&S::Speed_option, {Speed_Unit::kmh, Speed_Unit::mph, Speed_Unit::ms})}},
          {"Log_Weight_Unit=", {Choice(&S::Weight_option, {Weight_Unit::kg, Weight_Unit::lbs})}},
          {"Log_Torque_Unit=", {Choice(&S::Torque_option, {Torque_Unit::Nm, Torque_Unit::ft_lbs})}},
          Power_Line(),
          {"Log_AutoSave=", {Flag(&S::check_AutoSave), Text(&S::txt_Default_Save_Name)}},
          {"Log_SettingsInLog=", {Flag(&S::check_SettingsInLogg)}},
          {"Log_To_File_Only=", {Flag(&S::check_LogToFileOnly)}},
          {"Log_Time_Interval=", {Number(&S::txt_Show_Log_Sek), Number(&S::txt_Show_Log_Interval)}},
          Smoothing_Line(),
          {"Log_Start_String=", {Start_String()}}};
}

std::string Print_Line(const Line& line, const Log_Settings& settings) {
  std::string text(line.key);
  for (std::size_t i = 0; i < line.fields.size(); ++i) {
    if (i > 0) text += '\t';
    text += line.fields[i].print(settings);
  }
  return text + (line.trailing_tab ? "\t" : "") + Crlf();
}

/// "Log_Def0=" to "Log_Def39=".
std::string Print_Signal_Line(int number) {
  const Log_Signal_Row& row = Signal_Row(number);
  const std::string name(row.custom_name.empty() ? Default_Signal_Name(number) : row.custom_name);
  const auto flag = [](bool on) { return on ? "\t1" : "\t0"; };
  return "Log_Def" + std::to_string(number) + "=" + One_Field(name) + "\t" + std::to_string(row.sensor) +
         "\t" + One_Field(Signal_Sensor_Name(number)) + flag(row.view) + flag(row.secondary) +
         flag(row.shown) + flag(row.list_enabled) + "\t" + One_Field(row.kept) + Crlf();
}

/// The free text in one line: a line end is a blank, ";" ends it.
std::string Print_Description(std::string_view text) {
  std::string line;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text.substr(i, 2) != "\r\n") line += text[i];
  }
  return One_Field(line) + ";";
}

std::string Print_Head(const Log_Settings& settings) {
  return "Log_File_Name=" + One_Field(To_Windows_1252(Log_File_Name)) + Crlf() +
         "Log_Date=" + One_Field(settings.txt_Log_Date) + Crlf() +
         "Log_Time=" + One_Field(settings.txt_Log_Time) + Crlf() +
         "Log_Length=" + Number_Field(settings.txt_Log_Length) + Crlf() +
         "Log_Description=" + Print_Description(settings.txt_Log_Free_Text) + Crlf() +
         "Log_File_Version=" + std::string(Log_New_Version ? present_version : old_version) + Crlf();
}

/// Reads lines of the section's text; a key counts at the head of a line only, for a free text may hold any
/// word. Notes the first field that a line lacks.
class Section_Reader {
 public:
  explicit Section_Reader(std::string_view text) : text_(text) {}

  [[nodiscard]] std::optional<std::string> Value(std::string_view key, int occurrence = 1) const {
    return Setting_Value(text_, Crlf() + std::string(key), occurrence);
  }
  [[nodiscard]] std::optional<std::string> Field_Of(std::string_view value, int number) {
    const auto field = Setting_Field(value, number);
    if (!field && missing_ == 0) missing_ = number;
    return field ? std::optional<std::string>(*field) : std::nullopt;
  }
  [[nodiscard]] std::string Single(std::string_view key) const {
    return std::string(Setting_Field(Value(key).value_or(""), 1).value_or(""));
  }

  /// One box for all, however damaged the text is.
  void Tell_Missing() const {
    if (missing_ != 0) Tell_Missing_Field(missing_);
  }

 private:
  std::string_view text_;
  int missing_ = 0;
};

int Sensor_Number(std::string_view text) {
  const double number = Round_Whole(Val_Any(text));
  return text.empty() || number < 0 || number > INT16_MAX ? -1 : static_cast<int>(number);
}

/// False when the line is missing or has no name, which ends the rows.
bool Read_Signal_Line(Section_Reader& reader, int number, Log_Signal_Row& row) {
  const auto value = reader.Value("Log_Def", number + 1);
  const std::string name(Setting_Field(value.value_or(""), 1).value_or(""));
  if (name.empty()) return false;
  const auto field = [&](int n) { return reader.Field_Of(*value, n).value_or(""); };
  row.custom_name = name;
  row.sensor = Sensor_Number(field(2));
  row.view = Is_On(field(4));
  row.secondary = Is_On(field(5));
  row.shown = field(6) != "0";
  row.list_enabled = field(7) == "1";
  row.kept = field(8);
  return true;
}

void Read_Line(Section_Reader& reader, const Line& line, Log_Settings& settings) {
  const auto value = reader.Value(line.key);
  if (!value) return;
  for (std::size_t i = 0; i < line.fields.size(); ++i) {
    const auto field = reader.Field_Of(*value, static_cast<int>(i) + 1);
    if (field) line.fields[i].read(settings, *field);
  }
}

Log_Settings Settings_Of(Section_Reader& reader) {
  Log_Settings settings;
  settings.rows = log_settings.rows;
  settings.txt_Gearing[0] = log_settings.txt_Gearing[0];
  settings.txt_Log_Date = reader.Single("Log_Date=");
  settings.txt_Log_Time = reader.Single("Log_Time=");
  settings.txt_Log_Length = reader.Single("Log_Length=");
  settings.txt_Log_Free_Text = reader.Single("Log_Description=");
  settings.Log_Start_String = start_string_of_old_settings;
  for (int row = 0; row < signal_rows; ++row) {
    if (!Read_Signal_Line(reader, row, settings.rows[static_cast<std::size_t>(row)])) break;
  }
  for (const Line& line : Setting_Lines()) Read_Line(reader, line, settings);
  return settings;
}

/// A log of the old box and its program: the calculated signals move behind the longer rows of the present
/// one.
void Convert_Old_2_New_Default_Signal_Names() {
  constexpr int first = 15;
  constexpr int last = 21;
  constexpr int step = 5;
  for (int row = last; row >= first; --row) Signal_Row(row + step) = Signal_Row(row);
  for (int row = 0; row < signal_rows; ++row) {
    const bool freed = (row >= 13 && row <= 19) || row >= 30;
    if (freed) Signal_Row(row) = {"Option", 1, false, false, false, false, Signal_Row(row).kept};
  }
}

/// What version and rows make of the layout.
void Choose_Layout(bool present) {
  const bool short_rows = Is_Short_Row(Log_Field_Count);
  Log_New_Format = present && !short_rows;
  Log_New_Version = present || short_rows;
  Load_Default_Signal_Names();
  if (!short_rows) return;
  Load_Old_Signal_Positions_InLogDataArray();
  if (!present) Convert_Old_2_New_Default_Signal_Names();
}

}  // namespace

void Update_Log_Settings() {
  Log_Setting_Text = "[log_settings]" + Crlf() + Print_Head(log_settings);
  for (int row = 0; row < signal_rows; ++row) Log_Setting_Text += Print_Signal_Line(row);
  for (const Line& line : Setting_Lines()) Log_Setting_Text += Print_Line(line, log_settings);
  Log_Setting_Text += "[end log_settings]";
}

void Read_Log_Settings() {
  Log_Settings_Loaded = false;
  Section_Reader reader(Log_Setting_Text);
  Init_Default_Log_Settings_Controls();
  log_settings = Settings_Of(reader);
  Choose_Layout(reader.Single("Log_File_Version=") == present_version);
  constexpr int count_of_present_layout = 35;
  if (Signal_Count() < count_of_present_layout) Update_Log_Settings();
  Log_Settings_Loaded = true;
  Show_Log(log_view_hooks.show_settings);
  Update_Log_Sens_Tab();
  reader.Tell_Missing();
}

}  // namespace kx
