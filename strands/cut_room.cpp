#include "strands/cut_room.h"

#include <algorithm>

#include "strands/band_loop.h"
#include "strands/flat_path.h"

namespace lorivan {
namespace {

struct Edge {
  Vec from, to;
  std::size_t contour = 0, number = 0, count = 0;  // of its contour's edges

  double left() const { return std::min(from.x, to.x); }
  double right() const { return std::max(from.x, to.x); }
};

std::vector<Edge> edgesOf(const std::vector<BandContour>& contours, double tolerance) {
  std::vector<Edge> edges;
  for (std::size_t c = 0; c < contours.size(); ++c) {
    const std::vector<PathVertex> path = flatPath(contours[c], {}, tolerance, false);
    for (std::size_t i = 0; i < path.size(); ++i) {
      const PathVertex &a = path[i], &b = path[(i + 1) % path.size()];
      edges.push_back({{a.x, a.y}, {b.x, b.y}, c, i, path.size()});
    }
  }
  return edges;
}

double distance(Vec point, const Edge& edge) {
  const Vec way = edge.to - edge.from;
  const double square = dot(way, way);
  const double t = square > 0 ? std::clamp(dot(point - edge.from, way) / square, 0.0, 1.0) : 0;
  return lengthOf(point - edge.from - way * t);
}

bool meet(const Edge& a, const Edge& b) {
  const auto side = [](const Edge& edge, Vec p) { return cross(edge.to - edge.from, p - edge.from) > 0; };
  return side(a, b.from) != side(a, b.to) && side(b, a.from) != side(b, a.to);
}

bool areNeighbours(const Edge& a, const Edge& b) {
  const std::size_t apart = a.number > b.number ? a.number - b.number : b.number - a.number;
  return apart <= 1 || apart + 1 == a.count;
}

bool areTooNear(const Edge& a, const Edge& b, double room) {
  if (a.contour == b.contour) return !areNeighbours(a, b) && meet(a, b);
  return meet(a, b) ||
         std::min({distance(a.from, b), distance(a.to, b), distance(b.from, a), distance(b.to, a)}) < room;
}

}  // namespace

bool lieApart(const std::vector<BandContour>& contours, double room) {
  std::vector<Edge> edges = edgesOf(contours, room / 10);
  std::sort(edges.begin(), edges.end(), [](const Edge& a, const Edge& b) { return a.left() < b.left(); });
  for (std::size_t i = 0; i < edges.size(); ++i) {
    const Edge& a = edges[i];
    const auto [low, high] = std::minmax(a.from.y, a.to.y);
    for (std::size_t j = i + 1; j < edges.size() && edges[j].left() <= a.right() + room; ++j) {
      const Edge& b = edges[j];
      if (std::max(b.from.y, b.to.y) < low - room || std::min(b.from.y, b.to.y) > high + room) continue;
      if (areTooNear(a, b, room)) return false;
    }
  }
  return true;
}

}  // namespace lorivan
