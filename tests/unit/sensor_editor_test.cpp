#include "workspace/sensor_editor.h"

#include <gmock/gmock.h>

#include "sensors/load_axes.h"
#include "sensors/log_sensors.h"
#include "sensors/sensor_store.h"
#include "settings/failure.h"
#include "settings/image.h"
#include "settings/ini_file_adm.h"
#include "settings/numbers.h"
#include "support/workspace_fixture.h"
#include "workspace/cell_editing.h"
#include "workspace/scalar_controls.h"
#include "workspace/tables.h"

namespace kx {
namespace {

using testing::HasSubstr;

class Sensor_Editor : public Workspace_Fixture {
 protected:
  static int Tune_Sensor(const std::string& name) {
    const auto names = Sensor_Names(Sensor_List::tune);
    return static_cast<int>(std::find(names.begin(), names.end(), name) - names.begin());
  }
  static std::string Value(int row) { return Sensor_grid.Text(row, 2); }
  static void Type(const std::string& digits) {
    for (const char c : digits) Sensor_Grid_Key_Down(c == '.' ? key::full_stop : c == '-' ? key::minus : c);
  }
  [[nodiscard]] std::string Ini() const { return folder_.Read("KXBenchPro.ini"); }
};

TEST_F(Sensor_Editor, A_Chosen_Input_Sensor_Is_Kept_And_Axes_And_Temperature_Texts_Follow) {
  const int oil = Tune_Sensor("Oil pressure 10 bar");
  const int air_input = Get_Field(map::air_temperature_input) + 1;
  const auto limit_text = [] {
    return Scalar_Text(Scalar_Row_Of("scroll(8)"), Scalar_Row_Of("scroll(8)").texts[0],
                       Scalar_Position(Scalar_Row_Of("scroll(8)")));
  };
  const std::string before = limit_text();
  AN_Combo_Click(air_input, oil);
  EXPECT_EQ(Sensor_On_Input(air_input), oil);
  EXPECT_THAT(Ini(), HasSubstr("an_sel" + std::to_string(air_input) + "=" + std::to_string(oil)));
  EXPECT_NE(limit_text(), before);
  Set_Field(map::ignition_load_input, air_input - 1);
  AN_Combo_Click(air_input, 0);
  EXPECT_EQ(Grid_Of(Table::ignition_load).Text(0, 1), "value");
  AN_Combo_Click(air_input, oil);
  EXPECT_EQ(Grid_Of(Table::ignition_load).Text(0, 1), "bar");
  EXPECT_EQ(Grid_Of(Table::ignition_load).Text(33, 1), Load_Axis_Text(oil, 33));
}

TEST_F(Sensor_Editor, Each_Kind_Comes_On_Its_Frame_With_Curve_And_Line) {
  EXPECT_EQ(Edited_Kind(), Editing::nothing);
  EXPECT_EQ(txt_SensorName.Text(), "MySensor");
  EditSensor_Combo_Click(Sensor_List::tune, Tune_Sensor("MAP 2.5 bar"));
  EXPECT_EQ(Edited_Kind(), Editing::linear);
  EXPECT_EQ(txt_SensorGain.Text(), "0.00980392");
  EXPECT_EQ(txt_Sensor_Def.Text(), "MAP 2.5 bar\tLinear\t0.00980392\t0.1\t0\t255\tbar\t2\tV");
  EXPECT_NEAR(Sensor_chart.series.at(0).values.at(16), 128 * 0.00980392 + 0.1, 1e-9);
  EditSensor_Combo_Click(Sensor_List::tune, Tune_Sensor("MAP 3 bar table"));
  EXPECT_EQ(Edited_Kind(), Editing::table);
  EXPECT_EQ(Value(1), "0.04");
  EXPECT_EQ(Sensor_grid.Text(33, 0) + " " + Sensor_grid.Text(33, 1), "256 100.0");
  EXPECT_EQ(Sensor_chart.value_title, "[bar]");
  const std::string before = Ini();
  EXPECT_TRUE(cmd_Add_sensor_Click());
  EXPECT_EQ(Ini(), before) << "looking at a sensor rounds nothing";
  EditSensor_Combo_Click(Sensor_List::tune, 0);
  EXPECT_EQ(Edited_Kind(), Editing::nothing);
  EXPECT_TRUE(Sensor_chart.series.empty());
  EXPECT_FALSE(cmd_Add_sensor_Click());
  EXPECT_EQ(txt_Sensor_Def.Text(), "");
}

TEST_F(Sensor_Editor, The_Value_Grid_Works_As_The_Tables_Do) {
  cmd_AddValueSensor_Click();
  EXPECT_EQ(Value(1), "");
  txt_SensorDecimals.Typed("1");
  Sensor_Box_Typed();
  Sensor_Grid_Enter_Cell(1, 33);
  Sensor_set_table_text.Typed("10");
  Sensor_set_table_Click();
  EXPECT_EQ(Value(33), "10.0");
  Sensor_Grid_Enter_Cell(2, 4);
  Sensor_plus_Click();
  EXPECT_EQ(Value(1) + " " + Value(2) + " " + Value(4), "10.0 10.1 10.1");
  Sensor_minus_Click();
  Sensor_steep_Click();
  EXPECT_EQ(Value(2) + " " + Value(3) + " " + Value(4) + " " + Value(5), "10.0 10.1 10.2 10.0");
  Sensor_flat_Click();
  EXPECT_EQ(Value(4), "10.0");
  Sensor_scale_table_text.Typed("-50");
  Sensor_scale_table_Click();
  EXPECT_EQ(Value(3), "-05.0");
  Expect_Box("not a number");
  Sensor_scale_table_text.Typed("x");
  Sensor_scale_table_Click();
  Sensor_set_table_text.Typed("1e308");
  Sensor_set_table_Click();
  Sensor_scale_table_text.Typed("1e308");
  EXPECT_THROW(Sensor_scale_table_Click(), Failure);
  Sensor_set_table_text.Typed("");
  EXPECT_THROW(Sensor_set_table_Click(), Failure);
}

TEST_F(Sensor_Editor, Typing_Takes_Any_Value_And_Enter_Goes_Down) {
  EditSensor_Combo_Click(Sensor_List::tune, Tune_Sensor("MAP 3 bar table"));
  Sensor_Grid_Enter_Cell(1, 1);
  Type("-");
  Type("9999.125");
  EXPECT_EQ(Value(1), "-9999.125") << "stays as typed";
  EXPECT_EQ(Sensor_chart.series.at(0).values.at(0), -9999.125);
  Sensor_Grid_Key_Down(key::enter);
  EXPECT_EQ(Sensor_grid.Row(), 2);
  EXPECT_EQ(Value(1), "-9999.13");
  EXPECT_THAT(txt_Sensor_Def.Text(), HasSubstr("\tTab\t-9999.125\t0.142\t"));
  Sensor_Grid_Enter_Cell(33, 33);
  Sensor_Grid_Key_Down(key::enter);
  EXPECT_EQ(Sensor_grid.Row(), 33);
  Type("7");
  Sensor_Grid_Key_Down(key::backspace);
  EXPECT_EQ(Value(33), "");
  Expect_Box("Value 33 is not a number.");
  EXPECT_FALSE(cmd_Add_sensor_Click());
}

TEST_F(Sensor_Editor, Tries_Both_Conversions_Of_Both_Lists) {
  const int map25 = Tune_Sensor("MAP 2.5 bar");
  EXPECT_EQ(Try_Forward(Sensor_List::tune, map25, "100"), "1.080392");
  EXPECT_EQ(Try_Reversed(Sensor_List::tune, map25, "1,08"), "100");
  EXPECT_EQ(Try_Forward(Sensor_List::tune, 0, "100"), "");
  EXPECT_EQ(Try_Reversed(Sensor_List::tune, -1, "100"), "");
  EXPECT_THROW(static_cast<void>(Try_Forward(Sensor_List::tune, map25, "x")), Failure);
  Log_Sens_Def_Tab = {{"two", "Linear2c", {2, 1, 0, 255}, "V", "1"},
                      {"grad",
                       "Linear",
                       {0.5, -10, 0, 255},
                       "\xB0"
                       "C",
                       "1"}};
  EXPECT_EQ(Sensor_Names(Sensor_List::log), (std::vector<std::string>{"two", "grad"}));
  EXPECT_EQ(Try_Forward(Sensor_List::log, 0, "255"), "-1");
  EXPECT_EQ(Try_Reversed(Sensor_List::log, 0, "1"), "") << "no way back from two's complement";
  EXPECT_EQ(Try_Reversed(Sensor_List::log, 1, "40"), "100");
  EditSensor_Combo_Click(Sensor_List::log, 1);
  EXPECT_EQ(txt_Sensor_Def.Text(), "grad\tLinear\t0.5\t-10\t0\t255\t°C\t1\t");
  EditSensor_Combo_Click(Sensor_List::log, 0);
  EXPECT_EQ(Edited_Kind(), Editing::nothing) << "a kind for logs only";
  EXPECT_EQ(Sensor_chart.series.at(0).values.at(16), -255);
  EXPECT_FALSE(cmd_Add_sensor_Click());
}

TEST_F(Sensor_Editor, Coming_Back_To_The_Form_Reads_The_File_And_Keeps_What_Is_Edited) {
  cmd_AddLinearSensor_Click();
  txt_SensorGain.Typed("3");
  Sensor_Box_Typed();
  folder_.Write("KXBenchPro.ini", Ini() + "Sens_Def=by hand\tLinear\t1\t0\t0\t255\tV\t0\tV\r\n");
  Sensor_Editor_Activated();
  EXPECT_EQ(Sensor_Names(Sensor_List::tune).back(), "by hand");
  EXPECT_EQ(txt_SensorGain.Text(), "3");
  EXPECT_EQ(Edited_Kind(), Editing::linear);
  AN_Combo_Click(1, Tune_Sensor("by hand"));
  folder_.Write("KXBenchPro.ini", "");
  Sensor_Editor_Activated();
  EXPECT_EQ(Sensor_On_Input(1), 0) << "its sensor has gone";
}

}  // namespace
}  // namespace kx
