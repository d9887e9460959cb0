// Arithmetic of places and directions in single precision.
#pragma once

#include <algorithm>
#include <cmath>

#include "model3d/tube_model.h"

namespace lorivan::vec {

inline Vec3 operator+(const Vec3& a, const Vec3& b) { return {a.x + b.x, a.y + b.y, a.z + b.z}; }
inline Vec3 operator-(const Vec3& a, const Vec3& b) { return {a.x - b.x, a.y - b.y, a.z - b.z}; }
inline Vec3 operator*(const Vec3& a, float f) { return {a.x * f, a.y * f, a.z * f}; }
inline float dot(const Vec3& a, const Vec3& b) { return a.x * b.x + a.y * b.y + a.z * b.z; }
inline float length(const Vec3& a) { return std::sqrt(dot(a, a)); }
inline Vec3 cross(const Vec3& a, const Vec3& b) {
  return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}
/// A direction of length 1; the x axis when there is none.
inline Vec3 unit(const Vec3& a) {
  const float size = length(a);
  return size > 0 ? a * (1 / size) : Vec3{1, 0, 0};
}

}  // namespace lorivan::vec
