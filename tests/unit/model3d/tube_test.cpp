// The tube model: sizes, closing, bending, limits, and knots that ask for a division by zero.
#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <map>

#include "model3d/m3ops.h"
#include "unit/model3d/knots.h"

namespace lorivan {
namespace {

TEST(Tube, SizeFollowsTheLargestCoordinateFromTheOrigin) {
  // Each corner three times: a curve of order 3 passes through it. x from -30.4 to 70.3, y (times 0.8) -8
  // to 40.
  std::vector<StrandPoint> points;
  for (const StrandPoint& corner : {StrandPoint{-30.4F, -10, 0}, {70.3F, -10, 7}, {70.3F, 50, -0.5F}}) {
    points.insert(points.end(), 3, corner);
  }
  TubeSettings settings;
  settings.polySmooth = 3;
  settings.polyZF = 1.5F;
  const TubeModel model = built(storeOf(points), settings);
  const double scale = 8.0 / 70, middle = 20;
  EXPECT_NEAR(model.curveMinimum.x, (-30.4 - middle) * scale, 1e-5);
  EXPECT_NEAR(model.curveMaximum.x, (70.3 - middle) * scale, 1e-5);
  EXPECT_NEAR(model.curveMinimum.y, -(40 - 16) * scale, 1e-5);  // y changes its sign
  EXPECT_NEAR(model.curveMaximum.y, -(-8 - 16) * scale, 1e-5);
  EXPECT_EQ(model.curveMinimum.z, -1.5F);  // only the sign of a height counts
  EXPECT_EQ(model.curveMaximum.z, 1.5F);
  EXPECT_EQ(model.minimumCoordinate, -576);
  EXPECT_EQ(model.QuadCount, 9 * 5 * 4);
  for (int quarter = 0; quarter < 4; ++quarter) {  // the largest coordinate points to each side in turn
    for (StrandPoint& p : points) p = {-p.y * 0.8F, p.x / 0.8F, p.z};
    const TubeModel turned = built(storeOf(points), settings);
    const double wide = turned.curveMaximum.x - turned.curveMinimum.x;
    const double high = turned.curveMaximum.y - turned.curveMinimum.y;
    EXPECT_NEAR(std::max(wide, high), (70.3 + 30.4) * scale, 1e-4) << quarter;
  }
}

TEST(Tube, StrandsCloseAndFacesLookOutward) {
  for (const auto& [sides, points, order] : {std::array{3, 1, 3}, {5, 4, 4}, {40, 9, 6}, {7, 50, 20}}) {
    StrandStore store = storeOf(trefoil(), 3);
    addStrand(store, 40, roundStrand(14, 90, true));
    TubeSettings settings;
    settings.polySides = sides;
    settings.polyPoints = points;
    settings.polySmooth = order;
    settings.polyRadius = 3;
    const TubeModel model = built(store, settings);
    ASSERT_EQ(model.strands.size(), 2U);
    EXPECT_EQ(model.strands[1].slot, 40);
    EXPECT_EQ(model.QuadCount, (24 + 14) * sides * points);
    EXPECT_EQ(model.QuadCount, polygonBudget(store, settings));

    std::map<std::pair<int, int>, int> edges;
    int inward = 0, quads = 0;
    forEachQuad(model, [&](int quad, const QuadCorners& c, int) {
      EXPECT_EQ(quad, quads++);
      for (std::size_t k = 0; k < 4; ++k) ++edges[{c[k], c[(k + 1) % 4]}];
      const auto at = [&](std::size_t k) { return model.vertices[static_cast<std::size_t>(c[k])]; };
      const Vec3 p = at(0), q = at(1), r = at(2),
                 centre = model.centres[static_cast<std::size_t>(c[0] / sides)];
      float x, y, z;
      CrossProduct(x, y, z, q.x - p.x, q.y - p.y, q.z - p.z, r.x - q.x, r.y - q.y, r.z - q.z);
      const float mx = (p.x + q.x) / 2 - centre.x, my = (p.y + q.y) / 2 - centre.y;
      if (x * mx + y * my + z * ((p.z + q.z) / 2 - centre.z) < 0) ++inward;
    });
    for (const auto& [edge, uses] : edges) {
      EXPECT_EQ(uses, 1);
      EXPECT_TRUE(edges.contains({edge.second, edge.first})) << "free edge";
    }
    if (points > 1) {
      EXPECT_EQ(inward, 0);
    }
    for (const TubeStrand& strand : model.strands) {
      const auto* centre = model.centres.data() + strand.firstRing;
      float longest = 0;
      for (int r = 1; r < strand.ringCount; ++r)
        longest = std::max(longest, distance(centre[r], centre[r - 1]));
      EXPECT_LE(distance(centre[0], centre[strand.ringCount - 1]), longest * 1.05F);
      EXPECT_GT(distance(centre[0], centre[strand.ringCount - 1]), 0);
    }
    for (std::size_t v = 0; v < model.vertices.size(); ++v) {
      ASSERT_NEAR(distance(model.vertices[v], model.centres[v / static_cast<std::size_t>(sides)]), 0.3F,
                  1e-5);
    }
  }
}

TEST(Tube, RingClosesAtAHundredPercentAndLeavesAGapAtSeventyFive) {
  const StrandStore store = storeOf(roundStrand(24, 100, false));
  const auto ends = [&](float percent) {
    TubeSettings settings;
    const TubeModel flat = built(store, settings);
    settings.ringPercent = percent;
    const TubeModel bent = built(store, settings);
    const auto byX = [](const Vec3& a, const Vec3& b) { return a.x < b.x; };
    const auto [left, right] = std::minmax_element(flat.centres.begin(), flat.centres.end(), byX);
    const auto at = [&](auto it) {
      return bent.centres[static_cast<std::size_t>(it - flat.centres.begin())];
    };
    EXPECT_EQ(at(left).y, left->y);
    return std::pair(distance({at(left).x, 0, at(left).z}, {at(right).x, 0, at(right).z}), right->x);
  };
  EXPECT_NEAR(ends(100).first, 0, 1e-4);
  const auto [gap, radius] = ends(75);
  EXPECT_NEAR(gap, radius * std::sqrt(2.0F), 1e-4);
  EXPECT_NEAR(ends(50).first, 2 * radius, 1e-4);
  EXPECT_NEAR(ends(0).first, 2 * radius, 0.1);
}

TEST(Tube, LimitsAndDegenerateKnots) {
  const auto storeWith = [](int total) {
    StrandStore store = storeOf(roundStrand(6000, 100, true));
    addStrand(store, 2, roundStrand(total - 6000, 80, true));
    return store;
  };
  TubeSettings settings;
  settings.polySides = 9;
  settings.polyPoints = 11;
  TubeModel model = built(storeWith(10101), settings);
  EXPECT_EQ(model.QuadCount, 999999);
  const std::vector<Vec3> before = model.vertices;

  settings.polySides = settings.polyPoints = 10;
  const Status refused = buildTube(storeWith(10000), settings, allOf(0), model);
  ASSERT_FALSE(static_cast<bool>(refused));
  EXPECT_EQ(refused.error().kind, ErrorKind::limit);
  EXPECT_EQ(model.QuadCount, 999999);
  EXPECT_TRUE(std::equal(before.begin(), before.end(), model.vertices.begin(),
                         [](const Vec3& a, const Vec3& b) { return distance(a, b) == 0; }));
  model.sides = 10;
  const Status unswept = sweepTube(model);
  ASSERT_FALSE(static_cast<bool>(unswept));
  EXPECT_EQ(unswept.error().kind, ErrorKind::limit);

  const std::vector<StrandPoint> noWidth = {{5.2F, -40, 1}, {4.8F, 0, 0}, {5.1F, 60, -1}, {5, 10, 0}};
  for (const StrandStore& store : {StrandStore(), storeOf(noWidth)}) {
    EXPECT_TRUE(static_cast<bool>(buildTube(store, settings, allOf(0), model)));
    EXPECT_EQ(model.QuadCount, 0);
    EXPECT_TRUE(model.vertices.empty());
  }
}

TEST(Tube, NoFieldValueMakesAVertexThatIsNotANumber) {
  const float nan = std::numeric_limits<float>::quiet_NaN(), huge = std::numeric_limits<float>::max();
  const std::vector<std::vector<StrandPoint>> knots = {
      {{-50, 0, 1}, {0, 0, 0}, {50, 0, -1}, {0, 0, 0}},                      // straight, there and back
      {{-50, 0, 0}, {50, 0, 0}},                                             // two points
      {{-50, 3, -1}, {-50, 3, 1}, {-50, 3, -1}, {50, 3, 1}, {50, 3, -1}},    // along z
      {{0.4F, 0, 1}, {0.6F, 0, -1}},                                         // less than one grid unit
      {{-32768, -32768, 1}, {32767, 32767, -1}, {0, 32767, 0}},              // the ends of the grid's range
      {{nan, 1, nan}, {huge, -huge, huge}, {-huge, nan, -huge}, {7, 7, 7}},  // not from any trace
      trefoil()};
  for (const auto& knot : knots) {
    const StrandStore store = storeOf(knot);
    for (int mask = 0; mask < 64; ++mask) {
      const auto pick = [&](int bit, auto low, auto high) { return (mask >> bit & 1) != 0 ? high : low; };
      const TubeSettings settings = {pick(0, 3, 200), pick(1, 1, 50),        pick(2, 1.0F, 10.0F),
                                     pick(3, 3, 20),  pick(4, 0.25F, 10.0F), pick(5, 0.0F, 100.0F)};
      TubeModel model = built(store, settings);
      EXPECT_TRUE(std::all_of(model.vertices.begin(), model.vertices.end(), [](const Vec3& p) {
        return std::isfinite(p.x) && std::isfinite(p.y) && std::isfinite(p.z) && std::fabs(p.x) < 1e5F;
      })) << mask;
    }
  }
}

}  // namespace
}  // namespace lorivan
