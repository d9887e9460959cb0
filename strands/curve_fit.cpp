#include "strands/curve_fit.h"

#include <algorithm>

namespace lorivan {
namespace {

constexpr std::size_t kLongestSpan = 48;  // that one segment is tried on

struct Cubic {
  Vec a, b, c, d;
};

/// The same, to be asked for many of its points.
struct Polynomial {
  explicit Polynomial(const Cubic& p)
      : start(p.a),
        once((p.b - p.a) * 3),
        square((p.a - p.b * 2 + p.c) * 3),
        cube(p.d - p.a + (p.b - p.c) * 3) {}
  Vec at(double t) const { return start + (once + (square + cube * t) * t) * t; }
  Vec start, once, square, cube;
};

/// An arc of angle v between its end directions has controls at this part of its chord: 1 / (3 cos^2(v / 4)).
double arcReach(Vec from, Vec to) {
  const double half = std::sqrt(std::max(0.0, (1 + dot(from, to)) / 2));  // cos(v / 2)
  return 2 / (3 * (1 + half));
}

/// Whether a line turns so far between its ends, or on the way there, that one segment can hardly follow it.
bool turnsFar(std::span<const LinePoint> line) {
  constexpr double most = 0.5;  // cosine
  const Vec middle = line[line.size() / 2].along;
  return dot(line.front().along, middle) < most || dot(middle, line.back().along) < most;
}

void append(const Cubic& cubic, std::vector<PointF>& chain) {
  chain.push_back(toPointF(cubic.b));
  chain.push_back(toPointF(cubic.c));
  chain.push_back(toPointF(cubic.d));
}

Cubic arc(const LinePoint& from, const LinePoint& to) {
  const double reach = lengthOf(to.at - from.at) * arcReach(from.along, to.along);
  return {from.at, from.at + from.along * reach, to.at - to.along * reach, to.at};
}

class Fitter {
 public:
  explicit Fitter(std::span<const LinePoint> points) : points_(points), way_(memory()) {
    way_.resize(points.size());
    way_[0] = 0;
    for (std::size_t i = 1; i < points.size(); ++i)
      way_[i] = way_[i - 1] + lengthOf(points[i].at - points[i - 1].at);
  }

  /// The cubic with the end points' directions that comes nearest to the points between, by least squares
  /// over the lengths of its controls (P. J. Schneider, Graphics Gems, 1990).
  Cubic fit(std::size_t i, std::size_t j) const {
    const LinePoint &from = points_[i], &to = points_[j];
    double aa = 0, ab = 0, bb = 0, ra = 0, rb = 0;
    const double first = way_[i], inverse = 1 / (way_[j] - first);
    for (std::size_t k = i + 1; k < j; ++k) {
      const double t = (way_[k] - first) * inverse, s = 1 - t;
      const double b1 = 3 * s * s * t, b2 = 3 * s * t * t;
      const Vec rest = points_[k].at - from.at * (s * s * s + b1) - to.at * (t * t * t + b2);
      aa += b1 * b1;
      ab += b1 * b2;
      bb += b2 * b2;
      ra += dot(rest, from.along) * b1;
      rb -= dot(rest, to.along) * b2;
    }
    ab *= -dot(from.along, to.along);
    const double all = way_[j] - way_[i], area = aa * bb - ab * ab;
    const double reachA = (ra * bb - rb * ab) / area, reachB = (rb * aa - ra * ab) / area;
    const auto sound = [all](double reach) { return reach > 0.2 * all && reach < 0.55 * all; };
    if (!(area > 1e-6 * aa * bb) || !sound(reachA) || !sound(reachB)) return arc(from, to);
    return {from.at, from.at + from.along * reachA, to.at - to.along * reachB, to.at};
  }

  bool follows(const Cubic& cubic, std::size_t i, std::size_t j, double tolerance) const {
    const Polynomial curve(cubic);
    const double first = way_[i], all = way_[j] - first, inverse = 1 / all;
    for (std::size_t k = i + 1; k < j; ++k) {
      const Vec off = curve.at((way_[k] - first) * inverse) - points_[k].at;
      if (std::fabs(cross(off, points_[k].along)) > tolerance) return false;
      if (std::fabs(dot(off, points_[k].along)) > 0.1 * all) return false;
    }
    return true;
  }

 private:
  static std::vector<double>& memory() {
    thread_local std::vector<double> ways;
    return ways;
  }

  std::span<const LinePoint> points_;
  std::vector<double>& way_;  // along the points' chords
};

}  // namespace

void fitCurve(std::span<const LinePoint> points, double tolerance, std::vector<PointF>& chain) {
  if (points.size() < 2) return;
  if (tolerance <= 0) {
    for (std::size_t i = 1; i < points.size(); ++i) append(arc(points[i - 1], points[i]), chain);
    return;
  }
  const Fitter fitter(points);
  const std::size_t last = points.size() - 1;
  std::size_t tried = kLongestSpan;
  for (std::size_t i = 0; i < last;) {
    std::size_t reach = std::min(tried, last - i);
    while (reach > 3 && turnsFar(points.subspan(i, reach + 1))) reach = reach * 5 / 8;
    Cubic cubic = fitter.fit(i, i + reach);
    while (reach > 1 && !fitter.follows(cubic, i, i + reach, tolerance)) {
      reach = reach > 3 ? reach * 5 / 8 : reach - 1;
      cubic = fitter.fit(i, i + reach);
    }
    append(cubic, chain);
    i += reach;
    tried = std::min(kLongestSpan, 2 * reach);
  }
}

void appendArc(const LinePoint& from, const LinePoint& to, std::vector<PointF>& chain) {
  append(arc(from, to), chain);
}

}  // namespace lorivan
