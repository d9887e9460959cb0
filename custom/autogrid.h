// AutoGrid: lays a grid inside the outline of a custom shape.
#pragma once

#include "base/result.h"
#include "custom/custom_shape.h"
#include "graph/graph.h"

namespace lorivan {

inline constexpr int kMostAutoGridLines = 1800;

struct AutoGridOptions {
  int gridSize = 20;       // cells along the longer side of the outline's box, 1 to 100
  bool triangles = false;  // cells are triangles, else squares
};

/// Fills the closed loops of the shape (a loop in a loop is a hole) with cells and makes their sides the
/// graph's lines, all ordinary; the outer ones are drawn to the outline. The graph is plane and its cells are
/// convex. Sets CellSize and clears NoGrid; the points are not collected yet (DrawGrid does).
///
/// The cell is a whole number of grid units, at least 3, so that the inner cells are all alike.
///
/// More than kMostAutoGridLines are refused by ErrorKind::limit: the lines, as many as the table holds, are
/// then in the graph, but it must not be drawn. A fault of the outline (none is closed, too narrow for a
/// cell) is ErrorKind::knot and leaves the graph as it was.
Status AutoGrid(KnotGraph& graph, const CustomShape& shape, const GridView& view,
                const AutoGridOptions& options);

}  // namespace lorivan
