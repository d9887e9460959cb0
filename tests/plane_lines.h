// The lines of a graph as plane geometry, exact since their coordinates are whole.
#pragma once

#include <algorithm>
#include <cmath>
#include <map>
#include <optional>
#include <set>
#include <utility>
#include <vector>

#include "custom/geometry.h"
#include "custom/outline.h"
#include "graph/graph.h"

namespace lorivan {

struct Side {
  Spot a, b;
};

inline std::vector<Side> sidesOf(const KnotGraph& graph) {
  std::vector<Side> sides;
  for (int j = 0; j <= graph.LastLine; ++j) {
    const GridLine& l = graph.Lines[j];
    if (l.Kind != kNoLine) sides.push_back({{1.0 * l.X1, 1.0 * l.Y1}, {1.0 * l.X2, 1.0 * l.Y2}});
  }
  return sides;
}

inline bool same(Spot a, Spot b) { return a.x == b.x && a.y == b.y; }

/// Whether two different lines meet anywhere but at a common end. Coordinates are whole, so this is exact.
inline bool meetBadly(const Side& s, const Side& t) {
  const auto onSide = [](Spot p, const Side& side) {
    return !same(p, side.a) && !same(p, side.b) && cross(side.b - side.a, p - side.a) == 0 &&
           dot(p - side.a, p - side.b) < 0;
  };
  if (onSide(t.a, s) || onSide(t.b, s) || onSide(s.a, t) || onSide(s.b, t)) return true;
  if ((same(s.a, t.a) && same(s.b, t.b)) || (same(s.a, t.b) && same(s.b, t.a))) return true;
  const double p = cross(s.b - s.a, t.a - s.a), q = cross(s.b - s.a, t.b - s.a);
  const double u = cross(t.b - t.a, s.a - t.a), v = cross(t.b - t.a, s.b - t.a);
  return p * q < 0 && u * v < 0;
}

/// Two lines that meet badly, as places in the list; none: the lines are plane.
inline std::optional<std::pair<std::size_t, std::size_t>> firstBadMeeting(std::vector<Side>& sides) {
  const auto left = [](const Side& s) { return std::min(s.a.x, s.b.x); };
  std::sort(sides.begin(), sides.end(), [&](const Side& s, const Side& t) { return left(s) < left(t); });
  for (std::size_t i = 0; i < sides.size(); ++i)
    for (std::size_t j = i + 1; j < sides.size() && left(sides[j]) <= std::max(sides[i].a.x, sides[i].b.x);
         ++j)
      if (meetBadly(sides[i], sides[j])) return std::pair(i, j);
  return {};
}

/// The faces of a plane graph whose neighbours are not ordered yet, as loops of corners; faces within run
/// counter-clockwise.
inline std::vector<std::vector<Spot>> facesOf(const KnotGraph& graph) {
  using Key = std::pair<double, double>;
  std::map<Key, std::vector<Spot>> around;
  for (const Side& s : sidesOf(graph)) {
    around[{s.a.x, s.a.y}].push_back(s.b);
    around[{s.b.x, s.b.y}].push_back(s.a);
  }
  std::set<std::pair<Key, Key>> walked;
  std::vector<std::vector<Spot>> faces;
  for (const auto& [key, ends] : around)
    for (const Spot& end : ends) {
      Spot from{key.first, key.second}, to = end;
      std::vector<Spot> face;
      while (walked.insert({{from.x, from.y}, {to.x, to.y}}).second) {
        face.push_back(from);
        Spot next = from;
        double least = 10;
        for (const Spot& candidate : around[{to.x, to.y}]) {
          const Spot back = from - to, out = candidate - to;
          double turn = std::atan2(cross(out, back), dot(out, back));  // clockwise from the way back
          if (turn <= 0) turn += 6.283185307179586;
          if (turn < least) least = turn, next = candidate;
        }
        from = std::exchange(to, next);
      }
      if (!face.empty()) faces.push_back(face);
    }
  return faces;
}

struct Cell {
  bool convex = true;
  double area = 0;
  Spot middle;
};

inline Cell cellOf(const std::vector<Spot>& face) {
  Cell cell;
  for (std::size_t k = 0; k < face.size(); ++k) {
    const Spot a = face[k], b = face[(k + 1) % face.size()], c = face[(k + 2) % face.size()];
    cell.convex &= cross(b - a, c - b) > 0;
    cell.area += cross(a, b) / 2;
    cell.middle = cell.middle + (1.0 / static_cast<double>(face.size())) * a;
  }
  return cell;
}

inline bool isInside(const Outline& outline, Spot p) {
  const std::vector<double> places = outline.crossingsAt(p.y);
  return std::ranges::count_if(places, [&](double x) { return x < p.x; }) % 2 != 0;
}

}  // namespace lorivan
