#include "strands/flat_path.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "strands/band_loop.h"

namespace lorivan {
namespace {

constexpr int kMostHalvings = 12;
constexpr double kStraightBulge = 1e-6;

Vec middle(Vec a, Vec b) { return (a + b) * 0.5; }

struct BezierSegment {
  std::array<Vec, 4> p;

  Vec at(double t) const {
    const double s = 1 - t;
    return p[0] * (s * s * s) + p[1] * (3 * s * s * t) + p[2] * (3 * s * t * t) + p[3] * (t * t * t);
  }

  /// The most that it can reach away from its beginning, and back.
  double most() const { return lengthOf(p[1] - p[0]) + lengthOf(p[2] - p[1]) + lengthOf(p[3] - p[2]); }

  /// Direction at the beginning; {0, 0} when all points are one.
  Vec begin() const { return direction(p[0], {p[1], p[2], p[3]}); }
  Vec end() const { return direction(p[3], {p[2], p[1], p[0]}) * -1; }

  std::array<BezierSegment, 2> halves() const {
    const Vec a = middle(p[0], p[1]), b = middle(p[1], p[2]), c = middle(p[2], p[3]);
    const Vec d = middle(a, b), e = middle(b, c), f = middle(d, e);
    return {BezierSegment{{p[0], a, d, f}}, BezierSegment{{f, e, c, p[3]}}};
  }

 private:
  static Vec direction(Vec from, std::array<Vec, 3> to) {
    for (const Vec& next : to)
      if (const double far = lengthOf(next - from); far > 1e-9) return (next - from) * (1 / far);
    return {};
  }
};

/// The bulge of the arc over a chord that begins in a direction.
double bulgeOf(Vec along, Vec chord) {
  const double bulge = std::tan(std::atan2(cross(along, chord), dot(along, chord)) / 2);
  return std::fabs(bulge) < kStraightBulge ? 0 : bulge;
}

/// How far a point lies from the arc's circle, or from its line.
double distanceToArc(Vec p, Vec from, Vec to, double bulge) {
  const Vec chord = to - from;
  const double size = lengthOf(chord);
  if (size == 0) return lengthOf(p - from);
  if (bulge == 0) return std::fabs(cross(chord, p - from)) / size;
  // The centre lies beside the chord's middle, by half the chord over the tangent of half the arc's angle.
  const Vec left{-chord.y / size, chord.x / size};
  const Vec centre = middle(from, to) + left * (size * (1 - bulge * bulge) / (4 * bulge));
  return std::fabs(lengthOf(p - centre) - lengthOf(from - centre));
}

/// Two arcs with one direction where they meet (K. M. Bolton, "Biarc curves", 1975, with equal tangent
/// lengths).
struct Biarc {
  Vec joint;
  double first = 0, second = 0;  // bulges
  bool exists = false;
};

Biarc biarcOf(const BezierSegment& curve) {
  const Vec a = curve.p[0], b = curve.p[3], from = curve.begin(), to = curve.end(), way = b - a;
  const double square = 2 * (1 - dot(from, to)), linear = dot(way, from + to), far = dot(way, way);
  double reach = 0;
  if (square > 1e-12)
    reach = (std::sqrt(linear * linear + square * far) - linear) / square;
  else if (linear > 0)
    reach = far / (2 * linear);
  if (!(reach > 0)) return {};
  const Vec joint = middle(a, b) + (from - to) * (reach / 2);
  const Vec back = joint - b;
  return {joint, bulgeOf(from, joint - a), -bulgeOf(to * -1, back), true};
}

class Flattener {
 public:
  Flattener(double tolerance, bool arcs, std::vector<PathVertex>& out)
      : tolerance_(tolerance), arcs_(arcs), out_(out) {}

  void curve(const BezierSegment& cubic) {
    if (arcs_)
      arcs(cubic, 0);
    else
      lines(cubic);
  }
  void add(Vec p, double bulge = 0) { out_.push_back({p.x, p.y, bulge}); }

 private:
  /// A curve strays from n chords by at most an eighth of its second derivative over n squared.
  void lines(const BezierSegment& c) {
    const double bend =
        6 * std::max(lengthOf(c.p[0] - c.p[1] * 2 + c.p[2]), lengthOf(c.p[1] - c.p[2] * 2 + c.p[3]));
    const int parts = std::clamp(static_cast<int>(std::ceil(std::sqrt(bend / (8 * tolerance_)))), 1, 4096);
    for (int i = 1; i < parts; ++i) add(c.at(static_cast<double>(i) / parts));
    add(c.p[3]);
  }

  void arcs(const BezierSegment& c, int depth) {
    const Biarc two = biarcOf(c);
    if (two.exists && fits(c, two)) {
      out_.back().bulge = two.first;
      add(two.joint, two.second);
      add(c.p[3]);
    } else if (depth == kMostHalvings) {
      add(c.p[3]);
    } else {
      for (const BezierSegment& half : c.halves()) arcs(half, depth + 1);
    }
  }

  bool fits(const BezierSegment& c, const Biarc& two) const {
    constexpr int kParts = 16;
    if (std::fabs(two.first) > 1 || std::fabs(two.second) > 1) return false;
    const Vec joint = two.joint, normal = c.p[3] - c.p[0];
    for (int i = 1; i < kParts; ++i) {
      const Vec p = c.at(static_cast<double>(i) / kParts);
      const bool isFirst = dot(p - joint, normal) < 0;
      const double far =
          isFirst ? distanceToArc(p, c.p[0], joint, two.first) : distanceToArc(p, joint, c.p[3], two.second);
      if (far > tolerance_) return false;
    }
    return true;
  }

  double tolerance_;
  bool arcs_;
  std::vector<PathVertex>& out_;
};

}  // namespace

std::vector<PathVertex> flatPath(std::span<const PointF> chain, const CutPlace& place, double tolerance,
                                 bool arcs) {
  std::vector<PathVertex> path;
  if (chain.size() < 4) return path;
  const auto point = [&](std::size_t i) {
    return Vec{(chain[i].x - place.originX) * place.scale, (place.originY - chain[i].y) * place.scale};
  };
  Flattener flattener(tolerance, arcs, path);
  flattener.add(point(0));
  for (std::size_t i = 0; i + 3 < chain.size(); i += 3) {
    const BezierSegment cubic{{Vec{path.back().x, path.back().y}, point(i + 1), point(i + 2), point(i + 3)}};
    if (cubic.most() > tolerance) flattener.curve(cubic);
  }
  const bool closed = isClosed(chain);
  const double rest = lengthOf(Vec{path.back().x, path.back().y} - point(0));
  if (closed && path.size() > 2 && rest <= tolerance) path.pop_back();
  return path;
}

}  // namespace lorivan
