// Anti-aliased filling of Bezier contours, the same on every system.
#pragma once

#include <span>
#include <vector>

#include "base/colour.h"
#include "platform/surface.h"

namespace lorivan {

/// Fills what the contours surround (see Surface::fillPath) into premultiplied pixels. A pixel takes the
/// exact share of its area. Shapes of one call that touch along a line leave no seam. Points may lie anywhere
/// within a million pixels; what is not finite or further away fills nothing and gives false.
bool fillPathPixels(const PixelBlock& target, std::span<const std::vector<PointF>> contours, Colour colour);

}  // namespace lorivan
