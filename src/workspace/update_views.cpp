#include "workspace/update_views.h"

#include "boxlink/preferences.h"
#include "sensors/sensor_store.h"
#include "settings/image.h"
#include "settings/ini_file_adm.h"
#include "settings/numbers.h"
#include "settings/refresh.h"
#include "settings/session.h"
#include "workspace/analog2.h"
#include "workspace/box_settings.h"
#include "workspace/cell_editing.h"
#include "workspace/curve_generator.h"
#include "workspace/table_limits.h"
#include "workspace/table_values.h"
#include "workspace/temperature_chart.h"
#include "workspace/view_hooks.h"

namespace kx {

View_State view_state;
View_Hooks view_hooks;

namespace {

constexpr const char* communication_key = "Default_Com_interface";
constexpr const char* card_communication = "MapCard_Communication";
constexpr const char* box_communication = "Box_Communication";
constexpr double an_offset_zero = 128;  ///< raw offset that shifts nothing

constexpr const char* an1_limit_help =
    "Values in table sets maximum voltage on Analog 1 out depending on RPM.      When Analog 1 in is below "
    "the "
    "limit voltage,  out voltage = in voltage.";
constexpr const char* an1_disabled_help = "AN1 is disabled because of MAF-simulation";
constexpr const char* an2_limit_help =
    "Values in table sets maximum voltage on Analog 2 out depending on RPM.      When Analog 2 in is below "
    "the "
    "limit voltage,  out voltage = in voltage.";
constexpr const char* an2_trim_help =
    "Same as Analog 2 limit, but the Analog 2 out value also depends on PWM in. See manual for more "
    "information";
constexpr const char* boost_target_help =
    "Set Value in table to desired boost level. This setting is also controlled by the PWM Load tab.";
constexpr const char* select_boost_sensor_help = "Select boost sensor in 'Box Settings'";
constexpr const char* pwm_percent_help =
    "Set desired PWM signal in percent, based on engine RPM. This setting is also controlled by the PWM Load "
    "tab";

/// Rows, headings and axis of one grid and the labels of the chart beside it; values stay.
void Lay_Out_Table(Table table) {
  const Table_Row& row = Row_Of(table);
  Grid& grid = Grid_Of(table);
  const int entries = Entries_Of(table);
  grid.Resize(entries + 1, row.text_column + 1);
  std::vector<std::string> headings = Axis_Headings(table);
  Chart& chart = Chart_Of(Chart_Beside(table));
  chart.axis_title = headings.back();
  chart.value_title = Value_Heading(table);
  headings.push_back(chart.value_title);
  grid.Set_Row_Texts(0, std::move(headings));
  chart.labels.clear();
  for (int entry = 1; entry <= entries; ++entry) {
    std::vector<std::string> axis = Axis_Texts(table, entry);
    chart.labels.push_back(axis.back());
    grid.Set_Row_Texts(entry, std::move(axis));
  }
}

/// Values of one grid from the image, and its chart from the grid.
void Fill_Table(Table table) {
  Lay_Out_Table(table);
  const int column = Row_Of(table).text_column;
  Grid& grid = Grid_Of(table);
  Chart& chart = Chart_Of(Chart_Beside(table));
  Chart_Series values;
  for (int row = 1; row < grid.Rows(); ++row) {
    grid.Set_Text(row, column, Shown_Text_Of(table, CardByte[Shown_Byte(table, row)]));
    values.values.push_back(Val_Any(grid.Text(row, column)));
  }
  chart.series.assign(1, values);
  chart.current = grid.Row();
}

/// The two guide lines of the Analog 2 curve's chart: what the curve generator's gain and offset give, and
/// the output that follows the input.
void Add_Analog2_Guides() {
  if (!Analog2_Is_Curve()) return;
  Chart_Series generator{"curve generator", {}};
  Chart_Series one_to_one{"Shows 1:1", {}};
  const double gain = CardByte[map::an_gain];
  const double offset = CardByte[map::an_offset] - an_offset_zero;
  for (int entry = 1; entry <= map::analog2_curve.count; ++entry) {
    generator.values.push_back(Generator_Counts(entry, gain, offset) / counts_a_volt);
    one_to_one.values.push_back((entry - 1) * volts_a_curve_entry);
  }
  auto& series = Chart_Of(Chart_Id::an2_out_chart).series;
  series.push_back(std::move(generator));
  series.push_back(std::move(one_to_one));
}

void Fill_Ignition_Tables() {
  Fill_Table(Table::ignition_load);
  Fill_Table(Table::ignition_rpm);
}

void Fill_Fuel_Tables() {
  Fill_Table(Table::fuel_load);
  Fill_Table(Table::fuel_rpm);
}

void Fill_Analog_Tables() {
  Fill_Table(Table::maf_limit);
  Fill_Table(Table::maf_output);
  Fill_Table(Table::analog1);
  Fill_Table(Table::pwm_rpm);
}

void Fill_Analog2_Table() {
  Fill_Table(Table::analog2);
  Add_Analog2_Guides();
}

/// Layout of one grid; values stay, and rows that are new get theirs.
void Lay_Out_And_Complete(Table table) {
  const int rows = Grid_Of(table).Rows();
  Lay_Out_Table(table);
  if (Grid_Of(table).Rows() == rows) return;
  Fill_Table(table);
  if (table == Table::analog2) Add_Analog2_Guides();
}

/// What the tables and texts depend on besides their own bytes.
void Take_Conditions() {
  Update_Point_Counts();
  Temp_Sensor_Index = Get_Field(map::air_temperature_input) + 1;
}

/// A word without an option leaves the frame as it is.
void Choose_Card_Frame() {
  const int option = Option_Of_Interface(Default_Interface);
  if (option >= 0) view_state.card_frame = option;
}

void Lay_Out_All();

void Fill_All() {
  Undo_Busy = true;
  const bool preset_changed_bytes = Apply_Preset();
  Choose_Card_Frame();
  Take_Conditions();
  Fill_Ignition_Tables();
  Fill_Fuel_Tables();
  Fill_Table(Table::pwm_load);
  Fill_Analog_Tables();
  Fill_Analog2_Table();
  Fill_Curve_Boxes();
  Update_Temp_Chart();
  Update_Config();
  if (view_hooks.show_values) view_hooks.show_values();
  if (preset_changed_bytes) Lay_Out_All();  // a byte may have changed what the tables mean
  Fresh_Cell = true;                        // what was being typed has been replaced by the tune's value
  Undo_Busy = false;
}

void Lay_Out_Help_Texts() {
  const bool load_percent = Get_Field(map::ignition_load_in_percent) == 1;
  view_state.Label41 = load_percent ? "Set percentage of spark timing change, based on manifold pressure."
                                    : "Set spark timing change, in degrees, based on manifold pressure.";
  view_state.Label_IG_RPM = load_percent ? "Set spark timing change, in degrees, based on engine RPM."
                                         : "Set percentage of spark timing change, based on engine RPM.";
  view_state.Label_AN1 = Maf_Simulation_On() ? an1_disabled_help : an1_limit_help;
  switch (Get_Field(map::an2_mode)) {
    case 0:
      view_state.Label_AN2_limitexplain = an2_limit_help;
      break;
    case 1:
      view_state.Label_AN2_limitexplain.clear();
      break;
    case 2:
      view_state.Label_AN2_limitexplain = an2_trim_help;
      break;
    default:
      break;  // the boost sensor activated output keeps the text it finds
  }
}

/// The table panel has nothing to work on where no table is on show.
bool Table_Panel_Of_Use() {
  const auto table = Active_Table();
  if (table != Table::analog2) return table.has_value();
  return view_state.An2out_frame && Analog2_Frames_Shown().an2_out_grid;
}

void Lay_Out_Frames() {
  view_state.analog1_tab = !Maf_Simulation_On();
  view_state.maf_output_tab = Maf_Simulation_On();
  view_state.maf_limit_tab = Maf_Limit_Active();
  view_state.An2out_frame = An2_Available && Res500;
  view_state.Frame_IG_RPM_MAFSIM = Maf_Limit_Active();
  view_state.tblctrl = Table_Panel_Of_Use();
}

void Show_Layout() {
  if (view_hooks.show_layout) view_hooks.show_layout();
}

void Show_Pwm_Notification() {
  if (!Boost_Closed_Loop()) {
    view_state.Frame_PWMRPM_Notification = "Normal PWM out";
    view_state.txt_PWMRPM_Notification = pwm_percent_help;
    return;
  }
  const int sensor = Boost_Sensor();
  view_state.Frame_PWMRPM_Notification = "PWM PID Control activated. Analog" +
                                         std::to_string(Get_Field(map::boost_input) + 1) + " - " +
                                         Sensor_Name(sensor);
  view_state.txt_PWMRPM_Notification = boost_target_help;
  if (sensor < 1) view_state.txt_PWMRPM_Notification += select_boost_sensor_help;
}

void Lay_Out_All() {
  Take_Conditions();
  for (const Table_Row& row : table_rows) Lay_Out_And_Complete(row.table);
  Lay_Out_Help_Texts();
  Lay_Out_Frames();
  Show_Pwm_Notification();
  Update_Config();
  Get_Shown_Table_Maxmin();
  Show_Layout();
}

void Keep_Table_Tools_In_Step() {
  const std::string communication = Read_Key(communication_key).value_or(card_communication);
  if (communication == card_communication) view_state.communication_tab = communication_tab::card;
  if (communication == box_communication) view_state.communication_tab = communication_tab::box;
  view_state.tblctrl = Table_Panel_Of_Use();
  Show_Pwm_Notification();
  Get_pwm_maxmin();
  Show_Layout();
}

}  // namespace

void Show_Table(Table table) {
  if (view_hooks.show_table) view_hooks.show_table(table);
}

void Reset_View_State() {
  view_state = {};
  view_hooks = {};
  Coolant_Chart = {};
}

void Install_Refresh_Hooks() {
  refresh_hooks.update_all = Fill_All;
  refresh_hooks.update_tabs = Lay_Out_All;
  refresh_hooks.show_right_tabs = Keep_Table_Tools_In_Step;
}

void Shown_Tab_Changed() {
  Get_Shown_Table_Maxmin();
  Show_Right_Tabs();
}

void Communication_Tab_Changed(int tab) {
  Write_Key(communication_key, tab == communication_tab::card ? card_communication : box_communication);
}

void toggle_interface_box_chip() {
  const bool card_side = view_state.communication_tab == communication_tab::card;
  Communication_Tab_Changed(card_side ? communication_tab::box : communication_tab::card);
  Show_Right_Tabs();
}

}  // namespace kx
