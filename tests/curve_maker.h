// Strands as curves made by hand, for tests.
#pragma once

#include <vector>

#include "base/numbers.h"
#include "strands/knot_curve.h"

namespace lorivan {

/// Appends a closed line of samples, with their heights, as a slot's strand.
inline void addSamples(KnotCurve& curve, int slot, const std::vector<StrandPoint>& samples) {
  curve.first[slot] = static_cast<int>(curve.X.size());
  for (const StrandPoint& p : samples) {
    curve.X.push_back(p.x);
    curve.Y.push_back(p.y);
    curve.Z.push_back(p.z);
  }
  curve.last[slot] = static_cast<int>(curve.X.size()) - 1;
}

inline StrandPoint sampleAt(double x, double y, double z) {
  return {static_cast<float>(x), static_cast<float>(y), static_cast<float>(z)};
}

/// What `at` gives for so many angles, once round.
template <class At>
std::vector<StrandPoint> samplesRound(int count, At at) {
  std::vector<StrandPoint> samples;
  for (int i = 0; i < count; ++i) samples.push_back(at(kTwoPi * i / count));
  return samples;
}

}  // namespace lorivan
