#include "platform/common/wide_curve.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "base/numbers.h"
#include "platform/platform.h"

namespace lorivan {
namespace {

constexpr float kSagitta = 0.09F;          // pixels that a flattened curve, or a join, may stray
constexpr float kShortest = 0.01F;         // pixels; shorter steps have no direction worth keeping
constexpr float kThinned = 0.05F;          // pixels that a spine may lie off points that are left out
constexpr float kThin = 6;                 // pixels, with edges; to fill wider bands takes less time
constexpr float kSharpestMiter = 0.35F;    // radians
constexpr float kHalfTurn = kPiF - 1e-3F;  // radians; a cap's arc, or a join that folds back

struct Vector {
  float x = 0, y = 0;
};

float lengthOf(float x, float y) { return std::sqrt(x * x + y * y); }

/// The middle of a band as a line of points, and what lies between them.
struct Spine {
  std::vector<PointF> points;
  std::vector<Vector> normals;  // of the stretch behind each point
  std::vector<float> lengths;   // of the same
  bool closed = false;          // the last stretch leads back to the first point

  void flatten(std::span<const PointF> bezier) {
    points.assign(1, bezier.front());
    strayed_ = 0;
    for (std::size_t i = 0; i + 3 < bezier.size(); i += 3) curve(&bezier[i]);
    closed = points.size() > 3 && bezier.front().x == bezier.back().x && bezier.front().y == bezier.back().y;
    measure();
    if (closed) points.pop_back();
  }

 private:
  /// A chord strays by at most an eighth of the second derivative times the square of its step.
  void curve(const PointF* p) {
    const float bend = std::max(lengthOf(p[0].x - 2 * p[1].x + p[2].x, p[0].y - 2 * p[1].y + p[2].y),
                                lengthOf(p[1].x - 2 * p[2].x + p[3].x, p[1].y - 2 * p[2].y + p[3].y));
    const int steps = std::clamp(static_cast<int>(std::sqrt(6 / (8 * kSagitta) * bend)) + 1, 1, 64);
    for (int k = 1; k < steps; ++k) {
      const float t = static_cast<float>(k) / static_cast<float>(steps), s = 1 - t;
      const float a = s * s * s, b = 3 * s * s * t, c = 3 * s * t * t, d = t * t * t;
      add({a * p[0].x + b * p[1].x + c * p[2].x + d * p[3].x,
           a * p[0].y + b * p[1].y + c * p[2].y + d * p[3].y});
    }
    add(p[3]);
  }

  void add(PointF next) {
    const PointF last = points.back();
    if (lengthOf(next.x - last.x, next.y - last.y) <= kShortest) return;
    if (points.size() > 1 && passes(points[points.size() - 2], last, next))
      points.back() = next;
    else
      points.push_back(next);
  }

  /// Whether the way from one point to the next but one passes so near to the point between that it is left
  /// out; those that were left out before count.
  bool passes(PointF from, PointF between, PointF to) {
    const Vector in{between.x - from.x, between.y - from.y}, out{to.x - between.x, to.y - between.y};
    const float across = std::fabs(in.x * out.y - in.y * out.x);
    const float way = std::max(std::fabs(to.x - from.x), std::fabs(to.y - from.y));
    strayed_ += across / way;  // that, or a bit more
    if (strayed_ < kThinned && in.x * out.x + in.y * out.y > 0) return true;
    strayed_ = 0;
    return false;
  }

  void measure() {
    normals.resize(points.size() - 1);
    lengths.resize(normals.size());
    for (std::size_t i = 0; i < normals.size(); ++i) {
      const float x = points[i + 1].x - points[i].x, y = points[i + 1].y - points[i].y;
      lengths[i] = std::max(lengthOf(x, y), kShortest);
      normals[i] = {y / lengths[i], -x / lengths[i]};
    }
  }

  float strayed_ = 0;  // at most, of the last stretch from points that were left out
};

/// Walks along both sides of a spine. Filled by their winding the outlines cover the band: they go round each
/// of its stretches, and round the sector at the outer side of each join.
class SideWalker {
 public:
  SideWalker(const Spine& spine, float half, std::array<std::vector<PointF>, 2>& outlines)
      : spine_(spine),
        half_(half),
        arcStep_(2 * std::acos(std::max(0.5F, 1 - kSagitta / half))),
        sharpest_(std::tan(std::min(kSharpestMiter, std::sqrt(8 * kSagitta / half)))),
        outlines_(outlines) {}

  void run(CapStyle caps) {
    if (spine_.normals.empty()) {
      if (caps == CapStyle::round) circle(spine_.points.front());
      return;
    }
    for (const bool back : {false, true}) {
      out_ = &outlines_[spine_.closed && back ? 1 : 0];
      back_ = back;
      if (spine_.closed)
        ring();
      else
        side(caps);
    }
  }

 private:
  // The spine as it is walked.
  PointF point(std::size_t i) const { return spine_.points[back_ ? spine_.points.size() - 1 - i : i]; }
  std::size_t stretchAfter(std::size_t i) const {
    const std::size_t count = spine_.normals.size();
    return back_ ? (2 * count - (spine_.closed ? 2 : 1) - i) % count : i;
  }
  Vector normal(std::size_t stretch) const {
    const Vector n = spine_.normals[stretch];
    return back_ ? Vector{-n.x, -n.y} : n;
  }

  void ring() {
    std::size_t before = stretchAfter(spine_.points.size() - 1);
    for (std::size_t i = 0; i < spine_.points.size(); ++i) before = joinAt(i, before);
  }
  void side(CapStyle caps) {
    std::size_t before = stretchAfter(0);
    append(point(0), normal(before));
    const std::size_t last = spine_.points.size() - 1;
    for (std::size_t i = 1; i < last; ++i) before = joinAt(i, before);
    append(point(last), normal(before));
    if (caps == CapStyle::round) arc(point(last), normal(before), kHalfTurn);
  }
  void circle(PointF centre) {
    out_ = &outlines_[0];
    for (const Vector start : {Vector{1, 0}, Vector{-1, 0}}) {
      append(centre, start);
      arc(centre, start, kHalfTurn);
    }
  }

  std::size_t joinAt(std::size_t i, std::size_t before) {
    const std::size_t after = stretchAfter(i);
    join(point(i), normal(before), normal(after), std::min(spine_.lengths[before], spine_.lengths[after]));
    return after;
  }

  void append(PointF centre, Vector normal) {
    out_->push_back({centre.x + half_ * normal.x, centre.y + half_ * normal.y});
  }

  /// The outline from one stretch to the next. `room` is the length of the shorter of the two.
  void join(PointF centre, Vector before, Vector after, float room) {
    const float sine = before.x * after.y - before.y * after.x;
    const float cosine = before.x * after.x + before.y * after.y;
    // On the inner side the corner lies half the width times the tangent of half the turn back.
    const bool isOuter = sine > 0 || (sine == 0 && cosine < 0);
    const bool fits = isOuter ? sine < sharpest_ * cosine : -sine * half_ < room * (1 + cosine);
    if (fits) return miter(centre, before, after, cosine);
    append(centre, before);
    if (isOuter)
      arc(centre, before, std::min(std::atan2(sine, cosine), kHalfTurn));
    else
      out_->push_back(centre);  // so that the stretches' ends are gone round in one sense
    append(centre, after);
  }

  void miter(PointF centre, Vector before, Vector after, float cosine) {
    const float scale = 1 / (1 + cosine);
    append(centre, {(before.x + after.x) * scale, (before.y + after.y) * scale});
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

  const Spine& spine_;
  float half_;
  float arcStep_;   // radians
  float sharpest_;  // tangent of the turn up to which an outer side needs no arc
  std::array<std::vector<PointF>, 2>& outlines_;
  std::vector<PointF>* out_ = nullptr;
  bool back_ = false;
};

/// Holds until it is called again.
Spine& spineOf(const WideCurve& curve) {
  thread_local Spine spine;
  spine.flatten(curve.bezier);
  return spine;
}

bool isDrawable(const WideCurve& curve) {
  return curve.bezier.size() % 3 == 1 && curve.width > 0 && curve.width <= static_cast<float>(kLongestSide) &&
         std::ranges::all_of(curve.bezier, isWithinReach);
}

}  // namespace

bool addWideCurve(PathFiller& filler, const WideCurve& curve) {
  if (curve.bezier.empty()) return true;
  if (!isDrawable(curve)) return false;
  thread_local std::array<std::vector<PointF>, 2> outlines;
  for (auto& outline : outlines) outline.clear();
  SideWalker(spineOf(curve), curve.width / 2, outlines).run(curve.caps);
  filler.addPolygons(outlines, curve.colour);
  return true;
}

bool addEdgedCurve(PathFiller& filler, const WideCurve& curve, float edge) {
  if (!(edge > 0)) return addWideCurve(filler, curve);
  const float whole = curve.width + 2 * edge;
  const WideCurve beneath{curve.bezier, whole, 0, curve.caps};
  if (curve.bezier.empty()) return true;
  if (!isDrawable(curve) || !isDrawable(beneath)) return false;
  if (whole > kThin) return addWideCurve(filler, beneath) && addWideCurve(filler, curve);
  Spine& spine = spineOf(curve);
  const bool isFlat = curve.caps == CapStyle::flat && !spine.closed;
  const bool isPoint = spine.points.size() == 1;
  if (isPoint && isFlat) return true;
  if (isPoint || spine.closed) spine.points.push_back(spine.points.front());
  filler.addLine(spine.points, {curve.width / 2, whole / 2, isFlat}, curve.colour);
  return true;
}

}  // namespace lorivan
