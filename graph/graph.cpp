#include "graph/graph.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <string_view>

#include "base/numbers.h"

namespace lorivan {
namespace {

constexpr std::string_view kTooManyAtPoint =
    "Sorry, this knot has too many lines connected to a single point";

/// Finds the first point with given coordinates, as a search from index 0 upwards would.
class PointIndex {
 public:
  explicit PointIndex(const KnotGraph& graph) : graph_(graph), slots_(kSlots, -1) {
    for (int i = 0; i <= graph.LastPoint; ++i) {
      const GridPoint& p = graph.Points[i];
      std::int16_t& slot = slots_[slotOf(p.X, p.Y)];
      if (slot < 0) slot = static_cast<std::int16_t>(i);
    }
  }

  /// -1 when no point has these coordinates.
  int find(std::int16_t x, std::int16_t y) const { return slots_[slotOf(x, y)]; }

 private:
  static constexpr std::size_t kSlots = 1 << 15;  // more than twice the points

  /// The slot that holds the point, or the empty one where it would go.
  std::size_t slotOf(std::int16_t x, std::int16_t y) const {
    const std::uint32_t packed =
        static_cast<std::uint32_t>(static_cast<std::uint16_t>(x)) << 16 | static_cast<std::uint16_t>(y);
    std::size_t slot = (packed * 2654435769U) >> 17;
    for (;; slot = (slot + 1) % kSlots) {
      const int held = slots_[slot];
      if (held < 0) return slot;
      const GridPoint& p = graph_.Points[held];
      if (p.X == x && p.Y == y) return slot;
    }
  }

  const KnotGraph& graph_;
  std::vector<std::int16_t> slots_;
};

/// Adds one neighbour; false when the record has no room for it.
bool addNeighbour(GridPoint& point, int neighbour, int line, int turn) {
  if (point.NbCount >= kMostNeighbours) return false;
  const auto slot = static_cast<std::size_t>(point.NbCount++);
  point.Nb[slot] = static_cast<std::int16_t>(neighbour);
  point.NbLine[slot] = static_cast<std::int16_t>(line);
  point.NbTurn[slot] = static_cast<std::int16_t>(turn);
  return true;
}

/// Enters every line at the first point of each of its ends, in line order.
bool linkLines(KnotGraph& graph, const PointIndex& index) {
  bool roomForAll = true;
  const int unmatched = graph.LastPoint + 1;
  for (int j = 0; j <= graph.LastLine; ++j) {
    const GridLine& line = graph.Lines[j];
    if (line.Kind == kNoLine) continue;
    const int first = index.find(graph.wrap.within(line.X1), line.Y1);
    const int second = index.find(graph.wrap.within(line.X2), line.Y2);
    const int turns = graph.wrap.turn(line.X2) - graph.wrap.turn(line.X1);
    if (first >= 0)
      roomForAll &= addNeighbour(graph.Points[first], second < 0 ? unmatched : second, j, turns);
    if (second >= 0)
      roomForAll &= addNeighbour(graph.Points[second], first < 0 ? unmatched : first, j, -turns);
  }
  return roomForAll;
}

/// Bubble sort by angle in as many passes as there are neighbours. The larger angle of an exchanged pair
/// moves up as a whole number, and the passes that follow compare that rounded value: the order is part of
/// how knots look and is therefore not a plain ascending one.
void sortNeighbours(const KnotGraph& graph, GridPoint& point) {
  std::array<float, kMostNeighbours> angle{};
  const int count = point.NbCount;
  for (int k = 0; k < count; ++k) {
    const int neighbour = point.Nb[k];
    if (neighbour > graph.LastPoint) continue;  // matches no point: no direction
    const GridPoint& other = graph.Points[neighbour];
    const int turned = point.NbTurn[k] * graph.wrap.period;
    FindAngle(static_cast<float>(other.X + turned - point.X), static_cast<float>(other.Y - point.Y),
              angle[k]);
  }
  for (int pass = 0; pass < count; ++pass)
    for (std::size_t m = 0; m + 1 < static_cast<std::size_t>(count); ++m) {
      if (!(angle[m] > angle[m + 1])) continue;
      const auto moved = static_cast<float>(toInt16(angle[m]));
      angle[m] = angle[m + 1];
      angle[m + 1] = moved;
      std::swap(point.Nb[m], point.Nb[m + 1]);
      std::swap(point.NbLine[m], point.NbLine[m + 1]);
      std::swap(point.NbTurn[m], point.NbTurn[m + 1]);
    }
}

}  // namespace

std::int16_t KnotGraph::halfCell() const { return toInt16(CellSize / 2.0); }

void FindAngle(float DX, float DY, float& Angle) {
  double a = kHalfPiF;
  if (DX != 0) a = std::atan(std::fabs(static_cast<double>(DY) / static_cast<double>(DX)));
  if (DX >= 0 && DY < 0) a = kTwoPi - a;
  if (DX < 0 && DY >= 0) a = kPi - a;
  if (DX < 0 && DY < 0) a = a + kPi;
  Angle = static_cast<float>(a);
}

float lineAngle(float DX, float DY) {
  float direction = 0;
  FindAngle(DX, DY, direction);
  auto angle = static_cast<float>(direction - kQuarterPi);
  if (angle > kTwoPiF) angle = static_cast<float>(angle - kTwoPi);  // never for a direction below 2 pi
  return angle;
}

void startLines(KnotGraph& graph) {
  graph.NextLine = 0;
  graph.LastLine = -1;
  graph.LastPoint = -1;
  graph.wrap = {};
  graph.TooManyLines = false;
}

void MakeKE(KnotGraph& graph, std::int16_t Kind, float X1, float Y1, float X2, float Y2) {
  if (graph.NextLine >= kMostLines) {
    graph.TooManyLines = true;
    return;
  }
  GridLine& line = graph.Lines[graph.NextLine++];
  line.X1 = toInt16(X1);
  line.Y1 = toInt16(Y1);
  line.X2 = toInt16(X2);
  line.Y2 = toInt16(Y2);
  line.MidX = toInt16((static_cast<double>(X1) + X2) / 2);
  line.MidY = toInt16((static_cast<double>(Y1) + Y2) / 2);
  line.Kind = Kind;
  line.Angle = lineAngle(X1 - X2, Y1 - Y2);
}

Status finishLines(KnotGraph& graph) {
  graph.LastLine = graph.NextLine - 1;
  if (graph.TooManyLines) return refused(kTooManyLines);
  return {};
}

Status collectPoints(KnotGraph& graph) {
  graph.LastPoint = -1;
  if (2 * (graph.LastLine + 1) > kMostPoints) return refused(kTooManyLines);
  int count = 0;
  for (int j = 0; j <= graph.LastLine; ++j) {
    GridLine& line = graph.Lines[j];
    if (graph.wrap.laps(line.X1, line.X2) > kMostLaps)
      return refused("a line leads more than {1} times round the cylinder", std::to_string(kMostLaps));
    GridPoint& first = graph.Points[count++];
    first.X = graph.wrap.within(line.X1);
    first.Y = line.Y1;
    GridPoint& second = graph.Points[count++];
    second.X = graph.wrap.within(line.X2);
    second.Y = line.Y2;
    if (line.Kind != kNoLine) line.Passes = 0;
  }
  graph.LastPoint = count - 1;
  return {};
}

Status CalcGrid(KnotGraph& graph) {
  for (int i = 0; i <= graph.LastPoint; ++i) graph.Points[i].NbCount = 0;
  const PointIndex index(graph);
  const bool roomForAll = linkLines(graph, index);
  for (int i = 0; i <= graph.LastPoint; ++i) {
    GridPoint& point = graph.Points[i];
    const int first = index.find(point.X, point.Y);
    if (first == i)
      sortNeighbours(graph, point);
    else  // a duplicate has the neighbours of the first point at its place
      point = graph.Points[first];
  }
  if (roomForAll) return {};
  graph.KnotError = true;
  return refused(kTooManyAtPoint);
}

bool isFirstEnd(const KnotGraph& graph, const GridPoint& point, std::size_t neighbour) {
  const GridLine& line = graph.Lines[point.NbLine[neighbour]];
  return graph.wrap.within(line.X1) == point.X && line.Y1 == point.Y &&
         point.NbTurn[neighbour] == graph.wrap.turn(line.X2) - graph.wrap.turn(line.X1);
}

int FindLine(const KnotGraph& graph, float X, float Y) {
  if (graph.NoGrid) return -1;
  const double reach = graph.CellSize / 6.0;
  const auto limit = static_cast<float>(reach * reach);
  for (int j = 0; j <= graph.LastLine; ++j) {
    const GridLine& line = graph.Lines[j];
    const double dx = graph.wrap.nearest(line.MidX - static_cast<double>(X));
    const double dy = line.MidY - static_cast<double>(Y);
    if (dx * dx + dy * dy < limit) return j;
  }
  return -1;
}

}  // namespace lorivan
