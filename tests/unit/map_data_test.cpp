#include "workspace/map_data.h"

#include <gmock/gmock.h>

#include "settings/image.h"
#include "settings/refresh.h"
#include "support/workspace_fixture.h"
#include "workspace/tables.h"

namespace kx {
namespace {

using testing::ElementsAre;

class Map_Data_Of_The_Tune : public Workspace_Fixture {};

TEST_F(Map_Data_Of_The_Tune, Fuel_Cells_By_Hand) {
  CardByte[map::fuel_load.first] = 143;      // 143 / 5 - 25.6 = 3.0 ms
  CardByte[map::fuel_load.first + 32] = 64;  // 64 / 5 - 25.6 = -12.8 ms
  CardByte[map::fuel_rpm.first] = 192;       // 192 x 1.5625 - 200 = 100 %
  CardByte[map::fuel_rpm.first + 20] = 136;  // 136 x 1.5625 - 200 = 12.5, shown as 13 %
  Update_All();
  Calculate_Fuel3dmap();
  ASSERT_EQ(Map_Data.size(), 22U);
  for (const auto& line : Map_Data) EXPECT_EQ(line.size(), 34U);
  EXPECT_EQ(Map_Data[0][0], "");
  EXPECT_EQ(Map_Data[1][0] + Map_Data[21][0], "000>10000>");
  EXPECT_EQ(Map_Data[1][1], "3");
  EXPECT_EQ(Map_Data[21][1], "0.39");     // 3.0 x 13 / 100
  EXPECT_EQ(Map_Data[21][33], "-1.664");  // -12.8 x 13 / 100
  EXPECT_EQ(Map_Data[0][1], "<" + Grid_Of(Table::fuel_load).Text(1, 1));
}

TEST_F(Map_Data_Of_The_Tune, Ignition_And_Boost_Cells_By_Hand) {
  Set_Field(map::ignition_load_in_percent, 0);
  CardByte[map::ignition_load.first + 4] = 105;  // 105 / 10 = 10.5 degrees
  CardByte[map::ignition_rpm.first + 2] = 160;   // (160 - 128) / 0.64 = 50 %
  CardByte[map::ignition_rpm.first + 3] = 100;   // (100 - 128) / 0.64 = -43.75, shown as -44 %
  Update_All();
  Calculate_Ignition3dmap();
  EXPECT_EQ(Map_Data[3][5], "5.25");   // 10.5 x 50 / 100
  EXPECT_EQ(Map_Data[4][5], "-4.62");  // 10.5 x -44 / 100
  Set_Field(map::boost_pid, 1);
  Set_Field(map::boost_input, 0);            // the 2.5 bar sensor, 0.00980392 x raw + 0.1
  CardByte[map::pwm_load.first + 9] = 64;    // 64 / 1.28 = 50 %
  CardByte[map::pwm_load.first + 10] = 128;  // 100 %
  CardByte[map::pwm_rpm.first + 6] = 100;    // raw 200: 2.060784, shown as 2.06 bar
  Update_All();
  Calculate_PWM3dmap();
  EXPECT_EQ(Map_Data[7][10], "1.03");  // 50 x 2.06 / 100
  EXPECT_EQ(Map_Data[7][11], "2.06");
}

TEST_F(Map_Data_Of_The_Tune, Follows_The_Point_Counts_And_The_Text_Being_Typed) {
  Set_Field(map::fuel_rpm_250, 1);
  Set_Field(map::maf_sim_enable, 1);
  Set_Field(map::maf_sim_limit, 1);
  Update_All();
  Calculate_3dmap(Map::fuel);
  EXPECT_EQ(Map_Data.size(), 42U);
  EXPECT_EQ(Map_Data[41][0], "10000>");
  Calculate_Ignition3dmap();
  EXPECT_EQ(Map_Data.size(), 2U);
  Grid_Of(Table::pwm_load).Set_Text(5, 2, "1,5");
  Grid_Of(Table::pwm_load).Set_Text(6, 2, "");
  Grid_Of(Table::pwm_load).Set_Text(7, 2, "-");
  Grid_Of(Table::pwm_rpm).Set_Text(3, 1, "80");
  Calculate_PWM3dmap();
  EXPECT_EQ(Map_Data[3][5], "1.2");
  EXPECT_EQ(Map_Data[3][6] + Map_Data[3][7], "00");
}

TEST_F(Map_Data_Of_The_Tune, Titles_Carry_The_Units_On_Show) {
  const auto all = [](Map map) {
    const Map_Titles titles = Titles_Of(map);
    return titles.chart + ", " + titles.rpm + ", " + titles.load + ", " + titles.value;
  };
  Set_Field(map::pwm_load_input, 0);  // the 2.5 bar sensor
  Set_Field(map::fuel_load_input, 1);
  Set_Field(map::ignition_load_input, 2);
  Update_All();
  EXPECT_EQ(all(Map::ignition), "Ignition map, RPM, Load [%], Ignition [deg]");
  EXPECT_EQ(all(Map::fuel), "Fuel map, RPM, Load [V], Fuel [ms]");
  EXPECT_EQ(all(Map::pwm), "PWM map, RPM, Load [bar], PWM [%]");
  Set_Field(map::boost_pid, 1);
  Set_Field(map::boost_input, 0);
  Update_All();
  EXPECT_EQ(all(Map::pwm), "Boost map, RPM, Load [bar], Boost [bar]");
}

TEST(Map_Data_Text, Has_Headings_First_And_Goes_Over_Into_Points) {
  const Map_Table table{{"", "<0.1", "<0.2"}, {"000>", "1.5", "-2"}, {"500>", "3", "x"}};
  EXPECT_EQ(Map_Text(table), "\t<0.1\t<0.2\r\n000>\t1.5\t-2\r\n500>\t3\tx\r\n");
  const Map_Points points = Points_Of(table);
  EXPECT_THAT(points.rpm, ElementsAre("000", "500"));
  EXPECT_THAT(points.load, ElementsAre("0.1", "0.2"));
  EXPECT_THAT(points.values, ElementsAre(1.5, -2, 3, 0));
  EXPECT_EQ(points.texts[points.At(1, 0)], "3");
  EXPECT_TRUE(Points_Of({}).values.empty());
}

TEST(Map_Data_Text, Bytes_Of_A_Colour_Number) {
  EXPECT_EQ(RedFromRGB(0x123456), 0x56);
  EXPECT_EQ(GreenFromRGB(0x123456), 0x34);
  EXPECT_EQ(BlueFromRGB(0x123456), 0x12);
}

}  // namespace
}  // namespace kx
