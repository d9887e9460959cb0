// The light of the smooth picture: a lamp above the viewer's left shoulder, and a weaker one without
// highlight on the other side, so that no side of a tube is black. They stay with the viewer while the knot
// is turned, and it is as bright from every side.
#pragma once

#include <array>
#include <cstdint>

#include "model3d/shader.h"
#include "model3d/tube_model.h"

namespace lorivan {

class SmoothLight {
 public:
  explicit SmoothLight(const LightSettings& light);

  /// How much of the lamp's light arrives at a place, given in turned model units: 1 at the origin.
  float arriving(const Vec3& turned) const;

  /// The colour of a surface with this normal of any length, in the picture's axes, as 0xFFRRGGBB.
  std::uint32_t colour(float nx, float ny, float nz, float arriving,
                       const std::array<float, 3>& factors) const;

 private:
  float highlight(float cosine) const;

  static constexpr int kSteps = 256;
  float ambient_, diffuse_, KDist_;
  std::array<float, kSteps + 2> highlights_;  // by cosine
};

}  // namespace lorivan
