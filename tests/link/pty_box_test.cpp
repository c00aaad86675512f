#include "sim/pty_box.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <fstream>

namespace kx::sim {
namespace {

using Clock = std::chrono::steady_clock;
constexpr auto Limit = std::chrono::seconds(5);  // for what must come; never waited out when all is well

/// The PC's side of a terminal, opened as a plain file.
class Pc_Side {
 public:
  explicit Pc_Side(const std::string& path) : port_(open(path.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK)) {}

  [[nodiscard]] bool Is_Open() const { return port_.Number() >= 0; }
  void Send(const std::string& text) {
    EXPECT_EQ(write(port_.Number(), text.data(), text.size()), static_cast<ssize_t>(text.size()));
  }

  /// What arrives until @p count characters are there, the far end hangs up, or the limit has passed.
  std::string Receive(std::size_t count) {
    std::string text;
    const auto end = Clock::now() + Limit;
    while (text.size() < count && Clock::now() < end && Read_Into(text, count - text.size())) {
    }
    return text;
  }

  /// True when something lies there unread, or nothing does, within the limit.
  [[nodiscard]] bool Wait_For_Unread(bool wanted) {
    const auto end = Clock::now() + Limit;
    pollfd file{port_.Number(), POLLIN, 0};
    while ((poll(&file, 1, 0) > 0) != wanted && Clock::now() < end) std::this_thread::yield();
    return Clock::now() < end;
  }

  std::string Ask(const std::string& command, std::size_t count) {
    Send(command);
    return Receive(count);
  }

 private:
  bool Read_Into(std::string& text, std::size_t most) {
    pollfd file{port_.Number(), POLLIN, 0};
    poll(&file, 1, 100);
    std::string buffer(most, '\0');
    const ssize_t count = read(port_.Number(), buffer.data(), most);
    if (count > 0) text.append(buffer, 0, static_cast<std::size_t>(count));
    return count > 0 || (count < 0 && errno == EAGAIN);
  }

  Descriptor port_;
};

TEST(Pty_Box_Link, A_Pc_That_Comes_And_Goes_Finds_No_Leftovers) {
  Pty_Box box{Line(Box(), Parse_Faults("on=ue,stale=left unread").Knobs)};
  ASSERT_EQ(box.Start(), "");
  for (int visit = 0; visit < 50; ++visit) {
    Pc_Side pc(box.Path());
    ASSERT_TRUE(pc.Wait_For_Unread(false)) << visit;
    ASSERT_EQ(pc.Ask("ue", 3), "ue*") << visit;
    ASSERT_TRUE(pc.Wait_For_Unread(true)) << visit;
  }
}

TEST(Pty_Box_Link, What_Is_Sent_To_Nobody_Is_Lost) {
  Pty_Box box{Line(Box(), Parse_Faults("on=rd,delay=0.05").Knobs)};
  ASSERT_EQ(box.Start(), "");
  { Pc_Side(box.Path()).Send("rd"); }
  const auto end = Clock::now() + Limit;
  const auto sent = [](const Line& line) { return line.Counts().Bytes_Sent; };
  while (box.With_Line(sent) < 520 && Clock::now() < end) std::this_thread::yield();
  EXPECT_EQ(Pc_Side(box.Path()).Ask("ue", 3), "ue*");
}

TEST(Pty_Box_Link, Keeps_The_Pace_Of_The_Wire) {
  Pty_Box box{Line()};
  ASSERT_EQ(box.Start(), "");
  Pc_Side pc(box.Path());
  double shortest = 1;
  for (int i = 0; i < 5; ++i) {
    const auto start = Clock::now();
    ASSERT_EQ(pc.Ask("rd", 520).size(), 520U);
    shortest = std::min(shortest, std::chrono::duration<double>(Clock::now() - start).count());
  }
  EXPECT_GE(shortest, 522 * Character_Time);
  EXPECT_LE(shortest, 1.25 * 522 * Character_Time);
}

TEST(Pty_Box_Link, Hangs_Up_And_Comes_Back) {
  Pty_Box box{Line(Box(), Parse_Faults("hang_up=2").Knobs)};
  ASSERT_EQ(box.Start(), "");
  Pc_Side pc(box.Path());
  const auto start = Clock::now();
  EXPECT_EQ(pc.Ask("ue", 3), "ue");
  EXPECT_LT(Clock::now() - start, Limit);
  EXPECT_TRUE(box.With_Line([](const Line& line) { return line.Hung_Up(); }));
  box.With_Line([](Line& line) { line.Set_Faults({}); });
  ASSERT_EQ(box.Start(), "");
  EXPECT_EQ(Pc_Side(box.Path()).Ask("ue", 3), "ue*");
}

TEST(Pty_Box_Link, Ends_At_Once_And_Takes_Its_Link_Along) {
  const std::string link = testing::TempDir() + std::to_string(getpid()) + "pty_box_link";
  std::filesystem::create_symlink("/nowhere", link);
  {
    Pty_Box box(Line(Box(), Parse_Faults("delay=3600").Knobs), link);
    ASSERT_EQ(box.Start(), "");
    EXPECT_EQ(box.Path(), link);
    Pc_Side(link).Send("ue");
  }
  EXPECT_FALSE(std::filesystem::is_symlink(link));
  std::ofstream(link) << "kept";
  EXPECT_EQ(Pty_Box(Line(), link).Start(), link + " exists and is not a link");
  EXPECT_EQ(std::filesystem::file_size(link), 4U);
  std::filesystem::remove(link);
  EXPECT_NE(Pty_Box(Line(), "/no/such/folder/link").Start(), "");
}

}  // namespace
}  // namespace kx::sim
