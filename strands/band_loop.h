// A strand's centre line as the drawing knows it, ready to be walked, offset and measured.
#pragma once

#include <cmath>
#include <memory>
#include <optional>
#include <span>
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
/// 0 up; numbers at or above size() lie a lap further on. The laps of a strand that goes round a cylinder lie
/// beside each other. Copies share what they are made of.
class BandLoop {
 public:
  /// Samples that repeat the one before are left out. Fewer than three points make an empty loop. Where
  /// the cubic between a sample and one a few further on, with the line's directions at both, passes those
  /// between within `stray` pixels, they are left out as well: places count the samples that are kept.
  BandLoop(const KnotCurve& curve, int slot, const GridView& view, double stray = 0);

  int slot() const { return slot_; }
  int size() const { return size_; }
  /// The number of a sample in the first lap.
  std::size_t wrap(int i) const {
    const int n = size();
    return static_cast<std::size_t>(i >= 0 && i < n ? i : (i % n + n) % n);
  }
  /// At a sample, whichever lap it is in.
  Vec point(int i) const {
    double x = left_;
    const Vec at = nodes_[wrap(i, x)].at;
    return {at.x + x, at.y};
  }
  /// The first derivative there by the place, further on and up to there.
  Vec tangent(int i) const {
    const Node& node = nodes_[wrap(i)];
    return node.along * node.step;
  }
  Vec tangentTo(int i) const { return nodes_[wrap(i)].along * nodes_[wrap(i - 1)].step; }
  /// How many samples the piece is long in which a place lies, those counted that were left out.
  double samplesAt(double place) const { return nodes_[wrap(static_cast<int>(std::floor(place)))].step; }
  /// Whether samples between it and the next one were left out.
  bool isWide(int i) const { return nodes_[wrap(i)].step > 1; }
  Vec direction(int i) const { return nodes_[wrap(i)].direction; }
  /// Whether the piece from a sample to the next one bends more tightly than a circle of this radius. Mostly
  /// it is sharpest at one of them, where its bend is cross(along, second derivative) / |along|^3.
  bool bendsWithin(int i, double radius) const {
    const Vec a = tangent(i), b = tangentTo(i + 1), chord = point(i + 1) - point(i);
    const auto isTight = [radius](Vec along, Vec bend) {
      const double sharp = cross(along, bend) * radius, fast = dot(along, along);
      return sharp * sharp > fast * fast * fast;
    };
    return isTight(a, chord * 6 - b * 2) || isTight(b, a * 2 - chord * 6);
  }
  /// Whether its laps lie on one another.
  bool isRing() const { return turns_ == 0; }
  /// Periods that it goes to the right in one lap, and how many pixels that is.
  int turns() const { return turns_; }
  double lap() const { return lap_; }
  /// The same line further to the right.
  BandLoop moved(double right) const {
    BandLoop copy = *this;
    copy.left_ += right;
    return copy;
  }
  /// What has to be added to a place on `other` for the same point on this one; none where they are different
  /// lines.
  std::optional<double> sameLine(const BandLoop& other) const;
  double wrapped(double place) const;

  struct Spot {
    Vec at, along, bend;  // the point, its first and its second derivative by the place
  };
  Spot spot(double place) const;
  double height(double place) const;
  /// The whole line, one Bezier segment from sample to sample.
  void appendAll(std::vector<PointF>& chain) const;
  /// The same from one place to a later one.
  void appendPart(double from, double to, std::vector<PointF>& chain) const;
  /// A stretch by numbers of samples, those counted that were left out; it may reach into the next lap.
  struct Stretch {
    double from = 0, to = 0;
  };
  /// Where no sample lies below others.
  std::vector<Stretch> upperStretches() const;
  double placeOf(double sample) const;
  /// The place near `guess` whose point is nearest to `from`.
  double nearest(Vec from, double guess) const;

 private:
  struct Node {
    Vec at, along, direction;  // `along`: the derivative by the number of a sample, kept or not
    double step;               // samples to the next node
    int sample;                // its number among all
  };
  static void calmCusps(std::span<Node> all, Vec lap);
  void keep(std::span<const Node> all, double stray, std::vector<Node>& kept) const;
  std::size_t stepFrom(std::span<const Node> all, std::size_t from, double stray) const;
  static bool passesBetween(std::span<const Node> all, std::size_t from, std::size_t step, Vec lap,
                            double stray);
  /// Adds to x how far the sample's lap lies to the right of the first one.
  std::size_t wrap(int i, double& x) const {
    const int n = size();
    if (i >= 0 && i < n) return static_cast<std::size_t>(i);
    const int within = (i % n + n) % n;
    x += lap_ * ((i - within) / n);
    return static_cast<std::size_t>(within);
  }

  int slot_, size_ = 0, turns_ = 0;
  double lap_ = 0, left_ = 0;
  struct Line {
    std::vector<Node> nodes;
    std::vector<double> heights;  // of all samples, the first one once more at the end
  };
  std::shared_ptr<const Line> line_;
  const Node* nodes_ = nullptr;  // of the line
};

// Both are asked for hundreds of thousands of times in one picture: they are worth being inline.
[[gnu::always_inline]] inline BandLoop::Spot BandLoop::spot(double place) const {
  auto low = static_cast<int>(place);
  if (low > place) --low;
  const double t = place - low;
  double left = left_;
  const std::size_t at = wrap(low, left);
  const bool isLast = at + 1 == static_cast<std::size_t>(size_);
  const Node &a = nodes_[at], &b = nodes_[isLast ? 0 : at + 1];
  const Vec from{a.at.x + left, a.at.y};
  const Vec d{b.at.x + (isLast ? left + lap_ : left) - from.x, b.at.y - a.at.y};
  const Vec out = a.along * a.step, in = b.along * a.step;
  const Vec square = d * 3 - out * 2 - in, cube = out + in - d * 2;
  return {from + (out + (square + cube * t) * t) * t, out + (square * 2 + cube * (3 * t)) * t,
          square * 2 + cube * (6 * t)};
}

/// The point at `distance` beside a place, on the side that quarter() points to, or the other one below 0.
inline Vec offsetPoint(const BandLoop::Spot& spot, double distance) {
  return spot.at + quarter(unit(spot.along)) * distance;
}

/// All strands that have a loop, by slot. See BandLoop for `stray`.
std::vector<BandLoop> bandLoops(const KnotCurve& curve, const GridView& view, double stray = 0);

}  // namespace lorivan
