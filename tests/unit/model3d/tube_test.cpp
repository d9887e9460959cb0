// The tube model: sizes, closing, bending, limits, and knots that ask for a division by zero.
#include <gtest/gtest.h>

#include <algorithm>

#include "knot_maker.h"
#include "unit/model3d/knots.h"

namespace lorivan {
namespace {

TEST(Tube, SizeFollowsTheLargestCoordinateFromTheOrigin) {
  // Each corner three times: a curve of order 3 passes through it. x from -30.4 to 70.3, y (times 0.8) -8
  // to 40.
  std::vector<StrandPoint> points;
  for (const StrandPoint& corner : {StrandPoint{-30.4F, -10, 0}, {70.3F, -10, 7}, {70.3F, 50, -0.5F}})
    points.insert(points.end(), 3, corner);
  const TubeSettings settings{.polySmooth = 3, .polyZF = 1.5F};
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

/// The strand on top, and the side that each one lies on, are those of the flat picture.
TEST(Tube, RunsAsTheFlatCurveDoes) {
  for (const Shape shape : {Shape::Hexagonal, Shape::SquareTriangle, Shape::Diamond1, Shape::Cross})
    for (const bool mirror : {false, true}) {
      SCOPED_TRACE(shapeTable()[static_cast<std::size_t>(shape)].name);
      const Rnd random = seededRandom(mirror ? 8 : 3);
      const MadeKnot knot = makeKnot(fieldsOf(shape, 7, 5), {.mirror = mirror}, &random);
      const KnotCurve& curve = knot.curve;
      const TubeModel model = built(
          *knot.store, {.polyPoints = samplesPerPoint(knot.fields.scale), .polySmooth = 3, .polyZF = 1});
      ASSERT_GT(model.strands.size(), 1U);
      const auto [left, right] = std::ranges::minmax(curve.X);
      const float unit = (model.curveMaximum.x - model.curveMinimum.x) / (right - left);
      for (const TubeStrand& strand : model.strands)
        for (int ring = 0; ring < strand.ringCount; ++ring) {
          const Vec3& centre = model.centres[strand.firstRing + ring];
          const int sample = curve.first[strand.slot] + ring;
          ASSERT_NEAR(centre.z, curve.Z[sample], 1e-4);
          ASSERT_NEAR(centre.x - model.curveMinimum.x, unit * (right - curve.X[sample]), 1e-3);
        }
    }
}

TEST(Tube, RingClosesAtAHundredPercentAndLeavesAGapAtSeventyFive) {
  const StrandStore store = storeOf(roundStrand(24, 100, false));
  const auto ends = [&](float percent) {
    const TubeModel flat = built(store, {}), bent = built(store, {.ringPercent = percent});
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
  TubeSettings settings{.polySides = 9, .polyPoints = 11};
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
