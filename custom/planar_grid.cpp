#include "custom/planar_grid.h"

#include <algorithm>
#include <map>
#include <set>
#include <string>
#include <utility>

#include "base/numbers.h"

namespace lorivan {

Status checkNodes(std::span<const PointI> nodes) {
  for (const PointI& node : nodes)
    if (toInt16(node.x) != node.x || toInt16(node.y) != node.y)
      return impossibleKnot("The shape reaches too far outside the picture");
  return {};
}

Status makeGridFromShape(KnotGraph& graph, const CustomShape& shape, const GridView& view) {
  const ShapeMapping mapping(shape, view);
  ShapeLines drawn(shape, kCoarseCurves);
  // Joined in units of the picture, where a distance is the same in every direction; x is that of the grid.
  for (Spot& spot : drawn.spots)
    spot = {mapping.gridX(spot.x), mapping.gridY(spot.y) / mapping.heightFactor()};
  const Result<Arrangement> plane = arrange(drawn.spots, drawn.lines, kJoinReach * mapping.gridUnits(),
                                            {1, mapping.heightFactor()}, kMostLines);
  if (!plane) return plane.error();
  if (plane->edges.empty()) return impossibleKnot("The shape has no lines to make a grid from");
  if (const Status held = checkNodes(plane->nodes); !held) return held;
  startLines(graph);
  for (const NodePair& edge : plane->edges) {
    const PointI a = plane->nodes[edge[0]];
    const PointI b = plane->nodes[edge[1]];
    MakeKE(graph, kOrdinary, static_cast<float>(a.x), static_cast<float>(a.y), static_cast<float>(b.x),
           static_cast<float>(b.y));
  }
  graph.CellSize = kCustomCellSize;
  graph.NoGrid = false;
  return finishLines(graph);
}

Result<CustomShape> makeShapeFromGrid(const KnotGraph& graph, const GridView& view) {
  CustomShape shape;
  const ShapeMapping mapping(shape, view);
  std::map<std::pair<int, int>, int> numberOf;
  std::set<std::pair<int, int>> made;
  bool fits = true;
  const auto pointAt = [&](std::int16_t x, std::int16_t y) {
    const auto [entry, added] = numberOf.emplace(std::pair{x, y}, 0);
    if (added)
      entry->second =
          shape.addPoint(static_cast<float>(mapping.shapeX(x)), static_cast<float>(mapping.shapeY(y)));
    fits &= entry->second != 0;
    return entry->second;
  };
  for (int j = 0; j <= graph.LastLine && fits; ++j) {
    const GridLine& line = graph.Lines[j];
    if (line.Kind == kNoLine) continue;
    const int a = pointAt(line.X1, line.Y1), b = pointAt(line.X2, line.Y2);
    if (a != b && made.insert(std::minmax(a, b)).second) fits &= shape.addLine(a, b) != 0;
  }
  if (!fits) return refused("This grid has more lines than the 1000 that a shape holds");
  return shape;
}

}  // namespace lorivan
