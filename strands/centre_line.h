// The centre line of a part of a band as chords, for asking how near to it a point is.
#pragma once

#include <algorithm>
#include <cmath>
#include <vector>

#include "strands/band_clip.h"

namespace lorivan {

struct Chord {
  Chord(Vec a, Vec b) : from(a), way(b - a), inverse(dot(way, way) > 0 ? 1 / dot(way, way) : 0) {}
  Vec to() const { return from + way; }
  double squareTo(Vec p) const {
    const Vec off = p - from;
    const Vec away = off - way * std::clamp(dot(off, way) * inverse, 0.0, 1.0);
    return dot(away, away);
  }
  Vec from, way;
  double inverse;  // of the square of its length
};

struct LineBox {
  Vec low, high;
  void add(Vec p) {
    low = {std::min(low.x, p.x), std::min(low.y, p.y)};
    high = {std::max(high.x, p.x), std::max(high.y, p.y)};
  }
  bool isWithin(const LineBox& o, double far) const {
    return low.x - far <= o.high.x && o.low.x <= high.x + far && low.y - far <= o.high.y &&
           o.low.y <= high.y + far;
  }
  double squareTo(Vec p) const {
    const Vec away{p.x - std::clamp(p.x, low.x, high.x), p.y - std::clamp(p.y, low.y, high.y)};
    return dot(away, away);
  }
};

/// A centre line as chords, for asking how near a point is.
class CentreLine {
 public:
  explicit CentreLine(const std::vector<LinePoint>& points) : begin_(points.front()), end_(points.back()) {
    chords_.reserve(points.size());
    boxes_.reserve(points.size() / kBlock + 1);
    for (std::size_t i = 1; i < points.size(); ++i) add(Chord(points[i - 1].at, points[i].at));
  }

  /// Whether a line may touch the band: for sure not, where this is false.
  bool isNear(Vec a, Vec b, double half) const {
    LineBox line{a, a};
    line.add(b);
    return all_.isWithin(line, half) &&
           std::ranges::any_of(boxes_, [&](const LineBox& box) { return box.isWithin(line, half); });
  }

  /// Whether it ends where it begins, and so has no ends.
  bool isClosed() const { return lengthOf(end_.at - begin_.at) < 1e-6; }

  /// How far away a point is, up to `most`. Begins where the last search ended.
  double distance(Vec p, double most) const {
    double least = most * most;
    if (all_.squareTo(p) >= least) return most;
    const auto search = [&](std::size_t block) {
      const std::size_t end = std::min((block + 1) * kBlock, chords_.size());
      const double before = least;
      for (std::size_t i = block * kBlock; i < end; ++i) least = std::min(least, chords_[i].squareTo(p));
      return least < before;
    };
    const std::size_t first = last_;
    search(first);
    for (std::size_t b = 0; b < boxes_.size(); ++b)
      if (b != first && boxes_[b].squareTo(p) < least && search(b)) last_ = b;
    return std::sqrt(least);
  }

  /// Whether a point is within the band around the line, `half` to each side, with straight ends.
  bool isInBand(Vec p, double half) const {
    const double least = half * half;
    if (all_.squareTo(p) >= least) return false;
    if (isClosed()) return isWithin(p, least);
    const bool isBefore = dot(p - begin_.at, begin_.along) < 0;
    const bool isBehind = dot(p - end_.at, end_.along) > 0;
    if (!isBefore && !isBehind) return isWithin(p, least);
    const std::size_t nearest = nearestChord(p, least);
    if (nearest == chords_.size() || (isBefore && nearest == 0)) return false;
    return !isBehind || nearest + 1 < chords_.size();
  }

 private:
  static constexpr std::size_t kBlock = 4;
  /// Whether any chord is nearer than the root of a square. Begins where the last search ended.
  bool isWithin(Vec p, double square) const {
    const auto isIn = [&](std::size_t block) {
      if (boxes_[block].squareTo(p) >= square) return false;
      const std::size_t end = std::min((block + 1) * kBlock, chords_.size());
      for (std::size_t i = block * kBlock; i < end; ++i)
        if (chords_[i].squareTo(p) < square) return true;
      return false;
    };
    if (isIn(last_)) return true;
    for (std::size_t b = 0; b < boxes_.size(); ++b)
      if (b != last_ && isIn(b)) {
        last_ = b;
        return true;
      }
    return false;
  }

  /// The number of the nearest chord; past the end where none is nearer than the root of a square.
  std::size_t nearestChord(Vec p, double least) const {
    std::size_t nearest = chords_.size();
    for (std::size_t b = 0; b < boxes_.size(); ++b) {
      if (boxes_[b].squareTo(p) >= least) continue;
      const std::size_t end = std::min((b + 1) * kBlock, chords_.size());
      for (std::size_t i = b * kBlock; i < end; ++i)
        if (const double square = chords_[i].squareTo(p); square < least) {
          least = square;
          nearest = i;
        }
    }
    return nearest;
  }

  void add(const Chord& chord) {
    if (chords_.empty()) all_ = {chord.from, chord.from};
    if (chords_.size() % kBlock == 0) boxes_.push_back({chord.from, chord.from});
    for (const Vec p : {chord.from, chord.to()}) {
      boxes_.back().add(p);
      all_.add(p);
    }
    chords_.push_back(chord);
  }

  std::vector<Chord> chords_;
  std::vector<LineBox> boxes_;  // of blocks of chords
  LineBox all_;
  LinePoint begin_, end_;
  mutable std::size_t last_ = 0;  // the block in which something was found last
};

/// A piece as points, near enough to one another for chords to stand for the curve, and for the lines up to
/// `far` beside it, where two sides of it are told apart at a distance of `probe`.
std::vector<LinePoint> pointsAlong(const BandPiece& piece, double far, double probe);

}  // namespace lorivan
