#include "model3d/triangle_distance.h"

#include "model3d/centre_lines.h"
#include "model3d/vec3_math.h"

namespace lorivan {

using namespace vec;

namespace {

CentreSegment sideOf(const Triangle3& t, std::size_t i) {
  const Vec3 way = t[(i + 1) % 3] - t[i];
  const float square = dot(way, way);
  return {t[i], way, square > 0 ? 1 / square : 0};
}

/// The distance of a corner from the inside of a triangle; nothing where it lies beside it.
void tryFace(const Triangle3& t, const Vec3& p, bool swapped, Apart& least) {
  const Vec3 normal = cross(t[1] - t[0], t[2] - t[0]);
  const float square = dot(normal, normal);
  if (square == 0) return;
  const float height = dot(p - t[0], normal) / square;
  const Vec3 foot = p - normal * height;
  for (std::size_t i = 0; i < 3; ++i)
    if (dot(cross(t[(i + 1) % 3] - t[i], foot - t[i]), normal) < 0) return;
  const float distance = length(p - foot);
  if (distance < least.distance) least = swapped ? Apart{distance, foot, p} : Apart{distance, p, foot};
}

bool pierces(const Triangle3& t, const CentreSegment& side, Vec3& at) {
  const float size = length(side.way);
  if (size == 0) return false;
  const float hit = rayTo(t, side.from, side.way * (1 / size));
  if (hit < 0 || hit > size) return false;
  at = side.from + side.way * (hit / size);
  return true;
}

}  // namespace

Apart trianglesApart(const Triangle3& one, const Triangle3& two) {
  Apart least;
  for (std::size_t i = 0; i < 3; ++i) {
    Vec3 at;
    if (pierces(two, sideOf(one, i), at) || pierces(one, sideOf(two, i), at)) return {0, at, at};
    for (std::size_t j = 0; j < 3; ++j)
      if (const Nearest sides = nearestOf(sideOf(one, i), sideOf(two, j)); sides.distance < least.distance)
        least = {sides.distance, sides.one, sides.two};
    tryFace(two, one[i], false, least);
    tryFace(one, two[i], true, least);
  }
  return least;
}

/// T. Möller and B. Trumbore, Fast, minimum storage ray/triangle intersection, 1997.
float rayTo(const Triangle3& t, const Vec3& from, const Vec3& direction) {
  const Vec3 u = t[1] - t[0], v = t[2] - t[0], h = cross(direction, v);
  const float share = dot(u, h);
  if (share == 0) return -1;
  const Vec3 s = from - t[0];
  const float a = dot(s, h) / share;
  if (a < 0 || a > 1) return -1;
  const Vec3 q = cross(s, u);
  const float b = dot(direction, q) / share;
  if (b < 0 || a + b > 1) return -1;
  return dot(v, q) / share;
}

}  // namespace lorivan
