// The line on which two bands change places that cross twice.
#pragma once

#include "strands/curve_fit.h"

namespace lorivan {

/// The line between two crossings of the same two lines, through the middles of both: near the tip of a bend
/// each leg keeps its own side. quarter() points to the second crossing.
LinePoint changeLine(const BandLoop& a, double fromA, double toA, const BandLoop& b, double fromB,
                     double toB);

}  // namespace lorivan
