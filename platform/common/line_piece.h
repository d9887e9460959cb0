// How near pixels lie to a straight piece of a line, four of them at a time.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstring>

#include "base/points.h"

namespace lorivan {

/// A pixel is as near as the square of the reach exceeds that of its distance; beyond the reach below 0. All
/// coordinates have the top left pixel's corner at (0, 0).
class LinePiece {
 public:
  /// Whether it ends flat at its first and its last point; else it is round there, as where lines turn.
  struct Ends {
    bool firstFlat = false, lastFlat = false;
  };

  LinePiece(PointF from, PointF to, float reach, Ends ends)
      : from_(from),
        to_(to),
        reach_(reach),
        length_(std::hypot(to.x - from.x, to.y - from.y)),
        x_(length_ > 0 ? (to.x - from.x) / length_ : 1),
        y_(length_ > 0 ? (to.y - from.y) / length_ : 0),
        beforeWeight_(ends.firstFlat ? kFlat : 1),
        behindWeight_(ends.lastFlat ? kFlat : 1),
        slope_(std::fabs(to.y - from.y) > 1 ? (to.x - from.x) / (to.y - from.y) : 0) {}

  float top() const { return std::min(from_.y, to_.y) - reach_; }
  float bottom() const { return std::max(from_.y, to_.y) + reach_; }

  /// The middles of all pixels of a row within reach lie between these, with half a pixel to spare.
  struct Span {
    float left, right;
  };
  Span spanAt(float y) const {
    float left = std::min(from_.x, to_.x), right = std::max(from_.x, to_.x);
    if (slope_ != 0) {  // the rest of it lies too far above or below
      const float half = reach_ * std::fabs(slope_), middle = from_.x + (y - from_.y) * slope_;
      left = std::max(left, middle - half);
      right = std::min(right, middle + half);
    }
    const float beside = std::max({0.F, y - std::max(from_.y, to_.y), std::min(from_.y, to_.y) - y});
    const float most = std::sqrt(std::max(0.F, reach_ * reach_ - beside * beside)) + 0.5F;
    return {left - most, right + most};
  }

  /// Keeps in `nearness` what is the nearest of this piece and of those before. Up to three pixels behind the
  /// end are looked at as well.
  void keepNearest(float* nearness, int begin, int end, float y) const {
    const Four zero = {}, step = {0.5F, 1.5F, 2.5F, 3.5F};
    const Four x = step + (static_cast<float>(begin) - from_.x);
    y -= from_.y;
    Four along = x * x_ + y * y_, across = y * x_ - x * y_;
    for (int i = begin; i < end; i += 4, along += 4 * x_, across -= 4 * y_) {
      const Four before = along < zero ? along : zero;
      const Four behind = along > length_ + zero ? along - length_ : zero;
      const Four here = reach_ * reach_ - across * across - before * before * beforeWeight_ -
                        behind * behind * behindWeight_;
      Four kept;
      std::memcpy(&kept, nearness + i, sizeof kept);
      kept = here > kept ? here : kept;
      std::memcpy(nearness + i, &kept, sizeof kept);
    }
  }
  static constexpr int kBehind = 3;  // pixels

 private:
  using Four [[gnu::vector_size(16)]] = float;
  // So large that a hundredth of a pixel past a flat end is out of any reach.
  static constexpr float kFlat = 1e6F;

  PointF from_, to_;
  float reach_, length_;
  float x_, y_;  // its direction
  float beforeWeight_, behindWeight_;
  float slope_;  // pixels to the right for each one down; 0 where it hardly leads down
};

}  // namespace lorivan
