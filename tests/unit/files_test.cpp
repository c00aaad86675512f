#include "platform/files.h"

#include <gmock/gmock.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>

#include "support/file_size_limit.h"
#include "support/other_user.h"
#include "support/temp_dir.h"

namespace {
bool modes_refused = false;
}

/// Stands before the system's own in this program: a file system that knows no modes.
extern "C" int fchmod(int descriptor, mode_t mode) noexcept {
  if (!modes_refused) return static_cast<int>(::syscall(SYS_fchmod, descriptor, mode));
  errno = EPERM;
  return -1;
}

namespace kx::platform {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;

class Files : public testing::Test {
 protected:
  /// Names in the folder, sorted.
  [[nodiscard]] std::vector<std::string> Names() const {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(folder_.Path())) names.push_back(entry.path().filename());
    std::ranges::sort(names);
    return names;
  }

  test::Temp_Dir folder_;
  const std::string path_ = folder_.Path("tune.kxs");
};

TEST_F(Files, A_File_Is_Made_And_Replaced_Whole) {
  const std::string bytes = std::string("a\0\r\n\x1A", 5) + std::string(100000, 'x');
  ASSERT_TRUE(Replace_File(path_, "old, and longer than nothing").Ok());
  ASSERT_TRUE(Replace_File(path_, bytes).Ok());
  std::string read = "left over";
  ASSERT_TRUE(Read_Whole_File(path_, read).Ok());
  EXPECT_EQ(read, bytes);
  EXPECT_EQ(Names(), std::vector<std::string>{"tune.kxs"}) << "nothing stays beside";
}

TEST_F(Files, Permissions_And_Links_Stay) {
  folder_.Write("tune.kxs", "old");
  fs::permissions(path_, fs::perms(0664));
  fs::create_symlink("tune.kxs", folder_.Path("link.kxs"));
  folder_.Write("stale", "of a run that was cut off");
  ASSERT_TRUE(Replace_File(folder_.Path("link.kxs"), folder_.Path("stale"), "new").Ok());
  EXPECT_EQ(folder_.Read("tune.kxs"), "new");
  EXPECT_TRUE(fs::is_symlink(folder_.Path("link.kxs")));
  EXPECT_EQ(fs::status(path_).permissions(), fs::perms(0664));
  EXPECT_EQ(Names(), (std::vector<std::string>{"link.kxs", "tune.kxs"}));
}

TEST_F(Files, A_Full_Disk_Leaves_The_Old_File_Whole) {
  const std::string old(5000, 'o');
  folder_.Write("tune.kxs", old);
  File_Result result;
  {
    const test::File_Size_Limit full(1000);
    result = Replace_File(path_, std::string(6000, 'n'));
  }
  EXPECT_THAT(result.reason, HasSubstr(path_));
  EXPECT_EQ(folder_.Read("tune.kxs"), old);
  EXPECT_EQ(Names(), std::vector<std::string>{"tune.kxs"});
}

TEST_F(Files, What_A_Killed_Save_Has_Left_Goes_At_The_Next_And_Nothing_Of_The_Users) {
  folder_.Write("tune.kxs", "old");
  folder_.Write("tune.kxs.kxbench-new", "half of");
  folder_.Write("tune.kxs.kxbench-old", "older");
  folder_.Write("tune.kxs.new", "the user's own");
  ASSERT_TRUE(Replace_File(path_, "new").Ok());
  EXPECT_EQ(folder_.Read("tune.kxs"), "new");
  EXPECT_EQ(Names(), (std::vector<std::string>{"tune.kxs", "tune.kxs.new"}));
}

TEST_F(Files, A_Refused_Mode_Is_No_Failed_Save) {
  folder_.Write("tune.kxs", "old");
  modes_refused = true;
  const File_Result result = Replace_File(path_, "new");
  modes_refused = false;
  EXPECT_EQ(result.reason, "");
  EXPECT_EQ(folder_.Read("tune.kxs"), "new");
}

TEST_F(Files, A_Link_To_Another_File_System_Is_Followed) {
  const std::string target = "/dev/shm/kxbench_" + std::to_string(::getpid());
  struct stat here {};
  struct stat there {};
  ::stat(folder_.Path().c_str(), &here);
  if (::stat("/dev/shm", &there) != 0 || here.st_dev == there.st_dev) GTEST_SKIP() << "one file system only";
  std::ofstream(target) << "old";
  fs::create_symlink(target, path_);
  const File_Result result = Replace_File(path_, folder_.Path("beside"), "new");
  std::string read;
  EXPECT_TRUE(Read_Whole_File(target, read).Ok());
  fs::remove(target);
  EXPECT_EQ(result.reason, "");
  EXPECT_EQ(read, "new");
  EXPECT_EQ(Names(), std::vector<std::string>{"tune.kxs"});
}

/// A file that the user may write in a folder where nothing can be renamed over it.
class Files_In_Place : public Files, public testing::WithParamInterface<mode_t> {};

TEST_P(Files_In_Place, Is_Written_Where_It_Stands) {
  folder_.Write("tune.kxs", "old, and longer than new");
  ::chmod(path_.c_str(), 0666);
  ::chmod(folder_.Path().c_str(), GetParam());
  const ino_t before = [this] {
    struct stat status {};
    ::stat(path_.c_str(), &status);
    return status.st_ino;
  }();
  {
    const test::Other_User user;
    if ((GetParam() & 0222) != 0 && !user.Is_Other()) GTEST_SKIP() << "needs a file of another user";
    EXPECT_TRUE(Check_Replaceable(path_, folder_.Path("beside")).Ok());
    EXPECT_EQ(Replace_File(path_, folder_.Path("beside"), "new").reason, "");
    EXPECT_FALSE(Replace_File(folder_.Path("none/other"), "new").Ok());
    {
      const test::File_Size_Limit full(10);
      EXPECT_THAT(Replace_File(path_, std::string(20, 'n')).reason, HasSubstr(path_));
    }
  }
  ::chmod(folder_.Path().c_str(), 0755);
  struct stat after {};
  ::stat(path_.c_str(), &after);
  EXPECT_EQ(after.st_ino, before);
  EXPECT_EQ(folder_.Read("tune.kxs"), "new");
  EXPECT_EQ(Names(), std::vector<std::string>{"tune.kxs"});
  for (const auto& entry : fs::directory_iterator("/var/tmp")) {
    EXPECT_THAT(entry.path().string(), testing::Not(HasSubstr(fs::path(folder_.Path()).filename().string())));
  }
}

INSTANTIATE_TEST_SUITE_P(Folders, Files_In_Place, testing::Values(0555, 01777));

TEST_F(Files, What_Cannot_Be_Replaced_Is_Refused_With_Its_Name) {
  folder_.Write("protected", "old");
  fs::permissions(folder_.Path("protected"), fs::perms(0444));
  fs::create_directory(folder_.Path("folder"));
  ASSERT_EQ(::mkfifo(folder_.Path("pipe").c_str(), 0600), 0);
  const auto before = Names();
  for (const char* name : {"protected", "folder", "pipe", "none/tune.kxs"}) {
    const std::string path = folder_.Path(name);
    EXPECT_THAT(Replace_File(path, "new").reason, HasSubstr(path));
    EXPECT_THAT(Check_Replaceable(path, path + ".new").reason, HasSubstr(path));
  }
  EXPECT_EQ(Names(), before);
  EXPECT_EQ(folder_.Read("protected"), "old");
  EXPECT_TRUE(Check_Replaceable(path_, folder_.Path("beside")).Ok());
  EXPECT_EQ(Names(), before) << "the check leaves nothing";
}

TEST_F(Files, Only_Ordinary_Files_Are_Read) {
  ASSERT_EQ(::mkfifo(folder_.Path("pipe").c_str(), 0600), 0);
  std::string bytes;
  for (const std::string& path : {folder_.Path("pipe"), folder_.Path(), folder_.Path("none")}) {
    EXPECT_THAT(Read_Whole_File(path, bytes).reason, HasSubstr(path));
  }
  folder_.Write("empty", "");
  EXPECT_TRUE(Read_Whole_File(folder_.Path("empty"), bytes).Ok());
  EXPECT_EQ(bytes, "");
  EXPECT_EQ(Working_Directory().back(), '/');
  EXPECT_TRUE(fs::equivalent(Working_Directory(), fs::current_path()));
}

TEST_F(Files, What_Was_Appended_Outlives_A_Killed_Program) {
  folder_.Write("log", "of an earlier run");
  const pid_t child = ::fork();
  ASSERT_GE(child, 0);
  if (child == 0) {
    Append_File log;
    const bool done = log.Open(folder_.Path("log"), Append_File::Start::empty).Ok() &&
                      log.Append("row 1\r\n").Ok() && log.Append(std::string("\xB0\0", 2)).Ok();
    ::kill(::getpid(), done ? SIGKILL : SIGTERM);
  }
  int status = 0;
  ::waitpid(child, &status, 0);
  ASSERT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL);
  EXPECT_EQ(folder_.Read("log"), std::string("row 1\r\n\xB0\0", 9));
  Append_File log;
  ASSERT_TRUE(log.Open(folder_.Path("log"), Append_File::Start::at_end).Ok());
  ASSERT_TRUE(log.Append("row 2").Ok());
  EXPECT_EQ(folder_.Read("log").substr(9), "row 2") << "before it is closed";
  EXPECT_TRUE(log.Close().Ok());
}

TEST_F(Files, What_Cannot_Be_Appended_Is_Told_And_Leaves_No_Half_Row) {
  Append_File log;
  EXPECT_FALSE(log.Append("nothing is open").Ok());
  EXPECT_TRUE(log.Close().Ok());
  ASSERT_EQ(::mkfifo(folder_.Path("pipe").c_str(), 0600), 0);
  for (const std::string& path : {folder_.Path("pipe"), folder_.Path(), folder_.Path("none/log")}) {
    EXPECT_THAT(log.Open(path, Append_File::Start::at_end).reason, HasSubstr(path));
    EXPECT_FALSE(log.Is_Open());
  }
  ASSERT_TRUE(log.Open(folder_.Path("log"), Append_File::Start::empty).Ok());
  ASSERT_TRUE(log.Append("whole").Ok());
  File_Result result;
  {
    const test::File_Size_Limit full(8);
    result = log.Append("too long");
  }
  EXPECT_THAT(result.reason, HasSubstr(folder_.Path("log")));
  EXPECT_EQ(folder_.Read("log"), "whole");
  EXPECT_TRUE(log.Append(", and on").Ok()) << "once there is room again";
  EXPECT_EQ(folder_.Read("log"), "whole, and on");
}

}  // namespace
}  // namespace kx::platform
