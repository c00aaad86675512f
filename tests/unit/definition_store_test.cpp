#include "sensors/definition_store.h"

#include <gmock/gmock.h>

#include <filesystem>

#include "sensors/conversion.h"
#include "sensors/definition_file.h"
#include "settings/ini_file_adm.h"
#include "settings/numbers.h"
#include "support/settings_fixture.h"

namespace kx {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

Sensor_Draft Straight(const std::string& name) {
  Sensor_Draft draft;
  draft.name = name;
  draft.gain = "0,5";
  draft.offset = "-10";
  draft.minimum = "0";
  draft.maximum = "255";
  draft.unit = "bar";
  draft.decimals = "1";
  draft.input_unit = "V";
  return draft;
}

Sensor_Draft Curve_Of(const std::string& name, double first, double step) {
  Sensor_Draft draft = Straight(name);
  draft.linear = false;
  for (std::size_t i = 0; i < draft.values.size(); ++i) {
    draft.values[i] = Number_Text(first + step * static_cast<double>(i));
  }
  return draft;
}

class Definition_Store : public test::Settings_Fixture {
 protected:
  void SetUp() override {
    Settings_Fixture::SetUp();
    refresh_hooks.update_all = [this] { ++refreshed_; };
  }

  /// Starts on an ini file that has the line start_dir already, so that what a store changes is all there is.
  void Start(const std::string& lines) {
    Write_Ini("start_dir=" + start_dir + "\r\n" + lines);
    Init_ini_file();
  }
  [[nodiscard]] std::string Lines() const { return Ini().substr(Ini().find('\n') + 1); }

  int refreshed_ = 0;
};

TEST_F(Definition_Store, A_New_Sensor_Goes_Behind_The_Last_With_Its_Axis_And_Those_Before_It) {
  Start(
      "Sens_Def=one\tLinear\t1\t0\t0\t255\tV\t0\tV\r\n; a remark\r\nSENS_DEF=two\tLinear\t2\t0\t0\t100\tmy "
      "unit\t0\tV\r\nan_sel1=2\r\n");
  EXPECT_TRUE(Store_As_Sensor_Definition(Straight("three")));
  EXPECT_EQ(refreshed_, 1);
  ASSERT_EQ(Sens_Def.size(), 4U);
  EXPECT_EQ(Sens_Def[3].name, "three");
  EXPECT_EQ(Sens_Def[3].gain, 0.5);
  EXPECT_EQ(Sensor_Selection[1], 2);
  const std::string text = Lines();
  EXPECT_THAT(text, StartsWith("Sens_Def=one\tLinear\t1\t0\t0\t255\tV\t0\tV\r\n; a remark\r\nSENS_DEF=two"));
  EXPECT_THAT(text, HasSubstr("\tV\r\nSens_Def=three\tLinear\t0.5\t-10\t0\t255\tbar\t1\tV\r\nan_sel1=2\r\n"));
  EXPECT_THAT(text, HasSubstr("\r\nmap_lst=V 0 0 8 16 24"));
  EXPECT_THAT(text, HasSubstr("\r\nmap_lst=my\xA0unit 0 0 16 32"))
      << "two words would part unit and decimals";
  EXPECT_THAT(text, HasSubstr("\r\nmap_lst=bar 1 -10.0 -6.0 -2.0"));
  EXPECT_EQ(Load_Axis_Unit(2), "my\u00A0unit");
  EXPECT_EQ(Load_Axis_Text(2, 33), "200") << "clipped at the sensor's greatest raw value";
  EXPECT_EQ(Load_Axis_Text(3, 33), "117.5") << "raw 256 is clipped to 255";
}

TEST_F(Definition_Store, A_Sensor_Of_The_Same_Name_Is_Replaced_And_Its_Axis_Follows) {
  const Sensor_Row one = Row_Of_Line("one\tLinear\t1\t0\t0\t255\tV\t0\tV");
  Start(
      "Sens_Def=one\tLinear\t1\t0\t0\t255\tV\t0\tV\r\nSens_Def=two\tLinear\t2\t0\t0\t255\tV\t0\tV\r\n"
      "map_lst=" +
      Axis_Line(one.sensor, one.columns) + "\r\nmap_lst=V 0 2\r\nmap_lst=own 0 3\r\n");
  EXPECT_TRUE(Store_As_Sensor_Definition(Curve_Of("one", 0, 0.25), "one"));
  ASSERT_EQ(Sens_Def.size(), 3U);
  EXPECT_EQ(Sens_Def[1].kind, "Tab");
  EXPECT_EQ(Sens_Tab[1][33], 8);
  EXPECT_EQ(Load_Axis_Text(1, 33), "8.0");
  EXPECT_THAT(Lines(), HasSubstr("\r\nmap_lst=V 0 2\r\nmap_lst=own 0 3\r\n"));
  EXPECT_EQ(notice_text.Text(), "Stored the sensor \"one\" in KXBenchPro.ini.");
  EXPECT_TRUE(Store_As_Sensor_Definition(Straight("two"), "two"));
  EXPECT_EQ(Sens_Def[2].unit, "bar");
  EXPECT_EQ(Load_Axis_Unit(2), "V") << "made by hand";
  EXPECT_THAT(notice_text.Text(), HasSubstr("Its load axis was made by hand and stays as it is."));
  EXPECT_TRUE(Store_As_Sensor_Definition(Straight("three")));
  EXPECT_EQ(Load_Axis_Unit(3), "bar") << "not the one that belonged to no sensor";
  EXPECT_EQ(Load_Axis_Unit(4), "own") << "which stays";
}

TEST_F(Definition_Store, Only_The_Sensor_That_Was_Opened_Is_Replaced_Without_A_Question) {
  const std::string one = "Sens_Def=one\tLinear\t1\t0\t0\t255\tV\t0\tV\r\n";
  Start(one);
  for (const char* opened : {"", "another"}) {
    ask_.Expect("There is a sensor \"one\" already. Replace it?", platform::Answer::no);
    EXPECT_FALSE(Store_As_Sensor_Definition(Straight("one"), opened));
    EXPECT_EQ(Lines(), one);
  }
  ask_.Expect("There is a sensor \"one\" already. Replace it?", platform::Answer::yes);
  EXPECT_TRUE(Store_As_Sensor_Definition(Straight("one")));
  EXPECT_EQ(Sens_Def[1].gain, 0.5);
  Write_Ini(Ini() + one + one);
  Read_Definitions();
  const std::string before = Ini();
  ask_.Expect("There is more than one sensor \"one\". Choose another name.");
  EXPECT_FALSE(Store_As_Sensor_Definition(Curve_Of("one", 1, 1), "one")) << "which of them was opened?";
  EXPECT_EQ(Ini(), before);
}

TEST_F(Definition_Store, Axes_Go_Where_They_Show_For_Their_Sensors) {
  const std::string sensors =
      "Sens_Def=one\tLinear\t1\t0\t0\t255\tV\t0\tV\r\nSens_Def=two\tLinear\t2\t0\t0\t255\tbar\t0\tV\r\n";
  const std::string three = Definition_Line(Straight("three"));
  const auto heads = [](const std::string& text) {
    std::string all;
    for (const Ini_Value& axis : Values_Of_Key(text, "map_lst")) all += axis.text.substr(0, 8) + "|";
    return all;
  };
  EXPECT_EQ(heads(With_Sensor(sensors, three)), "V 0 0 8 |bar 0 0 |bar 1 -1|");
  EXPECT_EQ(heads(With_Sensor(sensors + "map_lst=own 0 9 9\r\nmap_lst=\r\nmap_lst=V 0 1 2 3\r\n", three)),
            "own 0 9 |bar 0 0 |bar 1 -1||V 0 1 2 |")
      << "an empty line ends the list, and what follows it does not come to life";
  const std::string twice = With_Sensor(With_Sensor(sensors, three), three);
  EXPECT_EQ(twice, With_Sensor(sensors, three)) << "the same line again changes nothing";
  Sensor_Draft changed = Straight("three");
  changed.unit = "psi";
  EXPECT_EQ(heads(With_Sensor(twice, Definition_Line(changed))), "V 0 0 8 |bar 0 0 |psi 1 -1|");
}

TEST_F(Definition_Store, An_Odd_Sensor_That_Is_There_Can_Be_Left_As_It_Is) {
  Start("Sens_Def=flat\tLinear\t0\t5\t255\t0\tV\t0\tV\r\n");
  const Sensor_Draft flat = Draft_Of(Sens_Def[1], Sens_Tab[1]);
  EXPECT_NE(Fault_Of(flat), "");
  EXPECT_TRUE(Store_As_Sensor_Definition(flat, "flat"));
}

TEST_F(Definition_Store, What_Is_There_Already_Is_Not_Written) {
  Start("Sens_Def=one\tLinear\t0.5\t-10\t0\t255\tbar\t1\tV\r\nmap_lst=bar 1 by hand\r\n");
  const std::string before = Ini();
  EXPECT_TRUE(Store_As_Sensor_Definition(Straight("one")));
  EXPECT_EQ(Ini(), before);
}

TEST_F(Definition_Store, Line_To_Tables_And_Back_For_Odd_Names_And_Curves) {
  Start("");
  const Sensor_Draft drafts[] = {Straight("a = b] °ü€"), Straight("Â£"), Curve_Of("falling", 100, -3.125),
                                 Curve_Of("flat", 7, 0), Straight(std::string(longest_sensor_name, 'x'))};
  for (const Sensor_Draft& draft : drafts) {
    ASSERT_TRUE(Store_As_Sensor_Definition(draft)) << draft.name;
    EXPECT_EQ(Sens_Def.back().name, draft.name);
    EXPECT_EQ(Definition_Line(Draft_Of(Sens_Def.back(), Sens_Tab.back())), Definition_Line(draft));
  }
  EXPECT_EQ(Sens_Def.size(), 6U);
}

TEST_F(Definition_Store, A_Draft_That_Is_No_Sensor_Is_Told_Of_And_Stores_Nothing) {
  Start("");
  const auto with = [](auto change) {
    Sensor_Draft draft = Straight("new");
    change(draft);
    return draft;
  };
  const std::pair<Sensor_Draft, const char*> cases[] = {
      {with([](auto& d) { d.name = " "; }), "The sensor has no name."},
      {with([](auto& d) { d.name = "<not used>"; }), "\"<not used>\" is no name for a sensor."},
      {with([](auto& d) { d.name = std::string(300, 'x'); }), "The name has more than 60 characters."},
      {with([](auto& d) { d.name = "a\tb"; }),
       "The name has a TAB, a line end or a semicolon in it, which part the fields of the file."},
      {with([](auto& d) { d.unit = "\xE6\xB8\xA9"; }),
       "The unit has a character that the settings file cannot hold."},
      {with([](auto& d) { d.input_unit = "V;"; }),
       "The unit of the input has a TAB, a line end or a semicolon in it, which part the fields of the "
       "file."},
      {with([](auto& d) { d.gain = "0"; }), "A sensor gain of 0 gives one value for every input."},
      {with([](auto& d) { d.gain = "1x"; }), "Sensor gain is not a number."},
      {with([](auto& d) { d.offset = "1e300"; }), "Sensor offset is too large."},
      {with([](auto& d) { d.maximum = "40000"; }), "Sensor in max is too large."},
      {with([](auto& d) { d.minimum = "255"; }), "Sensor in min is not below Sensor in max."},
      {with([](auto& d) { d.decimals = "-1"; }), "Decimals are a whole number from 0 to 4."},
      {with([](auto& d) { d.decimals = "99"; }), "Decimals are a whole number from 0 to 4."},
      {with([](auto& d) { d.decimals = "x"; }), "Decimals are a whole number from 0 to 4."},
      {with([](auto& d) { d.linear = false; }), "Value 1 is not a number."},
  };
  const std::string before = Ini();
  for (const auto& [draft, text] : cases) {
    ask_.Expect(text);
    EXPECT_FALSE(Store_As_Sensor_Definition(draft)) << text;
  }
  EXPECT_EQ(Ini(), before);
  EXPECT_EQ(Sens_Def.size(), 1U);
}

TEST_F(Definition_Store, Without_A_File_To_Write_The_Sensor_Holds_For_The_Run) {
  Start("Sens_Def=one\tLinear\t1\t0\t0\t255\tV\t0\tV\r\n");
  const std::string before = Ini();
  std::filesystem::permissions(folder_.Path(Ini_File_Name), std::filesystem::perms(0444));
  ask_.Expect("The settings of the program cannot be saved.\n" + folder_.Path(Ini_File_Name) +
              ": the file is write protected\nThe program goes on and tries again with the next setting that "
              "changes.");
  EXPECT_TRUE(Store_As_Sensor_Definition(Straight("two")));
  EXPECT_EQ(Ini(), before);
  ASSERT_EQ(Sens_Def.size(), 3U);
  EXPECT_EQ(Load_Axis_Unit(2), "bar");
  EXPECT_EQ(notice_text.Text(), "") << "nothing has been stored";
  std::filesystem::permissions(folder_.Path(Ini_File_Name), std::filesystem::perms(0644));
  // Meanwhile another program has added a sensor.
  Write_Ini(before + "Sens_Def=other\tLinear\t1\t0\t0\t255\tV\t0\tV\r\n");
  Write_Key("comport1", "3");
  EXPECT_THAT(Lines(), HasSubstr("Sens_Def=other\tLinear\t1\t0\t0\t255\tV\t0\tV\r\nSens_Def=two\tLinear"));
}

}  // namespace
}  // namespace kx
