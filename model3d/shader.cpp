// The light model (B. T. Phong, Illumination for Computer Generated Pictures, 1975), with face normals that
// are not normalised: large faces are brighter than small ones.
#include "model3d/shader.h"

#include <algorithm>
#include <cmath>

#include "model3d/m3ops.h"

namespace lorivan {

namespace {

constexpr Triple kLight = {500, 100, 1000};
constexpr Triple kEye = {0, 0, 1000};
constexpr double kMostIntensity = 511;

const Vec3& cornerOf(const TubeModel& model, const QuadCorners& corners, std::size_t k) {
  return model.vertices[corners[k]];
}

/// From `to` back to the place `from`; returns the length and makes the vector a unit vector.
double towards(const Triple& from, const Vec3& to, Triple& out) {
  out = {from.x - static_cast<double>(to.x), from.y - static_cast<double>(to.y),
         from.z - static_cast<double>(to.z)};
  const double length = std::sqrt(out.x * out.x + out.y * out.y + out.z * out.z);
  if (length > 0) out = {out.x / length, out.y / length, out.z / length};
  return length;
}

/// KDist plus the distance to the last corner of the last quad sets how much light there is.
double lightScale(const TubeModel& model, const LightSettings& light) {
  double distance = 0;
  if (model.QuadCount > 0) {
    const TubeStrand& last = model.strands.back();
    Triple unused;
    distance = towards(kLight, model.vertex(last.firstRing, model.sides - 1), unused);
  }
  return (static_cast<double>(light.KDist) + distance + 4.0) * 255;
}

int wholeExponent(float exponent) {
  const bool small = exponent >= 0 && exponent <= 64 && exponent == std::floor(exponent);
  return small ? static_cast<int>(exponent) : -1;
}

}  // namespace

void NormalVector(float& nx, float& ny, float& nz, const TubeModel& model, const QuadCorners& corners) {
  const Vec3& p1 = cornerOf(model, corners, 0);
  const Vec3& p2 = cornerOf(model, corners, 1);
  const Vec3& p3 = cornerOf(model, corners, 2);
  const auto less = [](float a, float b) { return static_cast<double>(a) - static_cast<double>(b); };
  double x, y, z;
  CrossProduct(x, y, z, less(p2.x, p1.x), less(p2.y, p1.y), less(p2.z, p1.z), less(p3.x, p2.x),
               less(p3.y, p2.y), less(p3.z, p2.z));
  nx = static_cast<float>(x);
  ny = static_cast<float>(y);
  nz = static_cast<float>(z);
}

Shader::Shader(const TubeModel& model, const LightSettings& light, float faceShare)
    : model_(model),
      light_(light),
      LightScale_(lightScale(model, light)),
      faceShare_(static_cast<double>(faceShare)),
      exponent_(wholeExponent(light.NFact)) {}

double Shader::highlight(double cosine) const {
  if (cosine < 0) return 0;
  double power = 1;
  if (exponent_ < 0) {
    power = std::pow(cosine, static_cast<double>(light_.NFact));
  } else {
    for (int i = 0; i < exponent_; ++i) power *= cosine;
  }
  return static_cast<double>(light_.Ks) * power;
}

/// Unit vector and distance to the light, the face normal, and the normal's cosines with both lights.
struct Shader::Rays {
  Triple l, n;
  double d, c1, c2;
};

Shader::Rays Shader::raysOf(const QuadCorners& corners) const {
  Rays rays;
  rays.d = towards(kLight, cornerOf(model_, corners, 0), rays.l);
  float nx, ny, nz;
  NormalVector(nx, ny, nz, model_, corners);
  rays.n = {nx * faceShare_, ny * faceShare_, nz * faceShare_};
  const double flat = rays.l.x * rays.n.x + rays.l.y * rays.n.y;
  rays.c1 = flat + rays.l.z * rays.n.z;
  rays.c2 = flat - rays.l.z * rays.n.z;
  return rays;
}

double Shader::intensity(const Rays& rays, double diffuse, double specular) const {
  // With a KDist equal to the distance, any light at all is as bright as can be.
  const double reach = static_cast<double>(light_.KDist) + rays.d;
  const double light = (diffuse + specular) * LightScale_;
  const double ambient = static_cast<double>(light_.Ka) * 128;
  if (reach == 0) return light == 0 ? ambient : kMostIntensity;
  return std::min(std::fabs(ambient + light / reach), kMostIntensity);
}

QuadLight Shader::light(const QuadCorners& corners) const {
  const Rays rays = raysOf(corners);
  const auto& [l, n, d, c1, c2] = rays;
  const auto kd = static_cast<double>(light_.Kd);
  double diffuse = c2 >= 0 ? c2 * kd : 0, specular = 0;
  if (c1 >= 0) {
    diffuse += c1 * kd;
    Triple v;
    towards(kEye, cornerOf(model_, corners, 0), v);
    const double flat = v.x * (2 * c1 * n.x - l.x) + v.y * (2 * c1 * n.y - l.y);
    specular = highlight(flat + v.z * (2 * c1 * n.z - l.z));
    if (c2 >= 0) specular += highlight(flat + v.z * (2 * c2 * n.z + l.z));
  } else if (c2 >= 0) {
    specular = highlight(0);
  }
  return {intensity(rays, diffuse, specular), c1 >= 0, c1 < 0 && c2 >= 0};
}

bool Shader::reaches(const QuadCorners& corners) const { return raysOf(corners).c1 >= 0; }

double Shader::lightAfter(const QuadCorners& corners, const QuadCorners& reached) const {
  const Rays last = raysOf(reached);
  Triple v;
  towards(kEye, cornerOf(model_, reached, 0), v);
  const double flat = v.x * (2 * last.c1 * last.n.x - last.l.x) + v.y * (2 * last.c1 * last.n.y - last.l.y);
  const Rays rays = raysOf(corners);
  return intensity(rays, rays.c2 * static_cast<double>(light_.Kd),
                   highlight(flat + v.z * (2 * rays.c2 * rays.n.z + rays.l.z)));
}

std::uint32_t litColour(double intensity, const std::array<float, 3>& factors) {
  std::uint32_t argb = 0xFF;
  for (const float factor : factors) {
    // Rounds to the nearest number, halves to even; no part is below 0.
    const double part = std::min(intensity * static_cast<double>(factor), 255.0);
    auto whole = static_cast<std::uint32_t>(part);
    const double rest = part - whole;
    if (rest > 0.5 || (rest == 0.5 && whole % 2 != 0)) ++whole;
    argb = argb << 8 | whole;
  }
  return argb;
}

}  // namespace lorivan
