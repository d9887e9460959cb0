#include "custom/outline.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <utility>

#include "custom/groups.h"
#include "custom/planar_grid.h"

namespace lorivan {
namespace {

constexpr double kFineScale = 64;  // whole steps for a grid unit

/// A plane graph whose edges can be taken away.
class LoopGraph {
 public:
  explicit LoopGraph(const Arrangement& plane) : plane_(plane), dead_(plane.edges.size(), false) {
    around_.resize(plane.nodes.size());
    for (std::size_t e = 0; e < plane.edges.size(); ++e)
      for (const int node : plane.edges[e])
        around_[static_cast<std::size_t>(node)].push_back(static_cast<int>(e));
  }

  /// Takes away every edge that lies on no closed loop. Depth first: an edge is on a loop when something
  /// beyond it leads back to where it came from, or before.
  void dropBridges() {
    std::vector<int> order(around_.size(), -1), low(around_.size(), 0);
    int next = 0;
    for (std::size_t root = 0; root < around_.size(); ++root)
      if (order[root] < 0) descend(static_cast<int>(root), order, low, next);
  }

  /// In a part where some node has an odd number of edges, inside and outside cannot be told by counting:
  /// only the outer boundary stays.
  void keepBoundaryOfOddParts() {
    std::vector<bool> seen(around_.size(), false);
    for (std::size_t node = 0; node < around_.size(); ++node) {
      if (seen[node] || degree(static_cast<int>(node)) == 0) continue;
      const std::vector<int> part = partOf(static_cast<int>(node), seen);
      const bool odd = std::any_of(part.begin(), part.end(), [&](int n) { return degree(n) % 2 != 0; });
      if (odd) keepBoundary(part);
    }
  }

  std::vector<OutlineSide> sides() const {
    std::vector<OutlineSide> sides;
    for (std::size_t e = 0; e < dead_.size(); ++e)
      if (!dead_[e]) sides.push_back({spot(plane_.edges[e][0]), spot(plane_.edges[e][1])});
    return sides;
  }

 private:
  struct Visit {
    int node, fromEdge;
    std::size_t nextEdge;
  };

  Spot spot(int node) const {
    const PointI p = plane_.nodes[static_cast<std::size_t>(node)];
    return {p.x / kFineScale, p.y / kFineScale};
  }
  bool dead(int edge) const { return dead_[static_cast<std::size_t>(edge)]; }
  int otherEnd(int edge, int node) const {
    const NodePair& e = plane_.edges[static_cast<std::size_t>(edge)];
    return e[0] == node ? e[1] : e[0];
  }
  int degree(int node) const {
    int count = 0;
    for (const int edge : around_[static_cast<std::size_t>(node)]) count += dead(edge) ? 0 : 1;
    return count;
  }

  void descend(int root, std::vector<int>& order, std::vector<int>& low, int& next) {
    std::vector<Visit> path{{root, -1, 0}};
    order[static_cast<std::size_t>(root)] = low[static_cast<std::size_t>(root)] = next++;
    while (!path.empty()) {
      Visit& top = path.back();
      const auto node = static_cast<std::size_t>(top.node);
      if (top.nextEdge < around_[node].size()) {
        const int edge = around_[node][top.nextEdge++];
        if (edge == top.fromEdge) continue;
        const auto other = static_cast<std::size_t>(otherEnd(edge, top.node));
        if (order[other] >= 0) {
          low[node] = std::min(low[node], order[other]);
        } else {
          order[other] = low[other] = next++;
          path.push_back({static_cast<int>(other), edge, 0});
        }
        continue;
      }
      const int fromEdge = top.fromEdge;
      path.pop_back();
      if (path.empty()) break;
      const auto before = static_cast<std::size_t>(path.back().node);
      low[before] = std::min(low[before], low[node]);
      if (low[node] > order[before]) dead_[static_cast<std::size_t>(fromEdge)] = true;
    }
  }

  std::vector<int> partOf(int start, std::vector<bool>& seen) const {
    std::vector<int> part{start};
    seen[static_cast<std::size_t>(start)] = true;
    for (std::size_t i = 0; i < part.size(); ++i)
      for (const int edge : around_[static_cast<std::size_t>(part[i])]) {
        const int other = otherEnd(edge, part[i]);
        if (dead(edge) || seen[static_cast<std::size_t>(other)]) continue;
        seen[static_cast<std::size_t>(other)] = true;
        part.push_back(other);
      }
    return part;
  }

  /// The live edge that turns most to the right when one comes along `direction`, the way back last.
  int rightmost(int node, Spot direction, int fromEdge) const {
    int best = fromEdge;
    double bestTurn = 10;
    for (const int edge : around_[static_cast<std::size_t>(node)]) {
      if (dead(edge) || edge == fromEdge) continue;
      const Spot away = spot(otherEnd(edge, node)) - spot(node);
      const double turn = std::atan2(cross(direction, away), dot(direction, away));
      if (turn < bestTurn) {
        bestTurn = turn;
        best = edge;
      }
    }
    return best;
  }

  void keepBoundary(const std::vector<int>& part) {
    const int start = *std::min_element(part.begin(), part.end(), [&](int a, int b) {
      const Spot p = spot(a), q = spot(b);
      return p.y != q.y ? p.y < q.y : p.x < q.x;
    });
    std::map<int, int> walked;  // edge: how often
    const int firstEdge = rightmost(start, {1, 0}, -1);
    int node = start, edge = firstEdge;
    do {
      ++walked[edge];
      const int next = otherEnd(edge, node);
      edge = rightmost(next, spot(next) - spot(node), edge);
      node = next;
    } while (node != start || edge != firstEdge);
    for (const int member : part)
      for (const int e : around_[static_cast<std::size_t>(member)])
        if (const auto entry = walked.find(e); entry == walked.end() || entry->second != 1)
          dead_[static_cast<std::size_t>(e)] = true;
  }

  const Arrangement& plane_;
  std::vector<std::vector<int>> around_;
  std::vector<bool> dead_;
};

}  // namespace

Result<Outline> Outline::of(const CustomShape& shape, const ShapeMapping& mapping) {
  ShapeLines drawn(shape);
  for (Spot& spot : drawn.spots)
    spot = {mapping.gridX(spot.x), mapping.gridY(spot.y) / mapping.heightFactor()};
  const Result<Arrangement> plane = arrange(drawn.spots, drawn.lines, kJoinReach * mapping.gridUnits(),
                                            {kFineScale, kFineScale * mapping.heightFactor()}, kMostLines);
  if (!plane) return plane.error();
  LoopGraph loops(*plane);
  loops.dropBridges();
  loops.keepBoundaryOfOddParts();
  std::vector<OutlineSide> sides = loops.sides();
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
  for (std::size_t i = 0; i < sides_.size(); ++i)
    if (std::min(sides_[i].a.x, sides_[i].b.x) <= p.x + reach &&
        std::max(sides_[i].a.x, sides_[i].b.x) >= p.x - reach &&
        distance(p, nearestOn(p, sides_[i].a, sides_[i].b)) <= reach)
      near.push_back(static_cast<int>(i));
  return near;
}

std::optional<Spot> Outline::nearest(Spot p, std::span<const int> among) const {
  std::optional<Spot> best;
  for (const int i : among) {
    const OutlineSide& side = sides_[static_cast<std::size_t>(i)];
    const Spot spot = nearestOn(p, side.a, side.b);
    if (!best || distance(p, spot) < distance(p, *best)) best = spot;
  }
  return best;
}

int Outline::nearestSide(Spot p) const {
  int best = 0;
  double least = std::numeric_limits<double>::max();
  for (std::size_t i = 0; i < sides_.size(); ++i) {
    const Spot away = nearestOn(p, sides_[i].a, sides_[i].b) - p;
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
