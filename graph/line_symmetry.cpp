#include "graph/line_symmetry.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <unordered_map>

#include "base/numbers.h"

namespace lorivan {
namespace {

// Ends are rounded to whole units, which moves an image by up to 1.3; the closest lines of the closest grids
// lie about four units apart.
constexpr double kReach = 1.8;

struct Spot {
  double x = 0, y = 0;
};

Spot middleOf(const GridLine& line) {
  return {(static_cast<double>(line.X1) + line.X2) / 2, (static_cast<double>(line.Y1) + line.Y2) / 2};
}

/// Lines by the middle between their ends.
class MiddleIndex {
 public:
  explicit MiddleIndex(const KnotGraph& graph) : graph_(graph) {
    for (int j = 0; j <= graph.LastLine; ++j) {
      const Spot spot = middleOf(graph.Lines[j]);
      const int period = graph.wrap.period, turned = graph.wrap.turn(spot.x) * period;
      for (int copy = graph.wrap ? -1 : 0; copy <= (graph.wrap ? 1 : 0); ++copy)
        cells_[cellOf(spot.x - turned + copy * period, spot.y)].push_back(j);
      centre_.x += spot.x / (graph.LastLine + 1);
      centre_.y += spot.y / (graph.LastLine + 1);
    }
    if (graph.wrap) centre_.x = graph.wrap.left + graph.wrap.period / 2.0;
  }

  Spot centre() const { return centre_; }

  /// The line nearest to where `line` comes by the map, or -1.
  template <class Map>
  int imageOf(const GridLine& line, Map map) const {
    Spot spot = map(middleOf(line));
    spot.x -= graph_.wrap.turn(spot.x) * graph_.wrap.period;
    int best = -1;
    double least = kReach;
    for (int dx = -1; dx <= 1; ++dx)
      for (int dy = -1; dy <= 1; ++dy) {
        const auto cell = cells_.find(cellOf(spot.x + dx * kCell, spot.y + dy * kCell));
        if (cell == cells_.end()) continue;
        for (const int j : cell->second) {
          const Spot there = middleOf(graph_.Lines[j]);
          const double distance = std::hypot(graph_.wrap.nearest(there.x - spot.x), there.y - spot.y);
          if (distance >= least || !endsMeet(line, graph_.Lines[j], map)) continue;
          least = distance;
          best = j;
        }
      }
    return best;
  }

 private:
  static constexpr double kCell = 4;

  static std::int64_t cellOf(double x, double y) {
    return static_cast<std::int64_t>(std::floor(x / kCell)) * 1'000'003 +
           static_cast<std::int64_t>(std::floor(y / kCell));
  }

  template <class Map>
  bool endsMeet(const GridLine& line, const GridLine& image, Map map) const {
    const Spot end = map(Spot{static_cast<double>(line.X1), static_cast<double>(line.Y1)});
    const auto apart = [&](double x, double y) {
      return std::hypot(graph_.wrap.nearest(end.x - x), end.y - y);
    };
    return std::min(apart(image.X1, image.Y1), apart(image.X2, image.Y2)) < 2 * kReach;
  }

  const KnotGraph& graph_;
  Spot centre_;
  std::unordered_map<std::int64_t, std::vector<int>> cells_;
};

/// Sets of lines that grow together.
class LineSets {
 public:
  explicit LineSets(int lines) : parent_(static_cast<std::size_t>(lines)) {
    std::iota(parent_.begin(), parent_.end(), 0);
  }
  int find(int line) {
    int& parent = parent_[line];
    if (parent != line) parent = find(parent);
    return parent;
  }
  void join(int a, int b) { parent_[find(std::max(a, b))] = find(std::min(a, b)); }

 private:
  std::vector<int> parent_;
};

/// A wrapped graph turns as the ring does that it is bent into, but for the half turn of the flat picture.
auto turnAbout(Spot c, int turns, const Wrap& wrap) {
  const double angle = kTwoPi / turns, cosine = std::cos(angle), sine = std::sin(angle);
  const double onwards = turns > 2 && wrap ? static_cast<double>(wrap.period) / turns : 0;
  return [=](Spot p) {
    if (onwards > 0) return Spot{p.x + onwards, p.y};
    const double x = p.x - c.x, y = p.y - c.y;
    return Spot{c.x + cosine * x - sine * y, c.y + sine * x + cosine * y};
  };
}

/// Joins every line with its image; false when one has none.
template <class Map>
bool joinImages(const KnotGraph& graph, const MiddleIndex& index, LineSets& sets, Map map) {
  bool complete = true;
  for (int j = 0; j <= graph.LastLine; ++j) {
    const int image = index.imageOf(graph.Lines[j], map);
    complete &= image >= 0;
    if (image >= 0) sets.join(j, image);
  }
  return complete;
}

bool joinSymmetric(const KnotGraph& graph, const MiddleIndex& index, LineSets& sets,
                   const Symmetry& symmetry) {
  const Spot c = index.centre();
  bool complete = true;
  if (symmetry.leftRight)
    complete &= joinImages(graph, index, sets, [c](Spot p) { return Spot{2 * c.x - p.x, p.y}; });
  if (symmetry.topBottom)
    complete &= joinImages(graph, index, sets, [c](Spot p) { return Spot{p.x, 2 * c.y - p.y}; });
  if (symmetry.turns > 1)
    complete &= joinImages(graph, index, sets, turnAbout(c, symmetry.turns, graph.wrap));
  return complete;
}

/// Whether the turn brings every line to one, and so many turns each back to itself: where lines stand close,
/// a turn that is a little off finds lines as well.
bool turnsRound(const KnotGraph& graph, const MiddleIndex& index, int turns) {
  const auto turn = turnAbout(index.centre(), turns, graph.wrap);
  std::vector<int> images;
  for (int j = 0; j <= graph.LastLine; ++j) {
    images.push_back(index.imageOf(graph.Lines[j], turn));
    if (images.back() < 0) return false;
  }
  for (int j = 0; j <= graph.LastLine; ++j) {
    int at = j;
    for (int k = 0; k < turns; ++k) at = images[at];
    if (at != j) return false;
  }
  return true;
}

}  // namespace

LineOrbits::LineOrbits(const KnotGraph& graph, const Symmetry& symmetry)
    : number_(static_cast<std::size_t>(graph.LastLine + 1), -1) {
  LineSets sets(graph.LastLine + 1);
  if (!symmetry.isNone()) complete_ = joinSymmetric(graph, MiddleIndex(graph), sets, symmetry);
  for (int j = 0; j <= graph.LastLine; ++j) {
    const int root = sets.find(j);
    int& number = number_[root];
    if (number < 0) {
      number = static_cast<int>(orbits_.size());
      orbits_.emplace_back();
    }
    number_[j] = number;
    orbits_[number].push_back(j);
  }
}

std::vector<int> possibleTurns(const KnotGraph& graph) {
  std::vector<int> turns;
  const MiddleIndex index(graph);
  for (int n = 2; n <= kMostTurns && graph.LastLine >= 0; ++n)
    if (turnsRound(graph, index, n)) turns.push_back(n);
  return turns;
}

}  // namespace lorivan
