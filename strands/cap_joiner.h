// Pieces of a strand that end at one line, from both sides.
#pragma once

#include <vector>

#include "strands/band_outline.h"

namespace lorivan {

/// Where a band has no room two of its pieces meet in the middle of a crossing. They become one, so that no
/// line is cut twice; a piece that meets itself becomes a ring.
void joinCaps(std::vector<std::vector<BandContour>>& shapes);

}  // namespace lorivan
