// The memory surface: aliased shapes by GDI, smooth bands by GDI+. Wine's GDI+ does not smooth, so that there
// these tests see the averaging that stands in for it; both must pass them.
#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <numbers>
#include <vector>

#include "base/sink.h"
#include "gui_objects.h"
#include "platform/win32/band_outline.h"
#include "platform/win32/dib_surface.h"
#include "platform/win32/platform_win32.h"

namespace lorivan::win32 {
namespace {

constexpr Colour kRed = 0x0000FF, kGreen = 0x00FF00, kBlue = 0xFF0000, kPaper = 0xC0E0F0;

class SurfaceTest : public testing::Test {
 protected:
  std::unique_ptr<Surface> make(int width, int height) {
    auto made = platform_.createSurface(width, height);
    EXPECT_TRUE(made) << (made ? "" : made.error().message);
    return made ? std::move(*made) : nullptr;
  }
  PlatformWin32 platform_;
};

int countOf(const Surface& surface, Colour colour) {
  int count = 0;
  for (int y = 0; y < surface.height(); ++y)
    for (int x = 0; x < surface.width(); ++x) count += surface.pixel({x, y}) == colour;
  return count;
}

/// The area of red on white, in pixels, parts of pixels included.
double inkOf(const Surface& surface) {
  double ink = 0;
  for (int y = 0; y < surface.height(); ++y)
    for (int x = 0; x < surface.width(); ++x) ink += (255 - greenOf(surface.pixel({x, y}))) / 255.0;
  return ink;
}

TEST_F(SurfaceTest, RefusesSizesThatNoPictureHas) {
  for (const auto& [w, h] : {std::pair{0, 5}, {5, -1}, {40000, 5}, {20000, 20000}})
    EXPECT_FALSE(platform_.createSurface(w, h)) << w << " x " << h;
}

TEST_F(SurfaceTest, ThinLinesReachBothEndsAndAreClipped) {
  const auto s = make(40, 30);
  EXPECT_EQ(countOf(*s, 0xFFFFFF), 1200);
  s->clear(kPaper);
  s->segment({3, 4}, {12, 4}, {1, kRed});
  EXPECT_EQ(countOf(*s, kRed), 10);
  EXPECT_EQ(s->pixel({3, 4}), kRed);
  EXPECT_EQ(s->pixel({12, 4}), kRed);
  s->segment({-100000000, 10}, {100000000, 10}, {1, kBlue});
  EXPECT_EQ(countOf(*s, kBlue), 40);
  EXPECT_EQ(s->pixel({-1, 0}), kPaper);
  EXPECT_EQ(s->pixel({0, 30}), kPaper);
  s->segment({20, 20}, {20, 20}, {1, kGreen});
  EXPECT_EQ(countOf(*s, kGreen), 1);
  EXPECT_EQ(s->fault(), "");
}

TEST_F(SurfaceTest, ShapesAreAsWideAsToldInBothModes) {
  for (const bool transparent : {false, true}) {
    const auto s = make(60, 60);
    if (transparent) s->clearTransparent(kPaper);
    s->segment({10, 10}, {50, 10}, {5, kRed});
    for (int y = 8; y <= 12; ++y) EXPECT_EQ(s->pixel({30, y}), kRed) << y << transparent;
    EXPECT_EQ(s->pixel({30, 5}), s->background());
    EXPECT_EQ(s->pixel({30, 15}), s->background());
    s->fillPolygon(std::array<PointI, 4>{{{10, 20}, {20, 20}, {20, 30}, {10, 30}}}, kGreen);
    EXPECT_NEAR(countOf(*s, kGreen), 110, 12) << transparent;
    s->circle({40, 40}, 10, {1, kBlue});
    EXPECT_EQ(s->pixel({40, 30}), kBlue);
    EXPECT_EQ(s->pixel({30, 40}), kBlue);
    EXPECT_EQ(s->pixel({40, 50}), kBlue);
    EXPECT_EQ(s->pixel({40, 40}), s->background()) << "only the outline";
    s->dot({15, 50}, 7, kBlue - 1);
    EXPECT_NEAR(countOf(*s, kBlue - 1), 37, 4);
    s->segment({2, 57}, {58, 57}, {1, kRed + 1, true});
    const int dots = countOf(*s, kRed + 1);
    EXPECT_TRUE(dots > 10 && dots < 30) << dots;
    s->polygonOutline(std::array<PointI, 3>{{{50, 2}, {58, 2}, {54, 8}}}, {1, 0x123456});
    EXPECT_EQ(s->pixel({54, 2}), 0x123456u);
    EXPECT_EQ(s->pixel({54, 4}), s->background());
    EXPECT_EQ(s->fault(), "");
  }
}

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

/// Checks that exactly the pixels within half the width of the curve's ends of segments are coloured.
void expectWholeBand(const Surface& surface, const std::vector<PointF>& bezier, float width) {
  for (int y = 0; y < surface.height(); ++y) {
    for (int x = 0; x < surface.width(); ++x) {
      double nearest = 1e9;
      for (std::size_t i = 0; i < bezier.size(); i += 3)
        nearest = std::min(nearest, std::hypot(1.0 * bezier[i].x - x, 1.0 * bezier[i].y - y));
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

TEST_F(SurfaceTest, BandsAreWholeWhereTheyCrossThemselvesAndInTightBends) {
  const auto knot = [](double t) {
    return std::pair{100 + 55 * std::sin(t) + 20 * std::sin(5 * t), 80 + 50 * std::sin(2 * t)};
  };
  const auto hairpin = [](double t) { return std::pair{100 + 70 * std::cos(t), 80 + 4 * std::sin(t)}; };
  for (const bool transparent : {false, true}) {
    for (const float width : {3.0F, 14.0F, 37.0F}) {
      for (const auto& bezier : {sampled(knot, 640, 1), sampled(hairpin, 640, 0.75)}) {
        const auto s = make(200, 160);
        if (transparent) s->clearTransparent(0xFFFFFF);
        s->wideCurve({bezier, width, kRed, CapStyle::round});
        expectWholeBand(*s, bezier, width);
        EXPECT_EQ(s->fault(), "");
      }
    }
  }
}

TEST_F(SurfaceTest, CapsEndAsTold) {
  const std::array<PointF, 4> line = {{{30, 20}, {40, 20}, {50, 20}, {60, 20}}};
  const std::array<PointF, 4> point = {{{30, 20}, {30, 20}, {30, 20}, {30, 20}}};
  const auto s = make(100, 40);
  s->wideCurve({line, 16, kRed, CapStyle::round});
  EXPECT_EQ(s->pixel({24, 20}), kRed);
  EXPECT_EQ(s->pixel({66, 20}), kRed);
  s->clear(0xFFFFFF);
  s->wideCurve({line, 16, kRed, CapStyle::flat});
  EXPECT_EQ(s->pixel({28, 20}), 0xFFFFFFu);
  EXPECT_EQ(s->pixel({62, 20}), 0xFFFFFFu);
  EXPECT_EQ(s->pixel({45, 14}), kRed);
  EXPECT_NEAR(inkOf(*s), 30 * 16, 2);
  s->clear(0xFFFFFF);
  s->wideCurve({point, 16, kRed, CapStyle::flat});
  EXPECT_EQ(countOf(*s, kRed), 0);
  s->wideCurve({point, 16, kRed, CapStyle::round});
  EXPECT_NEAR(countOf(*s, kRed), 175, 12);
  EXPECT_NEAR(inkOf(*s), 201, 2) << "with the half covered pixels of the edge";
  const float nowhere = std::nanf("");
  s->wideCurve({std::array<PointF, 4>{{{nowhere, 0}, {1, 1}, {2, 2}, {3, 3}}}, 4, kBlue, CapStyle::round});
  EXPECT_EQ(countOf(*s, kBlue), 0);
}

TEST_F(SurfaceTest, LentPixelsAreTheSurface) {
  const auto s = make(5, 4);
  s->segment({0, 0}, {4, 0}, {1, kRed});
  const PixelBlock block = s->lendPixels();
  ASSERT_EQ(block.width, 5);
  EXPECT_EQ(block.pixels[2], 0xFFFF0000u) << "opaque, also where a line was drawn";
  block.pixels[block.stride * 3 + 4] = 0xFF00FF00;
  EXPECT_EQ(s->pixel({4, 3}), kGreen);
}

TEST_F(SurfaceTest, BitmapFilesHavePaddedRowsFromTheBottom) {
  const auto s = make(3, 2);
  s->segment({0, 1}, {0, 1}, {1, 0x030201});
  const auto file = platform_.encodePicture(*s, PictureFormat::bmp);
  ASSERT_TRUE(file);
  ASSERT_EQ(file->size(), 54u + 2 * 12);
  EXPECT_EQ(file->substr(0, 2), "BM");
  EXPECT_EQ((*file)[28], 24);
  EXPECT_EQ(file->substr(54, 4), "\x03\x02\x01\xFF");
  EXPECT_EQ(file->substr(54 + 9, 3), std::string(3, '\0'));
}

TEST_F(SurfaceTest, PngKeepsTransparencyAndComesBackOnWhite) {
  const std::array<PointF, 4> line = {{{10, 20}, {20, 20}, {40, 20}, {70, 20}}};
  const auto s = make(80, 40);
  s->clearTransparent(kPaper);
  s->wideCurve({line, 10, kRed, CapStyle::round});
  EXPECT_EQ(s->pixel({1, 1}), kPaper);
  EXPECT_EQ(s->pixel({40, 20}), kRed);
  const auto clear = platform_.encodePicture(*s, PictureFormat::png);
  ASSERT_TRUE(clear);
  EXPECT_EQ((*clear)[25], 6) << "colour with alpha";
  // The name is no ASCII, the size to fit into is twice as high.
  const std::string path = testing::TempDir() + "Knoten \xC3\xB6 \xE7\xB5\x90\xE3\x81\xB3.png";
  ASSERT_TRUE(writeFile(path, *clear));
  const auto back = platform_.loadPicture(path, 80, 80);
  ASSERT_TRUE(back) << back.error().message;
  EXPECT_EQ((*back)->pixel({1, 1}), 0xFFFFFFu);
  EXPECT_EQ((*back)->pixel({40, 40}), kRed) << "centred";
  ASSERT_TRUE(writeFile(path, clear->substr(0, 50)));
  EXPECT_FALSE(platform_.loadPicture(path, 80, 40));
  ASSERT_TRUE(writeFile(path, "GIF89a and more"));
  EXPECT_FALSE(platform_.loadPicture(path, 80, 40));
  s->clear(0xFFFFFF);
  const auto opaque = platform_.encodePicture(*s, PictureFormat::png);
  ASSERT_TRUE(opaque);
  EXPECT_EQ((*opaque)[25], 2) << "colour without alpha";
}

TEST_F(SurfaceTest, GivesBackEveryObject) {
  const std::array<PointF, 4> line = {{{3, 5}, {20, 9}, {40, 20}, {70, 20}}};
  const auto once = [&](bool transparent) {
    const auto s = make(64, 48);
    if (transparent) s->clearTransparent(kPaper);
    s->segment({1, 1}, {30, 30}, {3, kRed, true});
    s->polyline(std::array<PointI, 3>{{{5, 5}, {9, 1}, {40, 40}}}, {4, kBlue});
    s->circle({20, 20}, 9, {2, kGreen});
    s->fillPolygon(std::array<PointI, 3>{{{5, 5}, {9, 1}, {40, 40}}}, kRed);
    s->wideCurve({line, 7, kRed, CapStyle::round});
    ASSERT_TRUE(platform_.encodePicture(*s, PictureFormat::png));
    const auto metafile = platform_.createMetafile({64, 48, 10});
    ASSERT_TRUE(metafile);
    (*metafile)->strokePath(std::array<PointI, 2>{{{5, 5}, {9, 1}}}, true, 4, kBlue);
    EXPECT_TRUE(transparent || (*metafile)->finish());
  };
  once(false);
  once(true);
  const ObjectCounts before = countGuiObjects();
  for (int i = 0; i < 200; ++i) once(i % 2 == 0);
  EXPECT_EQ(countGuiObjects().graphics, before.graphics);
  const auto kept = make(4, 4);
  EXPECT_GT(countGuiObjects().graphics, before.graphics) << "the count sees a surface";
}

}  // namespace
}  // namespace lorivan::win32
