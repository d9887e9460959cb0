// A model as parts of one colour each, every part a closed mesh with shared corners: what the formats write
// that number their corners.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "export/mesh.h"

namespace lorivan {

/// A polygon's corners as positions in MeshPart::points, counter-clockwise seen from outside. The last is
/// kNoCorner in a triangle. A quad is cut from its first corner.
using PartFace = std::array<std::uint32_t, 4>;
inline constexpr std::uint32_t kNoCorner = 0xFFFFFFFF;

struct MeshPart {
  std::string name;
  std::array<float, 3> factors{};  // red, green, blue, each 0 to 1, as on the screen
  std::vector<MeshPoint> points;   // each is a corner of some face, and no two stand at one place
  std::vector<PartFace> faces;
};

/// Calls use(a, b, c) with the positions of each triangle's corners.
template <class Use>
void eachTriangle(const MeshPart& part, Use&& use) {
  for (const PartFace& face : part.faces) {
    use(face[0], face[1], face[2]);
    if (face[3] != kNoCorner) use(face[0], face[2], face[3]);
  }
}

/// One part for each strand, named "Strand 1" and so on by its slot.
std::vector<MeshPart> strandParts(TubeMesh mesh);

/// The scene's relief or fused body where it has one, else its strands; `standard` as for sceneMesh().
Result<std::vector<MeshPart>> sceneParts(const ExportScene& scene, std::optional<double> standard);

/// Turns the parts by half a turn about the z axis: a model seen from +z then stands as the knot is drawn.
void standUpright(std::vector<MeshPart>& parts);

struct MeshBox {
  MeshPoint low, high;
};
/// The least and the greatest coordinates of all parts, of which at least one has points.
MeshBox boxOf(std::span<const MeshPart> parts);

}  // namespace lorivan
