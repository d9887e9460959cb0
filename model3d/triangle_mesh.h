// A body as triangles that share their corners.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "model3d/tube_model.h"

namespace lorivan {

/// Corners are indices into `points`, counter-clockwise seen from outside.
struct TriangleMesh {
  std::vector<Vec3> points;
  std::vector<std::array<std::uint32_t, 3>> triangles;
};

}  // namespace lorivan
