// The memory surface: aliased shapes by GDI, smooth bands by GDI+. Wine's GDI+ does not smooth, so that there
// these tests see the averaging that stands in for it; both must pass them.
#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <vector>

#include "platform/win32/platform_win32.h"

namespace lorivan::win32 {
namespace {

constexpr Colour kRed = 0x0000FF;

/// A closed curve in many segments, sampled from a function of the angle.
template <class Curve>
std::vector<PointF> sampled(const Curve& at, int segments, double turns) {
  std::vector<PointF> bezier;
  const double step = 2 * std::numbers::pi * turns / segments;
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
void expectWholeBand(const Surface& surface, const std::vector<PointF>& bezier, float width) {
  for (int y = 0; y < surface.height(); ++y) {
    for (int x = 0; x < surface.width(); ++x) {
      double nearest = 1e9;
      for (std::size_t i = 0; i < bezier.size(); i += 3)
        nearest = std::min(nearest, squared(bezier[i].x - static_cast<float>(x)) +
                                        squared(bezier[i].y - static_cast<float>(y)));
      nearest = std::sqrt(nearest);
      const bool inked = surface.pixel({x, y}) == kRed;
      if (nearest < width / 2 - 1.5) {
        EXPECT_TRUE(inked) << "hole at " << x << ' ' << y;
      }
      if (nearest > width / 2 + 2) {
        EXPECT_FALSE(inked) << "spill at " << x << ' ' << y;
      }
    }
  }
}

TEST(SurfaceTest, BandsAreWholeWhereTheyCrossThemselvesAndInTightBends) {
  PlatformWin32 platform;
  const auto knot = [](double t) {
    return std::pair{100 + 55 * std::sin(t) + 20 * std::sin(5 * t), 80 + 50 * std::sin(2 * t)};
  };
  const auto hairpin = [](double t) { return std::pair{100 + 70 * std::cos(t), 80 + 4 * std::sin(t)}; };
  for (const bool transparent : {false, true}) {
    for (const float width : {3.0F, 14.0F, 37.0F}) {
      for (const auto& bezier : {sampled(knot, 640, 1), sampled(hairpin, 640, 0.75)}) {
        const auto s = std::move(*platform.createSurface(200, 160));
        if (transparent) s->clearTransparent(0xFFFFFF);
        s->wideCurve({bezier, width, kRed, CapStyle::round});
        expectWholeBand(*s, bezier, width);
        EXPECT_EQ(s->fault(), "");
      }
    }
  }
}

}  // namespace
}  // namespace lorivan::win32
