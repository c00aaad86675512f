#include <signal.h>
#include <spawn.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QCoreApplication>
#include <array>
#include <chrono>
#include <filesystem>
#include <functional>
#include <random>
#include <thread>

#include "link/live_log_child.h"
#include "link/patient_user.h"
#include "link/pty_fixture.h"
#include "logging/live_log.h"
#include "logging/log_backup.h"
#include "logging/log_files.h"
#include "logging/log_settings.h"
#include "logging/log_state.h"
#include "platform/folders.h"
#include "settings/message.h"
#include "sim/drive.h"

extern char** environ;

namespace kx {
namespace {

using namespace testing;
using Clock = std::chrono::steady_clock;

/// Waits for @p event without an event loop; false after @p seconds.
bool Comes(const std::function<bool()>& event, double seconds) {
  const auto end = Clock::now() + std::chrono::duration<double>(seconds);
  while (!event()) {
    if (Clock::now() > end) return false;
    std::this_thread::sleep_for(std::chrono::milliseconds(2));
  }
  return true;
}

class Live_Log_Link : public test::Pty_Fixture {
 protected:
  Live_Log_Link() {
    Reset_Live_Log();
    Reset_Log_State();
    Load_All_Default_Log_Settings();
    log_settings.check_SettingsInLogg = false;
    log_settings.check_AutoSave = false;
    Log_Directory = folder_.Path() + "/";
  }
  ~Live_Log_Link() override {
    Reset_Live_Log();
    Reset_Log_State();
  }
  std::size_t Rows_Sent() {
    return box_.With_Line([](sim::Line& line) { return line.Counts().Rows_Sent; });
  }
  void Turn_Until(const std::function<bool()>& event, double seconds) {
    for (const Wait_Limit limit(seconds); !event() && !limit.Passed();) Do_Events();
  }
  [[nodiscard]] static std::string Drive_Text(std::size_t rows) {
    sim::Drive drive;
    std::string text;
    for (std::size_t i = 0; i < rows; ++i) text += drive.Next().Text;
    return text;
  }
};

TEST_F(Live_Log_Link, Every_Row_Of_A_Box_At_Twenty_Times_Its_Pace_Is_There) {
  constexpr std::size_t rows = 2000;
  sim::Faults faults;
  faults.Log_Pace = 20;
  box_.With_Line([&](sim::Line& line) { line = sim::Line(sim::Box(), faults, sim::Pace::At_Once); });
  ASSERT_EQ(box_.Start(), "");
  Write_Key("com_device9", box_.Path());
  log_settings.check_LogToFileOnly = true;
  Guarded(cmd_Open_Com_Click);
  Turn_Until([&] { return Rows_Sent() >= rows; }, 30);
  Guarded(cmd_Open_Com_Click);
  const std::size_t start = Log_Data_Text.find("\r\na\r\n") + 5;
  const std::string log = Log_Data_Text.substr(start, Log_Data_Text.find("[end") - start);
  const std::size_t first = Drive_Text(rows + 100).find(log);
  ASSERT_NE(first, std::string::npos) << "a row is missing in between";
  EXPECT_LE(first / 85, 12U);
  EXPECT_GE(log.size() / 85 + first / 85 + 12, rows);
  const std::size_t sent = Rows_Sent();
  Turn_Until([] { return false; }, 0.2);
  EXPECT_LE(Rows_Sent(), sent + 8) << "the box streams on";
}

TEST_F(Live_Log_Link, The_Cable_Comes_Back_And_So_Does_The_Next_Log) {
  test::Patient_User user;
  platform::seams.ask = &user;
  Plug_In_Box({});
  Guarded(cmd_Open_Com_Click);
  Turn_Until([] { return Log_Row_Count > 5; }, 10);
  box_.Stop();
  Turn_Until([&] { return !user.texts.empty(); }, 5);
  Guarded(cmd_Open_Com_Click);
  EXPECT_THAT(user.texts,
              ElementsAre("Lost connection with USB port", "There were some interruptions during the log"));
  EXPECT_GT(Log_Rows, 5);
  Log_File_Unsaved = false;
  Plug_In_Box({});
  Guarded(cmd_Open_Com_Click);
  Turn_Until([] { return Log_Row_Count > 5; }, 10);
  EXPECT_GT(Log_Row_Count, 5);
  Guarded(cmd_Open_Com_Click);
}

/// A row that no drive has.
std::string Filler_Row() {
  std::string row = "1.0000";
  for (int field = 0; field < 19; ++field) row += " 000";
  return row + " \r\n";
}

/// A process that logs, killed at its destruction at the latest.
class Logger {
 public:
  Logger(const std::string& device, const std::string& folder, int rows = 0) {
    std::string program = "/proc/self/exe";
    std::string mark = "--live-log";
    std::string device_text = device;
    std::string folder_text = folder;
    std::string rows_text = std::to_string(rows);
    std::array<char*, 6> arguments = {program.data(),     mark.data(),      device_text.data(),
                                      folder_text.data(), rows_text.data(), nullptr};
    if (posix_spawn(&process_, program.c_str(), nullptr, nullptr, arguments.data(), environ) != 0)
      process_ = 0;
  }
  ~Logger() { Kill(); }
  Logger(const Logger&) = delete;
  Logger& operator=(const Logger&) = delete;
  void Kill() {
    if (process_ <= 0) return;
    ::kill(process_, SIGKILL);
    ::waitpid(process_, nullptr, 0);
    process_ = 0;
  }

 private:
  pid_t process_ = 0;
};

TEST_F(Live_Log_Link, A_Killed_Program_Leaves_Every_Row_In_Its_Backup) {
  std::mt19937 random(3);
  for (int kill = 0; kill < 20; ++kill) {
    Plug_In_Box({});
    const std::size_t wanted = 6 + random() % 20;
    Logger logger(box_.Path(), folder_.Path());
    ASSERT_TRUE(Comes([&] { return Rows_Sent() >= wanted; }, 30));
    const auto received = Clock::now();
    std::this_thread::sleep_until(received + std::chrono::milliseconds(100 + random() % 50));
    logger.Kill();
    const std::string backup = folder_.Read(log_backup_name);
    EXPECT_TRUE(Is_Unfinished_Backup(backup));
    const std::string rows = backup.substr(backup.find('\n') + 1);
    const std::string drive = Drive_Text(wanted + 100);
    const std::size_t first = drive.find(rows);
    ASSERT_NE(first, std::string::npos) << backup;
    EXPECT_LE(first / 85, 5U);
    EXPECT_GE((first + rows.size()) / 85, wanted) << "kill " << kill;
  }
  const std::string backup = folder_.Read(log_backup_name);
  ask_.Expect("The last log was not finished. Open its backup?", platform::Answer::yes);
  Offer_Unfinished_Backup();
  EXPECT_EQ(Log_Rows, std::ranges::count(backup, '\n') - 1);
  EXPECT_TRUE(Log_File_Unsaved);
  EXPECT_FALSE(Log_File_Named);
}

/// Where a log becomes two files no row is lost either: what the killed program has not brought into the part
/// is in the backup, whenever it was killed.
TEST_F(Live_Log_Link, A_Program_Killed_About_A_Split_Leaves_Every_Row_In_A_File) {
  constexpr int rows_before = 5943;  // the split comes with row 5949
  std::mt19937 random(5);
  int with_part = 0;
  for (int kill = 0; kill < 10; ++kill) {
    SCOPED_TRACE(kill);
    Plug_In_Box({});
    start_dir = Log_Directory = folder_.Path(std::to_string(kill)) + "/";
    std::filesystem::create_directory(start_dir);
    Logger logger(box_.Path(), start_dir, rows_before);
    const auto part = [this] { return platform::Files_In(start_dir, ".kxl").size() > 1; };
    const bool at_the_split = kill % 2 == 0;
    const std::size_t wanted = at_the_split ? 0 : 6 + random() % 14;
    ASSERT_TRUE(Comes([&] { return at_the_split ? part() : Rows_Sent() >= wanted; }, 30));
    std::this_thread::sleep_for(at_the_split ? std::chrono::microseconds(random() % 6000)
                                             : std::chrono::milliseconds(100 + random() % 50));
    const std::size_t sent_at_least = at_the_split ? 1 : wanted;
    logger.Kill();
    const std::string drive = Drive_Text(200);
    std::string backup;
    ASSERT_TRUE(platform::Read_Whole_File(Log_Backup_Path(), backup).Ok());
    const std::string rows = backup.substr(backup.find('\n') + 1);
    const std::size_t first = drive.find(rows);
    ASSERT_NE(first, std::string::npos) << backup;
    std::size_t kept = rows.empty() ? 0 : first + rows.size();
    if (!part()) {
      EXPECT_GE(kept / 85, sent_at_least);
      continue;
    }
    ++with_part;
    const std::vector<std::string> names = platform::Files_In(start_dir, ".kxl");
    ASSERT_TRUE(Open_File(start_dir + names[names[0] == log_backup_name ? 1 : 0]));
    EXPECT_GE(Log_Rows, rows_before);
    const std::string part_rows =
        Log_Data_Text.substr(Log_Data_Text.rfind(Filler_Row()) + Filler_Row().size());
    const std::string in_part = part_rows.substr(0, part_rows.find("[end"));
    const std::size_t part_first = drive.find(in_part);
    ASSERT_NE(part_first, std::string::npos);
    EXPECT_TRUE(rows.empty() || first <= part_first + in_part.size()) << "a row is in neither";
    kept = std::max(kept, part_first + in_part.size());
    EXPECT_GE(kept / 85, sent_at_least);
    if (!Is_Unfinished_Backup(backup)) continue;  // it has no whole row yet
    ask_.Expect("The last log was not finished. Open its backup?", platform::Answer::yes);
    Offer_Unfinished_Backup();
    EXPECT_EQ(Log_Rows, std::ranges::count(rows, '\n'));
    Log_File_Unsaved = false;
  }
  EXPECT_GE(with_part, 5);
}

}  // namespace

namespace test {

int Run_Live_Log_Child(const char* device, const char* folder, int rows) {
  prctl(PR_SET_PDEATHSIG, SIGKILL);
  platform::Qt_Clock clock;
  platform::Qt_Event_Loop loop;
  platform::Qt_Serial_Port port;
  Patient_User user;
  platform::seams.clock = &clock;
  platform::seams.event_loop = &loop;
  platform::seams.serial_port = &port;
  platform::seams.ask = &user;
  Reset_Log_State();
  Load_All_Default_Log_Settings();
  log_settings.check_SettingsInLogg = false;
  log_settings.txt_Show_Log_Interval = "0.05";
  start_dir = Log_Directory = std::string(folder) + "/";
  Ini_File_Name = "child.ini";
  Com_Port_Number = 9;
  Write_Key("com_device9", device);
  Reset_Link_State();
  Guarded(cmd_Open_Com_Click);
  const std::string start = "\r\n" + log_settings.Log_Start_String + "\r\n";
  while (Log_Data_Text.find(start) == std::string::npos) Do_Events();
  std::string before;
  for (int i = 0; i < rows; ++i) before += Filler_Row();
  Log_Data_Text.insert(Log_Data_Text.find(start) + start.size(), before);
  return QCoreApplication::exec();
}

}  // namespace test
}  // namespace kx
