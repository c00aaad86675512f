#include "logging/calculation_inputs.h"

#include <gmock/gmock.h>

#include <string>

#include "logging/log_array.h"
#include "logging/log_dataset.h"
#include "logging/log_state.h"
#include "sensors/log_sensors.h"
#include "sim/drive.h"
#include "support/settings_fixture.h"

namespace kx {
namespace {

using namespace testing;

class Calculation_Inputs_Test : public test::Settings_Fixture {
 protected:
  void SetUp() override {
    Settings_Fixture::SetUp();
    Reset_Log_State();
    Load_All_Default_Log_Settings();
  }
  void TearDown() override {
    Reset_Log_State();
    Settings_Fixture::TearDown();
  }
  static std::string Dataset(int lines, int byte_3, int byte_42) {
    std::string text = "[log_dataset]\r\n";
    for (int i = 0; i < lines; ++i) text += std::to_string(i == 3 ? byte_3 : i == 42 ? byte_42 : 0) + "\r\n";
    return text + "[end log_dataset]";
  }
};

TEST_F(Calculation_Inputs_Test, Units_And_Numbers_Of_The_Setup) {
  log_settings.Gear_option = 2;
  log_settings.txt_Gearing[2] = "26,72";
  log_settings.Speed_option = Speed_Unit::mph;
  log_settings.Weight_option = Weight_Unit::lbs;
  log_settings.txt_Weight = "2205";
  log_settings.txt_AirResistance = "0.3";
  log_settings.txt_FIR = {"2,5", ""};
  log_settings.rows[26].sensor = -1;
  const Calculation_Inputs inputs = Inputs_Of(log_settings);
  EXPECT_DOUBLE_EQ(inputs.speed_divisor, 3.6 / 1.609344);
  EXPECT_EQ(inputs.gearing, 26.72);
  EXPECT_DOUBLE_EQ(inputs.mass, 1000);
  EXPECT_DOUBLE_EQ(inputs.drag, 0.3675);
  EXPECT_EQ(inputs.rpm_smoothing, 2);
  EXPECT_EQ(inputs.power_smoothing, 0);
  EXPECT_EQ(inputs.in_gain, 1);
  EXPECT_EQ(inputs.tot_gain, std::nullopt);
  EXPECT_EQ(inputs.fuel_limits.ratio, 0.7);

  log_settings.Gear_option = 0;  // nothing ticked: the calculator's result
  log_settings.txt_AirResistance = "";
  log_settings.txt_FIR[1] = "1e9";
  log_settings.Torque_option = Torque_Unit::ft_lbs;
  const Calculation_Inputs others = Inputs_Of(log_settings);
  EXPECT_EQ(others.gearing, 26.72);
  EXPECT_EQ(others.drag, 0);
  EXPECT_EQ(others.power_smoothing, 32767);
  EXPECT_EQ(others.torque_divisor, 1.35582);
}

TEST_F(Calculation_Inputs_Test, The_Dataset_Of_The_Log_Names_The_Boost_Sensor) {
  struct Case {
    std::string text;
    int sensor;
    int ignition;
  };
  for (const Case& c : {Case{Dataset(256, 6, 0), 2, 0},
                        {Dataset(256, 255, 0xF0), 3, 0},
                        {Dataset(256, 0, 1), 0, 1},
                        {Dataset(255, 1, 1), 9, 9},
                        {"", 9, 9},
                        {"[log_dataset]\r\n1", 9, 9}}) {
    Log_Dataset_Text = c.text;
    EXPECT_EQ(Get_Boost_sensor(), c.sensor);
    EXPECT_EQ(Get_Ignition_mode(), c.ignition);
    EXPECT_EQ(Get_MasterSlave_mode(), c.ignition);
  }
  Log_Dataset_Text = Dataset(257, 1, 1);
  ask_.Expect("Error");
  EXPECT_EQ(Get_Boost_sensor(), no_dataset);
  EXPECT_EQ(Inputs_Of_Log(false).boost_sensor, no_dataset);  // nobody asks without the filter
  log_settings.Fuel_filter_check = true;
  EXPECT_EQ(Inputs_Of_Log(true).boost_sensor, 0);
  Log_Dataset_Text = Dataset(256, 2, 0);
  EXPECT_EQ(Inputs_Of_Log(false).boost_sensor, 2);
}

TEST_F(Calculation_Inputs_Test, Signals_Stand_In_The_Slots_Of_The_Layout) {
  Calculation_Inputs inputs;
  inputs.gearing = 20;
  inputs.in_gain = inputs.tot_gain = 1;
  inputs.fuel_filter = true;
  inputs.boost_sensor = 1;
  const auto calculate = [&](int in_fuel_slot) {
    LogArray.Clear();
    for (int row = 1; row <= 3; ++row) {
      LogArray(row, 1) = 6000;
      LogArray(row, in_fuel_slot) = 21;
      LogArray(row, 32) = 200;
    }
    Calculate_Signals(LogArray, 3, inputs);
  };
  calculate(7);
  EXPECT_EQ(LogArray(1, 24), 120);
  EXPECT_EQ(LogArray(1, 7), 20);  // the filter: an injector that stays open
  EXPECT_EQ(LogArray(1, 26), 100);
  EXPECT_FALSE(LogArray.Has(3, 26) || LogArray.Has(4, 21));
  Load_Old_Signal_Positions_InLogDataArray();
  calculate(6);
  EXPECT_EQ(LogArray(2, 6), 20);
  EXPECT_EQ(LogArray(2, 26), 100);
}

/// The box sends rpm to 0.1. Over a row that is worth as much power as a change of speed by 0.1 rpm takes;
/// drag is counted at the speed before the row, where the truth has the whole row.
double Allowed_Error(const Calculation_Inputs& car, double speed, double speed_before) {
  const double resolution = car.gearing * 0.1 / 3.6 / 1000;
  const double kinetic = car.mass * speed * resolution * 20 / 736;
  const double drag = car.drag * (std::pow(speed, 3) - std::pow(speed_before, 3)) / 736;
  return kinetic + drag + 0.05 + 0.05;
}

TEST_F(Calculation_Inputs_Test, Power_Of_A_Drive_Is_That_Of_The_Car) {
  const sim::Car car;
  Calculation_Inputs inputs;
  inputs.mass = car.Mass;
  inputs.drag = 0.5 * car.Cw * car.Area * car.Air;
  for (int gear = 3; gear <= 4; ++gear) {
    inputs.gearing = car.Gears.at(static_cast<std::size_t>(gear - 1));
    sim::Drive drive(static_cast<std::uint32_t>(gear));
    std::vector<sim::Drive_Row> rows;
    for (int row = 1; row <= 1400; ++row) {
      rows.push_back(drive.Next());
      LogArray(row, 1) = std::stod(rows.back().Text) * 1000;
    }
    Calculate_Signals(LogArray, 1400, inputs);
    int compared = 0;
    double peak = 0;
    for (int row = 2; row <= 1400; ++row) {
      const sim::Drive_Row& truth = rows.at(static_cast<std::size_t>(row - 1));
      const double before = rows.at(static_cast<std::size_t>(row - 2)).Speed;
      if (truth.Gear != gear || !truth.Pull || truth.Power < 25) continue;
      if (rows.at(static_cast<std::size_t>(row - 2)).Gear != gear) continue;
      ++compared;
      peak = std::max(peak, LogArray(row, 22));
      EXPECT_NEAR(LogArray(row, 22), truth.Power, Allowed_Error(inputs, truth.Speed, before)) << row;
      EXPECT_NEAR(LogArray(row, 24), truth.Speed * 3.6, 0.007) << row;
    }
    EXPECT_GT(compared, 100);
    EXPECT_NEAR(peak, 236.5, 2.5);
  }
}

}  // namespace
}  // namespace kx
