// Custom shape and knot graph, one made from the other line by line.
#pragma once

#include "base/result.h"
#include "custom/arrangement.h"
#include "custom/custom_shape.h"
#include "custom/smooth_lines.h"
#include "graph/graph.h"

namespace lorivan {

/// Points and crossings closer than this are one, in shape units: half the hit radius.
inline constexpr double kJoinReach = 3.5;
inline constexpr std::int16_t kCustomCellSize = 20;

/// Makes the shape's live lines, curves in short pieces, the graph's lines, all ordinary, split and joined so
/// that the graph is plane, and clears NoGrid. The points are not collected yet (DrawGrid does). Fails, with
/// the graph as it was, on a shape without lines and on one that would give more lines than the table holds.
Status makeGridFromShape(KnotGraph& graph, const CustomShape& shape, const GridView& view);

/// The graph's points, each once, and lines of Kind other than 0, each once, as a shape over the view. Fails
/// when they are more than a shape holds.
Result<CustomShape> makeShapeFromGrid(const KnotGraph& graph, const GridView& view);

}  // namespace lorivan
