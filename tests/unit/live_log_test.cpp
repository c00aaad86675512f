#include <gmock/gmock.h>

#include <string>
#include <vector>

#include "boxlink/transfer.h"
#include "logging/live_log.h"
#include "logging/log_array.h"
#include "logging/log_backup.h"
#include "logging/log_reception.h"
#include "settings/history.h"
#include "settings/message.h"
#include "settings/notice.h"
#include "sim/drive.h"
#include "support/file_size_limit.h"
#include "support/live_log_fixture.h"
#include "support/workspace_fixture.h"
#include "workspace/shut_down.h"

namespace kx {
namespace {

using namespace testing;
using platform::Answer;

constexpr const char* delayed =
    "There were a delay before logging started. Current box settings were therefore not read.";
constexpr const char* interrupted = "There were some interruptions during the log";
constexpr const char* both =
    "There were both a delayed start, and some interruption of log. Current box settings were therefore not "
    "read.";
constexpr const char* unsaved_question = "Do you want to save current log file: KXLog-.kxl?";

using Live_Log_Test = test::Live_Log_Fixture;

TEST_F(Live_Log_Test, A_Drive_From_Start_To_Stop) {
  Click();
  EXPECT_EQ(Shown_Live_Log().button, "STOP");
  EXPECT_FALSE(Shown_Live_Log().log_buttons_enabled);
  EXPECT_TRUE(Transfer_Running());
  loop_.Run(10);
  EXPECT_TRUE(Shown_Live_Log().logging_alert);
  EXPECT_GE(Log_Row_Count, 180);
  EXPECT_EQ(Log_Chart_Last, Log_Row_Count);
  EXPECT_EQ(Log_Chart_First, Log_Row_Count - 100);
  EXPECT_THAT(live_values[0].text, MatchesRegex("[0-9]+ rpm"));
  EXPECT_THAT(live_values[1].text, MatchesRegex("[0-9]\\.[0-9]{2} V"));
  const bool inverted = Shown_Live_Log().alert_inverted;
  loop_.Run(0.75);
  EXPECT_NE(Shown_Live_Log().alert_inverted, inverted);
  Click();
  EXPECT_EQ(Shown_Live_Log().button, "START");
  EXPECT_FALSE(MSComm1.PortOpen() || Transfer_Running() || Log_Running());
  EXPECT_EQ(port_.Sent(), "a ");
  const std::string rows = Rows_In(Log_Data_Text);
  EXPECT_EQ(Log_Data_Text, "[log_data]\r\na\r\n" + rows + "[end log_data]\r\n");
  EXPECT_EQ(rows, Drive_Rows(2, rows.size()));  // the first chunk was two whole rows
  EXPECT_EQ(Log_Rows * 85, static_cast<int>(rows.size()));
  EXPECT_GE(Log_Rows, 210);
  EXPECT_EQ(LogArray(Log_Rows, 1), std::stod(rows.substr(rows.size() - 85)) * 1000);
  EXPECT_TRUE(LogArray.Has(Log_Rows, 22));
  EXPECT_EQ(Log_Window_Caption(), "*KXLog-.kxl");
  EXPECT_EQ(live_values[0].text, "");
  const std::string backup = folder_.Read(log_backup_name);
  EXPECT_THAT(backup, StartsWith("[log_data] 'Backup of last made logging 2031-05-17 10:00:00\r\n" + rows));
  EXPECT_THAT(backup, HasSubstr("\r\n[end_log_data]\r\n\r\n[log_settings]\r\n"));
  EXPECT_THAT(backup, EndsWith("[end log_sens_def]\r\n\r\n"));
  EXPECT_FALSE(Is_Unfinished_Backup(backup));
}

/// What was received is in the log whatever the line does, the texts are right, and the next log works.
struct Fault_Case {
  const char* knobs;
  const char* report;  ///< nullptr for none
  int marks;           ///< rows with a remark
};

TEST_F(Live_Log_Test, Faults_Of_The_Line) {
  const Fault_Case cases[] = {{"log_late=2", delayed, 0},
                              {"log_off=60:2", interrupted, 1},
                              {"log_late=1,log_off=60:3", both, 1},
                              {"refuse,on=a,from=60,times=20", interrupted, 1},
                              {"half,on=a,from=50,times=1", nullptr, 0},
                              {"garbage,on=a,from=50,times=3", nullptr, 0},
                              {"drop=1%,on=a", nullptr, 0},
                              {"single,on=a", nullptr, 0},
                              {"log_header", nullptr, 0}};
  for (const Fault_Case& c : cases) {
    SCOPED_TRACE(c.knobs);
    Plug_In(c.knobs);
    Click();
    loop_.Run(12);
    if (c.report != nullptr) ask_.Expect(c.report);
    Click();
    EXPECT_EQ(Marks(), c.marks);
    EXPECT_EQ(Log_Data_Text.find("a 'Delayed start") != std::string::npos,
              std::string(c.knobs).starts_with("log_late"));
    EXPECT_GT(Log_Rows, 100);
    EXPECT_THAT(LogArray(Log_Rows, 1), AllOf(Gt(0), Lt(10000)));
    ask_.Expect_None_Left();
    Log_File_Unsaved = false;
  }
}

TEST_F(Live_Log_Test, A_Box_That_Never_Answers_Is_Asked_Again_And_Again) {
  Plug_In("refuse");
  Click();
  loop_.Run(3.1);
  EXPECT_TRUE(Shown_Live_Log().no_connection_alert);
  EXPECT_FALSE(Shown_Live_Log().logging_alert);
  EXPECT_EQ(port_.Sent(), "aaaaa");
  ask_.Expect(delayed);
  Click();
  EXPECT_EQ(Log_Rows, 0);
  EXPECT_EQ(Log_Data_Text, "[log_data]\r\n[end log_data]\r\n");
}

TEST_F(Live_Log_Test, A_Computer_That_Falls_Behind_Stops_The_Log) {
  log_view_hooks.show_chart = [this] {
    if (Log_Running()) clock_.Advance(4);
  };
  ask_.Expect(
      "The computer can not handle this logging speed. Please lower the number of seconds to show or "
      "increase "
      "the update interval",
      Answer::ok, [this] { log_view_hooks.show_chart = nullptr; });
  Click();
  for (int i = 0; i < 20000 && Log_Running(); ++i) loop_.Do_Events();
  EXPECT_FALSE(Log_Running());
  EXPECT_EQ(port_.Sent(), "a");  // no blank: the box streams on
  EXPECT_EQ(ask_.last_box.icon, platform::Icon::critical);
  EXPECT_GT(Log_Rows, 0);
  Expect_Next_Log_Works();
}

TEST_F(Live_Log_Test, A_Port_That_Does_Not_Open_Leaves_Everything_As_It_Was) {
  Click();
  loop_.Run(3);
  Click();
  Log_File_Unsaved = false;
  const std::string log = Log_Data_Text;
  port_.refuse = [](const std::string&) { return platform::Port_Error{2, "gone"}; };
  ask_.Expect("Could not open Com port. Please check settings");
  Click();
  EXPECT_FALSE(Log_Running() || Transfer_Running());
  EXPECT_EQ(Log_Data_Text, log);
  EXPECT_TRUE(Shown_Live_Log().button_enabled);
  port_.refuse = nullptr;
  Expect_Next_Log_Works();
}

TEST_F(Live_Log_Test, A_Pulled_Cable_Is_Told_Once_And_Costs_No_Row) {
  Click();
  loop_.Run(3);
  const std::string received = Log_Data_Text;
  port_.Lose();
  ask_.Expect("Lost connection with USB port");
  loop_.Run(5);
  EXPECT_TRUE(Log_Running());
  EXPECT_TRUE(Shown_Live_Log().no_connection_alert);
  ask_.Expect(interrupted);
  Click();
  EXPECT_THAT(Log_Data_Text, StartsWith(std::string(Whole_Lines(received))));
  Expect_Next_Log_Works();
}

TEST_F(Live_Log_Test, A_Box_That_A_Lost_Line_Left_In_A_Run_Is_Brought_Out_Of_It_First) {
  line_.The_Box().Feed("bw10");
  Run_Left_Open = true;
  const sim::Image before = Box().Master;
  Expect_Next_Log_Works();
  EXPECT_EQ(Box().Master, before);
}

TEST_F(Live_Log_Test, A_Line_Error_Is_Told_And_The_Log_Goes_On) {
  Click();
  loop_.Run(1);
  ask_.Expect("Communication error. Check connection and power.");
  port_.on_event(platform::Line_Event::framing);
  loop_.Run(2);
  Click();
  EXPECT_GT(Log_Rows, 40);
}

TEST_F(Live_Log_Test, Clocks_That_Step_Do_Not_Matter) {
  clock_.Set_Time_Of_Day(86399);
  Click();
  loop_.Run(2);
  clock_.Set_Time_Of_Day(100);
  loop_.Run(2);
  clock_.Advance(30);  // the computer sleeps, and the box streams into the void
  Plug_In("");
  ask_.Expect(interrupted);
  loop_.Run(3);
  Click();
  EXPECT_EQ(Marks(), 1);
  EXPECT_GT(Log_Rows, 80);
}

TEST_F(Live_Log_Test, Settings_Of_The_Box_Go_Into_The_Log_And_The_Tune_Comes_Back) {
  log_settings.check_SettingsInLogg = true;
  live_log_hooks.readable_settings = [] { return "[readable_settings]\r\nx\r\n[end readable_settings]"; };
  CardByte[100] = 77;
  CardByte[map::dataset] = 108;
  const Byte_Image mine = CardByte;
  Note_Opened_Tune();
  std::vector<std::string> buttons;
  live_log_hooks.show = [&] { buttons.push_back(Shown_Live_Log().button); };
  Click();
  EXPECT_THAT(buttons, Contains("Reading box settings"));
  EXPECT_EQ(CardByte[100], test::Sample_Tune()[100]);
  EXPECT_EQ(Reference()->image, CardByte) << "the box is known now";
  const std::string kept = folder_.Read("tmp_kxs_file.kxs");
  EXPECT_THAT(kept, StartsWith(std::to_string(mine[0]) + "\r\n"));
  EXPECT_EQ(std::ranges::count(kept, '\n'), 256);
  loop_.Run(2);
  EXPECT_EQ(notice_text.Text().find("earlier tunes"), std::string::npos);
  CardByte[101] ^= 1;  // by the user, while the log runs
  Click();
  EXPECT_EQ(CardByte, mine);
  EXPECT_EQ(Opened_Tune()->image, mine);
  EXPECT_THAT(notice_text.Text(), HasSubstr("What you changed while the log ran is among the earlier tunes"));
  Undo();
  EXPECT_NE(CardByte[101], mine[101]);
  CardByte = mine;
  EXPECT_THAT(Readable_Settings_Text, HasSubstr("\r\nx\r\n"));
  EXPECT_EQ(std::ranges::count(Log_Dataset_Text, '\n'), 257);
  EXPECT_THAT(folder_.Read(log_backup_name), HasSubstr("[end log_dataset]"));

  Log_File_Unsaved = false;
  Plug_In("refuse,on=rd");  // the next log must not carry the settings of this one
  card_data_file = "Mine.kxs";
  ask_.Expect("Could not read");
  Click();
  loop_.Run(2);
  Click();
  EXPECT_EQ(Log_Dataset_Text, "[log_dataset]\r\n[end log_dataset]");
  EXPECT_EQ(CardByte, mine);
  EXPECT_EQ(card_data_file, "Mine.kxs");
}

TEST_F(Live_Log_Test, A_Log_Is_Left_Alone_By_What_Would_Disturb_It) {
  Click();
  loop_.Run(2);
  cmd_Clear_Logg_Click();
  EXPECT_GT(Log_Row_Count, 0);
  Log_File_Unsaved = true;
  ask_.Expect(unsaved_question, Answer::no);
  EXPECT_TRUE(Finish_Log_For_Close());
  EXPECT_FALSE(Log_Running());
  EXPECT_GT(Log_Rows, 20);
  Run_Transfer({}, [] { cmd_Open_Com_Click(); });  // a transfer has the line
  EXPECT_FALSE(Log_Running());
  EXPECT_EQ(notice_text.Text(), "A transfer has the line. START works when it has ended.");

  Log_File_Unsaved = false;
  Click();
  loop_.Run(1);
  Com_knapp2_Click();  // "Close port"
  EXPECT_FALSE(Log_Running());
  loop_.Run(0.1);
  EXPECT_THAT(Log_Data_Text, EndsWith("[end log_data]\r\n"));
}

TEST_F(Live_Log_Test, A_Full_Disk_Costs_The_Backup_Alone) {
  Click();
  ask_.Expect("The backup of this log can not be written. The log itself goes on.\r\n" + Log_Backup_Path() +
                  ": File too large",
              Answer::ok, [this] { loop_.Run(3); });
  {
    const test::File_Size_Limit full_disk(4000);
    loop_.Run(10);
  }
  EXPECT_TRUE(Log_Running());
  Click();
  const std::string rows = Rows_In(Log_Data_Text);
  EXPECT_EQ(rows, Drive_Rows(2, rows.size()));
  EXPECT_GT(rows.size(), 190U * 85);
}

using Live_Log_Surroundings = Workspace_Fixture;

TEST_F(Live_Log_Surroundings, The_Report_Goes_Into_The_Log_And_The_Closing_Asks) {
  const std::string report = live_log_hooks.readable_settings();
  EXPECT_THAT(report, StartsWith("[readable_settings]\r\n"));
  EXPECT_THAT(report, EndsWith("\r\n[end readable_settings]"));
  Log_File_Name = "Mine.kxl";
  Log_File_Present = Log_File_Unsaved = true;
  Expect_Box("Do you want to save current log file: Mine.kxl?", Answer::no);
  Begin_Shutdown();
  EXPECT_TRUE(Closing);
}

TEST_F(Live_Log_Test, Intervals_Of_The_Update_Tick) {
  struct Interval_Case {
    const char* text;
    int charts_in_a_second;
  };
  for (const Interval_Case& c : {Interval_Case{"0.1", 10}, {"0,5", 2}, {"0", 20}, {"-3", 20}, {"x", 20}}) {
    log_settings.txt_Show_Log_Interval = c.text;
    Click();
    loop_.Run(1);
    int charts = 0;
    log_view_hooks.show_chart = [&] { ++charts; };
    loop_.Run(1.001);
    EXPECT_NEAR(charts, c.charts_in_a_second, 1) << c.text;
    log_view_hooks.show_chart = nullptr;
    Click();
    Log_File_Unsaved = false;
  }
  log_settings.txt_Show_Log_Interval = "33";
  Plug_In("");
  ask_.Expect("Overflow", Answer::ok, [this] { loop_.Run(3); });  // the box has not been asked for rows yet
  Click();
  loop_.Run(2);
  Click();
  const std::string rows = Rows_In(Log_Data_Text);
  EXPECT_EQ(rows, Drive_Rows(2, rows.size()));
}

}  // namespace
}  // namespace kx
