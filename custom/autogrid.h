// AutoGrid: lays a grid inside the outline of a custom shape.
#pragma once

#include <optional>
#include <string_view>

#include "base/result.h"
#include "custom/custom_shape.h"
#include "custom/geometry.h"
#include "graph/graph.h"

namespace lorivan {

inline constexpr int kMostAutoGridLines = 1800;
inline constexpr std::string_view kTooComplicated =
    "This knot would be too complicated. Reduce the AG factor and try again";

struct AutoGridOptions {
  int gridSize = 20;                // cells along the longer side of the whole outline's box, 1 to 100
  bool triangles = false;           // cells are triangles, else squares
  std::optional<Spot> within = {};  // a place of the shape, in its units: the region round it alone is filled
};

/// What became of the outline.
struct AutoGridReport {
  double filled = 1;  // share of its area that has cells
};

/// Fills the closed loops of the shape (a loop in a loop is a hole) with cells and makes their sides the
/// graph's lines, all ordinary; the outer ones are drawn to the outline. The graph is plane and its cells are
/// convex. Sets CellSize and clears NoGrid; the points are not collected yet (DrawGrid does).
///
/// What mirrors and quarter turns leave of the outline in place, they leave of the graph, too. The cell is at
/// least 1.95 grid units; nodes are rounded each by itself.
///
/// More than kMostAutoGridLines are refused by ErrorKind::limit: the lines, as many as the table holds, are
/// then in the graph, but it must not be drawn. A fault of the outline (none is closed, too narrow for a
/// cell) is ErrorKind::knot and leaves the graph as it was.
Result<AutoGridReport> AutoGrid(KnotGraph& graph, const CustomShape& shape, const GridView& view,
                                const AutoGridOptions& options);

}  // namespace lorivan
