#include <filesystem>

#include "cards/card_image.h"
#include "link/reader_fixture.h"
#include "settings/message.h"

namespace kx {
namespace {

using test::Reader_Fixture;

class Chipdrive_Library : public Reader_Fixture {
 protected:
  /// The word that a read ends with; a missing reader is told of in a box first.
  static std::string Read() {
    Guarded(Command1_Click);
    return txt_Chipdrive_status.Text();
  }
};

TEST_F(Chipdrive_Library, Carries_A_Tune_To_The_Card_And_Back) {
  Guarded(Command2_Click);
  EXPECT_EQ(txt_Chipdrive_status.Text(), "< Card Write OK >");
  const Byte_Image written = CardByte;
  EXPECT_EQ(Card_In_File(), test::As_Sent(written));
  CardByte = {};
  EXPECT_EQ(Read(), "< Card Read OK >");
  EXPECT_EQ(CardByte, written);
}

TEST_F(Chipdrive_Library, What_It_Claims_Or_Throws_Does_No_Harm) {
  Reader_Found = true;
  const Byte_Image before = CardByte;
  for (const auto& [faults, word] :
       std::vector<std::pair<std::string, std::string>>{{"garbage", "< Read Data Fail >"},
                                                        {"throws", "< No Reader >"},
                                                        {"pull=100", "< No Card >"},
                                                        {"no_card", "< No Card >"}}) {
    SCOPED_TRACE(faults);
    Put_In({}, faults);
    EXPECT_EQ(Read(), word);
    EXPECT_EQ(CardByte, before);
  }
}

/// Only the program's own folder counts: not the working folder, not the search path.
TEST_F(Chipdrive_Library, Is_Taken_From_The_Folder_That_Was_Named_Alone) {
  const auto working_folder = std::filesystem::current_path();
  std::filesystem::current_path(KXBENCH_SIMULATED_READERS);
  for (const char* folder : {"", ".", "/nowhere"}) {
    platform::Loaded_Chipdrive elsewhere(folder);
    platform::seams.chipdrive = &elsewhere;
    Reader_Found = true;
    EXPECT_EQ(Read(), "< No Reader >") << folder;
  }
  std::filesystem::current_path(working_folder);
}

TEST_F(Chipdrive_Library, Without_Its_Entry_Or_No_Library_At_All_Is_No_Reader) {
  const std::string place = folder_.Path(platform::Library_File_Name("SCARD32"));
  platform::Loaded_Chipdrive placed(folder_.Path());
  platform::seams.chipdrive = &placed;
  Reader_Found = true;
  folder_.Write(platform::Library_File_Name("SCARD32"), "no library");
  EXPECT_EQ(Read(), "< No Reader >");
  std::filesystem::remove(place);
  std::filesystem::copy(std::string(KXBENCH_SIMULATED_READERS) + "/" + platform::Library_File_Name("AgmSyn"),
                        place);
  EXPECT_EQ(Read(), "< No Reader >") << "another library under its name";
}

}  // namespace
}  // namespace kx
