#include <gmock/gmock.h>

#include <algorithm>
#include <string>

#include "logging/live_log.h"
#include "logging/log_array.h"
#include "logging/log_dataset.h"
#include "logging/log_files.h"
#include "logging/log_reader.h"
#include "logging/log_settings.h"
#include "logging/log_state.h"
#include "settings/numbers.h"
#include "sim/drive.h"
#include "support/settings_fixture.h"
#include "support/test_folders.h"

namespace kx {
namespace {

using namespace testing;

class Demo_Logs : public test::Settings_Fixture {
 protected:
  void SetUp() override {
    Settings_Fixture::SetUp();
    Reset_Log_State();
  }
  void TearDown() override {
    Reset_Log_State();
    Settings_Fixture::TearDown();
  }
  /// Largest value of @p slot in rows @p first to @p last.
  static double Peak(int slot, std::size_t first, std::size_t last) {
    return *std::ranges::max_element(LogArray.Column(slot).subspan(first, last - first + 1));
  }
};

/// As they ship. Should this fail after a change of the drive or the writer: run make_demo_logs.
TEST_F(Demo_Logs, Show_The_Power_That_Their_Remarks_Tell_Of) {
  struct Demo {
    const char* name;
    int rows;
    std::size_t first_row;  ///< of the drive
    std::size_t pull;       ///< first and last row of the pull that the remarks tell of
    std::size_t pull_end;
  };
  for (const Demo& demo : {Demo{"demo_pull.kxl", 260, 940, 30, 240},
                           {"demo_drive.kxl", 1440, 0, 140, 186},
                           {"demo_interrupted.kxl", 660, 560, 45, 145}}) {
    SCOPED_TRACE(demo.name);
    ASSERT_TRUE(Open_File(test::Shipped_Data() + demo.name));
    EXPECT_EQ(Log_Rows, demo.rows);
    EXPECT_EQ(Log_Field_Count, 20);
    const std::string told = log_settings.txt_Log_Free_Text;
    EXPECT_NEAR(Peak(22, demo.pull, demo.pull_end), Val_Any(told.substr(told.find("reached ") + 8)), 2.5);
    EXPECT_NEAR(Peak(23, demo.pull, demo.pull_end), 330, 20);
    EXPECT_THAT(Peak(2, demo.pull, demo.pull_end), AllOf(Gt(1.8), Lt(2.1)));  // bar
    EXPECT_EQ(Get_Boost_sensor(), 0);
    sim::Drive drive;
    for (std::size_t i = 0; i < demo.first_row; ++i) (void)drive.Next();
    EXPECT_NEAR(LogArray(1, 1), std::stod(drive.Next().Text) * 1000, 1e-6) << "another drive";
  }
}

}  // namespace
}  // namespace kx
