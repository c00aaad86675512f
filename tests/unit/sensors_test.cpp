#include <gmock/gmock.h>

#include <cerrno>
#include <cmath>
#include <cstring>
#include <ctime>
#include <filesystem>

#include "sensors/conversion.h"
#include "sensors/definition_file.h"
#include "settings/notice.h"
#include "settings/numbers.h"
#include "support/settings_fixture.h"
#include "support/test_folders.h"

namespace kx {
namespace {

using testing::ElementsAre;

/// A "Tab" line of @p count values first + step x point.
std::string Table_Line(int count, double first, double step) {
  std::string line = "curve\tTab";
  for (int i = 0; i < count; ++i) line += "\t" + Number_Text(first + step * i);
  return line + "\t°C\t1\tV";
}

class Sensors : public test::Settings_Fixture {
 protected:
  static double Forward(int sensor, double raw) { return Forward_Sensor_Calc(sensor, raw).value_or(-1e9); }
  static int Reversed(int sensor, double value) { return Reversed_Sensor_Calc(sensor, value).value_or(-1); }
};

TEST_F(Sensors, Definition_Lines_Fill_Both_Tables) {
  Add_Sensor("MAP\tLinear\t0,01\t-.5\t10\t250\tbar\t2\tV");
  Add_Sensor(Table_Line(33, 100, -2.5));
  Add_Sensor("odd\tLinear2c\t1\t2");
  Add_Sensor("");
  Add_Sensor("short\tLinear\tabc\t\t0\t255");
  Add_Sensor("cut\tTab\t1\t2\t3");
  Add_Sensor("remark\tLinear\t1\t0\t0\t255\tkPa\t99;decimals");
  ASSERT_EQ(Sens_Def.size(), 8U);
  EXPECT_EQ(Sens_Def[0].name + Sens_Def[0].unit, "<not used>value");
  EXPECT_EQ(Sens_Tab[0][33], 33);
  EXPECT_EQ(Sens_Def[1].gain, 0.01);
  EXPECT_EQ(Sens_Def[1].offset, -0.5);
  EXPECT_EQ(Sens_Def[1].minimum, 10);
  EXPECT_EQ(Sens_Def[1].maximum, 250);
  EXPECT_EQ(Sens_Def[1].input_unit, "V");
  EXPECT_EQ(Sens_Tab[2][1], 100);
  EXPECT_EQ(Sens_Tab[2][33], 20);
  EXPECT_EQ(Sens_Def[2].unit + Sens_Def[2].input_unit, "°CV");
  EXPECT_EQ(Sensor_Format(1) + Sensor_Format(2) + Sensor_Format(-1), "0.000.00");
  EXPECT_EQ(Sensor_Name(3) + Sens_Def[3].kind, "oddLinear2c");
  EXPECT_EQ(Sensor_Name(4), "");
  EXPECT_EQ(Sens_Tab[6][4], 0);
  EXPECT_EQ(Sensor_Format(7), "0.0000");
  EXPECT_EQ(Sensor_Name(-1) + Sensor_Unit(-1), "");
  for (const int sensor : {-2, 8}) {
    EXPECT_THROW(static_cast<void>(Sensor_Name(sensor)), Failure);
    EXPECT_THROW(static_cast<void>(Forward(sensor, 0)), Failure);
    EXPECT_THROW(static_cast<void>(Reversed(sensor, 0)), Failure);
  }
}

TEST_F(Sensors, None_And_Unknown_Kinds_Convert_Nothing) {
  Add_Sensor("odd\tLinear2c\t1\t2\t0\t255\tV\t0");
  for (const int sensor : {-1, 0, 1}) {
    double raw = 300;
    EXPECT_FALSE(Forward_Sensor_Calc(sensor, raw)) << sensor;
    EXPECT_EQ(raw, 300) << "and clip nothing";
    EXPECT_FALSE(Reversed_Sensor_Calc(sensor, 1)) << sensor;
  }
}

TEST_F(Sensors, A_Linear_Sensor_Clips_The_Callers_Raw_Value) {
  Add_Sensor("a\tLinear\t0.5\t-10\t20\t200\tbar\t1\tV");
  for (const auto& [given, clipped, value] : {std::tuple{255, 200, 90}, {100, 100, 40}, {0, 20, 0}}) {
    double raw = given;
    EXPECT_DOUBLE_EQ(Forward_Sensor_Calc(1, raw).value_or(-1), value);
    EXPECT_EQ(raw, clipped);
  }
}

TEST_F(Sensors, Reversing_A_Linear_Sensor_Rounds_To_Even_And_Clips) {
  Add_Sensor("plain\tLinear\t1\t0\t0\t255\tV\t0\tV");
  Add_Sensor("flat\tLinear\t0\t5\t0\t255\tV\t0\tV");
  Add_Sensor("narrow\tLinear\t-2\t10\t3\t200\tV\t0\tV");
  for (const auto& [value, raw] :
       {std::pair{2.5, 2}, {3.5, 4}, {-4.0, 0}, {255.4, 255}, {256.0, 255}, {32767.0, 255}}) {
    EXPECT_EQ(Reversed(1, value), raw) << value;
  }
  EXPECT_EQ(Reversed(3, -190), 100);
  EXPECT_EQ(Reversed(3, 8), 3);
  EXPECT_THROW(static_cast<void>(Reversed(1, 40000)), Failure) << "beyond 16 bits before the clip";
  EXPECT_THAT([] { Reversed(2, 5); }, testing::ThrowsMessage<Failure>("Division by zero"));
}

TEST_F(Sensors, A_Table_Runs_In_Straight_Lines_And_Back) {
  std::string line = "square\tTab";
  for (int i = 0; i < 33; ++i) line += "\t" + std::to_string(i * i);
  Add_Sensor(line + "\tbar\t2\tV");
  for (int raw = 0; raw < 256; ++raw) {
    const int k = raw / 8;
    const double expected = k * k + (raw % 8) * (2 * k + 1) / 8.0;
    EXPECT_DOUBLE_EQ(Forward(1, raw), expected) << raw;
    EXPECT_EQ(Reversed(1, expected), raw) << raw;
  }
  double raw = 300;
  EXPECT_EQ(Forward_Sensor_Calc(1, raw), Forward(1, 255));
  EXPECT_EQ(raw, 255);
  raw = -4;
  EXPECT_EQ(Forward_Sensor_Calc(1, raw), 0);
  EXPECT_EQ(raw, 0);
  for (const auto& [value, back] :
       {std::pair{0.0, 0}, {1.0, 8}, {1024.0, 256}, {1024.1, 255}, {-0.1, 0}, {0.5, 4}}) {
    EXPECT_EQ(Reversed(1, value), back) << value;
  }
  Add_Sensor(Table_Line(33, 100, -1));
  EXPECT_EQ(Reversed(2, 90), 255) << "a falling table gives an end of the range";
  EXPECT_EQ(Reversed(2, 60), 0);
}

TEST_F(Sensors, Inputs_Name_Their_Sensors) {
  Add_Sensor("a\tLinear\t1\t0\t0\t255\tV\t0\tV");
  Sensor_Selection = {-1, 4, 3, 2, 1};
  EXPECT_EQ(Sensor_On_Input(0), -1);
  EXPECT_EQ(Sensor_On_Input(4), 1);
  for (const int input : {-1, 5}) EXPECT_THROW(static_cast<void>(Sensor_On_Input(input)), Failure);
}

TEST_F(Sensors, Load_Axes_Come_From_Their_Lines_Or_From_The_Sensor) {
  Add_Sensor("a\tLinear\t0.5\t1\t0\t200\tbar\t1\tV");
  Add_Sensor(Table_Line(33, 10, 1));
  Add_Sensor("a\tLinear\t0.5\t1\t0\t255\tbar\t1\tV");
  Add_Sensor("odd\tother");
  Add_Sensor("b\tLinear\t0.5\t1\t0\t255\tkPa\t2\tV");
  std::string many = "psi   7  ";
  for (int i = 1; i <= 60; ++i) many += std::to_string(i) + ",5 ";
  const auto faults = Read_Load_Axes({{"V 2 0 0.16 x", 5}, {many, 6}, {"", 7}, {"V 0 1", 8}});
  ASSERT_EQ(faults.size(), 2U);
  EXPECT_EQ(faults[0].text,
            "this load axis has 3 points instead of 33; those that are missing are its sensor's.");
  EXPECT_EQ(faults[1].text, "this load axis has 60 points instead of 33; the rest is left out.");
  ASSERT_EQ(MAP_tab.size(), 6U);
  EXPECT_EQ(Load_Axis_Unit(0) + Load_Axis_Text(0, 33), "value33");
  EXPECT_EQ(Load_Axis_Unit(-1) + Load_Axis_Text(-1, 1), "value1");
  EXPECT_EQ(Load_Axis_Unit(1), "V");
  EXPECT_THAT(
      (std::vector{Load_Axis_Text(1, 1), Load_Axis_Text(1, 2), Load_Axis_Text(1, 3), Load_Axis_Text(1, 4)}),
      ElementsAre("0.00", "0.16", "0.00", "13.00"))
      << "the fourth point is missing and is the sensor's";
  EXPECT_EQ(Load_Axis_Text(1, 33), "101.00") << "clipped at raw 200";
  EXPECT_EQ(Load_Axis_Unit(2) + Load_Axis_Text(2, 33), "psi33.5000");
  // The empty line ends the list; the rest is made from the sensors.
  EXPECT_EQ(Load_Axis_Unit(3) + Load_Axis_Text(3, 33), "bar128.5");
  EXPECT_EQ(Load_Axis_Unit(4) + Load_Axis_Text(4, 5), "value5");
  EXPECT_EQ(Load_Axis_Unit(5) + Load_Axis_Text(5, 2), "kPa5.00");
  Read_Load_Axes({});
  EXPECT_EQ(Load_Axis_Unit(2) + Load_Axis_Text(2, 33), "°C42.0");
  for (const int row : {-2, 6}) EXPECT_THROW(static_cast<void>(Load_Axis_Unit(row)), Failure);
  for (const int point : {0, 34}) EXPECT_THROW(static_cast<void>(Load_Axis_Value(1, point)), Failure);
}

TEST_F(Sensors, A_Missing_File_Starts_With_Placeholders_And_Is_Made) {
  Set_Brand(1);
  Com_Port_Number = 7;
  DatasetID = 1;
  Init_ini_file();
  EXPECT_EQ(Ini(), "start_dir=" + start_dir + "\r\n");
  EXPECT_EQ(Com_Port_Number, 1);
  EXPECT_EQ(card_data_dir, "");
  EXPECT_EQ(Preset_List[0].name, "<No preset in ini file>");
  EXPECT_EQ(User_Preset, 0) << "the brand's 3 lies outside the list";
  EXPECT_EQ(DatasetID, 104);
  EXPECT_EQ(Sens_Def.size() + MAP_tab.size(), 2U);
  EXPECT_THAT(Sensor_Selection, ElementsAre(-1, 0, 0, 0, 0));
}

TEST_F(Sensors, Stored_Numbers_Count_Only_Within_Their_Lists) {
  struct Sample {
    const char *port, *preset, *input;
    int port_read, preset_read, sensor_read;
  };
  Default_Preset = 1;
  const Sample samples[] = {{"9", "2", "2", 9, 2, 2},       {" 12 ; USB", "0", " 1", 12, 0, 1},
                            {"0", "3", "3", 1, 0, 0},       {"-2", "-1", "-1", 1, 0, 0},
                            {"abc", "abc", "abc", 1, 0, 0}, {"1e9", "1e9", "1e9", 1, 0, 0},
                            {"", "", "", 1, 0, 0},          {"32767", "1,4", "1.6", 32767, 1, 2}};
  for (const Sample& s : samples) {
    Write_Ini(std::string("comport1=") + s.port + "\r\nUser_Preset=" + s.preset + "\r\nan_sel2=" + s.input +
              "\r\nSens_Def=a\tLinear\t1\t0\t0\t255\tV\t0\tV\r\nSens_Def=b\tLinear\t1\t0\t0\t255\tV\t0\tV\r\n"
              "preset_list=6B<one>$!\xA3\r\npreset_list=68<two>$!\xA3\r\npreset_list=6A<three>$!\xC2\xA3\r\n"
              "card_data_dir=/tunes\r\n");
    Init_ini_file();
    EXPECT_EQ(Com_Port_Number, s.port_read) << s.port;
    EXPECT_EQ(User_Preset, s.preset_read) << s.preset;
    EXPECT_EQ(Sensor_Selection[2], s.sensor_read) << s.input;
    EXPECT_EQ(DatasetID, (std::array{107, 104, 106}).at(static_cast<std::size_t>(s.preset_read)));
    EXPECT_EQ(card_data_dir, "/tunes/");
    EXPECT_EQ(Sens_Def.size(), 3U) << "a second reading replaces the first";
    EXPECT_EQ(Preset_List[2].spare_4, "");
  }
}

TEST_F(Sensors, Lines_That_Cannot_Be_Used_Are_Told_By_File_And_Line) {
  Init_ini_file();
  EXPECT_EQ(notice_text.Text(),
            folder_.Path("KXBenchPro.ini") + " is missing: there are no sensors and no presets.");
  std::string points;
  for (int i = 0; i < 33; ++i) points += " 1";
  Write_Ini("preset_list=6B<a>$!\xA3\r\nmap_lst=V 0" + points + "\r\nSens_Def=a\tTab\r\n");
  Init_ini_file();
  EXPECT_EQ(notice_text.Text(), "");
  Write_Ini("map_lst=V 0 1 2\r\npreset_list=junk\r\n\r\nSens_Def=a\tcubic\t1\r\nSens_Def=b\tTab\r\n");
  Init_ini_file();
  EXPECT_EQ(
      notice_text.Text(),
      "KXBenchPro.ini, line 1: this load axis has 2 points instead of 33; those that are missing are its "
      "sensor's.\nKXBenchPro.ini, line 2: this is no preset and is left out.\n"
      "KXBenchPro.ini, line 4: the sensor kind \"cubic\" is unknown; the sensor converts nothing.");
  std::string many;
  for (int i = 0; i < 300; ++i) many += "preset_list=junk\r\n";
  Write_Ini(many);
  Init_ini_file();
  EXPECT_THAT(notice_text.Text(), testing::EndsWith("left out.\n290 more lines are like that."));
}

TEST_F(Sensors, A_File_That_Cannot_Be_Written_Is_Told_Once_At_Start) {
  Write_Ini("start_dir=" + start_dir +
            "\r\nUser_Preset=1\r\npreset_list=6B<a>$!\xA3\r\npreset_list=6A<b>$!\xA3\r\n");
  std::filesystem::permissions(folder_.Path(Ini_File_Name), std::filesystem::perms(0444));
  ask_.Expect(
      "The settings of the program cannot be saved.\n" + folder_.Path(Ini_File_Name) + ": " +
      "the file is write protected\nThe program goes on and tries again with the next setting that changes.");
  Init_ini_file();
  EXPECT_EQ(DatasetID, 106);
  ask_.Expect_None_Left();
  ask_.Expect(ask_.last_box.text);
  Write_Key("User_Preset", "0");
  Init_ini_file();
  EXPECT_EQ(DatasetID, 107) << "a choice that could not be saved survives a second reading";
}

TEST_F(Sensors, Twenty_Thousand_Lines_Are_Read_In_One_Pass) {
  std::string text = "comport1=9\r\n";
  for (int i = 0; i < 20000; ++i) text += "; remark number " + std::to_string(i) + " with = and ] in it\r\n";
  text += "Sens_Def=last\tLinear\t1\t0\t0\t255\tV\t0\tV\r\nan_sel1=1\r\n";
  Write_Ini(text);
  const std::clock_t start = std::clock();  // of this program alone; a pass a line would take minutes
  Init_ini_file();
  EXPECT_LT(std::clock() - start, 5 * CLOCKS_PER_SEC);
  EXPECT_EQ(Com_Port_Number, 9);
  EXPECT_EQ(Sensor_Name(Sensor_On_Input(1)), "last");
}

TEST_F(Sensors, A_Second_Reading_Keeps_What_Was_Chosen_And_What_The_Status_Line_Says) {
  const std::string head = "start_dir=" + start_dir + "\r\n";
  const std::string a = "Sens_Def=a\tLinear\t1\t0\t0\t255\tV\t0\tV\r\n";
  const std::string b = "Sens_Def=b\tLinear\t1\t0\t0\t255\tbar\t0\tV\r\n";
  const std::string one = "preset_list=6B<one>$!\xA3\r\n";
  const std::string two = "preset_list=6A<two>$!\xA3\r\n";
  Write_Ini(head + a + b + one + two + "an_sel2=2\r\nUser_Preset=1\r\n");
  Init_ini_file();
  Show_Notice("Saved something");
  Read_Definitions();
  Write_Ini(head + a + two + one);
  Read_Definitions();
  EXPECT_EQ(notice_text.Text(), "Saved something");
  EXPECT_EQ(Sensor_Selection[2], 2);
  EXPECT_EQ(Sensor_On_Input(2), 0) << "its sensor has gone";
  EXPECT_EQ(std::pair(User_Preset, DatasetID), std::pair(0, std::int16_t{106})) << "followed by its name";
  Write_Ini(head + a + b + one + "map_lst=V 0 1\r\n");
  Read_Definitions();
  EXPECT_EQ(Sensor_Name(Sensor_On_Input(2)), "b") << "and has come back";
  EXPECT_EQ(std::pair(User_Preset, DatasetID), std::pair(0, std::int16_t{107}));
  EXPECT_EQ(notice_text.Text(), "The preset \"two\" has gone from the file; \"one\" is in use.");
  ask_.Expect("The sensors, load axes and presets cannot be read again and stay as they were.\n" +
              folder_.Path(Ini_File_Name) + ": " + std::strerror(ENOENT) +
              "\nThe next setting that changes writes the file anew.");
  std::filesystem::remove(folder_.Path(Ini_File_Name));
  Read_Definitions();
  EXPECT_EQ(Sens_Def.size() + MAP_tab.size() + Preset_List.size(), 7U);
  EXPECT_EQ(Sensor_On_Input(2), 2);
}

TEST_F(Sensors, The_Shipped_File_Is_Sound) {
  std::filesystem::copy(test::Shipped_Data(), folder_.Path(), std::filesystem::copy_options::recursive);
  Init_ini_file();
  ASSERT_EQ(Sens_Def.size(), 9U);
  ASSERT_EQ(MAP_tab.size(), 9U);
  for (int n = 1; n < static_cast<int>(Sens_Def.size()); ++n) {
    const Sensor& sensor = Sens_Def[static_cast<std::size_t>(n)];
    EXPECT_FALSE(sensor.name.empty() || sensor.unit.empty() || sensor.input_unit.empty()) << n;
    // Values of the thermistor, which falls, all lie above its last one.
    const bool rises = sensor.name != "Intake air temperature";
    for (int raw = 0; raw < 256; ++raw) {
      ASSERT_EQ(Reversed(n, Forward(n, raw)), rises ? raw : 255) << sensor.name << " " << raw;
    }
    if (!rises) {
      EXPECT_EQ(Reversed(n, Sens_Tab[static_cast<std::size_t>(n)][33]), 0) << "its last value itself";
    }
    EXPECT_EQ(Load_Axis_Unit(n), sensor.unit) << n;
    EXPECT_TRUE(
        Is_Computed_Axis(Read_Key("map_lst", n).value_or(""), sensor, Sens_Tab[static_cast<std::size_t>(n)]))
        << sensor.name << ": its axis would not follow a change";
    EXPECT_EQ(Load_Axis_Format(n), Sensor_Format(n)) << n;
    for (int point = 1; point <= 32; ++point) {
      const double half_a_digit = 0.5 * std::pow(0.1, Sens_Tab[static_cast<std::size_t>(n)][0]) + 0.001;
      EXPECT_NEAR(Load_Axis_Value(n, point), Forward(n, 8 * (point - 1)), half_a_digit)
          << sensor.name << point;
    }
  }
  ASSERT_EQ(Preset_List.size(), 4U);
  const std::array datasets{108, 107, 106, 104};
  for (std::size_t i = 0; i < 4; ++i) {
    EXPECT_EQ(Mask_Dataset(Preset_List[i].mask), datasets[i]);
    EXPECT_EQ(Preset_List[i].mask.size(), 8U);
    Init_Default_Settings(0);
    EXPECT_FALSE(Lists_Changes(Preset_Changes(static_cast<int>(i)))) << "a fresh tune stays as it is";
    CardByte.Fill(1, 255, 255);
    const Byte_Image once = After_Preset_Program(Preset_List[i].program, CardByte);
    EXPECT_EQ(After_Preset_Program(Preset_List[i].program, once), once) << "a second run changes nothing";
  }
  EXPECT_EQ(DatasetID, 108);
  for (int input = 1; input <= 4; ++input) EXPECT_GT(Sensor_On_Input(input), 0) << input;
}

}  // namespace
}  // namespace kx
