#include "model3d/smooth_light.h"

#include <algorithm>
#include <cmath>

namespace lorivan {
namespace {

// In the picture's axes: x to the right, y down, z towards the eye. As the lamp of the POV-Ray scenes.
constexpr Vec3 kLamp = {-0.2806F, -0.3858F, 0.8789F};
constexpr float kLampDistance = 1122.4972F;  // as far as the light of the facets
constexpr float kMostArriving = 8;
// Together they light a surface that faces the lamp as one lamp alone would.
constexpr float kLampShare = 0.81F, kOtherShare = 0.35F;

std::uint32_t part(float value) { return static_cast<std::uint32_t>(std::min(value, 255.0F) + 0.5F); }

}  // namespace

SmoothLight::SmoothLight(const LightSettings& light)
    : ambient_(light.Ka * 128), diffuse_(light.Kd * 255), KDist_(light.KDist) {
  for (std::size_t i = 0; i < highlights_.size(); ++i)
    highlights_[i] = light.Ks * 255 * std::pow(static_cast<float>(i) / kSteps, light.NFact);
}

float SmoothLight::arriving(const Vec3& turned) const {
  const float x = kLamp.x * kLampDistance - turned.x, y = kLamp.y * kLampDistance - turned.y,
              z = kLamp.z * kLampDistance - turned.z;
  const float here = std::fabs(KDist_ + std::sqrt(x * x + y * y + z * z));
  const float atOrigin = std::fabs(KDist_ + kLampDistance);
  return here * kMostArriving > atOrigin ? atOrigin / here : kMostArriving;
}

float SmoothLight::highlight(float cosine) const {
  const float at = std::clamp(cosine, 0.0F, 1.0F) * kSteps;
  const auto step = static_cast<std::size_t>(at);
  const float rest = at - static_cast<float>(step);
  return highlights_[step] + (highlights_[step + 1] - highlights_[step]) * rest;
}

std::uint32_t SmoothLight::colour(float nx, float ny, float nz, float arriving,
                                  const std::array<float, 3>& factors) const {
  const float length = std::sqrt(nx * nx + ny * ny + nz * nz);
  const float share = length > 0 ? 1 / length : 0;
  // A normal that was led past the horizon counts as on it.
  const float facing = std::max(nz * share, 0.0F);
  const float flat = (kLamp.x * nx + kLamp.y * ny) * share;
  const float c1 = flat + kLamp.z * facing, c2 = kLamp.z * facing - flat;
  const float shine = c1 > 0 ? highlight(2 * c1 * facing - kLamp.z) * arriving : 0;
  const float body =
      ambient_ + diffuse_ * arriving * (kLampShare * std::max(c1, 0.0F) + kOtherShare * std::max(c2, 0.0F));
  return 0xFF000000U | part(body * factors[0] + shine) << 16 | part(body * factors[1] + shine) << 8 |
         part(body * factors[2] + shine);
}

}  // namespace lorivan
