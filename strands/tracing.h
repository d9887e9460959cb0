// From the knot graph to its strands.
#pragma once

#include <functional>
#include <string_view>

#include "base/points.h"
#include "base/result.h"
#include "graph/graph.h"
#include "graph/standard_grids.h"
#include "strands/strand_store.h"

namespace lorivan {

inline constexpr std::string_view kKnotErrorTitle = "Knot error";

/// At most this many strands get a slot of their own; later ones take the last slot again.
inline constexpr int kMostStrands = 39;

struct TraceSettings {
  int startColour = 12;   // -15 to 15; its absolute value is the first strand's slot
  double swish = 10;      // 1 to 50, how far apexes swing out
  float stretch = 0.8F;   // vertical stretch factor
  bool circular = false;  // corners between rings keep to the middle, see usesCircularRule
  bool mirror = false;    // over and under exchanged everywhere
  bool operator==(const TraceSettings&) const = default;
};

/// Whether corners that lead from one ring to another are to stay flat: rings and stars always, spirals with
/// fewer than five X cells.
bool usesCircularRule(Shape shape, int xNo);

/// One corner of the walk, for a display that follows it step by step.
struct TraceStep {
  int slot = 0;
  PointF R, A, B, X;  // reference point, the two midpoints and the apex, grid units
};
/// Called after each corner; false abandons the trace.
using TraceWatcher = std::function<bool(const TraceStep&)>;

enum class TraceEnd { complete, abandoned };

/// Walks all strands of a graph whose neighbours are ordered (CalcGrid) and whose Passes are 0, and stores
/// them. Every ordinary line ends with two passes. A strand of more than 5999 points, or a neighbour that no
/// point matches, sets KnotError and gives an error of kind knot; what was stored before stays.
Result<TraceEnd> traceStrands(KnotGraph& graph, const TraceSettings& settings, StrandStore& store,
                              const TraceWatcher& watcher = {});

/// Strands and crossings of a traced knot, for the status line.
struct KnotCounts {
  int strands = 0;
  int crossings = 0;
};
KnotCounts countKnot(const KnotGraph& graph, const StrandStore& store);

}  // namespace lorivan
