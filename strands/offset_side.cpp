#include "strands/offset_side.h"

#include <algorithm>
#include <optional>

namespace lorivan {
namespace {

/// Radians that the line may turn between two points of a side, and the cosine of that.
struct Turn {
  double angle, cosine;
};
constexpr Turn kFine{0.25, 0.969}, kCoarse{0.5, 0.8776};
constexpr double kBulge = 0.4;      // times the distance
constexpr double kTight = 0.3;      // of the way to a fold; from there on it turns by less
constexpr double kCorner = 0.2;     // sine of the turn between two samples from where on they make one
constexpr double kGather = 0.6;     // times that turn's arc beside the line, between two points of a side
constexpr double kFoldSize = 0.06;  // pixels, twice the size of a fold that a coarse side may miss
constexpr int kMostParts = 24;      // of a piece between two samples
constexpr double kFoldReach = 6;    // times the distance: the folds of bends down to 20 degrees
constexpr std::size_t kFoldPoints = 48;        // on either side, at most
constexpr std::size_t kFewPoints = 4;          // the same of a small fold
constexpr double kNearly = 0.2;                // of a segment that ends before the sides of a small fold meet
constexpr double kOneFold = 0.5 / kFoldReach;  // of that reach: folds that are nearer to one another are one

/// Samples a side, more densely where it turns.
class SideSampler {
 public:
  SideSampler(const BandLoop& loop, double distance, bool coarse, std::vector<LinePoint>& points)
      : loop_(loop),
        distance_(distance),
        most_(coarse ? kCoarse : kFine),
        folding_(most_.angle / 4),
        points_(points) {
    // A fold of a line so far away is about that high, times half the square of its angle.
    if (coarse && distance != 0)
      folding_ = std::clamp(std::sqrt(kFoldSize / std::fabs(distance)), folding_, most_.angle / 2);
  }

  void follow(double from, double to) {
    addSpot(from);
    double place = from;
    for (int sample = static_cast<int>(std::floor(from)) + 1; sample < to; ++sample) {
      if (sample - place < 0.02) continue;
      const LinePoint next = atSample(sample);
      addBetween(place, sample, next);
      points_.push_back(next);
      place = sample;
    }
    if (to - place < 0.02 && points_.size() > 1) points_.pop_back();
    const BandLoop::Spot end = loop_.spot(to);
    const LinePoint last{offsetPoint(end, distance_), unit(end.along)};
    addBetween(place, to, last);
    points_.push_back(last);
  }

 private:
  void addSpot(double place) {
    const BandLoop::Spot s = loop_.spot(place);
    points_.push_back({offsetPoint(s, distance_), unit(s.along)});
  }
  LinePoint atSample(int sample) const {
    const Vec along = loop_.direction(sample);
    return {loop_.point(sample) + quarter(along) * distance_, along};
  }
  void addBetween(double from, double to, const LinePoint& next) {
    const Vec along = points_.back().along, way = next.at - points_.back().at;
    const double cosine = dot(along, next.along), sine = std::fabs(cross(along, next.along));
    // How far a long piece bends away from its chord, for its length; small beside the band it needs no
    // point.
    const double bulge = sine * (std::fabs(way.x) + std::fabs(way.y));
    // Nor where samples that were left out say more of the bend.
    const bool isWide = loop_.isWide(static_cast<int>(std::floor(from)));
    const bool isLong = bulge > kBulge * (isWide ? 2.0 : std::max(std::fabs(distance_), 1.0));
    // A corner leaves a fold on its inner side, where points come together.
    const bool isFold =
        sine > kCorner && sine * std::fabs(distance_) > kGather * (std::fabs(way.x) + std::fabs(way.y));
    if (cosine > most_.cosine && !isLong && !isFold) return;
    const double turn = std::acos(std::clamp(cosine, -1.0, 1.0));
    const Vec chord = way - quarter(next.along - along) * distance_;  // of the centre line
    const bool mayFold = isFold || std::fabs(distance_) * turn > kTight * lengthOf(chord);
    const int parts =
        std::min(kMostParts, 1 + isLong + static_cast<int>(turn / (mayFold ? folding_ : most_.angle)));
    for (int k = 1; k < parts; ++k) addSpot(from + (to - from) * k / parts);
  }

  const BandLoop& loop_;
  double distance_;
  const Turn& most_;
  double folding_;  // radians where it may fold
  std::vector<LinePoint>& points_;
};

bool runsBack(const LinePoint& a, const LinePoint& b) { return dot(b.at - a.at, a.along + b.along) < 0; }

/// Whether two segments meet, or would if they were longer by a part of them, and where.
bool meet(Vec a, Vec b, Vec c, Vec d, double slack, Vec& at) {
  const Vec r = b - a, s = d - c;
  const double area = cross(r, s);
  if (area == 0) return false;
  const double t = cross(c - a, s) / area, u = cross(c - a, r) / area;
  if (t < -slack || t > 1 + slack || u < -slack || u > 1 + slack) return false;
  at = a + r * t;
  return true;
}

/// Takes the folds out of a sampled side.
class Unfolder {
 public:
  Unfolder(std::vector<LinePoint>& raw, double distance, OffsetSide& side)
      : raw_(raw), most_(kFoldReach * std::fabs(distance)), side_(side) {}

  void run() {
    std::size_t calm = 1;
    while (calm < raw_.size() && !runsBack(raw_[calm - 1], raw_[calm])) ++calm;
    std::vector<LinePoint>& out = side_.points;
    if (calm >= raw_.size()) return out.swap(raw_);
    for (std::size_t i = 0; i < raw_.size();) {
      if (out.empty() || i + 1 >= raw_.size() || !runsBack(raw_[i], raw_[i + 1])) {
        out.push_back(raw_[i++]);
        continue;
      }
      out.push_back(raw_[i]);
      i = cut(foldEnd(i));
    }
  }

 private:
  /// The point at which the fold that begins with the segment after `i` has ended.
  std::size_t foldEnd(std::size_t i) const {
    std::size_t end = i + 1;
    const auto isNear = [&](std::size_t k) { return lengthOf(raw_[k].at - raw_[end].at) < most_ * kOneFold; };
    for (std::size_t k = i + 1; k + 1 < raw_.size() && isNear(k); ++k)
      if (runsBack(raw_[k], raw_[k + 1])) end = k + 1;
    return end;
  }

  /// Finds where the line before the fold meets the line after it, searching outwards from the fold on both
  /// sides alike; returns the next raw point that stays. Further away the line may well cross itself, but not
  /// because of this fold.
  std::size_t cut(std::size_t end) {
    std::vector<LinePoint>& out = side_.points;
    const std::size_t last = out.size() - 1;
    std::size_t before = 0, after = 0;
    for (double way = 0; before < last && way < most_ && before < kFoldPoints; ++before)
      way += lengthOf(out[last - before].at - out[last - before - 1].at);
    for (double way = 0; end + after + 1 < raw_.size() && way < most_ && after < kFoldPoints; ++after)
      way += lengthOf(raw_[end + after + 1].at - raw_[end + after].at);
    if (const auto next = cutNear(last, end, before, after, 0)) return *next;
    // Chords of the few points of a small fold may just miss each other.
    if (const auto next =
            cutNear(last, end, std::min(before, kFewPoints), std::min(after, kFewPoints), kNearly))
      return *next;
    side_.corners.push_back(out.size());
    return end;
  }

  std::optional<std::size_t> cutNear(std::size_t last, std::size_t end, std::size_t before, std::size_t after,
                                     double slack) {
    Vec at;
    for (std::size_t reach = 0; reach < std::max(before, after); ++reach)
      for (std::size_t k = 0; k <= reach; ++k) {
        if (reach < after && k < before && tryCut(last - k, end + reach, slack, at))
          return join(last - k, end + reach, at);
        if (reach < before && k < after && tryCut(last - reach, end + k, slack, at))
          return join(last - reach, end + k, at);
      }
    return {};
  }

  /// The segment of what was kept that ends with point `b`, and the raw one that begins with point `c`.
  bool tryCut(std::size_t b, std::size_t c, double slack, Vec& at) const {
    return meet(side_.points[b - 1].at, side_.points[b].at, raw_[c].at, raw_[c + 1].at, slack, at);
  }

  std::size_t join(std::size_t b, std::size_t c, Vec at) {
    std::vector<LinePoint>& out = side_.points;
    const Vec along = unit(out[b].at - out[b - 1].at), onwards = unit(raw_[c + 1].at - raw_[c].at);
    out.resize(b);
    while (!side_.corners.empty() && side_.corners.back() >= b) side_.corners.pop_back();
    out.push_back({at, along});
    side_.corners.push_back(out.size());
    out.push_back({at, onwards});
    return c + 1;
  }

  std::vector<LinePoint>& raw_;
  double most_;  // how far from a fold its ends are looked for
  OffsetSide& side_;
};

}  // namespace

void followSide(const BandLoop& loop, double from, double to, double distance, OffsetSide& side,
                bool coarse) {
  side.points.clear();
  side.corners.clear();
  thread_local std::vector<LinePoint> raw;
  raw.clear();
  SideSampler(loop, distance, coarse, raw).follow(from, to);
  Unfolder(raw, distance, side).run();
}

void appendSide(const OffsetSide& side, double tolerance, std::vector<PointF>& chain) {
  std::size_t begin = 0;
  const auto appendRun = [&](std::size_t end) {
    const std::span<const LinePoint> run(&side.points[begin], end - begin);
    // A run that begins elsewhere than the one before ended is reached by a straight line.
    if (begin > 0 && lengthOf(run[0].at - side.points[begin - 1].at) > 0) {
      const Vec way = unit(run[0].at - side.points[begin - 1].at);
      appendArc({side.points[begin - 1].at, way}, {run[0].at, way}, chain);
    }
    fitCurve(run, tolerance, chain);
    begin = end;
  };
  for (const std::size_t corner : side.corners) appendRun(corner);
  if (begin < side.points.size()) appendRun(side.points.size());
}

void reverseSide(OffsetSide& side) {
  std::reverse(side.points.begin(), side.points.end());
  for (LinePoint& p : side.points) p.along = p.along * -1;
  for (std::size_t& corner : side.corners) corner = side.points.size() - corner;
  std::reverse(side.corners.begin(), side.corners.end());
}

}  // namespace lorivan
