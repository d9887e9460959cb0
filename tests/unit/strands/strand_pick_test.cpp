// Which strand lies under the pointer, and what is told of it.
#include "strands/strand_pick.h"

#include <gtest/gtest.h>

#include "curve_maker.h"
#include "knot_maker.h"
#include "platform/none/recording_surface.h"
#include "tries.h"

namespace lorivan {
namespace {

/// A knot, and a picture that shows every strand in a colour of its own.
struct Shown {
  Shown(const GridFields& fields, float width, float edge)
      : knot(makeKnot(fields, {.startColour = 1})), style{.width = width, .edge = edge, .colours = {}} {
    EXPECT_EQ(knot.error, "");
    for (int k = 1; k < kStrandSlots; ++k) style.colours.argb[k] = toArgb(0x400000 + k);
    fitView(view, *knot.graph, knot.curve, style);
    drawKnot(picture, knot.curve, style, view);
  }
  MadeKnot knot;
  KnotStyle style;
  GridView view{knot.settings.stretch, 1000};
  RecordingSurface picture{1000, 800};
};

TEST(StrandPick, TheStrandThatIsSeenIsFound) {
  for (const Shape shape : {Shape::SquareSquare, Shape::Octagonal, Shape::Spiral}) {
    const auto [knot, style, view, picture] = Shown(fieldsOf(shape, 4, 3, 24), 6, 2);
    KnotStyle thinner = style;
    thinner.width = 5;
    constexpr int kStep = kOneTryOf == 1 ? 7 : 13;
    int seen = 0, wrong = 0;
    for (int y = 0; y < 800; y += kStep)
      for (int x = 0; x < 1000; x += kStep) {
        const int slot = strandAt(knot.curve, style, view, x, y);
        const Colour colour = picture.pixel({x, y});
        // Between its samples the curve is followed to a pixel or two.
        EXPECT_TRUE(colour != 0xFFFFFF || strandAt(knot.curve, thinner, view, x, y) == 0) << x << ' ' << y;
        if ((colour & 0xFFFF00) != 0x400000) continue;
        wrong += slot != static_cast<int>(colour & 0xFF) ? 1 : 0;
        ++seen;
      }
    EXPECT_TRUE(seen > tries(500) && wrong < seen / 100) << wrong << " of " << seen;
  }
}

TEST(StrandPick, TheHighestPassageOfAStrandCounts) {
  const GridView view(0.8F, 1000);
  for (const float first : {-1.0F, 1.0F}) {
    KnotCurve curve;
    // It passes the middle from left to right, and later from top to bottom.
    addSamples(
        curve, 1,
        {{-40, 0, first}, {40, 0, first}, {40, 40, 0}, {0, 40, -first}, {0, -40, -first}, {-40, -40, 0}});
    addSamples(curve, 2, {{-30, -30, 0}, {30, 30, 0}, {50, 30, 0}, {50, -50, 0}});
    EXPECT_EQ(strandAt(curve, {}, view, 500, 400), 1) << first;
    EXPECT_EQ(strandAt(curve, {}, view, 500 + 15 * 1000 / 202.0, 400 - 12 * 1000 / 202.0), 2);
  }
}

TEST(StrandPick, TheMarkFollowsTheBorderOfWhatIsSeen) {
  const auto [knot, style, view, picture] = Shown(fieldsOf(Shape::SquareSquare, 3, 3, 30), 12, 8);
  RecordingSurface marked(1000, 800);
  drawKnot(marked, knot.curve, style, view);
  int slot = 1;
  while (!knot.curve.used(slot)) ++slot;
  drawStrandMark(marked, knot.curve, style, view, slot);
  int bright = 0, far = 0;
  for (int y = 10; y < 790; ++y)
    for (int x = 10; x < 990; ++x) {
      if (marked.pixel({x, y}) == picture.pixel({x, y})) continue;
      bright += marked.pixel({x, y}) == 0x20F0FF;
      // Some pixels on there is the strand's own band, and something else.
      int own = 0, all = 0;
      for (int dy = -9; dy <= 9; dy += 3)
        for (int dx = -9; dx <= 9; dx += 3, ++all)
          own += picture.pixel({x + dx, y + dy}) == static_cast<Colour>(0x400000 + slot);
      far += own == 0 || own == all;
    }
  EXPECT_GT(bright, 3000);
  EXPECT_EQ(far, 0);
}

TEST(StrandPick, AStrandOfATangleIsMarkedWhole) {
  const MadeKnot knot = makeKnot(fieldsOf(Shape::Octagonal, 12, 12, 6), {.startColour = 1});
  KnotStyle style;
  style.width = 30;
  GridView view(knot.settings.stretch, 500);
  fitView(view, *knot.graph, knot.curve, style);
  int slot = 1;
  while (!knot.curve.used(slot)) ++slot;
  RecordingSurface marked(500, 400);
  drawStrandMark(marked, knot.curve, style, view, slot);
  EXPECT_GT(marked.inked(), 1000);
}

TEST(StrandPick, LengthGrowsWithTheScaleAndPassagesAddUp) {
  const MadeKnot small = makeKnot(fieldsOf(Shape::SquareSquare, 3, 2, 10)),
                 large = makeKnot(fieldsOf(Shape::SquareSquare, 3, 2, 30));
  int passed = 0;
  for (int slot = 1; slot < kStrandSlots; ++slot) {
    if (!small.curve.used(slot)) continue;
    passed += crossingsPassed(*small.store, slot);
    const double length = strandLength(small.curve, slot, small.settings.stretch);
    EXPECT_NEAR(strandLength(large.curve, slot, large.settings.stretch) / length, 3, 0.1);
    EXPECT_GT(length, 14.0 * crossingsPassed(*small.store, slot) * 0.4) << "crossings lie 7 units apart";
  }
  // A square's sides, in pixels of a view that shows 202 units across 1000 pixels.
  KnotCurve square;
  addSamples(square, 1, {{0, 0, 0}, {50, 0, 0}, {50, 50, 0}, {0, 50, 0}});
  EXPECT_NEAR(strandLength(square, 1, GridView(0.8F, 1000)), (100 + 100 * 0.8) * 1000 / 202, 0.01);
  EXPECT_EQ(passed, 2 * countKnot(*small.graph, *small.store).crossings);
}

}  // namespace
}  // namespace lorivan
