// Strands: every line crossed twice, over and under in turn, whatever the graph.
#include "strands/tracing.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <map>

#include "knot_maker.h"
#include "tries.h"

namespace lorivan {
namespace {

void expectAlternating(const StrandStore& store) {
  for (int slot = 1; slot < kStrandSlots; ++slot) {
    const int count = store.ThreadCount[slot];
    ASSERT_EQ(count % 2, 0);
    for (int n = 0; n < count; n += 2) {
      EXPECT_EQ(store.point(slot, n).z, 0);
      const float here = store.point(slot, n + 1).z, next = store.point(slot, (n + 3) % count).z;
      EXPECT_EQ(here, -next) << "slot " << slot << ", point " << n + 1;
    }
    if (count == 0) continue;
    EXPECT_EQ(store.point(slot, count).x, store.point(slot, 0).x);
    EXPECT_EQ(store.point(slot, count).y, store.point(slot, 0).y);
  }
}

TEST(Tracing, EveryShapeOfEverySizeIsAnAlternatingKnot) {
  for (int s = 0; s < kShapeCount - 1; ++s)
    for (int x = 1; x <= 20; ++x)
      for (const int y : {1, 2, 5, 12, 20})
        for (const float scale : {6.F, 30.F}) {
          if (isLeftOut(s + x + y)) continue;
          const int offset = (3 * x + y) % 15 - 7;
          const MadeKnot knot = makeKnot(fieldsOf(static_cast<Shape>(s), x, y, scale, offset));
          ASSERT_EQ(knot.error, "") << s << ' ' << x << ' ' << y << ' ' << scale << ' ' << offset;
          EXPECT_EQ(wronglyPassed(*knot.graph), 0) << s << ' ' << x << ' ' << y << ' ' << offset;
          expectAlternating(*knot.store);
        }
}

TEST(Tracing, SlotsFollowTheStartColour) {
  for (const auto& [start, first] : {std::pair{12, 12}, {-3, 3}, {0, 1}, {15, 15}}) {
    const MadeKnot knot = makeKnot(fieldsOf(Shape::SquareSquare, 1, 1), {.startColour = start});
    for (int slot = 0; slot < kStrandSlots; ++slot)
      EXPECT_EQ(knot.store->ThreadCount[slot] > 0, slot == first || slot == first + 1)
          << start << ' ' << slot;
  }
}

TEST(Tracing, FromTheThirtyNinthStrandOnOneSlotIsShared) {
  KnotGraph graph;
  for (int i = 0; i < 45; ++i) {  // 45 separate triangles, one strand each
    const auto x = static_cast<float>(i * 10);
    MakeKE(graph, kOrdinary, x, 0, x + 8, 0);
    MakeKE(graph, kOrdinary, x + 8, 0, x + 4, 8);
    MakeKE(graph, kOrdinary, x + 4, 8, x, 0);
  }
  ASSERT_TRUE(finishLines(graph));
  ASSERT_TRUE(collectPoints(graph));
  ASSERT_TRUE(CalcGrid(graph));
  StrandStore store;
  ASSERT_TRUE(traceStrands(graph, {.startColour = 15}, store));
  EXPECT_TRUE(countKnot(graph, store).strands == kMostStrands && store.lost == 45 - kMostStrands);
  EXPECT_EQ(store.ThreadCount[14], 0) << "slots 15 to 40, then 1 to 13";
  EXPECT_GT(store.ThreadCount[13], 0);
  EXPECT_LT(store.point(13, 1).x, -440) << "the last strand took the last slot";
}

TEST(Tracing, MirrorExchangesOverAndUnder) {
  const MadeKnot a = makeKnot(fieldsOf(Shape::Spiral, 4, 3)),
                 b = makeKnot(fieldsOf(Shape::Spiral, 4, 3), {.mirror = true});
  for (int slot = 1; slot < kStrandSlots; ++slot) {
    const auto first = a.store->closed(slot), second = b.store->closed(slot);
    ASSERT_EQ(first.size(), second.size());
    for (std::size_t n = 0; n < first.size(); ++n)
      EXPECT_TRUE(first[n].x == second[n].x && first[n].z == -second[n].z);
  }
}

TEST(Tracing, ControlPointsStayWhereTheyAre) {
  // A weighted sum of all control points of knots whose strands start over and under; any moved point shows.
  const std::pair<Shape, double> cases[] = {
      {Shape::SquareSquare, -39.885}, {Shape::Hexagonal, -1981.317}, {Shape::Spiral, -1403.412}};
  for (const auto& [shape, expected] : cases) {
    const MadeKnot knot = makeKnot(fieldsOf(shape, 5, 4));
    double sum = 0;
    for (int slot = 1; slot < kStrandSlots; ++slot)
      for (const StrandPoint& p : knot.store->closed(slot)) sum = 0.999 * sum + p.x + 1.7 * p.y;
    EXPECT_NEAR(sum, expected, 0.05) << static_cast<int>(shape);
  }
}

TEST(Tracing, NeighboursThatAreNoPointsEndInTheMessage) {
  MadeKnot knot = makeKnot(fieldsOf(Shape::SquareSquare, 2, 2));
  ASSERT_TRUE(collectPoints(*knot.graph));
  knot.graph->LastPoint = 6;
  ASSERT_TRUE(CalcGrid(*knot.graph));
  const auto traced = traceStrands(*knot.graph, knot.settings, *knot.store);
  EXPECT_TRUE(!traced && traced.error().kind == ErrorKind::knot && knot.graph->KnotError);
  EXPECT_FALSE(traceStrands(*knot.graph, knot.settings, *knot.store)) << "the flag keeps later traces off";
}

/// Crossings, told by their places, that are not one strand over and one under. Places that several lines
/// share, and those of lines that strands do not cross, are left out.
int wronglyCrossed(const MadeKnot& knot) {
  using Place = std::pair<float, float>;
  std::map<Place, int> lines, over, under;
  for (int slot = 1; slot < kStrandSlots; ++slot) {
    const auto points = knot.store->closed(slot);
    for (std::size_t n = 1; n < points.size(); n += 2)
      ++(points[n].z > 0 ? over : under)[{points[n].x, points[n].y}];
  }
  for (int j = 0; j <= knot.graph->LastLine; ++j) {
    const GridLine& l = knot.graph->Lines[j];
    const float x = static_cast<float>(l.X1 + l.X2) / 2, y = static_cast<float>(l.Y1 + l.Y2) / 2;
    lines[{-x, y / knot.settings.stretch}] += l.Kind == kOrdinary || l.Kind == kReversed ? 1 : 100;
  }
  int wrong = 0;
  for (const auto& [place, count] : lines) wrong += count == 1 && (over[place] != 1 || under[place] != 1);
  return wrong;
}

TEST(Tracing, ReversedLinesLoseNoStrandAndRepeatNone) {
  const Rnd random = seededRandom(7);
  const auto below = [&](int span) { return static_cast<int>(random() * span); };
  int compared = 0;
  for (int i = 0; i < tries(1200); ++i) {
    MadeKnot knot;
    knot.fields = fieldsOf(static_cast<Shape>(i % (kShapeCount - 1)), 2 + below(6), 2 + below(6));
    ASSERT_TRUE(buildStandardGrid(*knot.graph, knot.fields));
    // The first lines are those that strands start on.
    for (int edits = i % 3 == 0 ? 1 : 1 + below(8); edits > 0; --edits)
      knot.graph->Lines[below(below(2) == 0 ? 3 : knot.graph->LastLine + 1)].Kind =
          edits == 1 ? kReversed : static_cast<std::int16_t>(below(4));
    knot.trace();
    if (!knot.error.empty()) continue;
    EXPECT_EQ(wronglyPassed(*knot.graph), 0) << i;
    if (countKnot(*knot.graph, *knot.store).strands >= kMostStrands) continue;
    EXPECT_EQ(wronglyCrossed(knot), 0) << i;
    ++compared;
  }
  EXPECT_GT(compared, tries(1000));
}

}  // namespace
}  // namespace lorivan
