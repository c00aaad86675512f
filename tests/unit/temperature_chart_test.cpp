#include "workspace/temperature_chart.h"

#include <gtest/gtest.h>

#include "sensors/sensor_store.h"
#include "settings/image.h"
#include "settings/refresh.h"
#include "support/workspace_fixture.h"
#include "workspace/choice_controls.h"
#include "workspace/view_hooks.h"

namespace kx {
namespace {

using Temperature_Chart_Test = Workspace_Fixture;

constexpr int plain_input = 2;  ///< analog input of the shipped settings with 0 to 5 V on it

void Set(int low, int high, int low_correction, int high_correction) {
  CardByte[map::low_air_limit] = static_cast<std::uint8_t>(low);
  CardByte[map::high_air_limit] = static_cast<std::uint8_t>(high);
  CardByte[map::low_air_correction] = static_cast<std::uint8_t>(low_correction);
  CardByte[map::high_air_correction] = static_cast<std::uint8_t>(high_correction);
  Update_Temp_Chart();
}

TEST_F(Temperature_Chart_Test, Four_Points_Span_The_Limits_And_The_Whole_Tens_Around_Them) {
  int shown = 0;
  view_hooks.show_temp_chart = [&] { ++shown; };
  struct Worked {
    int low, high;
    double low_limit, high_limit, axis_min, axis_max;
  };
  for (const Worked& worked : {Worked{128, 64, 24.8, 55.6, 10, 70},  // the sensor's raw falls as it warms
                               {200, 0, -4.5, 187.4, -20, 200},
                               {240, 32, -32, 84.1, -50, 100},
                               {64, 128, 55.6, 24.8, 10, 70}}) {  // crossed limits still make an axis
    Set(worked.low, worked.high, 0, 255);
    const Temperature_Chart& chart = Coolant_Chart;
    ASSERT_TRUE(chart.has_sensor);
    EXPECT_NEAR(chart.points[1].temperature, worked.low_limit, 1e-9);
    EXPECT_NEAR(chart.points[2].temperature, worked.high_limit, 1e-9);
    EXPECT_EQ(chart.axis_min, worked.axis_min) << worked.low;
    EXPECT_EQ(chart.axis_max, worked.axis_max) << worked.high;
    EXPECT_EQ(chart.points[0].temperature, chart.axis_min);
    EXPECT_EQ(chart.points[3].temperature, chart.axis_max);
    for (const int point : {0, 1})
      EXPECT_EQ(chart.points.at(static_cast<std::size_t>(point)).correction, -25.1);
    for (const int point : {2, 3})
      EXPECT_EQ(chart.points.at(static_cast<std::size_t>(point)).correction, 24.9);
  }
  EXPECT_EQ(Coolant_Chart.L_IA_Temp_label, "55.6");
  EXPECT_EQ(Coolant_Chart.H_IA_Temp_label, "24.8");
  EXPECT_EQ(shown, 4);
}

TEST_F(Temperature_Chart_Test, The_Input_Is_The_One_Chosen_In_The_Box_Settings) {
  Choice_Changed(Choice_Row_Of("IAT_in_combo"), plain_input - 1);
  Set(51, 204, 128, 128);
  EXPECT_NEAR(Coolant_Chart.points[1].temperature, 1, 1e-6);
  EXPECT_EQ(Coolant_Chart.H_IA_Temp_label, "4.0");
  EXPECT_EQ(Coolant_Chart.axis_max, 20);
}

TEST_F(Temperature_Chart_Test, Without_A_Sensor_There_Is_No_Curve) {
  Set(128, 64, 128, 128);
  Sensor_Selection = {-1, 0, 0, 0, 0};
  Update_All();
  EXPECT_FALSE(Coolant_Chart.has_sensor);
  EXPECT_EQ(Coolant_Chart.L_IA_Temp_label, "");
  EXPECT_EQ(Coolant_Chart.H_IA_Temp_label, "");
  EXPECT_LT(Coolant_Chart.axis_min, Coolant_Chart.axis_max);
}

}  // namespace
}  // namespace kx
