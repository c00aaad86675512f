#include "workspace/setting_summary.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

#include "boxlink/box_info.h"
#include "boxlink/protocol.h"
#include "sensors/sensor_store.h"
#include "settings/build_profile.h"
#include "settings/image.h"
#include "settings/refresh.h"
#include "settings/session.h"
#include "settings/setting_file.h"
#include "settings/text_encoding.h"
#include "sim/box.h"
#include "support/chosen_preset.h"
#include "support/workspace_fixture.h"
#include "workspace/tables.h"

namespace kx {
namespace {

std::string File(const std::string& name) {
  std::ifstream file(name, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

std::string Version() {
  return std::to_string(build::version_major) + "." + std::to_string(build::version_minor) + "." +
         std::to_string(build::version_revision);
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
    const auto parsed = Parse_Setting_File(File(KXBENCH_DATA "/demo.kxs"));
    ASSERT_TRUE(parsed);
    CardByte = parsed->image;
    Refresh_Whole_Image();
  }

  /// The report of the tune is the text kept in tests/data, where lines end in LF and the version is left
  /// open.
  static void Expect_Report(const std::string& name) {
    Update_Readable_Setting_Window();
    const std::string file = File(KXBENCH_TESTS_DATA "/" + name);
    std::string kept;
    for (const std::string_view line : Lines_Of(file)) {
      kept += (line == "KXBench version: @VERSION@" ? "KXBench version: " + Version() : std::string(line)) +
              "\r\n";
    }
    const auto expected = Lines_Of(kept);
    const auto written = Lines_Of(Readable_Settings);
    for (std::size_t i = 0; i < std::max(expected.size(), written.size()); ++i) {
      ASSERT_LT(i, expected.size()) << written[i];
      ASSERT_LT(i, written.size()) << expected[i];
      ASSERT_EQ(written[i], expected[i]) << name << " line " << i + 1;
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
  struct Mode {
    int io_mode, io_mode_4;
    const char* lines;
  };
  for (const Mode& mode :
       {Mode{0, 0,
             "Mode1, 4 fuel, 2 ign, PWM on pin 5\r\n4 fuel in / out, FuelA-FuelD pin 15-22\r\n"
             "2 ignition channels in / out, IgnitionA- IgnitionB pin 11-14\r\nboost control out, PWM_OUT pin "
             "5\r\n"},
        {2, 0,
         "Mode3, 5 fuel, 1 ign. IgnB as fuelE\r\n5 fuel in / out, FuelA-FuelE pin 15-22 & 11-12\r\n"
         "1 ignition channel in / ut, IgnitionA pin 13,14\r\nboost control out, PWM_OUT pin 5\r\n"},
        {2, 1,
         "Mode5, 4 fuel, 1 ign. PWM on IgnB\r\n4 fuel in / out, FuelA-FuelD pin 15-22\r\n"
         "1 ignition channel in / out, IgnitionA pin 13,14\r\nboost control in / out, PWM_OUT/IN pin "
         "11,12\r\n"},
        {1, 0, "\r\nMode2, not in use\r\nIgn RPM Table Precision\t"}}) {
    Set_Field(map::io_mode, mode.io_mode);
    Set_Field(map::io_mode_4, mode.io_mode_4);
    Update_Readable_Setting_Window();
    EXPECT_NE(Readable_Settings.find(mode.lines), std::string::npos) << mode.lines;
  }
}

TEST_F(Setting_Summary, Without_An_Answer_It_Goes_On_With_What_Is_Known) {
  Box_Firmware = "3.9";
  Box_Serial = 77;
  const auto known = [] { return Readable_Settings.find("KX-box Serial: KX77\r\n") != std::string::npos; };
  Update_Readable_Setting_Window();  // the port does not open
  EXPECT_TRUE(known());
  port_error_ = {};
  Readable_Settings.clear();
  Update_Readable_Setting_Window();  // nobody answers
  EXPECT_TRUE(known());
  EXPECT_EQ(port_.Sent(), "v");
  EXPECT_FALSE(port_.Is_Open());
  port_.answer = [this](const std::string&) {
    port_.Lose();
    return std::string();
  };
  Readable_Settings.clear();
  Update_Readable_Setting_Window();  // the device goes away
  EXPECT_TRUE(known());
  const Transfer_Guard transfer;
  Readable_Settings.clear();
  Update_Readable_Setting_Window();  // the line is not free
  EXPECT_TRUE(known());
  EXPECT_EQ(port_.Sent(), "vv");
}

/// Text of the grids' rows as the report has them, beside each other.
std::string Rows_Of(std::initializer_list<Table> tables, int rows) {
  std::string text;
  for (int row = 0; row < rows; ++row) {
    for (const Table table : tables) {
      const Grid& grid = Grid_Of(table);
      for (int column = 0; column < grid.Columns(); ++column) {
        text += (row < grid.Rows() ? grid.Text(row, column) : std::string()) + "\t";
      }
    }
    text += "\r\n";
  }
  return text;
}

TEST_F(Setting_Summary, Both_Table_Styles_Hold_Every_Row_Of_The_Grids) {
  Load_Demo();
  Set_Field(map::fuel_rpm_250, 1);
  Refresh_Whole_Image();
  EXPECT_EQ(Show_Tabels_Alt2(),
            "--------Tables--------\r\nIgnition load table\tFuel load table\t\tBoost load table\r\n" +
                Rows_Of({Table::ignition_load, Table::fuel_load, Table::pwm_load}, 34) +
                "Fuel rpm table\tIgnition rpm table\t\tBoost rpm table\r\n" +
                Rows_Of({Table::fuel_rpm, Table::ignition_rpm, Table::pwm_rpm}, 42) +
                "Analog1 out table:\tAnalog2 out table:\r\n" + Rows_Of({Table::analog1, Table::analog2}, 22));
  std::string below = "--------Tables--------\r\n";
  const std::vector<std::pair<const char*, Table>> tables{
      {"Ignition load table:", Table::ignition_load}, {"Ignition rpm table:", Table::ignition_rpm},
      {"Fuel load table:", Table::fuel_load},         {"Fuel rpm table:", Table::fuel_rpm},
      {"Boost load table:", Table::pwm_load},         {"Boost rpm table:", Table::pwm_rpm},
      {"Analog1 out table:", Table::analog1},         {"Analog2 out table:", Table::analog2}};
  for (const auto& [title, table] : tables) {
    below += std::string(title) + "\r\n" + Rows_Of({table}, Grid_Of(table).Rows());
  }
  EXPECT_EQ(Show_Tabels_Alt1(), below);
}

}  // namespace
}  // namespace kx
