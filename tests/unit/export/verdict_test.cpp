// The verdict on a model against what every pair of its file's triangles says.
#include <gtest/gtest.h>

#include <numeric>
#include <random>

#include "brute_force.h"
#include "export/writers.h"
#include "sample_knots.h"

namespace lorivan {
namespace {

TEST(Verdict, TellsTheFirstPlaceThatIsFolded) {
  std::vector<std::vector<Vec3>> lines;
  for (const auto& [middle, radius] : {std::pair{0.0F, 5.0F}, {20.0F, 0.3F}, {40.0F, 0.3F}}) {
    lines.push_back(circle(radius, 40));
    for (Vec3& p : lines.back()) p.x += middle;
  }
  const Verdict verdict = inspect(sweptTube(lines, 8, 0.5F), {}, 2, TubeForm::polygons);
  EXPECT_GT(verdict.folds, 40);
  EXPECT_NEAR(verdict.foldAt.x, 20, 1);
}

TEST(Verdict, AgreesWithEveryPairOfTriangles) {
  struct Case {
    Shape shape;
    int x, y, window;
    TubeSettings tube;
  };
  for (const Case& c :
       {Case{Shape::Hexagonal, 2, 2, 2, {.polySides = 5, .polyRadius = 5, .polyZF = 2}},
        Case{Shape::SquareSquare, 3, 2, 2, {.polySides = 8, .polyRadius = 3, .polyZF = 0.6F}},
        Case{Shape::Triangle, 3, 3, 2, {.polySides = 7, .polyRadius = 3, .polyZF = 3, .ringPercent = 60}}}) {
    SCOPED_TRACE(testing::Message() << "sides " << c.tube.polySides << ", ring " << c.tube.ringPercent);
    const TubeModel model = standardKnot(c.shape, c.x, c.y, c.tube).model;
    const auto read = readStl(written(writeStl, {model, KnotCurve()}));
    const auto triangles = placed(read, model.sides);
    ASSERT_EQ(triangles.size(), 2U * static_cast<std::size_t>(model.QuadCount));
    const Verdict verdict = inspect(model, {}, c.window, TubeForm::polygons);

    const CentreLines lines(model);
    const double length = std::reduce(verdict.lengths.begin(), verdict.lengths.end());
    const double leastWay =
        std::max(4.0 * model.radius, length / static_cast<double>(model.centres.size()) * 4 * c.window);
    const auto counts = [&](std::uint32_t a, std::uint32_t b) {
      const auto way = static_cast<double>(lines.wayBetween(a, b));
      return way >= leastWay && way >= 2.0 * nearestOf(lines.segments()[a], lines.segments()[b]).distance;
    };
    const float clearance = bruteClearance(triangles, counts);
    EXPECT_NEAR(verdict.clearance.value, clearance, 0.02 * clearance + 0.001);
    const float wall = bruteWall(triangles, lines, 2 * model.radius);
    EXPECT_NEAR(verdict.wall.value, wall, 0.02 * wall + 0.001);
    EXPECT_NEAR(verdict.volume, factsOf(read).volume, 0.02 * verdict.volume);
  }
}

/// Two hoops whose gap is known, linked or in one another.
TEST(Verdict, KnowsGapsAndPieces) {
  const auto hoops = [](float gap) {
    std::vector<std::vector<Vec3>> lines(2, circle(3, 200));
    for (Vec3& p : lines[1]) p.z = 1 + gap;
    return sweptTube(lines, 200, 0.5F);
  };
  const RingCrossing crossing{20, 220};
  for (const float gap : {0.5F, 0.01F}) {
    const Verdict apart = inspect(hoops(gap), {&crossing, 1}, 3, TubeForm::polygons);
    EXPECT_NEAR(apart.clearance.value, gap, 0.02 * gap + 3e-4);
    EXPECT_TRUE(apart.pieces == 2 && apart.touching == 0 && !apart.overlap.found && apart.folds == 0);
  }
  const Verdict together = inspect(hoops(-0.1F), {&crossing, 1}, 3, TubeForm::polygons);
  EXPECT_NEAR(together.overlap.value, 0.1, 1e-4);
  EXPECT_TRUE(together.pieces == 1 && together.touching == 1 && together.clearance.value == 0);
  EXPECT_EQ(inspect(hoops(-0.1F), {}, 3, TubeForm::polygons).pieces, 1) << "met without a crossing";
  EXPECT_NEAR(together.wall.value, 1, 0.01);
  EXPECT_NEAR(together.lengths.at(0), 6 * 3.14159, 0.01);
}

/// Two hoops that cross at right angles, so deep in each other that their surfaces meet beside the crossing.
TEST(Verdict, StrandsThatRunThroughEachOtherTouch) {
  for (const int sides : {3, 5, 64}) {
    std::vector<std::vector<Vec3>> lines(2, circle(3, 100));
    for (Vec3& p : lines[1]) p = {6.5F + p.x, 0, p.y};
    const RingCrossing crossing{0, 150};
    EXPECT_EQ(inspect(sweptTube(lines, sides, 0.3F), {&crossing, 1}, 3, TubeForm::polygons).touching, 1)
        << sides;
  }
}

/// No pair of places on two triangles is nearer than what is said, and one pair is as near.
TEST(Verdict, TrianglesAreAsFarApartAsTheirNearestPlaces) {
  using namespace vec;
  std::mt19937 random(3);
  std::uniform_real_distribution<float> anywhere(-1, 1);
  const auto place = [](const Triangle3& t, int i, int j) {
    const float u = static_cast<float>(i) / 30, v = static_cast<float>(j) / 30 * (1 - u);
    return t[0] + (t[1] - t[0]) * u + (t[2] - t[0]) * v;
  };
  for (int round = 0; round < 20; ++round) {
    Triangle3 one, two;
    for (Vec3& p : one) p = {anywhere(random), anywhere(random), anywhere(random)};
    for (Vec3& p : two) p = {anywhere(random) + 1, anywhere(random), anywhere(random)};
    float sampled = 1e9F;
    for (int i = 0; i <= 30; ++i)
      for (int j = 0; j <= 30; ++j)
        for (int k = 0; k <= 30; ++k)
          for (int l = 0; l <= 30; ++l)
            sampled = std::min(sampled, length(place(one, i, j) - place(two, k, l)));
    const Apart apart = trianglesApart(one, two);
    EXPECT_LE(apart.distance, sampled + 1e-5F);
    EXPECT_GE(apart.distance, sampled - 0.08F);
    EXPECT_NEAR(length(apart.one - apart.two), apart.distance, 1e-5);
  }
}

}  // namespace
}  // namespace lorivan
