#include "workspace/update_views.h"

#include "boxlink/preferences.h"
#include "settings/image.h"
#include "settings/ini_file_adm.h"
#include "settings/numbers.h"
#include "settings/refresh.h"
#include "settings/session.h"
#include "workspace/analog2.h"
#include "workspace/box_settings.h"
#include "workspace/cell_editing.h"
#include "workspace/compare.h"
#include "workspace/curve_generator.h"
#include "workspace/table_limits.h"
#include "workspace/table_meaning.h"
#include "workspace/table_values.h"
#include "workspace/temperature_chart.h"
#include "workspace/view_hooks.h"

namespace kx {

View_Hooks view_hooks;
int card_frame = 0;

namespace {

constexpr const char* communication_key = "Default_Com_interface";
constexpr const char* card_communication = "MapCard_Communication";
constexpr const char* box_communication = "Box_Communication";

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
  for (int entry = 1; entry <= map::analog2_curve.count; ++entry) {
    generator.values.push_back(Generator_Counts(entry, gain, Generator_Offset()) / counts_a_volt);
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

/// A word without an option leaves the frame as it is.
void Choose_Card_Frame() {
  const int option = Option_Of_Interface(Default_Interface);
  if (option >= 0) card_frame = option;
}

void Lay_Out_All();

void Fill_All() {
  const Undo_Busy_Scope filling;
  const bool preset_changed_bytes = Apply_Preset();
  Choose_Card_Frame();
  Fill_Ignition_Tables();
  Fill_Fuel_Tables();
  Fill_Table(Table::pwm_load);
  Fill_Analog_Tables();
  Fill_Analog2_Table();
  Fill_Curve_Boxes();
  Update_Temp_Chart();
  Reckon_Differences();
  if (view_hooks.show_values) view_hooks.show_values();
  if (preset_changed_bytes) Lay_Out_All();  // a byte may have changed what the tables mean
  Fresh_Cell = true;                        // what was being typed has been replaced by the tune's value
}

void Show_Layout() {
  if (view_hooks.show_layout) view_hooks.show_layout();
}

void Lay_Out_All() {
  for (const Table_Row& row : table_rows) Lay_Out_And_Complete(row.table);
  Get_Shown_Table_Maxmin();
  Show_Layout();
}

void Keep_Table_Tools_In_Step() {
  Get_pwm_maxmin();
  Show_Layout();
}

}  // namespace

void Show_Table(Table table) {
  Follow_Differences();
  if (view_hooks.show_table) view_hooks.show_table(table);
}

void Reset_View_State() {
  view_hooks = {};
  card_frame = 0;
  Coolant_Chart = {};
}

void Install_Refresh_Hooks() {
  refresh_hooks.update_all = Fill_All;
  refresh_hooks.update_tabs = Lay_Out_All;
  refresh_hooks.show_right_tabs = Keep_Table_Tools_In_Step;
  refresh_hooks.show_reference = Follow_Differences;
}

void Shown_Tab_Changed() {
  Get_Shown_Table_Maxmin();
  Show_Right_Tabs();
}

void Communication_Tab_Changed(int tab) {
  Remember_Key(communication_key, tab == communication_tab::card ? card_communication : box_communication);
}

int Communication_Tab() {
  return Read_Key(communication_key) == box_communication ? communication_tab::box : communication_tab::card;
}

void toggle_interface_box_chip() {
  const bool card_side = Communication_Tab() == communication_tab::card;
  Communication_Tab_Changed(card_side ? communication_tab::box : communication_tab::card);
  Show_Right_Tabs();
}

}  // namespace kx
