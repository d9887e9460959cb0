#include "model3d/plate_outline.h"

#include <algorithm>
#include <cmath>

namespace lorivan {
namespace {

/// Positive where c lies left of the way from a to b.
double side(const Vec3& a, const Vec3& b, const Vec3& c) {
  return (static_cast<double>(b.x) - a.x) * (static_cast<double>(c.y) - a.y) -
         (static_cast<double>(b.y) - a.y) * (static_cast<double>(c.x) - a.x);
}

/// Corners of the hull from left to right along its lower side: A. M. Andrew, Another efficient algorithm for
/// convex hulls in two dimensions, 1979.
template <class Places>
void appendChain(const Places& places, std::vector<Vec3>& hull) {
  const std::size_t first = hull.size();
  for (const Vec3& p : places) {
    while (hull.size() >= first + 2 && side(hull[hull.size() - 2], hull.back(), p) <= 1e-4) hull.pop_back();
    hull.push_back(p);
  }
  hull.pop_back();  // the next chain begins with it
}

}  // namespace

PlateOutline::PlateOutline(const std::vector<Vec3>& places, float margin) : margin_(margin) {
  std::vector<Vec3> sorted = places;
  std::ranges::sort(sorted, [](const Vec3& a, const Vec3& b) { return a.x != b.x ? a.x < b.x : a.y < b.y; });
  if (sorted.size() < 3) return;
  appendChain(sorted, corners_);
  std::ranges::reverse(sorted);
  appendChain(sorted, corners_);
}

PlateOutline::Edge PlateOutline::at(float x, float y) const {
  float inside = -1e30F, nearest = 1e30F;
  Edge within, around;
  for (std::size_t i = 0; i < corners_.size(); ++i) {
    const Vec3& a = corners_[i];
    const Vec3& b = corners_[i + 1 < corners_.size() ? i + 1 : 0];
    const float wx = b.x - a.x, wy = b.y - a.y, square = wx * wx + wy * wy;
    if (square == 0) continue;
    const float px = x - a.x, py = y - a.y, size = std::sqrt(square);
    const float out = (px * wy - py * wx) / size;
    if (out > inside) {
      inside = out;
      within = {out - margin_, wy / size, -wx / size};
    }
    const float t = std::clamp((px * wx + py * wy) / square, 0.0F, 1.0F);
    const float ex = px - t * wx, ey = py - t * wy, far = std::sqrt(ex * ex + ey * ey);
    if (far < nearest) {
      nearest = far;
      around = far > 0 ? Edge{far - margin_, ex / far, ey / far} : Edge{-margin_, wy / size, -wx / size};
    }
  }
  return inside <= 0 ? within : around;
}

}  // namespace lorivan
