// Knots that go round a cylinder: the walk, the flat picture of one period, and what is cut out of it.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numeric>

#include "contours.h"
#include "graph/strand_runs.h"
#include "knot_maker.h"
#include "platform/none/recording_surface.h"
#include "strands/cut_drawing.h"
#include "strands/drawn_box.h"
#include "strands/strand_pick.h"
#include "strands/svg_surface.h"

namespace lorivan {
namespace {

constexpr Shape kFamilies[] = {Shape::SquareSquare, Shape::SquareTriangle, Shape::Triangle, Shape::Hexagonal,
                               Shape::RegularHexagonal};

MadeKnot wrappedKnot(Shape shape, int x, int y, const Rnd* random = nullptr, float scale = 30) {
  return makeKnot(wrappedFieldsOf(shape, x, y, scale), {}, random);
}

/// Over and under by turns along every strand, from its last crossing on to its first as well.
bool alternates(const StrandStore& store) {
  for (int slot = 1; slot < kStrandSlots; ++slot) {
    const int count = store.ThreadCount[slot];
    for (int i = 1; i < count; i += 2)
      if (store.point(slot, i).z == store.turned(slot, i + 2).z) return false;
  }
  return true;
}

TEST(Wrapped, EveryLineIsPassedTwiceAndHeightsAlternateRightRound) {
  for (const Shape shape : kFamilies)
    for (int x = 1; x <= 12; ++x)
      for (int y = 1; y <= 8; ++y) {
        SCOPED_TRACE(::testing::Message() << static_cast<int>(shape) << ' ' << x << " x " << y);
        const MadeKnot knot = wrappedKnot(shape, x, y);
        ASSERT_EQ(knot.error, "");
        ASSERT_EQ(knot.graph->wrap.period, knot.graph->CellSize * knot.fields.XNo);
        ASSERT_EQ(wronglyPassed(*knot.graph), 0);
        EXPECT_TRUE(alternates(*knot.store));
        const StrandRuns runs(*knot.graph);
        const int strands = runs.count(runs.walls()).strands;
        EXPECT_EQ(std::min(strands, kMostStrands), countKnot(*knot.graph, *knot.store).strands);
      }
}

TEST(Wrapped, WallsAndGapsAcrossTheSeamLoseNoStrand) {
  for (std::uint64_t seed = 1; seed <= 300; ++seed) {
    const Rnd random = seededRandom(seed);
    const MadeKnot knot = wrappedKnot(kFamilies[seed % 5], 1 + static_cast<int>(seed % 12),
                                      3 + static_cast<int>(seed % 7), &random);
    ASSERT_EQ(knot.error, "") << seed;
    EXPECT_EQ(wronglyPassed(*knot.graph), 0) << seed;
  }
}

TEST(Wrapped, SquaresGiveAsManyStrandsAsTheirCountsSay) {
  // Every strand runs to one side for ever, by twice the height of the band from one lower turn to the next.
  for (int x = 1; x <= 17; ++x)
    for (int y = 1; y <= 6; ++y) {
      const MadeKnot knot = wrappedKnot(Shape::SquareSquare, x, y, nullptr, 10);
      const int strands = std::gcd(x, 2 * (y + 1));
      EXPECT_EQ(countKnot(*knot.graph, *knot.store).strands, strands) << x << " x " << y;
      EXPECT_EQ(std::abs(knot.store->turns[12]), 2 * (y + 1) / strands) << x << " x " << y;
    }
}

const KnotStyle kStyle{.width = 5, .edge = 2, .startColour = 12, .colours = {}};

/// A view in which a period is a whole number of pixels, with the seam at a whole pixel.
GridView evenView(const MadeKnot& knot, int period) {
  GridView view(knot.settings.stretch, 500);
  view.zoom = knot.graph->wrap.period * 500 / (2 * kHalfView * period);
  view.centreX = knot.graph->wrap.left + knot.graph->wrap.period * (500 / 2 - 20.0) / period;
  return view;
}

/// The knot drawn with the seam elsewhere shows at the old seam what two pictures side by side do.
void expectNoSeam(const MadeKnot& knot) {
  constexpr int kPeriod = 240, kLeft = 20, kMoved = 101;
  const GridView view = evenView(knot, kPeriod);
  const KnotStyle style{
      .width = 6, .edge = 2, .startColour = 12, .colours = strandColours(firstColourBoxes())};
  const auto drawn = [&](const KnotCurve& curve) {
    auto surface = std::make_unique<RecordingSurface>(500, 400);
    surface->clear(0xFFFFFF);
    drawKnot(*surface, curve, style, view);
    return surface;
  };
  KnotCurve moved = knot.curve;
  // Units of the wrap are whole: the picture is moved instead of the seam.
  for (float& x : moved.X) x -= static_cast<float>(kMoved * 1.0 * knot.graph->wrap.period / kPeriod);
  const auto plain = drawn(knot.curve), other = drawn(moved);
  int different = 0, inked = 0;
  for (int y = 0; y < 400; ++y)
    for (int x = 0; x < kPeriod; ++x) {
      const Colour a = plain->pixel({kLeft + (x + kMoved) % kPeriod, y}), b = other->pixel({kLeft + x, y});

      inked += a != 0xFFFFFF;
      different += std::max({std::abs(redOf(a) - redOf(b)), std::abs(greenOf(a) - greenOf(b)),
                             std::abs(blueOf(a) - blueOf(b))}) > 24;
    }
  EXPECT_GT(inked, 5000);
  EXPECT_LE(different, 8);  // all edges are hard here: a rounding moves a pixel
  EXPECT_EQ(plain->pixel({kLeft - 1, 200}), 0xFFFFFFU);
}

TEST(Wrapped, ThePictureGoesOnAcrossTheSeam) {
  for (const Shape shape : kFamilies)
    for (const int x : {1, 2, 3, 6}) {
      SCOPED_TRACE(::testing::Message() << static_cast<int>(shape) << ' ' << x);
      expectNoSeam(wrappedKnot(shape, x, 2));
    }
  for (std::uint64_t seed = 1; seed <= 12; ++seed) {
    SCOPED_TRACE(seed);
    const Rnd random = seededRandom(seed);
    expectNoSeam(wrappedKnot(kFamilies[seed % 5], 4, 5, &random));
  }
}

/// Where straight ends of pieces lie on a seam: low and high ends, ascending.
std::vector<double> endsOn(double seam, const CutDrawing& drawing) {
  std::vector<double> ends;
  for (const CutStrand& strand : drawing.strands)
    for (const CutShape& shape : strand.shapes)
      for (const BandContour& contour : shape)
        for (std::size_t i = 0; i + 3 < contour.size(); i += 3)
          if (std::abs(contour[i].x - seam) < 1e-2 && std::abs(contour[i + 3].x - seam) < 1e-2 &&
              std::abs(contour[i + 3].y - contour[i].y) > 0.5)
            ends.insert(ends.end(), {contour[i].y, contour[i + 3].y});
  std::ranges::sort(ends);
  return ends;
}

TEST(Wrapped, PiecesAreClosedAtTheSeamsAndMatchThere) {
  const CutOptions options{.millimetres = 100};
  for (const Shape shape : kFamilies)
    for (const int x : {1, 4, 6}) {
      SCOPED_TRACE(::testing::Message() << static_cast<int>(shape) << ' ' << x);
      MadeKnot knot = wrappedKnot(shape, x, 3);
      const GridView view = evenView(knot, 400);
      const CutDrawing cut = cutDrawing(knot.curve, kStyle, view, options);
      EXPECT_TRUE(cut.apart);
      EXPECT_NEAR(cut.box.left, 20, 1e-3);
      EXPECT_NEAR(cut.box.right, 420, 1e-3);
      const std::vector<double> left = endsOn(20, cut), right = endsOn(420, cut);
      ASSERT_EQ(left.size(), right.size());
      EXPECT_GE(left.size(), 4U);
      for (std::size_t i = 0; i < left.size(); ++i) EXPECT_NEAR(left[i], right[i], 0.02);
      // Wherever it is cut there is as much of it.
      for (float& at : knot.curve.X) at += static_cast<float>(knot.graph->wrap.period * 0.3);
      EXPECT_NEAR(areaOf(cut), areaOf(cutDrawing(knot.curve, kStyle, view, options)), areaOf(cut) * 1e-3);
    }
}

TEST(Wrapped, VectorFilesClipWhatTheyDrawToThePeriod) {
  const MadeKnot knot = wrappedKnot(Shape::Triangle, 4, 2);
  const GridView view = evenView(knot, 400);
  for (const bool classic : {false, true}) {
    const PictureBox box = drawnBox(knot.curve, kStyle, view, classic);
    EXPECT_NEAR(box.left, 20, 1e-3);
    EXPECT_NEAR(box.right, 420, 1e-3);
    SvgSurface svg({view.width, view.height(), 50});
    classic ? drawClassicKnot(svg, knot.curve, kStyle, view) : drawKnot(svg, knot.curve, kStyle, view);
    const std::string text = svg.finish();
    EXPECT_NE(text.find("<rect x=\"2\" y=\"0\" width=\"40\" height=\"40\"/>"), std::string::npos);
    std::size_t groups = 0, clips = 0;
    for (std::size_t at = 0; (at = text.find("\n  <g ", at)) != std::string::npos; ++at) ++groups;
    for (std::size_t at = 0; (at = text.find("clip-path=", at)) != std::string::npos; ++at) ++clips;
    EXPECT_EQ(groups, clips);
    EXPECT_EQ(groups, 2U);
  }
}

TEST(Wrapped, AStrandIsPickedWhereverItsCopiesAreShown) {
  const MadeKnot knot = wrappedKnot(Shape::SquareSquare, 5, 3);
  const GridView view = evenView(knot, 400);
  int found = 0;
  for (std::size_t i = 0; i < knot.curve.X.size(); i += 7) {
    const SamplePlace at = samplePlace(knot.curve, i, view);
    const double x = 20 + std::fmod(std::fmod(at.x - 20, 400) + 400, 400);
    found += strandAt(knot.curve, kStyle, view, x, at.y) == 12;
    EXPECT_EQ(strandAt(knot.curve, kStyle, view, x + 400, at.y) == 12, x < 26)
        << "beyond the seam nothing is shown";
  }
  EXPECT_EQ(found, static_cast<int>((knot.curve.X.size() + 6) / 7));
  // 8 laps up and down at 45 degrees, less what the smoothing cuts off at the turns.
  EXPECT_NEAR(strandLength(knot.curve, 12, 0.8F), 8 * 5 * 30 * std::sqrt(2.0), 100);
}

}  // namespace
}  // namespace lorivan
