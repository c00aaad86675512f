#include "workspace/sensor_editor.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "sensors/conversion.h"
#include "sensors/definition_file.h"
#include "sensors/definition_store.h"
#include "sensors/load_axes.h"
#include "sensors/log_sensors.h"
#include "settings/failure.h"
#include "settings/ini_file_adm.h"
#include "settings/message.h"
#include "settings/numbers.h"
#include "settings/presets.h"
#include "settings/refresh.h"
#include "settings/text_encoding.h"
#include "workspace/cell_editing.h"
#include "workspace/table_arithmetic.h"

namespace kx {

Shown_Text txt_SensorName;
Shown_Text txt_SensorUnit;
Shown_Text txt_SensorInUnit;
Shown_Text txt_SensorDecimals;
Shown_Text txt_SensorGain;
Shown_Text txt_SensorOffset;
Shown_Text txt_SensorMin;
Shown_Text txt_SensorMax;
Shown_Text txt_Sensor_Def;
Shown_Text Sensor_set_table_text;
Shown_Text Sensor_scale_table_text;
Grid Sensor_grid;
Chart Sensor_chart;
std::function<void()> sensor_editor_changed;

namespace {

constexpr int raw_column = 0;
constexpr int percent_column = 1;
constexpr int value_column = 2;
constexpr int counts_a_point = 8;
constexpr double full_scale = 256;   ///< raw count that the last value stands at
constexpr int assumed_decimals = 2;  ///< while the box of the decimals holds no number
constexpr int most_shown = 2;        ///< decimals in the grid, and those of a step
constexpr const char* log_only_kind = "Linear2c";

/// What is edited. The grid shows the values in a format; their full texts stand here.
struct State {
  Editing editing = Editing::nothing;
  Sensor_Values values;
  std::optional<Log_Sensor> only_viewed;  ///< of a kind that has a curve but cannot be edited
  std::string opened;                     ///< name of the tune sensor that is edited; empty for none
  std::string shown_line;                 ///< definition line before the first edit
};
State state;

/// A box of the definition and its place in a draft.
struct Box {
  Shown_Text* text;
  std::string Sensor_Draft::*field;
};
constexpr std::array boxes{
    Box{&txt_SensorName, &Sensor_Draft::name},         Box{&txt_SensorUnit, &Sensor_Draft::unit},
    Box{&txt_SensorInUnit, &Sensor_Draft::input_unit}, Box{&txt_SensorDecimals, &Sensor_Draft::decimals},
    Box{&txt_SensorGain, &Sensor_Draft::gain},         Box{&txt_SensorOffset, &Sensor_Draft::offset},
    Box{&txt_SensorMin, &Sensor_Draft::minimum},       Box{&txt_SensorMax, &Sensor_Draft::maximum}};

std::string Value_Mask() { return Sensor_Decimals() < most_shown ? "00.0" : "0.00"; }

/// Nothing before there is a unit.
std::string Unit_Title() { return txt_SensorUnit.Text().empty() ? "" : "[" + txt_SensorUnit.Text() + "]"; }

Sensor_Draft Draft() {
  Sensor_Draft draft;
  draft.linear = state.editing == Editing::linear;
  for (const Box& box : boxes) draft.*box.field = box.text->Text();
  draft.values = state.values;
  return draft;
}

/// Values of the straight line in the boxes.
Sensor_Values Line_Values() {
  Sensor sensor;
  sensor.kind = "Linear";
  sensor.gain = Val_Any(txt_SensorGain.Text());
  sensor.offset = Val_Any(txt_SensorOffset.Text());
  sensor.minimum = Val_Any(txt_SensorMin.Text());
  sensor.maximum = Val_Any(txt_SensorMax.Text());
  Sensor_Values values;
  for (int i = 0; i < table_points; ++i) {
    double raw = counts_a_point * i;
    values[static_cast<std::size_t>(i)] = Number_Text(Forward_Value(sensor, {}, raw).value_or(0));
  }
  return values;
}

Sensor_Values Viewed_Values(const Log_Sensor& sensor) {
  Sensor_Values values;
  for (int i = 0; i < table_points; ++i) {
    const double raw = std::min(counts_a_point * i, 255);
    values[static_cast<std::size_t>(i)] = Format(Log_Sensor_Value(sensor, raw), "");
  }
  return values;
}

std::string Shown(const std::string& value) {
  return value.empty() ? "" : Format(Val_Any(value), Value_Mask());
}

void Fill_Grid() {
  Sensor_grid.Resize(table_points + 1, value_column + 1);
  Sensor_grid.Set_Row_Texts(0, {"Raw", "[%]", Unit_Title()});
  for (int row = 1; row <= table_points; ++row) {
    const int raw = counts_a_point * (row - 1);
    Sensor_grid.Set_Text(row, raw_column, std::to_string(raw));
    Sensor_grid.Set_Text(row, percent_column, Format(raw * 100 / full_scale, "0.0"));
    Sensor_grid.Set_Text(row, value_column, Shown(state.values[static_cast<std::size_t>(row - 1)]));
  }
}

/// The curve of the values behind Sensor_grid.
void Show_In_Diagram() {
  Sensor_chart = {};
  Sensor_chart.axis_title = "[%]";
  Sensor_chart.value_title = Unit_Title();
  Sensor_chart.current = Sensor_grid.Row();
  if (state.editing == Editing::nothing && !state.only_viewed) return;
  Chart_Series line;
  for (int row = 1; row <= table_points; ++row) {
    Sensor_chart.labels.push_back(Sensor_grid.Text(row, percent_column));
    line.values.push_back(Val_Any(state.values[static_cast<std::size_t>(row - 1)]));
  }
  Sensor_chart.series.push_back(std::move(line));
}

void Tell_Form() {
  txt_Sensor_Def.Set(state.editing == Editing::nothing ? "" : Definition_Line(Draft()));
  if (sensor_editor_changed) sensor_editor_changed();
}

/// Everything that follows from boxes and values.
void Follow() {
  if (state.editing == Editing::linear) state.values = Line_Values();
  Fill_Grid();
  Show_In_Diagram();
  Tell_Form();
}

void Edit(Editing kind, const Sensor_Draft& draft, const std::string& opened = "") {
  state = {kind, draft.values, {}, opened, {}};
  for (const Box& box : boxes) box.text->Set(draft.*box.field);
  Sensor_grid.Select(1, 1);
  Follow();
  state.shown_line = txt_Sensor_Def.Text();
}

void Edit_Empty(Editing kind) {
  Sensor_Draft draft;
  draft.name = first_sensor_name;
  Edit(kind, draft);
}

/// A log sensor as one of the tune; names of a log are in its file's code.
struct As_Tune_Sensor {
  Sensor sensor;
  Table_Columns table{};
};
As_Tune_Sensor Tune_Sensor_Of(const Log_Sensor& log) {
  As_Tune_Sensor tune;
  tune.sensor.name = From_Windows_1252(log.name);
  tune.sensor.kind = log.kind;
  tune.sensor.unit = From_Windows_1252(log.unit);
  tune.table[0] = Whole_Decimals(Val_Any(log.decimals));
  if (log.kind == "Tab") {
    std::copy_n(log.numbers.begin(), std::min(log.numbers.size(), tune.table.size() - 1),
                tune.table.begin() + 1);
  } else if (log.numbers.size() >= 4) {
    tune.sensor.gain = log.numbers[0];
    tune.sensor.offset = log.numbers[1];
    tune.sensor.minimum = log.numbers[2];
    tune.sensor.maximum = log.numbers[3];
  }
  return tune;
}

std::optional<As_Tune_Sensor> Find(Sensor_List list, int index) {
  if (index < 0) return {};
  if (list == Sensor_List::log) {
    const Log_Sensor* log = Find_Log_Sensor(index);
    return log ? std::optional(Tune_Sensor_Of(*log)) : std::nullopt;
  }
  const auto row = static_cast<std::size_t>(index);
  if (row >= Sens_Def.size()) return {};
  return As_Tune_Sensor{Sens_Def[row], Sens_Tab[row]};
}

/// Changes every selected value; all or none.
void Edit_Values(const std::function<double(double value, int distance)>& edit) {
  if (state.editing != Editing::table) return;
  Sensor_Values values = state.values;
  Each_Selected(Sensor_grid, 1, [&](int row, int distance) {
    std::string& text = values[static_cast<std::size_t>(row - 1)];
    const double value = edit(Val_Any(text), distance);
    if (!std::isfinite(value))
      throw Failure("The value in row " + std::to_string(row) + " becomes too large.");
    text = Number_Text(value);
  });
  Set_Edited_Values(values);
}

bool Is_Edited() { return txt_Sensor_Def.Text() != state.shown_line; }

/// Tells why the try-out has no result.
std::string Refused(const std::string& reason) {
  Tell(reason);
  return {};
}

std::string In_Unit(const std::string& unit) { return unit.empty() ? "" : " in " + unit; }

void Move_Values(int sign) {
  Edit_Values([sign](double value, int) { return Moved_Value(value, Sensor_Step(), sign); });
}

void Slope_Values(int sign) {
  Edit_Values(
      [sign](double value, int distance) { return Moved_Value(value, Sensor_Step(), sign * distance); });
}

}  // namespace

Editing Edited_Kind() { return state.editing; }

const Sensor_Values& Edited_Values() { return state.values; }

void Set_Edited_Values(const Sensor_Values& values) {
  state.values = values;
  Fresh_Cell = true;
  Follow();
}

int Sensor_Decimals() {
  const auto number = Whole_Number_Text(txt_SensorDecimals.Text());
  return static_cast<int>(Whole_Decimals(number.value_or(assumed_decimals)));
}

double Sensor_Step() { return std::pow(10.0, -std::min(Sensor_Decimals(), most_shown)); }

std::vector<std::string> Sensor_Names(Sensor_List list) {
  std::vector<std::string> names;
  if (list == Sensor_List::tune) {
    for (const Sensor& sensor : Sens_Def) names.push_back(sensor.name);
  } else {
    for (const Log_Sensor& sensor : Log_Sens_Def_Tab) names.push_back(From_Windows_1252(sensor.name));
  }
  return names;
}

void AN_Combo_Click(int input, int sensor) {
  if (sensor < 0 || sensor >= static_cast<int>(Sens_Def.size())) Fail_Subscript();
  const bool changes = Sensor_On_Input(input) != sensor;
  Sensor_Selection[static_cast<std::size_t>(input)] = sensor;
  Write_Key("an_sel" + std::to_string(input), std::to_string(sensor));  // the file may have another one
  if (!changes) return;
  Update_Tabs();
  Update_All();
}

void EditSensor_Combo_Click(Sensor_List list, int index) {
  const auto found = Find(list, index);
  if (!found) return Edit(Editing::nothing, {});
  const Sensor_Draft draft = Draft_Of(found->sensor, found->table);
  const std::string opened = list == Sensor_List::tune ? draft.name : "";
  if (found->sensor.kind == "Linear") return Edit(Editing::linear, draft, opened);
  if (found->sensor.kind == "Tab") return Edit(Editing::table, draft, opened);
  Edit(Editing::nothing, draft);
  if (list != Sensor_List::log || found->sensor.kind != log_only_kind) return;
  state.only_viewed = *Find_Log_Sensor(index);
  state.values = Viewed_Values(*state.only_viewed);
  Follow();
}

void cmd_AddLinearSensor_Click() { Edit_Empty(Editing::linear); }

void cmd_AddValueSensor_Click() { Edit_Empty(Editing::table); }

bool cmd_Add_sensor_Click() {
  if (state.editing == Editing::nothing || !Store_As_Sensor_Definition(Draft(), state.opened)) return false;
  state.opened = txt_SensorName.Text();
  state.shown_line = txt_Sensor_Def.Text();
  return true;
}

bool cmd_OK_Click() { return !Is_Edited() || cmd_Add_sensor_Click(); }

bool Leave_Edited() {
  return !Is_Edited() ||
         Ask_Yes_No("The changes of \"" + txt_SensorName.Text() + "\" are not stored. Give them up?",
                    "Sensor settings");
}

std::string Try_Forward(Sensor_List list, int index, const std::string& raw) {
  const auto typed = Whole_Number_Text(raw);
  if (!typed) return Refused("Type the raw number of the input, 0 to 255.");
  double number = *typed;
  if (list == Sensor_List::tune) return Format(Forward_Sensor_Calc(index, number), "");
  const Log_Sensor* log = Find_Log_Sensor(index);
  return log ? Format(Log_Sensor_Value(*log, number), "") : "";
}

std::string Try_Reversed(Sensor_List list, int index, const std::string& value) {
  const auto found = Find(list, index);
  if (!found) return {};
  const auto typed = Whole_Number_Text(value);
  if (!typed) return Refused("Type a value" + In_Unit(found->sensor.unit) + ", as 1.5.");
  if (found->sensor.kind == "Linear" && found->sensor.gain == 0) {
    return Refused("With a gain of 0 no value leads back to a raw number.");
  }
  try {
    const auto raw = Raw_Of_Value(found->sensor, found->table, *typed);
    return raw ? std::to_string(*raw) : "";
  } catch (const Failure&) {
    return Refused("This value is too far from all that the sensor gives.");
  }
}

void Sensor_Box_Typed() { Follow(); }

void Sensor_Grid_Enter_Cell(int row, int row_sel) {
  Sensor_grid.Select(row, row_sel);
  Fresh_Cell = true;
  Sensor_chart.current = Sensor_grid.Row();
  Tell_Form();
}

void Sensor_Grid_Key_Down(int key_code) {
  if (state.editing != Editing::table) return;
  if (key_code == key::enter && Go_Down(Sensor_grid)) return Follow();
  const int row = Sensor_grid.Row();
  const std::string& text = Sensor_grid.Text(row, value_column);
  const std::string edited = KeyEdit(key_code, text);
  if (edited == text) return;
  state.values[static_cast<std::size_t>(row - 1)] = edited;
  Fill_Grid();
  Sensor_grid.Set_Text(row, value_column, edited);  // stays as typed
  Show_In_Diagram();
  Tell_Form();
}

void Sensor_plus_Click() { Move_Values(1); }

void Sensor_minus_Click() { Move_Values(-1); }

void Sensor_steep_Click() { Slope_Values(1); }

void Sensor_flat_Click() { Slope_Values(-1); }

void Sensor_set_table_Click() {
  const auto value = Whole_Number_Text(Sensor_set_table_text.Text());
  if (!value) return Tell("not a number");
  Edit_Values([value](double, int) { return *value; });
}

void Sensor_scale_table_Click() {
  const auto percent = Whole_Number_Text(Sensor_scale_table_text.Text());
  if (!percent) return Tell("not a number");
  Edit_Values([percent](double value, int) { return Scaled_Value(value, *percent); });
}

void Sensor_Editor_Activated() {
  const auto lists = [] { return std::tuple(Sens_Def, Sens_Tab, MAP_def, MAP_tab, Preset_List); };
  const auto before = lists();
  Read_Definitions();
  if (before != lists()) Refresh_Whole_Image();
}

void Reset_Sensor_Editor() {
  state = {};
  for (const Box& box : boxes) box.text->Set("");
  txt_SensorName.Set(first_sensor_name);
  txt_Sensor_Def.Set("");
  Sensor_set_table_text.Set("");
  Sensor_scale_table_text.Set("");
  Sensor_grid = {};
  Sensor_chart = {};
  sensor_editor_changed = {};
  Fill_Grid();
}

}  // namespace kx
