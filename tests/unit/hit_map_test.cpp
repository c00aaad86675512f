#include "logging/hit_map.h"

#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <random>

#include "settings/failure.h"
#include "support/log_fixture.h"

namespace kx {
namespace {

constexpr Axis_Spacing load_axis{33, 8};
constexpr Axis_Spacing rpm_axis{21, 500};
constexpr double none = Log_Array::empty;

TEST(Axis_Spacing_Of_A_Table, Nearest_Entry_And_Both_Ends) {
  struct Case {
    double place;
    double at;
    int nearest;
  };
  const Case rpm_cases[] = {{-100, 1, 1},      {0, 1, 1},        {249, 1.498, 1}, {250, 1.5, 2},
                            {3000, 7, 7},      {9750, 20.5, 21}, {10000, 21, 21}, {12000, 21, 21},
                            {5125, 11.25, 11}, {749, 2.498, 2}};
  for (const Case& c : rpm_cases) {
    EXPECT_NEAR(rpm_axis.At(c.place), c.at, 1e-9) << c.place;
    EXPECT_EQ(rpm_axis.Nearest(c.place), c.nearest) << c.place;
  }
  EXPECT_DOUBLE_EQ(load_axis.At(255), 32.875);
  EXPECT_EQ(load_axis.Nearest(255), 33);
  EXPECT_EQ(load_axis.Nearest(3.9), 1);
}

TEST(Hit_Map_By_Hand, Figures_Of_Three_Cells_And_The_Rows_Left_Out) {
  //                              same cell           beyond  next    none  none  none  filtered
  const std::vector<double> rpm{3000, 2800, 3249, 12000, 3250, none, 3000, 3000, 3000};
  const std::vector<double> load{80, 77, 83.9, 255, 80, 80, none, 80, 80};
  const std::vector<double> value{1, 2, 6, -5, 9, 1, 1, none, 1};
  const std::vector<char> taken{1, 1, 1, 1, 1, 1, 1, 1, 0};
  const Hit_Map map = Hit_Map_Of({rpm, load, value}, taken, load_axis, rpm_axis);
  EXPECT_EQ(map.rows, 5);
  EXPECT_EQ(map.At(11, 7), (Hit_Cell{3, 3, 1, 6}));
  EXPECT_EQ(map.At(11, 8), (Hit_Cell{1, 9, 9, 9}));
  EXPECT_EQ(map.At(33, 21), (Hit_Cell{1, -5, -5, -5}));
  EXPECT_EQ(map.At(1, 1), Hit_Cell{});
  EXPECT_EQ(Measure_Of(map.At(11, 7), Hit_Measure::rows), 3);
  EXPECT_EQ(Measure_Of(map.At(33, 21), Hit_Measure::largest), -5);
  EXPECT_FALSE(Measure_Of(map.At(1, 1), Hit_Measure::rows));
  EXPECT_THROW((void)map.At(0, 1), Failure);
  EXPECT_THROW((void)map.At(1, 22), Failure);
}

class Hit_Map_Of_A_Log : public test::Log_Fixture {
 protected:
  void SetUp() override {
    Log_Fixture::SetUp();
    LogArray.Clear();
  }

  /// A row as decoded: rpm, raw counts of AN1 and a value in slot 8.
  static void Put(int row, double rpm, double counts, double value) {
    LogArray(row, 1) = rpm;
    LogArray(row, 31) = counts;
    LogArray(row, 8) = value;
  }
  static Hit_Choice Choice(int rows) {
    Hit_Choice choice;
    choice.load = load_axis;
    choice.rpm = rpm_axis;
    choice.value_slot = 8;
    choice.last_row = rows;
    return choice;
  }
};

/// Every cell is asked for its rows, in place of every row for its cell.
TEST_F(Hit_Map_Of_A_Log, Random_Log_Against_A_Simple_Loop) {
  std::mt19937 random(13);
  std::uniform_real_distribution<double> any(0, 1);
  for (int row = 1; row <= log_capacity; ++row) {
    Put(row, any(random) * 11000, std::floor(any(random) * 256), any(random) * 20 - 5);
    if (any(random) < 0.05) LogArray(row, 1) = none;
    if (any(random) < 0.05) LogArray(row, 8) = none;
    LogArray(row, 3) = any(random) * 5;
  }
  Hit_Choice choice = Choice(log_capacity);
  choice.first_row = 500;
  choice.ranges[1] = {3, 1, 4};
  const Hit_Map map = Hit_Map_Of_Log(LogArray, choice);
  int counted = 0;
  for (int load = 1; load <= 33; ++load) {
    for (int rpm = 1; rpm <= 21; ++rpm) {
      Hit_Cell expected;
      double sum = 0;
      for (int row = 500; row <= log_capacity; ++row) {
        const double entry_rpm = std::min(LogArray(row, 1), 10000.0) - (rpm - 1) * 500;
        const double entry_load = LogArray(row, 31) - (load - 1) * 8;
        if (!(entry_rpm >= -250 && entry_rpm < 250 && entry_load >= -4 && entry_load < 4)) continue;
        if (LogArray(row, 3) < 1 || LogArray(row, 3) > 4 || !LogArray.Has(row, 8)) continue;
        const double value = LogArray(row, 8);
        expected.smallest = expected.rows == 0 ? value : std::fmin(expected.smallest, value);
        expected.largest = expected.rows == 0 ? value : std::fmax(expected.largest, value);
        sum += value;
        ++expected.rows;
      }
      const Hit_Cell& cell = map.At(load, rpm);
      counted += cell.rows;
      EXPECT_EQ(cell.rows, expected.rows);
      EXPECT_EQ(cell.smallest, expected.smallest);
      EXPECT_EQ(cell.largest, expected.largest);
      EXPECT_NEAR(cell.mean * cell.rows, sum, 1e-9);
    }
  }
  EXPECT_EQ(map.rows, counted);
  EXPECT_GT(counted, 1000);
}

TEST_F(Hit_Map_Of_A_Log, Nothing_Of_An_Empty_Log) {
  const Hit_Map map = Hit_Map_Of_Log(LogArray, Choice(0));
  EXPECT_EQ(map.rows, 0);
  EXPECT_EQ(map.cells.size(), 33U * 21U);
  EXPECT_EQ(Hit_Map_Of_Log(LogArray, Choice(9000)).rows, 0) << "beyond what a log holds";
}

TEST_F(Hit_Map_Of_A_Log, High_Load_Goes_By_The_Limits_Of_The_Fuel_Filter) {
  log_settings.fuel_limits = {"3000", "100", "5", "0.7", "-10"};
  for (int row = 1; row <= 4; ++row) {
    Put(row, 4000, 160, 1);
    LogArray(row, 7) = 9;
  }
  LogArray(2, 1) = 3000;
  LogArray(3, 31) = 100;
  LogArray(4, 7) = 5;
  Hit_Choice choice = Choice(4);
  EXPECT_EQ(Hit_Map_Of_Log(LogArray, choice).rows, 4);
  choice.high_load = true;
  EXPECT_EQ(Hit_Map_Of_Log(LogArray, choice).rows, 1);
}

/// What the box subtracts counts; inputs without a raw copy come back from their values.
TEST_F(Hit_Map_Of_A_Log, Load_Of_Two_Inputs) {
  log_settings.rows[4].sensor = 3;   // AN4 In: 5 V in 256 counts
  log_settings.rows[11].sensor = 3;  // AN2 Out
  for (int row = 1; row <= 3; ++row) {
    LogArray(row, 5) = 100 * 0.01953125;
    LogArray(row, 12) = 40 * 0.01953125;
  }
  LogArray(2, 12) = 200 * 0.01953125;
  LogArray(3, 12) = none;
  const Load_Source source{Log_Signal::AN4_In, Log_Signal::AN2_Out};
  const std::vector<double> load = Load_Column(LogArray, source, 1, 3);
  EXPECT_EQ(load[0], 60);
  EXPECT_EQ(load[1], 0) << "a load does not go below 0";
  EXPECT_TRUE(std::isnan(load[2]));
  EXPECT_EQ(Load_Column(LogArray, {Log_Signal::AN4_In, {}}, 3, 3)[0], 100);
  log_settings.rows[4].sensor = -1;
  EXPECT_TRUE(std::isnan(Load_Column(LogArray, {Log_Signal::AN4_In, {}}, 1, 1)[0]));
  Load_Old_Signal_Positions_InLogDataArray();
  EXPECT_TRUE(std::isnan(Load_Column(LogArray, source, 1, 1)[0])) << "an old row has no AN4";
  Load_Default_Signal_Names();
}

/// All bytes there and back, for each built-in sensor; where two bytes read alike, the smaller one comes
/// back.
TEST_F(Hit_Map_Of_A_Log, Counts_Of_A_Logged_Value) {
  Log_Sensor two_sided = Log_Sens_Def_Tab[1];
  two_sided.kind = "Linear2c";
  std::vector<Log_Sensor> sensors = Log_Sens_Def_Tab;
  sensors.push_back(two_sided);
  for (const Log_Sensor& sensor : sensors) {
    for (int raw = 0; raw < 256; ++raw) {
      const double value = Log_Sensor_Value(sensor, raw).value();
      const double back = Raw_Of_Log_Value(sensor, value).value();
      EXPECT_NEAR(Log_Sensor_Value(sensor, back).value(), value, 1e-9) << sensor.name << raw;
      EXPECT_LE(back, raw + 1e-9) << sensor.name;
      EXPECT_TRUE(sensor.kind == "Tab" || std::fabs(back - raw) < 1e-9) << sensor.name;
    }
  }
  EXPECT_FALSE(Raw_Of_Log_Value({"none", "Status1", {0, 0, 0, 0}, "", "0"}, 1));
  EXPECT_FALSE(Raw_Of_Log_Value({"flat", "Linear", {0, 5, 0, 255}, "", "0"}, 5));
}

}  // namespace
}  // namespace kx
