// A fused body on the grid of a text file's three decimals.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "export/mesh.h"
#include "model3d/triangle_mesh.h"

namespace lorivan {

/// Triangles that share their corners; no two corners are at one place and no triangle is flat, so that a
/// reader who joins corners by their places finds the same body.
struct SolidMesh {
  std::vector<MeshPoint> points;
  std::vector<std::array<std::uint32_t, 3>> triangles;
};

bool isClosed(const SolidMesh& mesh);

/// The scene's body at the width that the scene asks for. Fails for a body without width, and when it is too
/// large or too small for three decimals.
Result<SolidMesh> solidMesh(const ExportScene& scene);

}  // namespace lorivan
