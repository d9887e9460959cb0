#include "custom/loop_graph.h"

#include <algorithm>
#include <cmath>
#include <map>

#include "custom/groups.h"

namespace lorivan {

LoopGraph::LoopGraph(const Arrangement& plane, double scale)
    : plane_(plane), scale_(scale), dead_(plane.edges.size(), false) {
  around_.resize(plane.nodes.size());
  for (std::size_t e = 0; e < plane.edges.size(); ++e)
    for (const int node : plane.edges[e]) around_[node].push_back(static_cast<int>(e));
}

/// Depth first: an edge is on a loop when something beyond it leads back to where it came from, or before.
void LoopGraph::dropBridges() {
  std::vector<int> order(around_.size(), -1), low(around_.size(), 0);
  int next = 0;
  for (std::size_t root = 0; root < around_.size(); ++root)
    if (order[root] < 0) descend(static_cast<int>(root), order, low, next);
}

void LoopGraph::keepBoundaryOfOddParts() {
  std::vector<bool> seen(around_.size(), false);
  for (std::size_t node = 0; node < around_.size(); ++node) {
    if (seen[node] || degree(static_cast<int>(node)) == 0) continue;
    const std::vector<int> part = partOf(static_cast<int>(node), seen);
    const bool odd = std::any_of(part.begin(), part.end(), [&](int n) { return degree(n) % 2 != 0; });
    if (odd) keepBoundary(part);
  }
}

std::vector<OutlineSide> LoopGraph::sides() const {
  std::vector<OutlineSide> sides;
  for (std::size_t e = 0; e < dead_.size(); ++e)
    if (!dead_[e]) sides.push_back({spot(plane_.edges[e][0]), spot(plane_.edges[e][1])});
  return sides;
}

Spot LoopGraph::spot(int node) const {
  const PointI p = plane_.nodes[node];
  return {p.x / scale_, p.y / scale_};
}

int LoopGraph::otherEnd(int edge, int node) const {
  const NodePair& e = plane_.edges[edge];
  return e[0] == node ? e[1] : e[0];
}

int LoopGraph::degree(int node) const {
  int count = 0;
  for (const int edge : around_[node]) count += dead(edge) ? 0 : 1;
  return count;
}

void LoopGraph::descend(int root, std::vector<int>& order, std::vector<int>& low, int& next) {
  std::vector<Visit> path{{root, -1, 0}};
  order[root] = low[root] = next++;
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
    if (low[node] > order[before]) dead_[fromEdge] = true;
  }
}

std::vector<int> LoopGraph::partOf(int start, std::vector<bool>& seen) const {
  std::vector<int> part{start};
  seen[start] = true;
  for (std::size_t i = 0; i < part.size(); ++i)
    for (const int edge : around_[part[i]]) {
      const int other = otherEnd(edge, part[i]);
      if (dead(edge) || seen[other]) continue;
      seen[other] = true;
      part.push_back(other);
    }
  return part;
}

/// The live edge that turns most to the right when one comes along `direction`, the way back last.
int LoopGraph::rightmost(int node, Spot direction, int fromEdge) const {
  int best = fromEdge;
  double bestTurn = 10;
  for (const int edge : around_[node]) {
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

void LoopGraph::keepBoundary(const std::vector<int>& part) {
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
    for (const int e : around_[member])
      if (const auto entry = walked.find(e); entry == walked.end() || entry->second != 1) dead_[e] = true;
}

int LoopGraph::tail(int direction) const { return plane_.edges[direction / 2][direction % 2]; }

int LoopGraph::following(int direction) const {
  const int edge = direction / 2, from = tail(direction), to = otherEnd(edge, from);
  const int next = rightmost(to, spot(to) - spot(from), edge);
  return 2 * next + (plane_.edges[next][0] == to ? 0 : 1);
}

LoopGraph::Walks LoopGraph::walks() const {
  Walks walks{std::vector<int>(2 * dead_.size(), -1), {}};
  for (int begin = 0; begin < static_cast<int>(walks.of.size()); ++begin) {
    if (dead(begin / 2) || walks.of[begin] >= 0) continue;
    for (int at = begin; walks.of[at] < 0; at = following(at))
      walks.of[at] = static_cast<int>(walks.first.size());
    walks.first.push_back(begin);
  }
  return walks;
}

/// The edge that lies next to the left of a spot, in the direction that has the spot to its right.
std::optional<int> LoopGraph::leftOf(Spot p) const {
  std::optional<int> best;
  double nearest = -1e30;
  for (int edge = 0; edge < static_cast<int>(dead_.size()); ++edge) {
    const Spot a = spot(tail(2 * edge)), b = spot(tail(2 * edge + 1));
    if (dead(edge) || (a.y > p.y) == (b.y > p.y)) continue;
    const double x = a.x + (p.y - a.y) / (b.y - a.y) * (b.x - a.x);
    if (x >= p.x - 1e-9 || x <= nearest) continue;
    nearest = x;
    best = 2 * edge + (a.y < b.y ? 0 : 1);
  }
  return best;
}

std::vector<OutlineSide> LoopGraph::regionAt(Spot p) const {
  const Walks all = walks();
  const int outside = static_cast<int>(all.first.size());
  Groups regions(all.first.size() + 1);
  const auto walkLeftOf = [&](Spot at) {
    const auto edge = leftOf(at);
    return edge ? all.of[*edge] : outside;
  };
  for (int walk = 0; walk < outside; ++walk) {
    double area = 0;
    Spot leftmost{1e30, 0};
    const int begin = all.first[walk];
    for (int at = begin, round = 0; at != begin || round == 0; at = following(at), ++round) {
      const Spot a = spot(tail(at)), b = spot(tail(at ^ 1));
      area += cross(a, b);
      if (a.x < leftmost.x) leftmost = a;
    }
    // A walk round a part has what lies about the part to its right.
    if (area > 0) regions.join(walk, walkLeftOf(leftmost));
  }
  const int wanted = regions.of(walkLeftOf(p));
  std::vector<OutlineSide> sides;
  if (wanted == regions.of(outside)) return sides;
  const auto borders = [&](std::size_t direction) { return regions.of(all.of[direction]) == wanted; };
  for (std::size_t e = 0; e < dead_.size(); ++e)
    if (!dead_[e] && borders(2 * e) != borders(2 * e + 1))
      sides.push_back({spot(plane_.edges[e][0]), spot(plane_.edges[e][1])});
  return sides;
}

}  // namespace lorivan
