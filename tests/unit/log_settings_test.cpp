#include "logging/log_settings.h"

#include "logging/log_sections.h"
#include "logging/log_setup_commands.h"
#include "support/log_fixture.h"

namespace kx::test {
namespace {

class Log_Settings_Test : public Log_Fixture {
 protected:
  /// The line of the stored section that begins with @p key.
  static std::string Line(const std::string& key) {
    const std::size_t at = Log_Setting_Text.find("\r\n" + key);
    if (at == std::string::npos) return "no " + key;
    return Log_Setting_Text.substr(at + 2, Log_Setting_Text.find("\r\n", at + 2) - at - 2);
  }

  static void Read_Section(const std::string& lines) {
    Log_Setting_Text = "[log_settings]\r\n" + lines + "[end log_settings]";
    Read_Log_Settings();
  }
};

TEST_F(Log_Settings_Test, Section_Of_The_Built_In_Settings) {
  Log_File_Name = "a.kxl";
  log_settings.txt_Log_Free_Text = "one\r\ntwo";
  log_settings.txt_Weight = "1000,5";
  Update_Log_Settings();
  EXPECT_TRUE(
      Log_Setting_Text.starts_with("[log_settings]\r\n"
                                   "Log_File_Name=a.kxl\r\n"
                                   "Log_Date=\r\n"
                                   "Log_Time=\r\n"
                                   "Log_Length=0.0 s\r\n"
                                   "Log_Description=one two;\r\n"
                                   "Log_File_Version=3.5\r\n"
                                   "Log_Def0=RPM\t0\tRPM\t1\t0\t1\t1\t0\r\n"
                                   "Log_Def1=AN1 In\t3\tAnalog_0-5V\t0\t0\t1\t1\t0\r\n"));
  const std::string tail = Log_Setting_Text.substr(Log_Setting_Text.find("Log_Def39="));
  EXPECT_EQ(tail,
            "Log_Def39=Option\t-1\t\t0\t0\t0\t0\t0\r\n"
            "Log_Scale=Auto\tAuto\tAuto\tAuto\t\r\n"
            "Log_Zoom=1\t0\r\n"
            "Log_Gearing=1\t2\t3\t4\t5\t6\t4\t135\t3647\t\r\n"
            "Log_Speed_Unit=km/h\r\n"
            "Log_Weight_Unit=kg\r\n"
            "Log_Torque_Unit=Nm\r\n"
            "Log_Hp=1000.5\t20\t500\t\t0\t2.0\t1.225\r\n"
            "Log_AutoSave=1\tKXLog-\r\n"
            "Log_SettingsInLog=1\r\n"
            "Log_To_File_Only=0\r\n"
            "Log_Time_Interval=5\t0.5\r\n"
            "Log_Signal_Smoothing=0\t0\t0\t3000\t100\t5\t0.7\t-10\r\n"
            "Log_Start_String=a\r\n"
            "[end log_settings]");
}

TEST_F(Log_Settings_Test, What_Is_Written_Is_Read) {
  Signal_Row(14).custom_name = Signal_Row(15).custom_name = "Time";  // "," is read as "."
  Signal_Row(3) = {"T\xE5ng \x81", 16, true, true, false, true, "x"};
  log_settings.Speed_option = Speed_Unit::ms;
  log_settings.Weight_option = Weight_Unit::lbs;
  log_settings.Torque_option = Torque_Unit::ft_lbs;
  log_settings.txt_2ndYScale_Min = "-5";
  log_settings.Gear_option = 6;
  log_settings.txt_FIR = {"3", "2"};
  log_settings.fuel_limits[4] = "-20";
  log_settings.Fuel_filter_check = log_settings.check_LogToFileOnly = true;
  log_settings.check_AutoSave = log_settings.check_SettingsInLogg = false;
  log_settings.Log_Start_String = "La";
  const Log_Settings written = log_settings;
  Update_All_Log_Setting_Variables();
  log_settings = {};
  Read_All_Log_Setting_Variables();
  EXPECT_EQ(log_settings, written);
  EXPECT_TRUE(Log_Settings_Loaded);
}

TEST_F(Log_Settings_Test, Missing_Keys_Leave_The_Built_In_Values) {
  log_settings.txt_Weight = "7";
  Read_Section("Log_File_Version=3.5\r\nLog_Def0=x\t\tn\t0\t1\t0\t0\t5\r\nLog_Start_String=\r\n");
  EXPECT_EQ(log_settings.txt_Weight, "1000");
  EXPECT_EQ(log_settings.Log_Start_String, "La");
  EXPECT_EQ(log_settings.txt_Log_Date, "");
  EXPECT_EQ(Signal_Row(0), (Log_Signal_Row{"x", -1, false, true, false, false, "5"}));
  EXPECT_EQ(Signal_Row(1).custom_name, "AN1 In");
}

TEST_F(Log_Settings_Test, Damaged_Lines_Are_Told_Of_Once) {
  Expect_Box("Did not find data no:2");
  Read_Section("Log_File_Version=3.5\r\nLog_Def0=x\r\nLog_Def1=y\r\nLog_Hp=900\r\nLog_Speed_Unit=knots\r\n");
  EXPECT_EQ(log_settings.txt_Weight, "900");
  EXPECT_EQ(log_settings.txt_Max_Hp, "500");
  EXPECT_EQ(log_settings.Speed_option, Speed_Unit::kmh);
}

TEST_F(Log_Settings_Test, Words_In_A_Free_Text_Are_No_Keys) {
  Read_Section(
      "Log_Description=Log_Hp=5 Log_Def0=z;\r\nLog_File_Version=3.5\r\nLog_Def0=x\t1\t\t0\t0\t1\t1\t0\r\n");
  EXPECT_EQ(log_settings.txt_Log_Free_Text, "Log_Hp=5 Log_Def0=z");
  EXPECT_EQ(log_settings.txt_Weight, "1000");
  EXPECT_EQ(Signal_Row(0).custom_name, "x");
}

TEST_F(Log_Settings_Test, Fields_Cannot_Break_The_Section) {
  Signal_Row(0).custom_name = "a\tb\r\nc";
  Signal_Row(1).custom_name = "";
  log_settings.txt_Log_Date = "1\x1A";
  Update_Log_Settings();
  EXPECT_TRUE(Line("Log_Def0=").starts_with("Log_Def0=a b  c\t"));
  EXPECT_TRUE(Line("Log_Def1=").starts_with("Log_Def1=AN1 In\t"));
  EXPECT_EQ(Line("Log_Date="), "Log_Date=1 ");
}

TEST_F(Log_Settings_Test, Names_And_Units_Follow_Sensors_And_Options) {
  EXPECT_EQ(Signal_Caption(0), "RPM [rpm]");
  EXPECT_EQ(Signal_Caption(21), "POWER [hp]");
  EXPECT_EQ(Signal_Caption(22), "TORQUE [Nm]");
  EXPECT_EQ(Signal_Caption(24), "ACCELERATION [m/s^2]");
  log_settings.Torque_option = Torque_Unit::ft_lbs;
  log_settings.Speed_option = Speed_Unit::mph;
  EXPECT_EQ(Signal_Unit(22), "ft-lbs");
  EXPECT_EQ(Signal_Unit(23), "mph");
  Log_Sens_Def_Tab[3].unit = "\xB0";
  EXPECT_EQ(Signal_Caption(1), "AN1 In [°]");
  Signal_Row(1).sensor = 50;
  EXPECT_EQ(Signal_Caption(1), "AN1 In []");
  EXPECT_EQ(Max_Log_Length_Text(), "5.0 minutes");
  EXPECT_THROW(static_cast<void>(Signal_Unit(40)), std::runtime_error);
}

/// A settings section of @p version whose 40 rows are named after their numbers, sensors likewise.
std::string Numbered_Section(const std::string& version) {
  std::string lines = "Log_File_Version=" + version + "\r\n";
  for (int i = 0; i < 40; ++i) {
    const std::string n = std::to_string(i);
    lines += "Log_Def" + n + "=N" + n + "\t" + n + "\t\t1\t0\t1\t1\t0\r\n";
  }
  return lines;
}

TEST_F(Log_Settings_Test, An_Old_Layout_Is_Converted) {
  Log_Field_Count = 12;
  Read_Section(Numbered_Section("3.4"));
  EXPECT_EQ(log_layout, Log_Layout::old);
  EXPECT_FALSE(Log_New_Format);
  for (int row = 15; row <= 21; ++row) {
    EXPECT_EQ(Signal_Row(row + 5).custom_name, "N" + std::to_string(row));
    EXPECT_EQ(Signal_Row(row + 5).sensor, row);
  }
  EXPECT_EQ(Signal_Row(12).custom_name, "N12");
  EXPECT_EQ(Signal_Row(29).custom_name, "N29");
  for (const int row : {13, 19, 30, 39}) {
    EXPECT_EQ(Signal_Row(row), (Log_Signal_Row{"Option", 1, false, false, false, false, "0"})) << row;
  }
  EXPECT_EQ(Slot_Of(Log_Signal::IN_Fuel), 6);
  EXPECT_EQ(Slot_Of(Log_Signal::AN1_Out), no_slot);
  EXPECT_EQ(Default_Signal_Name(7), "ADD FUEL");
  EXPECT_EQ(Line("Log_File_Version="), "Log_File_Version=3.5");

  // Read again as the file that it would be saved as: converted once only.
  const Log_Settings converted = log_settings;
  Read_Log_Settings();
  EXPECT_EQ(log_settings, converted);
  EXPECT_EQ(Slot_Of(Log_Signal::IN_Fuel), 6);
}

TEST_F(Log_Settings_Test, Versions_And_Rows_Choose_The_Layout) {
  struct Case {
    std::string version;
    int fields;
    Log_Layout layout;
    bool new_format;
    std::string written;
  };
  const std::vector<Case> cases{
      {"3.5", 20, Log_Layout::current, true, "3.5"},  {"3.5", 14, Log_Layout::current, true, "3.5"},
      {"3.5", 13, Log_Layout::old, false, "3.5"},     {"3.5", 0, Log_Layout::current, true, "3.5"},
      {"3.4", 20, Log_Layout::current, false, "3.4"}, {"3.2", 9, Log_Layout::old, false, "3.5"}};
  for (const Case& c : cases) {
    Log_Field_Count = c.fields;
    Read_Section(Numbered_Section(c.version));
    Update_Log_Settings();
    EXPECT_EQ(log_layout, c.layout) << c.version << c.fields;
    EXPECT_EQ(Log_New_Format, c.new_format) << c.version << c.fields;
    EXPECT_EQ(Line("Log_File_Version="), "Log_File_Version=" + c.written) << c.version << c.fields;
  }
}

TEST_F(Log_Settings_Test, Units_Convert_What_Was_Typed) {
  EXPECT_EQ(Converted_Gear("26.72", Speed_Unit::kmh, Speed_Unit::mph), "16.6");
  EXPECT_EQ(Converted_Gear("16.6", Speed_Unit::mph, Speed_Unit::kmh), "26.71");
  EXPECT_EQ(Converted_Gear("36", Speed_Unit::kmh, Speed_Unit::ms), "10");
  EXPECT_EQ(Converted_Gear("10", Speed_Unit::ms, Speed_Unit::mph), "22.37");
  EXPECT_EQ(Converted_Weight("1500", Weight_Unit::lbs), "3307");
  EXPECT_EQ(Converted_Weight("3307", Weight_Unit::kg), "1499");

  log_settings.txt_Gearing[1] = "26,72";
  Log_File_Present = true;
  Speed_option_Click(Speed_Unit::mph);
  Speed_option_Click(Speed_Unit::mph);
  Weight_option_Click(Weight_Unit::lbs);
  EXPECT_EQ(log_settings.txt_Gearing[1], "16.6");
  EXPECT_EQ(log_settings.txt_Weight, "2205");
  EXPECT_TRUE(Log_File_Unsaved);
}

TEST_F(Log_Settings_Test, Gearing_Calculator) {
  cmd_Calc_Gearing_Click();
  EXPECT_EQ(log_settings.txt_Gearing[0], "37.02");
  log_settings.txt_RPM = "0,4";
  Expect_Box("Enter the engine speed of the gear as a number above 0.");
  cmd_Calc_Gearing_Click();
  EXPECT_EQ(log_settings.txt_Gearing[0], "37.02");
}

TEST_F(Log_Settings_Test, Cancel_Goes_Back_To_What_Was_When_The_Window_Opened) {
  log_settings.txt_Weight = "1200";
  Log_Setup_Opened();
  log_settings.txt_Weight = "9";
  log_settings.txt_Log_Free_Text = "wet road";
  Log_Sensor_combo_Click(2, 7);
  Custom_Signal_Name_Changed(2, "Öl");
  EXPECT_EQ(Signal_Row(2).custom_name, "\xD6l");
  CancelButton_Click();
  EXPECT_EQ(log_settings.txt_Weight, "1200");
  EXPECT_EQ(log_settings.txt_Log_Free_Text, "wet road");
  EXPECT_EQ(Signal_Row(2).sensor, 3);
  EXPECT_EQ(Signal_Row(2).custom_name, "AN2 In");
}

TEST_F(Log_Settings_Test, A_Changed_Sensor_Decodes_The_Log_Anew) {
  Log_Data_Text = Data({"a", Row("1.0000", "100")});
  KX_Log_Data_Read();
  Log_File_Present = true;
  int charts = 0;
  log_view_hooks.show_chart = [&] { ++charts; };
  Log_Sensor_combo_Click(1, 5);
  EXPECT_EQ(LogArray(1, 2), 100);
  EXPECT_EQ(charts, 1);
  EXPECT_TRUE(Log_File_Unsaved);

  int names = 0;
  log_view_hooks.show_names = [&] { ++names; };
  Custom_Signal_Name_Changed(18, "x");
  EXPECT_EQ(names, 0);
  Custom_Signal_Name_Changed(17, "x");
  EXPECT_EQ(names, 1);
  Restore_signals_view_Click();
  EXPECT_TRUE(Signal_Row(39).shown);
  EXPECT_TRUE(Signal_Row(0).view);
}

}  // namespace
}  // namespace kx::test
