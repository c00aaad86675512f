#include "workspace/log_hits.h"

#include <gmock/gmock.h>

#include "logging/live_log.h"
#include "logging/log_settings.h"
#include "logging/log_state.h"
#include "sensors/load_axes.h"
#include "settings/text_encoding.h"
#include "support/workspace_fixture.h"
#include "workspace/table_axes.h"

namespace kx {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

/// A log of four rows in memory, over the shipped tune's axes.
class Log_Hits_Test : public Workspace_Fixture {
 protected:
  void SetUp() override {
    Workspace_Fixture::SetUp();
    Reset_Log_State();
    Load_All_Default_Log_Settings();
    LogArray.Clear();
    Log_Row_Count = 0;
    const double rows[][3] = {{3000, 80, 2.5}, {3010, 82, 3.5}, {2990, 78, 12}, {9990, 255, 1}};
    for (const auto& [rpm, counts, fuel] : rows) {
      ++Log_Rows;
      LogArray(Log_Rows, 1) = rpm;
      LogArray(Log_Rows, 31) = counts;
      LogArray(Log_Rows, 8) = fuel;
    }
    Log_Chart_First = 1;
    Log_Chart_Last = 4;
    request_.signal_row = 7;  // TOT Fuel
  }
  void TearDown() override {
    Reset_Log_State();
    Workspace_Fixture::TearDown();
  }

  Hit_Request request_;
};

TEST_F(Log_Hits_Test, Texts_Of_Cells_Tip_Summary_And_File) {
  Set_Field(map::ignition_load_input, 0);
  request_.measure = Hit_Measure::mean;
  const Log_Hits hits = Hits_Of(request_);
  EXPECT_EQ(Cell_Text(hits, 11, 7), "6.00");
  EXPECT_EQ(Cell_Text(hits, 33, 21), "1.00");
  EXPECT_EQ(Cell_Text(hits, 1, 1), "");
  EXPECT_EQ(Title_Of(hits), "Mean of TOT Fuel [ms]");
  EXPECT_EQ(hits.load[10], Load_Axis_Text(Sensor_On_Input(1), 11));
  const std::string unit = Load_Axis_Unit(Sensor_On_Input(1));
  EXPECT_EQ(Summary_Of(hits),
            "4 of 4 rows in 2 cells. Most, 3, at 3000 RPM and " + hits.load[10] + " " + unit + ".");
  const std::string tip = Cell_Tip(hits, 11, 7);
  EXPECT_THAT(tip, StartsWith("2750 to 3250 RPM\nAN1 In "));
  EXPECT_THAT(tip, HasSubstr("3 rows, 0.15 s\nTOT Fuel:\nmean 6.00 ms\nsmallest 2.50 ms\nlargest 12.00 ms"));
  EXPECT_THAT(Cell_Tip(hits, 33, 21), HasSubstr("from 9750 RPM up"));
  EXPECT_THAT(Cell_Tip(hits, 1, 1), StartsWith("up to 250 RPM"));
  const std::string file = From_Windows_1252(Hits_File_Text(hits));
  EXPECT_THAT(file, StartsWith("Mean of TOT Fuel [ms], AN1 In [" + unit + "] by RPM\t000\t500\t1000\t"));
  EXPECT_THAT(file, HasSubstr("\r\n" + hits.load[10] + "\t\t\t\t\t\t\t6\t\t"));
  EXPECT_EQ(std::ranges::count(file, '\n'), 34);
}

TEST_F(Log_Hits_Test, Colours_Of_Rows_Are_Logarithmic_Those_Of_Values_Are_Not) {
  EXPECT_EQ(Scale_Of(Hits_Of(request_)).low, 1);
  EXPECT_EQ(Scale_Of(Hits_Of(request_)).high, 3);
  EXPECT_NEAR(Scale_Of(Hits_Of(request_)).Share(std::sqrt(3)), 0.5, 1e-9);
  request_.measure = Hit_Measure::largest;
  const Heat_Scale scale = Scale_Of(Hits_Of(request_));
  EXPECT_NEAR(scale.Share(6.5), 0.5, 1e-9);
  EXPECT_NEAR(scale.Value(0.5), 6.5, 1e-9);
  EXPECT_EQ(scale.Share(99), 1);
}

TEST_F(Log_Hits_Test, Axes_Are_The_Tunes_And_The_Filter_Is_The_Users) {
  request_.table = Table::fuel_load;
  EXPECT_EQ(Hits_Of(request_).rpm.size(), 21U);
  Set_Field(map::fuel_rpm_250, 1);
  EXPECT_EQ(Hits_Of(request_).rpm.size(), 41U);
  EXPECT_EQ(Hits_Of(request_).map.At(11, 13).rows, 3);
  request_.table = Table::ignition_load;
  Set_Field(map::maf_sim_enable, 1);
  Set_Field(map::maf_sim_limit, 1);
  EXPECT_EQ(Hits_Of(request_).rpm.size(), 21U) << "one entry for all RPMs still makes a map";
  request_.stretch_only = true;
  Log_Chart_First = 2;
  EXPECT_EQ(Hits_Of(request_).map.rows, 3);
  request_.limits[0] = {0, 3000, 5000};
  EXPECT_EQ(Hits_Of(request_).map.rows, 1);
  request_.limits[0] = {0, {}, 2000};
  EXPECT_THAT(Summary_Of(Hits_Of(request_)), StartsWith("None of 4 rows passes the filter and has RPM, AN"));
  EXPECT_EQ(Signal_Range_Text(7), "1.00 to 12.00 ms in this log");
  EXPECT_EQ(Signal_Range_Text(12), "this log has no values [V]");
}

TEST_F(Log_Hits_Test, The_Load_Is_What_The_Tune_Bases_The_Table_On) {
  Set_Field(map::ignition_load_input, 2);
  EXPECT_EQ(Load_Name(Table::ignition_load, own_load), "AN3 In");
  EXPECT_EQ(Hits_Of(request_).map.rows, 0) << "the log has no AN3";
  request_.input = 0;
  EXPECT_EQ(Hits_Of(request_).map.rows, 4);
  Set_Field(map::fuel_load_input, 0);
  Set_Field(map::fuel_load_second, 3);
  EXPECT_EQ(Load_Name(Table::fuel_load, own_load), "AN1 In less AN2 In");
  Set_Field(map::pwm_load_input, 3);
  EXPECT_EQ(Load_Name(Table::pwm_load, own_load), "AN4 In");
}

TEST_F(Log_Hits_Test, An_Empty_Log_Is_An_Empty_Map_That_Says_So) {
  Clear_Data_Arrays();
  const Log_Hits hits = Hits_Of(request_);
  EXPECT_EQ(hits.map.rows, 0);
  EXPECT_EQ(hits.load.size(), 33U);
  EXPECT_EQ(Summary_Of(hits), "No log on screen. Open one, or start one with F9.");
  EXPECT_EQ(Signal_Range_Text(7), "this log has no values [ms]");
}

}  // namespace
}  // namespace kx
