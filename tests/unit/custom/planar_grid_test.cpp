// Shape to graph and back, line by line.
#include "custom/planar_grid.h"

#include <string>

#include "base/random.h"
#include "graph/standard_grids.h"
#include "shapes.h"

namespace lorivan {
namespace {

CustomShape drawn(const std::vector<Spot>& points, const std::vector<std::pair<int, int>>& lines) {
  CustomShape shape;
  for (const Spot& p : points) shape.addPoint(static_cast<float>(p.x), static_cast<float>(p.y));
  for (const auto& [a, b] : lines) shape.addLine(a, b);
  return shape;
}

TEST(NewGrid, JoinsAndSplitsWhatWasDrawn) {
  const std::tuple<const char*, CustomShape, int> cases[] = {
      {"crossing lines", drawn({{100, 200}, {300, 200}, {200, 100}, {200, 300}}, {{1, 2}, {3, 4}}), 4},
      {"an end on a line", drawn({{100, 200}, {300, 200}, {200, 203}, {200, 300}}, {{1, 2}, {3, 4}}), 3},
      {"ends that nearly meet", drawn({{100, 100}, {200, 200}, {202, 202}, {300, 100}}, {{1, 2}, {3, 4}}), 2},
      {"ends that do not meet", drawn({{100, 100}, {200, 200}, {210, 200}, {300, 100}}, {{1, 2}, {3, 4}}), 2},
      {"the same line twice", drawn({{100, 100}, {200, 200}}, {{1, 2}, {2, 1}}), 1},
      {"a line along another", drawn({{100, 100}, {300, 100}, {200, 100}}, {{1, 2}, {1, 3}}), 2},
      {"three lines through one spot",
       drawn({{100, 200}, {300, 200}, {200, 100}, {200, 300}, {101, 100}, {300, 300}},
             {{1, 2}, {3, 4}, {5, 6}}),
       6},
  };
  for (const auto& [what, shape, lines] : cases) {
    SCOPED_TRACE(what);
    KnotGraph graph;
    ASSERT_TRUE(makeGridFromShape(graph, shape, GridView()));
    EXPECT_EQ(graph.LastLine + 1, lines);
    expectPlane(graph);
    expectKnot(graph);
  }
  KnotGraph graph;
  EXPECT_FALSE(makeGridFromShape(graph, drawn({{100, 100}}, {}), GridView()));
  EXPECT_TRUE(graph.NoGrid) << "a refused shape leaves the graph alone";
}

TEST(NewGrid, IsPlaneWhateverIsScribbled) {
  for (std::uint64_t seed = 1; seed <= 60; ++seed) {
    SCOPED_TRACE(seed);
    const Rnd random = seededRandom(seed);
    CustomShape shape;
    const int points = 5 + static_cast<int>(60 * random());
    for (int k = 0; k < points; ++k)
      shape.addPoint(static_cast<float>(45 + 395 * random()), static_cast<float>(45 + 295 * random()));
    for (int k = 0; k < points; ++k)
      shape.addLine(1 + static_cast<int>(points * random()), 1 + static_cast<int>(points * random()));
    KnotGraph graph;
    const Status made = makeGridFromShape(graph, shape, GridView(stretchFactor(seed % 3 == 0 ? 3.F : 1.F)));
    ASSERT_TRUE(made) << made.error().message;
    expectPlane(graph);
    if (HasFatalFailure()) return;
  }
}

TEST(NewGrid, RefusesMoreLinesThanTheTableHolds) {
  CustomShape shape;
  for (int k = 0; k < 60; ++k) {
    const float x = 45 + 6.5F * static_cast<float>(k), y = 45 + 4.9F * static_cast<float>(k);
    shape.addLine(shape.addPoint(x, 45), shape.addPoint(x, 340));
    shape.addLine(shape.addPoint(45, y), shape.addPoint(440, y));
  }
  KnotGraph graph;
  EXPECT_EQ(makeGridFromShape(graph, shape, GridView()).error().kind, ErrorKind::limit);
  EXPECT_EQ(graph.LastLine, -1);
}

TEST(MakeFromStandard, GoesThereAndBack) {
  for (int index = 0; index < kShapeCount - 1; ++index) {
    SCOPED_TRACE(shapeTable()[index].name);
    KnotGraph graph, again;
    ASSERT_TRUE(buildStandardGrid(graph, {.shape = static_cast<Shape>(index), .XNo = 3, .YNo = 3}));
    GridView view;
    view.zoomToShow(lineBox(graph), 2);
    const auto shape = makeShapeFromGrid(graph, view);
    ASSERT_TRUE(shape);
    std::set<std::pair<float, float>> places;
    for (std::size_t p = 1; p <= static_cast<std::size_t>(shape->ShapePointCount); ++p)
      EXPECT_TRUE(places.insert({shape->ShapeX[p], shape->ShapeY[p]}).second) << "a point twice";
    ASSERT_TRUE(makeGridFromShape(again, *shape, view));
    const auto lineSet = [](const KnotGraph& g) {
      using Ends = std::set<std::pair<double, double>>;
      std::set<Ends> all;
      for (const Side& s : sidesOf(g)) all.insert(Ends{std::pair(s.a.x, s.a.y), std::pair(s.b.x, s.b.y)});
      return all;
    };
    EXPECT_EQ(lineSet(again), lineSet(graph));
  }
}

}  // namespace
}  // namespace lorivan
