#include "logging/log_rows.h"

#include "logging/log_sections.h"
#include "settings/failure.h"
#include "support/log_fixture.h"

namespace kx::test {
namespace {

class Log_Rows_Test : public Log_Fixture {
 protected:
  void Read(const std::vector<std::string>& lines) {
    Log_Data_Text = Data(lines);
    KX_Log_Data_Read();
  }
};

TEST_F(Log_Rows_Test, A_Row_Is_Decoded_By_The_Sensors_Of_Its_Slots) {
  Read({"a", Row("3.2500", "128"), Row("A.0000", "010"), Row("0,9995", "  7")});
  EXPECT_EQ(Log_Rows, 3);
  EXPECT_EQ(Log_Field_Count, 20);
  EXPECT_EQ(log_settings.txt_Log_Length, "0.10 s");
  EXPECT_DOUBLE_EQ(LogArray(2, 0), 0.05);
  EXPECT_DOUBLE_EQ(LogArray(1, 1), 3250);
  EXPECT_DOUBLE_EQ(LogArray(2, 1), 10000);
  EXPECT_DOUBLE_EQ(LogArray(3, 1), 999.5);
  EXPECT_DOUBLE_EQ(LogArray(1, 2), 2.5);               // volts of an analog input
  EXPECT_DOUBLE_EQ(LogArray(1, 5), 128 * 0.2 - 25.4);  // row 4 has the ignition's sensor
  EXPECT_DOUBLE_EQ(LogArray(1, 7), 128 * 0.204);
  EXPECT_DOUBLE_EQ(LogArray(2, 20), 10);
  EXPECT_DOUBLE_EQ(LogArray(2, 31), 10);
  EXPECT_DOUBLE_EQ(LogArray(3, 33), 7);
  EXPECT_EQ(LogArray.Name(1), "RPM");
  EXPECT_EQ(LogArray.Name(7), "Fuel");
  EXPECT_EQ(LogArray.Name(21), "");
  EXPECT_FALSE(LogArray.Has(4, 0));
}

TEST_F(Log_Rows_Test, Characters_That_Are_No_Plain_Number_Are_Read_As_Far_As_They_Are_One) {
  struct Case {
    std::string field;
    double raw;
  };
  for (const Case& c : std::vector<Case>{{"1 2", 12},
                                         {"12 ", 12},
                                         {"-12", -12},
                                         {"x12", 0},
                                         {"   ", 0},
                                         {"256", 256},
                                         {"1.5", 1.5},
                                         {"007", 7},
                                         {"1e2", 100}}) {
    Read({"a", Row("1.0000", "000"), Row("1.0000", c.field)});
    EXPECT_DOUBLE_EQ(LogArray(2, 31), c.raw) << c.field;
    EXPECT_DOUBLE_EQ(LogArray(2, 2), c.raw * 0.01953125) << c.field;
  }
}

TEST_F(Log_Rows_Test, Slots_Without_A_Converting_Sensor_Stay_Empty) {
  Log_Sens_Def_Tab[3].kind = "Status1";
  Signal_Row(0).sensor = 14;  // a table does not convert the RPM field
  Signal_Row(4).sensor = -1;
  Signal_Row(5).sensor = 50;  // no such sensor
  Read({"a", Row("1.0000", "001")});
  for (const int slot : {1, 2, 5, 6, 31}) EXPECT_FALSE(LogArray.Has(1, slot)) << slot;
  EXPECT_TRUE(LogArray.Has(1, 7));
}

TEST_F(Log_Rows_Test, Damaged_Rows_Are_Passed_Over_And_Time_Closes_Up) {
  Read({"La", Row("1.0000", "001"), Row("2.0000", "001") + " 'Interuption of log", "3.0000   1",
        "RPM AN1 AN2 AN3 AN4 IGN                                                                    ",
        Row("4.0000", "001") + " 99", Row("5.0000", "001")});
  EXPECT_EQ(Log_Rows, 3);
  EXPECT_DOUBLE_EQ(LogArray(2, 1), 4000);
  EXPECT_DOUBLE_EQ(LogArray(3, 1), 5000);
  EXPECT_DOUBLE_EQ(LogArray(3, 0), 0.1);
}

TEST_F(Log_Rows_Test, A_Damaged_First_Row_Does_Not_Set_The_Length) {
  Read({"a", Row("1.0000", "001") + " 'Interuption of log", Row("2.0000", "001")});
  EXPECT_EQ(Log_Rows, 1);
  EXPECT_EQ(Log_Field_Count, 20);
}

TEST_F(Log_Rows_Test, A_Row_Without_The_Last_Blank_Has_A_Field_Less) {
  std::string short_row = "1.0000";
  for (int i = 0; i < 19; ++i) short_row += " 009";
  Read({"a", short_row});
  EXPECT_EQ(Log_Field_Count, 19);
  EXPECT_TRUE(LogArray.Has(1, 19));
  EXPECT_FALSE(LogArray.Has(1, 20));
}

TEST_F(Log_Rows_Test, A_Row_Padded_With_Blanks_Counts_More_Fields_Than_It_Reaches) {
  Read({"a", Row("1.0000", "  9")});
  EXPECT_EQ(LogArray(1, 31), 9);
  EXPECT_TRUE(LogArray.Has(1, 20));
  EXPECT_FALSE(LogArray.Has(1, 28));  // the first one behind those that are calculated
}

TEST_F(Log_Rows_Test, Six_Thousand_Rows_At_Most) {
  std::vector<std::string> lines(6002, Row("1.0000", "001"));
  lines[0] = "a";
  Read(lines);
  EXPECT_EQ(Log_Rows, 6000);
  EXPECT_EQ(Log_Chart_Last, 6000);
  EXPECT_EQ(log_settings.txt_Log_Length, "299.95 s");
  EXPECT_TRUE(LogArray.Has(6000, 1));
}

TEST_F(Log_Rows_Test, Where_The_Rows_Begin) {
  struct Case {
    std::string data;
    std::string rows;
  };
  const std::vector<Case> cases{
      {"[log_data]\r\na\r\n1\r\n[end log_data]\r\n", "1\r\n"},
      {"[log_data]\r\na 'Delayed start error occured\r\n1\r\n[end log_data]\r\n", "1\r\n"},
      {"[log_data]\r\na\r\n1\r\na\r\n2\r\n[end log_data]\r\n", "2\r\n"},
      {"[log_data]\r\nLa\r\n1\r\nLx\r\n2\r\n[end log_data]\r\n", "1\r\nLx\r\n2\r\n"},
      {"[log_data]\r\na\r\nRPM AN1 AN2 AN3 AN4\r\n1\r\n[end log_data]\r\n", "1\r\n"},
      {"[log_data]\r\na\r\n1.0000 001\r\nRPM AN1 AN2 AN3\r\n2\r\n[end log_data]\r\n",
       "1.0000 001\r\nRPM AN1 AN2 AN3\r\n2\r\n"},
      {"[log_data] 'Backup of last made logging x\r\n1\r\n2\r\n[end log_data]\r\n", "1\r\n2\r\n"},
      {"[log_data]\r\n1\r\n[end log_data]\r\n", ""}};
  for (const Case& c : cases) EXPECT_EQ(Row_Text(c.data), c.rows) << c.data;
}

TEST_F(Log_Rows_Test, Live_Rows_Decode_One_By_One) {
  Log_Field_Count = 20;
  Calculate_Data("", 0);
  Calculate_Data(Row("2.0000", "100"), 7);
  Calculate_Data(Row("2.0000", "100"), 6001);
  EXPECT_EQ(LogArray.Name(2), "Analog_0-5V");
  EXPECT_DOUBLE_EQ(LogArray(7, 1), 2000);
  EXPECT_DOUBLE_EQ(LogArray(7, 0), 0.3);
}

TEST_F(Log_Rows_Test, The_Array_Checks_Its_Bounds) {
  EXPECT_THROW(static_cast<void>(LogArray(6001, 0)), Failure);
  EXPECT_THROW(static_cast<void>(LogArray(0, 41)), Failure);
  EXPECT_THROW(static_cast<void>(LogArray.Column(-1)), Failure);
  LogArray(6000, 40) = 5;
  EXPECT_EQ(LogArray.Column(40).back(), 5);
  LogArray.Clear();
  EXPECT_FALSE(LogArray.Has(6000, 40));
}

}  // namespace
}  // namespace kx::test
