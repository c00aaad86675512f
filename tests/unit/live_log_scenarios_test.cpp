#include <gmock/gmock.h>

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "boxlink/transfer.h"
#include "logging/live_log.h"
#include "logging/log_array.h"
#include "logging/log_backup.h"
#include "logging/log_files.h"
#include "logging/log_reception.h"
#include "platform/folders.h"
#include "support/file_size_limit.h"
#include "support/live_log_fixture.h"
#include "workspace/shut_down.h"

namespace kx {
namespace {

using namespace testing;
using platform::Answer;
namespace fs = std::filesystem;

constexpr const char* delayed =
    "There were a delay before logging started. Current box settings were therefore not read.";
constexpr const char* interrupted = "There were some interruptions during the log";
constexpr const char* unsaved_question = "Do you want to save current log file: Old.kxl?";
constexpr const char* protected_question = "The file is write protected. Do you want to overwrite?";
constexpr const char* overload =
    "The computer can not handle this logging speed. Please lower the number of seconds to show or increase "
    "the update interval";

/// A log in each of its states, and what the user does in it.
class Live_Log_Scenarios : public test::Live_Log_Fixture {
 protected:
  enum class Ending { stop, close_window, close_program };

  /// One line of the table of states: brings a new log there and, at the right moment, ends it.
  struct State {
    const char* name;
    std::function<void()> reach;
    const char* report = nullptr;  ///< box at the end
    bool starting = false;         ///< a start is under way: STOP has nothing to stop yet
    bool inside_box = false;       ///< the end waits for the answer that the box gets behind it
  };

  void End() {
    rows_before_ = Rows_So_Far();
    switch (ending_) {
      case Ending::stop:
        return Click();
      case Ending::close_window:
        may_close_ = Finish_Log_For_Close();
        return;
      case Ending::close_program:
        return Begin_Shutdown();
    }
  }

  /// The whole rows that have been taken and are in no file yet.
  static std::string Rows_So_Far() {
    const std::size_t start = Log_Data_Text.find("\r\na\r\n");
    if (start == std::string::npos) return {};
    const std::string_view whole = Whole_Lines(Log_Data_Text);
    return std::string(whole.substr(start + 5, whole.find("[end") - start - 5));
  }

  /// The rows of all files of logs in the folder, in the order of their names.
  std::string Rows_On_Disk() const {
    std::string rows;
    for (const std::string& name : platform::Files_In(Log_Directory, ".kxl")) {
      std::string bytes;
      EXPECT_TRUE(platform::Read_Whole_File(Log_Directory + name, bytes).Ok());
      if (bytes.find("\r\na\r\n") != std::string::npos) rows += Rows_In(bytes);
    }
    return rows;
  }

  void Begin_With_Old_Log() {
    Log_File_Name = "Old.kxl";
    Log_File_Present = Log_File_Unsaved = true;
    ask_.Expect(unsaved_question, Answer::no, [this] {
      if (ending_ != Ending::stop) ask_.Expect(unsaved_question, Answer::no);
      End();
    });
    Click();
  }

  void Begin_With_Settings() {
    log_settings.check_SettingsInLogg = true;
    bool ended = false;
    loop_.on_turn = [this, ended]() mutable {
      Let_Arrive();
      if (!ended && Shown_Live_Log().button == "Reading box settings" && MSComm1.PortOpen()) {
        ended = true;
        EXPECT_FALSE(Shown_Live_Log().button_enabled);
        End();
      }
    };
    Click();
    loop_.on_turn = [this] { Let_Arrive(); };
    log_settings.check_SettingsInLogg = false;
  }

  void Begin_With(const char* knobs, double seconds) {
    Plug_In(knobs);
    Click();
    loop_.Run(seconds);
    End();
  }

  /// Off at row 40 and on again; its next rows are cut anywhere.
  void Begin_And_Come_Back() {
    Plug_In("log_off=40:1.5");
    Click();
    while (line_.Counts().Rows_Sent < 44) loop_.Do_Events();
    EXPECT_TRUE(Shown_Live_Log().no_connection_alert);
    End();
  }

  void Begin_To_Be_Split() {
    log_settings.check_LogToFileOnly = true;
    log_settings.txt_Show_Log_Interval = "0.05";
    const std::string part =
        Log_Directory + "KXLog-_2031-05-17" + Sound_File_Name(clock_.Time_Text()) + "_001.kxl";
    fs::copy_file(folder_.Write("protected", ""), part);
    fs::permissions(part, fs::perms(0444));
    ask_.Expect(protected_question, Answer::yes, [this] { End(); });
    Click();
    for (int turn = 0; turn < 100000 && Log_Running(); ++turn) loop_.Do_Events();  // 25 s
  }

  void Begin_Only_To_File() {
    log_settings.check_LogToFileOnly = true;
    Begin_With("", 3);
  }

  std::vector<State> States() {
    return {{"opening", [this] { Begin_With_Old_Log(); }, nullptr, true},
            {"reading settings", [this] { Begin_With_Settings(); }, nullptr, true},
            {"waiting for the first row", [this] { Begin_With("refuse", 2); }, delayed},
            {"logging", [this] { Begin_With("", 3); }},
            {"silence", [this] { Begin_With("log_off=40:60", 5); }, interrupted},
            {"rows come again and are not taken yet", [this] { Begin_And_Come_Back(); }, interrupted},
            {"the box of a part", [this] { Begin_To_Be_Split(); }, nullptr, false, true},
            {"only to the file", [this] { Begin_Only_To_File(); }}};
  }

  void Try(const State& state, Ending ending) {
    ending_ = ending;
    const std::string folder = folder_.Path(std::to_string(++cases_)) + "/";
    fs::create_directory(folder);
    Log_Directory = folder;
    Reset_Log_State();
    Load_All_Default_Log_Settings();
    Log_Directory = folder;
    log_settings.check_SettingsInLogg = false;
    Plug_In("");
    const Byte_Image mine = CardByte;
    if (state.report != nullptr) ask_.Expect(state.report);
    state.reach();
    loop_.Run(1);
    if (state.starting && ending == Ending::stop) {
      EXPECT_TRUE(Log_Running()) << "nothing to stop yet";
      Click();
    }
    ask_.Expect_None_Left();
    EXPECT_FALSE(Log_Running() || Transfer_Running() || MSComm1.PortOpen());
    EXPECT_EQ(CardByte, mine);
    EXPECT_EQ(may_close_, !state.inside_box || ending != Ending::close_window);
    EXPECT_NE(Rows_On_Disk().find(rows_before_), std::string::npos);
    Closing = false;
    EXPECT_EQ(Shown_Live_Log().button, "START");
    Plug_In("");
    Log_File_Unsaved = false;
    log_settings.check_LogToFileOnly = false;
    Expect_Next_Log_Works();
    may_close_ = true;
  }

  Ending ending_ = Ending::stop;
  bool may_close_ = true;
  int cases_ = 0;
  std::string rows_before_;
};

TEST_F(Live_Log_Scenarios, Stop_And_Closing_In_Every_State) {
  for (const State& state : States()) {
    for (const Ending ending : {Ending::stop, Ending::close_window, Ending::close_program}) {
      SCOPED_TRACE(std::string(state.name) + ", ending " + std::to_string(static_cast<int>(ending)));
      Try(state, ending);
    }
  }
}

/// The box stays switched on and fills the buffers of the line: little of it, and the log goes on after the
/// silence; more than a computer that keeps up would have waiting, and the log stops, all of it kept.
TEST_F(Live_Log_Scenarios, A_Laptop_That_Sleeps_Half_A_Minute) {
  for (const std::size_t waiting : {0U, 900U, 4095U}) {
    SCOPED_TRACE(waiting);
    Plug_In("");
    Click();
    loop_.Run(3);
    const std::string before = Rows_So_Far();
    clock_.Advance(30);
    clock_.Set_Time_Of_Day(20);  // set back, too
    const std::string kept = line_.Deliver(clock_.Elapsed()).substr(0, waiting);
    line_.Receive(" ", clock_.Elapsed());  // the line was off; the box has gone to rest
    if (waiting > 1200) ask_.Expect(overload);
    if (!kept.empty()) port_.Arrive(kept);
    loop_.Run(5);
    const bool overloaded = waiting > 1200;
    EXPECT_EQ(Log_Running(), !overloaded);
    if (!overloaded) ask_.Expect(interrupted);
    if (!overloaded) Click();
    EXPECT_THAT(Rows_In(Log_Data_Text), StartsWith(before.substr(0, before.size() - 2)));
    EXPECT_GE(Rows_In(Log_Data_Text).size(), before.size() + (overloaded ? 0 : 85 * 20));
    EXPECT_EQ(Marks(), overloaded ? 0 : 1);
    ask_.Expect_None_Left();
    Expect_Next_Log_Works();
    Log_File_Unsaved = false;
  }
}

/// What the disk does not take at STOP stays in memory, is told of, and is asked about by the next START.
TEST_F(Live_Log_Scenarios, A_Disk_That_Fails_At_Stop) {
  for (const bool full : {true, false}) {
    SCOPED_TRACE(full);
    clock_.Set_Time_Of_Day(36000);
    log_settings.check_AutoSave = true;
    Log_Directory = folder_.Path("logs/");
    fs::create_directory(Log_Directory);
    Click();
    loop_.Run(4);
    const std::string received = Rows_So_Far();
    const std::string path = Log_Directory + "KXLog-2031-05-17_10-00-00.kxl";
    if (full) {
      const test::File_Size_Limit full_disk(3000);
      ask_.Expect("The backup of this log can not be written. The log itself goes on.\r\n" +
                  Log_Backup_Path() + ": File too large");
      ask_.Expect(path + ": File too large");
      Click();
    } else {
      fs::remove_all(Log_Directory);
      ask_.Expect(path + ": No such file or directory");
      Click();
    }
    EXPECT_FALSE(fs::exists(path));
    EXPECT_EQ(Rows_In(Log_Data_Text), received);
    EXPECT_EQ(Log_Rows, std::ranges::count(received, '\n'));
    EXPECT_EQ(Log_Window_Caption(), "*KXLog-.kxl");
    fs::create_directories(Log_Directory);
    ask_.Expect("Do you want to save current log file: KXLog-.kxl?", Answer::yes);
    ask_.Expect_Name("Save As", Log_Directory + "rescued.kxl");
    Click();
    EXPECT_EQ(Rows_In(folder_.Read("logs/rescued.kxl")), received);
    loop_.Run(4);
    Click();
    EXPECT_GT(Log_Rows, 60);
    EXPECT_FALSE(Log_File_Unsaved);
    fs::remove_all(Log_Directory);
  }
}

}  // namespace
}  // namespace kx
