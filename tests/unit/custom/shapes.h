// Shapes for tests, and what every plane knot graph has to be.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <map>
#include <set>
#include <utility>
#include <vector>

#include "custom/custom_shape.h"
#include "custom/geometry.h"
#include "graph/graph.h"
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

struct Side {
  Spot a, b;
};

inline std::vector<Side> sidesOf(const KnotGraph& graph) {
  std::vector<Side> sides;
  for (int j = 0; j <= graph.LastLine; ++j) {
    const GridLine& l = graph.Lines[static_cast<std::size_t>(j)];
    if (l.Kind != kNoLine) sides.push_back({{1.0 * l.X1, 1.0 * l.Y1}, {1.0 * l.X2, 1.0 * l.Y2}});
  }
  return sides;
}

inline bool same(Spot a, Spot b) { return a.x == b.x && a.y == b.y; }

/// Whether two different lines meet anywhere but at a common end. Coordinates are whole, so this is exact.
inline bool meetBadly(const Side& s, const Side& t) {
  const auto onSide = [](Spot p, const Side& side) {
    return !same(p, side.a) && !same(p, side.b) && cross(side.b - side.a, p - side.a) == 0 &&
           dot(p - side.a, p - side.b) < 0;
  };
  if (onSide(t.a, s) || onSide(t.b, s) || onSide(s.a, t) || onSide(s.b, t)) return true;
  if ((same(s.a, t.a) && same(s.b, t.b)) || (same(s.a, t.b) && same(s.b, t.a))) return true;
  const double p = cross(s.b - s.a, t.a - s.a), q = cross(s.b - s.a, t.b - s.a);
  const double u = cross(t.b - t.a, s.a - t.a), v = cross(t.b - t.a, s.b - t.a);
  return p * q < 0 && u * v < 0;
}

inline void expectPlane(const KnotGraph& graph) {
  std::vector<Side> sides = sidesOf(graph);
  std::sort(sides.begin(), sides.end(),
            [](const Side& s, const Side& t) { return std::min(s.a.x, s.b.x) < std::min(t.a.x, t.b.x); });
  for (std::size_t i = 0; i < sides.size(); ++i) {
    EXPECT_FALSE(same(sides[i].a, sides[i].b)) << "a line without length";
    for (std::size_t j = i + 1; j < sides.size(); ++j) {
      if (std::min(sides[j].a.x, sides[j].b.x) > std::max(sides[i].a.x, sides[i].b.x)) break;
      ASSERT_FALSE(meetBadly(sides[i], sides[j])) << "near " << sides[i].a.x << ',' << sides[i].a.y;
    }
  }
}

/// Orders the neighbours, traces the strands and expects two passes over every line.
inline void expectKnot(KnotGraph& graph) {
  ASSERT_FALSE(graph.NoGrid);
  ASSERT_EQ(graph.CellSize, 20);
  ASSERT_TRUE(collectPoints(graph));
  ASSERT_TRUE(CalcGrid(graph)) << "more than 13 lines at a point";
  StrandStore store;
  ASSERT_TRUE(traceStrands(graph, {}, store));
  for (int j = 0; j <= graph.LastLine; ++j)
    ASSERT_EQ(graph.Lines[static_cast<std::size_t>(j)].Passes, 2) << "line " << j;
}

/// The faces of a plane graph whose neighbours are not ordered yet, as loops of corners; faces within run
/// counter-clockwise.
inline std::vector<std::vector<Spot>> facesOf(const KnotGraph& graph) {
  using Key = std::pair<double, double>;
  std::map<Key, std::vector<Spot>> around;
  for (const Side& s : sidesOf(graph)) {
    around[{s.a.x, s.a.y}].push_back(s.b);
    around[{s.b.x, s.b.y}].push_back(s.a);
  }
  std::set<std::pair<Key, Key>> walked;
  std::vector<std::vector<Spot>> faces;
  for (const auto& [key, ends] : around)
    for (const Spot& end : ends) {
      Spot from{key.first, key.second}, to = end;
      std::vector<Spot> face;
      while (walked.insert({{from.x, from.y}, {to.x, to.y}}).second) {
        face.push_back(from);
        Spot next = from;
        double least = 10;
        for (const Spot& candidate : around[{to.x, to.y}]) {
          const Spot back = from - to, out = candidate - to;
          double turn = std::atan2(cross(out, back), dot(out, back));  // clockwise from the way back
          if (turn <= 0) turn += 6.283185307179586;
          if (turn < least) least = turn, next = candidate;
        }
        from = std::exchange(to, next);
      }
      if (!face.empty()) faces.push_back(face);
    }
  return faces;
}

}  // namespace lorivan
