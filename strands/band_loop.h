// A strand's centre line as the drawing knows it, ready to be walked, offset and measured.
#pragma once

#include <cmath>
#include <vector>

#include "strands/knot_curve.h"

namespace lorivan {

/// A place or a direction in the picture, x to the right and y down as in the view.
struct Vec {
  double x = 0, y = 0;
  Vec operator+(Vec o) const { return {x + o.x, y + o.y}; }
  Vec operator-(Vec o) const { return {x - o.x, y - o.y}; }
  Vec operator*(double f) const { return {x * f, y * f}; }
};

inline double dot(Vec a, Vec b) { return a.x * b.x + a.y * b.y; }
inline double cross(Vec a, Vec b) { return a.x * b.y - a.y * b.x; }
inline double lengthOf(Vec a) { return std::sqrt(dot(a, a)); }
/// A quarter turn, from x towards y.
inline Vec quarter(Vec a) { return {-a.y, a.x}; }
/// The direction of a vector; the null vector gives (1, 0).
inline Vec unit(Vec a) {
  const double length = lengthOf(a);
  return length > 0 ? a * (1 / length) : Vec{1, 0};
}

/// The closed cardinal curve through a strand's samples, unrounded. A place on it is a number of samples from
/// 0 up; numbers at or above size() lie a lap further on.
class BandLoop {
 public:
  /// Samples that repeat the one before are left out. Fewer than three points make an empty loop.
  BandLoop(const KnotCurve& curve, int slot, const GridView& view);

  int slot() const { return slot_; }
  int size() const { return static_cast<int>(nodes_.size()); }
  /// At a sample, whichever lap it is in.
  Vec point(int i) const { return nodes_[wrap(i)].at; }
  Vec tangent(int i) const { return nodes_[wrap(i)].along; }
  Vec direction(int i) const { return nodes_[wrap(i)].direction; }
  double wrapped(double place) const;

  struct Spot {
    Vec at, along, bend;  // the point, its first and its second derivative by the place
  };
  Spot spot(double place) const;
  double height(double place) const;
  /// The place near `guess` whose point is nearest to `from`.
  double nearest(Vec from, double guess) const;

 private:
  struct Node {
    Vec at, along, direction;
    double height = 0;
  };
  std::size_t wrap(int i) const {
    const int n = size();
    return static_cast<std::size_t>(i >= 0 && i < n ? i : (i % n + n) % n);
  }

  int slot_;
  std::vector<Node> nodes_;
};

// Both are asked for hundreds of thousands of times in one picture: they are worth being inline.
inline BandLoop::Spot BandLoop::spot(double place) const {
  auto low = static_cast<int>(place);
  if (low > place) --low;
  const double t = place - low;
  const std::size_t at = wrap(low), next = at + 1 < nodes_.size() ? at + 1 : 0;
  const Node &a = nodes_[at], &b = nodes_[next];
  const Vec d = b.at - a.at, square = d * 3 - a.along * 2 - b.along, cube = a.along + b.along - d * 2;
  return {a.at + (a.along + (square + cube * t) * t) * t, a.along + (square * 2 + cube * (3 * t)) * t,
          square * 2 + cube * (6 * t)};
}

/// The point at `distance` beside a place, on the side that quarter() points to, or the other one below 0.
inline Vec offsetPoint(const BandLoop::Spot& spot, double distance) {
  return spot.at + quarter(unit(spot.along)) * distance;
}

/// All strands that have a loop, by slot.
std::vector<BandLoop> bandLoops(const KnotCurve& curve, const GridView& view);

}  // namespace lorivan
