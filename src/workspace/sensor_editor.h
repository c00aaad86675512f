#pragma once

#include <array>
#include <functional>
#include <string>
#include <vector>

#include "sensors/sensor_store.h"
#include "settings/shown_text.h"
#include "workspace/charts.h"
#include "workspace/grid.h"

/// The sensor editor: which sensor hangs on each analog input, what a sensor looks like, and the definition
/// in the making. The editing boxes are texts here; the form shows them.
namespace kx {

/// The two lists to look at.
enum class Sensor_List { tune, log };

/// What is on the editing frames.
enum class Editing { nothing, linear, table };

extern Shown_Text txt_SensorName;
extern Shown_Text txt_SensorUnit;
extern Shown_Text txt_SensorInUnit;
extern Shown_Text txt_SensorDecimals;
extern Shown_Text txt_SensorGain;
extern Shown_Text txt_SensorOffset;
extern Shown_Text txt_SensorMin;
extern Shown_Text txt_SensorMax;
extern Shown_Text txt_Sensor_Def;  ///< the definition line in the making; empty while nothing is edited
extern Shown_Text Sensor_set_table_text;  ///< the typed boxes of the value grid's table panel
extern Shown_Text Sensor_scale_table_text;

/// The 33 values as shown; rows 1 to 33, columns raw, percent of the input, value.
extern Grid Sensor_grid;

/// The curve over the input in percent. Derived by Show_In_Diagram.
extern Chart Sensor_chart;

/// Called after anything here has changed; set by the form.
extern std::function<void()> sensor_editor_changed;

/// Start of a new sensor's name.
inline constexpr const char* first_sensor_name = "MySensor";

[[nodiscard]] Editing Edited_Kind();

/// The full texts of the values behind Sensor_grid, from raw 0 up; empty where none has been given.
using Sensor_Values = std::array<std::string, table_points>;
[[nodiscard]] const Sensor_Values& Edited_Values();

/// Puts @p values in their place; the next digit typed replaces a cell's text.
void Set_Edited_Values(const Sensor_Values& values);

/// Decimals of the box; 2 while it holds no number.
[[nodiscard]] int Sensor_Decimals();

/// What "+" and "-" add and take: 1 in the last decimal that the grid shows.
[[nodiscard]] double Sensor_Step();

/// Names of a list, by sensor number.
[[nodiscard]] std::vector<std::string> Sensor_Names(Sensor_List list);

/// "AN_Combo": @p sensor, a list index, is the sensor on analog input @p input, 1 to 4, from now on. Kept as
/// "an_sel" + input, also when the program had it so but the file had not; axes, units and texts follow.
void AN_Combo_Click(int input, int sensor);

/// "EditSensor_Combo": shows sensor @p index of @p list in the editing boxes. One of a kind that cannot be
/// edited, and index -1, show nothing.
void EditSensor_Combo_Click(Sensor_List list, int index);

/// Empty editing boxes for a straight sensor, or for one by 33 values.
void cmd_AddLinearSensor_Click();
void cmd_AddValueSensor_Click();

/// Stores what is edited, see Store_As_Sensor_Definition; does nothing while nothing is. True when a sensor
/// was stored.
bool cmd_Add_sensor_Click();

/// The same when something has been edited: what was only looked at is left alone. True when nothing is left
/// to be stored and the form may close.
bool cmd_OK_Click();

/// True when another sensor may come on view: nothing has been edited since the last store, or the user gives
/// the changes up.
[[nodiscard]] bool Leave_Edited();

/// The try-out: value of a raw number, raw number of a value, as text; empty for a sensor that converts
/// nothing. What cannot be converted is told of.
[[nodiscard]] std::string Try_Forward(Sensor_List list, int index, const std::string& raw);
[[nodiscard]] std::string Try_Reversed(Sensor_List list, int index, const std::string& value);

/// The user has typed into one of the boxes: line and curve follow.
void Sensor_Box_Typed();

/// The value grid: as in the tuning tables, without limits and without history.
void Sensor_Grid_Enter_Cell(int row, int row_sel);
void Sensor_Grid_Key_Down(int key_code);
void Sensor_plus_Click();
void Sensor_minus_Click();
void Sensor_steep_Click();
void Sensor_flat_Click();
void Sensor_set_table_Click();
void Sensor_scale_table_Click();

/// The form came to the front: lists of the ini file are read again, and the views follow when they differ.
/// What is edited stays.
void Sensor_Editor_Activated();

void Reset_Sensor_Editor();

}  // namespace kx
