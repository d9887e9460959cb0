#include "model3d/verdict.h"

#include <algorithm>
#include <cmath>
#include <numeric>

#include "base/numbers.h"
#include "model3d/vec3_math.h"

namespace lorivan {

using namespace vec;

namespace {

/// Which strands hang together.
class Groups {
 public:
  explicit Groups(std::size_t count) : parent_(count) { std::iota(parent_.begin(), parent_.end(), 0U); }
  std::size_t of(std::size_t i) const {
    while (parent_[i] != i) i = parent_[i];
    return i;
  }
  void join(std::size_t a, std::size_t b) { parent_[of(a)] = of(b); }
  int count() const {
    int own = 0;
    for (std::size_t i = 0; i < parent_.size(); ++i) own += parent_[i] == i ? 1 : 0;
    return own;
  }

 private:
  std::vector<std::size_t> parent_;
};

Contacts findContacts(const StrandSearch& search, const CentreLines& lines,
                      std::span<const RingCrossing> crossings, TubeForm form, float together) {
  Contacts contacts;
  contacts.crossings = static_cast<int>(crossings.size());
  Groups groups(lines.strandCount());
  const auto strandAt = [&](int ring) { return lines.strand(static_cast<std::uint32_t>(ring)); };
  for (const RingCrossing& crossing : crossings) {
    if (search.nearCrossing(form, crossing.over, crossing.under, together).distance >= together) continue;
    ++contacts.touching;
    groups.join(strandAt(crossing.over), strandAt(crossing.under));
  }
  for (std::size_t one = 0; one < lines.strandCount(); ++one)
    for (std::size_t two = one + 1; two < lines.strandCount(); ++two)
      if (groups.of(one) != groups.of(two) && search.nearest(form, one, two, together).distance < together)
        groups.join(one, two);
  contacts.pieces = groups.count();
  return contacts;
}

Triangle3 triangleOf(const TubeModel& model, const QuadCorners& c, bool second) {
  const auto at = [&](std::size_t i) { return model.vertices[c[i]]; };
  return second ? Triangle3{at(0), at(2), at(3)} : Triangle3{at(0), at(1), at(2)};
}

Vec3 normalOf(const Triangle3& t) { return cross(t[1] - t[0], t[2] - t[0]); }

constexpr float kStraight = 0.99F;  // cosine of the least bend

/// Walls, folds and volume, from every side of every tube.
class SideWalk {
 public:
  SideWalk(const TubeModel& model, const CentreLines& lines, Verdict& verdict)
      : model_(model), lines_(lines), verdict_(verdict) {
    quads_.build(model);
  }
  void run() {
    for (const TubeStrand& strand : model_.strands)
      for (int ring = 0; ring < strand.ringCount; ++ring)
        for (int side = 0; side < model_.sides; ++side) visit(strand, ring, side);
    if (verdict_.wall.found) verdict_.wall.value = std::min(verdict_.wall.value, 2.0 * model_.radius);
  }

 private:
  QuadCorners corners(const TubeStrand& strand, int ring, int side) const {
    const int held = (ring + strand.ringCount) % strand.ringCount;
    return quads_.corners((strand.firstRing + held) * model_.sides +
                          (side % model_.sides + model_.sides) % model_.sides);
  }

  /// Whether the triangle looks away from the centre line, as it does not in folds.
  bool isOutside(const TubeStrand& strand, int ring, const Triangle3& t) const {
    const int held = (ring + strand.ringCount) % strand.ringCount;
    const CentreSegment& axis = lines_.segments()[strand.firstRing + held];
    const Vec3 normal = normalOf(t);
    return dot(normal, normal) > 0 &&
           dot(axis.apart((t[0] + t[1] + t[2]) * (1 / 3.0F)), unit(normal)) > 0.2F * model_.radius;
  }

  void visit(const TubeStrand& strand, int ring, int side) {
    const QuadCorners c = corners(strand, ring, side);
    const auto here = static_cast<std::size_t>(strand.firstRing + ring);
    const auto next = static_cast<std::size_t>(strand.firstRing + (ring + 1) % strand.ringCount);
    for (const bool second : {false, true}) {
      const Triangle3 t = triangleOf(model_, c, second);
      verdict_.volume += static_cast<double>(dot(cross(t[0], t[1]), t[2])) / 6;
    }
    const auto vertex = [&](std::size_t i) { return model_.vertices[c[i]]; };
    const Vec3 way = model_.centres[next] - model_.centres[here];
    if (dot(vertex(3) - vertex(0), way) < 0) {
      if (verdict_.folds++ == 0) verdict_.foldAt = vertex(0);
      return;
    }
    for (const bool second : {false, true})
      if (const Triangle3 t = triangleOf(model_, c, second); isOutside(strand, ring, t))
        measureWall(strand, ring, side, t);
  }

  bool bendsAt(const TubeStrand& strand, int ring) const {
    const auto way = [&](int r) {
      const int held = (r + strand.ringCount) % strand.ringCount;
      return unit(lines_.segments()[strand.firstRing + held].way);
    };
    return dot(way(ring - 1), way(ring)) < kStraight || dot(way(ring), way(ring + 1)) < kStraight;
  }

  /// From the middle of a side straight through the tube, to where it comes out opposite.
  void measureWall(const TubeStrand& strand, int ring, int side, const Triangle3& t) {
    const Vec3 middle = (t[0] + t[1] + t[2]) * (1 / 3.0F), inwards = unit(normalOf(t)) * -1;
    // In a bend the way leads askew through the tube.
    const int most = bendsAt(strand, ring) ? model_.sides / 2 : 1;
    for (int r = ring - 1; r <= ring + 1; ++r) {
      const int opposite = side + turned(strand, ring, r) + model_.sides / 2;
      for (int s = opposite - most + model_.sides % 2; s <= opposite + most; ++s)
        for (const bool second : {false, true}) {
          const QuadCorners c = corners(strand, r, s);
          const Triangle3 other = triangleOf(model_, c, second);
          const float far = rayTo(other, middle, inwards);
          if (far <= 0 || dot(normalOf(other), inwards) <= 0 || !isOutside(strand, r, other)) continue;
          if (!verdict_.wall.found || far < static_cast<float>(verdict_.wall.value))
            verdict_.wall = {true, static_cast<double>(far), middle + inwards * (far / 2)};
        }
    }
  }

  /// By how many sides the numbers go on from a ring to itself or a neighbour.
  int turned(const TubeStrand& strand, int ring, int other) const {
    const auto join = [&](int r) {
      return model_.join(strand.firstRing + (r + strand.ringCount) % strand.ringCount);
    };
    return other > ring ? join(ring) : other < ring ? -join(other) : 0;
  }

  const TubeModel& model_;
  const CentreLines& lines_;
  Verdict& verdict_;
  QuadIndex quads_;
};

/// A polygon in a circle leaves room up to this on its way to another one.
float mostPlay(const TubeModel& model) {
  const auto share = static_cast<float>(1 - 0.7 * std::cos(kTwoPi / 2 / model.sides));
  return 2 * model.radius * share;
}

}  // namespace

Contacts contactsOf(const TubeModel& model, std::span<const RingCrossing> crossings, int window,
                    TubeForm form, float together) {
  const CentreLines lines(model);
  return findContacts(StrandSearch(model, lines, window), lines, crossings, form, together);
}

Verdict inspect(const TubeModel& model, std::span<const RingCrossing> crossings, int window, TubeForm form) {
  Verdict verdict;
  const CentreLines lines(model);
  for (std::size_t i = 0; i < lines.strandCount(); ++i) verdict.lengths.push_back(lines.length(i));
  const StrandSearch search(model, lines, window);
  const Contacts contacts = findContacts(search, lines, crossings, form, kTouch);
  verdict.pieces = contacts.pieces;
  verdict.crossings = contacts.crossings;
  verdict.touching = contacts.touching;

  const auto middle = [](const Apart& apart) { return (apart.one + apart.two) * 0.5F; };
  constexpr float kAnywhere = 1e6F;
  const Apart round = search.nearest(TubeForm::round, kAnywhere);
  if (round.distance < 0) verdict.overlap = {true, -static_cast<double>(round.distance), middle(round)};
  if (round.distance < kAnywhere)
    verdict.clearance = {true, std::max(0.0, static_cast<double>(round.distance)), middle(round)};
  if (form == TubeForm::polygons && verdict.clearance.found) {
    const Apart apart = search.nearest(form, std::max(0.0F, round.distance) + mostPlay(model));
    verdict.clearance = {true, static_cast<double>(apart.distance), middle(apart)};
  }
  if (form == TubeForm::polygons)
    SideWalk(model, lines, verdict).run();
  else if (!model.centres.empty())
    verdict.wall = {true, 2.0 * model.radius, model.centres.front()};
  return verdict;
}

}  // namespace lorivan
