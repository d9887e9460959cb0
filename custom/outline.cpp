#include "custom/outline.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <utility>

#include "custom/groups.h"
#include "custom/loop_graph.h"
#include "custom/planar_grid.h"

namespace lorivan {
namespace {

constexpr double kFineScale = 64;  // whole steps for a grid unit

}  // namespace

Result<Outline> Outline::of(const CustomShape& shape, const ShapeMapping& mapping,
                            std::optional<Spot> within) {
  ShapeLines drawn(shape);
  for (Spot& spot : drawn.spots)
    spot = {mapping.gridX(spot.x), mapping.gridY(spot.y) / mapping.heightFactor()};
  const Result<Arrangement> plane = arrange(drawn.spots, drawn.lines, kJoinReach * mapping.gridUnits(),
                                            {kFineScale, kFineScale * mapping.heightFactor()}, kMostLines);
  if (!plane) return plane.error();
  LoopGraph loops(*plane, kFineScale);
  loops.dropBridges();
  std::vector<OutlineSide> sides;
  if (within) {
    sides = loops.regionAt({mapping.gridX(within->x), mapping.gridY(within->y)});
    if (sides.empty()) return impossibleKnot("There is no closed outline round that place");
  } else {
    loops.keepBoundaryOfOddParts();
    sides = loops.sides();
  }
  if (sides.empty())
    return impossibleKnot("There is no closed outline for an AutoGrid: join the shape's lines to a loop");
  return Outline(std::move(sides));
}

Outline::Outline(std::vector<OutlineSide> sides) : sides_(std::move(sides)) {
  for (const OutlineSide& side : sides_) {
    box_.add(side.a.x, side.a.y);
    box_.add(side.b.x, side.b.y);
  }
}

std::vector<double> Outline::crossingsAt(double y) const {
  std::vector<double> places;
  for (const auto& [a, b] : sides_)
    if ((a.y > y) != (b.y > y)) places.push_back(a.x + (y - a.y) / (b.y - a.y) * (b.x - a.x));
  std::sort(places.begin(), places.end());
  return places;
}

bool Outline::contains(Spot p) const {
  const std::vector<double> places = crossingsAt(p.y);
  return (std::upper_bound(places.begin(), places.end(), p.x) - places.begin()) % 2 != 0;
}

std::vector<int> Outline::sidesNear(Spot p, double reach) const {
  std::vector<int> near;
  for (std::size_t i = 0; i < sides_.size(); ++i) {
    const auto& [a, b] = sides_[i];
    if (std::min(a.x, b.x) <= p.x + reach && std::max(a.x, b.x) >= p.x - reach &&
        std::min(a.y, b.y) <= p.y + reach && std::max(a.y, b.y) >= p.y - reach &&
        distance(p, nearestOn(p, a, b)) <= reach)
      near.push_back(static_cast<int>(i));
  }
  return near;
}

std::optional<Spot> Outline::nearest(Spot p, std::span<const int> among) const {
  std::optional<Spot> best;
  double least = std::numeric_limits<double>::max();
  for (const int i : among) {
    const OutlineSide& side = sides_[i];
    const Spot spot = nearestOn(p, side.a, side.b), away = spot - p;
    if (dot(away, away) >= least) continue;
    least = dot(away, away);
    best = spot;
  }
  return best;
}

int Outline::nearestSide(Spot p) const {
  int best = 0;
  double least = std::numeric_limits<double>::max();
  for (std::size_t i = 0; i < sides_.size(); ++i) {
    const auto& [a, b] = sides_[i];
    const double over = std::max(std::min(a.y, b.y) - p.y, p.y - std::max(a.y, b.y));
    if (over > 0 && over * over >= least) continue;
    const Spot away = nearestOn(p, a, b) - p;
    if (dot(away, away) >= least) continue;
    least = dot(away, away);
    best = static_cast<int>(i);
  }
  return best;
}

std::vector<int> Outline::parts() const {
  Groups groups(sides_.size());
  std::map<std::pair<double, double>, int> firstAt;
  for (std::size_t i = 0; i < sides_.size(); ++i)
    for (const Spot end : {sides_[i].a, sides_[i].b})
      groups.join(static_cast<int>(i),
                  firstAt.try_emplace({end.x, end.y}, static_cast<int>(i)).first->second);
  std::vector<int> parts;
  for (std::size_t i = 0; i < sides_.size(); ++i) parts.push_back(groups.of(static_cast<int>(i)));
  return parts;
}

std::vector<OutlineCorner> Outline::corners(double span, double leastTurn) const {
  using Place = std::pair<double, double>;
  std::map<Place, std::vector<Spot>> around;  // the ends of the sides that meet at a place
  for (const auto& [a, b] : sides_) {
    around[{a.x, a.y}].push_back(b);
    around[{b.x, b.y}].push_back(a);
  }
  // Follows the outline for `span` from a corner; stops early where loops cross.
  const auto follow = [&](Spot from, Spot to) {
    const Spot start = from;
    for (double left = span;;) {
      const double step = distance(from, to);
      if (step >= left) return from + (left / step) * (to - from) - start;
      left -= step;
      const std::vector<Spot>& ways = around[{to.x, to.y}];
      if (ways.size() != 2 || distance(to, start) == 0) return to - start;
      const bool back = ways[0].x == from.x && ways[0].y == from.y;
      from = std::exchange(to, ways[back ? 1 : 0]);
    }
  };
  std::vector<OutlineCorner> all;
  for (const auto& [place, ways] : around) {
    if (ways.size() != 2) continue;
    const Spot at{place.first, place.second};
    const double turn = 180 - degreesBetween(follow(at, ways[0]), follow(at, ways[1]));
    if (turn >= leastTurn) all.push_back({at, turn});
  }
  std::stable_sort(all.begin(), all.end(),
                   [](const OutlineCorner& a, const OutlineCorner& b) { return a.turn > b.turn; });
  std::vector<OutlineCorner> kept;
  for (const OutlineCorner& corner : all)
    if (std::none_of(kept.begin(), kept.end(),
                     [&](const OutlineCorner& k) { return distance(k.at, corner.at) < span; }))
      kept.push_back(corner);
  return kept;
}

}  // namespace lorivan
