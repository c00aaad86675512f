#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "sim/drive.h"
#include "sim/line.h"

namespace kx::sim {
namespace {

using namespace testing;

/// The rows of a drive from its beginning.
std::vector<std::string> Rows(std::size_t count, std::uint32_t seed = 1) {
  Drive drive(seed);
  std::vector<std::string> rows;
  while (rows.size() < count) rows.push_back(drive.Next().Text);
  return rows;
}

std::string Text_Of(const std::vector<std::string>& rows, std::size_t first, std::size_t end) {
  std::string text;
  for (std::size_t i = first; i < end; ++i) text += rows.at(i);
  return text;
}

Line Streaming(const std::string& knobs, std::string_view start = "a") {
  const Parsed_Faults parsed = Parse_Faults(knobs);
  EXPECT_EQ(parsed.Error, "") << knobs;
  Line line(Box(), parsed.Knobs, Pace::At_Once);
  line.Receive(start, 0);
  return line;
}

TEST(Sim_Drive, Rows_Have_The_Box_Shape_And_Repeat_By_Seed) {
  const auto rows = Rows(400);
  EXPECT_EQ(rows, Rows(400));
  EXPECT_NE(rows, Rows(400, 2));
  for (const std::string& row : rows) {
    ASSERT_THAT(row, MatchesRegex("[0-9A]\\.[0-9]{4}( [0-2][0-9]{2}){19} \r\n"));
  }
}

TEST(Sim_Drive, Goes_Through_The_Gears_And_Back_To_Idle) {
  Drive drive;
  double least = 1e9;
  double most_power = 0;
  int gears = 0;
  bool coasts = false;
  for (int i = 0; i < 1440; ++i) {
    const Drive_Row row = drive.Next();
    least = std::min(least, row.Rpm);
    most_power = std::max(most_power, row.Power);
    gears |= 1 << row.Gear;
    coasts |= row.Power < -40;
    EXPECT_LT(row.Rpm, 7000);
  }
  EXPECT_EQ(gears, 0b11111);
  EXPECT_THAT(most_power, AllOf(Gt(220), Lt(250)));
  EXPECT_TRUE(coasts);
  EXPECT_LT(least, 900);
}

TEST(Sim_Stream, Starts_At_A_And_Stops_At_A_Blank) {
  Line line = Streaming("", "La");
  const auto rows = Rows(4);
  EXPECT_EQ(line.Deliver(0.049), "");
  EXPECT_EQ(line.Deliver(0.1001), Text_Of(rows, 0, 2));
  line.Receive("v", 0.11);  // a box that streams hears nothing else
  EXPECT_EQ(line.Deliver(0.1501), rows[2]);
  EXPECT_NEAR(line.Next_Delivery().value_or(0), 0.2, 1e-9);
  line.Receive(" ", 0.16);
  EXPECT_EQ(line.Deliver(10), "");
  EXPECT_EQ(line.Next_Delivery(), std::nullopt);
  line.Receive("v", 11);
  EXPECT_THAT(line.Deliver(11), StartsWith("TORNVIK KX"));
  line.Receive("a", 20);  // the car has stood still meanwhile
  EXPECT_EQ(line.Deliver(20.0501), rows[3]);
  EXPECT_EQ(line.Counts().Rows_Sent, 4U);
  EXPECT_EQ(line.Counts().Exchanges, 1U);
}

TEST(Sim_Stream, A_Row_Takes_Its_Time_On_The_Wire) {
  Line line(Box{});
  line.Receive("a", 0);
  EXPECT_EQ(line.Deliver(0.057), "");
  EXPECT_EQ(line.Deliver(0.058), Rows(1)[0]);  // 0.05 s, the command and 85 characters
}

TEST(Sim_Stream, Knobs) {
  const auto rows = Rows(60);
  EXPECT_EQ(Streaming("log_pace=20").Deliver(0.1001), Text_Of(rows, 0, 40));
  EXPECT_THAT(Streaming("log_header").Deliver(0.06), AllOf(StartsWith("RPM AN1 AN2 AN3"), EndsWith(rows[0])));
  EXPECT_EQ(Streaming("half,on=a,from=2,times=1").Deliver(0.1501),
            rows[0] + rows[1].substr(0, rows[1].size() / 2) + rows[2]);
  EXPECT_EQ(Streaming("refuse,on=a,from=2,times=30").Deliver(1.6001), rows[0] + rows[31]);
  EXPECT_THAT(Streaming("garbage,on=a,from=2").Deliver(0.1001),
              AllOf(StartsWith(rows[0]), SizeIs(2 * rows[0].size()), Not(HasSubstr(rows[1]))));
  Line cut = Streaming("hang_up=100,on=a");
  EXPECT_EQ(cut.Deliver(1), Text_Of(rows, 0, 2).substr(0, 100));
  EXPECT_TRUE(cut.Hung_Up());

  Line late = Streaming("log_late=1");
  EXPECT_EQ(late.Deliver(1), "");
  late.Receive("a", 1.01);
  EXPECT_EQ(late.Deliver(1.0601), rows[0]);

  Line off = Streaming("log_off=2:1");
  EXPECT_EQ(off.Deliver(0.9), Text_Of(rows, 0, 2));
  off.Receive("a", 1);  // still off
  EXPECT_EQ(off.Deliver(1.2), "");
  off.Receive("a", 1.2);
  EXPECT_EQ(off.Deliver(1.3001), Text_Of(rows, 2, 4));

  for (const char* wrong : {"log_off=3", "log_off=x:1", "log_off=3:", "log_pace=0", "log_late=x"}) {
    EXPECT_NE(Parse_Faults(wrong).Error, "") << wrong;
  }
}

}  // namespace
}  // namespace kx::sim
