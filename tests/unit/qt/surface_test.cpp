// What the drawing contract promises, on the raster surface; and picture files there and back.
#include <gtest/gtest.h>

#include <QImage>
#include <QTemporaryDir>
#include <array>
#include <limits>
#include <set>
#include <vector>

#include "base/sink.h"
#include "platform/platform.h"
#include "platform/qt/pictures.h"
#include "platform/qt/raster_surface.h"

namespace lorivan {
namespace {

constexpr Colour kRed = 0x0000FF, kBlue = 0xFF0000;

std::unique_ptr<RasterSurface> makeSurface(int width, int height) {
  auto made = RasterSurface::create(width, height);
  EXPECT_TRUE(made);
  return std::move(*made);
}

std::set<Colour> coloursOf(const Surface& s) {
  std::set<Colour> colours;
  for (int y = 0; y < s.height(); ++y)
    for (int x = 0; x < s.width(); ++x) colours.insert(s.pixel({x, y}));
  return colours;
}

constexpr std::array<PointF, 4> kArc = {PointF{20, 80}, {20, 10}, {80, 10}, {80, 80}};

TEST(RasterSurface, CurvesAreSmoothAndHaveTheirCaps) {
  const auto s = makeSurface(100, 120);
  s->wideCurve({kArc, 16, kRed, CapStyle::flat});
  EXPECT_GT(coloursOf(*s).size(), 20U);
  EXPECT_EQ(s->pixel({20, 76}), kRed);
  EXPECT_EQ(s->pixel({20, 83}), 0xFFFFFFU) << "a flat cap ends at the curve's end";
  s->wideCurve({kArc, 16, kRed, CapStyle::round});
  EXPECT_EQ(s->pixel({20, 86}), kRed);
  EXPECT_EQ(s->pixel({13, 87}), 0xFFFFFFU) << "a round cap has no corners";
  EXPECT_EQ(s->fault(), "");
}

TEST(RasterSurface, ACurveThatIsOnePointIsARoundSpot) {
  const auto s = makeSurface(41, 41);
  constexpr std::array<PointF, 4> spot = {PointF{20, 20}, {20, 20}, {20, 20}, {20, 20}};
  s->wideCurve({spot, 21, kRed, CapStyle::round});
  EXPECT_EQ(s->pixel({11, 20}), kRed);
  EXPECT_EQ(s->pixel({29, 20}), kRed);
  EXPECT_EQ(s->pixel({11, 11}), 0xFFFFFFU);
}

TEST(RasterSurface, LinesPolygonsAndDotsHaveTwoColoursOnly) {
  const auto s = makeSurface(120, 120);
  s->clear(kBlue);
  const std::vector<PointI> shape = {{10, 10}, {90, 33}, {71, 104}};
  s->fillPolygon(shape, kRed);
  s->polygonOutline(shape, {3, kRed});
  s->polyline(shape, {7, kRed});
  s->segment({0, 117}, {119, 93}, {1, kRed, true});
  s->circle({60, 60}, 31, {2, kRed});
  s->dot({100, 20}, 9, kRed);
  EXPECT_EQ(coloursOf(*s), (std::set<Colour>{kRed, kBlue}));
}

TEST(RasterSurface, DotsAreSymmetricAndOfTheirDiameter) {
  for (int diameter = 1; diameter <= 12; ++diameter) {
    const auto s = makeSurface(20, 20);
    s->dot({10, 10}, diameter, kRed);
    const int first = 10 - diameter / 2, last = first + diameter - 1;
    for (int y = 0; y < 20; ++y)
      for (int x = 0; x < 20; ++x) {
        const bool inside = x >= first && x <= last && y >= first && y <= last;
        EXPECT_TRUE(inside || s->pixel({x, y}) == 0xFFFFFFU);
        if (!inside) continue;
        EXPECT_EQ(s->pixel({x, y}), s->pixel({first + last - x, y})) << diameter;
        EXPECT_EQ(s->pixel({x, y}), s->pixel({y, x})) << diameter;
      }
    EXPECT_EQ(s->pixel({first, 10}), kRed) << diameter;
  }
}

TEST(RasterSurface, OutlinesCloseAndPolylinesDoNot) {
  const std::vector<PointI> shape = {{10, 10}, {50, 10}, {50, 50}, {10, 50}};
  const auto s = makeSurface(60, 60);
  s->polyline(shape, {1, kRed});
  EXPECT_EQ(s->pixel({10, 30}), 0xFFFFFFU);
  s->polygonOutline(shape, {1, kRed});
  EXPECT_EQ(s->pixel({10, 30}), kRed);
  EXPECT_EQ(s->pixel({30, 30}), 0xFFFFFFU) << "nothing is filled";
}

TEST(RasterSurface, ClipsToItselfHoweverFarOut) {
  const auto s = makeSurface(50, 50);
  constexpr int far = std::numeric_limits<int>::max();
  s->segment({-far, 20}, {far, 20}, {5, kRed, true});
  s->segment({-far - 1, 30}, {far, 30}, {5, kRed, false});
  s->dot({-3, -3}, 20, kRed);
  s->fillPolygon(std::vector<PointI>{{-far, 40}, {far, 40}, {far, 45}, {-far, 45}}, kRed);
  EXPECT_EQ(s->pixel({25, 30}), kRed);
  EXPECT_EQ(s->pixel({25, 42}), kRed);
  EXPECT_EQ(s->pixel({25, 10}), 0xFFFFFFU);
  for (const PointI outside : {PointI{-1, 30}, {50, 30}, {25, -1}, {25, far}})
    EXPECT_EQ(s->pixel(outside), 0xFFFFFFU);
  EXPECT_EQ(s->fault(), "");
}

TEST(RasterSurface, KeepsTheFirstFaultAndGoesOn) {
  const auto s = makeSurface(50, 50);
  s->segment({0, 0}, {9, 9}, {0, kRed});
  const std::string first = s->fault();
  EXPECT_NE(first.find("pen"), std::string::npos);
  constexpr float nowhere = std::numeric_limits<float>::quiet_NaN();
  const std::array<PointF, 4> bad = {PointF{1, 1}, {nowhere, 2}, {3, 3}, {4, 4}};
  s->wideCurve({bad, 3, kRed, CapStyle::round});
  s->wideCurve({std::span(kArc).first(3), 3, kRed, CapStyle::round});
  EXPECT_EQ(s->fault(), first);
  s->segment({0, 25}, {49, 25}, {1, kRed});
  EXPECT_EQ(s->pixel({25, 25}), kRed);
}

TEST(RasterSurface, LentPixelsAreThePictureItself) {
  const auto s = makeSurface(30, 20);
  s->segment({0, 5}, {29, 5}, {1, kRed});
  PixelBlock block = s->lendPixels();
  ASSERT_TRUE(block.pixels);
  EXPECT_EQ(block.pixels[5 * block.stride + 3], 0xFFFF0000U);
  block.pixels[7 * block.stride + 3] = 0xFF0000FF;
  EXPECT_EQ(s->pixel({3, 7}), kBlue);
  s->dot({20, 10}, 3, kBlue);
  EXPECT_EQ(s->pixel({3, 7}), kBlue);
}

TEST(RasterSurface, RefusesImpossibleSizes) {
  for (const auto& [width, height] : {std::pair(0, 10), {10, -1}, {kLongestSide + 1, 1}, {32767, 32767}})
    EXPECT_FALSE(RasterSurface::create(width, height));
  const auto s = makeSurface(10, 10);
  EXPECT_FALSE(s->resize(100'000, 100'000));
  EXPECT_EQ(s->width(), 10);
}

TEST(Pictures, TransparentPngKeepsCoverageAsAlpha) {
  const auto s = makeSurface(100, 100);
  s->clearTransparent(kBlue);
  s->wideCurve({kArc, 16, kRed, CapStyle::flat});
  EXPECT_EQ(s->pixel({0, 0}), kBlue);
  const auto png = encodeRaster(*s, PictureFormat::png);
  ASSERT_TRUE(png);
  const QImage image = QImage::fromData(QByteArray::fromStdString(*png));
  EXPECT_EQ(image.pixelColor(0, 0).alpha(), 0);
  EXPECT_EQ(image.pixelColor(20, 76), QColor(255, 0, 0, 255));
  bool partial = false;
  for (int x = 0; x < 100; ++x) partial = partial || (image.pixelColor(x, 60).alpha() % 255 != 0);
  EXPECT_TRUE(partial);
}

TEST(Pictures, FilesKeepThePixels) {
  const auto s = makeSurface(61, 40);
  s->wideCurve({kArc, 9, kRed, CapStyle::round});
  for (const auto format : {PictureFormat::png, PictureFormat::bmp}) {
    const auto bytes = encodeRaster(*s, format);
    ASSERT_TRUE(bytes);
    EXPECT_EQ(*bytes, *encodeRaster(*s, format));
    const QImage image = QImage::fromData(QByteArray::fromStdString(*bytes));
    ASSERT_EQ(image.size(), QSize(61, 40));
    for (int y = 0; y < 40; ++y)
      for (int x = 0; x < 61; ++x) ASSERT_EQ(image.pixel(x, y), toArgb(s->pixel({x, y})));
  }
  EXPECT_EQ((*encodeRaster(*s, PictureFormat::bmp))[28], 24) << "bits of a pixel";
}

TEST(Pictures, LoadedOnesAreFittedOnWhite) {
  const QTemporaryDir folder;
  const std::string path = folder.filePath(QStringLiteral("Bild ü.png")).toStdString();
  const auto s = makeSurface(200, 50);
  s->clear(kRed);
  ASSERT_TRUE(writeFile(path, *encodeRaster(*s, PictureFormat::png)));
  const auto loaded = loadRaster(path, 100, 80);
  ASSERT_TRUE(loaded);
  EXPECT_EQ((*loaded)->pixel({50, 40}), kRed);
  EXPECT_EQ((*loaded)->pixel({1, 40}), kRed);
  EXPECT_EQ((*loaded)->pixel({50, 20}), 0xFFFFFFU);

  ASSERT_TRUE(writeFile(path, "no picture"));
  EXPECT_FALSE(loadRaster(path, 100, 80));
  ASSERT_TRUE(writeFile(path, std::string("\x89PNG\r\n\x1a\n cut off", 16)));
  EXPECT_FALSE(loadRaster(path, 100, 80));
  EXPECT_FALSE(loadRaster(path + ".missing", 100, 80));
}

}  // namespace
}  // namespace lorivan
