// The twelve shapes, their corrections and their fit to the view.
#include "graph/standard_grids.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <map>

#include "graph/grid_view.h"
#include "knot_maker.h"
#include "tries.h"

namespace lorivan {
namespace {

TEST(StandardGrids, LinesStandWhereTheirFormulasPutThem) {
  const struct {
    Shape shape;
    int x, y;
    float scale;
    int last, index;                 // numbers of the last line and of the one that is looked at
    std::array<int, 5> endsAndKind;  // X1, Y1, X2, Y2, kind
  } cases[] = {
      // clang-format off
      {Shape::SquareSquare, 3, 2, 30, 16, 1, {-45, 0, -15, 0, 1}}, {Shape::SquareSquare, 3, 2, 30, 16, 9, {-45, -30, -45, 0, 1}},
      {Shape::SquareTriangle, 2, 2, 30, 15, 1, {-30, 0, 0, 0, 0}}, {Shape::SquareTriangle, 2, 2, 30, 15, 12, {-30, -30, 0, 0, 1}},
      {Shape::SquareTriangle, 2, 2, 30, 15, 14, {0, 0, 30, -30, 1}}, {Shape::Diamond2, 1, 1, 30, 4, 2, {15, 0, 0, -26, 1}},
      {Shape::Triangle, 1, 1, 50, 2, 1, {30, -26, 0, 26, 1}},  // cell 60, rows 51.96 high
      // Cell 60, tips 30 and sides 51.96 high, from (-60 / 1.85, -60 * 0.65); then 18 and 34.99, from -60 * 0.45.
      {Shape::Hexagonal, 1, 1, 80, 5, 1, {-32, 13, -2, 43, 1}}, {Shape::Hexagonal, 1, 3, 21, 15, 12, {-9, 27, -1, 35, 1}},
      {Shape::RegularHexagonal, 1, 1, 60, 5, 1, {-32, 8, -2, 26, 1}}, {Shape::Circular, 4, 2, 20, 23, 1, {20, 0, 40, 0, 1}},
      {Shape::Octagonal, 1, 1, 20, 7, 1, {-24, 10, -10, 24, 1}},  // slopes of 14.14, about the middle
      {Shape::Cross, 5, 2, 10, 41, 0, {-25, -15, -15, -15, 1}}, {Shape::Spiral, 2, 2, 20, 10, 0, {0, 25, 40, 0, 1}},
      {Shape::Star, 3, 2, 12, 8, 1, {12, 0, 9, 16, 1}},  // its tip at (3, 5.2) + 1.25 (5.2, 9)
      // clang-format on
  };
  for (const auto& c : cases) {
    KnotGraph graph;
    ASSERT_TRUE(buildStandardGrid(graph, fieldsOf(c.shape, c.x, c.y, c.scale)));
    EXPECT_EQ(graph.LastLine, c.last) << static_cast<int>(c.shape);
    EXPECT_FALSE(graph.NoGrid);
    const GridLine& l = graph.Lines[c.index];
    EXPECT_EQ((std::array<int, 5>{l.X1, l.Y1, l.X2, l.Y2, l.Kind}), c.endsAndKind)
        << static_cast<int>(c.shape);
  }
}

TEST(StandardGrids, CountsBelowAShapesMinimumAreCorrected) {
  const struct {
    Shape shape;
    int x, y, offset, correctedX, correctedY, correctedOffset, lines;
  } cases[] = {
      {Shape::SquareSquare, 1, 1, 0, 1, 1, 0, 4}, {Shape::Triangle, 3, 5, 0, 3, 3, 0, 18},
      {Shape::Circular, 2, 1, 0, 4, 1, 0, 8},     {Shape::Spiral, 1, 1, 0, 2, 2, 0, 11},
      {Shape::Spiral, 1, 1, -3, 2, 2, -3, 4},     {Shape::Star, 2, 1, 0, 3, 2, 0, 9},
      {Shape::Cross, 2, 9, 0, 3, 3, 0, 24},       {Shape::Cross, 5, 3, 7, 5, 3, 2, 48},
      {Shape::Cross, 5, 3, -7, 5, 3, -2, 48},     {Shape::Diamond1, 2, 4, 0, 2, 2, 0, 12},
      {Shape::Diamond2, 2, 4, 0, 2, 2, 0, 16},    {Shape::Hexagonal, 1, 1, 0, 1, 1, 0, 6},
      {Shape::Octagonal, 1, 1, 0, 1, 1, 0, 8},    {Shape::Hexagonal, 2, 2, 0, 2, 2, 0, 19},
      {Shape::Octagonal, 2, 2, 0, 2, 2, 0, 28},
  };
  for (const auto& c : cases) {
    KnotGraph graph;
    const GridFields made = buildStandardGrid(graph, fieldsOf(c.shape, c.x, c.y, 12, c.offset))->fields;
    EXPECT_EQ((std::array{made.XNo, made.YNo, made.crossOffset, graph.LastLine + 1}),
              (std::array{c.correctedX, c.correctedY, c.correctedOffset, c.lines}))
        << static_cast<int>(c.shape);
  }
}

/// Points that only one line ends at: ends that were meant to meet and rounded apart.
int looseEnds(const KnotGraph& graph) {
  std::map<std::pair<int, int>, int> ends;
  for (int i = 0; i <= graph.LastPoint; ++i) ++ends[{graph.Points[i].X, graph.Points[i].Y}];
  int loose = 0;
  for (const auto& [point, count] : ends) loose += count < 2 ? 1 : 0;
  return loose;
}

TEST(StandardGrids, EveryShapeMeetsExactlyAndFitsTheView) {
  for (int s = 0; s < kShapeCount - 1; ++s)
    for (int x = 1; x <= 20; x += s == 10 ? 3 : 1)
      for (int y = 1; y <= 20; y += 3)
        for (const float scale : {99.F, 31.F, 6.F}) {
          if (isLeftOut(x + y)) continue;
          KnotGraph graph;
          const auto grid = buildStandardGrid(graph, fieldsOf(static_cast<Shape>(s), x, y, scale));
          ASSERT_TRUE(grid);
          const float used = grid->fields.scale;
          EXPECT_TRUE(used == kLeastScale || GridView(0.8F).contains(lineBox(graph)))
              << s << ' ' << x << ' ' << y;
          EXPECT_LE(used, scale);
          EXPECT_EQ(looseEnds(graph), 0) << s << ' ' << x << ' ' << y << ' ' << used;
          EXPECT_TRUE(CalcGrid(graph)) << "at most 13 lines at a point";
        }
}

TEST(StandardGrids, TheScaleGoesDownOneByOneAndNotFurtherThanNeeded) {
  KnotGraph graph;
  const auto grid = buildStandardGrid(graph, fieldsOf(Shape::SquareSquare, 7, 5, 30.5F));
  ASSERT_TRUE(grid);
  EXPECT_EQ(grid->fields.scale, 28.5F) << "28.5 rounds to 28, the first cell that leaves an edge free";
  GridFields tall = fieldsOf(Shape::SquareSquare, 2, 2, 60);
  tall.skew = 2;  // half the height
  EXPECT_LT(buildStandardGrid(graph, tall)->fields.scale, 41);
  GridFields round = fieldsOf(Shape::Triangle, 6, 1, 60);
  round.wrapped = true;
  EXPECT_EQ(buildStandardGrid(graph, round)->fields.scale, 27)
      << "lines reach over the seam, pictures do not";
}

TEST(RandomKinds, MakeOneCellAWallOrEmpty) {
  const struct {
    Shape shape;
    int low, draws;  // place of the one low draw, and how many there are
    double second;   // drawn next
    int kind, lines;
  } cases[] = {
      // Cell (2, 2) is the only inner one of 3 x 3; the draws go through columns of 22.
      {Shape::SquareSquare, 46, 485, 0.5, 2, 4},
      {Shape::SquareSquare, 46, 485, 0.49, 0, 4},
      {Shape::Octagonal, 46, 485, 0.5, 2, 8},
      {Shape::Octagonal, 46, 485, 0.49, 0, 4},  // its diagonals stay
      {Shape::Circular, 0, 8, 0.9, 2, 8},       // a pair of opposite cells
  };
  for (const auto& c : cases) {
    int taken = 0;
    const Rnd random = [&] { return ++taken - 1 == c.low ? 0.03 : taken - 1 == c.low + 1 ? c.second : 0.9; };
    KnotGraph graph;
    const int size = c.shape == Shape::Circular ? 4 : 3;
    ASSERT_TRUE(buildStandardGrid(graph, fieldsOf(c.shape, size, size, 20), &random));
    EXPECT_EQ(taken, c.draws);
    int lines = 0, sumX = 0, sumY = 0;
    for (int j = 0; j <= graph.LastLine; ++j) {
      const GridLine& line = graph.Lines[j];
      if (line.Kind == kOrdinary) continue;
      EXPECT_EQ(line.Kind, c.kind);
      ++lines, sumX += line.MidX, sumY += line.MidY;
    }
    EXPECT_EQ(lines, c.lines) << static_cast<int>(c.shape);
    EXPECT_NEAR(std::hypot(sumX, sumY), 0, 6) << "they lie round the middle";
  }
}

TEST(RandomKinds, TakeInnerCellsBelowTheShapesLimit) {
  const struct {
    Shape shape;
    int x, y;
    double limit;
    int lines;  // not ordinary when every draw is just below the limit
  } cases[] = {
      {Shape::SquareSquare, 6, 6, 0.15, 16},  // none between two empty cells
      {Shape::Cross, 6, 6, 0.15, 16},
      {Shape::Octagonal, 6, 6, 0.15, 40},
      {Shape::Triangle, 6, 6, 0.35, 18},
      {Shape::Diamond1, 6, 6, 0.7, 12},  // three triangles apart from each other, and their mirror images
      {Shape::Hexagonal, 7, 5, 0.25, 35},
      {Shape::Circular, 6, 6, 0.04, 84},
  };
  for (const auto& c : cases)
    for (const double off : {-1e-9, 1e-9}) {
      const Rnd random = [&] { return c.limit + off; };
      KnotGraph graph;
      ASSERT_TRUE(buildStandardGrid(graph, fieldsOf(c.shape, c.x, c.y, 10), &random));
      const auto special = std::count_if(graph.Lines.begin(), graph.Lines.begin() + graph.NextLine,
                                         [](const GridLine& line) { return line.Kind != kOrdinary; });
      EXPECT_EQ(special, off < 0 ? c.lines : 0) << static_cast<int>(c.shape);
    }
}

}  // namespace
}  // namespace lorivan
