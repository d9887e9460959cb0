// Wrapped grids as something that is done to a knot, kept in files and found by size.
#include <gtest/gtest.h>

#include <algorithm>
#include <memory>

#include "design/document_text.h"
#include "design/edits.h"
#include "design/fit.h"
#include "design/fit_size.h"
#include "design/kept_walls.h"
#include "design/knot_model.h"
#include "design/solid_model.h"
#include "grids.h"

namespace lorivan {
namespace {

TEST(Wrap, JoinsAndPartsTheBordersInOneStep) {
  const Document flat = gridOf(Shape::SquareTriangle, 5, 3), joined = withCheck(flat, Check::Wrap, true);
  EXPECT_EQ(joined.fields.text(Param::XNo), "6") << "diagonals meet their likes";
  EXPECT_EQ(joined.fields.text(Param::RingPerc), "100");
  EXPECT_EQ(withField(joined, Param::RingPerc, "40").fields.text(Param::RingPerc), "100");
  EXPECT_TRUE(wrapOf(joined) && !wrapOf(flat));
  const Document parted = withCheck(joined, Check::Wrap, false);
  EXPECT_EQ(*parted.lines, *gridOf(Shape::SquareTriangle, 6, 3).lines);
  // Other shapes take no notice, and what the box says comes back with the shape.
  const Document star = *chooseShape(joined, Shape::Star);
  EXPECT_FALSE(wrapOf(star));
  EXPECT_TRUE(wrapOf(*chooseShape(star, Shape::Triangle)));
}

TEST(Wrap, KeepsWallsWithTheirLinesAndInTheSeam) {
  Document document = gridOf(Shape::SquareSquare, 4, 3);
  KnotLines lines = *document.lines;
  const auto lineAt = [&](int midX, int midY) {
    return static_cast<int>(
        std::ranges::find_if(lines, [&](const KnotLine& l) { return l.MidX == midX && l.MidY == midY; }) -
        lines.begin());
  };
  const std::vector<int> walls = {lineAt(-60, 0), lineAt(0, 30), lineAt(45, -15)};  // the first in the seam
  document = withKind(document, walls, kWall, {});
  ASSERT_EQ(wallCount(document), 3);
  const Document joined = withCheck(document, Check::Wrap, true);
  EXPECT_EQ(wallCount(joined), 3);
  EXPECT_EQ(wallCount(*changeField(joined, Param::XNo, "6")), 3);
  EXPECT_EQ(wallCount(withCheck(joined, Check::Wrap, false)), 3);
  // A wall of the right border has no line any more.
  EXPECT_EQ(wallCount(withCheck(withKind(document, {lineAt(60, 0)}, kWall, {}), Check::Wrap, true)), 3);
  KnotGraph graph;
  ASSERT_TRUE(takeLines(graph, joined));
  EXPECT_EQ(FindLine(graph, 60, 1), FindLine(graph, -60, 1)) << "the seam's line is at both borders";
}

TEST(Wrap, SurvivesFilesAndGivesOneStrandInSymmetry) {
  const Document joined = withCheck(gridOf(Shape::Triangle, 6, 3), Check::Wrap, true);
  const auto read = readDocument(documentText(joined), Document{});
  ASSERT_TRUE(read);
  EXPECT_EQ(documentText(read->document), documentText(joined));
  EXPECT_EQ(wrapOf(read->document), wrapOf(joined));
  const auto one = withStrands(joined, 1, {.turns = 3});
  ASSERT_TRUE(one);
  const auto knot = knotOf(*one);
  EXPECT_EQ(countKnot(knot->graph, knot->strands).strands, 1);
  EXPECT_EQ(possibleTurns(knot->graph), (std::vector<int>{3, 6}));
}

TEST(Wrap, NonsenseInFilesIsNoKnotOrOneButNeverWorse) {
  const std::string text = documentText(withCheck(gridOf(Shape::SquareSquare, 3, 2), Check::Wrap, true));
  for (const char* cell : {"-5,0", "0,0", "1,0", "7,0", "32767,0"}) {
    std::string changed = text;
    changed.replace(changed.find("30,0"), 4, cell);
    const auto read = readDocument(changed, Document{});
    ASSERT_TRUE(read) << changed;
    const auto knot = std::make_unique<Knot>();
    const bool made = static_cast<bool>(makeKnot(read->document, *knot));
    EXPECT_TRUE(!made || countKnot(knot->graph, knot->strands).strands >= 0);
  }
}

TEST(Wrap, FittedRingsAreOneBodyWithoutSpecks) {
  Document gold = gridOf(Shape::SquareSquare, 2, 2);
  gold.fields.text(Param::Swish) = "14";
  gold.fields.text(Param::Smooth) = "4";
  const auto ring = fitRing(gold, 18.2, 6);
  ASSERT_TRUE(ring);
  const auto made = makeBody(*knotOf(ring->document), ring->document.fields, {.millimetres = ring->width});
  ASSERT_TRUE(made);
  EXPECT_EQ(made->body.pieces, 1);
}

TEST(Wrap, BandsHaveAboutTheRoomOfTheirCrossings) {
  const auto room = knotOf(withCheck(gridOf(Shape::SquareSquare, 5, 3), Check::Wrap, true));
  EXPECT_NEAR(*drawnRoom(*room), *leastCrossingDistance(*room), 0.15 * *leastCrossingDistance(*room));
}

}  // namespace
}  // namespace lorivan
