// What the transfers leave behind to compare with: a good one what it has read, any other one nothing new.
#include "boxlink/box_info.h"
#include "support/sync_engine_fixture.h"
#include "support/timer_engine_fixture.h"

namespace kx {
namespace {

/// The buttons of one engine, and the boxes that each shows against a lone master.
struct Buttons {
  const char* name;
  void (*read)();
  void (*verify)();
  void (*write)();
  std::vector<std::string> write_boxes;
};

/// A user who says OK to whatever comes up.
class Agreeing_User : public platform::Ask {
 public:
  platform::Answer Show(const platform::Message&) override { return platform::Answer::ok; }
  std::optional<std::string> Open_Name(const platform::File_Question&) override { return {}; }
  std::optional<std::string> Save_Name(const platform::File_Question&) override { return {}; }
};

class Reference_From_Box : public test::Link_Fixture, public testing::WithParamInterface<Buttons> {
 protected:
  Reference_From_Box() {
    refresh_hooks.update_all = [this] { certain_when_shown_ = Box_Image_Certain(); };
    refresh_hooks.show_reference = refresh_hooks.update_all;
    for (const std::size_t i : {5U, 40U, 248U}) Box().Master[i] ^= 0x21;
    Box().Master[255] = 17;
  }

  void Run(void (*click)()) {
    Guarded(click);
    for (const double end = clock_.Elapsed() + 30; Transfer_Running() && clock_.Elapsed() < end;)
      loop_.Do_Events();
  }
  void Run_Write() {
    for (const std::string& text : GetParam().write_boxes) ask_.Expect(text);
    Run(GetParam().write);
  }
  [[nodiscard]] bool Holds_The_Box() {
    return Reference() != nullptr && test::As_Sent(Reference()->image) == Box().Master;
  }

  bool certain_when_shown_ = false;
  Agreeing_User agreeing_;
};

TEST_P(Reference_From_Box, A_Good_Read_Verify_And_Write_Tell_What_The_Box_Holds) {
  const Byte_Image tune = CardByte;
  Run(GetParam().verify);
  EXPECT_TRUE(Holds_The_Box());
  EXPECT_TRUE(certain_when_shown_) << "the views know";
  EXPECT_EQ(Reference()->dataset, 108) << "what the box says, not its byte";
  EXPECT_EQ(CardByte, tune);
  Run_Write();
  EXPECT_TRUE(Holds_The_Box());
  EXPECT_TRUE(Box_Image_Certain() && certain_when_shown_);
  EXPECT_EQ(Bytes_To_Write(Reference()->image, CardByte), std::vector<int>());
  Reset_Reference_State();
  Box().Master[60] ^= 3;
  Run(GetParam().read);
  EXPECT_TRUE(Holds_The_Box());
  Choose_Reference(Reference_Source::opened);
  EXPECT_EQ(Reference()->image, CardByte);
}

TEST_P(Reference_From_Box, A_Transfer_That_Fails_Tells_Nothing_New) {
  platform::seams.ask = &agreeing_;
  for (const char* knobs : {"on=v+rd,refuse", "on=rd,half", "on=rd,garbage", "on=rd,hang_up=300"}) {
    Set_Faults(knobs);
    for (const auto click : {GetParam().read, GetParam().verify}) {
      Run(click);
      EXPECT_EQ(Reference(), nullptr) << knobs;
    }
  }
}

TEST_P(Reference_From_Box, After_A_Write_That_Breaks_Off_The_Box_Is_In_Doubt_Until_It_Is_Read) {
  Run(GetParam().verify);
  const Byte_Image before = Reference()->image;
  platform::seams.ask = &agreeing_;
  Set_Faults("on=digit,hang_up=3");
  Run(GetParam().write);
  EXPECT_FALSE(Box_Image_Certain());
  EXPECT_EQ(Reference()->image, before);
  EXPECT_EQ(Reference()->name, "Box before the last write");
  Set_Faults("");
  loop_.Run(0.5);
  Run(GetParam().verify);
  EXPECT_TRUE(Box_Image_Certain() && Holds_The_Box());
  EXPECT_EQ(Reference()->name, "Box");
}

TEST_P(Reference_From_Box, Another_Box_Is_Not_Taken_For_The_One_That_Was_Read) {
  Run(GetParam().verify);
  Refresh_Box_Info_Quietly();
  EXPECT_TRUE(Box_Image_Certain()) << "the same box";
  Box().Serial = 4321;
  Refresh_Box_Info_Quietly();
  EXPECT_FALSE(Box_Image_Certain() || certain_when_shown_);
  EXPECT_FALSE(Doubt_Box_Image(Box_Doubt::written)) << "it is not the one that is written to";
  EXPECT_EQ(Reference()->name, "Box connected before");
  Run(GetParam().verify);
  EXPECT_TRUE(Box_Image_Certain() && certain_when_shown_);
  EXPECT_EQ(Reference()->name, "Box");
}

INSTANTIATE_TEST_SUITE_P(
    Engines, Reference_From_Box,
    testing::Values(Buttons{"sync", Read_Settings_Click, Verify_Settings_Click, Write_Settings_Click, {}},
                    Buttons{"timer",
                            Com_knapp5_Click,
                            Com_knapp4_Click,
                            Com_knapp3_Click,
                            {"ERROR 4", "ERROR 6", "ERROR 3"}}),
    [](const auto& engine) { return std::string(engine.param.name); });

}  // namespace
}  // namespace kx
