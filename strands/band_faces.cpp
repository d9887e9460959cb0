#include "strands/band_faces.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace lorivan {
namespace {

constexpr std::size_t kFewSides = 6;     // of a face whose arcs are all about as near
constexpr std::size_t kMostSides = 150;  // of a face of which every pair is compared
constexpr double kSafety = 1.03;         // of the reach: how lines bend between their samples is not known
constexpr double kCalm = 0.8;            // cosine of the turn to which an arc is one bend

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
    const BandLoop::Spot under = loops_[c.under].spot(c.underAt);
    Corner& corner = corners_[i];
    corner.at = under.at;
    corner.along[0] = unit(under.along);
    corner.along[1] = unit(loops_[c.over].spot(c.overAt).along);
    corner.isLeft = cross(corner.along[0], corner.along[1]) > 0;
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
  made.a = corners_[from.crossing].at;
  made.b = corners_[to.crossing].at;
  const Vec way = made.b - made.a;
  const double length = lengthOf(way);
  made.along = length > 0 ? way * (1 / length) : Vec{1, 0};
  const auto turn = [&](Vec along) { made.cosine = std::min(made.cosine, dot(along, made.along)); };
  turn(corners_[from.crossing].along[from.isOver]);
  turn(corners_[to.crossing].along[to.isOver]);
  const auto pass = [&](Vec p) {
    const double aside = cross(made.along, p - made.a), on = dot(made.along, p - made.a);
    made.bulge[aside < 0] = std::max(made.bulge[aside < 0], std::fabs(aside));
    made.beyond = std::max({made.beyond, -on, on - length});
  };
  for (int i = static_cast<int>(std::floor(from.place)); i < to.place; ++i) {
    if (i > from.place) {
      turn(loop.direction(i));
      pass(loop.point(i));
    }
    if (i + 0.5 <= from.place || i + 0.5 >= to.place) continue;
    // Half way to the next sample.
    pass((loop.point(i) + loop.point(i + 1)) * 0.5 + (loop.tangent(i) - loop.tangentTo(i + 1)) * 0.125);
  }
  made.middle = (made.a + made.b) * 0.5;
  made.radius = length / 2 + made.beyond + std::max(made.bulge[0], made.bulge[1]);
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
  for (const int half : face_) {
    char& mark = (*marks_)[half / 2];
    if (n == 2) mark |= kMayClasp;
    if (n <= 2 || n > kMostSides) mark |= kMayTouch;
  }
  if (n <= 2 || n > kMostSides) return;
  for (std::size_t i = 0; i < n; ++i) {
    if (!leadApart(face_[i], face_[(i + 1) % n])) markPair(face_[i], face_[(i + 1) % n]);
    for (std::size_t k = i + 2; k < n && k - i < n - 1; ++k)
      if ((n <= kFewSides || mayBeNear(arc(face_[i]), arc(face_[k]))) && !areApart(face_[i], face_[k]))
        markPair(face_[i], face_[k]);
  }
}

bool BandFaces::mayBeNear(const Arc& a, const Arc& b) const {
  const Vec apart = b.middle - a.middle;
  const double least = reach_ + a.radius + b.radius;
  return dot(apart, apart) < least * least;
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
  const double least = reach_ + inner(one) + inner(two);
  return fromSegment(farA, b.a, b.b) > least && fromSegment(farB, a.a, a.b) > least;
}

/// Whether there is room across the way between their middles, or across one of the arcs.
bool BandFaces::areApart(int one, int two) const {
  const Arc &a = arc(one), &b = arc(two);
  const Vec between = b.middle - a.middle;
  for (const Vec axis : {quarter(a.along), quarter(b.along), unit(between), a.along, b.along}) {
    const Vec way = dot(axis, between) < 0 ? axis * -1 : axis;
    if (-furthest(b, way * -1) - furthest(a, way) > reach_) return true;
  }
  return false;
}

/// How far an arc reaches to one side, a unit vector.
double BandFaces::furthest(const Arc& a, Vec way) {
  const double aside = cross(a.along, way), on = std::fabs(dot(a.along, way));
  return std::max(dot(a.a, way), dot(a.b, way)) + on * a.beyond +
         std::max(aside * a.bulge[0], -aside * a.bulge[1]);
}

}  // namespace lorivan
