// The smooth picture: against rays cast at the same mesh, its brightness, its scale, and rings of bent tubes.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>

#include "base/random.h"
#include "model3d/marks.h"
#include "model3d/model_picture.h"
#include "model3d/rings.h"
#include "tries.h"
#include "unit/model3d/knots.h"

namespace lorivan {
namespace {

constexpr int kWidth = 250, kHeight = 200;
constexpr Colour kPaper = 0xFF00FF;

std::vector<std::uint32_t> smoothPixels(const TubeModel& model, const ViewState& view,
                                        const LightSettings& light,
                                        const PictureLook& look = {.background = kPaper},
                                        const Lens& lens = {}) {
  std::vector<std::uint32_t> pixels(static_cast<std::size_t>(kWidth * kHeight));
  ModelPicture().render(model, light, view, lens, look, {pixels.data(), kWidth, kHeight, kWidth});
  return pixels;
}

/// Two strands that cross each other many times, so that a bent knot hides much of itself.
TubeModel wovenModel(int sides, int points, float ringPercent) {
  StrandStore store = storeOf(roundStrand(30, 90, true));
  addStrand(store, 2, samplesRound(48, [point = 0](double angle) mutable {
              return sampleAt(95 * std::cos(angle), 60 * std::sin(5 * angle), point++ % 2 != 0 ? -1 : 1);
            }));
  return built(store, {.polySides = sides, .polyPoints = points, .ringPercent = ringPercent});
}

/// Casts rays from the eye at every triangle, in double precision and without a projection.
class Caster {
 public:
  Caster(const TubeModel& model, float theta, float phi, float psi) {
    const double a = theta * kPi / 180, e = phi * kPi / 180, roll = -psi * kPi / 180;
    // The model's x is turned over; the picture's y is the upward axis of the view, which points down.
    const Triple eye = {std::cos(e) * std::sin(a), std::sin(e), std::cos(e) * std::cos(a)};
    const Triple up = {-std::sin(e) * std::sin(a), std::cos(e), -std::sin(e) * std::cos(a)};
    Triple across;
    CrossProduct(across.x, across.y, across.z, up.x, up.y, up.z, eye.x, eye.y, eye.z);
    const auto along = [](const Triple& axis, const Vec3& p) {
      return -axis.x * static_cast<double>(p.x) + axis.y * static_cast<double>(p.y) +
             axis.z * static_cast<double>(p.z);
    };
    for (const Vec3& p : model.vertices) {
      const double x = along(across, p), y = along(up, p);
      places_.push_back(
          {x * std::cos(roll) - y * std::sin(roll), y * std::cos(roll) + x * std::sin(roll), along(eye, p)});
    }
    forEachQuad(model, [this](int, const QuadCorners& c, int strand) {
      corners_.push_back({{c[0], c[1], c[2]}, strand});
      corners_.push_back({{c[0], c[2], c[3]}, strand});
    });
  }

  /// The strand that is met first through a place of the picture in model units, or -1.
  int strandAt(double x, double y) const {
    const Triple from = {0, 0, 20}, way = {x, y, -20};
    double nearest = 1e9;
    int strand = -1;
    for (const auto& [corner, its] : corners_) {
      const Triple &a = places_[at(corner[0])], &b = places_[at(corner[1])], &c = places_[at(corner[2])];
      const Triple ab = {b.x - a.x, b.y - a.y, b.z - a.z}, ac = {c.x - a.x, c.y - a.y, c.z - a.z},
                   to = {from.x - a.x, from.y - a.y, from.z - a.z};
      Triple p, q;  // T. Moeller and B. Trumbore, Fast, Minimum Storage Ray/Triangle Intersection, 1997
      CrossProduct(p.x, p.y, p.z, way.x, way.y, way.z, ac.x, ac.y, ac.z);
      CrossProduct(q.x, q.y, q.z, to.x, to.y, to.z, ab.x, ab.y, ab.z);
      const double det = dot(ab, p), u = dot(to, p) / det, v = dot(way, q) / det, t = dot(ac, q) / det;
      if (det == 0 || u < 0 || v < 0 || u + v > 1 || t >= nearest || t <= 0) continue;
      nearest = t;
      strand = its;
    }
    return strand;
  }

 private:
  static double dot(const Triple& a, const Triple& b) { return a.x * b.x + a.y * b.y + a.z * b.z; }
  static std::size_t at(int corner) { return static_cast<std::size_t>(corner); }
  struct Face {
    std::array<int, 3> corner;
    int strand;
  };
  std::vector<Triple> places_;
  std::vector<Face> corners_;
};

/// A pixel whose four samples meet one strand shows it, and nothing else; one in thousands may lie so close
/// to an edge that rounding decides. LORIVAN_ANGLES asks for more views.
TEST(Smooth, ShowsWhatRaysMeetAtRandomAngles) {
  const char* const asked = std::getenv("LORIVAN_ANGLES");
  const int views = asked != nullptr ? std::atoi(asked) : 6;
  constexpr double kPlaces[] = {0.375, 0.875, 0.125, 0.625};
  const Rnd random = seededRandom(14);
  int met = 0, wrong = 0;
  for (int i = 0; i < views; ++i) {
    TubeModel model = wovenModel(3 + i % 6, 3, i % 2 == 0 ? 100.0F : 75.0F);
    model.strands[0].factors = {2, 0, 0};
    model.strands[1].factors = {0, 2, 0};
    const auto degrees = [&random] { return static_cast<float>(std::floor(random() * 360)); };
    float phi = degrees();
    if (phi == 180) phi = 90;  // which the view does not show exactly
    const float theta = degrees(), psi = degrees();
    const ViewState view = viewAt(theta, phi, psi);
    const auto pixels = smoothPixels(model, view, {1, 0, 0, 1, -1100});
    const Caster caster(model, theta, phi, psi);
    const double scale = static_cast<double>(placing(model, Projection(view), {}, kWidth, kHeight).scale);
    for (int k = 0; k < 400; ++k) {
      const int x = static_cast<int>(random() * kWidth), y = static_cast<int>(random() * kHeight);
      int strands[4];
      for (int r = 0; r < 4; ++r)
        strands[r] = caster.strandAt((x + kPlaces[r] - kWidth / 2.0) / scale,
                                     (y + (r + 0.5) / 4 - kHeight / 2.0) / scale);
      if (std::ranges::count(strands, strands[0]) != 4) continue;
      constexpr std::uint32_t kColours[] = {0xFFFF00FF, 0xFFFF0000, 0xFF00FF00};
      met += strands[0] >= 0;
      wrong += pixels[y * kWidth + x] != kColours[strands[0] + 1];
    }
  }
  EXPECT_GT(met, views * 20);
  EXPECT_LE(wrong, met / 5000) << "of " << met;
  if (asked != nullptr) std::printf("%d views, %d pixels on strands, %d wrong\n", views, met, wrong);
}

/// A draft has one sample in the middle of each pixel: rows begin where rays through the middles do.
TEST(Smooth, DraftsTakeTheMiddlesOfPixels) {
  constexpr int wide = 1000, high = 800;
  const TubeModel model = wovenModel(6, 3, 0);
  std::vector<std::uint32_t> pixels(std::size_t{wide} * high);
  SmoothRenderer().render(model, {}, {}, {}, {.background = kPaper, .draft = true},
                          {pixels.data(), wide, high, wide});
  const Caster caster(model, 0, 0, 0);
  const double scale = static_cast<double>(placing(model, Projection(ViewState()), {}, wide, high).scale);
  const auto met = [&](int x, int y) {
    return caster.strandAt((x + 0.5 - wide / 2.0) / scale, (y + 0.5 - high / 2.0) / scale) >= 0;
  };
  int rows = 0, wrong = 0;
  for (int y = 1; y < high; y += 5) {
    int x = 0;
    while (x < wide && pixels[y * wide + x] == toArgb(kPaper)) ++x;
    if (x == 0 || x == wide) continue;
    ++rows;
    wrong += !met(x, y) || met(x - 1, y);
  }
  EXPECT_GT(rows, 80);
  EXPECT_LE(wrong, 1);
}

TEST(Smooth, HighlightsFallOffAsTheMirroredLampDoes) {
  const LightSettings shiny{.Ka = 0, .Kd = 0, .Ks = 0.8F, .NFact = 7};
  const SmoothLight light(shiny);
  // The lamp stands 28.5 degrees off the eye, at -0.2806, -0.3858.
  const double lamp = std::acos(0.8789), across = -0.2806 / std::sin(lamp), down = -0.3858 / std::sin(lamp);
  for (const double off : {0.0, 8.0, 15.0, 25.0, 40.0, 50.0}) {
    const double tilt = lamp / 2 - off * kPi / 180;
    const auto shone = light.colour(static_cast<float>(5 * std::sin(tilt) * across),
                                    static_cast<float>(5 * std::sin(tilt) * down),
                                    static_cast<float>(5 * std::cos(tilt)), 1, {0, 0, 0});
    const double wanted = off < 45 ? 255 * 0.8 * std::pow(std::cos(2 * off * kPi / 180), 7) : 0;
    EXPECT_NEAR(shone & 0xFF, wanted, 1.5) << off;
  }
}

/// Mean luminance of the covered pixels.
double brightness(const TubeModel& model, const ViewState& view) {
  double light = 0, weight = 0;
  for (const std::uint32_t p : smoothPixels(model, view, {}, {.background = 0, .transparent = true})) {
    const double alpha = (p >> 24) / 255.0;
    light += alpha * (0.2126 * (p >> 16 & 255) + 0.7152 * (p >> 8 & 255) + 0.0722 * (p & 255));
    weight += alpha;
  }
  return light / weight;
}

TEST(Smooth, IsAsBrightWithManySidesAsWithFewAndFromEverySide) {
  const ViewState front, oblique = viewAt(40, 30, 0), behind = viewAt(180, 0, 0), side = viewAt(100, 0, 0);
  for (const float percent : {0.0F, 75.0F}) {
    const TubeModel coarse = wovenModel(5, 4, percent), fine = wovenModel(40, 12, percent);
    for (const ViewState& view : {front, oblique, behind, side}) {
      const double few = brightness(coarse, view), many = brightness(fine, view);
      EXPECT_NEAR(few / many, 1, 0.1);
      EXPECT_GT(few, 60);
    }
  }
}

TEST(Smooth, OneScaleServesAllAnglesAndTheLensComesCloser) {
  for (const float percent : {0.0F, 100.0F}) {
    const TubeModel model = wovenModel(5, 4, percent);
    const float scale = placing(model, Projection(ViewState()), {}, kWidth, kHeight).scale;
    for (int i = 0; i < tries(40); ++i) {
      const ViewState view = viewAt(static_cast<float>(i * 47 % 360), static_cast<float>(i * 31 % 360),
                                    static_cast<float>(i * 13 % 360));
      EXPECT_EQ(placing(model, Projection(view), {}, kWidth, kHeight).scale, scale);
      for (const bool smooth : {true, false}) {
        const auto pixels = smoothPixels(model, view, {}, {.background = kPaper, .smooth = smooth});
        for (int x = 0; x < kWidth; ++x)
          EXPECT_TRUE(pixels[x] == toArgb(kPaper) &&
                      pixels[pixels.size() - 1 - static_cast<std::size_t>(x)] == toArgb(kPaper));
        // A fitted knot comes near to two edges and passes none.
        const Lens fitted = fittedLens(model, view, kWidth, kHeight);
        EXPECT_GE(fitted.zoom, 0.9F);
        // Whatever is dragged, a strand stays in sight, and what is in sight stays where it is.
        const Lens kept = keptInSight(model, view, {kMostZoom, {70, -30}}, kWidth, kHeight);
        EXPECT_EQ(keptInSight(model, view, fitted, kWidth, kHeight), fitted);
        if (smooth) {
          const auto seen = smoothPixels(model, view, {}, {.background = kPaper}, kept);
          EXPECT_TRUE(std::ranges::any_of(seen, [](std::uint32_t p) { return p != toArgb(kPaper); }));
        }
        // However close one looks, nothing is written outside the picture, and the middle is filled.
        smoothPixels(model, view, {}, {.background = kPaper, .smooth = smooth}, {kMostZoom, {7, -3}});
      }
    }
  }
}

TEST(Rings, OfBentTubesAreNeitherWrungNorEmpty) {
  int joined = 0;
  for (const float percent : {40.0F, 75.0F, 100.0F})
    for (const int sides : {3, 4, 5, 16}) {
      const TubeModel model = wovenModel(sides, 3, percent);
      forEachQuad(model, [&](int, const QuadCorners& c, int) {
        const auto ring = [sides](int corner) { return static_cast<std::size_t>(corner / sides); };
        const Vec3 &p = model.vertices[c[0]], &q = model.vertices[c[3]];
        const Vec3 &a = model.centres[ring(c[0])], &b = model.centres[ring(c[3])];
        const Vec3 half = {(p.x + q.x - a.x - b.x) / 2, (p.y + q.y - a.y - b.y) / 2,
                           (p.z + q.z - a.z - b.z) / 2};
        EXPECT_GT(distance(half, {}), 0.5F * model.radius);
      });
      joined += static_cast<int>(std::ranges::count_if(model.joins, [](int join) { return join != 0; }));
    }
  EXPECT_GT(joined, 0);
  // A strand that stands up along z at one sample: the sweep leaves a ring without radius there.
  TubeModel upright;
  upright.sides = 6;
  upright.radius = 0.5F;
  upright.centres = {{0, 0, 0}, {1, 0, 0}, {1, 0, 1}, {0, 0, 1}};
  upright.strands = {{.slot = 1, .firstRing = 0, .ringCount = 4}};
  ASSERT_TRUE(sweepTube(upright));
  EXPECT_EQ(distance(upright.vertex(1, 0), upright.centres[1]), 0);
  joinRings(upright);
  for (std::size_t v = 0; v < upright.vertices.size(); ++v)
    EXPECT_NEAR(distance(upright.vertices[v], upright.centres[v / 6]), 0.5, 1e-5);
}

TEST(Rings, OfAModelStayJoinedWhenMarksAreAdded) {
  const TubeModel model = wovenModel(7, 3, 60);
  const Vec3 places[] = {{1, 0, 0}, {0, 2, 1}};
  const TubeModel marked = withMarks(withMarks(model, places), {places, 1});
  ASSERT_EQ(marked.joins.size(), marked.centres.size());
  std::vector<QuadCorners> before;
  forEachQuad(model, [&](int, const QuadCorners& c, int) { before.push_back(c); });
  QuadIndex quads;
  quads.build(marked);
  for (int quad = 0; quad < model.QuadCount; ++quad) EXPECT_EQ(quads.corners(quad), before[quad]);
  EXPECT_EQ(marked.QuadCount, model.QuadCount + 3 * 2 * 32 * 7);
}

}  // namespace
}  // namespace lorivan
