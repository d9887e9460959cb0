// Points, lines and the order of neighbours.
#include "graph/graph.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>

#include "base/numbers.h"
#include "graph/grid_drawing.h"
#include "platform/none/recording_surface.h"

namespace lorivan {
namespace {

void finish(KnotGraph& graph) {
  ASSERT_TRUE(finishLines(graph));
  ASSERT_TRUE(collectPoints(graph));
}

TEST(MakeKE, RoundsHalvesToEvenAndKeepsItsDirection) {
  KnotGraph graph;
  MakeKE(graph, kOrdinary, 2.5F, 3.5F, -1.5F, -2.5F);
  MakeKE(graph, kWall, 0, 0, 10, 0);
  MakeKE(graph, kOrdinary, 10, 0, 0, 1);
  const GridLine& l = graph.Lines[0];
  EXPECT_EQ((std::array<int, 5>{l.X1, l.Y1, l.X2, l.Y2, l.MidX}), (std::array{2, 4, -2, -2, 0}));
  EXPECT_NEAR(graph.Lines[1].Angle, kPi - kPi / 4, 1e-6);
  EXPECT_EQ(graph.Lines[1].Kind, kWall);
  EXPECT_EQ(graph.Lines[2].MidY, 0) << "the midpoint is taken before rounding";
  EXPECT_EQ(graph.NextLine, 3);
}

TEST(MakeKE, RefusesALinePastTheTable) {
  KnotGraph graph;
  for (int i = 0; i <= kMostLines; ++i) MakeKE(graph, kOrdinary, 0, 0, 1, 1);
  EXPECT_EQ(graph.NextLine, kMostLines);
  const Status made = finishLines(graph);
  ASSERT_FALSE(made);
  EXPECT_EQ(made.error().kind, ErrorKind::limit);
}

TEST(CalcGrid, AnglesThatMoveUpLoseTheirFraction) {
  KnotGraph graph;  // neighbours of (0, 0) at about 3.4 and 3.1 radians, in this order
  MakeKE(graph, kOrdinary, 0, 0, -97, -26);
  MakeKE(graph, kOrdinary, 0, 0, -100, 4);
  finish(graph);
  ASSERT_TRUE(CalcGrid(graph));
  EXPECT_TRUE(graph.Points[0].NbLine[0] == 0 && graph.Points[0].NbLine[1] == 1);
}

TEST(CalcGrid, LinesThatAreNotThereAndLinesWithoutLength) {
  KnotGraph graph;
  MakeKE(graph, kNoLine, 0, 0, 10, 0);
  MakeKE(graph, kOrdinary, 5, 5, 5, 5);
  finish(graph);
  ASSERT_TRUE(CalcGrid(graph));
  EXPECT_EQ(graph.LastPoint, 3);
  EXPECT_EQ(graph.Points[0].NbCount, 0);
  EXPECT_EQ(graph.Points[2].NbCount, 2) << "both ends of a point-like line";
}

TEST(CalcGrid, AFourteenthNeighbourIsRefused) {
  for (const int lines : {13, 14, 30}) {
    KnotGraph graph;
    for (int i = 0; i < lines; ++i)
      MakeKE(graph, kOrdinary, 0, 0, static_cast<float>(50 * std::cos(i * 0.2)),
             static_cast<float>(50 * std::sin(i * 0.2)));
    finish(graph);
    const Status ordered = CalcGrid(graph);
    EXPECT_EQ(static_cast<bool>(ordered), lines == 13);
    EXPECT_EQ(graph.KnotError, lines != 13);
    EXPECT_EQ(graph.Points[0].NbCount, 13);
  }
}

TEST(CollectPoints, ALineLeadsRoundACylinderAFewTimesAtMost) {
  for (const auto& [units, sound] : {std::pair(-320, true), {-321, false}, {339, true}, {340, false}}) {
    KnotGraph graph;
    graph.wrap = {0, 20};
    MakeKE(graph, kOrdinary, 0, 0, static_cast<float>(units), 0);
    ASSERT_TRUE(finishLines(graph));
    EXPECT_EQ(static_cast<bool>(collectPoints(graph)), sound) << units;
  }
}

TEST(FindLine, TheLowestIndexWithinASixthOfACell) {
  KnotGraph graph;
  MakeKE(graph, kNoLine, 0, 0, 20, 0);
  MakeKE(graph, kOrdinary, 0, 0, 20, 0);
  finish(graph);
  graph.CellSize = 30;
  EXPECT_EQ(FindLine(graph, 10, 0), -1) << "no grid yet";
  graph.NoGrid = false;
  EXPECT_EQ(FindLine(graph, 10, 0), 0) << "lines that are not there can be picked";
  EXPECT_EQ(FindLine(graph, 14.9F, 0), 0);
  EXPECT_EQ(FindLine(graph, 15, 0), -1) << "the limit itself is outside";
}

TEST(DrawGrid, LinesHaveTheirKindsColoursAndAMark) {
  KnotGraph graph;
  for (const std::int16_t kind : {kNoLine, kOrdinary, kWall, kReversed}) MakeKE(graph, kind, 50, 0, 0, 0);
  finish(graph);
  graph.CellSize = 100;
  RecordingSurface surface(202, 162);  // one pixel a grid unit, the middle at (101, 81)
  ASSERT_TRUE(DrawGrid(graph, surface, GridView(1, 202), {}));
  const auto& calls = surface.calls();
  ASSERT_EQ(calls.size(), 9U);
  const Colour colours[] = {0x000000, 0x0000FF, 0xFF0000};
  for (std::size_t i = 0; i < 3; ++i) EXPECT_EQ(calls[3 * i].colour, colours[i]);
  // The line's angle is -45 degrees: each mark reaches 20 / sqrt(2) = 14 units both ways.
  const DrawCall &green = calls[1], &blue = calls[2];
  EXPECT_TRUE(green.colour == 0x00FF00 && green.dotted && blue.colour == 0xFF0000 && !blue.dotted);
  EXPECT_NEAR(green.points[0].x - green.points[1].x, -28, 1);
  EXPECT_NEAR(blue.points[0].x - blue.points[1].x, -28, 1);
  EXPECT_GT((green.points[0].y - green.points[1].y) * (blue.points[1].y - blue.points[0].y), 0);

  graph.CellSize = 200;  // no longer than 0.8 of the line, 40
  RecordingSurface wide(202, 162);
  ASSERT_TRUE(DrawGrid(graph, wide, GridView(1, 202), {}));
  EXPECT_NEAR(wide.calls()[2].points[0].x - wide.calls()[2].points[1].x, -28, 1);
}

}  // namespace
}  // namespace lorivan
