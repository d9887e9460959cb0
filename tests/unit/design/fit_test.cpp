// Bands that fit their grid, and knots that fill the picture.
#include "design/fit.h"

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <tuple>

#include "base/random.h"
#include "design/edits.h"
#include "design/knot.h"
#include "design/presets.h"
#include "grids.h"

namespace lorivan {
namespace {

TEST(Fit, BandsLeaveGapsOnEveryGridAndTheKnotFillsThePicture) {
  for (int i = 0; i < kShapeCount - 1; ++i)
    for (const auto& [x, y, scale] : {std::array{2, 2, 30}, {5, 3, 20}, {8, 8, 15}}) {
      SCOPED_TRACE(shapeTable()[i].name);
      const Document plain = gridOf(static_cast<Shape>(i), x, y, scale);
      const Document fitted = fitBands(withFitPicture(plain, true));
      const auto made = knotOf(fitted);
      const Knot& knot = *made;
      const KnotStyle style = knotStyle(fitted.fields, {});
      const GridView view = viewOf(knot, fitted.fields, style, kReferenceWidth, true);
      const double room = *leastCrossingDistance(knot) / view.zoom, share = style.outerWidth() / room;
      // The narrowest band that a field can ask for may be wider.
      EXPECT_TRUE(fitted.fields.text(Param::Width) == "2" || share < 0.64) << share;
      const double drawn = *drawnRoom(knot) / view.zoom;
      const Document wider =
          *changeField(fitted, Param::Width, std::to_string(static_cast<int>(style.width) + 2));
      EXPECT_TRUE(fitted.fields.text(Param::Width) == "30" || share > 0.52 || share < 0.4 ||
                  style.outerWidth() > 0.75 * drawn || bandOverlap(wider, knot) > 0)
          << share;
      EXPECT_TRUE(fitted.fields.text(Param::Width) == "2" || share < 0.4 ||
                  style.outerWidth() < 0.95 * drawn);
      const GridBox box = curveBox(knot.curve, view.stretch);
      const double half = style.outerWidth() / 2;
      const double left = view.pixelX(box.left) - half, right = view.pixelX(box.right) + half;
      const double top = view.pixelY(box.top) - half, bottom = view.pixelY(box.bottom) + half;
      EXPECT_NEAR(left, kReferenceWidth - right, 0.01);
      EXPECT_NEAR(top, kReferenceHeight - bottom, 0.01);
      EXPECT_NEAR(std::min(left - 25, top - 20), 0, 0.01);
    }
}

TEST(Fit, FollowsGridsUntilAWidthIsTyped) {
  const Document fitted = fitBands(gridOf(Shape::SquareSquare, 3, 3, 30));
  EXPECT_TRUE(fitted.fields.check(Check::FitBands));
  const Document finer = *changeField(fitted, Param::Scale, "15");
  EXPECT_NEAR(finer.fields.number(Param::Width), fitted.fields.number(Param::Width) / 2, 0.3);
  const Document typed = *changeField(finer, Param::Width, "3");
  EXPECT_FALSE(typed.fields.check(Check::FitBands));
  EXPECT_EQ(changeField(typed, Param::Scale, "30")->fields.text(Param::Width), "3");
  EXPECT_EQ(withCheck(typed, Check::FitBands, true).fields.text(Param::Width),
            finer.fields.text(Param::Width));
}

std::vector<int> linesWithin(const Document& document, int reach) {
  std::vector<int> lines;
  for (int i = 0; const KnotLine& line : *document.lines) {
    if (std::max(std::abs(line.MidX), std::abs(line.MidY)) < reach) lines.push_back(i);
    ++i;
  }
  return lines;
}

TEST(Fit, FollowsWhateverChangesTheRoom) {
  const Document fitted = fitBands(gridOf(Shape::SquareSquare, 3, 3, 30));
  const std::vector<int> inner = linesWithin(fitted, 45);
  Document own = fitted;  // the same lines as a custom shape
  own.fields.shape = Shape::Custom;
  const std::pair<const char*, Result<Document>> changes[] = {
      {"Smooth", changeField(fitted, Param::Smooth, "6")},
      {"Swish", changeField(fitted, Param::Swish, "40")},
      {"Stretch", changeField(own, Param::Skew, "0.4")},
      {"picture", withFitPicture(fitted, true)},
      {"walls", withKind(fitted, inner, kWall, {})},
      {"strands", withStrands(withKind(fitted, inner, kWall, {}), 1, {})}};
  for (const auto& [what, changed] : changes) {
    ASSERT_TRUE(changed) << what;
    EXPECT_NE(changed->fields.text(Param::Width), fitted.fields.text(Param::Width)) << what;
    EXPECT_EQ(fitAgain(*changed).fields.text(Param::Width), changed->fields.text(Param::Width)) << what;
  }
}

TEST(Fit, BandsTakeTheRoomBesideEachOtherWhereALittleLessMakesIt) {
  const auto fitted = [](const char* smooth) {
    return *changeField(fitBands(gridOf(Shape::SquareTriangle, 2, 3, 30)), Param::Smooth, smooth);
  };
  EXPECT_EQ(bandOverlap(fitted("4"), *knotOf(fitted("4"))), 0);
  EXPECT_GT(fitted("2").fields.number(Param::Width), 6) << "they would be too narrow";
}

TEST(Fit, BandsAreAsWideAsGapsAllowWhereTheyWouldRunTogether) {
  for (const auto& [shape, x, y, smooth] : {std::tuple(Shape::Triangle, 4, 2, "5"),
                                            {Shape::SquareTriangle, 8, 2, "3"},
                                            {Shape::Diamond2, 2, 1, "5"},
                                            {Shape::Star, 8, 3, "6"}}) {
    SCOPED_TRACE(smooth);
    const Document fitted = fitBands(withField(gridOf(shape, x, y, 25), Param::Smooth, smooth));
    const auto knot = knotOf(fitted);
    EXPECT_EQ(bandOverlap(fitted, *knot), 0);
    const float width = fitted.fields.number(Param::Width) + 0.5F;
    EXPECT_GT(bandOverlap(*changeField(fitted, Param::Width, std::to_string(width)), *knot), 0);
    EXPECT_LT(fitBands(fitted, {BandShares{}.band * 0.5F, 0}).fields.number(Param::Width), width - 1)
        << "narrow styles stay narrow";
  }
}

TEST(Fit, StylesKeepTheirCharacter) {
  const Document grid = gridOf(Shape::Hexagonal, 4, 4, 25);
  const auto width = [&](const char* style) {
    return withFittedStyle(grid, *findPreset(style)).fields.number(Param::Width);
  };
  EXPECT_LT(1.5 * width("Thread"), width("Illuminated"));
  EXPECT_LT(width("Illuminated"), width("Stained Glass"));
  const Document classic = withFittedStyle(grid, *findPreset("Classic"));
  EXPECT_EQ(classic.fields.text(Param::Width), "7");
  EXPECT_FALSE(classic.fields.check(Check::FitBands));
}

TEST(Fit, OverlapIsToldInPixels) {
  const Document grid = gridOf(Shape::SquareSquare, 3, 3, 30);
  const auto knot = knotOf(grid);
  // Half a diagonal of a cell of 30 grid units.
  EXPECT_NEAR(*leastCrossingDistance(*knot), 30 / std::sqrt(2.0) * kReferenceWidth / 202, 0.01);
  EXPECT_EQ(bandOverlap(fitBands(grid), *knot), 0);
  // Where two bands cross twice at a corner there is less room than the grid has.
  const double overlap = bandOverlap(withField(grid, Param::Width, "30"), *knot);
  EXPECT_GT(overlap, 60 - *leastCrossingDistance(*knot));
  EXPECT_LT(overlap, 30);
}

TEST(Fit, WhatMakesRoomIsTrue) {
  // A wall in the middle: wide fitted bands run together there, however few the cells are.
  const auto walled = [](int cells) {
    const Document grid =
        withFittedStyle(gridOf(Shape::SquareSquare, cells, cells), *findPreset("Illuminated"));
    return withKind(grid, {linesWithin(grid, 20).front()}, kWall, {});
  };
  const auto overlap = [](const Document& document) { return bandOverlap(document, *knotOf(document)); };
  const auto advice = [](const Document& document) { return moreRoom(document, *knotOf(document)); };
  const Document walls = walled(4), narrow = withField(walls, Param::Width, "2");
  const Document plain = gridOf(Shape::SquareSquare, 4, 4, 30);
  const Document wide = *changeField(fitBands(plain), Param::Width, "30");
  EXPECT_GT(overlap(walls), 0);
  EXPECT_GT(overlap(walled(2)), 0);
  EXPECT_EQ(advice(walls), MoreRoom::smallerWidth);
  EXPECT_EQ(overlap(*changeField(walls, Param::Width, "2")), 0);
  EXPECT_EQ(advice(wide), MoreRoom::fitBands);
  EXPECT_EQ(overlap(fitBands(wide)), 0);
  EXPECT_EQ(advice(narrow), MoreRoom::fewerCells);
  // Walls bring lines together that only lie apart at another swish.
  const Document tangled = fitBands(*randomKnot(Document(), seededRandom(60)));
  EXPECT_EQ(advice(tangled), MoreRoom::otherCurves);
  EXPECT_NEAR(overlap(tangled), 10.46, 0.01) << "the worst of several";
  // Nobody looks for what lies between thousands of crossings.
  const Document tangle =
      withField(withField(gridOf(Shape::Spiral, 20, 20), Param::Swish, "50"), Param::Width, "2");
  EXPECT_EQ(overlap(tangle), knotStyle(tangle.fields, {}).outerWidth());
  EXPECT_GT(overlap(withField(tangled, Param::Width, "2")), 0);
  EXPECT_EQ(overlap(withField(withField(tangled, Param::Width, "2"), Param::Swish, "3")), 0);
}

TEST(Fit, RandomKnotsAreDrawnAgainUntilTheirBandsHaveRoom) {
  int others = 0;
  for (std::uint64_t seed = 1; seed <= 30; ++seed) {
    const Document roomy = *roomyRandomKnot(Document(), seededRandom(seed));
    EXPECT_EQ(bandOverlap(roomy, *knotOf(roomy)), 0) << "seed " << seed;
    const Document first = fitBands(*randomKnot(Document(), seededRandom(seed)));
    const bool hasRoom = bandOverlap(first, *knotOf(first)) == 0;
    EXPECT_EQ(roomy == first, hasRoom) << "seed " << seed;
    others += !hasRoom;
  }
  EXPECT_GT(others, 0);
}

}  // namespace
}  // namespace lorivan
