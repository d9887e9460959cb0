// The memory surface: aliased shapes by GDI, smooth bands by GDI+. Wine's GDI+ does not smooth, so that there
// these tests see the averaging that stands in for it; both must pass them.
#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <vector>

#include "platform/win32/handles.h"
#include "platform/win32/platform_win32.h"
#include "platform/win32/printing.h"
#include "unit/win32/gui_objects.h"

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

/// A context that a test can look at, as a printer would be drawn on.
struct SmallPaper {
  SmallPaper() : bitmap(CreateBitmap(200, 160, 1, 32, nullptr)), selected(context.get(), bitmap.get()) {
    PatBlt(context.get(), 0, 0, 200, 160, WHITENESS);
  }
  OwnedMemoryContext context{CreateCompatibleDC(nullptr)};
  OwnedBitmap bitmap;
  Selection selected;
};

TEST(PaperTest, ShapesKeepTheirWindingAndNoObjectIsLeftOnAnyWay) {
  PlatformWin32 platform;
  const auto picture = std::move(*platform.createSurface(10, 8));
  picture->clear(0x00FF00);
  const auto box = [](float left, float top, float right, float bottom) {
    const PointF corners[] = {{left, top}, {right, top}, {right, bottom}, {left, bottom}, {left, top}};
    std::vector<PointF> path = {corners[0]};
    for (int i = 1; i < 5; ++i) path.insert(path.end(), {corners[i - 1], corners[i], corners[i]});
    return path;
  };
  const std::vector<std::vector<PointF>> frame = {box(20, 20, 100, 100), box(80, 40, 40, 80)};
  const std::vector<PointF> band = {{120, 20}, {140, 20}, {160, 20}, {180, 20}};
  const PointI corners[] = {{120, 60}, {180, 60}, {180, 80}};
  const SmallPaper paper;
  PaperPage page(paper.context.get());
  Surface& surface = page.surface();
  const auto drawAll = [&] {
    surface.clear(0xFFFFFF);
    surface.fillPath(frame, kRed);
    surface.wideCurve({band, 10, kRed, CapStyle::flat});
    surface.fillPolygon(corners, kRed);
    surface.polygonOutline(corners, {3, 0, true});
    surface.polyline(corners, {3, 0});
    surface.segment({10, 150}, {190, 150}, {3, kRed});
    surface.circle({30, 130}, 8, {1, kRed});
    surface.dot({60, 130}, 9, kRed);
    EXPECT_TRUE(page.place(*picture, {100, 110}, 50, 30));
    EXPECT_EQ(surface.fault(), "");
  };
  drawAll();
  const auto at = [&](int x, int y) { return GetPixel(paper.context.get(), x, y); };
  EXPECT_TRUE(at(30, 60) == kRed && at(90, 90) == kRed && at(60, 60) == 0xFFFFFF) << "a hole";
  EXPECT_TRUE(at(150, 17) == kRed && at(150, 23) == kRed && at(150, 30) == 0xFFFFFF);
  EXPECT_TRUE(at(60, 130) == kRed && at(30, 130) == 0xFFFFFF && at(125, 125) == 0x00FF00);
  const ObjectCounts before = countGuiObjects();
  for (int i = 0; i < 20; ++i) drawAll();
  surface.fillPath(std::vector<std::vector<PointF>>{{{0, 0}}}, kRed);  // nothing to draw
  EXPECT_EQ(countGuiObjects().graphics, before.graphics);
}

}  // namespace
}  // namespace lorivan::win32
