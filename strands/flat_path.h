// Curves as polylines with bulges, for formats that know lines and arcs alone.
#pragma once

#include <span>
#include <vector>

#include "base/points.h"

namespace lorivan {

/// A corner of a polyline. `bulge` is the tangent of a quarter of the angle that the arc to the next corner
/// turns, above 0 to the left; 0 is a straight line.
struct PathVertex {
  double x = 0, y = 0;
  double bulge = 0;
};

/// Where a drawing's units lie in the file: y is turned to point upwards.
struct CutPlace {
  double scale = 1;                 // millimetres for a unit
  double originX = 0, originY = 0;  // of the file, in the drawing's units
};

/// Whether a chain repeats its first point at its end.
inline bool isClosed(std::span<const PointF> chain) {
  return chain.front().x == chain.back().x && chain.front().y == chain.back().y;
}

/// A chain of cubic Bezier segments as straight lines that stray by at most `tolerance` millimetres, or as
/// arcs with the curve's own directions at their ends. Segments shorter than that are left out. Of a closed
/// chain the first corner is not repeated.
std::vector<PathVertex> flatPath(std::span<const PointF> chain, const CutPlace& place, double tolerance,
                                 bool arcs);

}  // namespace lorivan
