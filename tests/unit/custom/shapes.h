// Shapes for tests, and what every plane knot graph has to be.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <map>
#include <set>
#include <utility>
#include <vector>

#include "base/numbers.h"
#include "custom/custom_shape.h"
#include "custom/geometry.h"
#include "graph/graph.h"
#include "plane_lines.h"
#include "strands/tracing.h"

namespace lorivan {

inline void addLoop(CustomShape& shape, const std::vector<Spot>& loop) {
  const int first = shape.ShapePointCount + 1;
  for (const Spot& p : loop) shape.addPoint(static_cast<float>(p.x), static_cast<float>(p.y));
  for (int k = 0; k < static_cast<int>(loop.size()); ++k)
    shape.addLine(first + k, first + (k + 1) % static_cast<int>(loop.size()));
}

inline CustomShape shapeOf(const std::vector<std::vector<Spot>>& loops) {
  CustomShape shape;
  for (const auto& loop : loops) addLoop(shape, loop);
  return shape;
}

inline std::vector<Spot> box(double left, double top, double right, double bottom) {
  return {{left, top}, {right, top}, {right, bottom}, {left, bottom}};
}

/// A loop round the sheet's middle, clockwise from above it, with the radius that each angle has.
template <class RadiusAt>
std::vector<Spot> roundLoop(int count, RadiusAt radiusAt) {
  std::vector<Spot> loop;
  for (int i = 0; i < count; ++i) {
    const double angle = kTwoPi * i / count, r = radiusAt(angle);
    loop.push_back({250 + r * std::sin(angle), 200 - r * std::cos(angle)});
  }
  return loop;
}

/// Every second point is an inner one.
inline std::vector<Spot> starLoop(int count, double inner, double outer) {
  return roundLoop(count, [=, i = 0](double) mutable { return i++ % 2 != 0 ? inner : outer; });
}

inline void expectPlane(const KnotGraph& graph) {
  std::vector<Side> sides = sidesOf(graph);
  for (const Side& side : sides) EXPECT_FALSE(same(side.a, side.b)) << "a line without length";
  const auto bad = firstBadMeeting(sides);
  ASSERT_FALSE(bad) << "near " << sides[bad->first].a.x << ',' << sides[bad->first].a.y;
}

/// Orders the neighbours, traces the strands and expects two passes over every line.
inline void expectKnot(KnotGraph& graph) {
  ASSERT_FALSE(graph.NoGrid);
  ASSERT_EQ(graph.CellSize, 20);
  ASSERT_TRUE(collectPoints(graph));
  ASSERT_TRUE(CalcGrid(graph)) << "more than 13 lines at a point";
  StrandStore store;
  ASSERT_TRUE(traceStrands(graph, {}, store));
  for (int j = 0; j <= graph.LastLine; ++j) ASSERT_EQ(graph.Lines[j].Passes, 2) << "line " << j;
}

}  // namespace lorivan
