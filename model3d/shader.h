// The light on one quad: ambient, diffuse and specular, from one point light and its mirror image in z. The
// light and the eye stay where they are in model space, however the knot is turned.
#pragma once

#include "model3d/tube_model.h"

namespace lorivan {

/// The light fields, already corrected to their ranges.
struct LightSettings {
  float Ka = 0.3F;      // ambient, 0 to 1
  float Kd = 0.9F;      // diffuse, 0 to 1
  float Ks = 0.5F;      // specular, 0 to 1
  float NFact = 10;     // specular exponent, 0 to 10
  float KDist = -1100;  // distance term, -20000 to -500
};

/// The face normal from corners 1 to 3 of a quad: outward, and as long as the face is large.
void NormalVector(float& nx, float& ny, float& nz, const TubeModel& model, const QuadCorners& corners);

/// What the light does to one quad.
struct QuadLight {
  double intensity = 0;  // 0 to 511
  bool reached = false;  // by the first light
  /// Only the mirror light reaches it, and its highlight takes the direction to the eye and two parts of the
  /// reflected ray from the quad that the first light reached last in the order of painting: see
  /// lightAfter().
  bool waiting = false;
};

/// Lights the quads of one picture.
class Shader {
 public:
  /// Normals are taken at `faceShare` of their length.
  Shader(const TubeModel& model, const LightSettings& light, float faceShare = 1);

  /// All there is to say of a quad by itself. A waiting quad is lit as if the first light had reached none
  /// yet.
  QuadLight light(const QuadCorners& corners) const;
  /// The same for a quad that is not seen: whether the first light reaches it.
  bool reaches(const QuadCorners& corners) const;
  /// The intensity of a waiting quad that is painted after `reached`, a quad which the first light reached.
  double lightAfter(const QuadCorners& corners, const QuadCorners& reached) const;

 private:
  struct Rays;
  Rays raysOf(const QuadCorners& corners) const;
  double highlight(double cosine) const;
  double intensity(const Rays& rays, double diffuse, double specular) const;

  const TubeModel& model_;
  LightSettings light_;
  double LightScale_, faceShare_;
  int exponent_;  // NFact where it is a small whole number, else -1
};

/// An intensity in the colour of a strand, as 0xFFRRGGBB; each part ends at 255.
std::uint32_t litColour(double intensity, const std::array<float, 3>& factors);

}  // namespace lorivan
