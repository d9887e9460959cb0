#include "export/solid_mesh.h"

#include <algorithm>
#include <bit>
#include <cmath>

namespace lorivan {
namespace {

constexpr int kSolidRounds = 20;
constexpr std::uint32_t kFree = 0xFFFFFFFF;

Result<double> scaleOf(const TriangleMesh& mesh, std::optional<double> millimetres) {
  if (mesh.points.empty()) return impossibleKnot("a model without strands has no width to scale");
  const auto [left, right] = std::ranges::minmax(mesh.points, {}, &Vec3::x);
  double scale = 1, furthest = 0;
  if (millimetres) {
    if (!isWidth(*millimetres)) return wrongUsage(kWidthOutOfRange);
    scale = *millimetres / (static_cast<double>(right.x) - static_cast<double>(left.x));
  }
  for (const Vec3& p : mesh.points)
    furthest = std::max({furthest, std::fabs(static_cast<double>(p.x)), std::fabs(static_cast<double>(p.y)),
                         std::fabs(static_cast<double>(p.z))});
  if (!(furthest * scale <= kMostCoordinate)) return unwritable("the model is too large for the file");
  return scale;
}

/// By a thousandth along one axis after the other, then further.
void move(MeshPoint& p, int round) {
  const int step = 1 + round / 3;
  (round % 3 == 0 ? p.x : round % 3 == 1 ? p.y : p.z) += round % 2 == 0 ? step : -step;
}

/// Moves corners that have the place of another one; whether there were any.
bool partCorners(std::vector<MeshPoint>& points, int round) {
  const std::size_t mask = std::bit_ceil(points.size() * 2 + 1) - 1;
  std::vector<std::uint32_t> table(mask + 1, kFree);
  bool moved = false;
  for (std::uint32_t i = 0; i < points.size(); ++i) {
    std::size_t at = hashOf(points[i]) & mask;
    while (table[at] != kFree && !(points[table[at]] == points[i])) at = (at + 1) & mask;
    if (table[at] == kFree) {
      table[at] = i;
      continue;
    }
    move(points[i], round);
    moved = true;
  }
  return moved;
}

/// Moves a corner of every flat triangle; whether there were any.
bool raiseFlat(MeshPart& mesh, int round) {
  bool moved = false;
  for (const PartFace& t : mesh.faces) {
    if (!isFlat(mesh.points[t[0]], mesh.points[t[1]], mesh.points[t[2]])) continue;
    move(mesh.points[t[static_cast<std::size_t>(round) % 3]], round);
    moved = true;
  }
  return moved;
}

}  // namespace

Result<MeshPart> solidPart(const ExportScene& scene, std::optional<double> standard) {
  const Result<double> scale = scaleOf(*scene.solid, scene.millimetres ? scene.millimetres : standard);
  if (!scale) return scale.error();
  MeshPart mesh{"knot", {}, {}, {}};
  if (!scene.model.strands.empty()) mesh.factors = scene.model.strands.front().factors;
  mesh.faces.reserve(scene.solid->triangles.size());
  for (const auto& t : scene.solid->triangles) mesh.faces.push_back({t[0], t[1], t[2], kNoCorner});
  mesh.points.reserve(scene.solid->points.size());
  for (const Vec3& p : scene.solid->points) mesh.points.push_back(meshPoint(p, *scale));
  for (int round = 0; round < kSolidRounds; ++round) {
    const bool parted = partCorners(mesh.points, round);
    if (!raiseFlat(mesh, round) && !parted) return mesh;
  }
  return unwritable("the model is too small for the file's three decimals");
}

}  // namespace lorivan
