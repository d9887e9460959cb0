// Surfaces, picture files, settings and the other services, as every system has to give them.
#include <array>
#include <cmath>
#include <limits>
#include <set>

#include "base/sink.h"
#include "unit/platform_contract/back_end.h"
#include "unit/platform_contract/box_path.h"

namespace lorivan::contract {
namespace {

constexpr Colour kWhite = 0xFFFFFF, kRed = 0x0000FF, kGreen = 0x00FF00, kBlue = 0xFF0000, kPaper = 0xC0E0F0;

class ServicesContract : public testing::Test {
 protected:
  std::unique_ptr<Surface> make(int width, int height, bool transparent = false) {
    auto made = platform_->createSurface(width, height);
    EXPECT_TRUE(made);
    if (transparent) (*made)->clearTransparent(kPaper);
    return std::move(*made);
  }
  std::string encoded(Surface& surface, PictureFormat format) {
    const auto bytes = platform_->encodePicture(surface, format);
    EXPECT_TRUE(bytes);
    return bytes ? *bytes : std::string();
  }
  std::unique_ptr<Platform> platform_ = makePlatform();
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
  for (int i = 0; i < surface.width() * surface.height(); ++i)
    ink += (255 - greenOf(surface.pixel({i % surface.width(), i / surface.width()}))) / 255.0;
  return ink;
}

TEST_F(ServicesContract, SizesThatNoPictureHasAreRefused) {
  for (const auto& [w, h] : {std::pair{0, 5}, {5, -1}, {kLongestSide + 1, 1}, {32767, 32767}})
    EXPECT_FALSE(platform_->createSurface(w, h)) << w << " x " << h;
}

TEST_F(ServicesContract, LinesReachBothEndsAndAreClipped) {
  constexpr int most = std::numeric_limits<int>::max();
  const auto s = make(40, 30);
  EXPECT_EQ(countOf(*s, kWhite), 1200);
  s->clear(kPaper);
  s->segment({3, 4}, {12, 4}, {1, kRed});
  EXPECT_EQ(countOf(*s, kRed), 10);
  EXPECT_TRUE(s->pixel({3, 4}) == kRed && s->pixel({12, 4}) == kRed);
  s->segment({-100000000, 10}, {100000000, 10}, {1, kBlue});
  EXPECT_EQ(countOf(*s, kBlue), 40);
  s->segment({20, 20}, {20, 20}, {1, kGreen});
  EXPECT_EQ(countOf(*s, kGreen), 1);
  s->dot({-3, -3}, 20, kGreen);
  s->segment({-most - 1, 14}, {most, 14}, {5, kRed, true});
  for (const PointI outside : {PointI{-1, 0}, {40, 3}, {5, -1}, {0, 30}, {25, most}})
    EXPECT_EQ(s->pixel(outside), kPaper);
  EXPECT_EQ(s->fault(), "");
}

TEST_F(ServicesContract, ShapesHaveTheirWidthAndOneColourInBothModes) {
  for (const bool transparent : {false, true}) {
    SCOPED_TRACE(transparent);
    const auto s = make(60, 60, transparent);
    const auto at = [&](int x, int y) { return s->pixel({x, y}); };
    s->segment({10, 10}, {50, 10}, {5, kRed});
    for (int y = 8; y <= 12; ++y) EXPECT_EQ(at(30, y), kRed) << y;
    EXPECT_TRUE(at(30, 5) == s->background() && at(30, 15) == s->background());
    s->fillPolygon(std::array<PointI, 4>{{{10, 20}, {20, 20}, {20, 30}, {10, 30}}}, kGreen);
    EXPECT_NEAR(countOf(*s, kGreen), 110, 12);
    s->circle({40, 40}, 10, {1, kBlue});
    EXPECT_TRUE(at(40, 30) == kBlue && at(30, 40) == kBlue && at(40, 50) == kBlue);
    EXPECT_EQ(at(40, 40), s->background()) << "only the outline";
    s->dot({15, 50}, 7, kBlue - 1);
    EXPECT_NEAR(countOf(*s, kBlue - 1), 37, 4);
    s->segment({2, 57}, {58, 57}, {1, kRed + 1, true});
    EXPECT_NEAR(countOf(*s, kRed + 1), 20, 10) << "dots with gaps";
    const std::array<PointI, 4> box = {{{44, 1}, {56, 1}, {56, 7}, {44, 7}}};
    s->polyline(box, {1, 0x123456});
    EXPECT_EQ(at(44, 4), s->background()) << "it stays open";
    s->polygonOutline(box, {1, 0x123456});
    EXPECT_TRUE(at(44, 4) == 0x123456 && at(50, 4) == s->background());
    std::set<Colour> colours;
    for (int i = 0; i < 3600; ++i) colours.insert(at(i % 60, i / 60));
    EXPECT_EQ(colours.size(), 7U) << "nothing is smoothed";
    EXPECT_EQ(s->fault(), "");
  }
}

TEST_F(ServicesContract, PathsAreFilledByTheirWinding) {
  const auto s = make(100, 100);
  const auto fill = [&](std::vector<std::vector<PointF>> contours) {
    s->clear(kWhite);
    s->fillPath(contours, kRed);
  };
  fill({boxPath(9.5F, 9.5F, 49.5F, 49.5F), boxPath(39.5F, 19.5F, 19.5F, 39.5F)});
  EXPECT_TRUE(s->pixel({10, 10}) == kRed && s->pixel({49, 49}) == kRed && s->pixel({50, 30}) == kWhite);
  EXPECT_EQ(s->pixel({30, 30}), kWhite) << "a hole";
  EXPECT_NEAR(inkOf(*s), 40 * 40 - 20 * 20, 0.5);
  fill({boxPath(9.5F, 9.5F, 49.5F, 49.5F), boxPath(19.5F, 19.5F, 39.5F, 39.5F)});
  EXPECT_EQ(s->pixel({30, 30}), kRed) << "twice round is inside";
  fill({boxPath(9.75F, 9.5F, 12.5F, 99.5F), boxPath(-500, 59.5F, 4000, 69.5F)});
  EXPECT_NEAR(greenOf(s->pixel({10, 30})), 64, 2) << "three quarters of a pixel";
  EXPECT_TRUE(s->pixel({0, 65}) == kRed && s->pixel({99, 60}) == kRed);
  EXPECT_EQ(s->fault(), "");
  fill({{{std::nanf(""), 0}, {1, 1}, {2, 2}, {3, 3}}});
  EXPECT_EQ(countOf(*s, kWhite), 10000);
  EXPECT_NE(s->fault(), "");
}

TEST_F(ServicesContract, BandsAreSmoothAndEndAsTold) {
  const std::array<PointF, 4> line = {{{30, 20}, {40, 20}, {50, 20}, {60, 20}}};
  const std::array<PointF, 4> slope = {{{20, 80}, {20, 10}, {80, 10}, {80, 80}}};
  const std::array<PointF, 4> point = {{{30, 20}, {30, 20}, {30, 20}, {30, 20}}};
  const auto s = make(100, 100);
  const auto draw = [&](const std::array<PointF, 4>& bezier, CapStyle caps) {
    s->clear(kWhite);
    s->wideCurve({bezier, 16, kRed, caps});
  };
  draw(line, CapStyle::round);
  EXPECT_TRUE(s->pixel({24, 20}) == kRed && s->pixel({66, 20}) == kRed);
  EXPECT_EQ(s->pixel({23, 13}), kWhite) << "a round cap has no corners";
  draw(line, CapStyle::flat);
  EXPECT_TRUE(s->pixel({28, 20}) == kWhite && s->pixel({62, 20}) == kWhite && s->pixel({45, 14}) == kRed);
  EXPECT_NEAR(inkOf(*s), 30 * 16, 4);
  draw(point, CapStyle::round);
  EXPECT_NEAR(inkOf(*s), 201, 4);
  for (const float width : {3.F, 16.F}) {
    s->clear(kWhite);
    s->edgedCurve({line, width, kRed, CapStyle::flat}, 1.5F);
    const int half = static_cast<int>(width / 2);
    EXPECT_TRUE(s->pixel({45, 20 - half + 1}) == kRed && s->pixel({45, 20 + half + 3}) == kWhite) << width;
    EXPECT_TRUE(s->pixel({45, 20 + half + 1}) == 0 && s->pixel({45, 20 - half - 1}) == 0) << width;
  }
  draw(slope, CapStyle::flat);
  std::set<Colour> colours;
  for (int i = 0; i < 10000; ++i) colours.insert(s->pixel({i % 100, i / 100}));
  EXPECT_GT(colours.size(), 10U);
  s->clear(kWhite);
  s->wideCurve({std::array<PointF, 4>{{{std::nanf(""), 0}, {1, 1}, {2, 2}, {3, 3}}}, 4, kBlue});
  EXPECT_EQ(countOf(*s, kWhite), 10000);
  s->segment({0, 25}, {49, 25}, {1, kRed});
  EXPECT_EQ(s->pixel({25, 25}), kRed) << "a curve from nowhere ends nothing";
}

TEST_F(ServicesContract, LentPixelsAreTheSurface) {
  const auto s = make(5, 4);
  s->segment({0, 0}, {4, 0}, {1, kRed});
  const PixelBlock block = s->lendPixels();
  ASSERT_EQ(block.width, 5);
  EXPECT_EQ(block.pixels[2], 0xFFFF0000U) << "opaque, also where a line was drawn";
  block.pixels[block.stride * 3 + 4] = 0xFF00FF00;
  EXPECT_EQ(s->pixel({4, 3}), kGreen);
  s->dot({1, 1}, 1, kBlue);
  EXPECT_EQ(s->pixel({4, 3}), kGreen);
}

TEST_F(ServicesContract, BitmapFilesHavePaddedRowsFromTheBottom) {
  const auto s = make(3, 2);
  s->segment({0, 1}, {0, 1}, {1, 0x030201});
  const std::string file = encoded(*s, PictureFormat::bmp);
  ASSERT_EQ(file.size(), 54U + 2 * 12);
  EXPECT_TRUE(file.starts_with("BM") && file[28] == 24);
  EXPECT_EQ(file.substr(54, 4), "\x03\x02\x01\xFF");
  EXPECT_EQ(file.substr(54 + 9, 3), std::string(3, '\0'));
}

TEST_F(ServicesContract, PngKeepsTransparencyAndComesBackOnWhite) {
  const std::array<PointF, 4> line = {{{10, 20}, {20, 20}, {40, 20}, {70, 20}}};
  const auto s = make(80, 40, true);
  s->wideCurve({line, 10, kRed, CapStyle::round});
  EXPECT_TRUE(s->pixel({1, 1}) == kPaper && s->pixel({40, 20}) == kRed);
  const std::string clear = encoded(*s, PictureFormat::png);
  EXPECT_EQ(clear.at(25), 6) << "colour with alpha";
  const std::string path = scrapFile("Knoten \xC3\xB6 \xE7\xB5\x90\xE3\x81\xB3.png");  // no ASCII
  ASSERT_TRUE(writeFile(path, clear));
  const auto back = platform_->loadPicture(path, 200, 80), small = platform_->loadPicture(path, 200, 10);
  ASSERT_TRUE(back && small);
  EXPECT_TRUE((*back)->width() == 80 && (*back)->height() == 40) << "no larger than it is";
  EXPECT_TRUE((*small)->width() == 20 && (*small)->height() == 10) << "with its proportion";
  EXPECT_TRUE((*back)->pixel({1, 20}) == kWhite && (*back)->pixel({40, 20}) == kRed);
  EXPECT_EQ((*small)->pixel({10, 5}), kRed);
  for (int i = 0; i < 3200; ++i)
    EXPECT_GE(redOf((*back)->pixel({i % 80, i / 80})), 250) << "red grows pale, not dark, at the edges";
  for (const std::string& broken : {clear.substr(0, 50), std::string("GIF89a and more"), std::string()}) {
    ASSERT_TRUE(writeFile(path, broken));
    EXPECT_FALSE(platform_->loadPicture(path, 80, 40)) << broken.size();
  }
  EXPECT_FALSE(platform_->loadPicture(path + ".missing", 80, 40));
  s->clear(kWhite);
  EXPECT_EQ(encoded(*s, PictureFormat::png).at(25), 2) << "colour without alpha";
}

TEST_F(ServicesContract, AnyTextComesBackFromTheSettings) {
  const std::string values[] = {"",          "7",
                                "-0.25",     "  blanks  ",
                                "a=b;[c]#d", "C:\\new",
                                "two\r\n",   std::string(3000, 'x'),
                                "\\n",       "gr\xC3\xB6\xC3\x9F \xF0\x9F\xAA\xA2"};
  for (std::size_t i = 0; i < std::size(values); ++i)
    platform_->settings().write("Settings", "key" + std::to_string(i), values[i]);
  platform_->settings().write("Global", "[x]=", "other section");
  ASSERT_TRUE(platform_->settings().flush());
  const auto again = makePlatform(false);
  for (std::size_t i = 0; i < std::size(values); ++i)
    EXPECT_EQ(again->settings().read("Settings", "key" + std::to_string(i), "?"), values[i]);
  EXPECT_EQ(again->settings().read("Global", "[x]=", ""), "other section");
  EXPECT_EQ(again->settings().read("Global", "key1", "fallback"), "fallback");
}

TEST_F(ServicesContract, TheClipboardHoldsADrawingBesideItsPictureUntilItIsCleared) {
  auto metafile = platform_->createMetafile({1000, 800, 100});
  ASSERT_TRUE(metafile);
  const std::array<PointI, 3> path = {{{10, 10}, {900, 700}, {10, 700}}};
  (*metafile)->strokePath(path, true, 20, kRed);
  const auto emf = (*metafile)->finish();
  ASSERT_TRUE(emf);
  const std::string svg = "<svg xmlns=\"http://www.w3.org/2000/svg\"/>";
  const auto picture = make(6, 4);
  ASSERT_TRUE(platform_->clipboard().putDrawing({svg, *emf}, *picture));
  EXPECT_EQ(clipboardWidth(), 6);
  EXPECT_EQ(clipboardSvg(), svg);
  EXPECT_TRUE(platform_->clipboard().putPicture(*picture));
  EXPECT_EQ(clipboardSvg(), "") << "an older drawing is not the picture's";
  EXPECT_EQ(clipboardWidth(), 6);
  platform_->clipboard().clear();
  EXPECT_EQ(clipboardWidth(), 0);
}

TEST_F(ServicesContract, ClockRunsForwardsAndAMissingHelpPageIsTold) {
  Clock& clock = platform_->clock();
  const std::int64_t start = clock.milliseconds();
  clock.sleep(20);
  EXPECT_GE(clock.milliseconds() - start, 15);
  EXPECT_TRUE(clock.secondsOfDay() >= 0 && clock.secondsOfDay() < 86400);
  EXPECT_NE(clock.seed(), clock.seed());
  EXPECT_FALSE(platform_->help().open("help/no such page.html#topic"));
}

}  // namespace
}  // namespace lorivan::contract
