// Drawings as chains of curves, in the units of the file that they come from, y downwards.
#pragma once

#include <string>
#include <vector>

#include "custom/geometry.h"

namespace lorivan {

/// What x and y become: x' = a x + c y + e, y' = b x + d y + f.
struct Affine {
  double a = 1, b = 0, c = 0, d = 1, e = 0, f = 0;

  Spot operator()(Spot p) const { return {a * p.x + c * p.y + e, b * p.x + d * p.y + f}; }
  /// First `inner`, then this.
  Affine after(const Affine& inner) const;
};

/// Cubic Bezier segments one behind the other: 3 n + 1 points, or none. A straight line is a segment with its
/// controls at the thirds.
struct CurveChain {
  std::vector<Spot> points;
  bool closed = false;
};

/// No drawing has more segments; readers refuse what would.
inline constexpr std::size_t kMostSegments = 200'000;

/// What a reader found, with sentences about what it passed over.
struct Drawing {
  std::vector<CurveChain> chains;
  std::vector<std::string> notes;
};

/// Puts a drawing together, chain by chain.
class ChainPen {
 public:
  explicit ChainPen(Drawing& drawing) : drawing_(drawing) {}

  /// What is drawn from now on is moved by this.
  void setTransform(const Affine& transform) { transform_ = transform; }

  void moveTo(Spot p);
  void lineTo(Spot p);
  void cubicTo(Spot c1, Spot c2, Spot p);
  /// Goes on along an ellipse from the angle `from` by `sweep`, radians; `u` and `v` are its half axes, or
  /// any two conjugate ones: centre + cos(angle) u + sin(angle) v. Without a current point it begins a chain.
  void arc(Spot centre, Spot u, Spot v, double from, double sweep);
  /// Goes back to where the chain began.
  void close();
  /// Ends the chain; `closed` draws the way back where there is one.
  void finish(bool closed = false);

  bool drawing() const { return drawing_now_; }
  Spot at() const { return at_; }
  bool tooMany() const { return segments_ > kMostSegments; }

 private:
  void add(Spot c1, Spot c2, Spot p);

  Drawing& drawing_;
  Affine transform_;
  CurveChain chain_;
  Spot start_, at_;
  bool drawing_now_ = false;
  std::size_t segments_ = 0;
};

/// The chain's points as straight lines that keep within `tolerance` of it.
std::vector<Spot> flattened(const CurveChain& chain, double tolerance);

}  // namespace lorivan
