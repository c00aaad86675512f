#include "workspace/analog2.h"

#include <gtest/gtest.h>

#include "settings/history.h"
#include "settings/image.h"
#include "settings/refresh.h"
#include "support/chosen_preset.h"
#include "support/workspace_fixture.h"
#include "workspace/view_hooks.h"

namespace kx {
namespace {

class Analog2 : public Workspace_Fixture {
 protected:
  void SetUp() override {
    Workspace_Fixture::SetUp();
    test::Choose_Preset();
  }

  static void Run(int mode, const char* gain, const char* offset) {
    Set_Field(map::an2_mode, mode);
    Refresh_Whole_Image();
    an_gain.Set(gain);
    an_offset.Set(offset);
    Command12_Click();
  }
};

constexpr const char* offset_limits = "In MODE 1, Offset must be between -2,5 to +2,49 Volt";
constexpr const char* no_negative_gain = "Negative numbers in Gain not alowed in MODE 1";

TEST_F(Analog2, The_Curve_Is_Written_Into_The_Table) {
  struct Worked {
    const char* gain;
    const char* offset;
    std::vector<std::pair<int, int>> bytes;
  };
  for (const Worked& worked :
       {Worked{"100", "0", {{154, 0}, {155, 16}, {156, 32}, {157, 48}, {158, 64}, {162, 128}, {170, 255}}},
        {"30", "", {{154, 0}, {170, 76}}},
        {"100", "-1", {{154, 0}, {157, 0}, {158, 13}}},
        {"12,5", "1.5", {{154, 76}, {170, 108}}},
        {"100", "5", {{154, 255}, {170, 255}}},
        {"100", "1e9", {{154, 255}}},
        {"-100", "5", {{154, 255}, {155, 239}, {170, 0}}}}) {
    CardByte.Fill(map::analog2, 7);
    const Byte_Image before = CardByte;
    Run(1, worked.gain, worked.offset);
    for (const auto& [byte, value] : worked.bytes) {
      EXPECT_EQ(CardByte[byte], value) << worked.gain << ' ' << worked.offset << " byte " << byte;
    }
    EXPECT_EQ(CardByte[171], 7);  // beyond the curve's 17 points
    EXPECT_EQ(CardByte[map::an_gain], before[map::an_gain]);
    EXPECT_EQ(an_gain.Text(), "100");  // neither is stored, so both fall back
    EXPECT_EQ(an_offset.Text(), "0.00");
  }
  EXPECT_EQ(Undo_Index, 0);
}

TEST_F(Analog2, As_Limit_Gain_And_Offset_Are_Stored_For_The_Box) {
  struct Worked {
    const char* gain;
    const char* offset;
    int gain_byte;
    int offset_byte;
    std::vector<const char*> boxes;
  };
  for (const int mode : {0, 2}) {
    for (const Worked& worked : {Worked{"30", "1,5", 30, 204, {}},
                                 {"30.5", "-0.5", 30, 102, {}},
                                 {"255", "2.49", 255, 255, {}},
                                 {"300", "-2.49", 255, 1, {}},
                                 {"1e9", "2.5", 255, 128, {offset_limits}},
                                 {"-1", "-2.5", 0, 128, {no_negative_gain, offset_limits}},
                                 {"0", "6", 0, 128, {offset_limits}},
                                 {"64", "", 64, 128, {}}}) {
      CardByte.Fill(map::analog2, 7);
      for (const char* box : worked.boxes) Expect_Box(box);
      Run(mode, worked.gain, worked.offset);
      EXPECT_EQ(CardByte[map::an_gain], worked.gain_byte) << worked.gain;
      EXPECT_EQ(CardByte[map::an_offset], worked.offset_byte) << worked.offset;
      EXPECT_EQ(CardByte[map::analog2.first], 7);
      ask_.Expect_None_Left();
    }
  }
  EXPECT_EQ(an_offset.Text(), "0.00");
}

TEST_F(Analog2, Boxes_Without_A_Number_Change_Nothing) {
  const auto refreshed = [](int mode) {
    Set_Field(map::an2_mode, mode);
    Refresh_Whole_Image();
    return CardByte;
  };
  for (const int mode : {0, 1, 2}) {
    const Byte_Image before = refreshed(mode);
    for (const char* wrong : {"-", "abc", "1 2", "12x", " "}) {
      EXPECT_THROW(Run(mode, wrong, "0"), Failure) << wrong;
      EXPECT_THROW(Run(mode, "100", wrong), Failure) << wrong;
    }
    Expect_Box("Please specify base percentage and offset for preset calculation");
    Run(mode, "", "abc");
    EXPECT_EQ(CardByte, before);
    EXPECT_EQ(an_offset.Text(), "abc");
  }
  const Byte_Image before = refreshed(3);
  Run(3, "50", "1");
  EXPECT_EQ(CardByte, before);
  EXPECT_EQ(an_gain.Text(), "100");
}

TEST_F(Analog2, Frames_Follow_The_Mode_Of_The_Image) {
  struct Shown {
    int mode;
    bool limit, curve, activation, grid;
    int points;
  };
  for (const Shown& shown :
       {Shown{0, true, false, false, true, 21}, Shown{1, false, true, false, true, 17},
        Shown{3, false, false, true, false, 17}, Shown{2, true, false, false, true, 21}}) {
    Set_Field(map::an2_mode, shown.mode);
    Update_Tabs();
    const Analog2_Frames frames = Analog2_Frames_Shown();
    EXPECT_EQ(frames.an2_limit_frame, shown.limit) << shown.mode;
    EXPECT_EQ(frames.an2_func_set, shown.curve) << shown.mode;
    EXPECT_EQ(frames.an2_activation_frame, shown.activation) << shown.mode;
    EXPECT_EQ(frames.an2_out_grid, shown.grid) << shown.mode;
    EXPECT_EQ(An2Points(), shown.points) << shown.mode;
  }
}

}  // namespace
}  // namespace kx
