// Fused bodies: closed, whole, on the tubes' surface, flat where they are to be.
#include "model3d/solid_body.h"

#include <map>
#include <random>

#include "knots.h"
#include "model3d/cell_loops.h"
#include "model3d/vec3_math.h"

namespace lorivan {
namespace {

/// Rounds of the given radius with centres apart along x, each a strand.
TubeModel rounds(const std::vector<Vec3>& middles, float radius, float tube, bool upright = false) {
  TubeModel model;
  model.sides = 3;
  model.radius = tube;
  for (const Vec3& middle : middles) {
    const bool turned = upright && !model.strands.empty();
    model.strands.push_back(
        {static_cast<int>(model.strands.size()) + 1, {}, static_cast<int>(model.centres.size()), 200});
    for (int i = 0; i < 200; ++i) {
      const auto x = radius * static_cast<float>(std::cos(kTwoPi * i / 200));
      const auto y = radius * static_cast<float>(std::sin(kTwoPi * i / 200));
      model.centres.push_back({middle.x + x, middle.y + (turned ? 0 : y), middle.z + (turned ? y : 0)});
    }
  }
  return model;
}

/// Corners less edges plus faces; a closed surface with h handles has 2 - 2 h. Faults are reported.
long characteristic(const TriangleMesh& mesh) {
  std::map<std::pair<std::uint32_t, std::uint32_t>, int> edges;
  std::vector<int> fans(mesh.points.size()), valence(mesh.points.size());
  std::map<std::uint32_t, std::map<std::uint32_t, std::uint32_t>> around;
  for (const auto& t : mesh.triangles)
    for (std::size_t i = 0; i < 3; ++i) {
      ++edges[{t[i], t[(i + 1) % 3]}];
      around[t[i]][t[(i + 1) % 3]] = t[(i + 2) % 3];
    }
  for (const auto& [edge, count] : edges) {
    EXPECT_EQ(count, 1);
    EXPECT_EQ(edges.count({edge.second, edge.first}), 1U);
  }
  // The triangles round a corner are one round.
  for (const auto& [corner, next] : around) {
    std::size_t steps = 1;
    for (std::uint32_t at = next.begin()->second; at != next.begin()->first && steps <= next.size(); ++steps)
      at = next.count(at) != 0 ? next.at(at) : at;
    EXPECT_EQ(steps, next.size()) << "corner " << corner;
  }
  EXPECT_EQ(around.size(), mesh.points.size()) << "corners that no triangle has";
  return static_cast<long>(mesh.points.size()) - static_cast<long>(edges.size() / 2) +
         static_cast<long>(mesh.triangles.size());
}

SolidBody fused(const TubeModel& model, const SolidShape& shape = {}) {
  auto body = fuse(model, shape);
  EXPECT_TRUE(static_cast<bool>(body));
  return std::move(*body);
}

TEST(Solid, ARoundStrandIsATorus) {
  const TubeModel model = rounds({{0, 0, 0}}, 3, 0.5F);
  const SolidBody body = fused(model);
  EXPECT_EQ(characteristic(body.mesh), 0);
  EXPECT_EQ(body.pieces, 1);
  EXPECT_NEAR(body.volume, 2 * kPi * kPi * 3 * 0.25, 0.05);
  for (const Vec3& p : body.mesh.points) EXPECT_NEAR(std::hypot(std::hypot(p.x, p.y) - 3, p.z), 0.5, 0.002);
}

TEST(Solid, AHollowIsFilledAndNoPiece) {
  TubeModel shell;  // of rounds like degrees of latitude
  shell.sides = 3;
  shell.radius = 0.5F;
  for (int slot = 1; slot <= 15; ++slot) {
    const double height = (slot - 8) * kPi / 16;
    const auto round = rounds({{0, 0, static_cast<float>(2 * std::sin(height))}},
                              static_cast<float>(2 * std::cos(height)), 0.5F);
    shell.strands.push_back({slot, {}, static_cast<int>(shell.centres.size()), 200});
    shell.centres.insert(shell.centres.end(), round.centres.begin(), round.centres.end());
  }
  const SolidBody body = fused(shell);
  EXPECT_EQ(body.pieces, 1);
  EXPECT_EQ(characteristic(body.mesh), 2) << "a ball";
  EXPECT_NEAR(body.volume, 4 / 3.0 * kPi * std::pow(2.5, 3), 1);
}

TEST(Solid, StrandsAreOnePieceWhereTheyMeet) {
  struct Case {
    const char* name;
    TubeModel model;
    SolidShape shape;
    int pieces;
    long characteristic;
  };
  const Case cases[] = {
      {"side by side", rounds({{0, 0, 0}, {7.2F, 0, 0}}, 3, 0.5F), {4}, 2, 0},
      {"bridged by the fillet", rounds({{0, 0, 0}, {7.2F, 0, 0}}, 3, 0.5F), {4, 0.5F}, 1, -2},
      {"one in the other", rounds({{0, 0, 0}, {3, 0, 0}}, 3, 0.5F, true), {4}, 2, 0},
      {"meeting once", rounds({{0, 0, 0}, {5.5F, 0, 0}}, 3, 0.5F, true), {4}, 1, -2},
      {"crossing twice", rounds({{0, 0, 0}, {3, 0, 0}}, 3, 0.5F), {4, 0.2F}, 1, -4},
      {"on a plate", rounds({{0, 0, 0}, {7.2F, 0, 0}}, 3, 0.5F), {4, 0, 1}, 1, 2},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    const SolidBody body = fused(c.model, c.shape);
    EXPECT_EQ(body.pieces, c.pieces);
    EXPECT_EQ(characteristic(body.mesh), c.characteristic);
  }
}

TEST(Solid, RefusesWhatWouldNotFitIntoMemory) {
  const TubeModel model = rounds({{0, 0, 0}, {7.2F, 0, 0}}, 3, 0.5F);
  const TubeModel thin = rounds({{0, 0, 0}}, 8, 0.004F);
  for (const auto& [tube, shape] : {std::pair(&model, SolidShape{4, 0, 1e6F}),
                                    {&model, {4, 1e4F}},
                                    {&model, {4, 2.5F}},
                                    {&model, {64, 0, 50}},
                                    {&thin, {32}}}) {
    const auto body = fuse(*tube, shape);
    ASSERT_FALSE(body);
    EXPECT_EQ(body.error().kind, ErrorKind::limit);
  }
}

/// Strands that cut each other anywhere on cells as large as they are thick pass faces in every way.
TEST(Solid, TanglesAreClosedToo) {
  std::mt19937 random(7);
  std::uniform_real_distribution<float> anywhere(-1.5F, 1.5F);
  for (int round = 0; round < 6; ++round) {
    TubeModel model;
    model.sides = 3;
    model.radius = 0.15F;
    for (int strand = 0; strand < 4; ++strand) {
      model.strands.push_back({strand + 1, {}, strand * 30, 30});
      for (int i = 0; i < 30; ++i)
        model.centres.push_back({anywhere(random), anywhere(random), anywhere(random)});
    }
    const SolidBody body = fused(model, {2, 0, round % 3 == 0 ? 0.3F : 0, round % 3 == 1});
    EXPECT_EQ(characteristic(body.mesh) % 2, 0);
  }
}

TEST(Solid, RoundsThroughACellUseEveryCrossedEdgeOnce) {
  for (int inside = 0; inside < 256; ++inside)
    for (const std::uint8_t joined : std::initializer_list<std::uint8_t>{0, 63, 21, 42}) {
      const CellLoops loops = loopsOf(static_cast<std::uint8_t>(inside), joined);
      std::array<int, 4> edges{};
      for (int e = 0; e < kCellEdges; ++e) {
        const auto [a, b] = edgeCorners(e);
        const bool crossed = (inside >> a & 1) != (inside >> b & 1);
        const std::uint8_t loop = loops.loop[e];
        EXPECT_EQ(loop != kNoLoop, crossed);
        if (crossed) ++edges.at(loop);
      }
      for (std::uint8_t i = 0; i < loops.count; ++i) EXPECT_GE(edges[i], 3);
    }
}

TEST(Solid, FlatUndersidesAndPlatesHaveTheirMeasures) {
  const TubeModel model = built(storeOf(trefoil()), {});
  const auto lowest = [](const SolidBody& body) {
    return std::ranges::min(body.mesh.points, {}, &Vec3::z).z;
  };
  const float cut = CentreLines(model).low().z - kCutShare * model.radius;
  for (const auto& [shape, bottom] :
       {std::pair{SolidShape{4, 0, 0, true}, cut}, std::pair{SolidShape{4, 0.1F, 0.7F, false}, cut - 0.7F}}) {
    const SolidBody body = fused(model, shape);
    EXPECT_NEAR(lowest(body), bottom, 1e-5);
    const auto onBed = std::ranges::count_if(
        body.mesh.points, [&, level = bottom](const Vec3& p) { return std::fabs(p.z - level) < 1e-5F; });
    EXPECT_GT(onBed, 50);
    const auto [left, right] = std::ranges::minmax(body.mesh.points, {}, &Vec3::x);
    EXPECT_NEAR(right.x - left.x, bodyWidth(model, shape).total, 0.02);
    EXPECT_EQ(body.pieces, 1);
  }
}

}  // namespace
}  // namespace lorivan
