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
  EXPECT_THAT(Sensor_scale_table_Click,
              testing::ThrowsMessage<Failure>("The value in row 2 becomes too large."));
  Expect_Box("not a number");
  Sensor_set_table_text.Typed("");
  Sensor_set_table_Click();
}

TEST_F(Sensor_Editor, The_Grid_Has_Two_Formats_And_No_Step_That_It_Would_Not_Show) {
  cmd_AddValueSensor_Click();
  Sensor_set_table_text.Typed("1");
  for (const auto& [decimals, set, up] : {std::tuple{"0", "01.0", "02.0"},
                                          {"1", "01.0", "01.1"},
                                          {"2", "1.00", "1.01"},
                                          {"4", "1.00", "1.01"},
                                          {"x", "1.00", "1.01"}}) {
    txt_SensorDecimals.Typed(decimals);
    Sensor_Box_Typed();
    Sensor_set_table_Click();
    EXPECT_EQ(Value(1), set) << decimals;
    Sensor_plus_Click();
    EXPECT_EQ(Value(1), up) << decimals;
  }
  txt_SensorUnit.Typed("bar");
  Sensor_Box_Typed();
  EXPECT_EQ(Sensor_chart.axis_title + Sensor_chart.value_title + Sensor_grid.Text(0, 2), "[%][bar][bar]");
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
  const int flat = static_cast<int>(Sens_Def.size());
  Add_Sensor("flat\tLinear\t0\t5\t0\t255\tV\t0\tV");
  Expect_Box("Type the raw number of the input, 0 to 255.");
  EXPECT_EQ(Try_Forward(Sensor_List::tune, map25, "x"), "");
  for (const auto& [sensor, value, reason] :
       {std::tuple{map25, "", "Type a value in bar, as 1.5."},
        {map25, "1e9", "This value is too far from all that the sensor gives."},
        {flat, "5", "With a gain of 0 no value leads back to a raw number."}}) {
    Expect_Box(reason);
    EXPECT_EQ(Try_Reversed(Sensor_List::tune, sensor, value), "");
  }
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
  const std::string before = Ini();
  EXPECT_TRUE(cmd_OK_Click());
  EXPECT_EQ(Ini(), before) << "a log sensor that was only looked at";
  txt_SensorGain.Typed("0.25");
  Sensor_Box_Typed();
  EXPECT_TRUE(cmd_OK_Click());
  EXPECT_THAT(Ini(), HasSubstr("\r\nSens_Def=grad\tLinear\t0.25\t-10"));
  EditSensor_Combo_Click(Sensor_List::log, 0);
  EXPECT_EQ(Edited_Kind(), Editing::nothing) << "a kind for logs only";
  EXPECT_EQ(Sensor_chart.series.at(0).values.at(16), -255);
  EXPECT_FALSE(cmd_Add_sensor_Click());
  EXPECT_TRUE(cmd_OK_Click());
}

TEST_F(Sensor_Editor, Ok_Stores_What_Was_Edited_And_Only_That) {
  AN_Combo_Click(1, 2);
  folder_.Write("KXBenchPro.ini", Ini() + "Sens_Def=flat\tLinear\t0\t5\t0\t255\tV\t0\tV\r\nan_sel1=7\r\n");
  AN_Combo_Click(1, 2);
  EXPECT_THAT(Ini(), testing::Not(HasSubstr("an_sel1=7"))) << "the file had another choice";
  Sensor_Editor_Activated();
  EditSensor_Combo_Click(Sensor_List::tune, Tune_Sensor("flat"));
  EXPECT_TRUE(cmd_OK_Click()) << "odd, but as it was";
  txt_SensorName.Typed("MAP 2.5 bar");
  txt_SensorGain.Typed("0.1");
  Sensor_Box_Typed();
  Expect_Box("There is a sensor \"MAP 2.5 bar\" already. Replace it?", platform::Answer::no);
  EXPECT_FALSE(cmd_OK_Click());
  txt_SensorName.Typed("flat");
  Sensor_Box_Typed();
  EXPECT_TRUE(cmd_OK_Click()) << "the sensor that was opened";
  txt_SensorGain.Typed("0.2");
  Sensor_Box_Typed();
  EXPECT_TRUE(cmd_OK_Click()) << "and is still";
  cmd_AddLinearSensor_Click();
  EXPECT_TRUE(cmd_OK_Click()) << "nothing has been typed";
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
  const std::string whole = Ini();
  folder_.Write("KXBenchPro.ini", "");
  Expect_Box("The sensors, load axes and presets cannot be read again and stay as they were.\n" +
             folder_.Path("KXBenchPro.ini") +
             ": definitions are missing that were there; another program may be writing it\nThe file is read "
             "when it is whole again and is not written until then. If it is meant to be as it is, start the "
             "program anew.");
  Sensor_Editor_Activated();
  Sensor_Editor_Activated();
  EXPECT_EQ(Sensor_Name(Sensor_On_Input(1)), "by hand");
  folder_.Write("KXBenchPro.ini", whole);
  Sensor_Editor_Activated();
  EXPECT_EQ(Sensor_Name(Sensor_On_Input(1)), "by hand");
}

}  // namespace
}  // namespace kx
