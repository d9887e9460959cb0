// Smooth bands along curves, the same on every system.
#pragma once

#include "platform/common/path_fill.h"

namespace lorivan {

/// Adds a band with round joins. A chain that ends where it began is a ring. It is whole also where it
/// crosses itself or bends more tightly than half its width. False when it has no usable width or points; one
/// without any point adds nothing.
bool addWideCurve(PathFiller& filler, const WideCurve& curve);

/// Adds such a band on a black one that is wider by `edge` pixels on either side. Of thin ones pixels are
/// covered by how near they lie to the middle of the band, and flat ends are not smoothed. That takes less
/// time; on a slope it differs by some hundredths of a pixel's share.
bool addEdgedCurve(PathFiller& filler, const WideCurve& curve, float edge);

}  // namespace lorivan
