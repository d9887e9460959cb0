// Counting strands without tracing, and walls for a wanted number, held against the tracer.
#include "graph/strand_solver.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

#include "graph/strand_runs.h"
#include "tests/knot_maker.h"

namespace lorivan {
namespace {

GridFields randomFields(const Rnd& random, int most) {
  const auto draw = [&](int from, int to) { return from + static_cast<int>(random() * (to - from + 1)); };
  return fieldsOf(static_cast<Shape>(draw(0, kShapeCount - 2)), draw(1, most), draw(1, most), 30, draw(0, 1));
}

void change(KnotGraph& graph, const std::vector<int>& lines) {
  for (const int j : lines) {
    std::int16_t& kind = graph.Lines[static_cast<std::size_t>(j)].Kind;
    kind = kind == kWall ? kOrdinary : kWall;
  }
}

int tracedStrands(MadeKnot& knot) {
  EXPECT_TRUE(collectPoints(*knot.graph));
  knot.trace();
  EXPECT_EQ(knot.error, "");
  return countKnot(*knot.graph, *knot.store).strands;
}

TEST(StrandRuns, CountAsTheTracerDoes) {
  const Rnd random = seededRandom(5);
  for (int i = 0; i < 150; ++i) {
    const GridFields fields = randomFields(random, 9);
    MadeKnot knot = makeKnot(fields, {}, &random);
    if (!knot.error.empty()) continue;
    const StrandRuns runs(*knot.graph);
    const auto counts = runs.count(runs.walls());
    EXPECT_EQ(std::min(counts.strands, kMostStrands), countKnot(*knot.graph, *knot.store).strands)
        << static_cast<int>(fields.shape) << ' ' << fields.XNo << ' ' << fields.YNo;
    EXPECT_EQ(2 * counts.longest, *std::ranges::max_element(knot.store->ThreadCount));
  }
}

TEST(StrandRuns, KnowWhatOneLineChanges) {
  const MadeKnot knot = makeKnot(fieldsOf(Shape::SquareSquare, 4, 6));
  const StrandRuns runs(*knot.graph);
  const Walls walls = runs.walls();
  const auto tour = runs.tour(walls);
  const int before = runs.count(walls).strands;
  for (int j = 0; j < runs.lineCount(); ++j) {
    Walls changed = walls;
    changed[static_cast<std::size_t>(j)] = true;
    const auto counts = runs.count(changed);
    const auto change = StrandRuns::changeAt(tour.passages[static_cast<std::size_t>(j)]);
    const int step = change == StrandRuns::Change::join ? -1 : change == StrandRuns::Change::split ? 1 : 0;
    EXPECT_EQ(counts.strands + counts.wallLoops, before + step) << j;
  }
}

TEST(StrandSolver, ReachesTheNumberThatItPromises) {
  const Rnd random = seededRandom(11);
  for (int i = 0; i < 30; ++i) {
    const GridFields fields = randomFields(random, 7);
    MadeKnot knot = makeKnot(fields, {}, &random);
    if (!knot.error.empty()) continue;
    const int before = StrandRuns(*knot.graph).count(StrandRuns(*knot.graph).walls()).strands;
    const int wanted = 1 + i % 4;
    const auto plan = planStrands(*knot.graph, {.strands = wanted});
    if (!plan) continue;
    // One line joins two strands, whichever they are; a split may need more than one.
    if (wanted <= before) {
      EXPECT_EQ(plan->lines.size(), static_cast<std::size_t>(before - wanted));
    }
    change(*knot.graph, plan->lines);
    EXPECT_EQ(tracedStrands(knot), wanted)
        << static_cast<int>(fields.shape) << ' ' << fields.XNo << ' ' << fields.YNo;
  }
}

TEST(StrandSolver, KeepsTheSymmetry) {
  struct Case {
    Shape shape;
    int strands;
    Symmetry symmetry;
  };
  for (const auto& [shape, strands, symmetry] :
       {Case{Shape::SquareSquare, 1, {true, true, 1}}, Case{Shape::SquareSquare, 1, {false, false, 2}},
        Case{Shape::Triangle, 2, {false, false, 3}}, Case{Shape::Circular, 7, {false, false, 3}}}) {
    MadeKnot knot = makeKnot(fieldsOf(shape, 6, 6));
    const LineOrbits orbits(*knot.graph, symmetry);
    ASSERT_TRUE(orbits.complete());
    const auto plan = planStrands(*knot.graph, {.strands = strands, .symmetry = symmetry});
    ASSERT_TRUE(plan) << plan.error().message;
    change(*knot.graph, plan->lines);
    EXPECT_EQ(tracedStrands(knot), strands);
    const std::set<int> changed(plan->lines.begin(), plan->lines.end());
    for (const int line : changed)
      for (const int image : orbits.of(line)) {
        EXPECT_TRUE(changed.contains(image));
      }
  }
}

TEST(StrandSolver, MakesManyStrandsAndSaysWhatIsImpossible) {
  MadeKnot knot = makeKnot(fieldsOf(Shape::SquareSquare, 8, 8));
  const auto many = planStrands(*knot.graph, {});
  ASSERT_TRUE(many);
  EXPECT_GT(many->strands, 25);
  const MadeKnot small = makeKnot(fieldsOf(Shape::SquareSquare, 1, 1));
  const auto none = planStrands(*small.graph, {.strands = 30});
  ASSERT_FALSE(none);
  EXPECT_NE(none.error().message.find("nearest"), std::string::npos);
  EXPECT_FALSE(
      planStrands(*makeKnot(fieldsOf(Shape::SquareSquare, 4, 4)).graph, {.strands = 1, .longest = 20}))
      << "one strand would pass more lines than it may";
}

TEST(LineSymmetry, ImagesLieWhereMirrorsPutThem) {
  const MadeKnot knot = makeKnot(fieldsOf(Shape::SquareSquare, 5, 3));
  for (const bool upright : {false, true}) {
    const LineOrbits orbits(*knot.graph, {upright, !upright, 1});
    ASSERT_TRUE(orbits.complete());
    for (const auto& orbit : orbits.all()) {
      const auto at = [&](int line) { return knot.graph->Lines[static_cast<std::size_t>(line)]; };
      const GridLine a = at(orbit.front()), b = at(orbit.back());
      EXPECT_NEAR(a.MidX, upright ? -b.MidX : b.MidX, 1);
      EXPECT_NEAR(a.MidY, upright ? b.MidY : -b.MidY, 1);
    }
  }
}

TEST(LineSymmetry, FindsTheTurnsOfAGrid) {
  EXPECT_EQ(possibleTurns(*makeKnot(fieldsOf(Shape::SquareSquare, 4, 4)).graph), (std::vector{2, 4}));
  EXPECT_EQ(possibleTurns(*makeKnot(fieldsOf(Shape::SquareSquare, 4, 3)).graph), (std::vector{2}));
  EXPECT_EQ(possibleTurns(*makeKnot(fieldsOf(Shape::Triangle, 3, 3)).graph), (std::vector{3}));
  EXPECT_EQ(possibleTurns(*makeKnot(fieldsOf(Shape::Circular, 18, 2)).graph),
            (std::vector{2, 3, 4, 6, 9, 12, 18, 36}))
      << "and not 17 or 35, which bring lines near others";
}

}  // namespace
}  // namespace lorivan
