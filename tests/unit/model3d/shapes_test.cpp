// Real knots: the shaded picture against the curve that the 2-D picture draws.
#include <gtest/gtest.h>

#include <algorithm>

#include "knot_maker.h"
#include "model3d/renderer.h"
#include "unit/model3d/knots.h"

namespace lorivan {
namespace {

/// At angles 0, 0, 0 the strand that the 2-D curve has on top at a crossing is the one that is seen there.
void expectSameStrandsOnTop(const MadeKnot& knot) {
  constexpr int kWidth = 1000, kHeight = 800;
  constexpr std::uint32_t kBackground = 0xFFFFFFFF;
  TubeSettings settings;
  settings.polySmooth = 3;  // as the curve was sampled
  settings.polyPoints = samplesPerPoint(knot.fields.scale);
  settings.polyZF = 0.25F;  // flat, so that perspective moves nothing
  settings.polyRadius = 1;
  TubeModel model = built(*knot.store, settings);
  ASSERT_GT(model.strands.size(), 1U);
  for (TubeStrand& strand : model.strands) strand.factors = {0, 0, static_cast<float>(strand.slot * 3) / 128};
  std::vector<std::uint32_t> pixels(static_cast<std::size_t>(kWidth * kHeight));
  Renderer renderer;
  renderer.render(model, {1, 0, 0, 1, -1100}, {}, {}, {}, {pixels.data(), kWidth, kHeight, kWidth});

  int left = kWidth, right = 0, top = kHeight, bottom = 0;
  for (int i = 0; i < kWidth * kHeight; ++i) {
    if (pixels[i] == kBackground) continue;
    left = std::min(left, i % kWidth), right = std::max(right, i % kWidth);
    top = std::min(top, i / kWidth), bottom = std::max(bottom, i / kWidth);
  }
  const KnotCurve& curve = knot.curve;
  const auto [leastX, mostX] = std::minmax_element(curve.X.begin() + 1, curve.X.end());
  const auto [leastY, mostY] = std::minmax_element(curve.Y.begin() + 1, curve.Y.end());
  const auto between = [](float v, float from, float to, int first, int last) {
    return first + static_cast<int>(std::lround((v - from) / (to - from) * static_cast<float>(last - first)));
  };
  int crossings = 0, wrong = 0;
  for (int slot = 1; slot < kStrandSlots; ++slot) {
    if (!curve.used(slot)) continue;
    const auto s = static_cast<std::size_t>(slot);
    for (auto i = static_cast<std::size_t>(curve.first[s] + 1); i < static_cast<std::size_t>(curve.last[s]);
         ++i) {
      if (curve.Z[i] < 0.6F || curve.Z[i] < curve.Z[i - 1] || curve.Z[i] < curve.Z[i + 1]) continue;
      const int x = between(curve.X[i], *leastX, *mostX, left, right);
      const int y = between(curve.Y[i], *mostY, *leastY, top, bottom);
      ++crossings;
      if (static_cast<int>(pixels[y * kWidth + x] & 255) != slot * 3) ++wrong;
    }
  }
  EXPECT_GT(crossings, 20);
  EXPECT_LE(wrong, crossings / 50) << "of " << crossings;
}

TEST(Shapes, TheShadedKnotHasTheStrandsOnTopThatTheFlatOneHas) {
  for (const Shape shape : {Shape::Hexagonal, Shape::SquareTriangle, Shape::Diamond1, Shape::Cross})
    for (const std::uint64_t seed : {3, 8}) {
      SCOPED_TRACE(testing::Message() << "shape " << static_cast<int>(shape) << " seed " << seed);
      const Rnd random = seededRandom(seed);
      expectSameStrandsOnTop(makeKnot(fieldsOf(shape, 7, 5), {.mirror = seed == 8}, &random));
    }
}

}  // namespace
}  // namespace lorivan
