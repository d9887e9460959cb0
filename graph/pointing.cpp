#include "graph/pointing.h"

#include <algorithm>
#include <cmath>

namespace lorivan {
namespace {

/// Part of a line, from each of its ends on, that a stroke crosses without passing the line.
constexpr double kEndPart = 0.2;
/// Midpoints beside the lane count a little less than those ahead, so that none is passed over.
constexpr double kAsideCost = 0.9;
/// Further aside than this times the way ahead lies another direction.
constexpr double kWidestTurn = 5;

GridPlace midpoint(const KnotGraph& graph, int line) {
  const GridLine& l = graph.Lines[line];
  return {static_cast<double>(l.MidX), static_cast<double>(l.MidY)};
}

double cross(GridPlace a, GridPlace b) { return a.x * b.y - a.y * b.x; }

/// Where a stroke begins, seen from the line: in a wrapped graph it may be moved by whole periods.
GridPlace besideStroke(const KnotGraph& graph, int line, GridPlace from) {
  const double middle = midpoint(graph, line).x;
  return {graph.wrap ? middle + graph.wrap.nearest(from.x - middle) : from.x, from.y};
}

GridPlace between(GridPlace from, GridPlace to) { return {to.x - from.x, to.y - from.y}; }

double distanceTo(GridPlace p, GridPlace from, GridPlace way) {
  const double length2 = way.x * way.x + way.y * way.y;
  const GridPlace to = between(from, p);
  const double t = length2 > 0 ? std::clamp((to.x * way.x + to.y * way.y) / length2, 0.0, 1.0) : 0.0;
  return std::hypot(to.x - t * way.x, to.y - t * way.y);
}

bool crossesMiddle(const GridLine& line, GridPlace from, GridPlace way) {
  const GridPlace end{static_cast<double>(line.X1), static_cast<double>(line.Y1)};
  const GridPlace along{static_cast<double>(line.X2) - line.X1, static_cast<double>(line.Y2) - line.Y1};
  const double area = cross(way, along);
  if (area == 0) return false;
  const GridPlace to = between(from, end);
  const double onWay = cross(to, along) / area, onLine = cross(to, way) / area;
  return onWay >= 0 && onWay <= 1 && onLine >= kEndPart && onLine <= 1 - kEndPart;
}

}  // namespace

std::vector<int> linesPassed(const KnotGraph& graph, GridPlace from, GridPlace to) {
  std::vector<int> passed;
  if (graph.NoGrid) return passed;
  const double reach = graph.CellSize / 6.0;
  const GridPlace way = between(from, to);
  for (int j = 0; j <= graph.LastLine; ++j) {
    const GridLine& line = graph.Lines[j];
    if (line.Kind == kNoLine) continue;
    const GridPlace near = besideStroke(graph, j, from);
    if (distanceTo(midpoint(graph, j), near, way) < reach || crossesMiddle(line, near, way))
      passed.push_back(j);
  }
  return passed;
}

int nearestLine(const KnotGraph& graph, GridPlace at) {
  int best = -1;
  double least = HUGE_VAL;
  for (int j = 0; j <= graph.LastLine; ++j) {
    const GridPlace to = between(at, midpoint(graph, j));
    const double distance = std::hypot(graph.wrap.nearest(to.x), to.y);
    if (distance < least) best = j, least = distance;
  }
  return best;
}

bool LineWalk::step(const KnotGraph& graph, int dx, int dy) {
  if (line_ < 0 || line_ > graph.LastLine) return false;
  const GridPlace here = midpoint(graph, line_);
  const bool level = dy == 0;
  if (level ? !level_ : !upright_) lane_ = level ? here.y : here.x;
  level_ = level;
  upright_ = !level;
  int best = -1;
  double least = HUGE_VAL;
  for (int j = 0; j <= graph.LastLine; ++j) {
    const GridPlace there = midpoint(graph, j);
    const GridPlace to{graph.wrap.nearest(there.x - here.x), there.y - here.y};
    const double away = level ? there.y - lane_ : graph.wrap.nearest(there.x - lane_);
    const double ahead = to.x * dx + to.y * dy, aside = std::abs(away);
    if (ahead < 1 || aside > kWidestTurn * ahead + graph.CellSize / 2.0) continue;
    // Of two alike, the one to the right or above, whichever way the step goes.
    const double cost = ahead + kAsideCost * aside - 1e-6 * (level ? there.y : there.x);
    if (cost < least) best = j, least = cost;
  }
  if (best < 0) return false;
  line_ = best;
  return true;
}

}  // namespace lorivan
