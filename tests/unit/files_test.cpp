#include "platform/files.h"

#include <gmock/gmock.h>
#include <sys/stat.h>

#include <filesystem>

#include "support/file_size_limit.h"
#include "support/temp_dir.h"

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

}  // namespace
}  // namespace kx::platform
