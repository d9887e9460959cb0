// The bands as shapes, and the picture that is painted from them.
#include "strands/band_outline.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <tuple>

#include "contours.h"
#include "curve_maker.h"
#include "exact_picture.h"
#include "knot_maker.h"
#include "platform/none/recording_surface.h"
#include "strands/band_exits.h"
#include "strands/band_touches.h"
#include "strands/cut_drawing.h"
#include "strands/cut_room.h"
#include "strands/laid_bands.h"
#include "strands/untangle.h"
#include "tries.h"

namespace lorivan {
namespace {

/// A place of the 500-pixel picture, from its middle.
StrandPoint pixelAt(double x, double y, double height) {
  constexpr double kUnits = 2 * kHalfView / 500;
  return sampleAt(kUnits * x, 1.25 * kUnits * y, height);
}

/// One ring of the given radius in pixels, in slot 1, at one height.
KnotCurve ringOf(double radius) {
  KnotCurve curve;
  addSamples(curve, 1, samplesRound(60, [&](double turn) {
               return pixelAt(radius * std::cos(turn), radius * std::sin(turn), 1);
             }));
  return curve;
}

/// A closed line through places in pixels, in a slot, at one height.
void addLine(KnotCurve& curve, int slot, double height, std::initializer_list<Vec> places) {
  std::vector<StrandPoint> samples;
  for (const Vec p : places) samples.push_back(pixelAt(p.x, p.y, height));
  addSamples(curve, slot, samples);
}

TEST(BandExits, AreSoundWhereALineLeadsRightBack) {
  KnotCurve curve;
  addLine(curve, 1, -1, {{0, 0}, {10, 0}, {20, 0}, {30, 0}, {40, 0}, {30, 0}, {20, 0}, {10, 0}});
  addLine(curve, 2, 1, {{50, -20}, {44, -10}, {39, 0}, {44, 10}, {50, 20}, {60, 0}});
  const auto loops = bandLoops(curve, GridView());
  for (double half = 0.25; half < 10; half += 0.25) {
    const BandExits exits(loops, Seam(), half, half + 1, 0.016 * half);
    ASSERT_EQ(exits.crossings().size(), 2U);
    for (const BandCrossing& c : exits.crossings()) {
      const BandEnd end = exits.leave(c, 1);
      EXPECT_TRUE(!end.neck || std::isfinite(end.neck->at.x)) << half;
    }
  }
}

TEST(BandOutlines, OfATangleThereAreNone) {
  KnotCurve star;  // it crosses itself 60 times less one for each of its corners
  addSamples(star, 1, samplesRound(151, [corner = 0](double turn) mutable {
               return sampleAt(200 * std::cos(60 * turn), 200 * std::sin(60 * turn),
                               corner++ % 2 == 0 ? 1 : -1);
             }));
  const GridView view;
  EXPECT_FALSE(bandOutlines(star, view, {}).complete);
  EXPECT_TRUE(bandOutlines(star, view, {.uncut = true}).complete);
  const KnotStyle style;
  CutOptions options;
  EXPECT_FALSE(cutDrawing(star, style, view, options).complete);
  options.outlines = options.broken = false;
  EXPECT_EQ(cutDrawing(star, style, view, options).strands.size(), 1U) << "whole lines need no crossings";
  RecordingSurface laid(500, 500), drawn(500, 500);
  drawLaidBands(laid, star, style, view);
  drawKnot(drawn, star, style, view);
  EXPECT_TRUE(laid.inked() > 0 && std::ranges::equal(drawn.pixels(), laid.pixels()));
}

TEST(BandOutlines, ARingHasAHoleUntilItCloses) {
  OutlineOptions options;
  options.band = options.outer = 20;
  const BandOutlines wide = bandOutlines(ringOf(50), GridView(), options);
  ASSERT_EQ(wide.strands.size(), 1U);
  const auto& contours = wide.strands[0].stretches.at(0).contours;
  ASSERT_EQ(contours.size(), 2U);
  for (const BandContour& contour : contours) {
    EXPECT_EQ(contour.size() % 3, 1U);
    EXPECT_LE(contour.size(), 3 * 12 + 1U) << "few nodes";
    EXPECT_EQ(contour.front().x, contour.back().x);
  }
  EXPECT_NEAR(areaOf(contours) / (kTwoPi * 50 * 20), 1, 2e-3);
  EXPECT_LT(contourArea(contours[0]) * contourArea(contours[1]), 0);

  options.grow = 2;
  const BandOutlines grown = bandOutlines(ringOf(50), GridView(), options);
  EXPECT_NEAR(areaOf(grown.strands[0].stretches.at(0).contours) / (kTwoPi * 50 * 24), 1, 2e-3);

  const BandOutlines tight = bandOutlines(ringOf(8), GridView(), options);
  ASSERT_EQ(tight.strands[0].stretches.at(0).contours.size(), 1U) << "no hole is left";
  EXPECT_NEAR(contourArea(tight.strands[0].stretches[0].contours[0]), kPi * 20 * 20, 8);
}

/// A knot, and a view and widths with which its bands take a share of the room between its crossings.
struct Drawn {
  /// With walls drawn from a seed, if it is not 0.
  Drawn(Shape shape, int x, int y, int order, double share, std::uint64_t walls = 0)
      : knot(makeKnot(fieldsOf(shape, x, y))) {
    if (walls != 0) setWalls(seededRandom(walls));
    sampleStrands(*knot.store, order, samplesPerPoint(knot.fields.scale), knot.curve);
    fitView(view, *knot.graph);
    style.colours = strandColours(firstColourBoxes());
    const double room = smallestRoom(bandLoops(knot.curve, view));
    style.width = std::max(1.F, static_cast<float>(std::floor(room * share / 2)));
    style.edge = std::max(1.F, std::floor(style.width * 0.4F));
    fitView(view, *knot.graph, knot.curve, style);
  }
  void setWalls(const Rnd& random) {
    for (GridLine& line : knot.graph->Lines)
      if (line.Kind == kOrdinary && random() < 0.15) line.Kind = kWall;
    EXPECT_TRUE(collectPoints(*knot.graph));
    knot.trace();
  }
  MadeKnot knot;
  GridView view;
  KnotStyle style;
};

TEST(BandLoop, FindsTheNearestPlaceAtACorner) {
  const Drawn drawn(Shape::Diamond1, 2, 2, 2, 0.4);
  for (const BandLoop& loop : bandLoops(drawn.knot.curve, drawn.view))
    for (int i = 0; i < loop.size(); ++i) {
      const Vec out = unit(loop.point(i) - (loop.point(i - 1) + loop.point(i + 1)) * 0.5);
      const Vec from = loop.point(i) + out * 8;
      for (const double guess : {i - 0.8, i - 0.3, i + 0.6})
        ASSERT_LT(lengthOf(loop.spot(loop.nearest(from, guess)).at - from), 8.05) << i << " from " << guess;
    }
}

TEST(BandLoop, PassesTheSamplesThatItLeavesOut) {
  constexpr double kStray = 0.03;
  for (const Shape shape : {Shape::SquareSquare, Shape::Circular, Shape::Octagonal, Shape::Spiral})
    for (const int order : {2, 4}) {
      const Drawn drawn(shape, 12, 12, order, 0.4);
      const auto all = bandLoops(drawn.knot.curve, drawn.view);
      const auto few = bandLoops(drawn.knot.curve, drawn.view, kStray);
      ASSERT_EQ(few.size(), all.size());
      int samples = 0, kept = 0;
      for (std::size_t l = 0; l < all.size(); ++l) {
        samples += all[l].size();
        kept += few[l].size();
        double place = 0;
        for (int i = 0; i < all[l].size(); ++i) {
          const Vec sample = all[l].point(i);
          const auto off = [&](double at) { return lengthOf(few[l].spot(at).at - sample); };
          double best = few[l].nearest(sample, place);
          for (double guess = place; guess < place + 2; guess += 0.25)
            if (const double at = few[l].nearest(sample, guess); off(at) < off(best)) best = at;
          place = best;
          ASSERT_LT(off(place), 1.1 * kStray);
          ASSERT_NEAR(few[l].height(place), all[l].height(i), 0.1);
        }
        EXPECT_NEAR(place, few[l].size(), 4) << "once round";
      }
      EXPECT_LT(kept, samples) << shapeTable()[static_cast<std::size_t>(shape)].name << ' ' << order;
    }
}

TEST(BandExits, ArePlainAtEverySizeOrAtNone) {
  int plain = 0, others = 0;
  for (const Shape shape : {Shape::SquareTriangle, Shape::Circular, Shape::Diamond1, Shape::Star})
    for (const int order : {2, 3, 4}) {
      const Drawn drawn(shape, 5, 4, order, 0.5);
      std::vector<bool> ends[2];
      for (const int large : {0, 1}) {
        GridView view = drawn.view;
        if (large == 1) view.width *= 40;
        const double f = view.pixelFactor(), half = drawn.style.innerWidth() / 2 * f;
        const auto loops = bandLoops(drawn.knot.curve, view);
        const Seam seam;
        const BandExits exits(loops, seam, half, drawn.style.outerWidth() / 2 * f, 0.016 * half);
        for (const BandCrossing& c : exits.crossings())
          EXPECT_LT(lengthOf(loops[c.under].spot(c.underAt).at - loops[c.over].spot(c.overAt).at), 1e-5 * f);
        for (const BandCrossing& crossing : exits.crossings())
          for (const int direction : {-1, 1}) ends[large].push_back(exits.leave(crossing, direction).isPlain);
      }
      EXPECT_EQ(ends[0], ends[1]) << static_cast<int>(shape) << ' ' << order;
      for (const bool isPlain : ends[0]) ++(isPlain ? plain : others);
    }
  EXPECT_GT(std::min(plain, others), 50);
}

constexpr Colour kGround = 0x123456;

/// The bands alone.
void draw(Surface& surface, const Drawn& drawn, bool classic) {
  const PictureOptions options{.background = kGround, .showGrid = false, .classic = classic, .grid = {}};
  drawKnotPicture(surface, *drawn.knot.graph, drawn.knot.curve, drawn.style, drawn.view, options);
}

/// Pixels that are not as the distances say; below 0 where bands run into one another and have no one
/// picture.
int wrongPixels(const Drawn& drawn) {
  RecordingSurface surface(drawn.view.width, drawn.view.height());
  draw(surface, drawn, false);
  const auto loops = bandLoops(drawn.knot.curve, drawn.view);
  const ExactPicture exact(loops, drawn.view, drawn.style.innerWidth(), drawn.style.outerWidth());
  int wrong = 0, slot = 0;
  for (int y = 0; y < surface.height(); ++y)
    for (int x = 0; x < surface.width(); ++x) {
      const auto shows = exact.at(x, y, 0.8, slot);
      if (shows == ExactPicture::Shows::together) return -1;
      if (shows == ExactPicture::Shows::unclear) continue;
      const Colour band = shows == ExactPicture::Shows::band ? drawn.style.bandColour(slot) : 0;
      wrong += surface.pixel({x, y}) != (shows == ExactPicture::Shows::background ? kGround : band);
    }
  return wrong;
}

TEST(BandOutlines, ThePictureShowsWhatTheDistancesSay) {
  int looked = 0;
  for (int s = 0; s < kShapeCount - 1; ++s)
    for (int order = 2; order <= 6; ++order) {
      if (isLeftOut(s + order)) continue;
      const auto shape = static_cast<Shape>(s);
      const int wrong = wrongPixels(Drawn(shape, 2 + order % 2, 2, order, 0.35 + 0.05 * (s % 3)));
      looked += wrong >= 0;
      EXPECT_LE(wrong, 0) << shapeTable()[s].name << ", order " << order;
    }
  EXPECT_GE(looked, tries(43));
  // Corners within crossings, and bands that go over one leg of a corner and under the other.
  EXPECT_EQ(wrongPixels(Drawn(Shape::Circular, 6, 4, 2, 0.396)), 0);
  EXPECT_EQ(wrongPixels(Drawn(Shape::SquareSquare, 7, 5, 2, 0.55)), 0);
}

TEST(BandOutlines, BandsBesideWallsAreAsTheDistancesSay) {
  // In gaps next to crossings, round bends, in loops that lie over themselves, where lines nearly meet or
  // lie on one another, at flat crossings and under a band that goes round a whole ring.
  for (const std::uint64_t seed : {11, 16, 31, 107, 131, 334, 511, 757, 909}) {
    const auto n = static_cast<int>(seed);
    const Drawn drawn(static_cast<Shape>(n % 12), 3 + n % 2, 3, 2 + n % 5, 0.45 + 0.05 * (n % 3), seed);
    EXPECT_EQ(wrongPixels(drawn), 0) << seed;
  }
  // Bands that touch where a piece of a line begins, and those that come near right beside their crossing.
  EXPECT_EQ(wrongPixels(Drawn(Shape::Hexagonal, 5, 4, 2, 0.5, 5)), 0);
  EXPECT_EQ(wrongPixels(Drawn(Shape::Circular, 5, 4, 2, 0.7, 5)), 0);
}

TEST(BandOutlines, ContoursThatCrossThemselvesAreTakenApart) {
  // A square with a fold of one unit outside its right side, drawn in the other sense.
  const auto square =
      untangled(polygon({{0, 0}, {10, 0}, {10, 5}, {11, 4}, {11, 5}, {10, 4}, {10, 10}, {0, 10}}), 2, 9);
  ASSERT_EQ(square.size(), 1U);
  EXPECT_FALSE(crossesItself(square[0]));
  EXPECT_NEAR(contourArea(square[0]), 100, 1);
  // A band that runs round a hole and closes over its own beginning.
  const std::vector<PointF> round{{0, 2}, {0, 0}, {10, 0}, {10, 10}, {0, 10},
                                  {0, 1}, {2, 1}, {2, 8},  {8, 8},   {8, 2}};
  EXPECT_TRUE(crossesItself(polygon(round)));
  const auto ring = untangled(polygon(round), 2, 9);
  ASSERT_EQ(ring.size(), 2U);
  EXPECT_NEAR(contourArea(ring[0]), 100, 1);
  EXPECT_NEAR(contourArea(ring[1]), -36, 1);
  EXPECT_EQ(untangled(polygon(round), 2, 40).size(), 1U) << "a fold";
  // A side that leads back over the one before it.
  BandContour bend{{0, 0}, {3, 0}, {7, 0}, {10, 0}, {10, 10}, {-30, -30}, {10, 10}, {7, 7}, {3, 3}, {0, 0}};
  EXPECT_TRUE(crossesItself(bend));
  std::ranges::reverse(bend);
  EXPECT_TRUE(crossesItself(bend));
}

/// Whether a pixel's colour is found in the other picture no further than a pixel away.
bool isNearby(const Surface& other, PointI at, Colour colour) {
  for (int dy = -1; dy <= 1; ++dy)
    for (int dx = -1; dx <= 1; ++dx)
      if (other.pixel({at.x + dx, at.y + dy}) == colour) return true;
  return false;
}

TEST(BandOutlines, TheClassicPictureIsTheSameToAPixelButForItsBlemishes) {
  for (const auto& [shape, columns, rows, order] : {std::tuple(Shape::SquareSquare, 3, 3, 4),
                                                    {Shape::SquareSquare, 4, 3, 2},
                                                    {Shape::Octagonal, 3, 2, 2},
                                                    {Shape::Triangle, 3, 3, 4},
                                                    {Shape::Hexagonal, 2, 2, 4},
                                                    {Shape::Diamond1, 3, 3, 4},
                                                    {Shape::Circular, 6, 2, 5}}) {
    const Drawn drawn(shape, columns, rows, order, 0.3);
    RecordingSurface shapes(drawn.view.width, drawn.view.height()),
        classic(drawn.view.width, drawn.view.height());
    draw(shapes, drawn, false);
    draw(classic, drawn, true);
    // The classic blemish is black that the end of a stretch on top leaves on a coloured band.
    int apart = 0, blemished = 0;
    for (int y = 0; y < shapes.height(); ++y)
      for (int x = 0; x < shapes.width(); ++x) {
        const Colour here = shapes.pixel({x, y}), there = classic.pixel({x, y});
        if (isNearby(classic, {x, y}, here) && isNearby(shapes, {x, y}, there)) continue;
        ++(there == 0 && here != kGround ? blemished : apart);
      }
    EXPECT_EQ(apart, 0) << shapeTable()[static_cast<std::size_t>(shape)].name;
    EXPECT_LT(blemished, shapes.inked() / 100);
  }
}

TEST(BandOutlines, BandsBesideAWallKeepAnEdgeBetweenThem) {
  // Two rings, one of them with a dent, whose centre lines come as near as six pixels.
  KnotCurve curve;
  for (const int slot : {1, 2})
    addSamples(curve, slot, samplesRound(80, [&](double turn) {
                 const double radius = slot == 1 ? 60 : 54 - 20 * std::sin(turn) * std::sin(turn);
                 return pixelAt(radius * std::cos(turn), radius * std::sin(turn), 1);
               }));
  const OutlineOptions options{.band = 14, .outer = 18};
  const auto loops = bandLoops(curve, GridView());
  const BandTouches found = findBandTouches(loops, {}, {}, {}, {(options.band + options.outer) / 2});
  ASSERT_EQ(found.touches.size(), 2U) << "left and right";
  for (const BandTouch& touch : found.touches) EXPECT_NEAR(touch.distance, 6, 0.3);
  const BandOutlines outlines = bandOutlines(curve, GridView(), options);
  ASSERT_EQ(outlines.strands.size(), 2U);
  for (const StrandOutline& strand : outlines.strands)
    EXPECT_GT(areaOf(strand.stretches.at(0).contours), 14 * kTwoPi * 38) << "most of the band is left";
  const std::vector<BandContour> contours = contoursOf(outlines);
  EXPECT_EQ(contours.size(), 4U);
  const double edge = (options.outer - options.band) / 2;
  EXPECT_TRUE(lieApart(contours, 0.85 * edge));
  EXPECT_FALSE(lieApart(contours, 1.15 * edge)) << "but not further";
}

TEST(BandTouches, GoRoundARingOnceEachWayAtMost) {
  const std::vector<BandLoop> loops{bandLoops(ringOf(20), GridView()).front(),
                                    bandLoops(ringOf(26), GridView()).front()};
  const BandTouches found = findBandTouches(loops, {}, {}, {}, {15});
  ASSERT_EQ(found.touches.size(), 1U);
  for (const BandPiece& piece : {found.touches[0].first, found.touches[0].second}) {
    EXPECT_GE(piece.to - piece.from, piece.loop.size());
    EXPECT_LE(piece.to - piece.from, 2 * piece.loop.size() + 4);
  }
}

/// The least distance of bands that touch.
double nearest(const BandTouches& found) {
  double least = HUGE_VAL;
  for (const BandTouch& touch : found.touches) least = std::min(least, touch.distance);
  for (const BandClasp& clasp : found.clasps) least = std::min(least, clasp.distance);
  return least;
}

TEST(BandTouches, FacesLoseNoneOfThem) {
  std::size_t touches = 0, clasps = 0;
  for (const Shape shape : {Shape::SquareSquare, Shape::SquareTriangle, Shape::Hexagonal, Shape::Circular,
                            Shape::Octagonal, Shape::Star})
    for (const int order : {2, 4}) {
      const Drawn drawn(shape, 5, 4, order, 0.4);
      auto loops = bandLoops(drawn.knot.curve, drawn.view);
      const double reach = 0.6 * smallestRoom(loops);
      const auto find = [&](double most, bool one) {
        const auto crossings = findBandCrossings(loops);
        return findBandTouches(loops, crossings, bandPassings(loops.size(), crossings), {},
                               {.reach = reach, .most = most, .one = one});
      };
      const BandTouches byFaces = find(reach, false);
      // With a ring far away from the knot the faces do not hang together: every pair is looked at.
      loops.push_back(bandLoops(ringOf(20), GridView()).front().moved(3000));
      const BandTouches all = find(reach, false);
      EXPECT_EQ(byFaces.touches.size(), all.touches.size()) << static_cast<int>(shape) << ' ' << order;
      EXPECT_EQ(byFaces.clasps.size(), all.clasps.size()) << static_cast<int>(shape) << ' ' << order;
      // Who asks for nearer ones alone gets the nearest one, and who asks for any gets some.
      const double least = nearest(all);
      EXPECT_EQ(nearest(find(least * 1.01, false)), least);
      EXPECT_EQ(nearest(find(least * 0.99, false)), HUGE_VAL);
      const BandTouches one = find(reach, true);
      EXPECT_EQ(one.touches.empty() && one.clasps.empty(), least == HUGE_VAL);
      EXPECT_LE(one.touches.size(), 1U);
      touches += all.touches.size();
      clasps += all.clasps.size();
    }
  EXPECT_GT(touches, 0U);
  EXPECT_GT(clasps, 0U);
}

TEST(BandOutlines, CrossingsWithoutRoomChangePlacesHalfWay) {
  const KnotStyle style{.width = 14, .colours = {}};
  const MadeKnot made = makeKnot(fieldsOf(Shape::SquareSquare, 5, 4));
  KnotCurve curve;
  sampleStrands(*made.store, 4, 5, curve);
  GridView view;
  fitView(view, *made.graph, curve, style);
  const OutlineOptions options{.band = style.innerWidth() * 1.2, .outer = style.outerWidth()};
  const BandOutlines outlines = bandOutlines(curve, view, options);
  EXPECT_GT(outlines.crowded, 0);
  EXPECT_LE(outlines.crowded, 8) << "at the four corners only";
  EXPECT_TRUE(lieApart(contoursOf(outlines), (options.outer - options.band) / 4));
}

}  // namespace
}  // namespace lorivan
