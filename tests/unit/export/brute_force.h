// Gaps and walls of a model from every pair of the triangles that its STL file holds.
#pragma once

#include <algorithm>

#include "model3d/vec3_math.h"
#include "model3d/verdict.h"
#include "stl_reader.h"

namespace lorivan {

/// One triangle with its ring and what bounds it.
struct PlacedTriangle {
  Triangle3 corner;
  Vec3 middle, normal;
  float radius = 0;
  std::uint32_t ring = 0;
};

/// The file has two triangles for each quad, in the model's order.
inline std::vector<PlacedTriangle> placed(const std::vector<ReadTriangle>& read, int sides) {
  using namespace vec;
  std::vector<PlacedTriangle> all;
  for (std::size_t i = 0; i < read.size(); ++i) {
    PlacedTriangle t;
    for (std::size_t k = 0; k < 3; ++k)
      t.corner[k] = {static_cast<float>(read[i][k][0]), static_cast<float>(read[i][k][1]),
                     static_cast<float>(read[i][k][2])};
    t.middle = (t.corner[0] + t.corner[1] + t.corner[2]) * (1 / 3.0F);
    t.normal = unit(cross(t.corner[1] - t.corner[0], t.corner[2] - t.corner[0]));
    for (const Vec3& c : t.corner) t.radius = std::max(t.radius, length(c - t.middle));
    t.ring = static_cast<std::uint32_t>(i / 2 / static_cast<std::size_t>(sides));
    all.push_back(t);
  }
  return all;
}

/// `counts(ring, ring)`: whether two rings are parts between which there can be a gap.
template <class Counts>
float bruteClearance(const std::vector<PlacedTriangle>& all, Counts&& counts) {
  using namespace vec;
  float least = 1e30F;
  for (std::size_t i = 0; i < all.size(); ++i)
    for (std::size_t j = i + 1; j < all.size(); ++j) {
      if (length(all[i].middle - all[j].middle) - all[i].radius - all[j].radius >= least) continue;
      if (counts(all[i].ring, all[j].ring))
        least = std::min(least, trianglesApart(all[i].corner, all[j].corner).distance);
    }
  return least;
}

/// Straight inwards from every triangle's middle, through the tube of its own surroundings. Triangles of
/// bends so tight that the tube is turned inside out are no wall: they look at the centre line.
inline float bruteWall(const std::vector<PlacedTriangle>& every, const CentreLines& lines, float thickness) {
  using namespace vec;
  std::vector<PlacedTriangle> all;
  for (const PlacedTriangle& t : every)
    if (dot(lines.segments()[t.ring].apart(t.middle), t.normal) > 0.1F * thickness) all.push_back(t);
  float least = 1e30F;
  for (const PlacedTriangle& from : all)
    for (const PlacedTriangle& to : all) {
      if (length(from.middle - to.middle) > 2 * thickness || dot(from.normal, to.normal) >= 0) continue;
      const auto apart = from.ring > to.ring ? from.ring - to.ring : to.ring - from.ring;
      const float far = apart <= 1 ? rayTo(to.corner, from.middle, from.normal * -1) : -1;
      if (far > 0) least = std::min(least, far);
    }
  return std::min(least, thickness);
}

}  // namespace lorivan
