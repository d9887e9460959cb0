// The tube model: sizes, closing, bending, limits, and knots that ask for a division by zero.
#include <gtest/gtest.h>

#include <algorithm>
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
    const Vec3 &low = turned.curveMinimum, &high = turned.curveMaximum;
    EXPECT_NEAR(std::max(high.x - low.x, high.y - low.y), (70.3 + 30.4) * scale, 1e-4) << quarter;
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
      const auto at = [&](std::size_t k) { return model.vertices[c[k]]; };
      const Vec3 p = at(0), q = at(1), r = at(2), centre = model.centres[c[0] / settings.polySides];
      float x, y, z;
      CrossProduct(x, y, z, q.x - p.x, q.y - p.y, q.z - p.z, r.x - q.x, r.y - q.y, r.z - q.z);
      const float mx = (p.x + q.x) / 2 - centre.x, my = (p.y + q.y) / 2 - centre.y;
      if (x * mx + y * my + z * ((p.z + q.z) / 2 - centre.z) < 0) ++inward;
    });
    for (const auto& [edge, uses] : edges)
      EXPECT_TRUE(uses == 1 && edges.contains({edge.second, edge.first})) << "free edge";
    EXPECT_TRUE(points == 1 || inward == 0);
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
    const auto at = [&](auto it) { return bent.centres[it - flat.centres.begin()]; };
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
  const Vec3 before = model.vertices[0];
  settings.polySides = settings.polyPoints = 10;
  const Status refused = buildTube(storeWith(10000), settings, allOf(0), model);
  ASSERT_FALSE(static_cast<bool>(refused));
  EXPECT_EQ(refused.error().kind, ErrorKind::limit);
  EXPECT_TRUE(model.QuadCount == 999999 && distance(model.vertices[0], before) == 0);
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

}  // namespace
}  // namespace lorivan
