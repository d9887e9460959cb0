// Shapes and lines that are cut off at the seams of a wrapped knot, for files whose lines are followed.
#pragma once

#include "strands/band_outline.h"
#include "strands/seam_copies.h"

namespace lorivan {

/// What lies between the seams of a shape, a contour with its holes, and of its copies a whole number of
/// periods away: closed again by straight lines along the seams. Each seam lies `grow` further out. Where
/// nothing is wrapped the shape is as it was.
std::vector<std::vector<BandContour>> cutAtSeam(const Seam& seam, const std::vector<BandContour>& shape,
                                                double grow);

/// The same for a chain of cubic Bezier segments, which may be closed: its parts.
std::vector<std::vector<PointF>> chainsAtSeam(const Seam& seam, const std::vector<PointF>& chain);

}  // namespace lorivan
