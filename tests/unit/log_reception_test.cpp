#include "logging/log_reception.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

namespace kx {
namespace {

using namespace testing;

/// A reception whose start string has been sent.
struct Receiver {
  explicit Receiver(std::string start = "a") { reception.Log_Start_String = std::move(start); }
  Chunk_Outcome Take(std::string_view chunk) {
    Chunk_Outcome outcome = Take_Chunk(reception, data, chunk);
    backup += outcome.backup;
    return outcome;
  }
  Alert_Action Tick() { return Note_Alert_Tick(reception, data); }
  /// What is behind the header line.
  [[nodiscard]] std::string Log() const { return data.substr(header.size()); }

  static constexpr std::string_view header = "[log_data]\r\n";
  Log_Reception reception;
  std::string data{header};
  std::string backup;
};

TEST(Log_Reception, A_Log_From_Start_To_Interruption_And_Back) {
  Receiver log;
  const auto first = log.Take("half\r\nwhole row\r\n12");  // the whole rows of the first chunk
                                                           // are dropped
  EXPECT_TRUE(first.first && first.begins);
  EXPECT_FALSE(log.Take("34\r\n5").begins);
  EXPECT_EQ(log.Log(), "a\r\n1234\r\n5");
  EXPECT_EQ(log.Tick(), Alert_Action::blink);
  EXPECT_EQ(log.Tick(), Alert_Action::restart);  // silence: the half row goes
  EXPECT_EQ(log.Log(), "a\r\n1234\r\n");
  EXPECT_EQ(log.reception.Log_Rx_Text, "1234\r\n");
  EXPECT_EQ(log.Tick(), Alert_Action::restart);
  EXPECT_EQ(log.Take("89\r\n").backup,
            "");  // the box is back: dropped up to the flush
  EXPECT_EQ(log.Tick(), Alert_Action::flush);
  const auto back = log.Take("678\r\n90");
  EXPECT_TRUE(back.begins);
  EXPECT_FALSE(back.first);
  EXPECT_EQ(log.Log(), "a\r\n1234 'Interuption of log\r\n90");
  EXPECT_EQ(log.reception.Log_Rx_Text, "1234\r\n90");
  EXPECT_EQ(log.backup, "1234\r\n5 'Interuption of log\r\n90");
  EXPECT_EQ(log.Tick(), Alert_Action::blink);
  EXPECT_TRUE(log.reception.Log_Had_Interruption);
  EXPECT_FALSE(log.reception.Log_Delayed_Start || log.reception.Log_Stream_Broken);
}

TEST(Log_Reception, A_Late_Box_Leaves_Its_Remark) {
  Receiver log("La");
  EXPECT_EQ(log.Tick(), Alert_Action::start);
  EXPECT_EQ(log.Tick(), Alert_Action::start);
  log.Take("no line end");
  EXPECT_EQ(log.Log(), "a 'Delayed start error occured\r\nno line end");
  EXPECT_FALSE(log.reception.Log_Had_Interruption);

  Receiver at_once("La");
  at_once.Take("1\r\n2");
  EXPECT_EQ(at_once.Log(), "La\r\n2");
}

TEST(Log_Reception, A_Flush_Without_Data_Behind_It_Is_Repeated) {
  Receiver log;
  log.Take("1\r\n2");
  EXPECT_EQ(log.Tick(), Alert_Action::blink);
  EXPECT_EQ(log.Tick(), Alert_Action::restart);
  log.Take("xx");
  EXPECT_EQ(log.Tick(), Alert_Action::flush);
  EXPECT_EQ(log.Tick(), Alert_Action::resend);
  EXPECT_EQ(log.Tick(), Alert_Action::flush);
  EXPECT_TRUE(log.Take("9\r\n8").begins);
  EXPECT_EQ(log.Log(),
            "a 'Interuption of log\r\n8");  // no whole row was there: the start
                                            // line has the mark
}

TEST(Log_Reception, The_Next_Part_Begins_At_A_Row) {
  Receiver log;
  log.Take("1\r\n");
  log.data = Receiver::header;
  log.reception.skip_half_row = true;
  EXPECT_EQ(log.Take("half").backup, "half");
  log.Take(" row\r\n");
  log.Take("12");
  log.Take("34\r\n");
  EXPECT_EQ(log.Log(), "1234\r\n");
}

std::string Row(int number) {
  std::string text = std::to_string(100000 + number);
  return text + " 128 128 \r\n";
}

/// Numbers of the rows that a reader would take out of @p log: whole, and without a remark.
std::vector<int> Rows_Read(const std::string& log) {
  std::vector<int> rows;
  std::size_t at = 0;
  for (std::size_t end = log.find('\n'); end != std::string::npos; at = end + 1, end = log.find('\n', at)) {
    const std::string line = log.substr(at, end + 1 - at);
    if (line.size() == Row(0).size()) rows.push_back(std::stoi(line) - 100000);
  }
  return rows;
}

TEST(Log_Reception, Any_Chunks_Of_One_Stream_Give_One_Log) {
  std::mt19937 random(1);
  std::string stream;
  for (int i = 0; i < 200; ++i) stream += Row(i);
  Receiver whole;
  whole.Take(stream.substr(0, 40));
  whole.Take(stream.substr(40));
  for (int run = 0; run < 50; ++run) {
    Receiver cut;
    cut.Take(stream.substr(0, 40));
    for (std::size_t at = 40; at < stream.size();) {
      const std::size_t length = 1 + random() % 60;
      cut.Take(std::string_view(stream).substr(at, length));
      at += length;
      if (random() % 4 != 0) continue;
      EXPECT_EQ(cut.Tick(), Alert_Action::blink);
    }
    ASSERT_EQ(cut.data, whole.data);
    ASSERT_EQ(cut.reception.Log_Rx_Text, whole.reception.Log_Rx_Text);
    ASSERT_EQ(cut.backup, whole.backup);
  }
}

/// A stream that stops at random places and comes back in the middle of rows.
TEST(Log_Reception, Interruptions_Cost_What_They_Must_And_Invent_Nothing) {
  constexpr std::size_t longest_chunk = 60;
  std::string stream;
  for (int i = 0; i < 300; ++i) stream += Row(i);
  std::mt19937 random(7);
  for (int run = 0; run < 200; ++run) {
    Receiver log;
    std::size_t at = 0;
    std::size_t lost = longest_chunk;  // characters that the machine may drop, those of the first chunk
    const auto take = [&] {
      const std::size_t length = 1 + random() % longest_chunk;
      (void)log.Take(std::string_view(stream).substr(at, length));
      at += length;
    };
    take();
    while (at + 1000 < stream.size()) {
      take();
      if (random() % 20 != 0) continue;
      while (log.Tick() != Alert_Action::restart) continue;
      const std::size_t gap = random() % 200;  // the box goes on meanwhile
      at += gap;
      take();
      ASSERT_EQ(log.Tick(), Alert_Action::flush);
      take();
      lost += gap + 2 * longest_chunk + 2 * Row(0).size();  // with the half row and the marked one
    }
    const std::vector<int> rows = Rows_Read(log.data);
    ASSERT_TRUE(std::ranges::is_sorted(rows));
    ASSERT_EQ(std::ranges::adjacent_find(rows), rows.end());
    EXPECT_GE((rows.size() + 1) * Row(0).size() + lost, at) << run;
    ASSERT_TRUE(std::ranges::is_sorted(Rows_Read(log.backup)));
  }
}

}  // namespace
}  // namespace kx
