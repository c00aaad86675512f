#include "logging/line_points.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <random>
#include <vector>

namespace kx {
namespace {

constexpr double empty = std::numeric_limits<double>::quiet_NaN();

std::string Text_Of(const Thin_Line& line) {
  std::string text;
  for (const Line_Stroke& stroke : line.strokes) {
    text += "|";
    for (std::size_t i = stroke.first; i < stroke.end; ++i) {
      text += " " + std::to_string(std::lround(line.points[i].x * 10)) + "," +
              std::to_string(std::lround(line.points[i].y));
    }
  }
  return text;
}

TEST(Thin_To_Columns, Keeps_Extremes_In_Order_And_Breaks_At_Empty_Values) {
  struct Case {
    const char* what;
    std::vector<double> x;
    std::vector<double> y;
    const char* strokes;
  };
  const Case cases[] = {
      {"one column: greatest first", {0, 0.1, 0.2, 0.3}, {5, 9, 1, 3}, "| 1,9 2,1"},
      {"one column: least first", {0, 0.1, 0.2, 0.3}, {5, 1, 9, 3}, "| 1,1 2,9"},
      {"the first point is an extreme", {0, 0.1, 0.2}, {1, 4, 2}, "| 0,1 1,4"},
      {"a level stretch is one point", {0, 0.1, 0.2, 1}, {4, 4, 4, 4}, "| 0,4 10,4"},
      {"running back makes a new column", {1.5, 2.5, 1.5}, {1, 2, 3}, "| 15,1 25,2 15,3"},
      {"gaps", {0, 1, 2, 3, 4}, {1, empty, 3, empty, empty}, "| 0,1| 20,3"},
      {"x missing", {0, empty, 2}, {1, 2, 3}, "| 0,1| 20,3"},
      {"nothing", {}, {}, ""},
      {"more x than y", {0, 1, 2}, {7}, "| 0,7"},
  };
  for (const Case& one : cases) {
    Thin_Line line;
    Thin_To_Columns(one.x, one.y, {}, line);
    EXPECT_EQ(Text_Of(line), one.strokes) << one.what;
  }
}

TEST(Thin_To_Columns, A_Long_Line_Keeps_What_Each_Column_Spans) {
  std::mt19937 random(7);
  std::vector<double> x(6000);
  std::vector<double> y(6000);
  for (std::size_t i = 0; i < x.size(); ++i) {
    x[i] = static_cast<double>(i) * 0.05;
    y[i] = static_cast<double>(random() % 256);
  }
  const Line_Map map{3, 40, -2, 500};
  Thin_Line line;
  Thin_To_Columns(x, y, map, line);
  std::map<int, std::pair<double, double>> wanted;
  std::map<int, std::pair<double, double>> kept;
  const auto take = [](auto& spans, double right, double up) {
    auto [span, fresh] = spans.try_emplace(static_cast<int>(std::floor(right)), up, up);
    span->second = {std::min(span->second.first, up), std::max(span->second.second, up)};
  };
  for (std::size_t i = 0; i < x.size(); ++i) take(wanted, x[i] * 3 + 40, 500 - 2 * y[i]);
  for (const Line_Point& point : line.points) take(kept, point.x, point.y);
  EXPECT_EQ(kept, wanted);
  EXPECT_LE(line.points.size(), 2 * wanted.size());
  const double beyond[] = {1e300, -1e300};
  Thin_To_Columns(std::span(x).first(2), beyond, {}, line);
  for (const Line_Point& point : line.points)
    EXPECT_LE(std::abs(point.y), 1e6) << "a painter's whole numbers";
}

}  // namespace
}  // namespace kx
