#include "sensors/log_sensors.h"

#include "settings/section_text.h"
#include "support/log_fixture.h"

namespace kx::test {
namespace {

class Log_Sensors : public Log_Fixture {};

const Log_Sensor& Sensor_Named(const std::string& name) {
  for (const Log_Sensor& sensor : Log_Sens_Def_Tab) {
    if (sensor.name == name) return sensor;
  }
  throw std::runtime_error("no sensor " + name);
}

TEST_F(Log_Sensors, Values_Of_Each_Kind) {
  const Log_Sensor signed_sensor{"s", "Linear2c", {0.5, 10, 0, 255}, "V", "0"};
  struct Case {
    const Log_Sensor& sensor;
    double raw;
    double value;
  };
  const std::vector<Case> cases{{Sensor_Named("Analog_0-5V"), 128, 2.5},
                                {Sensor_Named("Ignition"), 0, -25.4},
                                {Sensor_Named("MPX 2.5bar"), 100, 1.07039},
                                {signed_sensor, 127, 73.5},
                                {signed_sensor, 128, -54},
                                {signed_sensor, 255, 9.5},
                                {Sensor_Named("MPX_Tab"), 84, 0.9},
                                {Sensor_Named("MPX_Tab"), 172, 1.76},
                                {Sensor_Named("MPX_Tab"), 244, 2.46},
                                {Sensor_Named("MPX_Tab"), 255, 2.5},
                                {Sensor_Named("Smart_throttle"), 36, 14.55},
                                {Sensor_Named("WB_Lambda"), 255, 1.4},
                                {Sensor_Named("WB_Lambda"), 300, 1.4},
                                {Sensor_Named("WB_Lambda"), 128, 1}};
  for (const Case& c : cases) {
    EXPECT_DOUBLE_EQ(Log_Sensor_Value(c.sensor, c.raw).value(), c.value) << c.sensor.name << " " << c.raw;
  }
  EXPECT_FALSE(Log_Sensor_Value({"s", "Status1", {1, 0, 0, 1}, "", "0"}, 1));
  EXPECT_FALSE(Rpm_Sensor_Value(signed_sensor, 1));
}

TEST_F(Log_Sensors, Built_In_Block_Has_Seventeen_With_A_Further_Field) {
  ASSERT_EQ(Log_Sens_Def_Tab.size(), 17U);
  const std::string block = Default_Log_Sensor_Block();
  EXPECT_TRUE(
      block.starts_with("[log_sensor_def]\r\nLog_Sens_Def=RPM\tLinear\t1000\t0\t0\t10\trpm\t0\ttrpm\r\n"));
  EXPECT_TRUE(block.ends_with("\t1.4\t1.4\tlambda\t2\tAD\r\n[end log_sensor_def]"));
  for (const char* name : {"MPX_Tab", "Smart_throttle", "WB_Lambda"}) {
    EXPECT_EQ(Sensor_Named(name).numbers.size(), 33U);
  }
}

TEST_F(Log_Sensors, Section_Numbers_Its_Lines_And_Drops_Further_Fields) {
  const auto read = Parse_Log_Sensors(
      "[log_sens_def]\r\n"
      "Log_Sens_Def7=T\xE5ng\tLinear\t0,5\t-1\t0\t255\t\xB0"
      "C\t1\tbin\r\n"
      "Log_Sens_Def=door\tStatus1\t1\t2\t3\t4\t\t0\r\n[end log_sens_def]");
  EXPECT_EQ(Print_Log_Sensors(read),
            "[log_sens_def]\r\n"
            "Log_Sens_Def0=T\xE5ng\tLinear\t0.5\t-1\t0\t255\t\xB0"
            "C\t1\r\n"
            "Log_Sens_Def1=door\tStatus1\t1\t2\t3\t4\t\t0\r\n[end log_sens_def]");
  EXPECT_EQ(Parse_Log_Sensors(Print_Log_Sensors(Log_Sens_Def_Tab)), Log_Sens_Def_Tab);
}

TEST_F(Log_Sensors, Damaged_Lines_Are_Told_Of_Once) {
  Expect_Box("Did not find data no:4");
  const auto read = Parse_Log_Sensors("Log_Sens_Def0=a\tLinear\t2\r\nLog_Sens_Def1=b\tTab\t1\r\n");
  ASSERT_EQ(read.size(), 2U);
  EXPECT_EQ(read[0].numbers, (std::vector<double>{2, 0, 0, 0}));
  EXPECT_EQ(ask_.last_box.title, "WARNING");
}

TEST_F(Log_Sensors, The_Fifty_Second_Is_Refused) {
  std::string text;
  for (int i = 0; i < 52; ++i) text += "Log_Sens_Def=n\tLinear\t1\t0\t0\t1\tV\t0\r\n";
  Expect_Box("There are more than 51 log sensors. The first 51 are used.");
  EXPECT_EQ(Parse_Log_Sensors(text).size(), 51U);
}

TEST_F(Log_Sensors, Import_Adds_What_Is_Missing) {
  Log_Sens_Def_Tab = {{"Fuel", "Linear", {9, 9, 9, 9}, "x", "0"}, {"own", "Linear", {1, 0, 0, 1}, "", "0"}};
  Import_Default_Log_Sensors();
  ASSERT_EQ(Log_Sens_Def_Tab.size(), 18U);
  EXPECT_EQ(Log_Sens_Def_Tab[0].Gain(), 9);
  EXPECT_EQ(Log_Sens_Def_Tab[2].name, "RPM");
  Log_Sens_Def_Tab.resize(51);
  Import_Default_Log_Sensors();
  EXPECT_EQ(Log_Sens_Def_Tab.size(), 51U);
}

TEST_F(Log_Sensors, Section_Fields_Are_Found_And_Replaced) {
  std::string text = "[x]\r\nKey1=a\tb,5\tc;d\r\nKey2=p=q\t;\r\nlast=1";
  EXPECT_EQ(get_log_file_setting(text, "Key", 1, 2), "b.5");
  EXPECT_EQ(get_log_file_setting(text, "Key", 1, 3), "c");
  EXPECT_EQ(get_log_file_setting(text, "Key", 2), "p=q");
  EXPECT_EQ(get_log_file_setting(text, "Key", 3), "");
  EXPECT_EQ(get_log_file_setting(text, "last="), "");  // no line end behind it
  Expect_Box("Did not find data no:4");
  EXPECT_EQ(get_log_file_setting(text, "Key", 1, 4), "");
  set_log_file_setting(text, "Key", "new", 1, 2);
  set_log_file_setting(text, "None", "x");
  Expect_Box("Did not find data no:3");
  set_log_file_setting(text, "Key", "x", 2, 3);
  EXPECT_EQ(text, "[x]\r\nKey1=a\tnew\tc;d\r\nKey2=p=q\t;\r\nlast=1");
}

}  // namespace
}  // namespace kx::test
