#include "strands/band_faces.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace lorivan {
namespace {

constexpr std::size_t kMostSides = 12;  // of a face of which every pair is compared
constexpr double kSafety = 1.03;        // of the reach: how lines bend between their samples is not known
constexpr double kCalm = 0.5;           // cosine of the turn to which an arc is one bend

double fromSegment(Vec p, Vec a, Vec b) {
  const Vec way = b - a;
  const double square = dot(way, way);
  const double t = square > 0 ? std::clamp(dot(p - a, way) / square, 0.0, 1.0) : 0;
  return lengthOf(p - a - way * t);
}

}  // namespace

bool BandFaces::mark(double reach, std::vector<char>& marks) {
  if (crossings_.empty() || !hangTogether()) return false;
  reach_ = reach * kSafety;
  marks_ = &marks;
  makeArcs();
  marks.assign(arcs_.size(), 0);
  std::vector<char> isDone(2 * arcs_.size(), 0);
  std::size_t faces = 0;
  for (int first = 0; first < static_cast<int>(isDone.size()); ++first) {
    if (isDone[first] != 0) continue;
    face_.clear();
    for (int half = first; isDone[half] == 0; half = next(half)) {
      isDone[half] = 1;
      face_.push_back(half);
    }
    ++faces;
    markFace();
  }
  // Euler's formula for a plane; every crossing has four arcs.
  const bool isPlane = faces == crossings_.size() + 2;
  if (!isPlane) marks.clear();
  return isPlane;
}

bool BandFaces::hangTogether() const {
  std::vector<int> parent(loops_.size());
  std::iota(parent.begin(), parent.end(), 0);
  const auto root = [&](int i) {
    while (parent[i] != i) i = parent[i] = parent[parent[i]];
    return i;
  };
  std::size_t parts = loops_.size();
  for (const BandCrossing& c : crossings_) {
    const int one = root(c.under), two = root(c.over);
    parts -= one != two;
    parent[one] = two;
    if (parts == 1) break;
  }
  return parts == 1;
}

void BandFaces::makeArcs() {
  corners_.resize(crossings_.size());
  for (std::size_t i = 0; i < crossings_.size(); ++i) {
    const BandCrossing& c = crossings_[i];
    const BandLoop::Spot spot = loops_[c.under].spot(c.underAt);
    corners_[i].under = spot.at;
    corners_[i].along = spot.along;
    corners_[i].isLeft = cross(spot.along, loops_[c.over].spot(c.overAt).along) > 0;
  }
  arcs_.reserve(2 * crossings_.size());
  for (std::size_t l = 0; l < loops_.size(); ++l)
    for (std::size_t i = 0; i < passings_[l].size(); ++i) {
      const bool isLast = i + 1 == passings_[l].size();
      const BandPassing& from = passings_[l][i];
      BandPassing to = passings_[l][isLast ? 0 : i + 1];
      if (isLast) to.place += loops_[l].size();
      corners_[from.crossing].out[from.isOver] = static_cast<int>(arcs_.size());
      corners_[to.crossing].in[to.isOver] = static_cast<int>(arcs_.size());
      arcs_.push_back(makeArc(loops_[l], from, to));
    }
}

BandFaces::Arc BandFaces::makeArc(const BandLoop& loop, const BandPassing& from,
                                  const BandPassing& to) const {
  Arc made;
  made.from = from.crossing;
  made.to = to.crossing;
  made.fromOver = from.isOver;
  made.toOver = to.isOver;
  made.a = corners_[from.crossing].under;
  made.b = corners_[to.crossing].under;
  const Vec way = made.b - made.a;
  const double length = lengthOf(way);
  made.along = length > 0 ? way * (1 / length) : Vec{1, 0};
  const int first = static_cast<int>(std::floor(from.place)), last = static_cast<int>(std::ceil(to.place));
  for (int i = first; i <= last; ++i) {
    made.cosine = std::min(made.cosine, dot(loop.direction(i), made.along));
    const Vec chord = loop.point(i + 1) - loop.point(i);
    // Half way to the next sample, and there.
    const Vec half = loop.point(i) + chord * 0.5 + (loop.tangent(i) - loop.tangentTo(i + 1)) * 0.125;
    for (const auto& [p, place] : {std::pair(half, i + 0.5), std::pair(loop.point(i + 1), i + 1.0)}) {
      if (place <= from.place || place >= to.place) continue;
      const double aside = cross(made.along, p - made.a), on = dot(made.along, p - made.a);
      const double beyond = std::max({-on, on - length, 0.0});
      made.bulge[0] = std::max(made.bulge[0], aside + beyond);
      made.bulge[1] = std::max(made.bulge[1], -aside + beyond);
    }
  }
  made.sine = std::sqrt(std::max(0.0, 1 - made.cosine * made.cosine));
  return made;
}

/// The arc that follows round a face, which lies on the left: at a crossing it turns to the left.
int BandFaces::next(int half) const {
  const bool isBack = half % 2 != 0;
  const Arc& here = arc(half);
  const Corner& corner = corners_[isBack ? here.from : here.to];
  const bool isOver = isBack ? here.fromOver : here.toOver;
  const bool goesOn = (corner.isLeft != isOver) != isBack;
  return goesOn ? 2 * corner.out[!isOver] : 2 * corner.in[!isOver] + 1;
}

void BandFaces::markFace() {
  const std::size_t n = face_.size();
  if (n <= 2 || n > kMostSides) {
    for (const int half : face_) (*marks_)[half / 2] |= n == 2 ? kMayTouch | kMayClasp : kMayTouch;
    return;
  }
  for (std::size_t i = 0; i < n; ++i) {
    if (!leadApart(face_[i], face_[(i + 1) % n])) markPair(face_[i], face_[(i + 1) % n]);
    for (std::size_t k = i + 2; k < n && k - i < n - 1; ++k)
      if (!areApart(face_[i], face_[k])) markPair(face_[i], face_[k]);
  }
}

void BandFaces::markPair(int one, int two) {
  for (const int half : {one, two}) (*marks_)[half / 2] |= kMayTouch;
}

/// Whether two arcs go further and further apart from the crossing at which one ends and the other begins, or
/// are far apart where they end.
bool BandFaces::leadApart(int one, int two) const {
  const Arc &a = arc(one), &b = arc(two);
  if (a.cosine <= 0 || b.cosine <= 0) return false;
  if (a.cosine * b.cosine - a.sine * b.sine > -dot(heading(one), heading(two))) return true;
  if (std::min(a.cosine, b.cosine) < kCalm) return false;
  const Vec farA = one % 2 == 0 ? a.a : a.b, farB = two % 2 == 0 ? b.b : b.a;
  return fromSegment(farA, b.a, b.b) > reach_ + inner(two) &&
         fromSegment(farB, a.a, a.b) > reach_ + inner(one);
}

bool BandFaces::areApart(int one, int two) const {
  if (isInFront(one, two) || isInFront(two, one)) return true;
  const Arc &a = arc(one), &b = arc(two);
  const double least = reach_ + outermost(one) + outermost(two);
  return std::min({fromSegment(a.a, b.a, b.b), fromSegment(a.b, b.a, b.b), fromSegment(b.a, a.a, a.b),
                   fromSegment(b.b, a.a, a.b)}) > least;
}

/// Whether all of an arc lies on the left of another one's chord, far enough away.
bool BandFaces::isInFront(int one, int two) const {
  const Arc &a = arc(one), &b = arc(two);
  const Vec way = heading(one);
  const double bulge = dot(way, heading(two)) < 0 ? inner(two) : outermost(two);
  const double least = reach_ + inner(one) + bulge;
  return cross(way, b.a - a.a) > least && cross(way, b.b - a.a) > least;
}

}  // namespace lorivan
