// Shapes of pictures: their areas, holes, symmetry and ground.
#include "outlines/trace_outline.h"

#include <gtest/gtest.h>

#include <functional>

#include "base/numbers.h"
#include "outlines/fit_outline.h"
#include "shapes.h"

namespace lorivan {
namespace {

/// A picture of what a function says is inside, each pixel by the share of 4 x 4 places in it.
struct Drawn {
  int width, height;
  std::vector<std::uint32_t> pixels;

  Drawn(int w, int h, std::uint32_t ground, std::uint32_t ink,
        const std::function<bool(double, double)>& inside)
      : width(w), height(h) {
    for (int y = 0; y < h; ++y)
      for (int x = 0; x < w; ++x) {
        int count = 0;
        for (int k = 0; k < 16; ++k) count += inside(x + (k % 4 + 0.5) / 4, y + (k / 4 + 0.5) / 4) ? 1 : 0;
        std::uint32_t pixel = 0xFF000000;
        for (unsigned shift = 0; shift < 24; shift += 8)
          pixel |= ((ground >> shift & 0xFF) * (16U - count) + (ink >> shift & 0xFF) * count) / 16 << shift;
        pixels.push_back(pixel);
      }
  }
  PixelBlock block() { return {pixels.data(), width, height, width}; }
  Result<FittedOutline> fitted() {
    auto traced = traceOutline(block());
    if (!traced) return traced.error();
    GridBox whole;
    whole.add(0, 0);
    whole.add(width, height);
    return fitTraced(std::move(*traced), whole);
  }
};

bool inDisc(double x, double y, double cx, double cy, double r) { return std::hypot(x - cx, y - cy) < r; }

TEST(Trace, DiscsAndRingsKeepAreaHolesAndPlace) {
  const auto ring = [](double x, double y) {
    return inDisc(x, y, 0.6, 0.5, 0.4) && !inDisc(x, y, 0.6, 0.5, 0.15);
  };
  // Small and large pictures, those that are reduced, light on dark, colours on colours.
  const struct {
    int size;
    std::uint32_t ground, ink;
  } cases[] = {
      {60, 0xFFFFFF, 0}, {400, 0x202020, 0xF0F0C0}, {2500, 0xFFFFFF, 0x804000}, {300, 0xFFF0A0, 0xC03060}};
  for (const auto& c : cases) {
    Drawn picture(c.size, c.size, c.ground, c.ink,
                  [&](double x, double y) { return ring(x / c.size, y / c.size); });
    const auto made = picture.fitted();
    ASSERT_TRUE(made) << made.error().message;
    const std::vector<double> areas = areasOf(made->shape);
    ASSERT_EQ(areas.size(), 2U) << c.size;
    const double unit = 295;  // the picture's side in the frame
    EXPECT_NEAR(std::max(areas[0], areas[1]) / (kPi * 0.16 * unit * unit), 1, 0.02) << c.size;
    EXPECT_NEAR(std::min(areas[0], areas[1]) / (kPi * 0.0225 * unit * unit), 1, 0.02) << c.size;
    EXPECT_LT(made->shape.ShapePointCount, 60);
    const Spot middle{242.5 + 0.1 * unit, 192.5};
    for (int k = 1; k <= made->shape.ShapePointCount; ++k) {
      const double r = distance(pointOf(made->shape, k), middle);
      EXPECT_LT(std::min(std::fabs(r - 0.4 * unit), std::fabs(r - 0.15 * unit)), c.size < 100 ? 3.0 : 1.2);
    }
  }
}

TEST(Trace, LettersAreAngularAndSymmetric) {
  // A, with straight sides, hard pixels and a triangular hole.
  const auto letter = [](double x, double y) {
    const double off = std::fabs(x - 200), slope = (y - 40) / 2.2;
    if (y < 40 || y > 370 || off > 30 + slope) return false;
    const bool outerLeg = off > slope - 40;
    return outerLeg || (y > 230 && y < 280);
  };
  Drawn picture(400, 400, 0xFFFFFF, 0, letter);
  for (std::uint32_t& pixel : picture.pixels) pixel = (pixel & 0xFF) < 128 ? 0xFF000000 : 0xFFFFFFFF;
  const auto made = picture.fitted();
  ASSERT_TRUE(made);
  double exact = 0;
  for (const std::uint32_t pixel : picture.pixels) exact += pixel == 0xFF000000 ? 1 : 0;
  const std::vector<double> areas = areasOf(made->shape);
  ASSERT_EQ(areas.size(), 2U);
  const double unit = 295.0 / 400;
  EXPECT_NEAR(std::fabs(areas[0] - areas[1]) / (exact * unit * unit), 1, 0.02);
  EXPECT_LE(made->shape.ShapePointCount, 16);
  EXPECT_TRUE(isMirrored(made->shape, 242.5));
}

TEST(Trace, CornersThatMeetHangTogetherWhereThePictureIsDarkThere) {
  const auto loops = [](std::uint32_t inkThere, std::uint32_t groundThere) {
    Drawn picture(40, 40, 0xFFFFFF, 0, [](double x, double y) {
      return (x < 20) == (y < 20) && x > 8 && x < 32 && y > 8 && y < 32;
    });
    picture.pixels[19 * 40 + 19] = inkThere;
    picture.pixels[19 * 40 + 20] = picture.pixels[20 * 40 + 19] = groundThere;
    return traceOutline(picture.block())->loops.size();
  };
  EXPECT_EQ(loops(0xFF000000, 0xFFC8C8C8), 1U);
  EXPECT_EQ(loops(0xFF606060, 0xFFFFFFFF), 2U);
}

TEST(Trace, TheGroundSpecksAndTheBorderAreToldApart) {
  // The shape runs out of the picture; two dots are noise, a third is part of it.
  Drawn picture(200, 200, 0xFFFFFF, 0, [](double x, double y) {
    return (x > 60 && x < 140) || inDisc(x, y, 20, 20, 1) || inDisc(x, y, 20, 60, 1) ||
           inDisc(x, y, 170, 100, 12);
  });
  const auto traced = traceOutline(picture.block());
  ASSERT_TRUE(traced);
  EXPECT_TRUE(traced->loops.size() == 2 && traced->specks == 2 && !traced->lightOnDark);
  const GridBox box = boxOf(traced->loops);
  EXPECT_NEAR(box.top - box.bottom, 200, 1.1);
  Drawn blank(50, 50, 0xFEFEFE, 0xFFFFFF, [](double x, double) { return x > 20; });
  EXPECT_FALSE(traceOutline(blank.block())) << "one shade";
  EXPECT_FALSE(traceOutline(PixelBlock{}));
}

}  // namespace
}  // namespace lorivan
