// Bands that are laid on one another show what their outlines show.
#include "strands/laid_bands.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "knot_maker.h"
#include "platform/none/recording_surface.h"
#include "strands/band_loop.h"

namespace lorivan {
namespace {

constexpr int kWidth = 500, kHeight = 400;

struct Woven {
  Woven(const GridFields& fields, int order, float width) : knot(makeKnot(fields)) {
    sampleStrands(*knot.store, order, samplesPerPoint(knot.fields.scale), knot.curve);
    style.width = width;
    style.edge = 1;
    style.colours = strandColours(firstColourBoxes());
    fitView(view, *knot.graph, knot.curve, style);
  }
  RecordingSurface laid() const {
    RecordingSurface surface(kWidth, kHeight);
    drawLaidBands(surface, knot.curve, style, view);
    return surface;
  }
  bool isFine(bool crowded = false) const { return isFinelyWoven(knot.curve, style, view, crowded); }

  MadeKnot knot;
  GridView view;
  KnotStyle style;
};

/// Pixels of one picture whose colour is not between those that another one has next to them.
int pixelsOff(const RecordingSurface& picture, const RecordingSurface& other) {
  constexpr int kTolerance = 64;
  const std::span<const std::uint32_t> here = picture.pixels(), there = other.pixels();
  const auto isOff = [&](int at, int shift) {
    int low = 255, high = 0;
    for (const int row : {at - kWidth, at, at + kWidth})
      for (int near = row - 1; near <= row + 1; ++near) {
        const auto value = static_cast<int>(there[near] >> shift & 0xFF);
        low = std::min(low, value);
        high = std::max(high, value);
      }
    const auto value = static_cast<int>(here[at] >> shift & 0xFF);
    return value < low - kTolerance || value > high + kTolerance;
  };
  int off = 0;
  for (int y = 1; y + 1 < kHeight; ++y)
    for (int at = y * kWidth + 1; at < (y + 1) * kWidth - 1; ++at)
      off += isOff(at, 0) || isOff(at, 8) || isOff(at, 16);
  return off;
}

TEST(LaidBands, ShowWhatOutlinesShow) {
  for (const auto& [fields, order] : {std::pair{fieldsOf(Shape::SquareSquare, 20, 20, 10), 2},
                                      {fieldsOf(Shape::Octagonal, 14, 14, 10), 4},
                                      {fieldsOf(Shape::Diamond2, 20, 20, 10), 2},
                                      {wrappedFieldsOf(Shape::SquareSquare, 20, 20, 10), 4}}) {
    SCOPED_TRACE(static_cast<int>(fields.shape) * 10 + order);
    Woven woven(fields, order, 2);
    EXPECT_TRUE(woven.isFine());
    RecordingSurface outlines(kWidth, kHeight, false);  // as in a file
    drawKnot(outlines, woven.knot.curve, woven.style, woven.view);
    EXPECT_GT(outlines.count(DrawKind::fillPath), 0) << "nobody lays bands in files";
    const int off = pixelsOff(woven.laid(), outlines);
    EXPECT_LT(off, 40);
    for (float& height : woven.knot.curve.Z) height = -height;
    EXPECT_GT(pixelsOff(woven.laid(), outlines), 100 * (1 + off)) << "over and under are not the same";
  }
}

TEST(LaidBands, AreForManyThinBandsOrCrowdedOnes) {
  EXPECT_FALSE(Woven(fieldsOf(Shape::SquareSquare, 8, 8, 20), 4, 2).isFine(true)) << "few crossings";
  Woven wide(fieldsOf(Shape::SquareSquare, 16, 16, 12), 4, 5);
  EXPECT_FALSE(wide.isFine()) << "anybody sees how they are drawn";
  EXPECT_FALSE(wide.isFine(true)) << "they have room";
  wide.style.width = 14;
  wide.style.edge = 13;
  EXPECT_FALSE(wide.isFine()) << "wide edges are seen beside thin bands";
  wide.style.edge = 6;
  EXPECT_TRUE(wide.isFine(true));
  RecordingSurface quick(kWidth, kHeight);
  drawKnot(quick, wide.knot.curve, wide.style, wide.view, true);
  EXPECT_TRUE(std::ranges::equal(quick.pixels(), wide.laid().pixels()));
  RecordingSurface classic(kWidth, kHeight);
  drawClassicKnot(classic, wide.knot.curve, wide.style, wide.view);
  const auto coloured = [](const RecordingSurface& picture) {
    return std::ranges::count_if(picture.pixels(),
                                 [](std::uint32_t p) { return p << 8 != 0 && ~p << 8 != 0; });
  };
  EXPECT_GT(coloured(quick), coloured(classic)) << "black lies on black";
}

TEST(BandLoop, PartsLieOnTheLine) {
  const Woven woven(fieldsOf(Shape::Octagonal, 4, 3, 20), 4, 5);
  std::vector<OverRun> runs;
  for (const BandLoop& loop : bandLoops(woven.knot.curve, woven.view, 0.03)) {
    overRuns(woven.knot.curve, loop.slot(), runs);
    const auto stretches = loop.upperStretches();
    EXPECT_EQ(stretches.size(), runs.size());
    for (const auto& [from, to] : stretches) {
      const double begin = loop.placeOf(from), end = loop.placeOf(to);
      EXPECT_TRUE(begin < end && begin < loop.size() && end < 2 * loop.size());
      for (const double place : {begin, (begin + end) / 2, end})
        EXPECT_GE(loop.height(loop.wrapped(place)), 0);
      EXPECT_LT(loop.height(loop.wrapped(loop.placeOf(from - 1))), 0);
      EXPECT_LT(loop.height(loop.wrapped(loop.placeOf(to + 1))), 0);
      std::vector<PointF> chain;
      loop.appendPart(begin + 0.3, end, chain);
      ASSERT_EQ(chain.size() % 3, 1U);
      double place = begin + 0.3;
      for (std::size_t i = 0; i + 3 < chain.size(); i += 3) {
        const double next = std::min(std::floor(place) + 1, end);
        const auto part = [&](std::size_t k, double weight) {
          return Vec{chain[i + k].x * weight, chain[i + k].y * weight};
        };
        const Vec middle = part(0, 1. / 8) + part(1, 3. / 8) + part(2, 3. / 8) + part(3, 1. / 8);
        EXPECT_LT(lengthOf(middle - loop.spot((place + next) / 2).at), 1e-3) << place;
        place = next;
      }
    }
  }
}

}  // namespace
}  // namespace lorivan
