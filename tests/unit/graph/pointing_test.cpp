// Which lines a stroke passes, and that the keyboard reaches every one.
#include "graph/pointing.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

#include "graph/standard_grids.h"

namespace lorivan {
namespace {

TEST(LinesPassed, MiddlesAreStruckAndPointsAreNot) {
  KnotGraph graph;
  ASSERT_TRUE(buildStandardGrid(graph, {Shape::SquareSquare, 4, 4, 30, 1, 0}));
  const auto struck = [&](GridPlace from, GridPlace to) { return linesPassed(graph, from, to).size(); };
  EXPECT_EQ(struck({-45, -45}, {45, -45}), 3U) << "through the middles of cells";
  EXPECT_EQ(struck({-60, 0}, {60, 0}), 4U) << "along a row of lines, though across the ends of others";
  EXPECT_EQ(struck({-52, -8}, {-38, -8}), 0U) << "within a cell";
  EXPECT_EQ(struck({-30, -30}, {-30, -30}), 0U) << "on a point";
  const int line = linesPassed(graph, {-40, -45}, {-20, -45}).front();
  graph.Lines[line].Kind = kNoLine;
  EXPECT_EQ(struck({-40, -45}, {-20, -45}), 0U) << "it is not there";
}

TEST(LineWalk, ArrowsReachEveryLineAndStepBack) {
  for (int s = 0; s < kShapeCount - 1; ++s) {
    KnotGraph graph;
    ASSERT_TRUE(buildStandardGrid(graph, {static_cast<Shape>(s), 5, 4, 15, 1, 0}));
    std::set<int> reached = {nearestLine(graph, {0, 0})};
    std::vector<int> open(reached.begin(), reached.end());
    while (!open.empty()) {
      const int from = open.back();
      open.pop_back();
      for (const auto& [dx, dy] : {std::pair{1, 0}, {-1, 0}, {0, 1}, {0, -1}}) {
        LineWalk walk;
        walk.start(from);
        // Along the whole lane, as a user holds the key down.
        while (walk.step(graph, dx, dy) && reached.insert(walk.line()).second) open.push_back(walk.line());
      }
    }
    // Lines in one place, as where a spiral's ends meet, are one to the eye.
    std::set<std::pair<int, int>> places, seen;
    for (int j = 0; j <= graph.LastLine; ++j) {
      const GridLine& line = graph.Lines[j];
      places.insert({line.MidX, line.MidY});
      if (reached.contains(j)) seen.insert({line.MidX, line.MidY});
    }
    EXPECT_EQ(seen.size(), places.size()) << shapeTable()[s].name;
  }
  KnotGraph graph;
  ASSERT_TRUE(buildStandardGrid(graph, {Shape::SquareSquare, 6, 4, 20, 1, 0}));
  LineWalk walk;
  walk.start(nearestLine(graph, {-50, 0}));
  std::vector<int> way = {walk.line()};
  while (walk.step(graph, 1, 0)) way.push_back(walk.line());
  EXPECT_GT(way.size(), 6U);
  for (auto at = way.rbegin() + 1; at != way.rend(); ++at) {
    ASSERT_TRUE(walk.step(graph, -1, 0));
    EXPECT_EQ(walk.line(), *at);
  }
}

}  // namespace
}  // namespace lorivan
