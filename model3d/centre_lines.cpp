#include "model3d/centre_lines.h"

#include <algorithm>
#include <cmath>

#include "model3d/vec3_math.h"

namespace lorivan {

using namespace vec;

CentreLines::CentreLines(const TubeModel& model) {
  segments_.reserve(model.centres.size());
  starts_.reserve(model.centres.size());
  low_ = high_ = model.centres.empty() ? Vec3{} : model.centres.front();
  for (const TubeStrand& strand : model.strands) {
    const Vec3* centres = model.centres.data() + strand.firstRing;
    double way = 0;
    for (int r = 0; r < strand.ringCount; ++r) {
      const Vec3& p = centres[r];
      const Vec3 step = centres[r + 1 == strand.ringCount ? 0 : r + 1] - p;
      const float square = dot(step, step);
      segments_.push_back({p, step, square > 0 ? 1 / square : 0});
      strands_.push_back(static_cast<std::uint32_t>(lengths_.size()));
      starts_.push_back(static_cast<float>(way));
      way += std::sqrt(static_cast<double>(square));
      low_ = {std::min(low_.x, p.x), std::min(low_.y, p.y), std::min(low_.z, p.z)};
      high_ = {std::max(high_.x, p.x), std::max(high_.y, p.y), std::max(high_.z, p.z)};
    }
    lengths_.push_back(way);
  }
}

/// The closest pair lies inside both segments, or at an end of one of them: C. Ericson, Real-Time Collision
/// Detection, section 5.1.9.
Nearest nearestOf(const CentreSegment& one, const CentreSegment& two) {
  const Vec3 between = one.from - two.from;
  const float a = dot(one.way, one.way), e = dot(two.way, two.way), b = dot(one.way, two.way);
  const float c = dot(one.way, between), f = dot(two.way, between);
  const float across = a * e - b * b;
  const auto held = [](float t) { return t < 0 ? 0.0F : t > 1 ? 1.0F : t; };
  float s = across > 1e-7F * a * e ? held((b * f - c * e) / across) : 0;
  float t = e > 0 ? (b * s + f) / e : 0;
  if (t < 0 || t > 1) {
    t = held(t);
    s = a > 0 ? held((b * t - c) / a) : 0;
  }
  Nearest nearest{0, one.from + one.way * s, two.from + two.way * t};
  nearest.distance = length(nearest.one - nearest.two);
  return nearest;
}

}  // namespace lorivan
