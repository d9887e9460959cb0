// Curves through the points of a shape.
#include "custom/smooth_lines.h"

#include "custom/autogrid.h"
#include "custom/planar_grid.h"
#include "custom/shape_file.h"
#include "shapes.h"

namespace lorivan {
namespace {

CustomShape smoothed(std::vector<Spot> loop) {
  CustomShape shape = shapeOf({std::move(loop)});
  shape.smooth = true;
  return shape;
}

std::vector<Spot> polygon(int corners, double radius) { return starLoop(corners, radius, radius); }

TEST(SmoothLines, PointsOfACircleGiveTheCircle) {
  for (const int corners : {5, 6, 12}) {
    const ShapeLines drawn(smoothed(polygon(corners, 120)));
    EXPECT_GT(drawn.lines.size(), 30U);
    for (const Spot p : drawn.spots) EXPECT_NEAR(distance(p, {250, 200}), 120, 0.3) << corners;
    for (const auto& [a, b] : drawn.lines) EXPECT_GE(distance(drawn.spots[a], drawn.spots[b]), 5);
  }
  // Points at uneven distances, too: a quarter with one, the rest with eight.
  std::vector<Spot> uneven = polygon(12, 120);
  uneven.erase(uneven.begin() + 3, uneven.begin() + 4);
  for (const Spot p : ShapeLines(smoothed(uneven)).spots) EXPECT_NEAR(distance(p, {250, 200}), 120, 0.5);
}

TEST(SmoothLines, CornersJunctionsAndEndsStay) {
  EXPECT_EQ(ShapeLines(smoothed(box(100, 100, 300, 300))).lines.size(), 4U) << "a square stays one";
  CustomShape arch = smoothed({{100, 300}, {100, 150}, {200, 100}, {300, 150}, {300, 300}});
  const ShapeLines drawn(arch);
  EXPECT_GT(drawn.lines.size(), 20U);
  for (const auto& [a, b] : drawn.lines) {  // the level side between the two corners
    const Spot p = drawn.spots[a], q = drawn.spots[b];
    EXPECT_FALSE(p.y > 301 || q.y > 301);
  }
  const int tail = arch.addPoint(200, 50);
  arch.addLine(3, tail);  // three lines at the top: a corner now
  EXPECT_EQ(std::ranges::count(ShapeLines(arch).lines, NodePair{2, tail - 1}), 1) << "its tail is straight";
  arch.smooth = false;
  EXPECT_EQ(ShapeLines(arch).lines.size(), 6U);
}

/// By how much the drawn lines turn at the first point.
double turnAtFirst(const CustomShape& shape) {
  const ShapeLines drawn(shape);
  std::vector<Spot> ways;
  for (const auto& [a, b] : drawn.lines)
    if (a == 0 || b == 0) ways.push_back(drawn.spots[a + b] - drawn.spots[0]);
  return ways.size() == 2 ? degreesBetween(-1 * ways[0], ways[1]) : -1;
}

TEST(SmoothLines, ATipThatStandsOutStays) {
  // It turns by 67 degrees, the points beside it by 20, or by 34, which makes it a bend like theirs.
  const Spot tip{250, 330}, left{130, 250.6}, right{370, 250.6};
  EXPECT_GT(turnAtFirst(smoothed({tip, right, {429.5, 170.2}, {70.5, 170.2}, left})), 40);
  EXPECT_LT(turnAtFirst(smoothed({tip, right, {408.3, 158.2}, {91.7, 158.2}, left})), 20);
}

TEST(SmoothLines, GridsFollowThemAndFilesKeepThem) {
  CustomShape shape = smoothed(polygon(6, 120));
  KnotGraph round, cornered;
  ASSERT_TRUE(AutoGrid(round, shape, GridView(), {12, false}));
  const auto kept = readShapeText(writeShapeText(shape));
  ASSERT_TRUE(kept);
  EXPECT_TRUE(*kept == shape);
  ASSERT_TRUE(makeGridFromShape(cornered, shape, GridView()));
  EXPECT_EQ(cornered.LastLine + 1, 12) << "pieces that strands have room to cross";
  shape.smooth = false;
  EXPECT_EQ(writeShapeText(shape) + "smooth\r\n", writeShapeText(*kept));
  ASSERT_TRUE(makeGridFromShape(cornered, shape, GridView()));
  EXPECT_EQ(cornered.LastLine + 1, 6);
  // A circle is wider than the hexagon on one of its corners.
  const GridBox lines = lineBox(round), hexagon = lineBox(cornered);
  EXPECT_GT(lines.right - lines.left, 1.1 * (hexagon.right - hexagon.left));
}

}  // namespace
}  // namespace lorivan
