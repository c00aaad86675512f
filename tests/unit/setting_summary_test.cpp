#include "workspace/setting_summary.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

#include "boxlink/box_info.h"
#include "boxlink/protocol.h"
#include "boxlink/transfer.h"
#include "sensors/sensor_store.h"
#include "settings/brand.h"
#include "settings/image.h"
#include "settings/refresh.h"
#include "settings/session.h"
#include "settings/setting_file.h"
#include "settings/text_encoding.h"
#include "sim/box.h"
#include "support/chosen_preset.h"
#include "support/test_folders.h"
#include "support/workspace_fixture.h"
#include "workspace/tables.h"

namespace kx {
namespace {

std::string File(const std::string& name) {
  std::ifstream file(name, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

class Setting_Summary : public Workspace_Fixture {
 protected:
  void SetUp() override {
    Workspace_Fixture::SetUp();
    test::Choose_Preset();
    Refresh_Whole_Image();
    port_.refuse = [this](const std::string&) { return port_error_; };
  }

  void Load_Demo() {
    const auto parsed = Parse_Setting_File(File(test::Shipped_Data() + "demo.kxs"));
    ASSERT_TRUE(parsed);
    CardByte = parsed->image;
    Refresh_Whole_Image();
  }

  /// The report of the tune is the text kept in tests/data, where lines end in LF and the version is left
  /// open.
  static void Expect_Report(const std::string& name) {
    Update_Readable_Setting_Window();
    const std::string file = File(test::Test_Data() + name);
    std::string kept;
    for (const std::string_view line : Lines_Of(file)) {
      kept += (line == "KXBench version: @VERSION@" ? "KXBench version: " + Version_Text().substr(4)
                                                    : std::string(line)) +
              "\r\n";
    }
    EXPECT_EQ(Readable_Settings, kept);
    EXPECT_EQ(txt_SettingSummary.Text(), Readable_Settings);
  }

  platform::Port_Error port_error_{2, "No such file or directory"};
};

TEST_F(Setting_Summary, Report_Of_The_Reset_Tune) { Expect_Report("report_reset.txt"); }

TEST_F(Setting_Summary, Report_Of_The_Demo_Tune_With_A_Box) {
  Load_Demo();
  Default_Interface = "KX_MapCard";
  port_error_ = {};
  sim::Box box;
  port_.answer = [&](const std::string& text) { return box.Feed(text); };
  Expect_Report("report_demo.txt");
  EXPECT_FALSE(port_.Is_Open());
}

TEST_F(Setting_Summary, Report_Of_A_Tune_With_All_Modes_Changed) {
  Load_Demo();
  Default_Interface = "TodosII_Reader";
  Sensor_Selection = {-1, 7, -1, 0, 2};
  for (const map::Field& field :
       {map::fuel_rpm_250, map::slave_mode, map::fuel_enrichment_strategy, map::io_mode_4, map::boost_pid,
        map::maf_sim_limit, map::maf_sim_enable, map::ignition_load_in_percent, map::ignition_rpm_fine,
        map::ae_by_maf_signal, map::Analog_Sync(1), map::Analog_Sync(3)}) {
    Set_Field(field, 1);
  }
  Set_Field(map::an2_mode, 1);
  Set_Field(map::ignition_mode_slave, 3);
  Refresh_Whole_Image();
  Expect_Report("report_modes.txt");
}

TEST_F(Setting_Summary, Pins_Go_With_The_Box_Mode) {
  for (const auto& [io_mode, io_mode_4, lines] :
       {std::tuple{2, 0,
                   "Mode3, 5 fuel, 1 ign. IgnB as fuelE\r\n5 fuel in / out, FuelA-FuelE pin 15-22 & 11-12\r\n"
                   "1 ignition channel in / ut, IgnitionA pin 13,14\r\nboost control out, PWM_OUT pin 5\r\n"},
        {1, 0, "\r\nMode2, not in use\r\nIgn RPM Table Precision\t"}}) {
    Set_Field(map::io_mode, io_mode);
    Set_Field(map::io_mode_4, io_mode_4);
    Update_Readable_Setting_Window();
    EXPECT_NE(Readable_Settings.find(lines), std::string::npos) << lines;
  }
}

TEST_F(Setting_Summary, Without_An_Answer_It_Goes_On_With_What_Is_Known) {
  Box_Firmware = "3.9";
  Box_Serial = 77;
  const auto goes_on = [] {
    Readable_Settings.clear();
    Update_Readable_Setting_Window();
    return Readable_Settings.find("KX-box Serial: KX77\r\n") != std::string::npos;
  };
  EXPECT_TRUE(goes_on()) << "the port does not open";
  port_error_ = {};
  EXPECT_TRUE(goes_on()) << "nobody answers";
  EXPECT_EQ(port_.Sent(), "v");
  EXPECT_FALSE(port_.Is_Open());
  port_.answer = [this](const std::string&) {
    port_.Lose();
    return std::string();
  };
  EXPECT_TRUE(goes_on()) << "the device goes away";
  Run_Transfer({}, [&] { EXPECT_TRUE(goes_on()) << "the line is not free"; });
  EXPECT_EQ(port_.Sent(), "vv");
}

TEST_F(Setting_Summary, Tables_Below_Each_Other_Hold_Every_Row_Under_Their_Titles) {
  Load_Demo();
  const std::string text = Show_Tabels_Alt1();
  const auto lines = Lines_Of(text);
  std::size_t line = 0;
  EXPECT_EQ(lines.at(line++), "--------Tables--------");
  for (const auto& [title, table] : {std::pair{"Ignition load table:", Table::ignition_load},
                                     {"Ignition rpm table:", Table::ignition_rpm},
                                     {"Fuel load table:", Table::fuel_load},
                                     {"Fuel rpm table:", Table::fuel_rpm},
                                     {"Boost load table:", Table::pwm_load},
                                     {"Boost rpm table:", Table::pwm_rpm},
                                     {"Analog1 out table:", Table::analog1},
                                     {"Analog2 out table:", Table::analog2}}) {
    EXPECT_EQ(lines.at(line++), title);
    const Grid& grid = Grid_Of(table);
    for (int row = 0; row < grid.Rows(); ++row) {
      std::string cells;
      for (int column = 0; column < grid.Columns(); ++column) cells += grid.Text(row, column) + "\t";
      EXPECT_EQ(lines.at(line++), cells) << title;
    }
  }
  EXPECT_EQ(line, lines.size());
}

}  // namespace
}  // namespace kx
