#include "workspace/surface_projection.h"

#include <gmock/gmock.h>

#include <cmath>
#include <set>

#include "workspace/value_scale.h"

namespace kx {
namespace {

using testing::ElementsAre;
using testing::SizeIs;

constexpr double width = 800;
constexpr double height = 600;

Projection Seen(const Surface_View& view) { return {view, 0, 0, width, height}; }

TEST(Surface_Projection, Shows_What_Is_Near_Larger_And_What_Is_Up_Higher) {
  const Projection front = Seen({0, 20, 1});
  const auto size_at = [&front](double along) {
    return front.Of({1, along, 0}).x - front.Of({-1, along, 0}).x;
  };
  EXPECT_GT(size_at(-1), size_at(1) * 1.2) << "along -1 is the near side";
  EXPECT_NEAR(front.Of({0, 0, 0}).x, width / 2, 1e-9);
  EXPECT_LT(front.Of({0, 0, 0.5}).y, front.Of({0, 0, 0}).y);
  EXPECT_LT(front.Of({0, 1, 0}).y, front.Of({0, -1, 0}).y) << "from above, the far side lies higher";
  const Projection turned = Seen({90, 20, 1});
  EXPECT_GT(turned.Of({0, -1, 0}).x, width / 2 + 100) << "a growing rotation brings the front to the right";
  const Projection above = Seen({0, 90, 1});
  EXPECT_NEAR(above.Of({0, 0, 0.5}).y, above.Of({0, 0, -0.5}).y, 1e-9);
}

TEST(Surface_Projection, Keeps_The_Box_Inside_And_Fills_The_Rectangle_At_Any_View) {
  for (int elevation = 0; elevation <= 90; elevation += 10) {
    double left = 1e9, right = -1e9, top = 1e9, bottom = -1e9;
    for (int rotation = 0; rotation < 360; rotation += 3) {
      const Projection projection = Seen({double(rotation), double(elevation), 1});
      for (int corner = 0; corner < 8; ++corner) {
        const Screen_Point at = projection.Of(
            {corner & 1 ? 1.0 : -1.0, corner & 2 ? 1.0 : -1.0, corner & 4 ? box_height : -box_height});
        left = std::min(left, at.x), right = std::max(right, at.x);
        top = std::min(top, at.y), bottom = std::max(bottom, at.y);
      }
    }
    EXPECT_GE(left, -0.5) << elevation;
    EXPECT_LE(right, width + 0.5) << elevation;
    EXPECT_GE(top, -0.5) << elevation;
    EXPECT_LE(bottom, height + 0.5) << elevation;
    EXPECT_TRUE(right - left > 0.97 * width || bottom - top > 0.97 * height) << elevation;
  }
}

TEST(Surface_Projection, Limits_Of_The_View) {
  const Surface_View view = Inside_Limits({-10, 200, 100});
  EXPECT_EQ(view.rotation, 350);
  EXPECT_EQ(view.elevation, 90);
  EXPECT_EQ(view.zoom, greatest_zoom);
  EXPECT_EQ(Turned({358, 0, 1}, turn_step).rotation, 3);
  EXPECT_EQ(Inside_Limits({0, -3, 0}).elevation, 0);
}

TEST(Surface_Projection, Cells_Go_From_Far_To_Near) {
  EXPECT_THAT(Far_To_Near(4, -5), ElementsAre(3, 2, 1, 0));
  EXPECT_THAT(Far_To_Near(4, 5), ElementsAre(0, 1, 2, 3));
  EXPECT_THAT(Far_To_Near(4, 0.1), ElementsAre(0, 3, 1, 2)) << "the eye above the surface";
  EXPECT_THAT(Far_To_Near(0, 1), SizeIs(0));
}

/// A ridge across the middle: the point behind it is hidden, the ridge in front of it is what the user sees.
TEST(Surface_Projection, The_Mouse_Finds_The_Foremost_Point) {
  std::vector<double> values;
  for (int across = 0; across < 5; ++across) {
    for (int along = 0; along < 5; ++along) values.push_back(along == 2 ? 10 : 0);
  }
  const Projection projection = Seen({0, 5, 1});
  const Surface_Shape shape = Shape_Of(values, 5, 5, {0, 10, 2}, projection);
  ASSERT_THAT(shape.points, SizeIs(25));
  ASSERT_THAT(shape.cells, SizeIs(16));
  EXPECT_EQ(std::set<Surface_Shape::Cell>(shape.cells.begin(), shape.cells.end()).size(), 16U);
  const std::size_t hidden = 2 * 5 + 3;
  const std::size_t found = Point_Under(shape, shape.points[hidden], 30);
  EXPECT_TRUE(found % 5 == 2 || found % 5 == 1) << found;
  const Screen_Point ridge = shape.points[12];
  EXPECT_EQ(Point_Under(shape, {ridge.x + 2, ridge.y + 3}, 30), 12U);
  EXPECT_EQ(Point_Under(shape, {ridge.x + 2, ridge.y - 9}, 30), 12U) << "beside the surface, within reach";
  EXPECT_EQ(Point_Under(shape, {2, 2}, 30), shape.points.size());
}

TEST(Surface_Projection, A_Table_With_One_Entry_Has_Points_And_No_Cells) {
  const Surface_Shape shape = Shape_Of({1, 2, 3}, 1, 3, {0, 4, 1}, Seen({}));
  EXPECT_THAT(shape.points, SizeIs(3));
  EXPECT_THAT(shape.cells, SizeIs(0));
  EXPECT_EQ(Point_Under(shape, shape.points[1], 5), 1U);
  EXPECT_EQ(Axis_Place(0, 1), 0);
}

TEST(Value_Scale, Has_Round_Marks_Around_The_Values) {
  const Value_Scale fuel = Scale_Around({-3.1, 0, 12.6});
  EXPECT_THAT(fuel.Marks(), ElementsAre(-5, 0, 5, 10, 15));
  EXPECT_EQ(fuel.Share(5), 0.5);
  const Value_Scale flat = Scale_Around({7, 7, 7});
  EXPECT_LT(flat.low, flat.high);
  EXPECT_LE(flat.low, 7);
  EXPECT_GE(flat.high, 7);
  EXPECT_THAT(Scale_Around({}).Marks(), ElementsAre(0, 1));
  EXPECT_NEAR(Scale_Around({0.001, 0.0013}).step, 0.00005, 1e-12);
}

}  // namespace
}  // namespace kx
