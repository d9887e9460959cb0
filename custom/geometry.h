// Plane geometry for shapes: spots in double precision.
#pragma once

#include <algorithm>
#include <cmath>

namespace lorivan {

struct Spot {
  double x = 0, y = 0;
};

inline Spot operator+(Spot a, Spot b) { return {a.x + b.x, a.y + b.y}; }
inline Spot operator-(Spot a, Spot b) { return {a.x - b.x, a.y - b.y}; }
inline Spot operator*(double k, Spot a) { return {k * a.x, k * a.y}; }
inline double dot(Spot a, Spot b) { return a.x * b.x + a.y * b.y; }
inline double cross(Spot a, Spot b) { return a.x * b.y - a.y * b.x; }
inline double length(Spot a) { return std::sqrt(dot(a, a)); }
inline double distance(Spot a, Spot b) { return length(a - b); }

/// Where on the line a-b, 0 at a and 1 at b, the spot nearest to p lies; not held within the ends.
inline double placeAlong(Spot p, Spot a, Spot b) {
  const Spot d = b - a;
  const double squared = dot(d, d);
  return squared > 0 ? dot(p - a, d) / squared : 0;
}

inline Spot nearestOn(Spot p, Spot a, Spot b) {
  return a + std::clamp(placeAlong(p, a, b), 0.0, 1.0) * (b - a);
}

/// Angle between two directions, degrees in [0, 180]; 0 when one of them has no length.
inline double degreesBetween(Spot a, Spot b) {
  return std::atan2(std::fabs(cross(a, b)), dot(a, b)) * 57.29577951308232;
}

}  // namespace lorivan
