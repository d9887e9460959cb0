#include "strands/untangle.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>

#include "strands/band_outline.h"
#include "strands/curve_fit.h"

namespace lorivan {
namespace {

constexpr int kChords = 6;          // of a segment
constexpr double kShortest = 1e-3;  // pixels
constexpr double kEndSlack = 1e-6;  // of a chord: loops often end where they begin
constexpr int kMostMeetings = 24;   // that are taken apart

/// One cubic segment, and the box that it lies in.
struct Piece {
  std::array<Vec, 4> p;
  Vec low, high;

  explicit Piece(const std::array<Vec, 4>& points) : p(points), low(points[0]), high(points[0]) {
    for (const Vec v : p) {
      low = {std::min(low.x, v.x), std::min(low.y, v.y)};
      high = {std::max(high.x, v.x), std::max(high.y, v.y)};
    }
  }
  bool isNear(const Piece& o) const {
    return low.x <= o.high.x && o.low.x <= high.x && low.y <= o.high.y && o.low.y <= high.y;
  }
  Vec at(double t) const {
    const double s = 1 - t;
    return p[0] * (s * s * s) + p[1] * (3 * s * s * t) + p[2] * (3 * s * t * t) + p[3] * (t * t * t);
  }
  double size() const { return lengthOf(high - low); }
  /// From one parameter to a later one.
  Piece part(double from, double to) const {
    const auto speed = [this](double t) {
      const double s = 1 - t;
      return ((p[1] - p[0]) * (s * s) + (p[2] - p[1]) * (2 * s * t) + (p[3] - p[2]) * (t * t)) * 3;
    };
    const double third = (to - from) / 3;
    const Vec a = at(from), b = at(to);
    return Piece({a, a + speed(from) * third, b - speed(to) * third, b});
  }
};

using Ring = std::vector<Piece>;

/// Where a ring meets itself: pieces and the parameters on them, in order.
struct Meeting {
  std::size_t one, two;
  double t, u;
};

void takeRing(const std::vector<PointF>& contour, Ring& ring) {
  ring.clear();
  const auto vec = [](PointF q) { return Vec{q.x, q.y}; };
  Vec from = vec(contour.front());
  for (std::size_t i = 1; i + 2 < contour.size(); i += 3) {
    const Piece piece({from, vec(contour[i]), vec(contour[i + 1]), vec(contour[i + 2])});
    if (piece.size() < kShortest) continue;
    ring.push_back(piece);
    from = piece.p[3];
  }
}

std::vector<PointF> contourOf(const Ring& ring) {
  std::vector<PointF> contour;
  contour.reserve(1 + 3 * ring.size());
  contour.push_back(toPointF(ring.front().p[0]));
  for (const Piece& piece : ring)
    for (std::size_t k = 1; k < 4; ++k) contour.push_back(toPointF(piece.p[k]));
  contour.back() = contour.front();
  return contour;
}

std::array<Vec, kChords + 1> chordsOf(const Piece& piece) {
  std::array<Vec, kChords + 1> points;
  for (int k = 0; k <= kChords; ++k) points[k] = piece.at(static_cast<double>(k) / kChords);
  return points;
}

/// Where two chords meet, as their parameters.
std::optional<Vec> meet(Vec a, Vec b, Vec c, Vec d) {
  const Vec r = b - a, s = d - c;
  const double area = cross(r, s);
  if (area == 0) return {};
  const double t = cross(c - a, s) / area, u = cross(c - a, r) / area;
  if (t < -kEndSlack || t > 1 + kEndSlack || u < -kEndSlack || u > 1 + kEndSlack) return {};
  return Vec{std::clamp(t, 0.0, 1.0), std::clamp(u, 0.0, 1.0)};
}

std::optional<Meeting> meetingOf(const Ring& ring, std::size_t i, std::size_t j) {
  const auto one = chordsOf(ring[i]), two = chordsOf(ring[j]);
  const bool isNext = j == i + 1, closes = i == 0 && j + 1 == ring.size();
  for (std::size_t k = 0; k < kChords; ++k)
    for (std::size_t m = i == j ? k + 2 : 0; m < kChords; ++m) {
      if ((isNext && k + 1 == kChords && m == 0) || (closes && k == 0 && m + 1 == kChords)) continue;
      if (const auto at = meet(one[k], one[k + 1], two[m], two[m + 1]))
        return Meeting{i, j, (static_cast<double>(k) + at->x) / kChords,
                       (static_cast<double>(m) + at->y) / kChords};
    }
  return {};
}

/// Whether a line along the first piece has all of the second one's controls on one side, and its own not.
bool areApart(const Piece& a, const Piece& b) {
  const Vec way = a.p[3] - a.p[0];
  const auto beside = [&](Vec p) { return cross(way, p - a.p[0]); };
  const auto own = std::minmax({0.0, beside(a.p[1]), beside(a.p[2])});
  const auto other = std::minmax({beside(b.p[0]), beside(b.p[1]), beside(b.p[2]), beside(b.p[3])});
  const double slack = kEndSlack * dot(way, way);
  return other.first > own.second + slack || other.second < own.first - slack;
}

/// Whether pieces that follow one another never lead back, so that they can not meet.
bool isOneWay(const Piece& first, const Piece& last) {
  const Vec way = last.p[3] - first.p[0];
  for (const Piece* piece : {&first, &last})
    for (std::size_t k = 0; k < 3; ++k)
      if (dot(piece->p[k + 1] - piece->p[k], way) < 0) return false;
  return true;
}

/// Whether pieces that begin, or end, at one corner lie on either side of a line that halves it.
bool partAtCorner(const Piece& before, const Piece& after) {
  const Vec corner = after.p[0];
  const Vec aside = unit(after.p[3] - corner) - unit(before.p[0] - corner);
  const auto leads = [&](Vec p) { return dot(p - corner, aside); };
  return leads(before.p[0]) < 0 && leads(before.p[1]) < 0 && leads(before.p[2]) < 0 &&
         leads(after.p[1]) > 0 && leads(after.p[2]) > 0 && leads(after.p[3]) > 0;
}

/// Whether pieces whose boxes meet surely meet nowhere but where one goes on as the other.
bool keepApart(const Ring& ring, std::size_t i, std::size_t j) {
  const Piece &one = ring[i], &two = ring[j];
  if (j <= i + 1 && isOneWay(one, two)) return true;
  if (i == j) return false;
  if (j == i + 1 && partAtCorner(one, two)) return true;
  if (i == 0 && j + 1 == ring.size() && partAtCorner(two, one)) return true;
  return areApart(one, two) || areApart(two, one);
}

/// The first one, by the pieces' numbers.
std::optional<Meeting> findMeeting(const Ring& ring) {
  // Boxes in single precision side by side, a little too large: nearly all pairs are told apart by them.
  struct Reach {
    float left, top, right, bottom;
  };
  thread_local std::vector<Reach> reaches;
  reaches.clear();
  const auto below = [](double v) { return static_cast<float>(v - std::fabs(v) * 1e-6); };
  for (const Piece& piece : ring)
    reaches.push_back({below(piece.low.x), below(piece.low.y), -below(-piece.high.x), -below(-piece.high.y)});
  for (std::size_t i = 0; i < ring.size(); ++i) {
    const Reach one = reaches[i];
    for (std::size_t j = i; j < ring.size(); ++j) {
      const Reach& two = reaches[j];
      if ((one.left > two.right) | (two.left > one.right) | (one.top > two.bottom) | (two.top > one.bottom))
        continue;
      if (!ring[i].isNear(ring[j]) || keepApart(ring, i, j)) continue;
      if (const auto found = meetingOf(ring, i, j)) return found;
    }
  }
  return {};
}

void append(Ring& ring, const Piece& piece) {
  if (piece.size() >= kShortest) ring.push_back(piece);
}

/// The loop between a meeting's two passes.
Ring innerLoop(const Ring& ring, const Meeting& at) {
  Ring loop;
  if (at.one == at.two) {
    append(loop, ring[at.one].part(at.t, at.u));
    return loop;
  }
  append(loop, ring[at.one].part(at.t, 1));
  loop.insert(loop.end(), ring.begin() + static_cast<std::ptrdiff_t>(at.one) + 1,
              ring.begin() + static_cast<std::ptrdiff_t>(at.two));
  append(loop, ring[at.two].part(0, at.u));
  return loop;
}

/// What is left of the ring without that loop.
Ring outerLoop(const Ring& ring, const Meeting& at) {
  Ring loop(ring.begin(), ring.begin() + static_cast<std::ptrdiff_t>(at.one));
  append(loop, ring[at.one].part(0, at.t));
  append(loop, ring[at.two].part(at.u, 1));
  loop.insert(loop.end(), ring.begin() + static_cast<std::ptrdiff_t>(at.two) + 1, ring.end());
  return loop;
}

bool isInside(const Ring& ring, Vec p) {
  bool inside = false;
  for (const Piece& piece : ring) {
    const auto points = chordsOf(piece);
    for (std::size_t k = 0; k < kChords; ++k) {
      const Vec a = points[k], b = points[k + 1];
      if ((a.y > p.y) != (b.y > p.y) && p.x < a.x + (b.x - a.x) * (p.y - a.y) / (b.y - a.y)) inside = !inside;
    }
  }
  return inside;
}

}  // namespace

bool crossesItself(const std::vector<PointF>& contour) {
  thread_local Ring ring;
  takeRing(contour, ring);
  return findMeeting(ring).has_value();
}

std::vector<std::vector<PointF>> untangled(std::vector<PointF> contour, double least, double leastHole) {
  thread_local Ring whole;
  takeRing(contour, whole);
  if (!whole.empty() && !findMeeting(whole)) {
    if (contour.size() != 1 + 3 * whole.size()) contour = contourOf(whole);
    std::vector<std::vector<PointF>> one;
    one.push_back(std::move(contour));
    return one;
  }
  std::vector<Ring> open{whole}, simple;
  for (int meetings = 0; !open.empty();) {
    const Ring ring = std::move(open.back());
    open.pop_back();
    if (ring.empty()) continue;
    const auto at = meetings++ < kMostMeetings ? findMeeting(ring) : std::nullopt;
    if (!at) {
      simple.push_back(ring);
      continue;
    }
    open.push_back(innerLoop(ring, *at));
    open.push_back(outerLoop(ring, *at));
  }
  if (simple.size() == 1) return {contourOf(simple.front())};

  struct Loop {
    const Ring* ring;
    std::vector<PointF> contour;
    double area;
  };
  const double sense = contourArea(contour) < 0 ? -1 : 1;
  std::vector<Loop> loops;
  for (const Ring& ring : simple) {
    std::vector<PointF> closed = contourOf(ring);
    const double area = sense * contourArea(closed);
    loops.push_back({&ring, std::move(closed), area});
  }
  std::ranges::sort(loops, std::ranges::greater(), &Loop::area);
  std::vector<std::vector<PointF>> kept;
  std::vector<const Ring*> rings;
  for (const Loop& loop : loops) {
    const Vec middle =
        loop.ring->size() > 1 ? loop.ring->at(loop.ring->size() / 2).p[0] : loop.ring->front().at(0.5);
    const auto holds = [&](const Ring* ring) { return isInside(*ring, middle); };
    const bool isInner = std::ranges::any_of(rings, holds);
    const bool counts = isInner ? -loop.area > leastHole : loop.area > least;
    if (!kept.empty() && !counts) continue;
    kept.push_back(loop.contour);
    rings.push_back(loop.ring);
  }
  return kept;
}

}  // namespace lorivan
