// Counting strands without tracing, and walls for a wanted number, held against the tracer.
#include "graph/strand_solver.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <tuple>

#include "graph/strand_runs.h"
#include "tests/knot_maker.h"
#include "tries.h"

namespace lorivan {
namespace {

GridFields randomFields(const Rnd& random, int most) {
  const auto draw = [&](int from, int to) { return from + static_cast<int>(random() * (to - from + 1)); };
  return fieldsOf(static_cast<Shape>(draw(0, kShapeCount - 2)), draw(1, most), draw(1, most), 30, draw(0, 1));
}

void change(KnotGraph& graph, const std::vector<int>& lines) {
  for (const int j : lines) {
    std::int16_t& kind = graph.Lines[j].Kind;
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
    changed[j] = true;
    const auto counts = runs.count(changed);
    const auto change = StrandRuns::changeAt(tour.passages[j]);
    const int step = change == StrandRuns::Change::join ? -1 : change == StrandRuns::Change::split ? 1 : 0;
    EXPECT_EQ(counts.strands + counts.wallLoops, before + step) << j;
  }
}

TEST(StrandRuns, CountFewChangedLinesAsTheyCountAll) {
  const Rnd random = seededRandom(7);
  int wallLoops = 0;
  for (int i = 0; i < 60; ++i) {
    const MadeKnot knot = makeKnot(randomFields(random, 6), {}, &random);
    if (!knot.error.empty()) continue;
    const StrandRuns runs(*knot.graph);
    ChangedRuns few(runs, runs.walls());
    for (double share = 0.01; share < 1; share *= 1.7) {
      Walls walls = runs.walls();
      std::vector<int> lines;
      for (int j = 0; j < runs.lineCount(); ++j) {
        if (!runs.isPart(j) || random() >= share) continue;
        lines.push_back(j);
        walls[j] = !walls[j];
      }
      const auto counts = runs.count(walls);
      EXPECT_EQ(few.count(lines), counts);
      wallLoops += counts.wallLoops;
    }
  }
  EXPECT_GT(wallLoops, 100) << "loops that are not drawn took part";
}

TEST(StrandSolver, ReachesTheNumberThatItPromises) {
  const Rnd random = seededRandom(11);
  for (int i = 0; i < tries(30); ++i) {
    const GridFields fields = randomFields(random, 7);
    MadeKnot knot = makeKnot(fields, {}, &random);
    if (!knot.error.empty()) continue;
    const int before = StrandRuns(*knot.graph).count(StrandRuns(*knot.graph).walls()).strands;
    const int wanted = 1 + i % 4;
    const Symmetry mirror{true, false, 1};
    const bool mirrored = i % 3 == 2 && LineOrbits(*knot.graph, mirror).complete();
    const auto plan =
        planStrands(*knot.graph, {.strands = wanted, .symmetry = mirrored ? mirror : Symmetry()});
    if (!plan) continue;
    // One line joins two strands, whichever they are; a split may need more than one.
    if (wanted <= before && !mirrored) {
      EXPECT_EQ(plan->lines.size(), static_cast<std::size_t>(before - wanted));
    }
    change(*knot.graph, plan->lines);
    EXPECT_EQ(tracedStrands(knot), wanted)
        << static_cast<int>(fields.shape) << ' ' << fields.XNo << ' ' << fields.YNo;
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
  const auto tooLong =
      planStrands(*makeKnot(fieldsOf(Shape::SquareSquare, 4, 4)).graph, {.strands = 1, .longest = 30});
  ASSERT_FALSE(tooLong) << "one strand would pass more lines than it may";
  EXPECT_NE(tooLong.error().message.find("160 points, more than the 60 "), std::string::npos)
      << tooLong.error().message;
  EXPECT_TRUE(tooLong.error().message.ends_with(" 3")) << tooLong.error().message;
}

TEST(StrandSolver, LoopsBetweenWallsMayTakeLinesThatAStrandMayNotPass) {
  MadeKnot knot = makeKnot(fieldsOf(Shape::SquareSquare, 3, 2));
  const Rnd random = seededRandom(34);
  const double share = 0.2 + 0.7 * random();
  for (GridLine& line : knot.graph->Lines)
    if (line.Kind == kOrdinary && random() < share) line.Kind = kWall;
  ASSERT_TRUE(collectPoints(*knot.graph));
  knot.trace();
  const StrandRuns runs(*knot.graph);
  const auto counts = runs.count(runs.walls());
  ASSERT_GT(counts.wallLoops, 0);
  const auto plan = planStrands(*knot.graph, {.strands = 1, .longest = 24});
  ASSERT_TRUE(plan) << plan.error().message;
  EXPECT_EQ(plan->strands, 1);
}

TEST(StrandSolver, FindsFewLinesForNumbersThatAreFarAway) {
  // A third more lines than the best that are known: searches that only stumble find nothing, or twice as
  // many.
  for (const auto& [shape, columns, rows, most] : {std::tuple(Shape::SquareSquare, 8, 6, 17U),
                                                   {Shape::Triangle, 6, 6, 15U},
                                                   {Shape::Circular, 8, 4, 17U}}) {
    const MadeKnot knot = makeKnot(fieldsOf(shape, columns, rows));
    const auto plan = planStrands(*knot.graph, {.strands = 13});
    ASSERT_TRUE(plan) << plan.error().message;
    EXPECT_LE(plan->lines.size(), most) << columns << " x " << rows;
  }
}

TEST(StrandSolver, ChangesOddNumbersByLoopsRoundTheMiddle) {
  // In these symmetries every other line changes the strands two by two.
  for (const auto& [columns, rows, strands, turns, seed, most] :
       {std::tuple(4, 19, 5, 2, 1000, 16U), {3, 16, 1, 2, 1001, 18U}, {12, 8, 1, 8, 1002, 36U}}) {
    const Rnd random = seededRandom(seed);
    const GridFields fields = fieldsOf(Shape::Circular, columns, rows, 30, seed % 2);
    const MadeKnot knot = makeKnot(fields, {}, &random);
    const auto plan = planStrands(*knot.graph, {.strands = strands, .symmetry = {false, false, turns}});
    ASSERT_TRUE(plan) << plan.error().message;
    EXPECT_LE(plan->lines.size(), most) << columns << " x " << rows;
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
