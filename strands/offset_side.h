// One side of a band: the line at a fixed distance from the centre line, without the loops that it makes
// where the centre line bends more tightly than that.
#pragma once

#include <vector>

#include "strands/band_loop.h"
#include "strands/curve_fit.h"

namespace lorivan {

/// One side as runs of points; where one run ends and the next one begins, at the same point, is a corner.
struct OffsetSide {
  std::vector<LinePoint> points;
  std::vector<std::size_t> corners;  // numbers of the points that begin a further run
};

/// Follows the loop from one place to a later one, which may lie in the next lap, at `distance`. Where the
/// side folds back on itself it is cut where it meets itself again. A side that has nothing left is empty.
/// `coarse`: fewer points, for an arc from each of them to the next instead of a fitted curve.
void followSide(const BandLoop& loop, double from, double to, double distance, OffsetSide& side,
                bool coarse = false);

/// Appends a side's curves to a chain that holds its first point already.
void appendSide(const OffsetSide& side, double tolerance, std::vector<PointF>& chain);

/// The same line walked from its end to its beginning.
void reverseSide(OffsetSide& side);

}  // namespace lorivan
