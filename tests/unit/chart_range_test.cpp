#include "logging/chart_range.h"

#include <gtest/gtest.h>

#include <ostream>

namespace kx {

void PrintTo(const Chart_Range& range, std::ostream* out) { *out << range.first << ".." << range.last; }

namespace {

TEST(Chart_Range, Zooms) {
  EXPECT_EQ(Zoomed_In({1, 100}, 100), (Chart_Range{26, 75}));
  EXPECT_EQ(Zoomed_In({1, 10}, 10), (Chart_Range{4, 8}));  // 3.5 and 7.5: ties to even
  EXPECT_EQ(Zoomed_In({5, 7}, 10), (Chart_Range{5, 7}));   // 6..6 has no width
  EXPECT_EQ(Zoomed_Out({26, 75}, 100), (Chart_Range{14, 88}));
  EXPECT_EQ(Zoomed_Out({1, 90}, 100), (Chart_Range{1, 100}));
  EXPECT_EQ(Zoomed_All(77), (Chart_Range{1, 77}));
  EXPECT_EQ(Zoomed_About({1, 101}, 0.5, 0.5, 200), (Chart_Range{26, 76}));
  EXPECT_EQ(Zoomed_About({1, 101}, 0, 0.5, 200), (Chart_Range{1, 51}));
  EXPECT_EQ(Zoomed_About({1, 101}, 1, 4, 120), (Chart_Range{1, 101}));  // no room to the left
  EXPECT_EQ(Zoomed_About({10, 11}, 0.5, 0.1, 120), (Chart_Range{10, 11}));
}

TEST(Chart_Range, Moves_Within_The_Log) {
  EXPECT_EQ(Scrolled_Left({41, 80}, 100), (Chart_Range{31, 70}));
  EXPECT_EQ(Scrolled_Left({6, 45}, 100), (Chart_Range{1, 40}));
  EXPECT_EQ(Scrolled_Right({41, 80}, 100), (Chart_Range{51, 90}));
  EXPECT_EQ(Scrolled_Right({55, 94}, 100), (Chart_Range{61, 100}));
  EXPECT_EQ(Scrolled_Right({5, 6}, 100), (Chart_Range{6, 7}));  // a quarter of two rows is still a move
  EXPECT_EQ(Moved({5, 6}, -1, 100), (Chart_Range{4, 5}));
  EXPECT_EQ(Moved({99, 100}, 1, 100), (Chart_Range{99, 100}));
}

TEST(Chart_Range, A_Drag_In_Any_Direction_Selects_And_A_Click_Does_Not) {
  EXPECT_EQ(Dragged({1, 101}, 0.25, 0.75, 200), (Chart_Range{26, 76}));
  EXPECT_EQ(Dragged({1, 101}, 0.75, 0.25, 200), (Chart_Range{26, 76}));
  EXPECT_EQ(Dragged({1, 101}, -3, 9, 200), (Chart_Range{1, 101}));
  EXPECT_EQ(Dragged({1, 101}, 0.5, 0.5, 200), (Chart_Range{1, 101}));
}

TEST(Chart_Range, Logs_Of_No_Row_And_Ranges_Beyond_The_Log) {
  for (const auto change : {Zoomed_In, Zoomed_Out, Scrolled_Left, Scrolled_Right}) {
    EXPECT_EQ(change({1, 0}, 0), (Chart_Range{1, 0}));
    EXPECT_EQ(change({1, 1}, 1), (Chart_Range{1, 1}));
  }
  EXPECT_EQ(Limited({-4, 9000}, 100), (Chart_Range{1, 100}));
  EXPECT_EQ(Zoomed_Out({1, 6000}, 6000), (Chart_Range{1, 6000}));
}

}  // namespace
}  // namespace kx
