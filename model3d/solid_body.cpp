#include "model3d/solid_body.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <string_view>

#include "base/numbers.h"
#include "model3d/solid_surface.h"
#include "model3d/vec3_math.h"

namespace lorivan {
namespace {

constexpr int kFewestCells = 2, kMostCells = 64;
constexpr std::uint32_t kUnused = 0xFFFFFFFF;
constexpr std::string_view kTooRound =
    "Sorry, the rounding is too large for this solid\r\nUse a smaller fillet or fewer cells";

/// Which corners hang together: each points to another one of its piece, the last to itself.
class Pieces {
 public:
  explicit Pieces(const TriangleMesh& mesh) : parent_(mesh.points.size()) {
    std::iota(parent_.begin(), parent_.end(), 0U);
    for (const auto& [a, b, c] : mesh.triangles) {
      join(a, b);
      join(b, c);
    }
  }
  std::uint32_t of(std::uint32_t corner) {
    while (parent_[corner] != corner) corner = parent_[corner] = parent_[parent_[corner]];
    return corner;
  }

 private:
  void join(std::uint32_t a, std::uint32_t b) {
    a = of(a), b = of(b);
    parent_[std::max(a, b)] = std::min(a, b);
  }
  std::vector<std::uint32_t> parent_;
};

double volumeUnder(const Vec3& a, const Vec3& b, const Vec3& c) {
  const auto product = [](float p, float q, float r) {
    return static_cast<double>(p) * static_cast<double>(q) * static_cast<double>(r);
  };
  return (product(a.x, b.y, c.z) + product(b.x, c.y, a.z) + product(c.x, a.y, b.z) - product(a.x, c.y, b.z) -
          product(b.x, a.y, c.z) - product(c.x, b.y, a.z)) /
         6;
}

/// Takes out what is turned inwards, the surfaces of hollows, and corners that no triangle has. No strand is
/// as small as `speck`, a volume: smaller bodies are single corners of the lattice that rounding found
/// inside, in the narrow ends of gaps.
void keepOuter(SolidBody& body, double speck) {
  TriangleMesh& mesh = body.mesh;
  Pieces pieces(mesh);
  std::vector<double> volume(mesh.points.size());
  for (const auto& t : mesh.triangles)
    volume[pieces.of(t[0])] += volumeUnder(mesh.points[t[0]], mesh.points[t[1]], mesh.points[t[2]]);
  std::erase_if(mesh.triangles, [&](const auto& t) { return volume[pieces.of(t[0])] <= speck; });
  for (const double one : volume)
    if (one > speck) {
      ++body.pieces;
      body.volume += one;
    }
  std::vector<std::uint32_t> number(mesh.points.size(), kUnused);
  std::vector<Vec3> kept;
  kept.reserve(mesh.points.size());
  for (auto& triangle : mesh.triangles)
    for (std::uint32_t& corner : triangle) {
      if (number[corner] == kUnused) {
        number[corner] = static_cast<std::uint32_t>(kept.size());
        kept.push_back(mesh.points[corner]);
      }
      corner = number[corner];
    }
  mesh.points = std::move(kept);
}

/// Three triangles to two square cells of the tubes' surface, as measured on knots, and two to one of the
/// plate's.
double expectedTriangles(const CentreLines& lines, const SolidShape& shape, double radius, double cell) {
  double length = 0;
  for (std::size_t i = 0; i < lines.strandCount(); ++i) length += lines.length(i);
  double surface = 3 * kTwoPi * radius * length;
  if (shape.plate > 0) {
    const double wide = static_cast<double>(lines.high().x - lines.low().x),
                 deep = static_cast<double>(lines.high().y - lines.low().y);
    surface += 4 * (wide * deep + (wide + deep) * static_cast<double>(shape.plate));
  }
  return surface / (cell * cell);
}

/// Rounder hollows than two strands are thick reach past the cells that are looked at. Every segment is
/// looked at from all cubes of eight cells that a rounding reaches.
bool isRoundingTooLarge(const CentreLines& lines, const SolidShape& shape, double radius, double cell) {
  constexpr double kMostLooks = 5e7, kLargestFillet = 4;
  const double fillet = static_cast<double>(shape.fillet);
  const double cubes = 2 * (radius + fillet) / (8 * cell) + 2;
  if (fillet > kLargestFillet * radius) return true;
  return fillet > radius && static_cast<double>(lines.segments().size()) * cubes * cubes * cubes > kMostLooks;
}

}  // namespace

Result<SolidBody> fuse(const TubeModel& model, const SolidShape& shape) {
  SolidBody body;
  const CentreLines lines(model);
  if (lines.segments().empty() || !(model.radius > 0)) return body;
  SolidShape held = shape;
  held.cells = std::clamp(shape.cells, kFewestCells, kMostCells);
  const float cell = model.radius / static_cast<float>(held.cells);
  // Twice what is allowed: where strands run into each other there is less surface.
  const auto radius = static_cast<double>(model.radius), size = static_cast<double>(cell);
  if (expectedTriangles(lines, held, radius, size) > 2.0 * kMostTriangles) return refused(kTooManyTriangles);
  if (isRoundingTooLarge(lines, held, radius, size)) return refused(kTooRound);
  const SolidField field(model, lines, held);
  auto surface = surfaceOf(field, lines, cell);
  if (!surface) return surface.error();
  body.mesh = std::move(*surface);
  keepOuter(body, radius * radius * radius);
  return body;
}

BodyWidth bodyWidth(const TubeModel& model, const SolidShape& shape) {
  if (model.centres.empty()) return {};
  const auto [low, high] = std::ranges::minmax(model.centres, {}, &Vec3::x);
  const double centres = static_cast<double>(high.x) - static_cast<double>(low.x);
  const double margin = shape.plate > 0 ? 1 + static_cast<double>(kPlateMargin) : 1;
  return {centres + 2 * margin * static_cast<double>(model.radius), centres};
}

}  // namespace lorivan
