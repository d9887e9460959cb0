#include "custom/arrangement.h"

#include <algorithm>
#include <cstdint>
#include <map>
#include <string>
#include <unordered_map>

#include "base/numbers.h"
#include "graph/graph.h"

namespace lorivan {
namespace {

constexpr int kMostRounds = 100;

Error tooManyEdges() { return refused(kTooManyLines); }

/// A node on an edge, 0 at its first end and 1 at its second.
struct Stop {
  double place = 0;
  int node = 0;
};

using StopLists = std::vector<std::vector<Stop>>;

/// Calls visit(i, j) for every two edges whose boxes, widened by `margin`, overlap. Stops when it says false.
template <class NodeAt, class Visit>
bool visitNearPairs(std::span<const NodePair> edges, NodeAt at, double margin, Visit visit) {
  struct Box {
    double left, right, low, high;
    int edge;
  };
  std::vector<Box> boxes(edges.size());
  for (std::size_t i = 0; i < edges.size(); ++i) {
    const Spot a = at(edges[i][0]), b = at(edges[i][1]);
    boxes[i] = {std::min(a.x, b.x) - margin, std::max(a.x, b.x) + margin, std::min(a.y, b.y) - margin,
                std::max(a.y, b.y) + margin, static_cast<int>(i)};
  }
  std::sort(boxes.begin(), boxes.end(),
            [](const Box& a, const Box& b) { return a.left != b.left ? a.left < b.left : a.edge < b.edge; });
  for (std::size_t i = 0; i < boxes.size(); ++i)
    for (std::size_t j = i + 1; j < boxes.size() && boxes[j].left <= boxes[i].right; ++j)
      if (boxes[j].low <= boxes[i].high && boxes[i].low <= boxes[j].high &&
          !visit(boxes[i].edge, boxes[j].edge))
        return false;
  return true;
}

/// Replaces every edge by the chain through its stops; drops what has no length and what is there already.
std::vector<NodePair> chains(std::span<const NodePair> edges, StopLists& stops) {
  std::vector<NodePair> pieces;
  for (std::size_t i = 0; i < edges.size(); ++i) {
    std::sort(stops[i].begin(), stops[i].end(), [](const Stop& a, const Stop& b) {
      return a.place != b.place ? a.place < b.place : a.node < b.node;
    });
    int from = edges[i][0];
    for (const Stop& stop : stops[i]) {
      pieces.push_back({from, stop.node});
      from = stop.node;
    }
    pieces.push_back({from, edges[i][1]});
  }
  std::map<NodePair, bool> seen;
  std::vector<NodePair> kept;
  for (const NodePair& piece : pieces) {
    const NodePair key{std::min(piece[0], piece[1]), std::max(piece[0], piece[1])};
    if (key[0] != key[1] && seen.emplace(key, true).second) kept.push_back(piece);
  }
  return kept;
}

/// Nodes by place, for questions about what lies within the join distance.
class NearIndex {
 public:
  NearIndex(std::vector<Spot>& nodes, double reach) : nodes_(nodes), reach_(reach) {}

  /// The lowest-numbered node within reach, or a new one.
  int findOrAdd(Spot p) {
    if (const int found = find(p); found >= 0) return found;
    nodes_.push_back(p);
    cells_[key(column(p.x), column(p.y))].push_back(static_cast<int>(nodes_.size()) - 1);
    return static_cast<int>(nodes_.size()) - 1;
  }

  int find(Spot p) const {
    int best = -1;
    for (std::int64_t i = -1; i <= 1; ++i)
      for (std::int64_t j = -1; j <= 1; ++j) {
        const auto cell = cells_.find(key(column(p.x) + i, column(p.y) + j));
        if (cell == cells_.end()) continue;
        for (const int node : cell->second)
          if (distance(nodes_[node], p) < reach_ && (best < 0 || node < best)) best = node;
      }
    return best;
  }

 private:
  std::int64_t column(double v) const { return static_cast<std::int64_t>(std::floor(v / reach_)); }
  static std::int64_t key(std::int64_t i, std::int64_t j) { return i * 4000037 + j; }

  std::vector<Spot>& nodes_;
  double reach_;
  std::unordered_map<std::int64_t, std::vector<int>> cells_;
};

/// The first step, with the join distance and before any rounding.
class Joiner {
 public:
  Joiner(std::span<const Spot> spots, std::span<const NodePair> lines, double join)
      : join_(join), index_(nodes, join) {
    std::vector<int> nodeOf(spots.size(), -1);
    std::vector<bool> used(spots.size(), false);
    for (const NodePair& line : lines)
      for (const int end : line) used[end] = true;
    for (std::size_t i = 0; i < spots.size(); ++i)
      if (used[i]) nodeOf[i] = index_.findOrAdd(spots[i]);
    for (const NodePair& line : lines) edges.push_back({nodeOf[line[0]], nodeOf[line[1]]});
    StopLists none(edges.size());
    edges = chains(edges, none);
  }

  Status run(std::size_t mostEdges) {
    leadThroughNodes();
    if (edges.size() > mostEdges || !splitCrossings(mostEdges) || edges.size() > mostEdges)
      return tooManyEdges();
    return {};
  }

  std::vector<Spot> nodes;
  std::vector<NodePair> edges;

 private:
  Spot at(int node) const { return nodes[node]; }

  void leadThroughNodes() {
    StopLists stops(edges.size());
    for (std::size_t i = 0; i < edges.size(); ++i) {
      const Spot a = at(edges[i][0]), b = at(edges[i][1]);
      for (std::size_t node = 0; node < nodes.size(); ++node) {
        const Spot p = nodes[node];
        if (p.x < std::min(a.x, b.x) - join_ || p.x > std::max(a.x, b.x) + join_ ||
            p.y < std::min(a.y, b.y) - join_ || p.y > std::max(a.y, b.y) + join_)
          continue;
        const double place = placeAlong(p, a, b);
        if (place > 0 && place < 1 && distance(p, nearestOn(p, a, b)) < join_ &&
            static_cast<int>(node) != edges[i][0] && static_cast<int>(node) != edges[i][1])
          stops[i].push_back({place, static_cast<int>(node)});
      }
    }
    edges = chains(edges, stops);
  }

  bool splitCrossings(std::size_t mostEdges) {
    StopLists stops(edges.size());
    std::size_t pieces = edges.size();
    const auto split = [&](int i, int j) {
      const NodePair e = edges[i], f = edges[j];
      const Spot a = at(e[0]), b = at(e[1]), c = at(f[0]), d = at(f[1]);
      const double turn = cross(b - a, d - c);
      if (turn == 0) return true;
      const double s = cross(c - a, d - c) / turn, t = cross(c - a, b - a) / turn;
      if (!(s > 0 && s < 1 && t > 0 && t < 1)) return true;
      const int node = index_.findOrAdd(a + s * (b - a));
      pieces += 2;
      if (node != e[0] && node != e[1]) stops[i].push_back({s, node});
      if (node != f[0] && node != f[1]) stops[j].push_back({t, node});
      return pieces <= 8 * mostEdges;
    };
    const bool complete = visitNearPairs(
        edges, [&](int n) { return at(n); }, 0, split);
    if (complete) edges = chains(edges, stops);
    return complete;
  }

  double join_;
  NearIndex index_;
};

/// The second step: whole coordinates, and exact splits until lines meet at nodes only.
class Rounder {
 public:
  Rounder(const Joiner& joined, NodeScale scale) : edges_(joined.edges) {
    std::vector<int> nodeOf;
    for (const Spot& spot : joined.nodes)
      nodeOf.push_back(nodeAt({toInt32(spot.x * scale.x), toInt32(spot.y * scale.y)}));
    for (NodePair& edge : edges_) edge = {nodeOf[edge[0]], nodeOf[edge[1]]};
    StopLists none(edges_.size());
    edges_ = chains(edges_, none);
  }

  Result<Arrangement> run(std::size_t mostEdges) {
    for (int round = 0; round < kMostRounds; ++round) {
      if (edges_.size() > mostEdges) return tooManyEdges();
      StopLists stops(edges_.size());
      bool clean = true;
      visitNearPairs(
          edges_, [&](int n) { return spot(n); }, 0.0,
          [&](int i, int j) {
            clean &= !touch(i, j, stops);
            return true;
          });
      if (clean) return Arrangement{std::move(nodes_), std::move(edges_)};
      edges_ = chains(edges_, stops);
    }
    return tooManyEdges();
  }

 private:
  PointI node(int n) const { return nodes_[n]; }
  Spot spot(int n) const { return {static_cast<double>(node(n).x), static_cast<double>(node(n).y)}; }

  int nodeAt(PointI p) {
    const std::int64_t key = static_cast<std::int64_t>(p.x) * (std::int64_t{1} << 32) + p.y;
    const auto [entry, added] = numberOf_.emplace(key, static_cast<int>(nodes_.size()));
    if (added) nodes_.push_back(p);
    return entry->second;
  }

  /// Twice the area of the triangle a, b, p: 0 when p lies on the line.
  std::int64_t side(int a, int b, int p) const {
    const auto dx = std::int64_t{node(b).x} - node(a).x, dy = std::int64_t{node(b).y} - node(a).y;
    return dx * (std::int64_t{node(p).y} - node(a).y) - dy * (std::int64_t{node(p).x} - node(a).x);
  }

  /// Notes where two edges meet other than at a common end; false when they do not.
  bool touch(int i, int j, StopLists& stops) {
    const NodePair e = edges_[i], f = edges_[j];
    bool met = false;
    for (const int p : f) met |= stopAt(i, p, stops);
    for (const int p : e) met |= stopAt(j, p, stops);
    if (met) return true;
    const std::int64_t s0 = side(e[0], e[1], f[0]), s1 = side(e[0], e[1], f[1]);
    const std::int64_t t0 = side(f[0], f[1], e[0]), t1 = side(f[0], f[1], e[1]);
    if (s0 == 0 || s1 == 0 || t0 == 0 || t1 == 0 || (s0 > 0) == (s1 > 0) || (t0 > 0) == (t1 > 0))
      return false;
    const double place = static_cast<double>(t0) / static_cast<double>(t0 - t1);
    const Spot at = spot(e[0]) + place * (spot(e[1]) - spot(e[0]));
    const int crossing = nodeAt({toInt32(at.x), toInt32(at.y)});
    for (const int edge : {i, j}) stopAnywhere(edge, crossing, stops);
    return true;
  }

  /// A node that lies exactly on an edge, between its ends.
  bool stopAt(int edge, int p, StopLists& stops) {
    const NodePair e = edges_[edge];
    if (p == e[0] || p == e[1] || side(e[0], e[1], p) != 0) return false;
    const double place = placeAlong(spot(p), spot(e[0]), spot(e[1]));
    if (!(place > 0 && place < 1)) return false;
    stops[edge].push_back({place, p});
    return true;
  }

  void stopAnywhere(int edge, int p, StopLists& stops) {
    const NodePair e = edges_[edge];
    if (p == e[0] || p == e[1]) return;
    stops[edge].push_back({placeAlong(spot(p), spot(e[0]), spot(e[1])), p});
  }

  std::vector<PointI> nodes_;
  std::vector<NodePair> edges_;
  std::unordered_map<std::int64_t, int> numberOf_;
};

}  // namespace

Result<Arrangement> arrange(std::span<const Spot> spots, std::span<const NodePair> lines, double join,
                            NodeScale scale, std::size_t mostEdges) {
  Joiner joiner(spots, lines, join);
  if (const Status joined = joiner.run(mostEdges); !joined) return joined.error();
  return Rounder(joiner, scale).run(mostEdges);
}

}  // namespace lorivan
