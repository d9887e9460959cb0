// Shapes that the program fills itself: whole bands, layers in their order, the same in every strip.
#include <gtest/gtest.h>

#include <cmath>
#include <vector>

#include "base/numbers.h"
#include "base/random.h"
#include "platform/common/wide_curve.h"

namespace lorivan {
namespace {

constexpr std::uint32_t kWhite = 0xFFFFFFFF, kRed = 0xFFFF0000, kBlue = 0xFF0000FF;

struct Picture {
  Picture(int w, int h) : width(w), height(h), pixels(static_cast<std::size_t>(w * h), kWhite) {}
  PixelBlock block() { return {pixels.data(), width, height, width}; }
  std::uint32_t at(int x, int y) const { return pixels[y * width + x]; }
  int green(int x, int y) const { return static_cast<int>(at(x, y) >> 8 & 0xFF); }
  int width, height;
  std::vector<std::uint32_t> pixels;
};

/// A closed curve in many segments, sampled from a function of the angle.
template <class Curve>
std::vector<PointF> sampled(const Curve& at, int segments, double turns) {
  std::vector<PointF> bezier;
  const double step = kTwoPi * turns / segments;
  for (int i = 0; i <= segments; ++i) {
    const auto here = at(i * step), ahead = at(i * step + 1e-4), behind = at(i * step - 1e-4);
    const double dx = (ahead.first - behind.first) / 2e-4 * step / 3;
    const double dy = (ahead.second - behind.second) / 2e-4 * step / 3;
    const auto add = [&](double x, double y) {
      bezier.push_back({static_cast<float>(x), static_cast<float>(y)});
    };
    if (i > 0) add(here.first - dx, here.second - dy);
    add(here.first, here.second);
    if (i < segments) add(here.first + dx, here.second + dy);
  }
  return bezier;
}

double squared(float x) { return 1.0 * x * x; }

/// Checks that exactly the pixels within half the width of the curve's ends of segments are coloured.
void expectWholeBand(const Picture& picture, const std::vector<PointF>& bezier, float width) {
  for (int y = 0; y < picture.height; ++y) {
    for (int x = 0; x < picture.width; ++x) {
      double nearest = 1e9;
      for (std::size_t i = 0; i < bezier.size(); i += 3)
        nearest = std::min(nearest, squared(bezier[i].x - static_cast<float>(x)) +
                                        squared(bezier[i].y - static_cast<float>(y)));
      nearest = std::sqrt(nearest);
      const bool inked = picture.at(x, y) == kRed;
      if (nearest < width / 2 - 1.5) {
        EXPECT_TRUE(inked) << "hole at " << x << ' ' << y;
      }
      if (nearest > width / 2 + 2) {
        EXPECT_FALSE(inked) << "spill at " << x << ' ' << y;
      }
    }
  }
}

TEST(WideCurves, AreWholeWhereTheyCrossThemselvesAndInTightBends) {
  const auto knot = [](double t) {
    return std::pair{100 + 55 * std::sin(t) + 20 * std::sin(5 * t), 80 + 50 * std::sin(2 * t)};
  };
  const auto hairpin = [](double t) { return std::pair{100 + 70 * std::cos(t), 80 + 4 * std::sin(t)}; };
  for (const float width : {3.0F, 14.0F, 37.0F})
    for (const auto& bezier : {sampled(knot, 640, 1), sampled(hairpin, 640, 0.75), sampled(hairpin, 64, 1)}) {
      Picture picture(200, 160);
      PathFiller filler;
      ASSERT_TRUE(addWideCurve(filler, {bezier, width, 0x0000FF, CapStyle::round}));
      filler.paint(picture.block());
      expectWholeBand(picture, bezier, width);
    }
}

TEST(PathFiller, PaintsTheSamePixelsWhateverIsPaintedTogether) {
  const Rnd random = seededRandom(7);
  const auto place = [&](int most) { return static_cast<float>(random()) * static_cast<float>(most) - 7; };
  Picture together(211, 173), apart(211, 173);
  PathFiller waiting, alone;
  for (int shape = 0; shape < 400; ++shape) {
    const std::vector<std::vector<PointF>> triangle = {
        {{place(230), place(190)}, {place(230), place(190)}, {place(230), place(190)}}};
    const Colour colour = static_cast<Colour>(random() * 0xFFFFFF);
    waiting.addPolygons(triangle, colour);
    alone.addPolygons(triangle, colour);
    alone.paint(apart.block());
  }
  waiting.paint(together.block());
  EXPECT_TRUE(together.pixels == apart.pixels);
}

TEST(WideCurves, ARingShowsNoBeginning) {
  const auto circle = [](double t) { return std::pair{100 + 60 * std::cos(t), 100 + 60 * std::sin(t)}; };
  for (const float width : {2.5F, 21.0F}) {
    Picture picture(201, 201);
    PathFiller filler;
    addWideCurve(filler, {sampled(circle, 12, 1), width, 0x0000FF, CapStyle::round});
    filler.paint(picture.block());
    double ink = 0;
    for (int y = 0; y <= 200; ++y)
      for (int x = 0; x <= 200; ++x) {
        ink += (255 - picture.green(x, y)) / 255.0;
        EXPECT_NEAR(picture.green(x, y), picture.green(200 - x, y), 5) << x << ' ' << y;
      }
    EXPECT_NEAR(ink / (kTwoPi * 60 * width), 1, 2e-3);
  }
}

TEST(PathFiller, PaintsLayersInTheirOrderInEveryStrip) {
  // So wide that there are many strips, with edges that pass several of them.
  Picture picture(9000, 50);
  PathFiller filler;
  const auto box = [&](float left, float top, float right, float bottom, Colour colour) {
    const std::vector<PointF> corners{{left, top}, {right, top}, {right, bottom}, {left, bottom}};
    filler.addPolygons({&corners, 1}, colour);
  };
  box(0, 0, 9000, 50, 0xFFFFFF);
  filler.forget();
  EXPECT_TRUE(filler.empty());
  box(-70, 4.5F, 9e5F, 40.5F, 0x0000FF);
  box(99.5F, -30, 8899.5F, 900, 0xFF0000);
  box(8000.25F, 9.5F, 8010.75F, 29.5F, 0x0000FF);
  filler.paint(picture.block());
  EXPECT_TRUE(filler.empty());
  for (int y = 0; y < 50; ++y) {
    const bool isIn = y > 4 && y <= 40;
    EXPECT_TRUE(picture.at(99, y) == (isIn ? kRed : kWhite) && picture.at(8999, y) == picture.at(0, y)) << y;
    EXPECT_TRUE(picture.at(100, y) == kBlue && picture.at(8899, y) == kBlue) << y;
    EXPECT_EQ(picture.at(8005, y), y > 9 && y <= 29 ? kRed : kBlue) << y;
  }
  EXPECT_EQ(picture.at(8000, 20), 0xFF4000BF) << "a quarter of it";
}

}  // namespace
}  // namespace lorivan
