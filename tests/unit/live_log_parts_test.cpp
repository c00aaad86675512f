#include <gmock/gmock.h>
#include <unistd.h>

#include <filesystem>
#include <string>
#include <vector>

#include "boxlink/transfer.h"
#include "logging/live_log.h"
#include "logging/log_array.h"
#include "logging/log_backup.h"
#include "logging/log_files.h"
#include "logging/log_parts.h"
#include "logging/log_rows.h"
#include "logging/log_setup_commands.h"
#include "settings/notice.h"
#include "support/live_log_fixture.h"
#include "support/other_user.h"

namespace kx {
namespace {

using namespace testing;
using platform::Answer;
namespace fs = std::filesystem;

class Live_Log_Parts : public test::Live_Log_Fixture {
 protected:
  static constexpr const char* first_part = "KXLog-_2031-05-1710-00-00_001.kxl";
  static constexpr const char* second_part = "KXLog-_2031-05-1710-00-00_002.kxl";

  /// Six and a half thousand rows in 65 s.
  void Start_Fast_Box() {
    Plug_In("log_pace=5");
    loop_.Set_Turn(0.002);
    Click();
  }
  /// What the backup holds of rows.
  std::string Rows_In_Backup() {
    const std::string backup = Read_File(Log_Backup_Path());
    const std::size_t first = backup.find('\n') + 1;
    return backup.substr(first, backup.find("\r\n[end_log_data]") - first);
  }
  static std::string Read_File(const std::string& path) {
    std::string bytes;
    EXPECT_TRUE(platform::Read_Whole_File(path, bytes).Ok()) << path;
    return bytes;
  }
  /// The rows of files of one log, each of which opens whole.
  std::string Rows_In_Files(const std::vector<std::string>& paths) {
    std::string rows;
    for (const std::string& path : paths) {
      const std::string part = Rows_In(Read_File(path));
      EXPECT_LE(std::ranges::count(part, '\n'), log_capacity);
      EXPECT_TRUE(Open_File(path));
      EXPECT_EQ(Log_Rows, std::ranges::count(part, '\n'));
      rows += part;
    }
    return rows;
  }
};

TEST_F(Live_Log_Parts, A_Long_Log_Becomes_Numbered_Files) {
  Start_Fast_Box();
  loop_.Run(65);  // 6500 rows
  EXPECT_EQ(Log_Chunk_No, 2);
  EXPECT_EQ(Log_File_Name, second_part);
  const std::string first = folder_.Read(first_part);
  EXPECT_THAT(first, HasSubstr("[log_data]\r\na\r\n"));
  Click();
  const std::string second = folder_.Read(second_part);
  const std::string rows = Rows_In(first);
  EXPECT_EQ(rows, Drive_Rows(2, rows.size()));
  EXPECT_NEAR(static_cast<double>(rows.size()) / 85, 5925, 30);
  const std::string rest = Rows_In(second);
  ASSERT_GT(rest.size(), 300U * 85);
  const std::size_t lost = 6500 - 2 - rows.size() / 85 - rest.size() / 85;
  EXPECT_LE(lost, 6U);  // the row in progress, and what the port held at the stop
  EXPECT_NE(Drive_Rows(0, 6600 * 85).find(rest), std::string::npos);
  const std::string all = rows + Rows_In_Backup();  // the row in progress at the split among them
  EXPECT_EQ(all, Drive_Rows(2, all.size()));
  EXPECT_GT(all.size(), 6480U * 85);
  EXPECT_EQ(folder_.Read(log_backup_name).substr(11, 48), "'Backup of last made logging 2031-05-17 10:00:59");
}

/// Twenty times the pace of a real box, a chart ten times a second, and each part of the log a file.
TEST_F(Live_Log_Parts, A_Soak_Of_Twenty_Thousand_Rows_Loses_Only_The_Rows_Between_Parts) {
  constexpr std::size_t rows = 20000;
  line_ = sim::Line(sim::Box(), Faults_Of("log_pace=20"), sim::Pace::At_Once);
  log_settings.txt_Show_Log_Interval = "0.1";
  loop_.Set_Turn(0.001);
  Click();
  while (line_.Counts().Rows_Sent < rows && Log_Running()) loop_.Do_Events();
  Click();
  const std::string drive = Drive_Rows(0, rows * 85);
  std::size_t at = 0;
  std::size_t kept = 0;
  for (const char* part : {"1", "2", "3", "4"}) {
    const std::string log =
        Rows_In(folder_.Read("KXLog-_2031-05-1710-00-00_00" + std::string(part) + ".kxl"));
    const std::size_t found = drive.find(log, at);
    ASSERT_NE(found, std::string::npos) << part;
    at = found + log.size();
    kept += log.size() / 85;
  }
  EXPECT_GE(kept + 2 + 3 + 4,
            rows);  // the first chunk, a row between two parts, what the port held at the stop
}

TEST_F(Live_Log_Parts, Only_To_File_Counts_Half_A_Second_A_Tick) {
  log_settings.check_LogToFileOnly = true;
  log_settings.txt_Show_Log_Interval = "0.25";
  loop_.Set_Turn(0.005);
  Click();
  loop_.Run(10.1);
  EXPECT_TRUE(Shown_Live_Log().only_to_file);
  EXPECT_EQ(Log_Row_Count, 0);
  EXPECT_THAT(log_settings.txt_Log_Length, AnyOf("20.00 s", "19.50 s"));
  loop_.Run(117);  // 250 counted seconds are 125
  EXPECT_EQ(Log_Chunk_No, 2);
  EXPECT_TRUE(folder_.Has(first_part));
  Click();
  EXPECT_TRUE(folder_.Has(second_part));
}

TEST_F(Live_Log_Parts, A_Folder_That_Is_Gone_Costs_No_Row) {
  log_settings.check_LogToFileOnly = true;
  log_settings.txt_Show_Log_Interval = "0.05";
  std::filesystem::create_directory(folder_.Path("stick"));
  Log_Directory = folder_.Path("stick/");
  Click();
  loop_.Run(5);
  std::filesystem::remove_all(folder_.Path("stick"));
  const std::string gone = ": No such file or directory";
  ask_.Expect(folder_.Path("stick/KXLog-_2031-05-1710-00-00_001.kxl") + gone, Answer::ok,
              [this] { loop_.Run(5); });
  loop_.Run(60);  // 250 counted seconds are 25
  ask_.Expect(folder_.Path("stick/KXLog-2031-05-17_10-00-00.kxl") + gone);
  Click();
  const std::string rows = Rows_In(Log_Data_Text);
  EXPECT_EQ(rows, Drive_Rows(2, rows.size()));
  EXPECT_GT(rows.size(), 1290U * 85);
  EXPECT_TRUE(Log_File_Unsaved);
  EXPECT_EQ(Log_File_Name, "KXLog-.kxl");
}

struct Refused_Case {
  const char* folder;
  const char* reason;
  bool only_to_file;
};

/// The driver has no hand for the box. What could not be saved stays in memory and in the backup, is told of
/// once, and goes into files that each open whole as soon as there is room for them.
TEST_F(Live_Log_Parts, A_Part_That_Can_Not_Be_Saved_Loses_Nothing) {
  fs::permissions(folder_.Path(), fs::perms(0755));
  for (const Refused_Case& c : {Refused_Case{"gone", ": No such file or directory", false},
                                {"gone_too", ": No such file or directory", true},
                                {"protected", ": Permission denied", false}}) {
    SCOPED_TRACE(c.folder);
    clock_.Set_Time_Of_Day(36000);
    const bool is_protected = std::string(c.folder) == "protected";
    if (is_protected && ::geteuid() != 0) continue;  // the folders that are gone refuse in the same way
    Log_Directory = folder_.Path(c.folder) + "/";
    if (is_protected) fs::create_directory(Log_Directory);
    log_settings.check_LogToFileOnly = c.only_to_file;
    log_settings.txt_Show_Log_Interval = "0.1";
    Start_Fast_Box();
    const std::string single = Log_Directory + "KXLog-2031-05-17_10-00-00";
    ask_.Expect(Log_Directory + first_part + c.reason, Answer::ok, [this] { loop_.Run(3); });
    int rows = 0;
    {
      const test::Other_User user;
      loop_.Run(65);  // 6500 rows
      EXPECT_TRUE(Log_Running());
      rows = Row_Count_Of(Log_Data_Text);
      ask_.Expect(single + "_002.kxl" + c.reason);
      ask_.Expect(Long_Log_Text(rows));
      Click();
    }
    const std::string received = Rows_In(Log_Data_Text);
    EXPECT_EQ(received, Drive_Rows(2, received.size()));
    EXPECT_GT(rows, 6480);
    EXPECT_EQ(Rows_In_Backup().substr(0, received.size()), received);
    EXPECT_TRUE(Log_File_Unsaved);
    EXPECT_EQ(Log_File_Name, "KXLog-.kxl");
    fs::create_directories(Log_Directory);
    const std::vector<std::string> names{single + ".kxl", single + "_002.kxl"};
    ask_.Expect(Saved_In_Parts_Text(rows, names));
    EXPECT_TRUE(Log_File_Auto_Save());
    EXPECT_FALSE(Log_File_Unsaved);
    EXPECT_EQ(Rows_In_Files(names), received);
    EXPECT_TRUE(Open_File(Log_Backup_Path()));
    EXPECT_EQ(notice_text.Text(), Long_Log_Text(rows));
    EXPECT_EQ(Log_Rows, log_capacity);
    log_settings = {};
    Load_All_Default_Log_Settings();
    log_settings.check_SettingsInLogg = false;
  }
}

/// The program ends a log in there, and another START does not get between.
TEST_F(Live_Log_Parts, A_Log_That_Ends_Inside_The_Box_Of_A_Part_Is_Finished_Behind_It) {
  for (const bool overwritten : {true, false}) {
    SCOPED_TRACE(overwritten);
    clock_.Set_Time_Of_Day(36000);
    fs::permissions(folder_.Write(first_part, "protected"), fs::perms(0444));
    log_settings.check_AutoSave = true;
    Start_Fast_Box();
    std::size_t received = 0;
    const auto end_inside = [&] {
      loop_.Run(1);
      EXPECT_FALSE(Finish_Log_For_Close()) << "its window stays";
      EXPECT_FALSE(Log_Running() || Transfer_Running() || MSComm1.PortOpen());
      received = line_.Counts().Rows_Sent;
      EXPECT_FALSE(Shown_Live_Log().button_enabled || Shown_Live_Log().log_buttons_enabled);
      Click();
      cmd_Clear_Logg_Click();
      loop_.Run(1);
      EXPECT_FALSE(Log_Running());
    };
    ask_.Expect("The file is write protected. Do you want to overwrite?",
                overwritten ? Answer::yes : Answer::no, end_inside);
    const std::string refused = folder_.Path(first_part);
    std::vector<std::string> names{folder_.Path("KXLog-2031-05-17_10-00-00.kxl"),
                                   folder_.Path("KXLog-2031-05-17_10-00-00_002.kxl")};
    if (overwritten) {
      names = {refused, folder_.Path(second_part)};
    } else {
      ask_.Expect(refused + ": the file is write protected");
      ask_.Expect(Saved_In_Parts_Text(6020, names));
    }
    while (Log_Running()) loop_.Do_Events();
    loop_.Run(0.1);
    ask_.Expect_None_Left();
    EXPECT_TRUE(Shown_Live_Log().button_enabled);
    EXPECT_FALSE(Log_File_Unsaved);
    const std::string rows = Rows_In_Files(names);
    EXPECT_EQ(rows, Drive_Rows(2, rows.size()));
    EXPECT_GE(rows.size() / 85 + 2 + 4, received);
    fs::permissions(refused, fs::perms(0644));
    Expect_Next_Log_Works();
  }
}

/// The box of a part is answered while the stream is broken off, while it comes back, and behind that. No row
/// is put together from two.
TEST_F(Live_Log_Parts, An_Interruption_Inside_The_Box_Of_A_Part_Makes_No_Row) {
  for (const double answered : {1.6, 2.0, 2.2, 2.4, 2.6, 3.5, 5.0}) {
    SCOPED_TRACE(answered);
    clock_.Set_Time_Of_Day(36000);
    fs::permissions(folder_.Write(first_part, "protected"), fs::perms(0444));
    ask_.Expect("The file is write protected. Do you want to overwrite?", Answer::yes, [&] {
      line_.Receive(" ", clock_.Elapsed());  // the box is switched off
      loop_.Run(answered);
    });
    log_settings.txt_Show_Log_Interval = "0.1";
    Start_Fast_Box();
    while (Log_Running() && Log_Chunk_No < 2) loop_.Do_Events();
    loop_.Run(5);
    ask_.Expect("There were some interruptions during the log");
    Click();
    const std::string drive = Drive_Rows(0, 7000 * 85);
    std::string_view rest = Log_Data_Text;
    EXPECT_EQ(Next_Line(rest), "[log_data]");
    int marks = 0;
    int rows = 0;
    for (std::string_view line = Next_Line(rest); !rest.empty(); line = Next_Line(rest)) {
      const bool marked = line.ends_with(" 'Interuption of log");
      marks += marked ? 1 : 0;
      if (marked || line == "a") continue;
      EXPECT_NE(drive.find(std::string(line) + "\r\n"), std::string::npos) << line;
      EXPECT_EQ(line.size(), 83U);
      ++rows;
    }
    EXPECT_EQ(marks, 1);
    EXPECT_GT(rows, 200);
    EXPECT_EQ(Log_Rows, rows);
    Log_File_Unsaved = false;
    fs::permissions(folder_.Path(first_part), fs::perms(0644));
  }
}

/// The line runs ahead of a disk that takes its time for a part; nothing stops.
TEST_F(Live_Log_Parts, A_Slow_Disk_Is_No_Overload) {
  log_settings.txt_Show_Log_Interval = "0.05";
  log_view_hooks.show_folder = [this] {
    clock_.Advance(0.6);
    Let_Arrive();
  };
  Start_Fast_Box();
  loop_.Run(62);
  EXPECT_TRUE(Log_Running());
  Click();
  log_view_hooks = {};
  const std::string rows = Rows_In(folder_.Read(first_part)) + Rows_In_Backup();
  EXPECT_EQ(rows, Drive_Rows(2, rows.size()));
  EXPECT_GT(rows.size(), 6150U * 85);
}

/// From its seam on it holds the old content and what comes.
TEST_F(Live_Log_Parts, A_Backup_That_Can_Not_Begin_Anew_Goes_On) {
  start_dir = folder_.Path("program/");
  fs::create_directory(start_dir);
  for (const bool removed : {false, true}) {
    SCOPED_TRACE(removed);
    if (!removed && ::geteuid() != 0) continue;  // an owner can not open the protected file again
    clock_.Set_Time_Of_Day(36000);
    Start_Fast_Box();
    loop_.Run(55);
    if (removed) {
      fs::remove_all(start_dir);
      ask_.Expect("The backup of this log can not be written. The log itself goes on.\r\n" +
                  Log_Backup_Path() + ": No such file or directory");
    } else {
      fs::permissions(Log_Backup_Path(), fs::perms(0444));
    }
    loop_.Run(10);
    EXPECT_EQ(Log_Chunk_No, 2);
    Click();
    EXPECT_GT(Log_Rows, 480);
    if (removed) continue;
    const std::string rows = Rows_In_Backup();
    EXPECT_EQ(rows, Drive_Rows(2, rows.size()));
    EXPECT_GT(rows.size(), 6480U * 85);
    Log_File_Unsaved = false;
    fs::permissions(Log_Backup_Path(), fs::perms(0644));
  }
}

/// The rows on show take the new sensors, no row moves, and the log goes on behind them.
TEST_F(Live_Log_Parts, A_Change_Of_Settings_While_A_Log_Runs_Keeps_The_Rows_In_Their_Places) {
  Plug_In("log_off=60:2");
  log_settings.txt_Show_Log_Interval = "0.1";
  Click();
  loop_.Run(8);
  const int rows = Log_Row_Count;
  const double before = LogArray(20, 2);
  Log_Sensor_combo_Click(1, Signal_Row(1).sensor + 1);
  EXPECT_NEAR(Log_Row_Count, rows, 1) << "one row has lost its line end to the remark";
  EXPECT_NE(LogArray(20, 2), before);
  EXPECT_EQ(LogArray(20, 31), std::stoi(Drive_Rows(21, 85).substr(7, 3)));
  const int decoded = Log_Row_Count;
  loop_.Run(2);
  EXPECT_NEAR(Log_Row_Count, decoded + 40, 3);
  EXPECT_TRUE(LogArray.Has(decoded, 1) && LogArray.Has(decoded + 1, 1));
  ask_.Expect("There were some interruptions during the log");
  Click();
}

}  // namespace
}  // namespace kx
