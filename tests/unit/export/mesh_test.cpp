// Meshes stay closed: whatever the shape, the bending and the size.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>

#include "base/random.h"
#include "export/mesh.h"
#include "export/writers.h"
#include "tries.h"
#include "unit/export/sample_knots.h"
#include "unit/export/stl_reader.h"

namespace lorivan {
namespace {

MeshFacts stlFacts(const SampleKnot& knot, std::optional<double> millimetres = {}) {
  return factsOf(readStl(written(writeStl, knot.scene(millimetres))));
}

TEST(Mesh, ManyPlacesAreRoundedAsOneIs) {
  std::vector<Vec3> places;
  const Rnd random = seededRandom(7);
  const auto number = [&] {
    return static_cast<float>((2 * random() - 1) * std::pow(10, 13 * random() - 7));  // to a million
  };
  for (int i = 0; i < 5000; ++i) places.push_back({number(), number(), number()});
  places[3] = {std::nanf(""), std::numeric_limits<float>::infinity(), -2e6F};
  places[4] = {2e6F, -0.F, -0.0009999F};
  for (const double scale : {1.0, 0.3137}) {
    const std::vector<MeshPoint> together = meshPoints(places, scale);
    ASSERT_EQ(together.size(), places.size());
    for (std::size_t i = 0; i < places.size(); ++i) EXPECT_EQ(together[i], meshPoint(places[i], scale)) << i;
  }
}

TEST(Mesh, EveryShapeFlatBentAndClosedIsWatertight) {
  for (int shape = 0; shape + 1 < kShapeCount; ++shape)
    for (const float ring : {0.F, 75.F, 100.F})
      for (const int sides : {3, 8}) {
        if (isLeftOut(shape + sides + static_cast<int>(ring) / 25)) continue;
        SCOPED_TRACE(testing::Message() << "shape " << shape << " ring " << ring << " sides " << sides);
        const SampleKnot knot = standardKnot(static_cast<Shape>(shape), 4, 3,
                                             {.polySides = sides, .polySmooth = 3, .ringPercent = ring});
        const MeshFacts facts = stlFacts(knot);
        EXPECT_TRUE(facts.unmatched + facts.ambiguous + facts.degenerate == 0 && facts.volume > 1);
      }
}

TEST(Mesh, CoarseDecimalsCloseUpWithoutHoles) {
  const SampleKnot knot = standardKnot(Shape::Star, 5, 3, {.polySides = 9, .polyPoints = 8});
  for (const double width : {50.0, 1.0, 0.3, 0.1, 0.05}) {
    SCOPED_TRACE(width);
    const MeshFacts facts = stlFacts(knot, width);
    EXPECT_TRUE(facts.unmatched + facts.degenerate == 0 && facts.volume > 0);
  }
  MemorySink sink;
  EXPECT_EQ(writeStl(knot.scene(0.001), sink).error().kind, ErrorKind::output);
}

TEST(Mesh, QuadsWithThreeCornersInOneLineAreCutAlongTheOtherDiagonal) {
  const SampleKnot knot = standardKnot(Shape::Hexagonal, 4, 3, {.polySides = 8, .polyPoints = 8});
  const TubeMesh mesh(knot.model, 0.1 / 16);
  int turned = 0;
  for (const TubeMesh::Strand& strand : mesh.strands())
    for (std::size_t ring = 0; ring < strand.ringCount; ++ring)
      mesh.eachFace(strand, ring, [&](const TubeMesh::Face& face) {
        const auto corners = polygonCorners(face.cut);
        if (corners.size() != 4) return;
        const auto isFlat = [&](int i, int j, int k) {
          const auto at = [&](int n) { return mesh.points()[face.corner[corners[n]]]; };
          const auto way = [](MeshPoint from, MeshPoint to) {
            return Vec3{static_cast<float>(to.x - from.x), static_cast<float>(to.y - from.y),
                        static_cast<float>(to.z - from.z)};
          };
          const Vec3 a = way(at(i), at(j)), b = way(at(i), at(k));
          return a.y * b.z == a.z * b.y && a.z * b.x == a.x * b.z && a.x * b.y == a.y * b.x;
        };
        const bool otherIsFlat = isFlat(1, 2, 3) || isFlat(1, 3, 0);
        EXPECT_TRUE(otherIsFlat || !(isFlat(0, 1, 2) || isFlat(0, 2, 3)));
        turned += face.cut == Cut::alongBD;
      });
  EXPECT_GT(turned, 10);
}

/// Thickness: how much volume the tube has of what its straight length should give.
double fullness(const SampleKnot& knot, double length) {
  return stlFacts(knot).volume / (kPi * knot.model.radius * knot.model.radius * length);
}

TEST(Mesh, ATubeKeepsItsThicknessWhereItRunsAlongZ) {
  // A tall loop in the plane y = 0: up and down along z, with rings of no radius or turned half round there.
  std::vector<Vec3> loop;
  for (int i = 0; i < 120; ++i) {
    const float along = static_cast<float>(i) * 0.5F;
    loop.push_back({std::clamp(along - 20, 0.F, 10.F) - std::clamp(along - 50, 0.F, 10.F), 0,
                    std::clamp(along, 0.F, 20.F) - std::clamp(along - 30, 0.F, 20.F)});
  }
  SampleKnot knot;
  for (const float waver : {0.F, 0.01F}) {  // not quite along z, the rings turn to and fro
    for (Vec3& p : loop) p.y = waver * std::sin(p.z * 2);
    knot.model = sweptTube({loop}, 12, 0.5F);
    EXPECT_EQ(stlFacts(knot).unmatched, 0);
    EXPECT_NEAR(fullness(knot, 60), 0.95, 0.06);
  }
}

TEST(Mesh, TubesThatTouchKeepTheirOwnEdges) {
  SampleKnot knot;
  const TubeModel one = torus(5, 1, 24, 8);
  std::vector<Vec3> twice(one.centres);
  knot.model = sweptTube({twice, twice}, 8, 1);  // the worst case: every edge is shared
  const MeshFacts facts = stlFacts(knot);
  EXPECT_EQ(facts.unmatched + facts.ambiguous, 0);

  // A strand that turns back on itself in one ring: the two tubes share single corners only.
  const TubeSettings pinched{
      .polySides = 12, .polyPoints = 2, .polySmooth = 5, .polyZF = 9.5F, .ringPercent = 100};
  EXPECT_EQ(stlFacts(standardKnot(Shape::Hexagonal, 3, 5, pinched), 1).ambiguous, 0);
}

}  // namespace
}  // namespace lorivan
