// The strands as flat lines for a cutter: whole, or broken where another strand lies over them.
#pragma once

#include <vector>

#include "strands/knot_curve.h"

namespace lorivan {

/// The picture shows 0.8 of the height that the stretched grid has.
inline constexpr double kProportion = 0.8;

struct FlatPoint {
  double x = 0, y = 0;  // to the right and upwards, grid units true to proportion
};

/// One line to be drawn. A closed one does not repeat its first point.
struct FlatLine {
  int slot = 0;
  bool closed = false;
  std::vector<FlatPoint> points;
};

/// Every strand as one closed line, along the curve that is drawn in 2-D. Lines of a wrapped knot, here and
/// below, end at its seams.
std::vector<FlatLine> wholeCurves(const KnotCurve& curve);

/// The stretches of every strand that a viewer sees: at each crossing the strand with the lower height is
/// left out for as long as it lies nearer than half of `bandWidth` (grid units) to the middle of the other.
/// Gaps never reach half of the way to the strand's next crossing. Strands without a gap stay closed.
std::vector<FlatLine> visibleCurves(const KnotCurve& curve, double bandWidth);

}  // namespace lorivan
