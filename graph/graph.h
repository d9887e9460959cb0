// The knot graph: grid points joined by lines. Strands cross every line at its midpoint and turn round the
// points, so the graph alone decides the knot.
#pragma once

#include <array>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <optional>
#include <string_view>
#include <vector>

#include "base/result.h"

namespace lorivan {

inline constexpr int kMostPoints = 12000;
inline constexpr int kMostLines = 5000;
inline constexpr int kMostNeighbours = 13;

/// A wrapped graph lies on a cylinder: places a whole number of periods apart, from left to right, are one
/// and the same. Lines keep the places that they are drawn at, so one across the seam ends beyond it. Grid
/// units.
struct Wrap {
  std::int16_t left = 0;    // the seam
  std::int16_t period = 0;  // 0: not wrapped

  explicit operator bool() const { return period > 0; }
  /// How many periods a place lies to the right of the first one.
  int turn(double x) const { return *this ? static_cast<int>(std::floor((x - left) / period)) : 0; }
  /// How many periods lie between two places.
  int laps(double x1, double x2) const { return std::abs(turn(x2) - turn(x1)); }
  /// The same place within the first period.
  std::int16_t within(std::int16_t x) const { return static_cast<std::int16_t>(x - turn(x) * period); }
  /// A distance from left to right, the short way round.
  double nearest(double dx) const { return *this ? dx - std::round(dx / period) * period : dx; }
  bool operator==(const Wrap&) const = default;
};

/// The periods that a graph is wrapped with.
inline constexpr int kLeastPeriod = 4, kMostPeriod = 16000;
/// How often a line may lead round.
inline constexpr int kMostLaps = 16;

/// One grid point with its neighbours in angular order.
struct GridPoint {
  std::int16_t X = 0, Y = 0;
  std::int16_t NbCount = 0;
  std::array<std::int16_t, kMostNeighbours> Nb{};      // indices of the neighbouring points
  std::array<std::int16_t, kMostNeighbours> NbLine{};  // NbLine[k] joins this point to Nb[k]
  std::array<std::int16_t, kMostNeighbours> NbTurn{};  // periods that Nb[k] has to be moved to lie at its end
};

/// Kinds of GridLine. Strands cross ordinary and reversed lines and turn back at walls.
inline constexpr std::int16_t kNoLine = 0, kOrdinary = 1, kWall = 2, kReversed = 3;

/// One line (edge) between two grid points, matched to them by exact equality of both coordinates.
struct GridLine {
  std::int16_t X1 = 0, Y1 = 0, X2 = 0, Y2 = 0;
  std::int16_t MidX = 0, MidY = 0;
  std::int16_t Kind = 0;
  std::int16_t Passes = 0;  // how often the tracer has crossed it
  std::int16_t Over = 0;    // sign of the last crossing, +1 or -1
  float Angle = 0;          // direction from the second end to the first, less a quarter of pi; radians
};

/// The tables have fixed capacities and keep duplicates and order: tracing depends on both.
struct KnotGraph {
  KnotGraph() : Points(kMostPoints), Lines(kMostLines) {}

  std::vector<GridPoint> Points;
  std::vector<GridLine> Lines;
  int LastPoint = -1;  // points 0 to LastPoint are in use
  int LastLine = -1;   // lines 0 to LastLine are in use
  int NextLine = 0;    // the slot that MakeKE fills next
  std::int16_t CellSize = 20;
  Wrap wrap;
  bool NoGrid = true;         // no grid has been built yet
  bool KnotError = false;     // building or tracing failed
  bool TooManyLines = false;  // MakeKE was asked for a line past the table

  /// Half a cell, rounded half to even: how far the tracer's first reference point lies from a midpoint.
  std::int16_t halfCell() const;
};

inline constexpr std::string_view kTooManyLines =
    "Sorry, there are too many knot lines - you'll have to make the knot simpler\r\n"
    "If you were making a custom knot, click Custom ViewCustom to refresh the screen";

/// Direction of the vector (DX, DY), radians in [0, 2 pi), growing from +x towards +y. (0, 0) gives pi / 2.
void FindAngle(float DX, float DY, float& Angle);

/// Forgets all lines and points, and that the graph was wrapped, before a build.
void startLines(KnotGraph& graph);

/// Appends one line in slot NextLine. Past the table's capacity nothing is stored and TooManyLines is set.
void MakeKE(KnotGraph& graph, std::int16_t Kind, float X1, float Y1, float X2, float Y2);

/// Ends a build: LastLine becomes the last line made. Fails with kTooManyLines after an overflow.
Status finishLines(KnotGraph& graph);

/// The direction stored with a line whose ends differ by (DX, DY) = first end - second end.
float lineAngle(float DX, float DY);

/// Fills the point table with both ends of every line, of any kind, in line order, duplicates kept, all of a
/// wrapped graph within the first period, and resets Passes of every line that is there (Kind not 0). Fails
/// with kTooManyLines when the table is too small, and where a line leads far too often round the cylinder.
Status collectPoints(KnotGraph& graph);

/// Rebuilds every point's neighbours from the lines of Kind other than 0 and orders them by angle. A line end
/// that no point matches gives the neighbour LastPoint + 1. A fourteenth neighbour is refused before anything
/// is overwritten: KnotError is set and the error is a limit; the lists built so far stay.
Status CalcGrid(KnotGraph& graph);

/// Whether a point lies at the first end of the line to a neighbour of its. A line right round a wrapped
/// graph has both its ends at one point.
bool isFirstEnd(const KnotGraph& graph, const GridPoint& point, std::size_t neighbour);

/// Index of the first line, of any kind, whose midpoint lies less than CellSize / 6 from (X, Y), in a wrapped
/// graph round the cylinder; -1 when none does or no grid was built yet.
int FindLine(const KnotGraph& graph, float X, float Y);

}  // namespace lorivan
