#include "logging/log_files.h"

#include <sys/stat.h>

#include "logging/dataset_section.h"
#include "logging/file_panel.h"
#include "logging/log_repair.h"
#include "logging/log_sections.h"
#include "settings/image.h"
#include "support/file_size_limit.h"
#include "support/log_fixture.h"
#include "support/other_user.h"
#include "support/test_folders.h"

namespace kx::test {
namespace {

constexpr const char* no_rows = "This is a log file without compleet log data";
constexpr const char* protected_file = "The file is write protected. Do you want to overwrite?";

class Log_Files : public Log_Fixture {
 protected:
  /// A whole file of the built-in settings with the given rows behind its start line.
  static std::string File(const std::vector<std::string>& rows) {
    Update_All_Log_Setting_Variables();
    std::vector<std::string> lines{"a"};
    lines.insert(lines.end(), rows.begin(), rows.end());
    return Join_Log_File({Log_Setting_Text, Log_Sens_Def_Text, Empty_Section(Log_Section::readable),
                          Data(lines), Empty_Section(Log_Section::dataset)});
  }
  std::string Open_With(const std::string& bytes) {
    const std::string path = folder_.Write("log.kxl", bytes);
    Open_File(path);
    return path;
  }
  /// Three_Rows of settings that reading does not change, so that the file comes back as it is.
  std::string Steady_File() {
    Signal_Row(14).custom_name = Signal_Row(15).custom_name = "Time";  // "," is read as "."
    log_settings.txt_Log_Length = "0.10 s";
    Log_File_Name = "log.kxl";
    Log_Chart_Last = 3;
    return Three_Rows();
  }
  /// A row of an old box: its RPM field and 12 fields from 101 on.
  static std::string Short_Row(const std::string& rpm) {
    std::string row = rpm + " ";
    for (int i = 1; i <= 12; ++i) row += std::to_string(100 + i) + " ";
    return row;
  }
  static void Expect_Same_Cells(const Log_Array& expected) {
    for (int slot = 0; slot <= log_slot_count; ++slot) {
      for (int row = 1; row <= Log_Rows; ++row) {
        ASSERT_EQ(LogArray.Has(row, slot), expected.Has(row, slot)) << row << " " << slot;
        if (!expected.Has(row, slot)) continue;
        ASSERT_EQ(LogArray(row, slot), expected(row, slot)) << row << " " << slot;
      }
    }
  }
  std::string Three_Rows() {
    return File({Row("1.0000", "001"), Row("2.0000", "002"), Row("3.0000", "003")});
  }
};

TEST_F(Log_Files, A_File_Comes_Back_Byte_For_Byte) {
  log_settings.txt_Log_Date = "2024-05-06";
  log_settings.txt_Log_Free_Text = "T\xE5ng \x81\x8D\xFF";
  Signal_Row(2).custom_name = "\x80uro";
  Log_Sens_Def_Tab[3].unit = "\xB0";
  const std::string bytes = Steady_File();
  const std::string path = Open_With(bytes);
  EXPECT_EQ(Log_Rows, 3);
  EXPECT_TRUE(Log_File_Present);
  EXPECT_EQ(Log_Window_Caption(), "log.kxl");
  ASSERT_TRUE(Save_File(path));
  EXPECT_EQ(folder_.Read("log.kxl"), bytes);
}

TEST_F(Log_Files, Sections_In_Any_Shape) {
  const std::string whole = Three_Rows();
  const Log_Sections good = Split_Log_File(whole, "a");
  std::string lone_feeds = whole;
  std::erase(lone_feeds, '\r');
  EXPECT_EQ(Join_Log_File(Split_Log_File(lone_feeds, "a")), whole);

  // Doubled: the first counts. Out of order and unclosed: found all the same.
  EXPECT_EQ(Split_Log_File(whole + whole, "a").data, good.data);
  const std::string mixed =
      "[log_dataset]\r\n1\r\n" + good.data + "[log_settings]\r\nx\r\n" + good.sensors + "\r\n";
  const Log_Sections found = Split_Log_File(mixed, "a");
  EXPECT_EQ(found.dataset, "[log_dataset]\r\n1\r\n[end log_dataset]");
  EXPECT_EQ(found.settings, "[log_settings]\r\nx\r\n[end log_settings]");
  EXPECT_EQ(found.sensors, good.sensors);
  EXPECT_EQ(found.data, good.data);
  EXPECT_EQ(found.readable, "[readable_settings]\r\n[end readable_settings]");

  const Log_Sections bare = Split_Log_File("x\r\nRPM AN1 AN2 AN3\r\n1.0", "La");
  EXPECT_EQ(bare.data, "[log_data]\r\nLa\r\nRPM AN1 AN2 AN3\r\n1.0\r\n[end log_data]\r\n");
  EXPECT_FALSE(bare.settings_found);
  EXPECT_EQ(Split_Log_File("RPM AN1\r\n1.0\r\n[end_log_data]\r\nx", "a").data,
            "[log_data]\r\na\r\nRPM AN1\r\n1.0\r\n[end log_data]\r\n");
  EXPECT_EQ(Join_Log_File(Split_Log_File("\xEF\xBB\xBF" + whole, "a")), whole);
  EXPECT_FALSE(Split_Log_File("a remark on [log_settings]\r\nx", "a").settings_found);
  EXPECT_EQ(Split_Log_File("", "a").data, "[log_data]\r\n[end log_data]\r\n");
}

TEST_F(Log_Files, A_File_Cut_Off_Anywhere_Opens_With_The_Rows_That_Are_Whole) {
  const std::string whole = Three_Rows();
  const std::size_t first = whole.find(Row("1.0000", "001"));
  const std::size_t row = Row("1.0000", "001").size();
  for (std::size_t size = 0; size < whole.size(); size += size < first - 5 ? 97 : 1) {
    Reset_Log_State();
    Load_All_Default_Log_Settings();
    const std::size_t behind = size < first ? 0 : size - first;
    const std::size_t begun = std::min<std::size_t>((behind + 2) / (row + 2), 3);
    // The first row tells the length, so a beginning of it alone counts as a row of its own kind.
    const int expected = behind == 0 ? 0 : std::max(1, static_cast<int>(begun));
    KX_Info_Data_File_Test(whole.substr(0, size), true);  // where no box tells of missing rows
    KX_Log_Data_Read();
    ASSERT_EQ(Log_Rows, expected) << size;
  }
}

TEST_F(Log_Files, Old_And_Damaged_Files) {
  Expect_Box(no_rows);
  Open_With(File({}));
  EXPECT_EQ(Log_Rows, 0);

  Open_With("RPM AN1 AN2 AN3\r\n" + Row("1.5000", "100") + "\r\n");
  EXPECT_EQ(Log_Rows, 1);
  EXPECT_DOUBLE_EQ(LogArray(1, 1), 1500);
  EXPECT_EQ(Log_File_Present, true);

  Open_With("[log_data] 'Backup of last made logging 2024-05-06 10:00:00\r\n" + Row("1.0000", "001") +
            "\r\n" + Row("2.0000", "001") + "\r\n\r\n[end_log_data]\r\n\r\n" + Log_Setting_Text + "\r\n\r\n" +
            Log_Sens_Def_Text + "\r\n\r\n");
  EXPECT_EQ(Log_Rows, 2);
  EXPECT_TRUE(Log_Data_Text.ends_with("[end log_data]\r\n"));

  Expect_Box(no_rows);
  Open_With(std::string("\0\r\r\n\xFF", 5) + std::string(1 << 20, 'x'));
  EXPECT_EQ(Log_Rows, 0);
  Expect_Box("System could not repair the file");
  EXPECT_FALSE(Open_File(folder_.Path("gone.kxl")));
}

TEST_F(Log_Files, An_Old_File_Is_Saved_As_The_Present_Version_And_Comes_Back) {
  for (const std::string version : {"3.4", "3.2", "none"}) {
    SCOPED_TRACE(version);
    Reset_Log_State();
    Load_All_Default_Log_Settings();
    std::string bytes = File({Short_Row("2.0000"), Short_Row("2.0500"), Short_Row("2.1000")});
    const std::size_t at = bytes.find("=3.5") + 1;
    bytes.replace(at, 3, version);
    if (version == "none") bytes = bytes.substr(bytes.find("[log_data]"));
    const std::string path = Open_With(bytes);
    EXPECT_EQ(Log_Rows, 3);
    EXPECT_DOUBLE_EQ(LogArray(1, 5), 104 * 0.2 - 25.4) << "ignition";
    EXPECT_DOUBLE_EQ(LogArray(1, 6), 105 * 0.204) << "injection";
    EXPECT_EQ(LogArray(2, 22), 20) << "least power shown";
    if (version == "none") {
      EXPECT_EQ(Signal_Row(4).custom_name, "IGNITION");
      EXPECT_EQ(Signal_Row(12).custom_name, "AN4 (slave)");
      EXPECT_FALSE(Signal_Row(13).shown);
      EXPECT_EQ(Signal_Caption(21), "POWER [hp]");
    }
    const Log_Array read = LogArray;
    const Log_Settings settings = log_settings;
    ASSERT_TRUE(Save_File(path));
    EXPECT_NE(folder_.Read("log.kxl").find("Log_File_Version=3.5"), std::string::npos);
    Reset_Log_State();
    ASSERT_TRUE(Open_File(path));
    EXPECT_EQ(log_settings, settings);
    Expect_Same_Cells(read);
  }
}

TEST_F(Log_Files, The_Rows_Choose_The_Slots_Whatever_Was_Open_Before) {
  Log_Data_Text = Data({"a", Short_Row("2.0000"), Short_Row("2.1000")});
  KX_Log_Data_Read();
  EXPECT_EQ(log_layout, Log_Layout::old);
  Log_Data_Text = Data({"a", Row("2.0000", "100"), Row("2.1000", "100")});
  KX_Log_Data_Read();
  EXPECT_EQ(log_layout, Log_Layout::current);
}

/// No editor made it, but nothing may take long with it, cut it or fall over it.
TEST_F(Log_Files, A_Line_Of_A_Megabyte_In_Each_Place) {
  const std::string line(1 << 20, '1');
  const std::string steady = Steady_File();
  const std::string first_row = Row("1.0000", "001") + "\r\n";
  struct Case {
    std::string before;
    std::string line;
    int rows;
  };
  for (const Case& c : std::vector<Case>{{"Log_Description=", line, 3},
                                         {"Log_Def2=", line, 3},
                                         {"Log_Sens_Def16=", line, 3},
                                         {"[readable_settings]\r\n", line + "\r\n", 3},
                                         {"[log_dataset]\r\n", line + "\r\n", 3},
                                         {"[end log_settings]\r\n", line + "\r\n", 3},
                                         {first_row, "RPM" + line + "\r\n", 3},
                                         {first_row, line + "\r\n", 4},
                                         {"\r\na\r\n", line + "\r\n", 1}}) {
    SCOPED_TRACE(c.before);
    std::string bytes = steady;
    bytes.insert(bytes.find(c.before) + c.before.size(), c.line);
    const std::string path = Open_With(bytes);
    EXPECT_EQ(Log_Rows, c.rows);
    ASSERT_TRUE(Save_File(path));
    const bool between_sections = c.before.starts_with("[end");
    if (c.rows != 3) continue;
    EXPECT_TRUE(folder_.Read("log.kxl") == (between_sections ? steady : bytes));
  }
}

TEST_F(Log_Files, A_Read_Only_Folder) {
  const std::string good = Three_Rows();
  const std::string damaged = folder_.Write("damaged.kxl", good + "\x1A");
  const std::string path = Open_With(good);
  const std::string other = folder_.Path("new.kxl");
  ::chmod(path.c_str(), 0666);
  ::chmod(damaged.c_str(), 0666);
  ::chmod(folder_.Path().c_str(), 0555);
  {
    const Other_User user;
    log_settings.txt_Weight = "1111";
    Mark_Log_Unsaved();
    Expect_Box(other + ": Permission denied");
    EXPECT_FALSE(Save_File(other));
    EXPECT_EQ(Log_Window_Caption(), "*log.kxl");
    Expect_Box("Do you want to save current log file: log.kxl?", platform::Answer::no);
    Expect_Box("System could not repair the file");
    EXPECT_FALSE(Open_File(damaged));
    EXPECT_EQ(Log_Rows, 3);  // the log before
    Expect_Box("Do you really want to delete this file?", platform::Answer::yes);
    Expect_Box(path + ": Permission denied");
    File1_Delete("log.kxl");
    EXPECT_TRUE(Save_File(path));  // the file itself may be written
  }
  ::chmod(folder_.Path().c_str(), 0755);
  EXPECT_FALSE(Log_File_Unsaved);
  EXPECT_EQ(folder_.Read("damaged.kxl"), good + "\x1A");
  EXPECT_NE(folder_.Read("log.kxl").find("Log_Hp=1111"), std::string::npos);
}

TEST_F(Log_Files, An_End_Of_Text_Mark_Is_Repaired_On_Disk) {
  const std::string rows = Three_Rows();
  const std::string path = Open_With(rows + "\x1A" + std::string("\0\x1A\r\n", 4));
  EXPECT_TRUE(Log_File_Repaired);
  EXPECT_EQ(Log_Rows, 3);
  EXPECT_EQ(folder_.Read("log.kxl"), rows);
  EXPECT_FALSE(folder_.Has("log.kxl_repaired.kxl"));
  EXPECT_FALSE(folder_.Has("log.kxl_original.kxl"));

  const std::string noise = rows.substr(0, rows.size() / 2) + "\x1A" + rows.substr(rows.size() / 2);
  Expect_Box(no_rows);
  Open_With(noise);
  EXPECT_EQ(folder_.Read("log.kxl_original.kxl"), noise);
  EXPECT_EQ(Repaired_Text("a\nb\rc\r\nd\x1A"
                          "e"),
            "a\r\nb\r\nc\r\nd\r\n");
}

TEST_F(Log_Files, A_File_Too_Large_Is_Refused_Before_It_Is_Read) {
  const std::string path = folder_.Write("big.kxl", "x");
  std::filesystem::resize_file(path, std::uintmax_t{2} << 30);
  Expect_Box(path + ": the file is too large for a log, it has more than 64 MB");
  EXPECT_FALSE(Open_File(path));
  Expect_Box("This file contains non valid data!");
  File1_Click("big.kxl");
}

TEST_F(Log_Files, A_Write_Protected_File_Is_Asked_About) {
  const std::string path = Open_With(Three_Rows());
  ::chmod(path.c_str(), 0444);
  Mark_Log_Unsaved();
  Expect_Box(protected_file, platform::Answer::no);
  Expect_Box(path + ": the file is write protected");
  EXPECT_FALSE(Save_File(path));
  EXPECT_TRUE(Log_File_Unsaved);
  Expect_Box(protected_file, platform::Answer::yes);
  EXPECT_TRUE(Save_File(path));
  EXPECT_FALSE(Log_File_Unsaved);
}

TEST_F(Log_Files, A_Failed_Save_Leaves_File_And_Name) {
  const std::string bytes = Three_Rows();
  Open_With(bytes);
  Mark_Log_Unsaved();
  const std::string nowhere = folder_.Path("none/x.kxl");
  Expect_Box(nowhere + ": No such file or directory");
  EXPECT_FALSE(Save_File(nowhere));
  EXPECT_EQ(Log_Window_Caption(), "*log.kxl");
  EXPECT_EQ(Log_Directory, folder_.Path() + "/");
  {
    const File_Size_Limit full_disk(100);
    Expect_Box(folder_.Path("log.kxl") + ": File too large");
    EXPECT_FALSE(Save_File(folder_.Path("log.kxl")));
  }
  EXPECT_EQ(folder_.Read("log.kxl"), bytes);
}

TEST_F(Log_Files, Save_Asks_For_A_Name_Until_There_Is_One) {
  Log_File_Present = true;
  Log_File_Name = "KXLog-.kxl";
  folder_.Write("taken.kxl", "old");
  ask_.Expect_Name("Save As", folder_.Path("taken.kxl"));
  Expect_Box("Do you want to replace existing file taken.kxl?", platform::Answer::no);
  Log_File_Save_Click();
  EXPECT_EQ(folder_.Read("taken.kxl"), "old");
  ask_.Expect_Name("Save As", folder_.Path("new.kxl"));
  Log_File_Save_Click();
  EXPECT_EQ(Log_File_Name, "new.kxl");
  Log_File_Save_Click();  // without a question
  EXPECT_FALSE(ask_.last_question.asks_to_replace);
}

TEST_F(Log_Files, Automatic_Names) {
  Log_File_Present = true;
  log_settings.txt_Log_Date = "2024/05/06";
  log_settings.txt_Log_Time = "10:11:12";
  EXPECT_TRUE(Log_File_Auto_Save());
  EXPECT_TRUE(folder_.Has("KXLog-2024-05-06_10-11-12.kxl"));
  Log_Chunk_No = 2;
  Log_File_Name = "part?002.kxl";
  EXPECT_TRUE(Log_File_Auto_Save());
  EXPECT_TRUE(folder_.Has("part-002.kxl"));
}

TEST_F(Log_Files, An_Unsaved_Log_Is_Offered_To_Be_Saved) {
  const std::string path = Open_With(Three_Rows());
  Mark_Log_Unsaved();
  Expect_Box("Do you want to save current log file: log.kxl?", platform::Answer::no);
  EXPECT_FALSE(Open_File(""));
  Log_File_Named = false;
  Expect_Box("Do you want to save current log file: log.kxl?", platform::Answer::yes);
  ask_.Expect_Name("Save As", std::nullopt);
  EXPECT_FALSE(Open_File(path));  // the user thought better of it: nothing is lost
  EXPECT_TRUE(Log_File_Unsaved);
}

TEST_F(Log_Files, Default_Settings_File) {
  const std::string name = Log_Settings_File_Name;
  Load_Log_Window();
  EXPECT_EQ(Log_File_Name, "KXLog-.kxl");
  Open_With(Three_Rows());
  log_settings.txt_Weight = "1234";
  log_settings.txt_Log_Free_Text = "mine";
  Mark_Log_Unsaved();
  Expect_Box("Do you really want to replace existing default log settings?", platform::Answer::yes);
  Save_as_Default_File_Click();
  EXPECT_TRUE(Log_File_Unsaved);  // the log itself has not been saved
  EXPECT_EQ(Log_File_Name, "log.kxl");

  log_settings.txt_Weight = "1";
  log_settings.txt_Log_Free_Text = "theirs";
  Restore_Default_File_Click();
  EXPECT_EQ(log_settings.txt_Weight, "1234");
  EXPECT_EQ(log_settings.txt_Log_Free_Text, "theirs");

  Reset_Log_State();
  Load_Log_Window();
  EXPECT_EQ(log_settings.txt_Weight, "1234");
  EXPECT_FALSE(Log_File_Present);
  EXPECT_EQ(Log_File_Name, "KXLog-.kxl");
  EXPECT_EQ(Log_Settings_File_Name, name);

  Log_New_Format = false;
  Expect_Box("You can not use this file (ver. 3.4.20 or earlier) as default log settings");
  Save_as_Default_File_Click();
}

TEST_F(Log_Files, Without_A_Sound_Default_File_The_Built_In_Settings_Stay) {
  std::filesystem::create_directory(folder_.Path(Log_Settings_File_Name));
  Reset_Log_State();
  Expect_Box("System could not repair the file");
  Load_Log_Window();
  EXPECT_TRUE(Log_Settings_Loaded);
  EXPECT_EQ(Signal_Caption(0), "RPM [rpm]");
  EXPECT_EQ(Log_File_Name, "KXLog-.kxl");
}

TEST_F(Log_Files, The_Supplied_Settings_Open_Without_A_Box) {
  for (const char* name : {"KXBenchPro", "KXBenchAlt", "KXBench_StandAlone", "Qrt3", "Qrt3i"}) {
    const std::string file = std::string(name) + "_Default_Log_Settings.kxl";
    std::filesystem::copy_file(Shipped_Data() + file, folder_.Path(file));
    Log_Settings_File_Name = file;
    Reset_Log_State();
    Load_Log_Window();
    EXPECT_EQ(Signal_Row(26).sensor, 5) << name;
    EXPECT_EQ(Signal_Row(39).custom_name, "Option") << name;
    EXPECT_EQ(log_settings.txt_Show_Log_Interval, "0.5") << name;
    EXPECT_TRUE(Log_New_Format) << name;
    EXPECT_EQ(Signal_Caption(5), "IGNITION [Deg]") << name;
    EXPECT_EQ(Log_Sens_Def_Tab, Parse_Log_Sensors(Default_Log_Sensor_Block())) << name;
  }
}

TEST_F(Log_Files, File_Panel) {
  folder_.Write("b.KXL", "no log");
  folder_.Write(
      "a.kxl",
      "Log_File_Name=o.kxl\r\nLog_Date=d\r\nLog_Time=t\r\nLog_Length=1 s\r\nLog_Description=\xE5;\r\n");
  folder_.Write("c.txt", "");
  std::filesystem::create_directory(folder_.Path("Sub"));
  EXPECT_EQ(Log_File_List(), (std::vector<std::string>{"a.kxl", "b.KXL"}));
  EXPECT_EQ(Folder_List(), (std::vector<std::string>{"Sub"}));
  EXPECT_EQ(Drive_List().front(), "/");

  File1_Click("a.kxl");
  EXPECT_TRUE(Preview_Shown);
  EXPECT_EQ(txt_Log_Length_tmp.Text(), "1 s");
  EXPECT_EQ(txt_Log_Free_Text_tmp.Text(), "o.kxl\r\n__________________________________________\r\nå;");
  File1_Click("b.KXL");
  EXPECT_FALSE(Preview_Shown);

  Dir1_Change("Sub");
  EXPECT_EQ(Log_Directory, folder_.Path() + "/Sub/");
  EXPECT_NE(Ini().find("Default_Logdir=" + Log_Directory), std::string::npos);
  Dir1_Change("..");
  EXPECT_EQ(Log_Directory, folder_.Path() + "/");
  Expect_Box("This drive is currently unavailable");
  Drive1_Change("/nowhere/");
  EXPECT_EQ(Log_Directory, folder_.Path() + "/");

  Expect_Box("Do you really want to delete this file?", platform::Answer::no);
  File1_Delete("a.kxl");
  Expect_Box("Do you really want to delete this file?", platform::Answer::yes);
  File1_Delete("a.kxl");
  EXPECT_EQ(Log_File_List(), (std::vector<std::string>{"b.KXL"}));
  Expect_Box("This file contains non valid data!");
  File1_Click("a.kxl");
}

TEST_F(Log_Files, The_Tune_Goes_Along) {
  CardByte[map::dataset] = 108;
  Update_Log_Dataset();
  EXPECT_TRUE(Log_Dataset_Text.starts_with("[log_dataset]\r\n"));
  EXPECT_TRUE(Log_Dataset_Text.ends_with("\r\n108\r\n[end log_dataset]"));
  EXPECT_EQ(std::count(Log_Dataset_Text.begin(), Log_Dataset_Text.end(), '\n'), 257);
}

}  // namespace
}  // namespace kx::test
