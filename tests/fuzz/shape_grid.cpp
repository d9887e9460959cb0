// A custom shape, its lines and its cells as grids, and their knots. After the settings come records of
// five bytes: what to do, and a place.
#include <algorithm>
#include <vector>

#include "custom/autogrid.h"
#include "custom/outline.h"
#include "custom/planar_grid.h"
#include "known_shape.h"
#include "plane_lines.h"
#include "road.h"

namespace lorivan::fuzz {
namespace {

/// As far as a file may go.
std::int16_t coordinate(Draws& draws) { return std::max<std::int16_t>(draws.number(), -32767); }

/// Draws loops; closes the one that is open where another begins.
class Hand {
 public:
  void record(Draws& draws) {
    const int what = draws.byte();
    const std::int16_t x = coordinate(draws), y = coordinate(draws);
    const int count = std::max(1, shape.ShapePointCount);
    if ((what & 7) == 7 && shape.ShapePointCount > 0) {
      shape.addLine(1 + (x & 0x7FFF) % count, 1 + (y & 0x7FFF) % count);
    } else if ((what & 7) == 6) {
      shape.deletePoint(1 + (x & 0x7FFF) % count);
    } else {
      if ((what & 7) == 5) finish();
      // Mostly on the sheet, seldom anywhere that a file may name.
      const float unit = (what & 0x78) == 0x78 ? 1 : 1 / 64.0F;
      const int point = shape.addPoint(static_cast<float>(x) * unit, static_cast<float>(y) * unit);
      if (first_ == 0) first_ = point;
      if (last_ != 0) shape.addLine(last_, point);
      last_ = point;
    }
  }
  void finish() {
    if (last_ != first_ && last_ != 0) shape.addLine(last_, first_);
    first_ = last_ = 0;
  }
  CustomShape shape;

 private:
  int first_ = 0, last_ = 0;
};

void requirePlane(const KnotGraph& graph) {
  std::vector<Side> sides = sidesOf(graph);
  for (const Side& side : sides) require(!same(side.a, side.b), "every line has a length");
  require(!firstBadMeeting(sides), "lines meet at their ends alone");
}

/// Faces of three or four corners within the outline are convex; others are holes, or lie outside.
void requireCells(const KnotGraph& graph, const Outline& outline) {
  for (const auto& face : facesOf(graph)) {
    if (face.size() > 4) continue;
    const auto [convex, area, middle] = cellOf(face);
    require(convex || area < 0 || !isInside(outline, middle), "cells are convex");
  }
}

}  // namespace

void shapeGrid(Bytes bytes) {
  Draws draws(bytes);
  const Road road = drawRoad(draws);
  AutoGridOptions options{1 + draws.below(draws.below(4) == 0 ? 100 : 30), draws.below(2) == 1};
  const bool smooth = draws.below(4) == 3, within = draws.below(8) == 7;
  Hand hand;
  while (!draws.empty() && hand.shape.ShapePointCount < 120) hand.record(draws);
  hand.finish();
  hand.shape.smooth = smooth;
  requireStored(hand.shape);
  const GridView view(road.trace.stretch);
  if (within && hand.shape.ShapePointCount > 0)
    options.within = Spot{hand.shape.ShapeX[1] + 5.0, hand.shape.ShapeY[1] + 5.0};
  KnotGraph lines;
  if (makeGridFromShape(lines, hand.shape, view)) {
    requirePlane(lines);
    followRoad(lines, road, false);
  }
  KnotGraph cells;
  const auto made = AutoGrid(cells, hand.shape, view, options);
  if (!made) return require(made.error().kind != ErrorKind::input, "an outline without cells is told so");
  require(made->filled > 0 && made->filled < 1.2, "a part of the outline is filled");
  requirePlane(cells);
  const auto outline = Outline::of(hand.shape, ShapeMapping(hand.shape, view), options.within);
  require(static_cast<bool>(outline), "what is filled has an outline");
  requireCells(cells, *outline);
  followRoad(cells, road, true);
}

}  // namespace lorivan::fuzz
