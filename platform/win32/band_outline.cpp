#include "platform/win32/band_outline.h"

#include <algorithm>
#include <cmath>

#include "base/numbers.h"

namespace lorivan::win32 {
namespace {

constexpr float kFlatness = 0.05F;         // pixels that a flattened curve may stray
constexpr float kArcFlatness = 0.03F;      // the same for round joins and caps
constexpr float kShortest = 0.01F;         // pixels; shorter steps have no direction worth keeping
constexpr float kSmoothTurn = 0.35F;       // radians; up to here a join needs no arc
constexpr float kHalfTurn = kPiF - 1e-3F;  // radians; a cap's arc, or a join that folds back

struct Vector {
  float x = 0, y = 0;
};

float distance(PointF a, PointF b) { return std::hypot(b.x - a.x, b.y - a.y); }

PointF bezierAt(const PointF* p, float t) {
  const float s = 1 - t;
  const float a = s * s * s, b = 3 * s * s * t, c = 3 * s * t * t, d = t * t * t;
  return {a * p[0].x + b * p[1].x + c * p[2].x + d * p[3].x,
          a * p[0].y + b * p[1].y + c * p[2].y + d * p[3].y};
}

/// Enough equal steps for a cubic to stay within kFlatness of its chords: a chord strays by at most an eighth
/// of the second derivative times the square of its step.
int stepsFor(const PointF* p) {
  const float bend = std::max(std::hypot(p[0].x - 2 * p[1].x + p[2].x, p[0].y - 2 * p[1].y + p[2].y),
                              std::hypot(p[1].x - 2 * p[2].x + p[3].x, p[1].y - 2 * p[2].y + p[3].y));
  return std::clamp(static_cast<int>(std::ceil(std::sqrt(6 * bend / (8 * kFlatness)))), 1, 64);
}

std::vector<PointF> flatten(std::span<const PointF> bezier) {
  std::vector<PointF> points;
  points.push_back(bezier.front());
  for (std::size_t i = 0; i + 3 < bezier.size(); i += 3) {
    const int steps = stepsFor(&bezier[i]);
    for (int k = 1; k <= steps; ++k) {
      const PointF next = bezierAt(&bezier[i], static_cast<float>(k) / static_cast<float>(steps));
      if (distance(points.back(), next) > kShortest) points.push_back(next);
    }
  }
  return points;
}

/// Walks along one side of a line of points and appends that side's outline.
class SideWalker {
 public:
  SideWalker(float half, std::vector<PointF>& outline)
      : half_(half), arcStep_(2 * std::acos(std::max(0.5F, 1 - kArcFlatness / half))), outline_(outline) {}

  void walk(std::span<const PointF> points) {
    Vector normal = normalOf(points[0], points[1]);
    append(points[0], normal);
    for (std::size_t i = 1; i + 1 < points.size(); ++i) {
      const Vector next = normalOf(points[i], points[i + 1]);
      join(points[i], normal, next,
           std::min(distance(points[i - 1], points[i]), distance(points[i], points[i + 1])));
      normal = next;
    }
    append(points.back(), normal);
  }

  /// The half circle from the side just walked to the other one.
  void roundCap(std::span<const PointF> points) {
    arc(points.back(), normalOf(points[points.size() - 2], points.back()), kHalfTurn);
  }

  void fullCircle(PointF centre) {
    for (const Vector start : {Vector{1, 0}, Vector{-1, 0}}) {
      append(centre, start);
      arc(centre, start, kHalfTurn);
    }
  }

 private:
  static Vector normalOf(PointF from, PointF to) {
    const float length = distance(from, to);
    return {(to.y - from.y) / length, (from.x - to.x) / length};
  }

  void append(PointF centre, Vector normal) {
    outline_.push_back({centre.x + half_ * normal.x, centre.y + half_ * normal.y});
  }

  /// The outline from one stretch to the next. `room` is the length of the shorter of the two.
  void join(PointF centre, Vector before, Vector after, float room) {
    const float turn =
        std::atan2(before.x * after.y - before.y * after.x, before.x * after.x + before.y * after.y);
    const float reach = half_ * std::tan(std::min(std::abs(turn), kHalfTurn) / 2);
    if (std::abs(turn) < kSmoothTurn && (turn > 0 || reach < room)) {
      miter(centre, before, after);
      return;
    }
    append(centre, before);
    if (turn > 0)
      arc(centre, before, turn);
    else
      outline_.push_back(centre);  // keeps the winding of the folded inner side positive
    append(centre, after);
  }

  void miter(PointF centre, Vector before, Vector after) {
    const Vector sum = {before.x + after.x, before.y + after.y};
    const float scale = 2 / (sum.x * sum.x + sum.y * sum.y);
    append(centre, {sum.x * scale, sum.y * scale});
  }

  /// The points strictly within an arc that turns by `turn` radians.
  void arc(PointF centre, Vector from, float turn) {
    const int steps = std::max(1, static_cast<int>(std::ceil(turn / arcStep_)));
    for (int k = 1; k < steps; ++k) {
      const float angle = turn * static_cast<float>(k) / static_cast<float>(steps);
      const float c = std::cos(angle), s = std::sin(angle);
      append(centre, {from.x * c - from.y * s, from.x * s + from.y * c});
    }
  }

  float half_;
  float arcStep_;
  std::vector<PointF>& outline_;
};

}  // namespace

void bandOutline(std::span<const PointF> bezier, float width, CapStyle caps, std::vector<PointF>& outline) {
  outline.clear();
  if (bezier.size() < 4 || !(width > 0)) return;
  std::vector<PointF> points = flatten(bezier);
  SideWalker walker(width / 2, outline);
  if (points.size() < 2) {
    if (caps == CapStyle::round) walker.fullCircle(points.front());
    return;
  }
  for (int side = 0; side < 2; ++side) {
    walker.walk(points);
    if (caps == CapStyle::round) walker.roundCap(points);
    std::reverse(points.begin(), points.end());
  }
}

}  // namespace lorivan::win32
