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

/// Random open curves, some of which leave the picture.
std::vector<PointF> wiggle(const Rnd& random, float size) {
  std::vector<PointF> bezier;
  const auto coordinate = [&] { return static_cast<float>(random()) * (size + 8) - 4; };
  for (int i = 0; i < 7; ++i) bezier.push_back({coordinate(), coordinate()});
  return bezier;
}

/// By how much an edged curve differs from two curves: of 255, on average over what these cover.
double strayOf(const std::vector<PointF>& bezier, float width, float edge, CapStyle caps) {
  Picture two(50, 50), one(50, 50);
  PathFiller filler;
  if (edge > 0) addWideCurve(filler, {bezier, width + 2 * edge, 0, caps});
  addWideCurve(filler, {bezier, width, 0x0000FF, caps});
  filler.paint(two.block());
  EXPECT_TRUE(addEdgedCurve(filler, {bezier, width, 0x0000FF, caps}, edge));
  filler.paint(one.block());
  double squares = 0;
  int inked = 1;
  for (std::size_t i = 0; i < one.pixels.size(); ++i)
    for (const int shift : {0, 16, 24}) {
      const auto value = [shift](std::uint32_t argb) { return static_cast<int>(argb >> shift & 0xFF); };
      squares += std::pow(value(one.pixels[i]) - value(two.pixels[i]), 2);
      inked += two.pixels[i] != kWhite;
    }
  return std::sqrt(squares / inked);
}

TEST(EdgedCurves, ThinOnesLookLikeTwoCurves) {
  const Rnd random = seededRandom(3);
  const auto circle = [](double t) { return std::pair{25 + 2.5 * std::cos(t), 25 + 2.5 * std::sin(t)}; };
  std::vector<PointF> ring = sampled(circle, 8, 1);
  ring.back() = ring.front();
  const std::vector<PointF> straight{{3, 10}, {17, 14}, {31, 18}, {45, 22}};
  for (const CapStyle caps : {CapStyle::round, CapStyle::flat})
    for (const auto& [width, edge] : {std::pair{2.F, 0.7F}, {0.2F, 0.1F}, {3.F, 0.F}, {2.F, 9.F}}) {
      const bool same = edge == 0 || edge == 9;
      for (const auto& bezier : {ring, straight})
        EXPECT_LE(strayOf(bezier, width, edge, caps), same ? 0 : 13) << width;
      double all = 0;
      for (int time = 0; time < 20; ++time) {
        const double stray = strayOf(wiggle(random, 50), width, edge, caps);
        EXPECT_LE(stray, same ? 0 : 22) << width << ' ' << time;
        all += stray;
      }
      EXPECT_LE(all / 20, same ? 0 : 12) << width;
    }
}

TEST(EdgedCurves, EndAsToldAndBecomeDots) {
  const std::vector<PointF> line{{9, 10}, {12, 10}, {17, 10}, {20, 10}}, dot(4, PointF{30, 10});
  const auto draw = [](const std::vector<PointF>& bezier, CapStyle caps) {
    Picture picture(40, 20);
    std::ranges::fill(picture.pixels, 0U);  // nothing, and transparent
    PathFiller filler;
    EXPECT_TRUE(addEdgedCurve(filler, {bezier, 3, 0x0000FF, caps}, 1));
    filler.paint(picture.block());
    return picture;
  };
  const std::uint32_t black = 0xFF000000;
  const Picture flat = draw(line, CapStyle::flat), round = draw(line, CapStyle::round);
  for (int x = 0; x < 40; ++x)
    for (const auto& [y, colour] :
         {std::pair{7, 0U}, {8, black}, {9, kRed}, {10, kRed}, {11, kRed}, {12, black}})
      EXPECT_EQ(flat.at(x, y), x >= 9 && x <= 20 ? colour : 0U) << x << ' ' << y;
  EXPECT_TRUE(round.at(8, 10) == kRed && round.at(21, 10) == kRed && round.at(7, 10) == black);
  EXPECT_TRUE(round.at(6, 10) == 0 && round.at(12, 10) == kRed && round.at(12, 8) == black);
  // Its pieces are shorter than the band is wide.
  const Picture bent = draw({{10, 8}, {12, 8}, {14, 10}, {14, 12}}, CapStyle::flat);
  for (int i = 0; i < 40 * 20; ++i) EXPECT_TRUE(bent.pixels[i] == 0 || (i % 40 >= 10 && i / 40 <= 12)) << i;
  EXPECT_TRUE(bent.at(10, 8) == kRed && bent.at(14, 12) == kRed && bent.at(12, 9) == kRed);
  const Picture alone = draw(dot, CapStyle::round);
  EXPECT_TRUE(alone.at(30, 11) == kRed && alone.at(28, 10) == black && alone.at(27, 10) == 0);
  EXPECT_EQ(alone.at(32, 10), alone.at(30, 8));
  EXPECT_EQ(draw(dot, CapStyle::flat).at(30, 10), 0U);
}

TEST(EdgedCurves, NoneThatReachTooFar) {
  PathFiller filler;
  const std::vector<PointF> line(4, PointF{5, 5}), lost{{5, 5}, {6, 6}, {1e7F, 0}, {8, 8}};
  EXPECT_FALSE(addEdgedCurve(filler, {lost, 2, 0}, 1));
  EXPECT_FALSE(addEdgedCurve(filler, {line, 2, 0}, 1e9F));
  EXPECT_FALSE(addEdgedCurve(filler, {line, 0, 0}, 1));
  EXPECT_TRUE(filler.empty());
}

TEST(PathFiller, TakesNothingThatReachesTooFar) {
  for (const float far : {1e6F, -1e9F, std::nanf("")})
    for (const PointF p : {PointF{far, 1}, PointF{1, far}})
      EXPECT_FALSE(PathFiller().add({{{{0, 0}, {1, 1}, p, {0, 1}}}}, 0)) << p.x << ' ' << p.y;
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
    const std::vector<PointF> line = wiggle(random, 211);
    for (PathFiller* filler : {&waiting, &alone}) {
      filler->addPolygons(triangle, colour);
      addEdgedCurve(*filler, {line, 3, colour, shape % 2 == 0 ? CapStyle::flat : CapStyle::round}, 1);
    }
    alone.paint(apart.block());
  }
  waiting.paint(together.block());
  EXPECT_TRUE(together.pixels == apart.pixels);
  Picture narrow(100, 173);  // what lay in the wide ones' rows is gone
  waiting.paint(narrow.block());
  alone.addPolygons({{{{-9, -9}, {120, -9}, {120, 190}, {-9, 190}}}}, 0xFF0000);
  alone.paint(narrow.block());
  EXPECT_EQ(std::ranges::count(narrow.pixels, kBlue), 100 * 173);
}

TEST(WideCurves, ARingShowsNoBeginning) {
  const auto circle = [](double t) { return std::pair{100 + 60 * std::cos(t), 100 + 60 * std::sin(t)}; };
  const std::vector<PointF> ring = sampled(circle, 12, 1);
  for (const auto& [width, edge] : {std::pair{2.5F, 0.F}, {21.F, 0.F}, {1.5F, 0.5F}}) {
    Picture picture(201, 201);
    PathFiller filler;
    addEdgedCurve(filler, {ring, width, 0x0000FF, CapStyle::round}, edge);
    filler.paint(picture.block());
    double ink = 0;
    for (int y = 0; y <= 200; ++y)
      for (int x = 0; x <= 200; ++x) {
        ink += (255 - picture.green(x, y)) / 255.0;
        EXPECT_NEAR(picture.green(x, y), picture.green(200 - x, y), edge > 0 ? 12 : 5) << x << ' ' << y;
      }
    EXPECT_NEAR(ink / (kTwoPi * 60 * (width + 2 * edge)), 1, edge > 0 ? 2e-2 : 2e-3);
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
