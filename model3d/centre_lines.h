// The centre lines of a model's strands as segments, one for each ring: what distances are measured from.
#pragma once

#include <cmath>
#include <cstdint>
#include <limits>
#include <vector>

#include "model3d/tube_model.h"

namespace lorivan {

/// From a ring's centre to the next one's.
struct CentreSegment {
  Vec3 from, way;
  float perSquare = 0;  // 1 / |way|^2; 0 for a segment without length

  /// The way to `p` from the place on the segment that is nearest to it. Whoever asks gets the same bits.
  Vec3 apart(const Vec3& p) const {
    const float dx = p.x - from.x, dy = p.y - from.y, dz = p.z - from.z;
    float t = (dx * way.x + dy * way.y + dz * way.z) * perSquare;
    t = t < 0 ? 0 : t > 1 ? 1 : t;
    return {dx - t * way.x, dy - t * way.y, dz - t * way.z};
  }
};

/// What two segments are nearest with.
struct Nearest {
  float distance = std::numeric_limits<float>::max();
  Vec3 one, two;
};
Nearest nearestOf(const CentreSegment& one, const CentreSegment& two);

class CentreLines {
 public:
  explicit CentreLines(const TubeModel& model);

  const std::vector<CentreSegment>& segments() const { return segments_; }
  std::size_t strandCount() const { return lengths_.size(); }
  double length(std::size_t strand) const { return lengths_[strand]; }
  std::uint32_t strand(std::uint32_t segment) const { return strands_[segment]; }
  /// How far a segment begins from the first ring of its strand, along the strand.
  float startOf(std::uint32_t segment) const { return starts_[segment]; }
  /// The extremes of all centres.
  const Vec3& low() const { return low_; }
  const Vec3& high() const { return high_; }

  /// How far it is along the strand from one segment to the other; more than any length between strands.
  float wayBetween(std::uint32_t one, std::uint32_t two) const {
    if (strands_[one] != strands_[two]) return std::numeric_limits<float>::max();
    const float straight = std::fabs(starts_[one] - starts_[two]);
    const float round = static_cast<float>(lengths_[strands_[one]]) - straight;
    return straight < round ? straight : round;
  }

 private:
  std::vector<CentreSegment> segments_;
  std::vector<std::uint32_t> strands_;  // position in TubeModel::strands
  std::vector<float> starts_;           // way from the strand's first ring
  std::vector<double> lengths_;         // of each strand
  Vec3 low_, high_;
};

}  // namespace lorivan
