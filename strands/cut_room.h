// Whether lines that a machine is to follow keep apart.
#pragma once

#include <vector>

#include "strands/band_outline.h"

namespace lorivan {

/// True when no contour crosses itself or another one, and different ones are nowhere nearer than `room`.
/// Curves count as straight pieces that stray by a tenth of it.
bool lieApart(const std::vector<BandContour>& contours, double room);

}  // namespace lorivan
