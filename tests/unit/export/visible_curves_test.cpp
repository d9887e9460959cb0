// Lines for cutters: a gap in the lower strand at each crossing and nowhere else.
#include "export/visible_curves.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "curve_maker.h"
#include "unit/export/sample_knots.h"

namespace lorivan {
namespace {

/// Two long ellipses across each other; the first lies over the second on the right, under it on the left.
KnotCurve crossedEllipses() {
  KnotCurve curve;
  for (const int slot : {1, 2})
    addSamples(curve, slot, samplesRound(200, [&](double turn) {
                 const double x = (slot == 1 ? 40 : 10) * std::cos(turn);
                 const double y = (slot == 1 ? 10 : 40) * std::sin(turn);
                 return sampleAt(x, y / 0.8, (slot == 1 ? x : -x) / 40);
               }));
  return curve;
}

double lengthOf(const FlatLine& line) {
  double length = 0;
  for (std::size_t i = 1; i < line.points.size(); ++i)
    length += std::hypot(line.points[i].x - line.points[i - 1].x, line.points[i].y - line.points[i - 1].y);
  return length;
}

double distanceTo(const FlatLine& line, const FlatPoint& p) {
  double nearest = 1e9;
  for (const FlatPoint& q : line.points) nearest = std::min(nearest, std::hypot(q.x - p.x, q.y - p.y));
  return nearest;
}

TEST(VisibleCurves, GapsAreAsWideAsTheBandOnTop) {
  const KnotCurve curve = crossedEllipses();
  const auto whole = wholeCurves(curve);
  ASSERT_EQ(whole.size(), 2U);
  EXPECT_TRUE(whole[0].closed && whole[1].closed);
  for (const FlatLine& line : whole) {
    const auto second = static_cast<std::size_t>(curve.first[line.slot]) + 1;
    EXPECT_EQ(line.points[4].y, 0.8 * static_cast<double>(curve.Y[second]))
        << "no digit of a file changes with single precision";
  }
  const auto lines = visibleCurves(curve, 3);
  ASSERT_EQ(lines.size(), 4U) << "two gaps in each";
  for (const FlatLine& line : lines) {
    EXPECT_FALSE(line.closed);
    const FlatLine& other = whole[line.slot == 1 ? 1 : 0];
    EXPECT_NEAR(distanceTo(other, line.points.front()), 1.5, 0.1);
    EXPECT_NEAR(distanceTo(other, line.points.back()), 1.5, 0.1);
    EXPECT_EQ(line.points.front().x < 0, line.slot == 1) << "the first strand is under on the left";
  }
  double left = 0;
  for (const FlatLine& line : lines) left += lengthOf(line);
  EXPECT_NEAR(2 * lengthOf(whole[0]) - left, 4 * 3, 1.5);
}

TEST(VisibleCurves, LongPiecesChangeNothingElsewhere) {
  const auto lines = visibleCurves(crossedEllipses(), 3);
  KnotCurve curve = crossedEllipses();
  addSamples(curve, 3, {{-300000, 100000, -5}, {300000, 100000, -5}, {0, 300000, -5}});
  const auto more = visibleCurves(curve, 3);
  ASSERT_EQ(more.size(), lines.size() + 1);
  const auto same = [](const FlatPoint& a, const FlatPoint& b) { return a.x == b.x && a.y == b.y; };
  for (std::size_t i = 0; i < lines.size(); ++i)
    EXPECT_TRUE(std::ranges::equal(more[i].points, lines[i].points, same)) << i;
}

/// Whether two pieces truly cross; lines that only touch or run along each other do not.
bool cross(const FlatPoint& a, const FlatPoint& b, const FlatPoint& c, const FlatPoint& d) {
  const auto side = [](const FlatPoint& p, const FlatPoint& q, const FlatPoint& r) {
    return (q.x - p.x) * (r.y - p.y) - (q.y - p.y) * (r.x - p.x);
  };
  return side(a, b, c) * side(a, b, d) < -1e-9 && side(c, d, a) * side(c, d, b) < -1e-9;
}

TEST(VisibleCurves, NoTwoStretchesOfAKnotCross) {
  for (int shape = 0; shape + 1 < kShapeCount; ++shape) {
    SCOPED_TRACE(shape);
    const SampleKnot knot = standardKnot(static_cast<Shape>(shape), 3, 2);
    for (const double band : {1.0, 6.0}) {
      std::vector<std::pair<FlatPoint, FlatPoint>> pieces;
      for (const FlatLine& line : visibleCurves(knot.curve, band))
        for (std::size_t i = 1; i < line.points.size(); ++i)
          pieces.emplace_back(line.points[i - 1], line.points[i]);
      int crossings = 0;
      for (std::size_t i = 0; i < pieces.size(); ++i)
        for (std::size_t j = i + 2; j < pieces.size(); ++j)
          crossings += cross(pieces[i].first, pieces[i].second, pieces[j].first, pieces[j].second) ? 1 : 0;
      EXPECT_EQ(crossings, 0) << "band " << band;
    }
  }
}

}  // namespace
}  // namespace lorivan
