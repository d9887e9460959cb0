// The outline of a smooth band as one polygon.
#pragma once

#include <span>
#include <vector>

#include "platform/surface.h"

namespace lorivan::win32 {

/// Replaces `outline` with the outline of the chain of cubic Bezier segments (3 n + 1 points) stroked with
/// `width` pixels and round joins. Filled with the winding rule it covers exactly the band, also where the
/// band crosses itself or bends more tightly than half its width. Empty when there is nothing to fill.
void bandOutline(std::span<const PointF> bezier, float width, CapStyle caps, std::vector<PointF>& outline);

}  // namespace lorivan::win32
