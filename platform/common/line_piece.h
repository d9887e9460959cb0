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
  LinePiece(PointF from, PointF to, float reach)
      : from_(from),
        to_(to),
        reach_(reach),
        length_(std::hypot(to.x - from.x, to.y - from.y)),
        x_(length_ > 0 ? (to.x - from.x) / length_ : 1),
        y_(length_ > 0 ? (to.y - from.y) / length_ : 0),
        slope_(std::fabs(to.y - from.y) > 1 ? (to.x - from.x) / (to.y - from.y) : 0) {}

  /// Makes the line flat where `first` begins and where `last` ends. A piece is round at both ends, and one
  /// that turns up near to the line's end would stick out there as well.
  void cut(const LinePiece& first, const LinePiece& last) {
    if (leads(first) && isNear(from_, first.from_)) before_ = first.cutAt(first.from_, from_, 1);
    if (leads(last) && isNear(to_, last.to_)) behind_ = last.cutAt(last.to_, from_, -1);
    isCut_ = true;
  }

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
    Four x = step + (static_cast<float>(begin) - from_.x);
    y -= from_.y;
    Four along = x * x_ + y * y_, across = y * x_ - x * y_;
    for (int i = begin; i < end; i += 4, along += 4 * x_, across -= 4 * y_) {
      const Four before = along < zero ? along : zero;
      const Four behind = along > length_ + zero ? along - length_ : zero;
      Four here = reach_ * reach_ - across * across - before * before - behind * behind;
      if (isCut_) {
        here -= beyond(before_, x, y) + beyond(behind_, x, y);
        x += 4;
      }
      Four kept;
      std::memcpy(&kept, nearness + i, sizeof kept);
      kept = here > kept ? here : kept;
      std::memcpy(nearness + i, &kept, sizeof kept);
    }
  }
  static constexpr int kBehind = 3;  // pixels

 private:
  using Four [[gnu::vector_size(16)]] = float;
  /// What lies beyond is cut off: where x and y times these, and the rest added, are below 0.
  struct Cut {
    float x = 0, y = 0, rest = 0;
  };
  // So large that a hundredth of a pixel past a flat end is out of any reach.
  static constexpr float kFlat = 1e6F;
  // Cosine of the turn up to which a piece goes on as the one at the line's end does.
  static constexpr float kSameWay = 0.7F;

  bool leads(const LinePiece& end) const { return x_ * end.x_ + y_ * end.y_ > kSameWay; }
  bool isNear(PointF a, PointF b) const { return std::hypot(a.x - b.x, a.y - b.y) < reach_; }
  /// In coordinates from `origin`; `way` is 1 where its direction leads away from the cut.
  Cut cutAt(PointF at, PointF origin, float way) const {
    return {way * x_, way * y_, way * ((origin.x - at.x) * x_ + (origin.y - at.y) * y_)};
  }
  static Four beyond(const Cut& cut, Four x, float y) {
    const Four zero = {}, in = x * cut.x + (y * cut.y + cut.rest);
    return in < zero ? in * in * kFlat : zero;
  }

  PointF from_, to_;
  float reach_, length_;
  float x_, y_;  // its direction
  float slope_;  // pixels to the right for each one down; 0 where it hardly leads down
  bool isCut_ = false;
  Cut before_, behind_;
};

}  // namespace lorivan
