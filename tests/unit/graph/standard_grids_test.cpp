// The twelve shapes, their corrections and their fit to the view.
#include "graph/standard_grids.h"

#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <memory>
#include <tuple>

#include "graph/grid_view.h"

namespace lorivan {
namespace {

GridFields fieldsOf(Shape shape, int x, int y, float scale = 30, int offset = 0) {
  GridFields f;
  f.shape = shape;
  f.XNo = x;
  f.YNo = y;
  f.scale = scale;
  f.crossOffset = offset;
  return f;
}

std::tuple<int, int, int, int, int> asTuple(const GridLine& l) { return {l.X1, l.Y1, l.X2, l.Y2, l.Kind}; }

TEST(StandardGrids, SquaresStandInTheirOrder) {
  KnotGraph graph;
  ASSERT_TRUE(buildStandardGrid(graph, fieldsOf(Shape::SquareSquare, 3, 2)));
  ASSERT_EQ(graph.LastLine, 16);
  EXPECT_EQ(asTuple(graph.Lines[0]), std::make_tuple(-45, -30, -15, -30, 1));
  EXPECT_EQ(asTuple(graph.Lines[1]), std::make_tuple(-45, 0, -15, 0, 1));
  EXPECT_EQ(asTuple(graph.Lines[9]), std::make_tuple(-45, -30, -45, 0, 1));
  EXPECT_EQ(graph.LastPoint, 33);
  EXPECT_FALSE(graph.NoGrid);
}

TEST(StandardGrids, DiagonalsAlternateAndInnerLinesAreGone) {
  KnotGraph graph;
  ASSERT_TRUE(buildStandardGrid(graph, fieldsOf(Shape::SquareTriangle, 2, 2)));
  ASSERT_EQ(graph.LastLine, 15);
  EXPECT_EQ(asTuple(graph.Lines[1]), std::make_tuple(-30, 0, 0, 0, 0));
  EXPECT_EQ(asTuple(graph.Lines[12]), std::make_tuple(-30, -30, 0, 0, 1));
  EXPECT_EQ(asTuple(graph.Lines[14]), std::make_tuple(0, 0, 30, -30, 1));
}

TEST(StandardGrids, CountsBelowAShapesMinimumAreCorrected) {
  const struct {
    Shape shape;
    int x, y, offset, correctedX, correctedY, correctedOffset, lines;
  } cases[] = {
      {Shape::SquareSquare, 1, 1, 0, 1, 1, 0, 4}, {Shape::Triangle, 3, 5, 0, 3, 3, 0, 18},
      {Shape::Circular, 2, 1, 0, 4, 1, 0, 8},     {Shape::Spiral, 1, 1, 0, 2, 2, 0, 11},
      {Shape::Star, 2, 1, 0, 3, 2, 0, 9},         {Shape::Cross, 2, 9, 0, 3, 3, 0, 24},
      {Shape::Cross, 5, 3, 7, 5, 3, 2, 48},       {Shape::Cross, 5, 3, -7, 5, 3, -2, 48},
      {Shape::Diamond1, 2, 4, 0, 2, 2, 0, 12},    {Shape::Diamond2, 2, 4, 0, 2, 2, 0, 16},
      {Shape::Hexagonal, 1, 1, 0, 1, 1, 0, 6},    {Shape::Octagonal, 1, 1, 0, 1, 1, 0, 8},
      {Shape::Hexagonal, 2, 2, 0, 2, 2, 0, 19},   {Shape::Octagonal, 2, 2, 0, 2, 2, 0, 28},
  };
  for (const auto& c : cases) {
    KnotGraph graph;
    const auto grid = buildStandardGrid(graph, fieldsOf(c.shape, c.x, c.y, 12, c.offset));
    ASSERT_TRUE(grid);
    const int shape = static_cast<int>(c.shape);
    EXPECT_EQ(grid->fields.XNo, c.correctedX) << shape;
    EXPECT_EQ(grid->fields.YNo, c.correctedY) << shape;
    EXPECT_EQ(grid->fields.crossOffset, c.correctedOffset) << shape;
    EXPECT_EQ(graph.LastLine + 1, c.lines) << shape;
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
}

/// Draws from a list, then 0.9 for ever; counts how many were taken.
struct Script {
  std::vector<double> draws;
  std::shared_ptr<int> taken = std::make_shared<int>(0);
  Rnd rnd() const {
    return [draws = draws, taken = taken] {
      const auto i = static_cast<std::size_t>((*taken)++);
      return i < draws.size() ? draws[i] : 0.9;
    };
  }
};

TEST(RandomKinds, InnerCellsBecomeWallsOrEmpty) {
  // Element (2, 2) is the only inner cell of 3 x 3; elements are drawn x outer, y inner, 22 to a column.
  for (const auto& [second, kind] : {std::pair{0.6, 2}, {0.4, 0}}) {
    Script script;
    script.draws.assign(2 * 22 + 2, 0.9);
    script.draws.push_back(0.1);
    script.draws.push_back(second);
    const Rnd random = script.rnd();
    KnotGraph graph;
    ASSERT_TRUE(buildStandardGrid(graph, fieldsOf(Shape::SquareSquare, 3, 3, 20), &random));
    EXPECT_EQ(*script.taken, 22 * 22 + 1);
    std::map<int, int> kinds;
    for (int j = 0; j <= graph.LastLine; ++j) ++kinds[graph.Lines[j].Kind];
    EXPECT_EQ(kinds[kind], 4) << "the four lines round the cell";
    EXPECT_EQ(kinds[1], 20);
  }
}

TEST(RandomKinds, RingsGetOppositeWallsAndHexagonsNoHoles) {
  Script low;
  low.draws.assign(5000, 0.01);
  const Rnd random = low.rnd();
  KnotGraph graph;
  ASSERT_TRUE(buildStandardGrid(graph, fieldsOf(Shape::Circular, 4, 4, 10), &random));
  EXPECT_EQ(graph.Lines[graph.LastLine].Kind, kOrdinary) << "the outermost ring keeps its lines";
  int walls = 0;
  for (int j = 0; j <= graph.LastLine; ++j) walls += graph.Lines[j].Kind == kWall ? 1 : 0;
  EXPECT_EQ(walls, 8 * 3);
  ASSERT_TRUE(buildStandardGrid(graph, fieldsOf(Shape::Hexagonal, 6, 5, 10), &random));
  for (int j = 0; j <= graph.LastLine; ++j) EXPECT_NE(graph.Lines[j].Kind, kNoLine);
}

TEST(GridView, MapsBothWaysAndShowsEverything) {
  GridView view(0.8F, 1000);
  EXPECT_EQ(view.height(), 800);
  EXPECT_EQ(view.pixel(0, 0).x, 500);
  EXPECT_EQ(view.pixel(0, 0).y, 400);
  EXPECT_LT(view.pixel(0, 10).y, 400) << "y points up";
  GridBox box;
  box.add(-300, -50);
  box.add(10, 200);
  view.zoomToShow(box, 5);
  EXPECT_GE(view.pixelX(-300), 10 - 1e-9);
  EXPECT_GE(view.pixelY(200), 10 - 1e-9);
  EXPECT_NEAR(view.gridX(view.pixelX(12.5)), 12.5, 1e-9);
  EXPECT_NEAR(view.gridY(view.pixelY(-7)), -7, 1e-9);
}

}  // namespace
}  // namespace lorivan
