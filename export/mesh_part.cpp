#include "export/mesh_part.h"

#include <algorithm>
#include <unordered_map>

#include "export/relief.h"
#include "export/solid_mesh.h"

namespace lorivan {
namespace {

/// Gives the points of one strand new numbers in the order of their first use, one number for each place.
class Numbering {
 public:
  Numbering(const TubeMesh& mesh, const TubeMesh::Strand& strand, std::vector<MeshPoint>& points)
      : mesh_(mesh), first_(mesh.firstPoint(strand)), points_(points) {
    numbers_.assign(mesh.pointCount(strand), kNoCorner);
  }

  std::uint32_t of(std::uint32_t point) {
    std::uint32_t& number = numbers_[ownPlace(point) - first_];
    if (number == kNoCorner) {
      number = static_cast<std::uint32_t>(points_.size());
      points_.push_back(mesh_.points()[point]);
    }
    return number;
  }

 private:
  /// The strand's own point that stands for the place: the mesh's may belong to another strand.
  std::uint32_t ownPlace(std::uint32_t point) {
    const std::uint32_t same = mesh_.samePlace(point);
    return same >= first_ ? same : foreign_.try_emplace(same, point).first->second;
  }

  const TubeMesh& mesh_;
  std::uint32_t first_;
  std::vector<MeshPoint>& points_;
  std::vector<std::uint32_t> numbers_;
  std::unordered_map<std::uint32_t, std::uint32_t> foreign_;
};

/// Of a strand whose points all have places of their own: they keep their order.
void addAll(TubeMesh& mesh, const TubeMesh::Strand& strand, MeshPart& part) {
  const std::uint32_t first = mesh.firstPoint(strand), count = mesh.pointCount(strand);
  if (count == mesh.points().size()) {
    part.points = mesh.takePoints();
  } else {
    const auto points = std::span(mesh.points()).subspan(first, count);
    part.points.assign(points.begin(), points.end());
  }
  for (std::size_t ring = 0; ring < strand.ringCount; ++ring)
    mesh.eachFace(strand, ring, [&](const TubeMesh::Face& face) {
      const auto [a, b, c, d] = face.corner;
      if (face.cut == Cut::alongAC)
        part.faces.push_back({a - first, b - first, c - first, d - first});
      else
        part.faces.push_back({b - first, c - first, d - first, a - first});
    });
}

MeshPart partOf(TubeMesh& mesh, const TubeMesh::Strand& strand) {
  MeshPart part{"Strand " + std::to_string(strand.slot), strand.factors, {}, {}};
  part.faces.reserve(mesh.pointCount(strand));
  if (!mesh.anyShared()) {
    addAll(mesh, strand, part);
    return part;
  }
  part.points.reserve(mesh.pointCount(strand));
  Numbering numbers(mesh, strand, part.points);
  for (std::size_t ring = 0; ring < strand.ringCount; ++ring)
    mesh.eachFace(strand, ring, [&](const TubeMesh::Face& face) {
      const auto corners = polygonCorners(face.cut);
      if (corners.empty()) return;
      PartFace made{0, 0, 0, kNoCorner};
      for (std::size_t i = 0; i < corners.size(); ++i) made[i] = numbers.of(face.corner[corners[i]]);
      part.faces.push_back(made);
    });
  return part;
}

}  // namespace

std::vector<MeshPart> strandParts(TubeMesh mesh) {
  std::vector<MeshPart> parts;
  for (const TubeMesh::Strand& strand : mesh.strands()) {
    parts.push_back(partOf(mesh, strand));
    if (parts.back().faces.empty()) parts.pop_back();
  }
  return parts;
}

Result<std::vector<MeshPart>> sceneParts(const ExportScene& scene, std::optional<double> standard) {
  if (scene.relief || scene.solid != nullptr) {
    auto part = scene.relief ? reliefPart(scene) : solidPart(scene, standard);
    if (!part) return part.error();
    return std::vector<MeshPart>{std::move(*part)};
  }
  auto mesh = sceneMesh(scene, standard);
  if (!mesh) return mesh.error();
  return strandParts(std::move(*mesh));
}

void standUpright(std::vector<MeshPart>& parts) {
  for (MeshPart& part : parts)
    for (MeshPoint& p : part.points) p = {-p.x, -p.y, p.z};
}

MeshBox boxOf(std::span<const MeshPart> parts) {
  MeshBox box;
  bool empty = true;
  for (const MeshPart& part : parts)
    for (const MeshPoint& p : part.points) {
      if (empty) box = {p, p};
      empty = false;
      box.low = {std::min(box.low.x, p.x), std::min(box.low.y, p.y), std::min(box.low.z, p.z)};
      box.high = {std::max(box.high.x, p.x), std::max(box.high.y, p.y), std::max(box.high.z, p.z)};
    }
  return box;
}

}  // namespace lorivan
