// Distances between triangles, and where a ray meets one.
#pragma once

#include <array>

#include "model3d/tube_model.h"

namespace lorivan {

using Triangle3 = std::array<Vec3, 3>;

/// What two things are nearest with, and how far they are apart.
struct Apart {
  float distance = 1e30F;
  Vec3 one, two;
};

/// 0 where they cut each other.
Apart trianglesApart(const Triangle3& one, const Triangle3& two);

/// How far along the direction, a unit vector, the ray meets the triangle; negative when it does not.
float rayTo(const Triangle3& triangle, const Vec3& from, const Vec3& direction);

}  // namespace lorivan
