// The growing drawing: its steps, its pace, and what stands on the picture on the way.
#include "strands/animation.h"

#include <gtest/gtest.h>

#include <sstream>

#include "curve_maker.h"
#include "knot_maker.h"
#include "platform/none/recording_surface.h"
#include "strands/animated_svg.h"

namespace lorivan {
namespace {

/// A ring of `samples` samples in slot 3, over in its second half.
KnotCurve ring(int samples) {
  KnotCurve curve;
  addSamples(curve, 3, samplesRound(samples, [](double turn) {
               return sampleAt(60 * std::cos(turn), 60 * std::sin(turn), turn < kPi ? -1 : 1);
             }));
  return curve;
}

TEST(Animation, GrowsByThreesAndAlwaysCloses) {
  const std::pair<int, std::vector<int>> cases[] = {
      {8, {2, 5, 8}}, {9, {2, 5, 8, 9}}, {10, {2, 5, 8, 10}}, {2, {2}}};
  for (const auto& [samples, points] : cases) {
    std::vector<int> grown;
    int runs = 0;
    for (const AnimationStep& step : animationSteps(ring(samples))) {
      EXPECT_TRUE(step.closed == (step.points == samples) && step.slot == 3);
      step.grows() ? grown.push_back(step.points) : void(++runs);
    }
    EXPECT_EQ(grown, points) << samples;
    EXPECT_EQ(runs, 1);
  }
}

struct Player {
  explicit Player(const KnotCurve& curve, int width = 500)
      : surface(width, GridView::heightFor(width)),
        animation(*graph, curve, style, GridView(0.8F, width), {}) {}

  std::unique_ptr<KnotGraph> graph = std::make_unique<KnotGraph>();
  KnotStyle style;
  RecordingSurface surface;
  AnimatedDrawing animation;
};

TEST(Animation, PlaysLinesThenAClosedPolygonThenTheOverRun) {
  const KnotCurve curve = ring(9);
  Player player(curve, 1000);
  player.animation.setSpeed(5);
  std::vector<int> waits;
  for (int i = 0; i < 5; ++i) waits.push_back(player.animation.nextFrame(player.surface).value_or(-1));
  EXPECT_EQ(waits, (std::vector<int>{36, 36, 36, 36, 0}));
  const auto& calls = player.surface.calls();
  ASSERT_EQ(calls.size(), 1U + 2 * 5);
  EXPECT_TRUE(calls[3].kind == DrawKind::polyline && calls[3].points.size() == 5);
  EXPECT_TRUE(calls[3].size == 28 && calls[4].size == 8) << "14 pixels at twice the reference size";
  EXPECT_TRUE(calls[7].kind == DrawKind::polygonOutline && calls[7].points.size() == 9);
  EXPECT_EQ(calls[9].points.size() + 3, calls[10].points.size()) << "black stops three points short";
  EXPECT_EQ(player.animation.nextFrame(player.surface), std::nullopt);
  EXPECT_GT(player.surface.count(DrawKind::fillPath), 0) << "it ends on the finished picture";
}

/// One rule of the style sheet: how something comes into view, in parts of the round.
struct Rule {
  bool grows = false;
  double begin = 0, end = 0;
};

std::vector<Rule> rulesOf(const std::string& svg) {
  std::vector<Rule> rules;
  for (std::size_t at = 0; (at = svg.find("@keyframes", at)) != std::string::npos; ++at) {
    std::istringstream line(svg.substr(at, svg.find('\n', at) - at));
    rules.emplace_back();
    std::vector<double> parts;
    for (std::string word; line >> word;) {
      if (word.starts_with("stroke-dash")) rules.back().grows = true;
      if (word.find('%') != std::string::npos) parts.push_back(std::stod(word) / 100);
    }
    rules.back().begin = parts.at(1);
    rules.back().end = parts.at(2);
  }
  return rules;
}

TEST(AnimatedSvg, StrandsGrowOneAfterTheOtherThenOversAppear) {
  const MadeKnot knot = makeKnot(fieldsOf(Shape::Circular, 8, 2));
  const KnotStyle style{.colours = strandColours(firstColourBoxes())};
  AnimatedSvgOptions options{{}, {5000, 4000, 100, "t"}, 36, true};
  const std::string loop = animatedSvg(*knot.graph, knot.curve, style, GridView(0.8F, 5000), options);
  options.loop = false;
  const std::string once = animatedSvg(*knot.graph, knot.curve, style, GridView(0.8F, 5000), options);
  EXPECT_EQ(once.find("infinite"), std::string::npos);
  EXPECT_NE(loop.find("linear infinite"), std::string::npos);
  EXPECT_LT(once.find("@media (prefers-reduced-motion: no-preference)"), once.find("@keyframes"));
  EXPECT_EQ(once.find("<animate"), std::string::npos);
  EXPECT_EQ(once.find("stroke-dashoffset", once.find("</style>")), std::string::npos)
      << "without the rules every curve is whole";

  const auto steps = animationSteps(knot.curve);
  double grown = 0, appeared = 0;
  for (const Rule& rule : rulesOf(once)) {
    EXPECT_GE(rule.begin, std::max(grown, appeared) - 1e-9) << "one after the other";
    EXPECT_TRUE(!rule.grows || rule.end > rule.begin);
    if (rule.grows) grown = rule.end;
    appeared = rule.begin;
  }
  const auto runs = std::count_if(steps.begin(), steps.end(), [](const auto& step) { return !step.grows(); });
  EXPECT_NEAR(grown, 1 - static_cast<double>(runs) / static_cast<double>(steps.size()), 1e-5);
  EXPECT_NEAR(appeared, 1 - 1.0 / static_cast<double>(steps.size()), 1e-5) << "the last over-crossing";
  const double seconds = static_cast<double>(steps.size() + 5) * 0.036;
  EXPECT_NE(loop.find(' ' + shortestText(static_cast<float>(seconds)) + "s linear"), std::string::npos);
}

}  // namespace
}  // namespace lorivan
