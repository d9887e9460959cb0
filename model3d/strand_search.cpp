#include "model3d/strand_search.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "model3d/vec3_math.h"

namespace lorivan {

using namespace vec;

namespace {

constexpr std::uint32_t kLeaf = 4;  // segments of the smallest balls

/// A quad with the ball that holds it.
struct BoundQuad {
  std::array<Vec3, 4> corner;
  Vec3 middle;
  float radius = 0;
};

BoundQuad boundQuad(const TubeModel& model, const QuadCorners& corners) {
  BoundQuad quad;
  for (std::size_t i = 0; i < 4; ++i) quad.corner[i] = model.vertices[corners[i]];
  quad.middle = (quad.corner[0] + quad.corner[1] + quad.corner[2] + quad.corner[3]) * 0.25F;
  for (const Vec3& corner : quad.corner) quad.radius = std::max(quad.radius, length(corner - quad.middle));
  return quad;
}

void quadsApart(const BoundQuad& one, const BoundQuad& two, Apart& best) {
  for (const std::size_t i : {1U, 2U})
    for (const std::size_t j : {1U, 2U}) {
      const Apart apart = trianglesApart({one.corner[0], one.corner[i], one.corner[i + 1]},
                                         {two.corner[0], two.corner[j], two.corner[j + 1]});
      if (apart.distance < best.distance) best = apart;
    }
}

}  // namespace

StrandSearch::StrandSearch(const TubeModel& model, const CentreLines& lines, int window)
    : model_(model), lines_(lines), window_(window), leastWay_(4 * model.radius) {
  double length = 0;
  for (std::size_t i = 0; i < lines.strandCount(); ++i) length += lines.length(i);
  const double rings = static_cast<double>(std::max<std::size_t>(1, lines.segments().size()));
  leastWay_ = std::max(leastWay_, static_cast<float>(length / rings * 4 * window));
  quads_.build(model);
  balls_.emplace_back();  // 0 is no ball
  for (const TubeStrand& strand : model.strands)
    roots_.push_back(addBall(static_cast<std::uint32_t>(strand.firstRing),
                             static_cast<std::uint32_t>(strand.firstRing + strand.ringCount)));
}

std::uint32_t StrandSearch::addBall(std::uint32_t from, std::uint32_t to) {
  const auto number = static_cast<std::uint32_t>(balls_.size());
  balls_.emplace_back();
  Vec3 sum;
  for (std::uint32_t i = from; i < to; ++i) sum = sum + lines_.segments()[i].from;
  Ball ball{sum * (1 / static_cast<float>(std::max(to - from, 1U))), 0, from, to, 0, 0};
  for (std::uint32_t i = from; i < to; ++i) {
    const CentreSegment& segment = lines_.segments()[i];
    ball.radius = std::max(
        {ball.radius, length(segment.from - ball.middle), length(segment.from + segment.way - ball.middle)});
  }
  if (to - from > kLeaf) {
    ball.left = addBall(from, (from + to) / 2);
    ball.right = addBall((from + to) / 2, to);
  }
  balls_[number] = ball;
  return number;
}

/// Whether some pair of the two stretches can count, when all of them are at least so far apart.
bool StrandSearch::canCount(const Ball& one, const Ball& two, float apart) const {
  const float needed = std::max(leastWay_, 2 * apart);
  if (lines_.strand(one.from) != lines_.strand(two.from)) return true;
  const Ball& early = one.from <= two.from ? one : two;
  const Ball& late = one.from <= two.from ? two : one;
  const float most = lines_.startOf(late.to - 1) - lines_.startOf(early.from);
  const float least = std::max(0.0F, lines_.startOf(late.from) - lines_.startOf(early.to - 1));
  const auto round = static_cast<float>(lines_.length(lines_.strand(one.from)));
  return most >= needed && round - least >= needed && round >= 2 * needed;
}

void StrandSearch::descend(Search& search, std::uint32_t one, std::uint32_t two) const {
  if (search.isSettled()) return;
  const Ball &a = balls_[one], &b = balls_[two];
  const float apart = length(a.middle - b.middle) - a.radius - b.radius;
  if (apart - 2 * model_.radius >= search.best.distance) return;
  if (!canCount(a, b, std::max(apart, 0.0F))) return;
  if (one == two && a.left != 0) {
    descend(search, a.left, a.right);
    descend(search, a.left, a.left);
    descend(search, a.right, a.right);
  } else if (a.left == 0 && b.left == 0) {
    for (std::uint32_t i = a.from; i < a.to; ++i)
      for (std::uint32_t j = b.from; j < b.to; ++j) compare(search, i, j);
  } else if (b.left == 0 || (a.left != 0 && a.radius >= b.radius)) {
    const bool leftFirst =
        length(balls_[a.left].middle - b.middle) <= length(balls_[a.right].middle - b.middle);
    descend(search, leftFirst ? a.left : a.right, two);
    descend(search, leftFirst ? a.right : a.left, two);
  } else {
    const bool leftFirst =
        length(balls_[b.left].middle - a.middle) <= length(balls_[b.right].middle - a.middle);
    descend(search, one, leftFirst ? b.left : b.right);
    descend(search, one, leftFirst ? b.right : b.left);
  }
}

void StrandSearch::compare(Search& search, std::uint32_t one, std::uint32_t two) const {
  const float way = lines_.wayBetween(one, two);
  if (way < leastWay_ || search.isSettled()) return;
  const Nearest centres = nearestOf(lines_.segments()[one], lines_.segments()[two]);
  const float round = centres.distance - 2 * model_.radius;
  if (round >= search.best.distance || way < 2 * centres.distance) return;
  if (search.form == TubeForm::round || runThrough(one, two, centres))
    search.best = {search.form == TubeForm::round ? round : 0, centres.one, centres.two};
  else
    comparePolygons(search.best, one, two);
}

/// How far the sides of a segment's tube lie from a place on its centre line, in the direction `towards`.
float StrandSearch::reach(std::uint32_t ring, const Vec3& from, const Vec3& towards) const {
  float least = std::numeric_limits<float>::max();
  for (int side = 0; side < model_.sides; ++side) {
    const BoundQuad quad = boundQuad(model_, quads_.corners(static_cast<int>(ring) * model_.sides + side));
    const Vec3 normal = cross(quad.corner[2] - quad.corner[0], quad.corner[3] - quad.corner[1]);
    const float away = dot(quad.middle - from, normal), slope = dot(towards, normal);
    const float outwards = away < 0 ? -slope : slope;
    if (outwards > 0) least = std::min(least, std::abs(away) / outwards);
  }
  return least;
}

/// Whether the tubes overlap between their centre lines. Where one runs deep through the other the places at
/// which their surfaces cut each other may belong to other segments.
bool StrandSearch::runThrough(std::uint32_t one, std::uint32_t two, const Nearest& centres) const {
  if (centres.distance >= 2 * model_.radius) return false;
  const Vec3 towards = unit(centres.two - centres.one);
  return reach(one, centres.one, towards) + reach(two, centres.two, towards * -1) >= centres.distance;
}

void StrandSearch::comparePolygons(Apart& best, std::uint32_t one, std::uint32_t two) const {
  std::vector<BoundQuad> near;
  const auto eachNear = [&](std::uint32_t ring, std::uint32_t other, auto&& use) {
    for (int side = 0; side < model_.sides; ++side) {
      const BoundQuad quad = boundQuad(model_, quads_.corners(static_cast<int>(ring) * model_.sides + side));
      const float axis = length(lines_.segments()[other].apart(quad.middle));
      if (axis - quad.radius - model_.radius < best.distance) use(quad);
    }
  };
  eachNear(two, one, [&](const BoundQuad& quad) { near.push_back(quad); });
  if (near.empty()) return;
  eachNear(one, two, [&](const BoundQuad& quad) {
    for (const BoundQuad& other : near)
      if (length(quad.middle - other.middle) - quad.radius - other.radius < best.distance)
        quadsApart(quad, other, best);
  });
}

Apart StrandSearch::nearest(TubeForm form, float within) const {
  Search search{form, {within, {}, {}}};
  for (std::size_t one = 0; one < roots_.size(); ++one)
    for (std::size_t two = one; two < roots_.size(); ++two) descend(search, roots_[one], roots_[two]);
  return search.best;
}

Apart StrandSearch::nearest(TubeForm form, std::size_t one, std::size_t two, float within) const {
  Search search{form, {within, {}, {}}};
  descend(search, roots_[one], roots_[two]);
  return search.best;
}

Apart StrandSearch::nearCrossing(TubeForm form, int over, int under, float within) const {
  Search search{form, {within, {}, {}}};
  const auto ringAt = [&](int ring, int step) {
    const TubeStrand& strand = model_.strands[lines_.strand(static_cast<std::uint32_t>(ring))];
    const int number = (ring - strand.firstRing + step) % strand.ringCount;
    return static_cast<std::uint32_t>(strand.firstRing + (number < 0 ? number + strand.ringCount : number));
  };
  for (int i = -window_; i < window_; ++i)
    for (int j = -window_; j < window_; ++j) compare(search, ringAt(over, i), ringAt(under, j));
  return search.best;
}

}  // namespace lorivan
