// Curves, bands and what a picture of them holds.
#include <gtest/gtest.h>

#include <array>
#include <charconv>
#include <clocale>
#include <cmath>

#include "knot_maker.h"
#include "platform/none/recording_surface.h"
#include "strands/bspline.h"
#include "strands/svg_surface.h"

namespace lorivan {
namespace {

TEST(Bspline, WeightsMatchTheClosedForms) {
  const BsplineTable quadratic(3, 4), cubic(4, 2);
  const double quarter[] = {0.25 * 0.25 / 2, (-2 * 1.25 * 1.25 + 6 * 1.25 - 3) / 2, 0.75 * 0.75 / 2};
  for (int j = 0; j < 3; ++j) EXPECT_NEAR(quadratic.weights(1)[j], quarter[j], 1e-12);
  const double half[] = {1.0 / 48, 23.0 / 48, 23.0 / 48, 1.0 / 48};
  for (int j = 0; j < 4; ++j) EXPECT_NEAR(cubic.weights(1)[j], half[j], 1e-12);
  for (int order = 2; order <= 20; ++order) {
    const BsplineTable table(order, 5);
    for (int phase = 0; phase < 5; ++phase) {
      double sum = 0;
      for (int j = 0; j < order; ++j) sum += std::fabs(table.weights(phase)[j]);
      EXPECT_NEAR(sum, 1, 1e-12);
    }
  }
}

TEST(KnotCurve, LargerScalesHaveMoreSamples) {
  EXPECT_EQ(samplesPerPoint(20) * 100 + samplesPerPoint(19.9F) * 10 + samplesPerPoint(9), 543);
}

TEST(KnotDrawing, BandsLieBlackUnderColourAndOversOnTop) {
  const MadeKnot knot = makeKnot(fieldsOf(Shape::Triangle, 1, 1));
  const KnotStyle style{.edge = 20, .colours = strandColours(firstColourBoxes())};
  RecordingSurface surface(1000, 800);
  GridView view(0.8F, 1000);
  fitView(view, *knot.graph, knot.curve, style);
  drawKnotPicture(surface, *knot.graph, knot.curve, style, view, {.classic = true, .grid = {}});
  EXPECT_GT(surface.count(DrawKind::segment), 0);
  std::vector<DrawCall> strokes = surface.calls();
  std::erase_if(strokes, [](const DrawCall& call) { return call.kind != DrawKind::wideCurve; });
  ASSERT_EQ(strokes.size(), 2U + 2 * 3) << "a trefoil is over three times";
  EXPECT_EQ(strokes[0].size, 28) << "14 pixels at twice the reference size";
  EXPECT_EQ(strokes[0].colour, 0U);
  EXPECT_EQ(strokes[1].size, 4) << "never thinner than 2 pixels";
  EXPECT_EQ(strokes[1].colour, QBColor(12));
  EXPECT_TRUE(strokes[1].caps == CapStyle::round && strokes[2].caps == CapStyle::flat &&
              strokes[3].caps == CapStyle::round);
  EXPECT_EQ(strokes[3].points.size(), strokes[2].points.size() + 2 * 3)
      << "black stops two points before colour";
}

TEST(KnotDrawing, PointsAreWholePixelsAtTheReferenceSize) {
  const MadeKnot knot = makeKnot(fieldsOf(Shape::Star, 5, 3));
  for (const auto& [width, parts] : {std::pair{500, 1}, {1000, 8}}) {
    std::vector<PointF> points;
    loopPoints(knot.curve, 12, GridView(0.8F, width), true, points);
    ASSERT_FALSE(points.empty());
    for (const PointF p : points)
      EXPECT_EQ(p.x * static_cast<float>(parts), std::round(p.x * static_cast<float>(parts)));
  }
}

TEST(KnotDrawing, ColoursFollowSlotsOrOneForAll) {
  KnotStyle style{.colours = strandColours(firstColourBoxes())};
  for (const auto& [slot, colour] : {std::pair{1, 1}, {14, 14}, {15, 15}, {16, 2}, {40, 12}})
    EXPECT_EQ(style.bandColour(slot), QBColor(colour)) << slot;
  style.startColour = -4;
  EXPECT_EQ(style.bandColour(33), QBColor(4));
  EXPECT_EQ(BColor(firstColourBoxes(), 15), 0xFFFFFFU);
  EXPECT_EQ(BColor(firstColourBoxes(), 0), QBColor(1));
}

TEST(KnotDrawing, NothingIsCutOff) {
  for (int s = 0; s < kShapeCount - 1; ++s)
    for (const int n : {1, 5, 20})
      for (const float skew : {0.1F, 1.F, 10.F}) {
        GridFields fields = fieldsOf(static_cast<Shape>(s), n, n, 60, 7);
        fields.skew = skew;
        const MadeKnot knot = makeKnot(fields, {.swish = 50});
        ASSERT_EQ(knot.error, "");
        const KnotStyle style{.width = 30, .colours = {}};
        GridView view(stretchFactor(skew), 800);
        fitView(view, *knot.graph, knot.curve, style);
        const double clear =
            (style.outerWidth() / 2 + 2) * view.pixelFactor() - 1;  // with a margin, but for a pixel
        std::vector<PointF> points;
        for (int slot = 1; slot < kStrandSlots; ++slot) {
          loopPoints(knot.curve, slot, view, true, points);
          for (const PointF p : points)
            EXPECT_TRUE(p.x >= clear && p.x <= 800 - clear && p.y >= clear && p.y <= 640 - clear)
                << s << ' ' << n << ' ' << skew << ": " << p.x << ',' << p.y;
        }
      }
}

TEST(SvgSurface, WritesMillimetresWhateverTheLocale) {
  const char* old = std::setlocale(LC_ALL, "de_DE.UTF-8");
  SvgSurface surface({5000, 4000, 100, "a < b & \"c\""});
  surface.clear(makeColour(255, 0, 16));
  surface.beginGroup("grid");
  surface.segment({0, 25}, {50, 4000}, {10, 0x00FF00, true});
  surface.endGroup();
  surface.dot({50, 50}, 30, 0);
  const std::vector<PointF> bezier = {{0, 0}, {25, 0}, {50.F, 10.F}, {-0.001F, 100}};
  surface.wideCurve({bezier, 70, 0x0000FF, CapStyle::flat});
  const std::string text = surface.finish();
  if (old != nullptr) std::setlocale(LC_ALL, "C");
  for (const char* part :
       {"width=\"100mm\" height=\"80mm\" viewBox=\"0 0 100 80\"", "a &lt; b &amp; &quot;c&quot;",
        "fill=\"#ff0010\"", "<g id=\"grid\" inkscape:groupmode=\"layer\" inkscape:label=\"Grid\">",
        "y1=\"0.5\" x2=\"1\" y2=\"80\"", "stroke-dasharray=\"0.2 0.4\"", "cy=\"1\" r=\"0.3\"",
        "stroke-linecap=\"butt\"", "stroke-width=\"1.4\"", "d=\"M0,0C0.5,0 1,0.2 0,2\""})
    EXPECT_NE(text.find(part), std::string::npos) << part << "\n" << text;
  SvgSurface small({4000, 3200, 15});
  small.segment({1, 0}, {0, 0}, {1, 0, false});
  EXPECT_NE(small.finish().find("x1=\"0.00375\""), std::string::npos);
}

TEST(SvgSurface, EachStrandHasItsColourInOnePlace) {
  SvgSurface surface({500, 400, 100, "", PictureBox{100, 50, 300, 350}});
  surface.clearTransparent(0);
  const std::vector<std::vector<PointF>> shape = {{{100, 50}, {110, 50}, {120, 60}, {100, 50}}};
  const auto fill = [&](const char* group, Colour colour) {
    surface.beginGroup(group);
    surface.fillPath(shape, colour);
    surface.endGroup();
  };
  surface.beginGroup("strands");
  fill("strand-3", makeColour(1, 2, 3));
  fill("over-3", makeColour(1, 2, 3));
  fill("strand-4", makeColour(1, 2, 3));
  surface.fillPath(shape, makeColour(1, 2, 3));
  surface.endGroup();
  surface.beginHiddenGroup("centre-lines");
  surface.endGroup();
  const std::string text = surface.finish();
  const auto count = [&](const std::string& part) {
    int found = 0;
    for (std::size_t at = 0; (at = text.find(part, at)) != std::string::npos; ++at) ++found;
    return found;
  };
  EXPECT_EQ(count("#010203"), 2) << text;
  EXPECT_EQ(count("class=\"strand-3\""), 3) << "also where it lies on top";
  EXPECT_EQ(count("class=\"strand-4\""), 1);
  EXPECT_EQ(count("viewBox=\"0 0 40 60\""), 1);
  EXPECT_EQ(count("M0,0C2,0"), 4) << "the box's corner is the origin";
  EXPECT_EQ(count("inkscape:label=\"Centre lines\" style=\"display:none\""), 1);
}

TEST(Decimals, AreThoseOfTheLibrary) {
  const Rnd random = seededRandom(3);
  const auto expected = [](double value, int decimals) {
    std::array<char, 64> text{};
    std::to_chars(text.data(), text.data() + 63, value, std::chars_format::fixed, decimals);
    std::string digits = text.data();
    if (decimals > 0) digits.erase(digits.find_last_not_of('0') + 1);
    if (digits.back() == '.') digits.pop_back();
    return digits == "-0" ? "0" : digits;
  };
  std::vector<double> values = {0, -0.0, 0.0005, -0.0005, 0.0015, 1.0005, 0.9995, -0.9999999, 1e11};
  for (int i = 0; i < 20000; ++i) {
    const double value = (random() - 0.5) * std::pow(10, 14 * random() - 5);
    values.insert(values.end(), {value, std::round(value * 2000) / 2000});  // and halves of the third decimal
  }
  for (const double value : values)
    for (const int decimals : {0, 3, 6}) {
      std::string text;
      appendDecimal(text, value, decimals);
      ASSERT_EQ(text, expected(value, decimals));
    }
}

}  // namespace
}  // namespace lorivan
