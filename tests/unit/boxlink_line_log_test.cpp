#include "boxlink/line_log.h"

#include "boxlink/sync_engine.h"
#include "platform/files.h"
#include "settings/failure.h"
#include "support/link_fixture.h"

namespace kx {
namespace {

using testing::HasSubstr;

class Line_Log_File : public test::Link_Fixture {
 protected:
  void Export(const std::string& name) {
    ask_.Expect_Name("Export line log", name);
    Export_Line_Log_Click();
  }
};

TEST_F(Line_Log_File, Keeps_Every_Byte_Of_A_Transfer_With_Its_Time) {
  Read_Settings_Click();
  const auto& log = Line_Log();
  std::string sent;
  std::string received;
  for (const Line_Entry& entry : log) {
    if (entry.direction == Line_Direction::sent) sent += entry.text;
    if (entry.direction == Line_Direction::received) received += entry.text;
  }
  EXPECT_EQ(sent, "vrd");
  EXPECT_EQ(received.size(), line_.Counts().Bytes_Sent);
  EXPECT_EQ(log.front().direction, Line_Direction::opened);
  EXPECT_EQ(log.front().text, "/dev/ttyUSB4");
  EXPECT_EQ(log.back().direction, Line_Direction::closed);
  EXPECT_NEAR(static_cast<double>(log.back().microseconds - log.front().microseconds), 96000, 2000);
  EXPECT_NEAR(log.back().seconds_of_day, 36000.1, 0.01);
}

TEST_F(Line_Log_File, Tells_Of_A_Lost_Line_And_What_Came_Before) {
  line_.Set_Faults(sim::Parse_Faults("on=rd,hang_up=200").Knobs);
  EXPECT_THROW(Read_Settings_Click(), Failure);
  ASSERT_GE(Line_Log().size(), 3U);
  EXPECT_EQ(Line_Log().back().direction, Line_Direction::lost);
  EXPECT_EQ(Line_Log()[Line_Log().size() - 2].text.size(), 200U);
}

TEST_F(Line_Log_File, Drops_The_Oldest_When_It_Is_Full) {
  const std::string piece(1000, 'x');
  for (std::size_t i = 0; i < line_log_characters / piece.size() + 5; ++i)
    Log_Line(Line_Direction::sent, piece);
  EXPECT_EQ(Line_Log().size(), line_log_characters / piece.size());
  for (std::size_t i = 0; i < line_log_entries; ++i) Log_Line(Line_Direction::received, std::to_string(i));
  EXPECT_EQ(Line_Log().size(), line_log_entries);
  EXPECT_EQ(Line_Log().front().text, "0");
  Export(folder_.Path("full.txt"));
  EXPECT_THAT(folder_.Read("full.txt"), HasSubstr("What came before the first entry is no longer kept"));
}

TEST_F(Line_Log_File, Is_Written_As_Text_That_One_Can_Read) {
  Log_Line(Line_Direction::opened, "/dev/ttyUSB4");
  clock_.Advance(1.5);
  Log_Line(Line_Direction::sent, "rd");
  clock_.Advance(0.046875);
  Log_Line(Line_Direction::received, std::string("rd\r\n@00\\\t\x01\x7F\xE5", 13) + "abc");
  Log_Line(Line_Direction::lost);
  Export(folder_.Path("log.txt"));
  EXPECT_EQ(folder_.Read("log.txt"),
            "Line log of 2031-05-17 10:00:01\r\n"
            "Time of day, seconds since the first entry, who spoke, characters in hex and as text\r\n"
            "10:00:00.000      0.000000  port opened /dev/ttyUSB4\r\n"
            "10:00:01.500      1.500000  PC   72 64                                            rd\r\n"
            "10:00:01.546      1.546875  box  72 64 0D 0A 40 30 30 5C 09 01 7F E5 00 61 62 63  "
            "rd\\r\\n@00\\\\\\t\\x01\\x7F\\xE5\\x00abc\r\n"
            "10:00:01.546      1.546875  port lost\r\n");
}

TEST_F(Line_Log_File, An_Export_That_Fails_Says_Why_And_A_Cancelled_One_Nothing) {
  ask_.Expect_Name("Export line log", std::nullopt);
  Export_Line_Log_Click();
  EXPECT_EQ(ask_.last_question.name, "line_log_2031-05-17_10-00-00");
  EXPECT_EQ(ask_.last_question.default_extension, "txt");
  const std::string nowhere = folder_.Path("no such folder/log.txt");
  ASSERT_FALSE(platform::Replace_File(nowhere, "").Ok());
  ask_.Expect(platform::Replace_File(nowhere, "").reason);
  Export(nowhere);
  EXPECT_EQ(ask_.last_box.icon, platform::Icon::critical);
}

}  // namespace
}  // namespace kx
