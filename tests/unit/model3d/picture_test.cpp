// The shaded picture: how the knot stands, what lies on top, light, edges, and views that ask for trouble.
#include <gtest/gtest.h>

#include <algorithm>
#include <limits>

#include "model3d/renderer.h"
#include "unit/model3d/knots.h"

namespace lorivan {
namespace {

constexpr Colour kRed = 0x0000FF, kGreen = 0x00FF00, kBlue = 0xFF0000, kMagenta = 0xFF00FF;

struct Picture {
  explicit Picture(int w) : width(w), height(w * 4 / 5), pixels(static_cast<std::size_t>(width * height)) {}
  PixelBlock block() { return {pixels.data(), width, height, width}; }
  std::uint32_t at(int x, int y) const { return pixels[y * width + x]; }
  /// Middle of the pixels of one pure colour, as shares of the picture's size.
  PointF middleOf(Colour colour) const {
    double x = 0, y = 0, count = 0;
    for (int i = 0; i < width * height; ++i) {
      if (pixels[i] != toArgb(colour)) continue;
      x += i % width + 0.5;
      y += i / width + 0.5;
      ++count;
    }
    return {static_cast<float>(x / count / width), static_cast<float>(y / count / height)};
  }
  bool edgeIs(Colour colour) const {
    for (int y = 0; y < height; ++y)
      for (int x = 0; x < width; x += y == 0 || y == height - 1 ? 1 : width - 1)
        if (at(x, y) != toArgb(colour)) return false;
    return true;
  }
  int width, height;
  std::vector<std::uint32_t> pixels;
};

/// Light that gives every face its pure colour.
constexpr LightSettings kFlat = {1, 0, 0, 1, -1100};
/// In colours whose parts are lit to full by kFlat: 128 times 2.
TubeModel brightModel(const StrandStore& store, const TubeSettings& settings,
                      const std::vector<Colour>& colours) {
  SlotColours all{};
  std::copy(colours.begin(), colours.end(), all.begin() + 1);
  TubeModel model;
  EXPECT_TRUE(static_cast<bool>(buildTube(store, settings, all, model)));
  for (TubeStrand& strand : model.strands)
    for (float& factor : strand.factors) factor *= 2;
  return model;
}

Picture shown(const TubeModel& model, const ViewState& view, const LightSettings& light = kFlat,
              int width = 500, bool heightMap = false) {
  Picture picture(width);
  Renderer renderer;
  renderer.render(model, light, view, {}, {.background = kMagenta, .heightMap = heightMap}, picture.block());
  return picture;
}

/// A small round about a place of the grid, where x points right and y up.
std::vector<StrandPoint> roundAt(float gridX, float gridY, float radius, float height = 0) {
  std::vector<StrandPoint> points = roundStrand(12, radius, false);
  for (StrandPoint& p : points) p = {-(gridX + p.x), gridY + p.y / 0.8F, height};
  return points;
}

TEST(Picture, StandsAsTheGridDoesAndIsNotMirrored) {
  StrandStore store;
  addStrand(store, 1, roundAt(70, 60, 10));    // top right
  addStrand(store, 2, roundAt(70, -50, 10));   // bottom right
  addStrand(store, 3, roundAt(-60, -50, 10));  // bottom left
  const TubeModel model = brightModel(store, {}, {kRed, kGreen, kBlue});
  for (const int width : {250, 500, 1100}) {
    const Picture picture = shown(model, viewAt(0, 0, 0), kFlat, width);
    const PointF red = picture.middleOf(kRed), green = picture.middleOf(kGreen),
                 blue = picture.middleOf(kBlue);
    EXPECT_GT(red.x, 0.6F);
    EXPECT_LT(red.y, 0.4F);
    EXPECT_NEAR(green.x, red.x, 0.01);
    EXPECT_GT(green.y, 0.6F);
    EXPECT_LT(blue.x, 0.4F);
    EXPECT_NEAR(blue.y, green.y, 0.01);
    // One unit across is as long as one unit down.
    EXPECT_NEAR((green.x - blue.x) * 500 / ((green.y - red.y) * 400), 130.0 / 88, 0.02);
    EXPECT_TRUE(picture.edgeIs(kMagenta));
  }
  // A quarter turn of the roll takes the right side up, through the picture's middle.
  const Picture rolled = shown(model, viewAt(0, 0, 90));
  EXPECT_LT(rolled.middleOf(kRed).x, 0.4F);
  EXPECT_LT(rolled.middleOf(kRed).y, 0.4F);
  EXPECT_GT(rolled.middleOf(kBlue).y, 0.6F);
  // From behind, left and right change places; top and bottom do not.
  const Picture behind = shown(model, viewAt(180, 0, 0));
  EXPECT_LT(behind.middleOf(kRed).x, 0.4F);
  EXPECT_LT(behind.middleOf(kRed).y, 0.4F);
}

TEST(Picture, FacesLeaveNoCracksAndEdgesAreSmooth) {
  const TubeModel model =
      brightModel(storeOf(roundStrand(24, 90, true)), {.polySides = 40, .polyPoints = 30}, {kGreen});
  const Picture picture = shown(model, viewAt(20, 30, 0));
  int edges = 0;
  for (int y = 1; y < picture.height - 1; ++y) {
    for (int x = 1; x < picture.width - 1; ++x) {
      if (picture.at(x, y) == toArgb(kGreen) || picture.at(x, y) == toArgb(kMagenta)) continue;
      ++edges;
      bool outside = false;
      for (int k = 0; k < 9; ++k) outside |= picture.at(x - 1 + k % 3, y - 1 + k / 3) == toArgb(kMagenta);
      EXPECT_TRUE(outside) << "crack at " << x << ' ' << y;
    }
  }
  EXPECT_GT(edges, 500);
}

TEST(Picture, NeverCutNorSpoiltByAnyFieldValue) {
  const StrandStore knots[] = {storeOf({{-50, 0, 1}, {0, 0, 0}, {50, 0, -1}, {0, 0, 0}}), storeOf(trefoil()),
                               storeOf(roundStrand(40, 90, true)), StrandStore()};
  Renderer renderer;
  Picture picture(200);
  for (const StrandStore& store : knots) {
    for (int mask = 0; mask < 256; ++mask) {
      const auto pick = [&](int bit, float low, float high) { return (mask >> bit & 1) != 0 ? high : low; };
      const TubeSettings settings{
          .polyRadius = pick(1, 1, 10), .polyZF = pick(0, 0.25F, 10), .ringPercent = pick(2, 0, 100)};
      const LightSettings light = {pick(3, 0, 1), pick(4, 0, 1), 1, pick(5, 0, 10), pick(6, -500, -20000)};
      const ViewState view = viewAt(pick(7, 0, 237), pick(0, 0, 360) / 3, pick(1, 0, 45));
      renderer.render(built(store, settings), light, view, {}, {.background = kMagenta}, picture.block());
      ASSERT_TRUE(picture.edgeIs(kMagenta)) << mask;
      ASSERT_EQ(picture.pixels == std::vector(picture.pixels.size(), toArgb(kMagenta)),
                store.ThreadCount[1] == 0);
    }
  }
}

TEST(Picture, HeightMapIsGreyAndLighterWhereNearer) {
  StrandStore store;
  addStrand(store, 1, roundAt(0, 0, 60, 1));
  addStrand(store, 2, roundAt(0, 0, 30, -1));
  const Picture picture = shown(built(store, {}), viewAt(0, 0, 0), {}, 1000, true);
  std::array<std::uint32_t, 2> lightest{};  // of the outer and nearer round, and of the inner one
  for (int x = 0; x < 1000; ++x) {
    const std::uint32_t p = picture.at(x, 400);
    const bool grey = (p & 255) == (p >> 8 & 255) && (p & 255) == (p >> 16 & 255);
    const std::size_t inner = x > 300 && x < 700 ? 1 : 0;
    if (grey) lightest[inner] = std::max(lightest[inner], p & 255);
  }
  EXPECT_GE(lightest[0], 160U);
  EXPECT_LE(lightest[1], 64U);
  EXPECT_NE(std::find(picture.pixels.begin(), picture.pixels.end(), 0xFFFFFFFF), picture.pixels.end());
}

TEST(Picture, AFaceIsAsFarAsItsFarthestCorner) {
  // Two sheets of one face each: a tilted one, and one that lies half way between its ends.
  TubeModel model;
  model.sides = 4;
  model.minimumCoordinate = -800;
  const auto sheet = [&](const Vec3& p1, const Vec3& p2, const Vec3& p3, const Vec3& p4, Vec3 colour) {
    const auto ring = static_cast<int>(model.centres.size());
    model.strands.push_back({ring + 1, {colour.x, colour.y, colour.z}, ring, 2});
    model.centres.resize(model.centres.size() + 2);
    model.vertices.insert(model.vertices.end(), {p1, p2, p2, p2, p4, p3, p3, p3});
    model.QuadCount += 8;
  };
  sheet({-3, -3, -5}, {3, -3, 5}, {3, 3, 5}, {-3, 3, -5}, {2, 0, 0});
  sheet({-3, -3, 0}, {3, -3, 0}, {3, 3, 0}, {-3, 3, 0}, {0, 2, 0});
  sheet({-3, -3, 25}, {3, -3, 25}, {3, 3, 25}, {-3, 3, 25}, {0, 0, 2});  // behind the eye
  EXPECT_EQ(shown(model, viewAt(0, 0, 0)).at(250, 200), toArgb(kGreen));
}

TEST(Shader, IntensitiesMatchHandComputedFaces) {
  TubeModel model;
  model.sides = 4;
  model.QuadCount = 1;
  model.strands = {{1, {1, 1, 1}, 0, 1}};
  // One square to the eye, a small one turned away.
  model.vertices = {{0, 0, 0},    {1, 0, 0}, {1, 1, 0}, {0, 1, 0}, {0, 0.1F, 0},
                    {1, 0.1F, 0}, {0, 1, 1}, {0, 0, 1}, {1, 0, 1}};
  const QuadCorners front = {0, 1, 2, 3}, back = {0, 4, 5, 1};
  const LightSettings dim = {0, 0.9F, 0.5F, 2, -1100};
  const Shader shader(model, dim);
  // L = 1122.497, c1 = 1000 / L, LightScale = (1122.4085 - 1096) * 255; the reflected ray meets the eye at
  // c1.
  const double L = std::sqrt(1260000.0), c1 = 1000 / L;
  const double perLight = (std::sqrt(1259801.0) - 1096) * 255 / (L - 1100);
  const QuadLight lit = shader.light(front);
  EXPECT_TRUE(lit.reached);
  EXPECT_NEAR(lit.intensity, (c1 * 0.9 + 0.5 * c1 * c1) * perLight, 1e-3);
  const QuadLight waiting = shader.light(back);
  EXPECT_TRUE(waiting.waiting);
  EXPECT_TRUE(shader.reaches(front) && !shader.reaches(back));
  EXPECT_NEAR(waiting.intensity, 0.1 * c1 * 0.9 * perLight, 1e-3);
  const double e2 = c1 - 2 * 0.1 * c1 * 0.1;
  EXPECT_NEAR(shader.lightAfter(back, front), (0.1 * c1 * 0.9 + 0.5 * e2 * e2) * perLight, 1e-3);
  // To the right and upwards both lights shine alike, one of them mirrored into the eye.
  const double mirrored = 0.5 * c1 * c1;
  EXPECT_NEAR(shader.light({0, 3, 6, 7}).intensity, (2 * 500 / L * 0.9 + mirrored) * perLight, 1e-3);
  EXPECT_NEAR(shader.light({0, 7, 8, 1}).intensity, (2 * 100 / L * 0.9 + mirrored) * perLight, 1e-3);

  // KDist may undo the distance to a face or to the last corner exactly; then there is all the light or none.
  model.vertices[0] = model.vertices[3] = {500, 100, -200};
  EXPECT_EQ(Shader(model, {0.5F, 0.9F, 0.5F, 2, -1200}).light({0, 1, 2, 3}).intensity, 511);
  EXPECT_EQ(litColour(511, {1, 0.5F, 0}), 0xFFFFFF00U);
  EXPECT_EQ(litColour(14, {0.25F, 0.75F, 0.5F}), 0xFF040A07U);
}

TEST(Painter, FillsByTheEvenOddRuleInAnyNumberOfBands) {
  std::vector<std::uint32_t> pixels(static_cast<std::size_t>(3000 * 2400));
  const PixelBlock block = {pixels.data(), 3000, 2400, 3000};
  Painter painter;
  // Grid lines are half pixels here. A bow tie, and a square over its right half.
  const GridQuad quads[] = {{{{{0, 0}, {2000, 2000}, {2000, 0}, {0, 2000}}}, 0xFF112233},
                            {{{{1500, 0}, {1500, 3000}, {2000, 3000}, {2000, 0}}}, 0xFF445566}};
  painter.paint(block, 0x0A0B0C, true, {0, 0}, {2000, 3000}, 2, [&](int rank) { return quads[rank]; });
  const auto at = [&](int x, int y) { return pixels[y * 3000 + x]; };
  EXPECT_TRUE(at(100, 500) == 0xFF112233 && at(740, 500) == 0xFF112233 && at(750, 1499) == 0xFF445566);
  EXPECT_EQ(at(500, 100) | at(500, 900) | at(750, 1500), 0U);
  EXPECT_EQ(at(300, 300), 0x40112233U) << "one sample of four, with straight alpha";
}

}  // namespace
}  // namespace lorivan
