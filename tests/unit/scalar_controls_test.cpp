#include "workspace/scalar_controls.h"

#include <gtest/gtest.h>

#include <cmath>
#include <set>

#include "sensors/sensor_store.h"
#include "settings/history.h"
#include "settings/image.h"
#include "settings/refresh.h"
#include "support/workspace_fixture.h"
#include "workspace/temperature_chart.h"
#include "workspace/view_hooks.h"

namespace kx {
namespace {

using Scalar_Controls = Workspace_Fixture;

std::string Text(std::string_view slider, std::string_view control, int position) {
  const Scalar_Row& row = Scalar_Row_Of(slider);
  for (const Scalar_Text_Row& text : Texts_Of(row)) {
    if (text.control == control) return Scalar_Text(row, text, position);
  }
  return "no such text";
}

TEST_F(Scalar_Controls, Texts_Are_Those_Of_Worked_Values) {
  struct Worked {
    const char* slider;
    const char* control;
    int position;
    const char* text;
  };
  CardByte[map::ae_gain] = 255;
  CardByte[map::ae_sustain] = 128;
  for (const Worked& worked : {
           Worked{"afe_thr_scroll", "afe_thr_text", 255, "100.0 %"},
           {"afe_thr_scroll", "afe_thr_text2", 128, "1.4 bar/samp"},
           {"afe_gain_scroll", "afe_gain_text", 128, "50.2 %"},
           {"afe_gain_scroll", "afe_gain_text2", 128, "2.89 ms"},
           {"afe_gain_scroll", "afe_sus_text2", 255, "0.40 s"},
           {"afe_gain_scroll", "afe_sus_text2", 15, "0.05 s"},
           {"afe_sus_scroll", "afe_sus_text", 80, "31.3 %"},
           {"afe_sus_scroll", "afe_sus_text2", 255, "11.25 s"},
           {"afe_sus_scroll", "afe_sus_text2", 0, "0.05 s"},
           {"rpm_limit_scroll", "rpm_limit_text", 160, "10000"},
           {"rpm_openinj_scroll", "rpm_openinj_text", 255, "15937.5"},
           {"volt_openinj_scroll", "volt_openinj_text", 128, "2.51"},
           {"pulse_openinj_scroll", "pulse_openinj_text", 255, "25.5"},
           {"inj_cal_factor_scroll", "inj_cal_factor_text", 199, "199"},
           {"HScroll1", "Max_Tot_Ret", 123, "12.3"},
           {"HScroll1", "Max_Tot_Ret", 120, "12"},
           {"HScroll3", "gear_shift", 64, "4000"},
           {"AN2_level_scroll", "AN2_level_txt", 255, "5.00 V"},
           {"Boost_activ_level_AN2_scroll", "Boost_activ_level_AN2_txt", 255, "2.60"},
           {"Boost_activ_level_AN2_scroll", "Boost_activ_level_AN2_unit_label", 0, "bar"},
           {"boost_limit_scroll", "boost_limit_text", 255, "5.00"},
           {"An2_func_Scroll", "An2_func_text", 1, "0.02"},
           {"inboostlevel", "inboostlevel_text", 128, "2.51"},
           {"rpm_calc_scroll", "rpm_calc_text", 2, "2"},
           {"rpm_calc_scroll_s", "rpm_calc_text_s", 20, "20"},
           {"scroll(7)", "scroll_text(7)", 0, "-25.1"},
           {"scroll(9)", "scroll_text(9)", 255, "24.9"},
           {"scroll(8)", "scroll_text(8)", 255, "-55.2"},
           {"scroll(10)", "scroll_text(10)", 8, "148.1"},
           {"scroll(24)", "scroll_text(24)", 0, "-3.28"},
           {"scroll(29)", "scroll_text(29)", 129, "0.03"},
           {"scroll(36)", "scroll_text(36)", 127, "-0.03"},
           {"scroll(39)", "scroll_text(39)", 255, "3.25"},
           {"scroll(40)", "scroll_text(40)", 127, "99.6%"},
           {"scroll(40)", "scroll_text(40)", 255, "200%"},
           {"scroll(43)", "scroll_text(43)", 255, "255"},
       }) {
    EXPECT_EQ(Text(worked.slider, worked.control, worked.position), worked.text)
        << worked.control << " at " << worked.position;
  }
  Sensor_Selection = {-1, 0, 0, 0, -1};
  EXPECT_EQ(Text("afe_thr_scroll", "afe_thr_text2", 128), "");
  EXPECT_EQ(Text("scroll(8)", "scroll_text(8)", 128), "");
  EXPECT_EQ(Text("Boost_activ_level_AN2_scroll", "Boost_activ_level_AN2_txt", 128), "");
}

/// History slots that one move of each slider fills.
int Captures_Of(std::string_view slider) {
  static const std::set<std::string_view> without{
      "inboostlevel",      "boost_limit_scroll", "An2_func_Scroll",  "rpm_calc_scroll",
      "rpm_calc_scroll_s", "HScroll1",           "AN2_level_scroll", "Boost_activ_level_AN2_scroll",
      "HScroll3"};
  return slider == "rpm_limit_scroll" ? 2 : without.contains(slider) ? 0 : 1;
}

/// While the views are being filled a slider reads only.
TEST_F(Scalar_Controls, A_Move_Stores_One_Byte_And_Fills_Its_History_Slots_With_The_State_Before) {
  int shown = 0;
  view_hooks.show_scalar = [&](const Scalar_Row&) { ++shown; };
  std::set<int> bytes;
  for (const Scalar_Row& row : Scalar_Rows()) {
    SCOPED_TRACE(row.name);
    EXPECT_TRUE(bytes.insert(row.byte).second);
    Reset_History();
    Byte_Image expected = CardByte;
    const Byte_Image before = CardByte;
    shown = 0;
    for (int position = row.max; position >= 0; --position) {
      Undo_Busy = true;
      Scalar_Changed(row, position);
      Undo_Busy = false;
      ASSERT_EQ(CardByte, expected) << position;
      Scalar_Changed(row, position);
      expected[row.byte] = static_cast<std::uint8_t>(
          row.name == "inj_cal_factor_scroll" ? std::nearbyint(position * 1.28) : position);
      ASSERT_EQ(CardByte, expected) << position;
      ASSERT_EQ(Scalar_Position(row), position);
    }
    EXPECT_EQ(shown, 2 * (row.max + 1));
    Scalar_Changed(row, row.max + 1);
    EXPECT_EQ(CardByte, expected) << "a position that the slider does not have";
    CardByte = before;
    Reset_History();
    Scalar_Changed(row, row.max);
    EXPECT_EQ(Undo_Index, Captures_Of(row.name));
    while (Undo_Index > 0) {
      Undo();
      EXPECT_EQ(CardByte, before);
    }
    CardByte = before;
  }
  EXPECT_EQ(bytes.size(), Scalar_Rows().size());
  CardByte[map::injector_calibration] = 16;  // 12.5 %
  EXPECT_EQ(Scalar_Position(Scalar_Row_Of("inj_cal_factor_scroll")), 12);
  CardByte[map::rpm_indicator] = 200;
  EXPECT_EQ(Scalar_Position(Scalar_Row_Of("HScroll3")), 160);
}

TEST_F(Scalar_Controls, The_Slider_Array_Is_Reached_By_Its_Byte_And_Redraws_The_Temperature_Chart) {
  Scroll_Change(9, 255);
  EXPECT_EQ(CardByte[map::high_air_correction], 255);
  EXPECT_EQ(Coolant_Chart.points[3].correction, 24.9);
  std::string shown;
  view_hooks.show_scalar = [&](const Scalar_Row& row) { shown = row.name; };
  Scroll_Refresh(40);
  EXPECT_EQ(shown, "scroll(40)");
  EXPECT_THROW(Scroll_Refresh(11), Failure);
  EXPECT_THROW((void)Scalar_Row_Of("scroll"), Failure);
}

TEST_F(Scalar_Controls, Gear_Shift_Takes_Numbers_Up_To_10000) {
  for (const auto& [text, position] : {std::pair{"4000", 64},
                                       {"10000", 160},
                                       {"10001", 160},
                                       {"31.25", 0},
                                       {"93.75", 2},
                                       {" 62.5 ", 1},
                                       {"-31", 0}}) {
    CardByte[map::rpm_indicator] = 100;
    gear_shift_Entered(text);
    EXPECT_EQ(CardByte[map::rpm_indicator], position) << text;
  }
  const Byte_Image before = CardByte;
  for (const char* wrong : {"", "-", "abc", "12x", "-1000", "1 2"}) {
    EXPECT_THROW(gear_shift_Entered(wrong), Failure) << wrong;
  }
  EXPECT_EQ(CardByte, before);
}

TEST_F(Scalar_Controls, Enrichment_Lasts_Until_The_Decay_Has_Eaten_The_Fuel) {
  CardByte[map::ae_gain] = 64;
  CardByte[map::ae_sustain] = 240;
  EXPECT_DOUBLE_EQ(Calc_max_AE_time(), 1.60);
  EXPECT_DOUBLE_EQ(Max_Ae_Time(16, 255), 0.75);
}

}  // namespace
}  // namespace kx
