#include "logging/log_parts.h"

#include <gmock/gmock.h>

#include "logging/log_backup.h"
#include "logging/log_files.h"
#include "logging/log_sections.h"
#include "settings/notice.h"
#include "settings/session.h"
#include "support/file_size_limit.h"
#include "support/log_fixture.h"

namespace kx::test {
namespace {

using namespace testing;

class Log_Parts : public Log_Fixture {
 protected:
  /// A backup's data section, each row with its number as engine speed.
  static std::string Numbered(int rows, const std::vector<std::pair<int, std::string>>& odd_lines = {}) {
    std::vector<std::string> lines;
    for (int i = 1; i <= rows; ++i) {
      std::string number = std::to_string(10000 + i);
      lines.push_back(Row(number.insert(1, "."), "007"));
    }
    for (const auto& [line, text] : odd_lines) lines[static_cast<std::size_t>(line - 1)] = text;
    std::string data = Data(lines);
    return data.insert(10, " 'Backup of last made logging 2031-05-17 10:00:00");
  }
  static std::string Bare_Rows(const std::string& section) { return std::string(Row_Text(section)); }
};

TEST_F(Log_Parts, Parts_Hold_All_Rows_And_Each_Opens_Whole) {
  const std::string longer = Row("1.5900", "007") + "9";
  const std::string marked = Row("1.5901", "007") + " 'Interuption of log";
  struct Case {
    int lines;
    std::vector<std::pair<int, std::string>> odd;
    std::vector<int> rows;  // of each part
  };
  for (const Case& c : {Case{3, {}, {3}},
                        {6000, {}, {6000}},
                        {6001, {{4, marked}}, {6000}},
                        {6001, {}, {5900, 101}},
                        {6001, {{5901, longer}, {5902, longer}}, {5902, 99}},
                        {6002, {{5901, marked}}, {5900, 101}},
                        {12000, {}, {5900, 5900, 200}}}) {
    SCOPED_TRACE(c.lines);
    const std::string whole = Numbered(c.lines, c.odd);
    std::string rows;
    std::vector<int> counts;
    for (const std::string& part : Parts_Of_Log(whole)) {
      EXPECT_THAT(part, StartsWith(whole.substr(0, whole.find('\n') + 1)));
      EXPECT_THAT(part, EndsWith("\r\n[end log_data]\r\n"));
      rows += Bare_Rows(part);
      Log_Array array;
      counts.push_back(Decode_Rows(part, array));
      EXPECT_EQ(counts.back(), Row_Count_Of(part));
    }
    EXPECT_EQ(rows, Bare_Rows(whole));
    EXPECT_EQ(counts, c.rows);
  }
  EXPECT_EQ(Row_Count_Of("[log_data]\r\n[end log_data]\r\n"), 0);
  for (const auto& [name, next] : {std::pair("/a.b/x", "/a.b/x_002"),
                                   {"/a/x.kxl", "/a/x_002.kxl"},
                                   {"/a/x_001.kxl", "/a/x_002.kxl"},
                                   {"x_099.kxl", "x_100.kxl"},
                                   {"_12.kxl", "_12_002.kxl"},
                                   {"x_999.kxl", "x_1000.kxl"}}) {
    EXPECT_EQ(Next_Part_Name(name), next);
  }
}

/// The file beside is another log's; the disk that is full for the larger file takes the smaller one.
TEST_F(Log_Parts, A_Log_That_Is_Too_Long_Is_Saved_As_Files_That_Open_Whole) {
  const std::string whole = Numbered(6100);
  ASSERT_TRUE(Open_File(folder_.Write("backup.kxl", whole)));
  EXPECT_EQ(Log_Rows, 6000);
  EXPECT_THAT(notice_text.Text(), StartsWith("The log has 6100 rows, more than the 6000 that a file holds."));
  Log_File_Unsaved = true;
  {
    const File_Size_Limit full_disk(100000);
    Expect_Box(folder_.Path("run.kxl") + ": File too large");
    EXPECT_FALSE(Save_File(folder_.Path("run.kxl")));
  }
  EXPECT_EQ(Bare_Rows(Log_Data_Text), Bare_Rows(whole));
  EXPECT_EQ(Log_File_Name, "backup.kxl");
  EXPECT_TRUE(Log_File_Unsaved);
  EXPECT_EQ(Log_Chart_Last, 6000);
  EXPECT_FALSE(folder_.Has("run.kxl"));
  const std::string smaller = folder_.Read("run_002.kxl");  // stays, like any file that is there
  const std::vector<std::string> names{folder_.Path("run.kxl"), folder_.Path("run_003.kxl")};
  Expect_Box(Saved_In_Parts_Text(6100, names));
  EXPECT_TRUE(Save_File(folder_.Path("run.kxl")));
  EXPECT_EQ(folder_.Read("run_002.kxl"), smaller);
  EXPECT_EQ(Log_Window_Caption(), "run.kxl");
  EXPECT_EQ(Log_Rows, 5900);
  EXPECT_EQ(Log_Chart_Last, 5900);
  EXPECT_THAT(folder_.Read("run_003.kxl"), HasSubstr("\r\nLog_Length=9.95 s\r\n"));
  EXPECT_THAT(folder_.Read("run_003.kxl"), HasSubstr("\r\nLog_File_Name=run_003.kxl\r\n"));
  const std::string first = Bare_Rows(Log_Data_Text);
  ASSERT_TRUE(Open_File(names[1]));
  EXPECT_EQ(first + Bare_Rows(Log_Data_Text), Bare_Rows(whole));
  EXPECT_EQ(Log_Rows, 200);
  EXPECT_DOUBLE_EQ(LogArray(1, 1), 1.5901 * LogArray(2, 1) / 1.5902);
}

/// It has no settings of its own yet; the built-in ones would show a present box's rows in an old box's
/// units.
TEST_F(Log_Parts, A_Backup_That_Is_Offered_Has_The_Default_Settings) {
  Signal_Row(4).custom_name = "MINE";
  Update_All_Log_Setting_Variables();
  Keep_Default_Settings();
  Load_All_Default_Log_Settings();
  start_dir = folder_.Path() + "/";
  const std::string whole = Numbered(3);
  folder_.Write(log_backup_name, whole.substr(0, whole.find("[end")));
  Expect_Box("The last log was not finished. Open its backup?", platform::Answer::yes);
  Offer_Unfinished_Backup();
  EXPECT_EQ(Signal_Row(4).custom_name, "MINE");
  EXPECT_EQ(Log_Rows, 3);
  EXPECT_EQ(log_settings.txt_Log_Date + "|" + log_settings.txt_Log_Time, "2031-05-17|10:00:00");
  EXPECT_TRUE(Log_File_Unsaved);
  EXPECT_FALSE(Log_File_Named);
}

}  // namespace
}  // namespace kx::test
